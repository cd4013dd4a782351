// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace orvane::extensions {

// How one ExtensionHost behaves; fixed when it is made.
struct HostOptions {
  // What extensions read as the runtime variable "app_id".
  std::string app_id;

  // Receives every warning, one text without a line break at its end. Called from any thread (an
  // extension may call the host from its own threads), never after ~ExtensionHost returned. It must
  // not call the host. Empty: warnings go to the standard error stream.
  std::function<void(const std::string&)> warn;

  // Answers an extension's question whether the application may use an API. Called from any thread.
  // Empty: every API may be used.
  std::function<bool(const std::string& api)> access_check;

  // How long a synchronous message waits for its reply, from the moment its handler returned.
  std::chrono::milliseconds sync_deadline{10000};
};

}  // namespace orvane::extensions
