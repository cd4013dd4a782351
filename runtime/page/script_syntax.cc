// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/script_syntax.h"

#include <JavaScriptCore/JavaScript.h>

#include "page/js_string.h"

namespace orvane::page {

std::string SyntaxErrorOf(const std::string& script, const std::string& name) {
  JSGlobalContextRef context = JSGlobalContextCreate(nullptr);
  JSValueRef exception = nullptr;
  std::string why;
  // As the body of a function, which is what becomes of it; a stray brace must not end that.
  const JsString body(script);
  const JsString file(name);
  JSObjectMakeFunction(context, nullptr, 0, nullptr, body.get(), file.get(), 1, &exception);
  if (exception != nullptr) why = TextOf(context, exception);
  JSGlobalContextRelease(context);
  return why;
}

}  // namespace orvane::page
