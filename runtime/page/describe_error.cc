// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/describe_error.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "page/js_string.h"

namespace orvane::page {
namespace {

bool IsPagesOwn(std::string_view file) {
  return !file.empty() && file.substr(0, kRuntimeScheme.size()) != kRuntimeScheme &&
         file.substr(0, kExtensionScheme.size()) != kExtensionScheme;
}

// Takes ":<number>" off the end of `text`.
std::optional<int> TakeNumber(std::string_view* text) {
  const size_t colon = text->rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  int number = 0;
  const char* end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data() + colon + 1, end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  text->remove_suffix(text->size() - colon);
  return number;
}

// A frame of the engine's stack text: "function@file:line:column". Whether it is the page's own.
bool TakePlace(std::string_view frame, ScriptError* error) {
  const std::optional<int> column = TakeNumber(&frame);
  const std::optional<int> line = TakeNumber(&frame);
  const std::string_view file = frame.substr(frame.find('@') + 1);
  if (!column || !line || !IsPagesOwn(file)) return false;
  error->file = file;
  error->line = *line;
  error->column = *column;
  return true;
}

bool TakePlaceFromStack(ScriptError* error) {
  std::string_view stack = error->stack;
  while (!stack.empty()) {
    const size_t end = std::min(stack.find('\n'), stack.size());
    if (TakePlace(stack.substr(0, end), error)) return true;
    stack.remove_prefix(std::min(end + 1, stack.size()));
  }
  return false;
}

std::string TextProperty(JSContextRef context, JSObjectRef object, const char* name) {
  const JSValueRef value = PropertyOf(context, object, name);
  return JSValueIsString(context, value) ? TextOf(context, value) : std::string();
}

int IntProperty(JSContextRef context, JSObjectRef object, const char* name) {
  const JSValueRef value = PropertyOf(context, object, name);
  if (!JSValueIsNumber(context, value)) return 0;
  const double number = JSValueToNumber(context, value, nullptr);
  return number > 0 && number < 1e9 ? static_cast<int>(number) : 0;
}

// String() says nothing of a plain object, so that is shown as JSON.
std::string MessageOf(JSContextRef context, JSValueRef thrown) {
  std::string text = TextOf(context, thrown);
  if (!JSValueIsObject(context, thrown) || text != "[object Object]") return text;
  const JsString json(JSValueCreateJSONString(context, thrown, 0, nullptr));
  return json.get() == nullptr ? text : json.ToUtf8();
}

}  // namespace

ScriptError DescribeError(JSContextRef context, JSValueRef thrown, const std::string& file) {
  ScriptError error;
  error.message = MessageOf(context, thrown);
  error.file = file;
  JSObjectRef object =
      JSValueIsObject(context, thrown) ? JSValueToObject(context, thrown, nullptr) : nullptr;
  if (object == nullptr) return error;
  error.stack = TextProperty(context, object, "stack");
  if (TakePlaceFromStack(&error)) return error;
  const std::string source = TextProperty(context, object, "sourceURL");
  if (!source.empty()) error.file = source;
  error.line = IntProperty(context, object, "line");
  error.column = IntProperty(context, object, "column");
  return error;
}

std::string Format(const ScriptError& error) {
  std::string text = error.file;
  if (error.line > 0) text += ':' + std::to_string(error.line);
  if (error.line > 0 && error.column > 0) text += ':' + std::to_string(error.column);
  return text.empty() ? error.message : text + ": " + error.message;
}

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
