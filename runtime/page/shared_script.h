// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <JavaScriptCore/JavaScript.h>

#include "page/js_string.h"

namespace orvane::page {

struct EngineScript;

// A script that is evaluated in many contexts of one group. The engine compiles it once; it also
// copies and hashes a text that is given to it anew each time, which costs more than a page
// otherwise does, so it is given once. Owned by the PageRuntime, which keeps the group longer. Page
// thread only.
class SharedScript {
 public:
  // `name` is the script's file in error texts. What is wrong with the source comes out in
  // Evaluate.
  SharedScript(JSContextGroupRef group, const std::string& source, const std::string& name);
  ~SharedScript();
  SharedScript(const SharedScript&) = delete;
  SharedScript& operator=(const SharedScript&) = delete;

  // Returns the script's last value; null when it threw, which is then in `exception`.
  JSValueRef Evaluate(JSContextRef context, JSValueRef* exception) const;

 private:
  const JsString source_;
  const JsString name_;
  // Null: the engine has no such thing, or the source is no script.
  EngineScript* script_ = nullptr;
};

}  // namespace orvane::page
