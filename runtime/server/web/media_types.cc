// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/web/media_types.h"

#include <utility>

#include <boost/algorithm/string/predicate.hpp>

namespace orvane::server {

namespace {

constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
    {"aac", "audio/aac"},
    {"avif", "image/avif"},
    {"bmp", "image/bmp"},
    {"cjs", "text/javascript"},
    {"css", "text/css"},
    {"flac", "audio/flac"},
    {"gif", "image/gif"},
    {"htm", "text/html"},
    {"html", "text/html"},
    {"ico", "image/x-icon"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
    {"js", "text/javascript"},
    {"json", "application/json"},
    {"m3u8", "application/vnd.apple.mpegurl"},
    {"m4a", "audio/mp4"},
    {"m4s", "video/iso.segment"},
    {"map", "application/json"},
    {"md", "text/plain; charset=utf-8"},
    {"mjs", "text/javascript"},
    {"mkv", "video/x-matroska"},
    {"mp3", "audio/mpeg"},
    {"mp4", "video/mp4"},
    {"mpd", "application/dash+xml"},
    {"oga", "audio/ogg"},
    {"ogg", "audio/ogg"},
    {"ogv", "video/ogg"},
    {"otf", "font/otf"},
    {"pdf", "application/pdf"},
    {"png", "image/png"},
    {"svg", "image/svg+xml"},
    {"ts", "video/mp2t"},
    {"ttf", "font/ttf"},
    {"txt", "text/plain"},
    {"vtt", "text/vtt"},
    {"wasm", "application/wasm"},
    {"wav", "audio/wav"},
    {"webm", "video/webm"},
    {"webmanifest", "application/manifest+json"},
    {"webp", "image/webp"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"xhtml", "application/xhtml+xml"},
    {"xml", "application/xml"},
};

}  // namespace

std::string_view MediaTypeOf(std::string_view path) {
  const std::string_view name = path.substr(path.find_last_of('/') + 1);
  const size_t dot = name.find_last_of('.');
  if (dot != std::string_view::npos) {
    for (const auto& [ending, type] : kTypes) {
      if (boost::iequals(name.substr(dot + 1), ending)) return type;
    }
  }
  return "application/octet-stream";
}

bool IsDocumentType(std::string_view type) {
  type = type.substr(0, type.find(';'));
  while (!type.empty() && type.back() == ' ') type.remove_suffix(1);
  return boost::iequals(type, "text/html") || boost::iequals(type, "application/xhtml+xml");
}

}  // namespace orvane::server
