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
class DrmUsage {
 public:
  // Files that are no driver's, and further files of a client that was added already, change
  // nothing.
  void Add(std::string_view fdinfo);

  bool found() const { return !clients_.empty(); }  // a driver reports figures
  uint64_t private_bytes() const { return private_bytes_; }
  const std::vector<uint64_t>& shared_bytes() const { return shared_bytes_; }  // by memory region

  static DrmUsage OfThisProcess();

 private:
  std::set<std::string> clients_;  // device and client id
  uint64_t private_bytes_ = 0;
  std::vector<uint64_t> shared_bytes_;
};

}  // namespace tvset
