// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>

namespace orvane::extensions {

// A shared library in this process. Unloads it at its end.
class Library {
 public:
  // Throws HostError: the file is bad, the loader refuses it (with the loader's own words), or it
  // is in use by an extension already.
  static std::unique_ptr<Library> Open(const std::filesystem::path& path);
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  // Null when the library exports no such symbol.
  void* Symbol(const char* name) const;

  // For a library whose code is still running: it stays in the process, and in use.
  void KeepLoaded();

 private:
  explicit Library(void* handle) : handle_(handle) {}

  void* handle_;
};

}  // namespace orvane::extensions
