// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "tvset/set_files.h"

namespace tvset {

// What the process finds at the paths of the set's files; partner of the interposed functions,
// which turn it into a stream, a status or a command. Made for one access and thrown away; borrows
// the set's files. Any thread.
class SetFileReader {
 public:
  // What an access comes to.
  enum class AnswerKind {
    // A file with `text` in it.
    kText,
    // The file `path`, to be run or asked for its status.
    kFile,
    // There is none: `error` is the errno value.
    kError,
    // The machine's own file at the set's path.
    kMachine,
  };
  // What goes with the answer; the rest is empty.
  struct Access {
    AnswerKind answer = AnswerKind::kError;
    int error = 0;
    std::string text;
    std::string path;
  };

  // Null while no set runs. Safe before static initialisation. Counts its calls, so that it can be
  // seen whether the process calls the interposed functions at all.
  static const SetFiles* Running();
  static unsigned CountOfCalls();

  explicit SetFileReader(const SetFiles& files) : files_(files) {}

  // To read it: kText, kError or kMachine.
  Access Open(SetFile file) const;
  // Its status: any; kText with an empty text for a file that the set makes.
  Access Status(SetFile file) const;
  // What a shell is to run in the place of /usr/bin/top: one or more of its words.
  // kText or kError.
  Access Command() const;

 private:
  // What comes before the set's own: a fault or a replacement. Empty: nothing does.
  std::optional<Access> Instead(SetFile file) const;
  // What the set makes itself, or kMachine.
  Access Own(SetFile file) const;

  const SetFiles& files_;
};

}  // namespace tvset
