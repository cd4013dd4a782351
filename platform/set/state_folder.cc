// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "state_folder.h"

#include <fcntl.h>
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

using orvane::base::UniqueFd;

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

UniqueFd OpenLock(const Paths& paths) {
  MakeFolder(paths.state_folder());
  const fs::path file = paths.lock_file();
  UniqueFd descriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0664));
  if (!descriptor) Unusable(file, std::strerror(errno));
  return descriptor;
}

// Locks of the open file, which the kernel gives back when its last descriptor is closed, however
// the process ends.
struct flock WholeFile(short type) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return lock;
}

bool Lock(int descriptor, int command, short type) {
  struct flock lock = WholeFile(type);
  while (fcntl(descriptor, command, &lock) != 0) {
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
  MakeFolder(paths.app_root());
  MakeFolder(paths.settings());
  MakeDeviceId(paths.device_id_file());
}

// The lock is exclusive while the settings are removed and shared afterwards. Between the two
// another process may hold it exclusively and remove them once more, which then costs nobody a
// value.
void StateFolder::Use(bool keeps_memory) {
  if (!keeps_memory && Lock(lock_.get(), F_OFD_SETLK, F_WRLCK))
    RemoveFolder(paths_.memory_settings());
  if (!Lock(lock_.get(), F_OFD_SETLKW, F_RDLCK)) Unusable(paths_.lock_file(), std::strerror(errno));
  MakeFolder(paths_.memory_settings());
}

bool StateFolder::IsUsed(const Paths& paths) {
  const UniqueFd descriptor(open(paths.lock_file().c_str(), O_RDONLY | O_CLOEXEC));
  if (!descriptor) return false;
  // Asks who would be in the way of an exclusive lock, and takes none: a set that starts in this
  // moment must find the folder as it is.
  struct flock lock = WholeFile(F_WRLCK);
  return fcntl(descriptor.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace tvset
