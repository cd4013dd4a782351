// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// orvane-bench-set-files: what the set's functions before the C library's cost a process that opens
// or asks for any other file, in one run, as ratios.
//
// The difference is a few nanoseconds in a microsecond, so the two are measured in turns of less
// than a scheduler's tick, by the thread's own CPU clock, and their medians compared.

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <time.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tvset/set.h"

namespace {

constexpr int kRounds = 4000;
constexpr int kCallsPerRound = 50;

using OpenFunction = FILE* (*)(const char*, const char*);
using StatFunction = int (*)(const char*, struct stat*);
using ProcessFunction = int (*)(int, ...);

// The C library's own definition, as a program without the set calls it.
template <typename Function>
Function FromLibrary(const char* name) {
  static void* const library = dlopen("libc.so.6", RTLD_NOW | RTLD_NOLOAD);
  void* const symbol = library == nullptr ? nullptr : dlsym(library, name);
  if (symbol == nullptr) {
    throw std::runtime_error(std::string("The C library has no ") + name);
  }
  return reinterpret_cast<Function>(symbol);
}

void OpenAndClose(OpenFunction open, const std::string& path) {
  FILE* const stream = open(path.c_str(), "r");
  if (stream == nullptr) {
    throw std::runtime_error("Cannot open " + path);
  }
  fclose(stream);
}

void AskStatus(StatFunction function, const std::string& path) {
  struct stat status = {};
  function(path.c_str(), &status);
}

void AskName(ProcessFunction function) {
  char name[16] = {};
  function(PR_GET_NAME, name);
}

double CpuNanoseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double TimePerCall(const std::function<void()>& call) {
  const double begin = CpuNanoseconds();
  for (int i = 0; i < kCallsPerRound; ++i) {
    call();
  }
  return (CpuNanoseconds() - begin) / kCallsPerRound;
}

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void Compare(const char* name, const std::function<void()>& library,
             const std::function<void()>& set) {
  std::vector<double> with_library;
  std::vector<double> with_set;
  for (int round = 0; round < kRounds; ++round) {
    // Each goes first in half of the rounds.
    const bool library_first = round % 2 == 0;
    if (library_first) {
      with_library.push_back(TimePerCall(library));
    }
    with_set.push_back(TimePerCall(set));
    if (!library_first) {
      with_library.push_back(TimePerCall(library));
    }
  }
  const double reference = Median(with_library);
  const double measured = Median(with_set);
  printf("%-40s %9.0f ns %9.0f ns %8.3f   1.05\n", name, reference, measured, measured / reference);
}

void Run(const std::filesystem::path& folder) {
  tvset::Set::Start({folder, "uhd"});
  if (!tvset::SetFiles::in_force()) {
    throw std::runtime_error("The set's files are not in force in this program");
  }
  const std::string file = folder / "lock";
  const auto library_open = FromLibrary<OpenFunction>("fopen64");
  const auto library_stat = FromLibrary<StatFunction>("stat");
  const auto library_prctl = FromLibrary<ProcessFunction>("prctl");
  printf("%-40s %12s %12s %8s   aim\n", "What", "C library", "with the set", "ratio");
  // A path that begins as one of the set's does takes the longest comparison.
  for (const std::string& path : {file, std::string("/proc/uptime"), std::string("/etc/passwd")}) {
    const std::string name = "open and close a file of " +
                             (path == file ? "the state folder" : path.substr(0, path.rfind('/')));
    Compare(
        name.c_str(), [&] { OpenAndClose(library_open, path); },
        [&] { OpenAndClose(fopen64, path); });
  }
  Compare(
      "ask for the status of a file", [&] { AskStatus(library_stat, file); },
      [&] { AskStatus(stat, file); });
  Compare(
      "ask for the thread's name with prctl", [&] { AskName(library_prctl); },
      [] { AskName(prctl); });
}

}  // namespace

int main() {
  std::string folder = std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) {
    return 1;
  }
  int result = 0;
  try {
    Run(folder);
  } catch (const std::exception& error) {
    fprintf(stderr, "orvane-bench-set-files: %s\n", error.what());
    result = 1;
  }
  tvset::Set::Stop();
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return result;
}
