// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <picojson.h>

#include "base/child_process.h"
#include "base/frame.h"

namespace orvane::cli {

// The set process has ended, or was ended because it did not answer; what() says how, and which
// message it was handling.
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

// A set process of the command's own, with this class in the server's place. Its messages to
// the standard error stream go to that of the command. One thread. Destruction ends the process.
class LibraryClient {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  // `deadline` is how long the process may take for anything that it is asked.
  explicit LibraryClient(std::chrono::milliseconds deadline);
  ~LibraryClient();
  LibraryClient(const LibraryClient&) = delete;
  LibraryClient& operator=(const LibraryClient&) = delete;

  // Throws UsageError with what is wrong about the options. All members but the constructor throw
  // LibraryDied, which leaves no process.
  void Start(const picojson::object& options);

  void Send(const picojson::object& request);
  // The answer's frame.
  picojson::value Call(picojson::object request);

  // Waits for more posted messages; false: none came in time.
  bool WaitForPosted(TimePoint until);
  std::list<PostedMessage>& posted() {
    return posted_;
  }  // the oldest first; take what is done with

 private:
  TimePoint Deadline() const { return std::chrono::steady_clock::now() + deadline_; }
  // What of the socket is ready, POLLIN or POLLOUT; 0: nothing in time.
  int Wait(int events, TimePoint until) const;
  std::optional<picojson::value> Receive(TimePoint until);  // empty: nothing came
  picojson::value ReceiveInTime(TimePoint until);
  void ReadSome();
  void Note(const picojson::value& frame);
  std::string While() const;
  [[noreturn]] void Die();
  [[noreturn]] void GiveUp();

  const std::chrono::milliseconds deadline_;
  int socket_ = -1;
  std::unique_ptr<base::ChildProcess> child_;
  int64_t last_id_ = 0;
  base::FrameReader reader_;
  std::list<PostedMessage> posted_;
  std::string handling_;  // for people
};

}  // namespace orvane::cli
