// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "profile_reader.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

#include <pugixml.hpp>

#include "file_text.h"
#include "tvset/error.h"

namespace tvset {
namespace {

constexpr size_t kMaxKey = 255;
constexpr size_t kMaxFile = size_t{4} << 20;

class ProfileReader {
 public:
  explicit ProfileReader(const std::filesystem::path& file) : file_(file.string()) {}

  ProfileContent Read() {
    source_ = ReadFile();
    pugi::xml_document document;
    // Text is taken as it stands, also when it is nothing but blanks.
    const pugi::xml_parse_result parsed = document.load_buffer(
        source_.data(), source_.size(), pugi::parse_default | pugi::parse_ws_pcdata);
    if (!parsed) throw SetError(Where(parsed.offset) + parsed.description());
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != "model-config") {
      throw SetError(Where(root.offset_debug()) + "the root element is <" + root.name() +
                     ">, but a device profile has <model-config>");
    }
    for (const pugi::xml_node& group : root.children()) {
      if (group.type() == pugi::node_element) ReadGroup(group);
    }
    return std::move(content_);
  }

 private:
  std::string ReadFile() const {
    std::optional<std::string> source = ReadFileBytes(file_);
    if (!source) throw SetError(file_ + ": the device profile cannot be read");
    if (source->size() > kMaxFile) {
      throw SetError(file_ + ": " + std::to_string(source->size()) +
                     " bytes are too many for a device profile");
    }
    return std::move(*source);
  }

  // "FILE:LINE: " for an offset into the source.
  std::string Where(ptrdiff_t offset) const {
    const size_t end =
        std::min(static_cast<size_t>(std::max<ptrdiff_t>(offset, 0)), source_.size());
    const auto stop = source_.begin() + static_cast<ptrdiff_t>(end);
    return file_ + ":" + std::to_string(1 + std::count(source_.begin(), stop, '\n')) + ": ";
  }

  std::string Where(const pugi::xml_node& entry) const {
    const std::string name = entry.attribute("name").as_string();
    return Where(entry.offset_debug()) + "<" + entry.name() +
           (name.empty() ? "" : " name=\"" + name + "\"") + "> ";
  }

  void Warn(const pugi::xml_node& entry, const std::string& text) {
    content_.warnings.push_back(Where(entry) + text);
  }

  void ReadGroup(const pugi::xml_node& group) {
    const std::string_view name = group.name();
    if (name != "platform" && name != "custom") {
      Warn(group, "is passed over: the groups are <platform> and <custom>");
      return;
    }
    const FeatureGroup kind = name == "platform" ? FeatureGroup::kPlatform : FeatureGroup::kCustom;
    for (const pugi::xml_node& entry : group.children()) {
      if (entry.type() == pugi::node_element) ReadEntry(entry, kind);
    }
  }

  void ReadEntry(const pugi::xml_node& entry, FeatureGroup group) {
    const std::string key = entry.attribute("name").as_string();
    const std::string type = entry.attribute("type").as_string();
    const std::string text = entry.text().get();
    if (key.empty()) return Warn(entry, "is passed over: it has no name");
    if (type.empty()) return Warn(entry, "is passed over: it has no type");
    if (text.empty()) return Warn(entry, "is passed over: it has no text");
    if (!IsFeatureType(type)) {
      throw SetError(Where(entry) + "has the type \"" + type +
                     "\", but there are only bool, int, double and string");
    }
    if (key.size() > kMaxKey) {
      throw SetError(Where(entry) + "has a name of " + std::to_string(key.size()) + " bytes, but " +
                     std::to_string(kMaxKey) + " are the most");
    }
    WarnOfText(entry, type, text);
    content_.features.push_back(Feature{key, type, text, group});
  }

  // The platform reads any text as a value; a person means something by it.
  void WarnOfText(const pugi::xml_node& entry, const std::string& type, const std::string& text) {
    if (type == "bool" && text != "true" && text != "TRUE" && text != "false" && text != "FALSE") {
      Warn(entry, R"(reads as false: only "true" and "TRUE" are true, not ")" + text + "\"");
    }
    const size_t sign = text[0] == '-' || text[0] == '+' ? 1 : 0;
    const bool decimal =
        text.size() > sign && std::all_of(text.begin() + static_cast<ptrdiff_t>(sign), text.end(),
                                          [](unsigned char c) { return std::isdigit(c) != 0; });
    if (type == "int" && !decimal) {
      Warn(entry, "is no whole decimal number: \"" + text + "\" reads as far as its digits go");
    }
  }

  std::string file_;
  std::string source_;
  ProfileContent content_;
};

}  // namespace

ProfileContent ReadProfile(const std::filesystem::path& file) { return ProfileReader(file).Read(); }

}  // namespace tvset
