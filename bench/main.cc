// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// orvane-bench LIBRARY EMPTY_LIBRARY BARE_LIBRARY [NODE_SCRIPT NODE_ADDON]: measures, in one run,
// what the library and the runtime cost, and prints ratios. bench/run gives the arguments.

#include <dlfcn.h>
#include <stdio.h>

#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <JavaScriptCore/JavaScript.h>

#include "harness.h"
#include "page/page.h"
#include "script_loops.h"
#include "thread_hand_off.h"
#include "world.h"

namespace {

constexpr int kRounds = 31;
constexpr std::chrono::seconds kLoopLimit(60);
constexpr int64_t kStormCalls = 10000;

class SilentClient final : public orvane::extensions::InstanceClient {
 public:
  void OnMessage(std::string_view /*text*/) override {}
  void OnBinaryMessage(std::string_view /*bytes*/) override {}
};

void LoadAndUnload(const std::string& library, int64_t count) {
  for (int64_t i = 0; i < count; ++i) {
    void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
      throw std::runtime_error(dlerror());
    }
    dlclose(handle);
  }
}

// The nanoseconds that the script of bench/node prints; 0 when it was not given or fails.
double MeasureNodeAddon(const std::vector<std::string>& arguments) {
  if (arguments.size() < 5) {
    return 0;
  }
  const std::string command = "node '" + arguments[3] + "' '" + arguments[4] + "'";
  FILE* const output = popen(command.c_str(), "r");
  double nanoseconds = 0;
  const bool read = output != nullptr && fscanf(output, "%lf", &nanoseconds) == 1;
  if (output != nullptr) {
    pclose(output);
  }
  return read ? nanoseconds : 0;
}

void PrintRow(const char* name, double nanoseconds, double reference, const char* unit,
              const char* aim) {
  printf("%-58s %12.0f ns   %8.2f %-22s %s\n", name, nanoseconds, nanoseconds / reference, unit,
         aim);
}

struct Indexes {
  size_t limit, call, context, instance, page, empty_load, load, hand_off, asynchronous, storm;
};

void Print(const bench::Harness& harness, const Indexes& at, double node) {
  const auto median = [&harness](size_t index) { return harness.at(index).Median(); };
  const double limit = median(at.limit);
  printf("%-58s %15s   %8s %-22s %s\n", "What", "median", "ratio", "to", "aim");
  PrintRow("Limit L: 88 bytes into a native function, 44 out", limit, limit, "L", "");
  PrintRow("Synchronous call, page script to reply (getAppState)", median(at.call), limit, "L",
           "2.2");
  if (node > 0) {
    PrintRow("The same JSON work behind Node's add-on interface", node, limit, "L", "");
  }
  PrintRow("Bare script context, made and released", median(at.context), median(at.context),
           "bare context", "");
  PrintRow("Instance, created and destroyed", median(at.instance), median(at.context),
           "bare context", "");
  PrintRow("Instance with its page and script", median(at.page), median(at.context), "bare context",
           "1.5");
  PrintRow("Empty C library, loaded and unloaded", median(at.empty_load), median(at.empty_load),
           "empty library", "");
  PrintRow("The library, loaded and unloaded", median(at.load), median(at.empty_load),
           "empty library", "");
  const double hand_off = median(at.hand_off);
  const double floor = hand_off + median(at.call);
  PrintRow("Hand-off to a worker thread and back", hand_off, hand_off, "hand-off", "");
  PrintRow("Asynchronous call, page script to callback", median(at.asynchronous), floor,
           "hand-off + sync. call", "hand-off + 1.2 sync. calls");
  printf("%-58s %12.2f synchronous calls beyond the hand-off\n", "  of which",
         (median(at.asynchronous) - hand_off) / median(at.call));
  PrintRow("Storm of 10,000 asynchronous calls, per message", median(at.storm) / kStormCalls,
           median(at.call), "sync. call", "");
}

void PrintSizes(const std::vector<std::string>& arguments) {
  const auto size = std::filesystem::file_size(arguments[0]);
  const auto bare = std::filesystem::file_size(arguments[2]);
  printf("\n%-58s %12zu bytes\n", "Stripped library", static_cast<size_t>(size));
  printf("%-58s %12zu bytes\n", "Stripped library without its script text",
         static_cast<size_t>(bare));
}

void Measure(const std::vector<std::string>& arguments) {
  bench::World world(arguments[0]);
  const auto page = world.MakePage();
  JSContextRef context = page->context();
  bench::DefineLoops(context);
  const JSContextGroupRef group = JSContextGetGroup(context);
  SilentClient client;
  bench::ThreadHandOff hand_off;

  const auto loop = [context](const char* name) {
    return [context, name](int64_t count) { bench::RunLoop(context, name, count); };
  };
  const auto loop_until_idle = [&page, context](const char* name) {
    return [&page, context, name](int64_t count) {
      bench::RunLoop(context, name, count);
      if (!page->RunUntilIdle(kLoopLimit)) {
        throw std::runtime_error("The page did not become idle");
      }
    };
  };
  bench::Harness harness;
  Indexes at{};
  at.limit = harness.Add("limit", loop("limit"));
  at.call = harness.Add("call", loop("synchronousCall"));
  at.context = harness.Add("context", [group](int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      JSGlobalContextRelease(JSGlobalContextCreateInGroup(group, nullptr));
    }
  });
  at.instance = harness.Add("instance", [&world, &client](int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      world.extension().CreateInstance(&client);
    }
  });
  at.page = harness.Add("page", [&world](int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      const auto other = world.MakePage();
      bench::Evaluate(other->context(), "dravelt.orvane");
    }
  });
  at.empty_load =
      harness.Add("empty load", [&](int64_t count) { LoadAndUnload(arguments[1], count); });
  // Another file than the one in use, which would only be counted up.
  at.load = harness.Add("load", [&](int64_t count) { LoadAndUnload(arguments[2], count); });
  at.hand_off = harness.Add("hand-off", [&hand_off](int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      hand_off.GoAndReturn();
    }
  });
  at.asynchronous = harness.Add("asynchronous", loop_until_idle("asynchronousCalls"));
  at.storm = harness.Add("storm", [&](int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      loop_until_idle("storm")(kStormCalls);
    }
  });
  harness.Run(kRounds);
  Print(harness, at, MeasureNodeAddon(arguments));
  PrintSizes(arguments);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 3) {
    fprintf(stderr, "Run bench/run: it knows the arguments.\n");
    return 2;
  }
  try {
    Measure(arguments);
  } catch (const std::exception& error) {
    fprintf(stderr, "orvane-bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
