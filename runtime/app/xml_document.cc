// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/xml_document.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <system_error>

#include <glib.h>

#include "app/problem.h"

namespace orvane::app {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string ReadFile(const fs::path& file) {
  std::error_code error;
  if (!fs::exists(file, error)) {
    throw AppError(file,
                   "there is no such file, and an application has one. Is it another folder?");
  }
  if (!fs::is_regular_file(file, error)) throw AppError(file, "is not a file.");
  // Read to one byte beyond the limit rather than trusting a size that may change meanwhile.
  std::string text(XmlDocument::kMaxBytes + 1, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (stream.bad() || (!stream.is_open())) {
    throw AppError(file, "cannot be read: check that you may read it.");
  }
  text.resize(static_cast<size_t>(stream.gcount()));
  if (text.size() > XmlDocument::kMaxBytes) {
    throw AppError(file, "is larger than " + std::to_string(XmlDocument::kMaxBytes / 1024) +
                             " KiB, which no configuration is. Is it another file by mistake?");
  }
  return text;
}

// What XML does not allow, and UTF-8 does.
bool IsControl(char character) {
  const bool is_space = character == '\t' || character == '\n' || character == '\r';
  return static_cast<unsigned char>(character) < 0x20 && !is_space;
}

std::string WhatToDo(pugi::xml_parse_status status) {
  switch (status) {
    case pugi::status_end_element_mismatch:
      return "the end tag does not belong to the element that is open here. Close the elements in "
             "the reverse order of their start tags.";
    case pugi::status_no_document_element:
      return "there is no element in it. Begin with <widget xmlns=\"http://www.w3.org/ns/widgets\" "
             "xmlns:tizen=\"http://tizen.org/ns/widgets\">.";
    case pugi::status_bad_attribute:
      return "an attribute is malformed. Write name=\"value\", with quotes, and each name once.";
    case pugi::status_bad_start_element:
      return "a start tag is malformed. Is a \">\" or a quote missing?";
    case pugi::status_bad_end_element:
      return "an end tag is malformed. Is a \">\" missing?";
    case pugi::status_bad_comment:
      return "a comment is not closed with \"-->\".";
    case pugi::status_unrecognized_tag:
      return "this is no tag. Write &lt; for a \"<\" that is text.";
    default:
      return "the XML is malformed. Check the tags and quotes around this line.";
  }
}

}  // namespace

XmlDocument::XmlDocument(const fs::path& file) : text_(ReadFile(file)) {
  if (text_.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
    text_.erase(0, kByteOrderMark.size());
  }
  for (size_t at = text_.find('\n'); at != std::string::npos; at = text_.find('\n', at + 1)) {
    line_ends_.push_back(at);
  }
  CheckText(file.string());
  const pugi::xml_parse_result result =
      document_.load_buffer(text_.data(), text_.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!result) Refuse(file.string(), result);
}

void XmlDocument::Refuse(const std::string& file, const pugi::xml_parse_result& result) const {
  const size_t offset = static_cast<size_t>(std::max<ptrdiff_t>(result.offset, 0));
  if (result.status == pugi::status_no_document_element) {
    throw AppError({file, 1, "", WhatToDo(result.status)});
  }
  const size_t tag = text_.rfind('<', offset);
  const bool at_end_tag = tag != std::string::npos && text_.compare(tag, 2, "</") == 0;
  if (result.status == pugi::status_end_element_mismatch && !at_end_tag) {
    throw AppError({file, LineAt(text_.size()), "",
                    "the file ends while an element is still open. Is an end tag missing, such as "
                    "</widget>?"});
  }
  throw AppError({file, LineAt(offset), ElementAt(offset), WhatToDo(result.status)});
}

int XmlDocument::LineOf(const pugi::xml_node& element) const {
  return LineAt(static_cast<size_t>(std::max<ptrdiff_t>(element.offset_debug(), 0)));
}

int XmlDocument::LineAt(size_t offset) const {
  const auto end = std::lower_bound(line_ends_.begin(), line_ends_.end(), offset);
  return static_cast<int>(end - line_ends_.begin()) + 1;
}

// The name of the tag that the parser was in or had just read when it gave up.
std::string XmlDocument::ElementAt(size_t offset) const {
  const size_t open = text_.rfind('<', offset);
  if (open == std::string::npos) return {};
  const size_t begin = open + (text_.compare(open, 2, "</") == 0 ? 2 : 1);
  const size_t end = std::min(text_.find_first_of(" \t\r\n/><=\"'", begin), text_.size());
  return text_.substr(begin, std::min<size_t>(end - begin, 64));
}

void XmlDocument::CheckText(const std::string& file) const {
  const char* const end = text_.data() + text_.size();
  const char* bad = nullptr;
  g_utf8_validate(text_.data(), static_cast<gssize>(text_.size()), &bad);
  bad = std::find_if(text_.data(), bad, IsControl);
  if (bad == end) return;
  const auto at = static_cast<size_t>(bad - text_.data());
  throw AppError({file, LineAt(at), "",
                  "byte " + std::to_string(at + 1) +
                      " of the file is not text in UTF-8. Save the file as UTF-8."});
}

std::string_view Prefix(const pugi::xml_node& element) {
  const char* colon = std::strchr(element.name(), ':');
  return colon == nullptr
             ? std::string_view()
             : std::string_view(element.name(), static_cast<size_t>(colon - element.name()));
}

std::string TextOf(const pugi::xml_node& element, const char* expression) {
  return pugi::xpath_query(expression).evaluate_string(element);
}

}  // namespace orvane::app
