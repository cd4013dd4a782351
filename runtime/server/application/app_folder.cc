// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/app_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "server/application/html_injection.h"
#include "server/web/media_types.h"

namespace orvane::server {

namespace {

constexpr uint64_t kMostDocumentBytes = uint64_t{64} << 20U;

// Where an open descriptor leads to, without links.
std::string PathOf(const base::UniqueFd& file) {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file.get()), error);
}

std::string TagOf(const struct stat& status) {
  return "\"" + std::to_string(status.st_size) + "-" + std::to_string(status.st_mtim.tv_sec) + "." +
         std::to_string(status.st_mtim.tv_nsec) + "\"";
}

std::string ReadAll(const base::UniqueFd& file, uint64_t size) {
  std::string text(static_cast<size_t>(size), '\0');
  size_t done = 0;
  while (done < text.size()) {
    const ssize_t count =
        pread(file.get(), &text[done], text.size() - done, static_cast<off_t>(done));
    if (count <= 0) break;
    done += static_cast<size_t>(count);
  }
  text.resize(done);
  return text;
}

std::optional<uint64_t> Number(std::string_view digits) {
  uint64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) {
    return std::nullopt;
  }
  return value;
}

struct ByteRange {
  uint64_t first = 0;
  uint64_t last = 0;  // included; below `first` when the file has no such part
};

// "bytes=0-99", "bytes=100-", "bytes=-100". Nothing for another form or several ranges: the whole
// file is an allowed answer to those.
std::optional<ByteRange> ParseRange(std::string_view header, uint64_t size) {
  constexpr std::string_view kUnit = "bytes=";
  if (header.substr(0, kUnit.size()) != kUnit || size == 0) return std::nullopt;
  header.remove_prefix(kUnit.size());
  const size_t dash = header.find('-');
  if (dash == std::string_view::npos) return std::nullopt;
  const auto first = Number(header.substr(0, dash));
  const auto last = Number(header.substr(dash + 1));
  if (!first && !last) return std::nullopt;
  if (!first) return ByteRange{size - std::min(*last, size), *last == 0 ? 0 : size - 1};
  if (!last && dash + 1 != header.size()) return std::nullopt;
  if (last && *last < *first) return std::nullopt;
  return ByteRange{*first, std::min(last.value_or(size - 1), size - 1)};
}

}  // namespace

bool WantsDocument(const HttpRequest& request) {
  const std::string_view destination = request.Header("Sec-Fetch-Dest");
  constexpr std::array<std::string_view, 6> kDocuments{"",      "document", "iframe",
                                                       "frame", "object",   "embed"};
  return std::find(kDocuments.begin(), kDocuments.end(), destination) != kDocuments.end();
}

AppFolder::AppFolder(const std::filesystem::path& folder)
    : root_(std::filesystem::canonical(folder).string()) {}

std::optional<AppFolder::OpenFile> AppFolder::Open(const std::string& path) const {
  OpenFile open_file;
  open_file.name = path.back() == '/' ? path + "index.html" : path;
  // Does not wait where the file is a pipe.
  open_file.file = base::UniqueFd(
      open((root_ + open_file.name).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (!open_file.file || fstat(open_file.file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  // Asked of the open file: nobody can exchange a link in between.
  if (PathOf(open_file.file).compare(0, root_.size() + 1, root_ + "/") != 0) return std::nullopt;
  open_file.size = static_cast<uint64_t>(status.st_size);
  open_file.tag = TagOf(status);
  return open_file;
}

HttpResponse AppFolder::Answer(const HttpRequest& request) const {
  if (!request.IsRead()) return TextResponse(405, "A file of the application can only be read.");
  auto found = Open(request.path);
  if (!found) {
    return TextResponse(404, "The application has no file \"" + request.path.substr(1) + "\".");
  }
  const std::string type(MediaTypeOf(found->name));
  HttpResponse response;
  response.set(http::field::content_type, type);
  response.set(http::field::cache_control, "no-cache");
  response.set(http::field::vary, "Sec-Fetch-Dest");
  response.set("X-Content-Type-Options", "nosniff");
  if (IsDocumentType(type) && WantsDocument(request)) {
    if (found->size > kMostDocumentBytes) return TextResponse(500, "The document is too large.");
    response.body() = InjectPageScript(ReadAll(found->file, found->size));
    return response;
  }
  response.set(http::field::etag, found->tag);
  response.set(http::field::accept_ranges, "bytes");
  if (request.Header("If-None-Match") == found->tag) {
    response.result(http::status::not_modified);
    return response;
  }
  const std::string_view condition = request.Header("If-Range");
  std::optional<ByteRange> range;
  if (condition.empty() || condition == found->tag) {
    range = ParseRange(request.Header("Range"), found->size);
  }
  response.file = FileSlice{std::move(found->file), 0, found->size};
  if (!range) return response;
  const std::string size = "/" + std::to_string(found->size);
  if (range->first > range->last) {
    response = TextResponse(416, "The file has no such part.");
    response.set(http::field::content_range, "bytes *" + size);
    return response;
  }
  response.result(http::status::partial_content);
  response.file->offset = range->first;
  response.file->length = range->last - range->first + 1;
  response.set(http::field::content_range,
               "bytes " + std::to_string(range->first) + "-" + std::to_string(range->last) + size);
  return response;
}

}  // namespace orvane::server
