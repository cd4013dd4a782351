// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "log/format_text.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace tvset {
namespace {

enum class Width { kInt, kLong, kLongLong, kSize };

// The checker does not see that the list behind the pointer was begun by FormatText.
// NOLINTBEGIN(clang-analyzer-valist.Uninitialized)
class PlainFormat {
 public:
  PlainFormat(char* out, size_t size) : out_(out), room_(size - 1) {}

  // False: the format has something else in it; what was written counts for nothing.
  bool Run(const char* format, va_list* arguments) {
    while (true) {
      const char* percent = strchrnul(format, '%');
      Append(format, static_cast<size_t>(percent - format));
      if (*percent == '\0') break;
      format = Convert(percent + 1, arguments);
      if (format == nullptr) return false;
    }
    out_[std::min(length_, room_)] = '\0';
    return length_ <= INT_MAX;
  }

  size_t length() const { return length_; }

 private:
  void Append(const char* text, size_t size) {
    if (length_ < room_) std::memcpy(out_ + length_, text, std::min(size, room_ - length_));
    length_ += size;
  }

  void AppendText(const char* text) {
    if (text == nullptr) text = "(null)";
    Append(text, std::strlen(text));
  }

  template <typename Number>
  void AppendNumber(Number number, int base) {
    char digits[24];
    const std::to_chars_result result =
        std::to_chars(digits, digits + sizeof(digits), number, base);
    Append(digits, static_cast<size_t>(result.ptr - digits));
  }

  static const char* ReadWidth(const char* at, Width* width) {
    if (at[0] == 'l' && at[1] == 'l') {
      *width = Width::kLongLong;
      return at + 2;
    }
    *width = at[0] == 'l' ? Width::kLong : at[0] == 'z' ? Width::kSize : Width::kInt;
    return *width == Width::kInt ? at : at + 1;
  }

  void AppendSigned(Width width, va_list* arguments) {
    switch (width) {
      case Width::kInt:
        return AppendNumber(va_arg(*arguments, int), 10);
      case Width::kLong:
        return AppendNumber(va_arg(*arguments, long), 10);
      case Width::kLongLong:
        return AppendNumber(va_arg(*arguments, long long), 10);
      case Width::kSize:
        return AppendNumber(va_arg(*arguments, ssize_t), 10);
    }
  }

  void AppendUnsigned(Width width, int base, va_list* arguments) {
    switch (width) {
      case Width::kInt:
        return AppendNumber(va_arg(*arguments, unsigned), base);
      case Width::kLong:
        return AppendNumber(va_arg(*arguments, unsigned long), base);
      case Width::kLongLong:
        return AppendNumber(va_arg(*arguments, unsigned long long), base);
      case Width::kSize:
        return AppendNumber(va_arg(*arguments, size_t), base);
    }
  }

  void AppendPointer(const void* pointer) {
    if (pointer == nullptr) return AppendText("(nil)");
    Append("0x", 2);
    AppendNumber(reinterpret_cast<uintptr_t>(pointer), 16);
  }

  void AppendCharacter(int character) {
    const char text = static_cast<char>(character);
    Append(&text, 1);
  }

  // What follows the conversion at `at`, the character after its percent sign; null for one not
  // plain.
  const char* Convert(const char* at, va_list* arguments) {
    Width width = Width::kInt;
    at = ReadWidth(at, &width);
    switch (*at) {
      case 'd':
      case 'i':
        AppendSigned(width, arguments);
        return at + 1;
      case 'u':
        AppendUnsigned(width, 10, arguments);
        return at + 1;
      case 'x':
        AppendUnsigned(width, 16, arguments);
        return at + 1;
      default:
        return width == Width::kInt ? ConvertOther(at, arguments) : nullptr;
    }
  }

  const char* ConvertOther(const char* at, va_list* arguments) {
    switch (*at) {
      case 's':
        AppendText(va_arg(*arguments, const char*));
        return at + 1;
      case 'c':
        AppendCharacter(va_arg(*arguments, int));
        return at + 1;
      case 'p':
        AppendPointer(va_arg(*arguments, const void*));
        return at + 1;
      case '%':
        Append("%", 1);
        return at + 1;
      default:
        return nullptr;
    }
  }

  char* const out_;
  const size_t room_;  // without the terminating zero
  size_t length_ = 0;  // of the whole text, also of what does not fit
};
// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace

int FormatText(char* out, size_t size, const char* format, va_list arguments) {
  va_list copy;  // of the list itself: the address of a parameter of that type is no list's on
                 // every processor
  va_copy(copy, arguments);
  PlainFormat plain(out, size);
  const bool done = plain.Run(format, &copy);
  va_end(copy);
  return done ? static_cast<int>(plain.length()) : std::vsnprintf(out, size, format, arguments);
}

}  // namespace tvset
