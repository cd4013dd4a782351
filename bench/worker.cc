// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// orvane-bench LIBRARY UNSCRIPTED_LIBRARY EMPTY_LIBRARY PAGES APPLICATIONS
// A process that measures when it is told to. Says "ready", then answers each line of its input:
//   CASE REPEATS   with "PROCESSOR WALL SWITCHES": nanoseconds of processor time of all its
//   threads,
//                  nanoseconds that passed, and how often another process was put in its place
//   memory PAGES   with the KiB that a page takes
// What fails is said on its standard error, and ends it.

#include <stdio.h>
#include <sys/resource.h>
#include <time.h>

#include <cinttypes>
#include <cstdint>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "cases.h"

namespace {

int64_t Read(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

int64_t InvoluntarySwitches() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_nivcsw;
}

void Measure(bench::Cases& cases, const std::string& name, int64_t repeats) {
  const int64_t switches = InvoluntarySwitches();
  const int64_t wall = Read(CLOCK_MONOTONIC);
  const int64_t processor = Read(CLOCK_PROCESS_CPUTIME_ID);
  cases.Run(name, repeats);
  const int64_t used = Read(CLOCK_PROCESS_CPUTIME_ID) - processor;
  const int64_t passed = Read(CLOCK_MONOTONIC) - wall;
  printf("%" PRId64 " %" PRId64 " %" PRId64 "\n", used, passed, InvoluntarySwitches() - switches);
}

void Serve(bench::Cases& cases) {
  puts("ready");
  fflush(stdout);
  std::string name;
  int64_t count = 0;
  while (std::cin >> name >> count) {
    if (name == "memory") {
      printf("%.1f\n", cases.MeasurePage(static_cast<int>(count)));
    } else {
      Measure(cases, name, count);
    }
    fflush(stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() != 5) {
    fprintf(stderr, "bench/run.mjs knows the arguments.\n");
    return 2;
  }
  try {
    bench::Cases cases({arguments[0], arguments[1], arguments[2]}, std::stoi(arguments[3]),
                       std::stoi(arguments[4]));
    Serve(cases);
  } catch (const std::exception& error) {
    fprintf(stderr, "orvane-bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
