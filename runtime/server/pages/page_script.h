// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "base/json.h"

namespace orvane::server {

// Says why a script cannot be used; empty when it can.
using ScriptCheck = std::function<std::string(const std::string& script, const std::string& name)>;

// Makes the script that each document of the application runs before its own first one. What is the
// same for all of them is made once. One thread.
class PageScript {
 public:
  // `started` is what the set process told of its extensions: their "catalogue" and "scripts".
  // `app` has id, name and version.
  PageScript(const Json& started, const Json& app, std::chrono::milliseconds deadline,
             const ScriptCheck& check);

  std::string Make(int64_t context, const std::string& secret) const;

 private:
  Json boot_;            // what every document gets to know
  std::string scripts_;  // the extensions' scripts as functions
};

// The JSON text as it may stand in a script of any kind.
std::string ForScript(std::string json);

}  // namespace orvane::server
