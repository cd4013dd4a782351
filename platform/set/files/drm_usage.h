// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tvset {

// Graphics memory of this process as the machine's drivers report it, one text per open file of the
// process (/proc/self/fdinfo/<descriptor>, keys "drm-…"). What is shared with other processes (the
// window's buffers) and what is not are told apart, so that a sum of both counts no byte twice.
//
// Plain data, of the moment at which the texts were read. Partner of the texts in set_file_text.h.
// One thread at a time.
class DrmUsage {
 public:
  // The text of one descriptor. Files that are no driver's, and further files of a client that was
  // added already, change nothing.
  void Add(std::string_view fdinfo);

  // Whether any driver reports figures; where none does, the profile's are told instead.
  bool found() const { return !clients_.empty(); }
  // What the process shares with nobody.
  uint64_t private_bytes() const { return private_bytes_; }
  // One figure for each memory region of each client that shares any of it.
  const std::vector<uint64_t>& shared_bytes() const { return shared_bytes_; }

  // Reads the kernel's files of every descriptor, which takes as many reads.
  static DrmUsage OfThisProcess();

 private:
  // Device and client id.
  std::set<std::string> clients_;
  uint64_t private_bytes_ = 0;
  std::vector<uint64_t> shared_bytes_;
};

}  // namespace tvset
