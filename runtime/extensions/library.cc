// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/library.h"

#include <elf.h>
#include <link.h>

#include <cstring>
#include <fstream>
#include <string>
#include <system_error>

#include "extensions/host_error.h"
#include "extensions/registry.h"

namespace orvane::extensions {
namespace {

[[noreturn]] void Refuse(const std::filesystem::path& library, const std::string& why) {
  throw HostError("Cannot load " + library.string() + ": " + why);
}

// False when the file ends before.
template <typename Value>
bool ReadAt(std::ifstream& file, uint64_t offset, Value* value) {
  file.clear();
  file.seekg(static_cast<std::streamoff>(offset));
  file.read(reinterpret_cast<char*>(value), sizeof *value);
  return static_cast<bool>(file);
}

// A class or byte order of another machine is the loader's to refuse; its headers would be misread
// here.
bool IsOfThisMachine(const ElfW(Ehdr) & header) {
  constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
  constexpr unsigned char kByteOrder =
      __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;
  return header.e_ident[EI_CLASS] == kClass && header.e_ident[EI_DATA] == kByteOrder &&
         header.e_phentsize == sizeof(ElfW(Phdr));
}

// The loader maps segments without a look at the file's size; touching a page beyond its end kills.
bool HoldsItsSegments(std::ifstream& file, const ElfW(Ehdr) & header, uint64_t file_size) {
  for (uint64_t index = 0; index < header.e_phnum; ++index) {
    ElfW(Phdr) segment;
    if (!ReadAt(file, header.e_phoff + index * sizeof segment, &segment)) return false;
    if (segment.p_type != PT_LOAD) continue;
    if (segment.p_filesz > file_size || segment.p_offset > file_size - segment.p_filesz)
      return false;
  }
  return true;
}

void CheckLibraryFile(const std::filesystem::path& library) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(library, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    Refuse(library, "there is no such file. Check the path.");
  }
  if (error) Refuse(library, error.message() + ".");
  if (!std::filesystem::is_regular_file(status))
    Refuse(library, "it is no file. Give a library's path.");
  std::ifstream file(library, std::ios::binary);
  if (!file) Refuse(library, std::string(std::strerror(errno)) + ".");
  ElfW(Ehdr) header{};
  if (!ReadAt(file, 0, &header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
    Refuse(library, "it is no ELF shared library. Build or copy it again.");
  }
  const uint64_t size = std::filesystem::file_size(library, error);
  if (!error && IsOfThisMachine(header) && !HoldsItsSegments(file, header, size)) {
    Refuse(library, "its end is missing (" + std::to_string(size) +
                        " bytes are there). Build or copy it again.");
  }
}

}  // namespace

LoadedLibrary LoadLibrary(const std::filesystem::path& path) {
  CheckLibraryFile(path);
  // All symbols now: a missing one is an error here, not the end of the process in the middle of a
  // call.
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* reason = dlerror();
    Refuse(path, reason != nullptr ? reason : "no reason given");
  }
  if (!Registry::Process().libraries().Add(library, nullptr)) {
    dlclose(library);
    Refuse(path, "it is loaded already. Name the library once; another copy needs another file.");
  }
  return LoadedLibrary(library);
}

void LibraryCloser::operator()(void* library) const {
  Registry::Process().libraries().Remove(library);
  dlclose(library);
}

}  // namespace orvane::extensions
