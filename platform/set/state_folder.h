// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "posix/unique_fd.h"
#include "tvset/paths.h"

namespace tvset {

// One process's use of a state folder, from Use to destruction. While it lives, other processes
// that begin to use the folder leave the settings under "memory/" alone. The kernel ends the use of
// a process that crashed, since it is a lock on a file. Owned by Set while it runs. One thread at a
// time.
class StateFolder {
 public:
  // Makes the folder and what every set has in it, and does not use it yet. Borrows the paths.
  // Throws SetError when it cannot be used.
  explicit StateFolder(const Paths& paths);
  ~StateFolder() = default;
  StateFolder(const StateFolder&) = delete;
  StateFolder& operator=(const StateFolder&) = delete;

  // Begins the use: removes the settings under "memory/" when no other process uses the folder,
  // unless they are to be kept.
  void Use(bool keeps_memory);

  // Whether any process uses the folder.
  static bool IsUsed(const Paths& paths);

 private:
  const Paths& paths_;
  // Of the lock file.
  const orvane::base::UniqueFd lock_;
};

}  // namespace tvset
