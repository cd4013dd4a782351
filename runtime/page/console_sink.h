// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::page {

enum class ConsoleLevel { kDebug, kLog, kInfo, kWarn, kError };

// Receives what a page writes to its console, one call per console call. `text` is the arguments as
// a person reads them, in UTF-8; it may hold line breaks and has none at its end. Borrowed by the
// pages whose PageOptions name it. Called on the page thread, from within the script; must not run
// scripts. An exception that leaves it is thrown to the script.
class ConsoleSink {
 public:
  virtual ~ConsoleSink() = default;
  virtual void OnConsole(ConsoleLevel level, const std::string& text) = 0;
};

}  // namespace orvane::page
