// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/json.h"
#include "base/near_names.h"

// A struct and its JSON, written once. A struct names its fields in one function, found by its
// namespace:
//
//   template <class Map>
//   void MapFields(Map& map, Fault& fault) {
//     map("function", fault.function);             // has to be there
//     map("code", fault.code, base::Range{-99, 0});
//     map.Optional("hits", fault.hits);            // may be left out, or null
//   }
//
// and is read with FromJson<Fault>(json, "the fault") and written with TextOf(fault), or ToJson
// where more is made of it. Fields are texts, paths, flags, numbers, Json itself, enumerations with
// names, structs, and vectors, pairs, std::map by text and std::optional of these. An enumeration
// names its values:
//
//   constexpr base::EnumName<Mode> kModeNames[] = {{Mode::kOnce, "once"}, {Mode::kAlways,
//   "always"}}; constexpr auto& EnumNames(Mode) { return kModeNames; }
//
// Reading throws JsonError, which names the field, its owner, what it has to be and what it is.
namespace orvane::base {

template <class T>
struct EnumName {
  T value;
  std::string_view name;
};

// Both ends count.
struct Range {
  int64_t lowest;
  int64_t highest;
};

enum class Unknown { kPass, kRefuse };  // what becomes of fields that the struct has not

template <class T>
T FromJson(const Json& json, std::string_view owner, Unknown unknown = Unknown::kPass);
// The JSON's text, made without a tree; bytes that belong to no character become U+FFFD.
template <class T>
std::string TextOf(const T& value);
template <class T>
Json ToJson(const T& value);

namespace fields {

[[noreturn]] void Refuse(std::string_view field, const std::string& wanted, const Json* given);
// A field of the object that is none of the known ones; passes when there is none.
void RefuseOthers(const Json& object, std::string_view owner,
                  const std::vector<std::string_view>& known);
std::string WholeNumber(const std::string& lowest, const std::string& highest);

// Whether the type is made from that template, such as std::vector.
template <class T, template <class...> class Template>
inline constexpr bool kIsA = false;
template <class... Arguments, template <class...> class Template>
inline constexpr bool kIsA<Template<Arguments...>, Template> = true;

// A whole number, also where it is written as 2.0 or 2e3. False: it is none, or not the type's.
template <class T>
bool ReadInteger(const Json& json, T* value) {
  using Limits = std::numeric_limits<T>;
  constexpr double kExact = 9007199254740992;  // from here on a double passes some over
  if (json.is_number_float()) {
    const auto number = json.get<double>();
    return std::abs(number) <= kExact && number == std::trunc(number) &&
           ReadInteger(Json(static_cast<int64_t>(number)), value);
  }
  if (!json.is_number_integer()) return false;
  const bool is_negative = !json.is_number_unsigned() && json.get<int64_t>() < 0;
  const bool fits = is_negative ? json.get<int64_t>() >= static_cast<int64_t>(Limits::min())
                                : json.get<uint64_t>() <= static_cast<uint64_t>(Limits::max());
  if (fits) *value = json.get<T>();
  return fits;
}

template <class T>
void Read(const Json& json, std::string_view field, T& value) {
  if constexpr (std::is_same_v<T, Json>) {
    value = json;
  } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::filesystem::path>) {
    if (!json.is_string()) Refuse(field, "a string", &json);
    value = json.get_ref<const std::string&>();
  } else if constexpr (std::is_same_v<T, bool>) {
    if (!json.is_boolean()) Refuse(field, "true or false", &json);
    value = json.get<bool>();
  } else if constexpr (std::is_integral_v<T>) {
    using Limits = std::numeric_limits<T>;
    if (ReadInteger(json, &value)) return;
    Refuse(field, WholeNumber(std::to_string(Limits::min()), std::to_string(Limits::max())), &json);
  } else if constexpr (std::is_floating_point_v<T>) {
    if (!json.is_number()) Refuse(field, "a number", &json);
    value = json.get<T>();
  } else if constexpr (std::is_enum_v<T>) {
    std::vector<std::string> names;
    for (const auto& [known, name] : EnumNames(T())) {
      if (json.is_string() && json.get_ref<const std::string&>() == name) {
        value = known;
        return;
      }
      names.emplace_back(name);
    }
    Refuse(field, QuotedNames(names, " or "), &json);
  } else if constexpr (kIsA<T, std::vector>) {
    if (!json.is_array()) Refuse(field, "an array", &json);
    value.clear();
    for (const Json& element : json) {
      Read(element, "an entry of " + std::string(field), value.emplace_back());
    }
  } else if constexpr (kIsA<T, std::pair>) {
    if (!json.is_array() || json.size() != 2) Refuse(field, "an array of two", &json);
    Read(json[0], "the first entry of " + std::string(field), value.first);
    Read(json[1], "the second entry of " + std::string(field), value.second);
  } else if constexpr (kIsA<T, std::map>) {
    if (!json.is_object()) Refuse(field, "a JSON object, in braces", &json);
    value.clear();
    for (const auto& [name, member] : json.items()) {
      Read(member, "\"" + name + "\" of " + std::string(field), value[name]);
    }
  } else if constexpr (kIsA<T, std::optional>) {
    value.reset();
    if (!json.is_null()) Read(json, field, value.emplace());
  } else {
    value = FromJson<T>(json, field);
  }
}

class Reader {
 public:
  Reader(const Json& object, std::string_view owner) : object_(object), owner_(owner) {}

  template <class T>
  void operator()(const char* name, T& value) {
    const Json* const given = Find(name);
    if (given != nullptr) return Read(*given, Name(name), value);
    if constexpr (kIsA<T, std::optional>) return value.reset();
    if constexpr (std::is_same_v<T, Json>) Refuse(Name(name), "given", nullptr);
    Read(Json(), Name(name), value);  // says what is wanted
  }
  template <class T>
  void operator()(const char* name, T& value, Range range) {
    const Json* const given = Find(name);
    int64_t number = 0;
    if (given == nullptr || !ReadInteger(*given, &number) || number < range.lowest ||
        number > range.highest) {
      Refuse(Name(name), WholeNumber(std::to_string(range.lowest), std::to_string(range.highest)),
             given);
    }
    value = static_cast<T>(number);
  }
  template <class T, class... Bound>
  void Optional(const char* name, T& value, Bound... bound) {
    if (Find(name) != nullptr) (*this)(name, value, bound...);
  }

 private:
  const Json* Find(const char* name) const {
    const auto found = object_.find(name);
    return found == object_.end() || found->is_null() ? nullptr : &*found;
  }
  std::string Name(const char* name) const {
    return "\"" + std::string(name) + "\" of " + std::string(owner_);
  }
  const Json& object_;
  const std::string_view owner_;
};

class Names {
 public:
  template <class T, class... Bound>
  void operator()(const char* name, T&, Bound...) {
    names_.emplace_back(name);
  }
  template <class T, class... Bound>
  void Optional(const char* name, T&, Bound...) {
    names_.emplace_back(name);
  }
  const std::vector<std::string_view>& names() const { return names_; }

 private:
  std::vector<std::string_view> names_;
};

template <class T>
void Append(const T& value, std::string* text);

class Writer {
 public:
  explicit Writer(std::string* text) : text_(text) {}  // which ends in "{"

  template <class T, class... Bound>
  void operator()(const char* name, const T& value, Bound...) {
    text_->append(text_->back() == '{' ? "\"" : ",\"").append(name).append("\":");
    Append(value, text_);
  }
  // One that has its empty value is left out where that is std::nullopt.
  template <class T, class... Bound>
  void Optional(const char* name, const T& value, Bound...) {
    if constexpr (kIsA<T, std::optional>) {
      if (!value) return;
    }
    (*this)(name, value);
  }

 private:
  std::string* const text_;
};

// Appends "[…]" or "{…}" with what `append_one` makes of each element.
template <class T, class Each>
void AppendEach(const T& elements, const char* brackets, std::string* text, Each append_one) {
  text->push_back(brackets[0]);
  for (const auto& element : elements) {
    if (text->back() != brackets[0]) text->push_back(',');
    append_one(element);
  }
  text->push_back(brackets[1]);
}

template <class T>
void Append(const T& value, std::string* text) {
  if constexpr (std::is_same_v<T, Json> || std::is_floating_point_v<T>) {
    AppendJson(value, text);
  } else if constexpr (std::is_same_v<T, bool>) {
    text->append(value ? "true" : "false");
  } else if constexpr (std::is_integral_v<T>) {
    text->append(std::to_string(value));
  } else if constexpr (std::is_enum_v<T>) {
    const auto& names = EnumNames(value);
    const auto found = std::find_if(std::begin(names), std::end(names),
                                    [&](const auto& known) { return known.value == value; });
    found == std::end(names) ? void(text->append("null")) : AppendJsonString(found->name, text);
  } else if constexpr (std::is_same_v<T, std::filesystem::path>) {
    AppendJsonString(value.native(), text);
  } else if constexpr (std::is_convertible_v<T, std::string_view>) {
    AppendJsonString(value, text);
  } else if constexpr (kIsA<T, std::vector>) {
    AppendEach(value, "[]", text, [text](const auto& element) { Append(element, text); });
  } else if constexpr (kIsA<T, std::pair>) {
    Append(value.first, &(*text += '['));
    Append(value.second, &(*text += ','));
    text->push_back(']');
  } else if constexpr (kIsA<T, std::map>) {
    AppendEach(value, "{}", text, [text](const auto& member) {
      AppendJsonString(member.first, text);
      Append(member.second, &(*text += ':'));
    });
  } else if constexpr (kIsA<T, std::optional>) {
    value ? Append(*value, text) : void(text->append("null"));
  } else {
    Writer writer(&(*text += '{'));
    // Writing reads the fields alone.
    MapFields(writer, const_cast<T&>(value));  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    text->push_back('}');
  }
}

}  // namespace fields

template <class T>
T FromJson(const Json& json, std::string_view owner, Unknown unknown) {
  if (!json.is_object()) fields::Refuse(owner, "a JSON object, in braces", &json);
  T value{};
  // A slip in a name comes before what is missing for it.
  if (unknown == Unknown::kRefuse) {
    fields::Names names;
    MapFields(names, value);
    fields::RefuseOthers(json, owner, names.names());
  }
  fields::Reader reader(json, owner);
  MapFields(reader, value);
  return value;
}

template <class T>
std::string TextOf(const T& value) {
  std::string text;
  fields::Append(value, &text);
  return text;
}

// A record and its number in a stream.
template <class T>
struct Numbered {
  T record;
  int64_t seq = 0;
};
template <class Map, class T>
void MapFields(Map& map, Numbered<T>& numbered) {
  MapFields(map, numbered.record);
  map("seq", numbered.seq);
}

template <class T>
Json ToJson(const T& value) {
  return Json::parse(TextOf(value));
}

}  // namespace orvane::base
