// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/html_injection.h"

#include <cstddef>

#include <glib.h>

namespace orvane::server {

namespace {

constexpr std::string_view kElement = R"(<script src="/.orvane/page.js"></script>)";
// The beginning of a document that is looked at: comments may be long, but not that long.
constexpr size_t kMostLookedAt = size_t{256} << 10U;

// What stands before a document's content, up to the last tag that belongs there: the document type
// and the start tags of "html" and "head", with blanks, comments and processing instructions
// between them.
constexpr char kPrologue[] = R"((?xis) \A
    (?<between> (?: [ \t\n\r\f]++ | <!--.*?--> | <\?.*?> )*+ ){0}
    (?<rest> (?= [ \t\n\r\f>] ) (?: "[^"]*" | '[^']*' | [^"'>]++ )*+ > ){0}
    (?: (?&between) <(?: !doctype | html ) (?&rest) )*+
    (?: (?&between) <head (?&rest) )?+ )";

// Where the content begins.
size_t EndOfPrologue(std::string_view text) {
  static GRegex* const prologue =
      g_regex_new(kPrologue, static_cast<GRegexCompileFlags>(G_REGEX_RAW | G_REGEX_OPTIMIZE),
                  static_cast<GRegexMatchFlags>(0), nullptr);
  GMatchInfo* match = nullptr;
  int end = 0;
  if (g_regex_match_full(prologue, text.data(), static_cast<gssize>(text.size()), 0,
                         static_cast<GRegexMatchFlags>(0), &match, nullptr) != FALSE) {
    g_match_info_fetch_pos(match, 0, nullptr, &end);
  }
  g_match_info_free(match);
  return static_cast<size_t>(end);
}

// A document in UTF-16, each unit as one character; what is beyond ASCII matters to nobody here.
std::string AsciiOf(std::string_view units, size_t low_byte) {
  std::string text;
  for (size_t i = 0; i + 1 < units.size(); i += 2) {
    text.push_back(units[i + 1 - low_byte] == 0 ? units[i + low_byte] : '?');
  }
  return text;
}

std::string Widened(std::string_view text, size_t low_byte) {
  std::string units(text.size() * 2, '\0');
  for (size_t i = 0; i < text.size(); ++i) units[2 * i + low_byte] = text[i];
  return units;
}

}  // namespace

std::string InjectPageScript(std::string_view html) {
  const std::string_view beginning = html.substr(0, kMostLookedAt);
  size_t at = 0;
  std::string element(kElement);
  if (beginning.substr(0, 2) == "\xff\xfe" || beginning.substr(0, 2) == "\xfe\xff") {
    const size_t low_byte = beginning[0] == '\xff' ? 0 : 1;
    const std::string text = AsciiOf(beginning.substr(2), low_byte);
    at = 2 + 2 * EndOfPrologue(text);
    element = Widened(element, low_byte);
  } else {
    const size_t mark = beginning.substr(0, 3) == "\xef\xbb\xbf" ? 3 : 0;
    at = mark + EndOfPrologue(beginning.substr(mark));
  }
  std::string result;
  result.reserve(html.size() + element.size());
  result.append(html, 0, at).append(element).append(html, at);
  return result;
}

}  // namespace orvane::server
