// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "state_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

#include "tvset/error.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

[[noreturn]] void Unusable(const fs::path& path, const std::string& reason) {
  throw SetError("the state folder cannot be used: " + path.string() + ": " + reason +
                 "; choose another one with --state or ORVANE_STATE");
}

void MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) Unusable(folder, error.message());
}

int OpenLock(const Paths& paths) {
  MakeFolder(paths.state_folder());
  const fs::path file = paths.lock_file();
  const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0664);
  if (descriptor < 0) Unusable(file, std::strerror(errno));
  return descriptor;
}

bool Lock(int descriptor, int operation) {
  while (flock(descriptor, operation) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

// 32 random hexadecimal digits.
std::string RandomId() {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::random_device random;
  std::string id;
  while (id.size() < 32) id += kDigits[random() % 16];
  return id;
}

void MakeDeviceId(const fs::path& file) {
  std::error_code error;
  if (fs::exists(file, error)) return;
  MakeFolder(file.parent_path());
  const fs::path temporary = file.string() + "." + std::to_string(getpid());
  {
    std::ofstream stream(temporary);
    stream << RandomId() << "\n";
    if (!stream) Unusable(temporary, "it cannot be written");
  }
  fs::rename(temporary, file, error);
  if (error) Unusable(file, error.message());
}

// Moves the folder out of the way first: a thread that still writes a setting then neither keeps it
// from being emptied nor sees it half empty.
void RemoveFolder(const fs::path& folder) {
  const fs::path gone = folder.string() + ".gone";
  std::error_code error;
  fs::remove_all(gone, error);
  fs::rename(folder, gone, error);
  if (error && error != std::errc::no_such_file_or_directory) Unusable(folder, error.message());
  fs::remove_all(gone, error);
}

}  // namespace

StateFolder::StateFolder(const Paths& paths) : paths_(paths), lock_(OpenLock(paths)) {
  try {
    MakeFolder(paths.app_root());
    MakeFolder(paths.settings());
    MakeDeviceId(paths.device_id_file());
  } catch (...) {
    close(lock_);
    throw;
  }
}

StateFolder::~StateFolder() { close(lock_); }

// The lock is exclusive while the settings are removed and shared afterwards. Between the two
// another process may hold it exclusively and remove them once more, which then costs nobody a
// value.
void StateFolder::Use() {
  if (Lock(lock_, LOCK_EX | LOCK_NB)) RemoveFolder(paths_.memory_settings());
  if (!Lock(lock_, LOCK_SH)) Unusable(paths_.lock_file(), std::strerror(errno));
  MakeFolder(paths_.memory_settings());
}

}  // namespace tvset
