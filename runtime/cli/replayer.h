// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/library_client.h"
#include "cli/session_file.h"

namespace orvane::cli {

// Where a replay went another way than the recording.
struct Difference {
  RecordedMessage message;
  std::string recorded;  // for people, as the next
  std::string replayed;
};

enum class Comparison {
  kForm,    // figures that differ from run to run, and the application's UUID, count as the same
  kStrict,  // every reply has to be the recorded one
};

// Sends the messages of a recorded session to a set process, in their order, and compares what
// comes back. Replies are compared as JSON where they are; posted ones are known by the callback
// that they are for.
class Replayer {
 public:
  // `client` is borrowed and has been started. `patience` is how long all waits for posted messages
  // may take together.
  Replayer(LibraryClient& client, Comparison comparison, std::chrono::milliseconds patience);

  // Ends early, with a difference, when the library's process dies.
  std::vector<Difference> Replay(const std::vector<RecordedMessage>& messages);

 private:
  void ReplayOne(const RecordedMessage& message);
  void CompareReply(const RecordedMessage& message, const picojson::value& answer);
  void ComparePosted(const RecordedMessage& message);
  std::optional<PostedMessage> TakePosted(const RecordedMessage& message);
  void ReportUnexpected();
  bool IsSame(const std::string& recorded, const std::string& replayed,
              const std::string& command) const;
  void NoteCallback(const RecordedMessage& message);

  LibraryClient& client_;
  const Comparison comparison_;
  std::chrono::milliseconds patience_;  // what is left of it
  // The command of each callback that waits: its reply does not name it.
  std::map<std::pair<int64_t, int64_t>, std::string> commands_;
  std::vector<Difference> differences_;
};

}  // namespace orvane::cli
