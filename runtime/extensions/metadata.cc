// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/metadata.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

#include <picojson.h>

#include "extensions/bounded_json.h"
#include "extensions/dotted_name.h"
#include "extensions/host_error.h"
#include "extensions/text.h"

namespace orvane::extensions {
namespace {

constexpr size_t kMaxFileBytes = 1 << 20;
constexpr char kNameRule[] = " Write identifiers joined by dots, such as \"maker.product\".";

// Null when there is none.
const picojson::value* Member(const picojson::object& object, const char* key) {
  const auto found = object.find(key);
  return found == object.end() ? nullptr : &found->second;
}

const std::string& RequiredString(const picojson::object& object, const char* key,
                                  const char* advice) {
  const picojson::value* value = Member(object, key);
  if (value == nullptr) throw HostError(JsonString(key) + " is missing. " + advice);
  if (!value->is<std::string>()) throw HostError(JsonString(key) + " is no string. " + advice);
  return value->get<std::string>();
}

std::string ReadLibrary(const picojson::object& object) {
  constexpr char kAdvice[] = "Give the library's file, relative to this folder or absolute.";
  const std::string& library = RequiredString(object, "lib", kAdvice);
  if (library.empty() || library.find('\0') != std::string::npos) {
    throw HostError("\"lib\" is no file name. " + std::string(kAdvice));
  }
  return library;
}

std::string ReadName(const picojson::object& object) {
  const std::string& name =
      RequiredString(object, "name", "Give the name that the library sets for itself.");
  if (!IsDottedName(name)) {
    throw HostError("\"name\" is " + JsonString(Excerpt(name)) + ", which is no dotted name." +
                    kNameRule);
  }
  return name;
}

std::vector<std::string> ReadEntryPoints(const picojson::object& object) {
  const picojson::value* value = Member(object, "entry_points");
  if (value == nullptr)
    throw HostError("\"entry_points\" is missing. Write [] when there are none.");
  if (!value->is<picojson::array>()) {
    throw HostError("\"entry_points\" is no array. Write [] when there are none.");
  }
  std::vector<std::string> entry_points;
  for (const picojson::value& item : value->get<picojson::array>()) {
    if (!item.is<std::string>())
      throw HostError("\"entry_points\" holds something else than strings.");
    if (!IsDottedName(item.get<std::string>())) {
      throw HostError("the entry point " + JsonString(Excerpt(item.get<std::string>())) +
                      " is no dotted name." + kNameRule);
    }
    entry_points.push_back(item.get<std::string>());
  }
  return entry_points;
}

void ReadEntry(size_t number, const picojson::value& value, Metadata* metadata) {
  std::string library;
  try {
    if (!value.is<picojson::object>()) throw HostError("it is no object.");
    const auto& object = value.get<picojson::object>();
    library = ReadLibrary(object);
    metadata->entries.push_back({number, ReadName(object), library, ReadEntryPoints(object)});
  } catch (const HostError& error) {
    metadata->problems.emplace_back("entry " + std::to_string(number) +
                                    " is not used: " + error.what());
    if (!library.empty()) metadata->refused_libraries.push_back(std::move(library));
  }
}

}  // namespace

Metadata ParseMetadata(std::string_view json) {
  Metadata metadata;
  std::string error;
  const std::optional<picojson::value> value = ParseBoundedJson(json, &error);
  if (!value) {
    metadata.problems.push_back("it is no JSON: " + Excerpt(error) + ". Nothing of it is used.");
    return metadata;
  }
  if (!value->is<picojson::array>()) {
    metadata.problems.emplace_back(
        "it holds no array. Write an array of objects with \"name\", \"lib\" and "
        "\"entry_points\".");
    return metadata;
  }
  size_t number = 0;
  for (const picojson::value& entry : value->get<picojson::array>()) {
    ReadEntry(++number, entry, &metadata);
  }
  return metadata;
}

Metadata ReadMetadataFile(const std::filesystem::path& file) {
  Metadata unreadable;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    unreadable.problems.emplace_back("it cannot be read. Check its permissions.");
    return unreadable;
  }
  std::string text(kMaxFileBytes + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<size_t>(stream.gcount()));
  if (text.size() > kMaxFileBytes) {
    unreadable.problems.emplace_back("it is longer than 1 MiB, and not used.");
    return unreadable;
  }
  return ParseMetadata(text);
}

}  // namespace orvane::extensions
