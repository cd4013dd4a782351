// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Functions of the C library that this library stands before in the process's symbol look-up order.
// Each looks whether the call is for something that only a set has, while a set runs, and otherwise
// hands it on unchanged to another definition: the C library's, or a sanitizer's. Where the C
// library comes before this one, these are simply not called (SetFiles::in_force).
//
// They may be called before this library is initialised, and in a child between fork and exec:
// nothing here has a constructor, and the next definitions are looked up as soon as the library is
// loaded.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "files/set_file_paths.h"
#include "files/set_file_reader.h"
#include "posix/write_all.h"
#include "tvset/export.h"
#include "tvset/set.h"

// The C library's headers declare these functions with attributes that do not hold here (that a
// path is never null, for one), so they are defined under names of their own.
#define TVSET_INTERPOSES(symbol) __asm__(#symbol) TVSET_EXPORT

extern "C" {
FILE* TvsetFopen(const char* path, const char* mode) TVSET_INTERPOSES(fopen);
FILE* TvsetFopen64(const char* path, const char* mode) TVSET_INTERPOSES(fopen64);
int TvsetStat(const char* path, struct stat* status) TVSET_INTERPOSES(stat);
int TvsetStat64(const char* path, struct stat* status) TVSET_INTERPOSES(stat64);
FILE* TvsetPopen(const char* command, const char* mode) TVSET_INTERPOSES(popen);
int TvsetPrctl(int option, ...) TVSET_INTERPOSES(prctl);
}

namespace tvset {
namespace {

constexpr int kKernelMarker = 666;  // of the television's kernel
constexpr std::string_view kTopCommand = "/usr/bin/top ";

using OpenFunction = FILE* (*)(const char*, const char*);
using StatFunction = int (*)(const char*, struct stat*);
using PrctlFunction = int (*)(int, ...);

bool IsInThisLibrary(void* symbol) {
  static const char here = 0;
  Dl_info own{};
  Dl_info other{};
  return dladdr(&here, &own) != 0 && dladdr(symbol, &other) != 0 &&
         own.dli_fbase == other.dli_fbase;
}

// Another definition of a function than this library's.
template <typename Function>
class Next {
 public:
  explicit constexpr Next(const char* name) : name_(name) {}

  Function get() {
    const Function function = function_.load(std::memory_order_relaxed);
    return __builtin_expect(function != nullptr, 1) ? function : Resolve();
  }

 private:
  [[gnu::noinline, gnu::cold]] Function Resolve() {
    void* symbol = dlsym(RTLD_NEXT, name_);
    // A program that does not link this library itself may have the C library before it.
    if (symbol == nullptr) symbol = dlsym(RTLD_DEFAULT, name_);
    if (symbol == nullptr || IsInThisLibrary(symbol)) Die();
    const auto function = reinterpret_cast<Function>(symbol);
    function_.store(function, std::memory_order_relaxed);
    return function;
  }

  [[noreturn]] void Die() const {
    for (const char* part : {"libtvset.so: there is no C library with the function ", name_,
                             " in this process; link the program with libtvset.so\n"}) {
      orvane::base::WriteAll(STDERR_FILENO, part);
    }
    std::abort();
  }

  const char* const name_;
  std::atomic<Function> function_{nullptr};
};

Next<OpenFunction> g_fopen("fopen");
Next<OpenFunction> g_fopen64("fopen64");
Next<StatFunction> g_stat("stat");
Next<StatFunction> g_stat64("stat64");
Next<OpenFunction> g_popen("popen");
Next<PrctlFunction> g_prctl("prctl");

__attribute__((constructor)) void ResolveAll() {
  g_fopen.get();
  g_fopen64.get();
  g_stat.get();
  g_stat64.get();
  g_popen.get();
  g_prctl.get();
}

template <typename Result>
Result Fail(int error, Result result) {
  errno = error;
  return result;
}

// A stream of its own over the text, with a descriptor that can be read, asked for its size and
// moved in.
FILE* StreamOver(std::string_view text) {
  const int descriptor = memfd_create("tvset", MFD_CLOEXEC);
  if (descriptor < 0) return nullptr;
  const bool complete =
      orvane::base::WriteAll(descriptor, text) && lseek(descriptor, 0, SEEK_SET) == 0;
  FILE* const stream = complete ? fdopen(descriptor, "r") : nullptr;
  if (stream == nullptr) {
    const int error = errno;
    close(descriptor);
    errno = error;
  }
  return stream;
}

bool IsForReading(const char* mode) {
  return mode != nullptr && mode[0] == 'r' && std::strchr(mode, '+') == nullptr;
}

using Access = SetFileReader::Access;
using AnswerKind = SetFileReader::AnswerKind;

[[gnu::noinline, gnu::cold]] FILE* OpenSetFile(const SetFiles& files, SetFile file,
                                               const char* path, const char* mode,
                                               OpenFunction machine) noexcept {
  try {
    const Access access = SetFileReader(files).Open(file);
    if (access.answer == AnswerKind::kMachine) return machine(path, mode);
    if (access.answer == AnswerKind::kError) return Fail<FILE*>(access.error, nullptr);
    return IsForReading(mode) ? StreamOver(access.text) : Fail<FILE*>(EACCES, nullptr);
  } catch (...) {
    return Fail<FILE*>(ENOMEM, nullptr);
  }
}

// A file that the set makes when it is opened: like those of the kernel it has no size.
struct stat StatusOfOwn() {
  struct stat status = {};
  status.st_mode = S_IFREG | 0444;
  status.st_nlink = 1;
  status.st_blksize = 4096;
  return status;
}

[[gnu::noinline, gnu::cold]] int StatusOfSetFile(const SetFiles& files, SetFile file,
                                                 const char* path, struct stat* status,
                                                 StatFunction machine) noexcept {
  try {
    const Access access = SetFileReader(files).Status(file);
    if (access.answer == AnswerKind::kMachine) return machine(path, status);
    if (access.answer == AnswerKind::kError) return Fail(access.error, -1);
    if (access.answer == AnswerKind::kFile) return machine(access.path.c_str(), status);
    if (status == nullptr) return Fail(EFAULT, -1);
    *status = StatusOfOwn();
    return 0;
  } catch (...) {
    return Fail(ENOMEM, -1);
  }
}

[[gnu::noinline, gnu::cold]] FILE* StartSetTop(const SetFiles& files, const char* arguments,
                                               const char* mode) noexcept {
  try {
    const Access access = SetFileReader(files).Command();
    if (access.answer == AnswerKind::kError) return Fail<FILE*>(access.error, nullptr);
    return g_popen.get()((access.text + " " + arguments).c_str(), mode);
  } catch (...) {
    return Fail<FILE*>(ENOMEM, nullptr);
  }
}

[[gnu::noinline]] FILE* OpenSlowly(const char* path, const char* mode, OpenFunction machine) {
  const std::optional<SetFile> file = SetFileAt(path);
  const SetFiles* const files = file ? SetFileReader::Running() : nullptr;
  return files != nullptr ? OpenSetFile(*files, *file, path, mode, machine) : machine(path, mode);
}

[[gnu::noinline]] int StatusSlowly(const char* path, struct stat* status, StatFunction machine) {
  const std::optional<SetFile> file = SetFileAt(path);
  const SetFiles* const files = file ? SetFileReader::Running() : nullptr;
  return files != nullptr ? StatusOfSetFile(*files, *file, path, status, machine)
                          : machine(path, status);
}

// The television's kernel takes a text and its length.
[[gnu::noinline, gnu::cold]] int RecordMarker(const char* text, unsigned long length) noexcept {
  if (text == nullptr && length != 0) return Fail(EFAULT, -1);
  try {
    Set& set = Set::Instance();
    if (const std::optional<int> code = set.faults().Take("prctl")) return Fail(*code, -1);
    set.kernel_markers().Record(text, length);
    return 0;
  } catch (...) {
    return Fail(ENOMEM, -1);
  }
}

}  // namespace
}  // namespace tvset

FILE* TvsetFopen(const char* path, const char* mode) {
  const tvset::OpenFunction machine = tvset::g_fopen.get();
  if (!tvset::MayBeSetFile(path)) return machine(path, mode);
  return tvset::OpenSlowly(path, mode, machine);
}

FILE* TvsetFopen64(const char* path, const char* mode) {
  const tvset::OpenFunction machine = tvset::g_fopen64.get();
  if (!tvset::MayBeSetFile(path)) return machine(path, mode);
  return tvset::OpenSlowly(path, mode, machine);
}

int TvsetStat(const char* path, struct stat* status) {
  const tvset::StatFunction machine = tvset::g_stat.get();
  if (!tvset::MayBeSetFile(path)) return machine(path, status);
  return tvset::StatusSlowly(path, status, machine);
}

int TvsetStat64(const char* path, struct stat* status) {
  const tvset::StatFunction machine = tvset::g_stat64.get();
  if (!tvset::MayBeSetFile(path)) return machine(path, status);
  return tvset::StatusSlowly(path, status, machine);
}

FILE* TvsetPopen(const char* command, const char* mode) {
  constexpr std::string_view kTop = tvset::kTopCommand;
  if (command != nullptr && std::strncmp(command, kTop.data(), kTop.size()) == 0) {
    if (const tvset::SetFiles* files = tvset::SetFileReader::Running()) {
      return tvset::StartSetTop(*files, command + kTop.size(), mode);
    }
  }
  return tvset::g_popen.get()(command, mode);
}

// The kernel takes four arguments at most; those that the caller left out are read as well, and
// ignored by the option, as the C library does.
int TvsetPrctl(int option, ...) {
  va_list list;
  va_start(list, option);
  const unsigned long first = va_arg(list, unsigned long);
  const unsigned long second = va_arg(list, unsigned long);
  const unsigned long third = va_arg(list, unsigned long);
  const unsigned long fourth = va_arg(list, unsigned long);
  va_end(list);
  if (option == tvset::kKernelMarker && tvset::SetFileReader::Running() != nullptr) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel's argument words hold a pointer here
    return tvset::RecordMarker(reinterpret_cast<const char*>(first), second);
  }
  return tvset::g_prctl.get()(option, first, second, third, fourth);
}
