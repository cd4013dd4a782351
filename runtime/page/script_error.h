// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::page {

// Something that a page's script threw and did not catch.
struct ScriptError {
  std::string message;  // as the script would print it: "TypeError: x is not a function"
  std::string file;     // the page's own script nearest to the error, as given to Page::Evaluate
  std::string stack;  // one frame per line, innermost first; empty when what was thrown is no Error
  int line = 0;       // from 1; 0 when the engine does not know
  int column = 0;     // from 1; 0 when the engine does not know
};

// "file:line:column: message", leaving out what is not known.
std::string Format(const ScriptError& error);

// Told of each error that nothing caught in a timer, a listener, a callback, a microtask or a
// promise. Called on the page thread while the page's loop runs; must not run scripts.
class ErrorSink {
 public:
  virtual ~ErrorSink() = default;
  virtual void OnScriptError(const ScriptError& error) = 0;
};

}  // namespace orvane::page
