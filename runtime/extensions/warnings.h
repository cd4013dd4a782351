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

// The beginning of what an extension or a page wrote, as a text for people shows it.
inline std::string Excerpt(std::string_view text) { return base::Shortened(text, 200); }

// Warnings about calls of the C interface. Any thread. Each text begins with the call's name.

// By an extension that is known.
void WarnAboutCall(Extension& extension, const char* call, const std::string& text);

// By someone unknown: goes to the host whose callback runs on this thread, or else to every host.
// Never throws.
void WarnAboutCall(const char* call, const std::string& text) noexcept;

enum class HandleKind { kExtension, kInstance };
void WarnAboutDeadHandle(HandleKind kind, const char* call, int32_t handle);

// The guard that every C entry point of the host passes: runs `body`. When an exception escapes it,
// warns, and answers the empty value of what it returns.
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
