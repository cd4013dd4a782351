// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/output.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string_view>

#include "cli/exit_code.h"

namespace orvane::cli {

namespace {

void Write(FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

// By page::TraceKind.
constexpr const char* kKindNames[] = {"native sync",   "native post",  "native binary",
                                      "runtime plain", "runtime sync", "runtime async"};

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

std::string TextOf(const Json& json) {
  if (json.is_null()) return "";
  return json.is_string() ? json.get<std::string>() : base::JsonText(json);
}

std::string ReadInput(const std::string& path, const std::string& kind) {
  std::ostringstream text;
  if (path == "-") {
    text << std::cin.rdbuf();
    return text.str();
  }
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    throw CommandError(path + ": there is no such " + kind +
                       ", or it may not be read. Check the path.");
  }
  text << stream.rdbuf();
  return text.str();
}

void PrintJson(const Json& json) { Write(stdout, base::JsonText(json) + '\n'); }

void RefusalPrinter::Print(const std::string& reason) {
  Complain("refused: " + reason);
  if (reason.find("config.xml") != std::string::npos && hint_due_.exchange(false)) {
    Complain(
        "the scratch application has no config.xml; run with --app and an application of your "
        "own.");
  }
}

void ConsolePrinter::OnConsole(page::ConsoleLevel level, const std::string& text) {
  if (place_ == Place::kBesideResult) return Write(stderr, "console: " + text + "\n");
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
                kKindNames[static_cast<size_t>(record.kind)]);
  const std::string payload = record.kind == page::TraceKind::kNativeBinary
                                  ? std::to_string(record.payload.size()) + " bytes"
                                  : Shown(record.payload);
  Write(stderr, head + Shown(record.peer) + "  " + payload + "\n");
}

}  // namespace orvane::cli
