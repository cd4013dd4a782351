// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/html_injection.h"

#include <algorithm>
#include <cstddef>

#include "server/web/http_message.h"

namespace orvane::server {

namespace {

constexpr std::string_view kElement = R"(<script src="/.orvane/page.js"></script>)";
// The beginning of a document that is looked at: comments may be long, but not that long.
constexpr size_t kMostLookedAt = size_t{256} << 10U;

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

// Reads what stands before a document's content.
class Prologue {
 public:
  explicit Prologue(std::string_view text) : text_(text) {}

  // Where the content begins, that is, behind the last tag that belongs before it.
  size_t End() {
    size_t end = 0;
    while (true) {
      SkipSpace();
      if (SkipBetween("<!--", "-->") || SkipBetween("<?", ">")) continue;
      if (SkipTag("!doctype") || SkipTag("html")) {
        end = at_;
        continue;
      }
      return SkipTag("head") ? at_ : end;
    }
  }

 private:
  void SkipSpace() {
    while (at_ < text_.size() && IsSpace(text_[at_])) ++at_;
  }

  bool SkipBetween(std::string_view open, std::string_view close) {
    if (text_.substr(at_, open.size()) != open) return false;
    const size_t end = text_.find(close, at_ + open.size());
    if (end == std::string_view::npos) return false;
    at_ = end + close.size();
    return true;
  }

  bool SkipTag(std::string_view name) {
    if (text_.substr(at_, 1) != "<") return false;
    if (!EqualsIgnoringCase(text_.substr(at_ + 1, name.size()), name)) return false;
    size_t at = at_ + 1 + name.size();
    if (at >= text_.size() || (!IsSpace(text_[at]) && text_[at] != '>')) return false;
    char quote = 0;
    for (; at < text_.size(); ++at) {
      const char c = text_[at];
      if (quote != 0) {
        if (c == quote) quote = 0;
      } else if (c == '"' || c == '\'') {
        quote = c;
      } else if (c == '>') {
        at_ = at + 1;
        return true;
      }
    }
    return false;
  }

  const std::string_view text_;
  size_t at_ = 0;
};

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
    at = 2 + 2 * Prologue(text).End();
    element = Widened(element, low_byte);
  } else {
    const size_t mark = beginning.substr(0, 3) == "\xef\xbb\xbf" ? 3 : 0;
    at = mark + Prologue(beginning.substr(mark)).End();
  }
  std::string result;
  result.reserve(html.size() + element.size());
  result.append(html, 0, at).append(element).append(html, at);
  return result;
}

}  // namespace orvane::server
