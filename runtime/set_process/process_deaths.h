// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "base/child_process.h"
#include "base/json.h"

namespace orvane::set_process {

// How the runs of the set process ended that nobody had asked to end, the newest last. One
// thread.
class ProcessDeaths {
 public:
  // `handled` is the message that it died of, or null. `output` is what it wrote last.
  void Add(const base::ProcessEnd& end, const std::string& reason, const Json& handled,
           const std::string& output);
  // So many within so short a time that starting it again would be in vain.
  bool AreTooMany() const;
  void Clear() { deaths_.clear(); }

  bool empty() const { return deaths_.empty(); }
  Json List() const;

 private:
  struct Death {
    std::chrono::steady_clock::time_point time;
    Json description;
  };
  std::vector<Death> deaths_;
};

}  // namespace orvane::set_process
