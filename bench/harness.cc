// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "harness.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

// Long enough to drown the clock's own cost, short enough for many rounds.
constexpr double kRoundNanoseconds = 10e6;

double Time(const Case& item, int64_t repeats) {
  const auto start = Clock::now();
  item.run(repeats);
  const std::chrono::duration<double, std::nano> took = Clock::now() - start;
  return took.count();
}

double Quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const double position = share * static_cast<double>(values.size() - 1);
  return values[static_cast<size_t>(position + 0.5)];
}

}  // namespace

double Case::Median() const { return Quantile(nanoseconds, 0.5); }

double Case::Spread() const {
  return (Quantile(nanoseconds, 0.75) - Quantile(nanoseconds, 0.25)) / Median();
}

size_t Harness::Add(std::string name, std::function<void(int64_t)> run) {
  cases_.push_back({std::move(name), std::move(run)});
  return cases_.size() - 1;
}

void Harness::Run(int rounds) {
  for (Case& item : cases_) {
    Calibrate(item);
  }
  for (int round = 0; round < rounds; ++round) {
    for (Case& item : cases_) {
      item.nanoseconds.push_back(Time(item, item.repeats) / static_cast<double>(item.repeats));
    }
  }
}

// Also warms the case up: engines compile what has run often enough.
void Harness::Calibrate(Case& item) {
  item.repeats = 1;
  while (Time(item, item.repeats) < kRoundNanoseconds) {
    item.repeats *= 2;
  }
}

}  // namespace bench
