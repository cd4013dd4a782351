// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "posix/unique_fd.h"
#include "server/web/http_connection.h"

namespace orvane::server {

// The files of the application, and no others: whatever the path says and whatever links lie in the
// folder, nothing outside it is read. One thread.
class AppFolder {
 public:
  explicit AppFolder(const std::filesystem::path& folder);

  // Answers a request for a file of it. Documents get the page's script where they are loaded as
  // such. Headers that every answer of the origin has are the caller's.
  HttpResponse Answer(const HttpRequest& request) const;

 private:
  struct OpenFile {
    base::UniqueFd file;
    std::string name;
    uint64_t size = 0;
    std::string tag;
  };

  std::optional<OpenFile> Open(const std::string& path) const;

  const std::string root_;  // without links, without a "/" at its end
};

// Whether the browser will run what it gets as a document, and did not only ask for its text.
bool WantsDocument(const HttpRequest& request);

}  // namespace orvane::server
