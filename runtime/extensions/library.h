// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <dlfcn.h>

#include <filesystem>
#include <memory>

namespace orvane::extensions {

// Sets the library free for another host, then unloads it.
struct LibraryCloser {
  void operator()(void* library) const;
};

// A shared library in this process, by the loader's handle. Unloaded at its end; released, it stays
// in the process, and in use.
using LoadedLibrary = std::unique_ptr<void, LibraryCloser>;

// Throws HostError: the file is bad, the loader refuses it (with the loader's own words), or it is
// in use by an extension already, whatever host that belongs to and whatever name the file was
// given by. Runs the library's constructors. Files that the loader would hang on or crash the
// process with do not reach it: no regular file, no ELF file, a file that is shorter than its
// program headers say.
LoadedLibrary LoadLibrary(const std::filesystem::path& path);

// Null when the library exports no such symbol. The address is good as long as the library is
// loaded; that the symbol is such a function is taken on trust, as the C interface has it.
template <typename Function>
Function SymbolOf(const LoadedLibrary& library, const char* name) {
  return reinterpret_cast<Function>(dlsym(library.get(), name));
}

}  // namespace orvane::extensions
