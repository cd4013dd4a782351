// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/utf8.h"

namespace orvane::extensions {

class Extension;

// The beginning of what an extension or a page wrote, as a text for people shows it: 200 bytes, cut
// between two characters.
inline std::string Excerpt(std::string_view text) { return base::Shortened(text, 200); }

// Warnings about calls of the C interface. Any thread. Each text begins with the call's name.

// By an extension that is known: goes to its host, with the extension's name. May throw for want of
// memory, so it is for the inside of the guard.
void WarnAboutCall(Extension& extension, const char* call, const std::string& text);

// By someone unknown: goes to the host whose callback runs on this thread, or else to every host.
// Never throws.
void WarnAboutCall(const char* call, const std::string& text) noexcept;

// A call with a handle that is not alive. Says whether it is one of the other kind, mixed up.
// Inside the guard, as above. `kind` is the one that the call wants.
enum class HandleKind { kExtension, kInstance };
void WarnAboutDeadHandle(HandleKind kind, const char* call, int32_t handle);

// The guard that every C entry point of the host passes: runs `body`. When an exception escapes it,
// warns, and answers the empty value of what it returns: null, false, zero. `call` is the
// function's name as the C header has it, and lives for ever.
template <typename Body>
std::invoke_result_t<Body> GuardCall(const char* call, Body&& body) noexcept {
  try {
    return body();
  } catch (const std::exception& exception) {
    WarnAboutCall(call, exception.what());
  } catch (...) {
    WarnAboutCall(call, "failed with an exception of unknown type");
  }
  return std::invoke_result_t<Body>();
}

}  // namespace orvane::extensions
