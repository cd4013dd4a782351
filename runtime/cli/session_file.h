// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"

namespace orvane::cli {

// One message of a recorded session.
struct RecordedMessage {
  int64_t number = 0;  // as recorded; else its place in the file, from 1
  double time_ns = 0;  // when it was sent
  int64_t context = 0;
  bool to_page = false;
  std::string kind;     // "nativeSync" and so on
  std::string peer;     // extension, URI or call
  std::string payload;  // text
  std::optional<std::string> reply;
  bool failed = false;  // there was an error in place of a reply
};

// A session as the simulator exports it, but for the order: a call is recorded when it is answered,
// after what the page was sent meanwhile, and here it stands where it was made.
struct SessionFile {
  Json app = Json::object();
  std::string profile;  // empty: not known
  std::vector<RecordedMessage> messages;
};

// Throws CommandError for a file that cannot be read or is no session.
SessionFile ReadSessionFile(const std::string& path);

}  // namespace orvane::cli
