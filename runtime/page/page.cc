// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page.h"

#include <utility>

#include "page/describe_error.h"
#include "page/page_core.h"

namespace orvane::page {

Page::Page(PageRuntime& runtime, const PageOptions& options)
    : core_(std::make_unique<PageCore>(runtime, options)) {}

Page::~Page() = default;

std::optional<ScriptError> Page::Evaluate(const std::string& source, const std::string& file) {
  JSValueRef value = nullptr;
  return core_->Evaluate(source, file, &value);
}

Evaluation Page::EvaluateToJson(const std::string& source, const std::string& file) {
  JSValueRef value = nullptr;
  Evaluation evaluation{core_->Evaluate(source, file, &value), {}};
  if (evaluation.error) return evaluation;
  JSValueRef exception = nullptr;
  const JsString json(JSValueCreateJSONString(core_->context(), value, 0, &exception));
  if (exception != nullptr) {
    evaluation.error = DescribeError(core_->context(), exception, file);
  } else if (json.get() != nullptr) {
    evaluation.json = json.ToUtf8();
  }
  return evaluation;
}

bool Page::RunUntilIdle(std::chrono::milliseconds limit) {
  return core_->runtime().Run({core_->id()}, limit);
}

std::vector<ScriptError> Page::TakeErrors() { return core_->TakeErrors(); }

void Page::DefineFunction(const std::string& dotted_name, ScriptFunction function) {
  core_->DefineFunction(dotted_name, std::move(function));
}

OpaqueJSContext* Page::context() const { return core_->context(); }

}  // namespace orvane::page
