// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <string>

#include "base/json.h"
#include "page/console_sink.h"
#include "page/script_error.h"
#include "page/trace_sink.h"

namespace orvane::cli {

// Writes a line to the standard error stream in one piece, with the command's name before it.
void Complain(const std::string& text);

// Texts as they are, nothing for null, everything else as JSON.
std::string TextOf(const Json& json);

// What is in the file, of a kind that people know by that name; "-" is the standard input. Throws
// CommandError for one that cannot be read.
std::string ReadInput(const std::string& path, const std::string& kind);

// JSON on one line of the standard output.
void PrintJson(const Json& json);

// Prints why the set or the runtime refused something. Any thread.
class RefusalPrinter {
 public:
  // The scratch application has no config.xml that a missing line could be added to; that is said
  // once.
  explicit RefusalPrinter(bool is_scratch_application) : hint_due_(is_scratch_application) {}

  void Print(const std::string& reason);

 private:
  std::atomic<bool> hint_due_;
};

// Where the page's console goes: errors and warnings to the standard error stream, the rest to the
// standard output. Where the result of a call is printed, all of it goes to the error stream,
// marked.
class ConsolePrinter final : public page::ConsoleSink {
 public:
  enum class Place { kBothStreams, kBesideResult };
  explicit ConsolePrinter(Place place = Place::kBothStreams) : place_(place) {}
  void OnConsole(page::ConsoleLevel level, const std::string& text) override;

 private:
  const Place place_;
};

// Prints uncaught errors as they happen, with their place, and counts them.
class ErrorPrinter final : public page::ErrorSink {
 public:
  void OnScriptError(const page::ScriptError& error) override;
  int count() const { return count_; }

 private:
  int count_ = 0;
};

// Prints every message on the standard error stream.
class TracePrinter final : public page::TraceSink {
 public:
  void OnTrace(const page::TracedMessage& record) override;
};

}  // namespace orvane::cli
