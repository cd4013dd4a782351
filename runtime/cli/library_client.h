// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <list>
#include <optional>
#include <stdexcept>
#include <string>

#include <picojson.h>

#include "frames/frame.h"

namespace orvane::cli {

// The library process has ended; what() says how, and which message it was handling.
class LibraryDied : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What an extension posted to a page.
struct PostedMessage {
  int64_t context = 0;
  std::string extension;
  std::string text;
};

// A library process of the command's own, with this class in the server's place. Its messages to
// the standard error stream go to that of the command. One thread. Destruction ends the process.
class LibraryClient {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  LibraryClient();
  ~LibraryClient();
  LibraryClient(const LibraryClient&) = delete;
  LibraryClient& operator=(const LibraryClient&) = delete;

  // Throws UsageError with what is wrong about the options. All members but the constructor throw
  // LibraryDied.
  void Start(const picojson::object& options);

  void Send(const picojson::object& request);
  // The answer's frame; waits for as long as the library takes.
  picojson::value Call(picojson::object request);

  // Waits for more posted messages; false: none came in time.
  bool WaitForPosted(TimePoint until);
  std::list<PostedMessage>& posted() {
    return posted_;
  }  // the oldest first; take what is done with

 private:
  picojson::value Receive();
  void Note(const picojson::value& frame);
  [[noreturn]] void Die();

  int socket_ = -1;
  pid_t pid_ = -1;
  int64_t last_id_ = 0;
  frames::FrameReader reader_;
  std::list<PostedMessage> posted_;
  std::string handling_;  // for people
};

}  // namespace orvane::cli
