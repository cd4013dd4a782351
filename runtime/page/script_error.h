// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace orvane::page {

// Something that a page's script threw and did not catch.
struct ScriptError {
  // As the script would print it: "TypeError: x is not a function".
  std::string message;
  // The page's own script nearest to the error, as given to Page::Evaluate.
  std::string file;
  // One frame per line, innermost first; empty when what was thrown is no Error.
  std::string stack;
  // Both from 1; 0 when the engine does not know.
  int line = 0;
  int column = 0;
};

// "file:line:column: message", leaving out what is not known.
std::string Format(const ScriptError& error);

// Why the text is no script, in the engine's words; empty when it is one. `name` is its file. It is
// taken as the body of a function, where a return may stand. Runs nothing of it. Any thread.
std::string SyntaxErrorOf(const std::string& script, const std::string& name);

// Told of each error that nothing caught in a timer, a listener, a callback, a microtask or a
// promise. Borrowed by the pages whose PageOptions name it. Called on the page thread, while a
// script is evaluated or the page's loop runs; must not run scripts.
class ErrorSink {
 public:
  virtual ~ErrorSink() = default;
  virtual void OnScriptError(const ScriptError& error) = 0;
};

}  // namespace orvane::page
