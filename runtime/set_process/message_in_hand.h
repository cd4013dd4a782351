// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "posix/unique_fd.h"

namespace orvane::set_process {

// What the set process works at.
struct HandledMessage {
  std::string what;     // a request's operation, or "load"
  int64_t context = 0;  // the page's, or 0
  std::string name;     // of the extension, the method, the address
  std::string text;     // the beginning of the message
};
template <class Map>
void MapFields(Map& map, HandledMessage& message) {
  map("what", message.what);
  map("context", message.context);
  map("name", message.name);
  map("text", message.text);
}

// The message that the set process handles, in memory that it shares with its parent: it is noted
// before the handler runs, costs neither side a system call, and is still there when the handler
// has ended the process. Each side has an object of its own. The set process's extension thread
// alone writes; the parent's one thread reads, and takes nothing that it finds on trust.
class MessageInHand {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  static constexpr size_t kMostText = 4096;  // bytes of a message that are kept

  // The parent's: memory of its own. Throws std::system_error.
  MessageInHand();
  // The set process's, which owns the descriptor from then on. Throws std::system_error.
  explicit MessageInHand(base::UniqueFd memory);
  ~MessageInHand();
  MessageInHand(const MessageInHand&) = delete;
  MessageInHand& operator=(const MessageInHand&) = delete;

  int descriptor() const { return descriptor_.get(); }  // of the memory; borrowed

  // For the set process. What does not fit is cut.
  void Begin(std::string_view what, int64_t context, std::string_view name, std::string_view text);
  void End();

  // For the parent.
  bool is_busy() const;
  TimePoint last_begin() const;  // of any message; the clock's beginning when there was none
  std::optional<HandledMessage> Last() const;  // in hand or done

 private:
  struct Memory;

  const base::UniqueFd descriptor_;
  Memory* const memory_;
};

}  // namespace orvane::set_process
