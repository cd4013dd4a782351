// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page.h"

#include <utility>

#include "page/page_core.h"

namespace orvane::page {

Page::Page(PageRuntime& runtime, const PageOptions& options)
    : core_(std::make_unique<PageCore>(runtime, options)) {}

Page::~Page() = default;

std::optional<ScriptError> Page::Evaluate(const std::string& source, const std::string& file) {
  return core_->Evaluate(source, file);
}

bool Page::RunUntilIdle(std::chrono::milliseconds limit) { return core_->RunUntilIdle(limit); }

void Page::DefineFunction(const std::string& dotted_name, ScriptFunction function) {
  core_->DefineFunction(dotted_name, std::move(function));
}

OpaqueJSContext* Page::context() const { return core_->context(); }

}  // namespace orvane::page
