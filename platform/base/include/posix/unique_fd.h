// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <utility>

namespace orvane::base {

// Owns a descriptor and closes it; -1 stands for none. Moves, and is not copied. One thread at a
// time.
class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fd_(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fd_(other.Release()) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() { Reset(); }

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  // Gives the descriptor to the caller, who closes it.
  int Release() { return std::exchange(fd_, -1); }
  void Reset() {
    if (fd_ >= 0) close(Release());
  }

 private:
  int fd_ = -1;
};

}  // namespace orvane::base
