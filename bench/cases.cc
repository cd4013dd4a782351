// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "cases.h"

#include <dlfcn.h>

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include <JavaScriptCore/JavaScript.h>

#include "script_loops.h"

namespace bench {

namespace {

constexpr std::chrono::seconds kLoopLimit(60);

class SilentClient final : public extensions::InstanceClient {
 public:
  void OnMessage(std::string_view /*text*/) override {}
  void OnBinaryMessage(std::string_view /*bytes*/) override {}
};

void Repeat(int64_t count, const std::function<void()>& action) {
  for (int64_t i = 0; i < count; ++i) {
    action();
  }
}

void LoadAndUnload(const std::filesystem::path& library) {
  void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    throw std::runtime_error(dlerror());
  }
  dlclose(handle);
}

// What this process has written to and shares with no other.
double PrivateKibibytes() {
  std::ifstream file("/proc/self/smaps_rollup");
  std::string word;
  while (file >> word) {
    double kibibytes = 0;
    if (word == "Private_Dirty:" && file >> kibibytes) {
      return kibibytes;
    }
  }
  throw std::runtime_error("The kernel does not tell this process's memory");
}

}  // namespace

Cases::Cases(const Libraries& libraries, int pages, int applications)
    : world_(libraries.measured, applications) {
  for (int i = 0; i < pages; ++i) {
    pages_.push_back(world_.MakeTouchedPage());
  }
  DefineLoops(pages_.front()->context());
  AddCalls();
  AddPages();
  AddLibraries(libraries);
}

void Cases::Run(const std::string& name, int64_t repeats) {
  const auto found = cases_.find(name);
  if (found == cases_.end()) {
    throw std::runtime_error("There is no case " + name);
  }
  found->second(repeats);
}

double Cases::MeasurePage(int pages) {
  std::vector<std::unique_ptr<orvane::page::Page>> alive;
  alive.reserve(static_cast<size_t>(pages));
  const double before = PrivateKibibytes();
  Repeat(pages, [&] { alive.push_back(world_.MakeTouchedPage()); });
  return (PrivateKibibytes() - before) / pages;
}

void Cases::AddCalls() {
  for (const char* loop : {"limit", "sameCall", "differentCalls"}) {
    cases_[loop] = [this, loop](int64_t count) { RunLoop(pages_.front()->context(), loop, count); };
  }
  cases_["handOff"] = [this](int64_t count) { Repeat(count, [this] { hand_off_.GoAndReturn(); }); };
  cases_["asynchronousCall"] = [this](int64_t count) { RunUntilIdle("asynchronousCalls", count); };
  cases_["storm"] = [this](int64_t count) {
    Repeat(count, [this] { RunUntilIdle("storm", kStormCalls); });
  };
}

void Cases::AddPages() {
  cases_["context"] = [this](int64_t count) {
    const JSContextGroupRef group = JSContextGetGroup(pages_.front()->context());
    Repeat(count,
           [group] { JSGlobalContextRelease(JSGlobalContextCreateInGroup(group, nullptr)); });
  };
  cases_["instance"] = [this](int64_t count) {
    SilentClient client;
    Repeat(count, [&] { world_.extension().CreateInstance(&client); });
  };
  cases_["page"] = [this](int64_t count) { Repeat(count, [this] { world_.MakePage(); }); };
  cases_["touchedPage"] = [this](int64_t count) {
    Repeat(count, [this] { world_.MakeTouchedPage(); });
  };
}

// The library in use would only be counted up, so another file is loaded.
void Cases::AddLibraries(const Libraries& libraries) {
  cases_["load"] = [file = libraries.unscripted](int64_t count) {
    Repeat(count, [&file] { LoadAndUnload(file); });
  };
  cases_["emptyLoad"] = [file = libraries.empty](int64_t count) {
    Repeat(count, [&file] { LoadAndUnload(file); });
  };
}

void Cases::RunUntilIdle(const char* loop, int64_t count) {
  RunLoop(pages_.front()->context(), loop, count);
  if (!pages_.front()->RunUntilIdle(kLoopLimit)) {
    throw std::runtime_error("The page did not become idle");
  }
}

}  // namespace bench
