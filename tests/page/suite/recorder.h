// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "page/page.h"

namespace orvane::page {

// Keeps what a page writes to its console and what it sends and receives, for
// testing.consoleLines() and testing.messages().
class Recorder final : public ConsoleSink, public TraceSink {
 public:
  // This must outlive the page.
  void DefineFor(Page& page);

  void OnConsole(ConsoleLevel level, const std::string& text) override;
  void OnTrace(const TracedMessage& record) override;

 private:
  std::vector<std::string> console_lines_;
  std::vector<std::string> messages_;  // as JSON: [direction and kind, peer, payload]
};

}  // namespace orvane::page
