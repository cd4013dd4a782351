// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/json_object.h"

#include <charconv>
#include <cstddef>

#include "base/json_text.h"

namespace orvane::base {

namespace {

constexpr int kMaxDepth = 64;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// Walks over a text. Every Skip… leaves the position behind what it names, or returns false.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  size_t at() const { return at_; }
  bool AtEnd() const { return at_ == text_.size(); }
  std::string_view Since(size_t begin) const { return text_.substr(begin, at_ - begin); }

  void SkipSpace() {
    while (!AtEnd() &&
           (text_[at_] == ' ' || text_[at_] == '\n' || text_[at_] == '\r' || text_[at_] == '\t')) {
      ++at_;
    }
  }

  bool Skip(char c) {
    if (AtEnd() || text_[at_] != c) return false;
    ++at_;
    return true;
  }

  bool SkipString() {
    if (!Skip('"')) return false;
    while (!AtEnd()) {
      const char c = text_[at_++];
      if (c == '"') return true;
      if (static_cast<unsigned char>(c) < 0x20) return false;
      if (c == '\\' && !SkipEscape()) return false;
    }
    return false;
  }

  bool SkipValue(int depth) {
    if (AtEnd() || depth > kMaxDepth) return false;
    switch (text_[at_]) {
      case '"':
        return SkipString();
      case '{':
        return SkipObject(depth, [](auto, auto) {});
      case '[':
        return SkipArray(depth, [](auto) {});
      case 't':
        return SkipWord("true");
      case 'f':
        return SkipWord("false");
      case 'n':
        return SkipWord("null");
      default:
        return SkipNumber();
    }
  }

  // `receive(name with quotes, value)`.
  template <typename Receive>
  bool SkipObject(int depth, Receive receive) {
    return SkipList('{', '}', [&] {
      const size_t name_begin = at_;
      if (!SkipString()) return false;
      const std::string_view name = Since(name_begin);
      SkipSpace();
      if (!Skip(':')) return false;
      SkipSpace();
      const size_t value_begin = at_;
      if (!SkipValue(depth + 1)) return false;
      receive(name, Since(value_begin));
      return true;
    });
  }

  template <typename Receive>
  bool SkipArray(int depth, Receive receive) {
    return SkipList('[', ']', [&] {
      const size_t begin = at_;
      if (!SkipValue(depth + 1)) return false;
      receive(Since(begin));
      return true;
    });
  }

 private:
  template <typename SkipItem>
  bool SkipList(char open, char close, SkipItem skip_item) {
    if (!Skip(open)) return false;
    SkipSpace();
    if (Skip(close)) return true;
    while (true) {
      SkipSpace();
      if (!skip_item()) return false;
      SkipSpace();
      if (Skip(close)) return true;
      if (!Skip(',')) return false;
    }
  }

  bool SkipEscape() {
    if (AtEnd()) return false;
    const char c = text_[at_++];
    if (c != 'u') return std::string_view("\"\\/bfnrt").find(c) != std::string_view::npos;
    for (int i = 0; i < 4; ++i) {
      if (AtEnd() || !IsHexDigit(text_[at_++])) return false;
    }
    return true;
  }

  bool SkipWord(std::string_view word) {
    if (text_.substr(at_, word.size()) != word) return false;
    at_ += word.size();
    return true;
  }

  bool SkipDigits() {
    const size_t begin = at_;
    while (!AtEnd() && IsDigit(text_[at_])) ++at_;
    return at_ > begin;
  }

  bool SkipNumber() {
    Skip('-');
    if (!Skip('0') && !SkipDigits()) return false;
    if (Skip('.') && !SkipDigits()) return false;
    if (Skip('e') || Skip('E')) {
      if (!Skip('+')) Skip('-');
      return SkipDigits();
    }
    return true;
  }

  const std::string_view text_;
  size_t at_ = 0;
};

unsigned HexValue(std::string_view digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

void AppendCharacter(unsigned code, std::string* text) {
  const auto tail = [&](unsigned shift) {
    text->push_back(static_cast<char>(0x80U | (code >> shift & 0x3fU)));
  };
  if (code < 0x80) {
    text->push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    text->push_back(static_cast<char>(0xc0U | code >> 6U));
    tail(0);
  } else if (code < 0x10000) {
    text->push_back(static_cast<char>(0xe0U | code >> 12U));
    tail(6);
    tail(0);
  } else {
    text->push_back(static_cast<char>(0xf0U | code >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

// The character of the escape \uXXXX at the beginning of `rest`, of two such where they are a pair;
// half a pair becomes U+FFFD. `rest` begins behind the "u", and behind the escape on return.
unsigned TakeUnicodeEscape(std::string_view* rest) {
  const unsigned unit = HexValue(rest->substr(0, 4));
  rest->remove_prefix(4);
  if (unit < 0xd800 || unit > 0xdfff) return unit;
  if (unit < 0xdc00 && rest->substr(0, 2) == "\\u") {
    const unsigned low = HexValue(rest->substr(2, 4));
    if (low >= 0xdc00 && low <= 0xdfff) {
      rest->remove_prefix(6);
      return 0x10000 + ((unit - 0xd800) << 10U) + (low - 0xdc00);
    }
  }
  return 0xfffd;
}

char PlainEscape(char c) {
  switch (c) {
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return c;
  }
}

}  // namespace

std::optional<JsonObject> JsonObject::Parse(std::string_view text) {
  constexpr size_t kUsualMembers = 8;
  if (!base::IsWellFormed(text)) return std::nullopt;
  JsonObject object;
  object.members_.reserve(kUsualMembers);
  Scanner scanner(text);
  scanner.SkipSpace();
  const bool is_object = scanner.SkipObject(0, [&](std::string_view name, std::string_view value) {
    object.members_.emplace_back(name.substr(1, name.size() - 2), value);
  });
  scanner.SkipSpace();
  if (!is_object || !scanner.AtEnd()) return std::nullopt;
  return object;
}

std::string_view JsonObject::Raw(std::string_view name) const {
  for (const auto& [member, value] : members_) {
    if (member == name) return value;
  }
  return {};
}

std::string_view JsonObject::RawText(std::string_view name) const {
  const std::string_view raw = Raw(name);
  return !raw.empty() && raw.front() == '"' ? raw : std::string_view();
}

std::optional<std::string> JsonObject::Text(std::string_view name) const {
  const std::string_view raw = RawText(name);
  if (raw.empty()) return std::nullopt;
  return DecodeJsonString(raw);
}

std::optional<int64_t> JsonObject::Integer(std::string_view name) const {
  const std::string_view raw = Raw(name);
  int64_t value = 0;
  const auto [end, error] = std::from_chars(raw.data(), raw.data() + raw.size(), value);
  if (raw.empty() || error != std::errc() || end != raw.data() + raw.size()) return std::nullopt;
  return value;
}

bool JsonObject::Flag(std::string_view name) const { return Raw(name) == "true"; }

std::optional<std::vector<std::string_view>> JsonElements(std::string_view text) {
  std::vector<std::string_view> elements;
  Scanner scanner(text);
  const bool is_array =
      scanner.SkipArray(0, [&](std::string_view element) { elements.push_back(element); });
  if (!is_array || !scanner.AtEnd()) return std::nullopt;
  return elements;
}

std::string DecodeJsonString(std::string_view raw) {
  std::string_view rest = raw.substr(1, raw.size() - 2);
  std::string text;
  text.reserve(rest.size());
  while (!rest.empty()) {
    const size_t plain = std::min(rest.find('\\'), rest.size());
    text.append(rest, 0, plain);
    rest.remove_prefix(plain);
    if (rest.empty()) break;
    const char kind = rest[1];
    rest.remove_prefix(2);
    if (kind == 'u') {
      AppendCharacter(TakeUnicodeEscape(&rest), &text);
    } else {
      text.push_back(PlainEscape(kind));
    }
  }
  return text;
}

}  // namespace orvane::base
