// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "thread_hand_off.h"
#include "world.h"

namespace bench {

// The calls of the case "storm" for each repetition.
constexpr int64_t kStormCalls = 10000;

// What a worker can measure, by name, over pages that stay alive meanwhile. Calls are made in the
// first of them. One thread only.
class Cases {
 public:
  struct Libraries {
    std::filesystem::path measured;
    std::filesystem::path unscripted;  // the same without its script text: not loaded yet
    std::filesystem::path empty;
  };

  Cases(const Libraries& libraries, int pages, int applications);

  // Does the thing `repeats` times. Throws std::runtime_error when it fails, or has no such name.
  void Run(const std::string& name, int64_t repeats);

  // The memory that one more touched page takes of this process alone, in KiB: the mean of `pages`
  // that are alive together.
  double MeasurePage(int pages);

 private:
  using Case = std::function<void(int64_t repeats)>;

  void AddCalls();
  void AddPages();
  void AddLibraries(const Libraries& libraries);
  void RunUntilIdle(const char* loop, int64_t count);

  World world_;
  ThreadHandOff hand_off_;
  std::vector<std::unique_ptr<orvane::page::Page>> pages_;
  std::map<std::string, Case> cases_;
};

}  // namespace bench
