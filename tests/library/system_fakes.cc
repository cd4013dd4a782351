// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "system_fakes.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <stdexcept>

#include <app_manager.h>
#include <pkgmgr-info.h>

// Defined here, and visible to the shared libraries of the process, instead of in the C library.
#define INTERPOSED extern "C" __attribute__((visibility("default")))

namespace {

constexpr int kKernelMarkerOption = 666;

struct Redirection {
  std::string other;
  std::string mode;
};

struct Fakes {
  std::mutex mutex;
  // All guarded by mutex.
  std::map<std::string, Redirection> files;
  std::map<std::string, std::string> stats;
  std::set<std::string> failing_stats;
  bool fail_write = false;
  bool fail_strdup = false;
  bool null_metadata = false;
  pid_t pid = 0;
  bool fake_commands = false;
  bool fail_commands = false;
  std::string command_output;
  std::vector<std::string> commands;
  int open_pipes = 0;
  std::vector<orvane::test::KernelMarker> markers;
  std::optional<int> app_state;
};

// Null when nothing is faked: the functions below are called before main as well.
std::atomic<Fakes*> g_fakes{nullptr};

Fakes& Current() { return *g_fakes.load(); }

// The function that would have been called. It is called with no lock held: it may be the simulated
// set's, which asks for files on its own account.
template <class Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Takes a flag back: the failure is for one call.
bool TakeFlag(bool Fakes::*flag) {
  Fakes* const fakes = g_fakes.load();
  if (fakes == nullptr) {
    return false;
  }
  const std::lock_guard<std::mutex> lock(fakes->mutex);
  const bool was_set = fakes->*flag;
  fakes->*flag = false;
  return was_set;
}

std::string FileToOpen(const char* path, const char* mode) {
  Fakes* const fakes = g_fakes.load();
  if (fakes == nullptr) {
    return path;
  }
  const std::lock_guard<std::mutex> lock(fakes->mutex);
  const auto found = fakes->files.find(path);
  if (found == fakes->files.end() || (!found->second.mode.empty() && found->second.mode != mode)) {
    return path;
  }
  return found->second.other;
}

}  // namespace

INTERPOSED FILE* fopen(const char* path, const char* mode) {
  static auto* const real = Real<FILE*(const char*, const char*)>("fopen");
  return real(FileToOpen(path, mode).c_str(), mode);
}

// What the C++ library's file streams call.
INTERPOSED FILE* fopen64(const char* path, const char* mode) {
  static auto* const real = Real<FILE*(const char*, const char*)>("fopen64");
  return real(FileToOpen(path, mode).c_str(), mode);
}

INTERPOSED size_t fwrite(const void* data, size_t size, size_t count, FILE* file) {
  static auto* const real = Real<size_t(const void*, size_t, size_t, FILE*)>("fwrite");
  return real(data, size, TakeFlag(&Fakes::fail_write) ? count - 1 : count, file);
}

INTERPOSED int stat(const char* path, struct stat* status) noexcept {
  static auto* const real = Real<int(const char*, struct stat*)>("stat");
  std::string file(path);
  if (Fakes* const fakes = g_fakes.load()) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    if (fakes->failing_stats.count(file) != 0) {
      errno = EIO;
      return -1;
    }
    const auto found = fakes->stats.find(file);
    if (found != fakes->stats.end()) {
      file = found->second;
    }
  }
  return real(file.c_str(), status);
}

INTERPOSED char* strdup(const char* text) noexcept {
  static auto* const real = Real<char*(const char*)>("strdup");
  return TakeFlag(&Fakes::fail_strdup) ? nullptr : real(text);
}

INTERPOSED pid_t getpid() noexcept {
  static auto* const real = Real<pid_t()>("getpid");
  Fakes* const fakes = g_fakes.load();
  if (fakes != nullptr) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    if (fakes->pid != 0) {
      return fakes->pid;
    }
  }
  return real();
}

INTERPOSED FILE* popen(const char* command, const char* mode) {
  static auto* const real = Real<FILE*(const char*, const char*)>("popen");
  std::string line(command);
  if (Fakes* const fakes = g_fakes.load()) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    fakes->commands.push_back(line);
    if (fakes->fail_commands) {
      return nullptr;
    }
    ++fakes->open_pipes;
    if (fakes->fake_commands) {
      line = "printf '%s' '" + fakes->command_output + "'";
    }
  }
  return real(line.c_str(), mode);
}

INTERPOSED int pclose(FILE* pipe) {
  static auto* const real = Real<int(FILE*)>("pclose");
  if (Fakes* const fakes = g_fakes.load()) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    --fakes->open_pipes;
  }
  return real(pipe);
}

INTERPOSED int prctl(int option, ...) noexcept {
  static auto* const real = Real<int(int, ...)>("prctl");
  va_list list;
  va_start(list, option);
  unsigned long arguments[4];  // NOLINT(google-runtime-int): the kernel's words
  for (unsigned long& argument : arguments) {
    argument = va_arg(list, unsigned long);
  }
  va_end(list);
  Fakes* const fakes = g_fakes.load();
  if (fakes != nullptr && option == kKernelMarkerOption) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    fakes->markers.push_back({reinterpret_cast<const char*>(arguments[0]), arguments[1]});
    return 0;
  }
  return real(option, arguments[0], arguments[1], arguments[2], arguments[3]);
}

INTERPOSED int app_context_get_app_state(app_context_h context, app_state_e* state) {
  static auto* const real = Real<int(app_context_h, app_state_e*)>("app_context_get_app_state");
  Fakes* const fakes = g_fakes.load();
  if (fakes != nullptr) {
    const std::lock_guard<std::mutex> lock(fakes->mutex);
    if (fakes->app_state) {
      // As a set's library does, whatever the enumeration says.
      memcpy(state, &*fakes->app_state, sizeof(*state));
      return APP_MANAGER_ERROR_NONE;
    }
  }
  return real(context, state);
}

INTERPOSED int pkgmgrinfo_appinfo_get_metadata_value(pkgmgrinfo_appinfo_h handle, const char* key,
                                                     char** value) {
  static auto* const real =
      Real<int(pkgmgrinfo_appinfo_h, const char*, char**)>("pkgmgrinfo_appinfo_get_metadata_value");
  if (TakeFlag(&Fakes::null_metadata)) {
    *value = nullptr;
    return PMINFO_R_OK;
  }
  return real(handle, key, value);
}

namespace orvane::test {

SystemFakes::SystemFakes() {
  if (g_fakes.load() != nullptr) {
    throw std::logic_error("there are system fakes already");
  }
  // Never freed: a thread of another test's may be looking at one.
  static std::vector<std::unique_ptr<Fakes>> all;
  all.push_back(std::make_unique<Fakes>());
  g_fakes = all.back().get();
}

SystemFakes::~SystemFakes() { g_fakes = nullptr; }

void SystemFakes::RedirectFile(const std::string& path, const std::string& other,
                               const std::string& mode) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().files[path] = {other, mode};
}

void SystemFakes::FailStat(const std::string& path) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().failing_stats.insert(path);
}

void SystemFakes::RedirectStat(const std::string& path, const std::string& other) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().stats[path] = other;
}

void SystemFakes::FailNextWrite() {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().fail_write = true;
}

void SystemFakes::FailNextStrdup() {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().fail_strdup = true;
}

void SystemFakes::SetPid(pid_t pid) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().pid = pid;
}

void SystemFakes::SetCommandOutput(const std::string& output) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().fake_commands = true;
  Current().command_output = output;
}

void SystemFakes::FailCommands() {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().fail_commands = true;
}

const std::vector<std::string>& SystemFakes::commands() const { return Current().commands; }

int SystemFakes::open_pipes() const { return Current().open_pipes; }

const std::vector<KernelMarker>& SystemFakes::markers() const { return Current().markers; }

void SystemFakes::GiveNoNextMetadataValue() {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().null_metadata = true;
}

void SystemFakes::ReportAppState(int state) {
  const std::lock_guard<std::mutex> lock(Current().mutex);
  Current().app_state = state;
}

}  // namespace orvane::test
