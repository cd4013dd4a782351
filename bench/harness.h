// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

// One thing to measure. `run(n)` does it n times.
struct Case {
  std::string name;
  std::function<void(int64_t n)> run;
  int64_t repeats = 0;                // per round; found by Calibrate
  std::vector<double> nanoseconds{};  // per operation, one for each round

  double Median() const;
  // The middle half of the rounds, as a share of the median: how far to trust it.
  double Spread() const;
};

// Measures its cases in interleaved rounds, so that what disturbs the machine for a while disturbs
// all of them alike, and answers with medians. Single-threaded.
class Harness {
 public:
  // Cases run in the order in which they were added. References stay valid.
  size_t Add(std::string name, std::function<void(int64_t)> run);

  void Run(int rounds);

  const Case& at(size_t index) const { return cases_[index]; }

 private:
  void Calibrate(Case& item);

  std::vector<Case> cases_;
};

}  // namespace bench
