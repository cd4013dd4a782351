// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

namespace orvane::page {

// What a page asks of the web runtime itself, as against an extension: runtime messages (a URI and
// a text), the privileges of the application, and the application's window. One object answers for
// one application; the pages of that application share it and borrow it, so it outlives them.
//
// Threads: every method is called on the page thread. An answer to SendAsync may be given from any
// thread, before or after SendAsync returns, once; it may come after the page that asked is gone,
// and is then dropped. Errors: a refusal is an answer that the caller knows, never an exception. An
// exception that does escape becomes a script error of the page that asked.
class RuntimeMessages {
 public:
  virtual ~RuntimeMessages() = default;

  // A message without an answer text. True when the runtime knows the message and has done it; the
  // page's script reads the value as it is.
  virtual bool Send(const std::string& uri, const std::string& text) = 0;

  // Returns the answer text, for instance "success" or "error". May be empty for a message that
  // nobody knows.
  virtual std::string SendSync(const std::string& uri, const std::string& text) = 0;

  // `answer` receives a reply of the form that extensions use: {"status":"success"} or the error
  // form.
  virtual void SendAsync(const std::string& uri, const std::string& text,
                         std::function<void(std::string)> answer) = 0;

  // Whether the application's config.xml declares `privilege` (its full URI).
  virtual bool HasPrivilege(const std::string& privilege) = 0;

  // The application's window: its top left corner in screen pixels, or one of the quarter positions
  // 0 to 4. Both return "success" or a text that says what is wrong.
  virtual std::string MoveWindow(int x, int y) = 0;
  virtual std::string SetQuarterPosition(int position) = 0;
};

}  // namespace orvane::page
