// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "page/describe_error.h"
#include "page/js_string.h"
#include "page/page.h"

namespace orvane::test {

// What evaluating a script gave.
struct Evaluation {
  std::optional<page::ScriptError> error;
  std::string json;  // the script's last value as JSON; empty when that has none, as undefined has
};

inline Evaluation EvaluateToJson(page::Page& page, const std::string& source,
                                 const std::string& file) {
  const page::JsString script(source);
  const page::JsString name(file);
  JSValueRef exception = nullptr;
  const JSValueRef value =
      JSEvaluateScript(page.context(), script.get(), nullptr, name.get(), 1, &exception);
  const page::JsString json(exception == nullptr
                                ? JSValueCreateJSONString(page.context(), value, 0, &exception)
                                : nullptr);
  if (exception != nullptr) return {page::DescribeError(page.context(), exception, file), {}};
  return {std::nullopt, json.get() == nullptr ? std::string() : json.ToUtf8()};
}

// Keeps the errors that nothing caught, oldest first.
class ErrorRecorder final : public page::ErrorSink {
 public:
  void OnScriptError(const page::ScriptError& error) override { errors_.push_back(error); }
  std::vector<page::ScriptError> Take() { return std::exchange(errors_, {}); }

 private:
  std::vector<page::ScriptError> errors_;
};

}  // namespace orvane::test
