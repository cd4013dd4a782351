// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace orvane::app {

// An XML file read for people: it knows the line of each element. One thread only.
class XmlDocument {
 public:
  static constexpr std::uintmax_t kMaxBytes = 1024 * 1024;

  // Throws AppError, with the line, when the file cannot be read, is larger than kMaxBytes, is not
  // UTF-8 text or is not well-formed.
  explicit XmlDocument(const std::filesystem::path& file);

  pugi::xml_node root() const { return document_.document_element(); }
  int LineOf(const pugi::xml_node& element) const;

 private:
  int LineAt(size_t offset) const;
  std::string ElementAt(size_t offset) const;
  [[noreturn]] void Refuse(const std::string& file, const pugi::xml_parse_result& result) const;
  void CheckText(const std::string& file) const;

  std::string text_;
  std::vector<size_t> line_ends_;
  pugi::xml_document document_;
};

// The part of an element's name before its colon; empty when there is none.
std::string_view Prefix(const pugi::xml_node& element);
// What an XPath expression, such as "local-name()", gives for the element.
std::string TextOf(const pugi::xml_node& element, const char* expression);

}  // namespace orvane::app
