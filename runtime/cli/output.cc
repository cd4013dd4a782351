// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/output.h"

#include <cstdio>
#include <string_view>

namespace orvane::cli {

namespace {

void Write(FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

const char* NameOf(page::TraceKind kind) {
  switch (kind) {
    case page::TraceKind::kNativeSync:
      return "native sync";
    case page::TraceKind::kNativePost:
      return "native post";
    case page::TraceKind::kNativeBinary:
      return "native binary";
    case page::TraceKind::kRuntimePlain:
      return "runtime plain";
    case page::TraceKind::kRuntimeSync:
      return "runtime sync";
    case page::TraceKind::kRuntimeAsync:
      return "runtime async";
  }
  return "message";
}

// One line whatever the payload holds, and nothing that a terminal acts upon.
std::string Shown(std::string_view payload) {
  static const char kDigits[] = "0123456789abcdef";
  std::string shown;
  shown.reserve(payload.size());
  for (const char c : payload) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7f) {
      shown += c;
    } else {
      shown.append("\\x").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
  }
  return shown;
}

}  // namespace

void Complain(const std::string& text) { Write(stderr, "orvane: " + text + "\n"); }

void PrintJson(const Json& json) {
  const std::string line = base::JsonText(json) + '\n';
  std::fwrite(line.data(), 1, line.size(), stdout);
}

void RefusalPrinter::Print(const std::string& reason) {
  Complain("refused: " + reason);
  if (reason.find("config.xml") != std::string::npos && hint_due_.exchange(false)) {
    Complain(
        "the scratch application has no config.xml; run with --app and an application of your "
        "own.");
  }
}

void ConsolePrinter::OnConsole(page::ConsoleLevel level, const std::string& text) {
  const bool serious = level == page::ConsoleLevel::kError || level == page::ConsoleLevel::kWarn;
  Write(serious ? stderr : stdout, text + "\n");
}

void ErrorPrinter::OnScriptError(const page::ScriptError& error) {
  ++count_;
  std::string text = page::Format(error) + "\n";
  if (!error.stack.empty()) text += error.stack + (error.stack.back() == '\n' ? "" : "\n");
  Write(stderr, text);
}

void TracePrinter::OnTrace(const page::TracedMessage& record) {
  char head[96];
  const char* const arrow = record.direction == page::TraceDirection::kFromPage ? "->" : "<-";
  std::snprintf(head, sizeof head, "trace: %9.1f us  %s %-13s ", record.microseconds, arrow,
                NameOf(record.kind));
  const std::string payload = record.kind == page::TraceKind::kNativeBinary
                                  ? std::to_string(record.payload.size()) + " bytes"
                                  : Shown(record.payload);
  Write(stderr, head + Shown(record.peer) + "  " + payload + "\n");
}

}  // namespace orvane::cli
