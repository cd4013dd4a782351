// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/runtime_services.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/algorithm/string/split.hpp>

#include "base/json.h"
#include "television/set_fields.h"
#include "television/shown_text.h"

namespace orvane::television {

namespace {

constexpr char kSuccess[] = "success";
constexpr char kError[] = "error";
constexpr char kNotSupported[] = "notsupportederror";
constexpr size_t kMaxMessageBytes = 64 * 1024;

// A decimal number within int's range, with nothing before or after it.
std::optional<int> ReadInteger(std::string_view text) {
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return value;
}

// At least one, empty ones included.
std::vector<std::string> PartsBetweenCommas(const std::string& text) {
  std::vector<std::string> parts;
  return boost::algorithm::split(parts, text, [](char c) { return c == ','; });
}

std::string MissingPrivilege(const std::string& privilege) {
  return "the application does not hold the privilege. Add <tizen:privilege name=\"" + privilege +
         "\"/> to its config.xml";
}

}  // namespace

struct RuntimeServices::Row {
  std::string_view uri;
  Handler handle;
};

const RuntimeServices::Row RuntimeServices::kRows[] = {
    {"tizen://api/inputdevice/registerKey", &RuntimeServices::RegisterKey},
    {"tizen://api/inputdevice/unregisterKey", &RuntimeServices::UnregisterKey},
    {"dravelt://orvane/RegisterKeyInSpecialMode", &RuntimeServices::RegisterKeyInSpecialMode},
    {"dravelt://orvane/setIMERecommendedType", &RuntimeServices::SetIMERecommendedType},
    {"dravelt://orvane/setIMERecommendedWords", &RuntimeServices::SetIMERecommendedWords},
    {"dravelt://orvane/setIMEPosition", &RuntimeServices::SetIMEPosition},
    {"tizen://setFocus", &RuntimeServices::SetFocus},
    {"tizen://setWindowStackMode", &RuntimeServices::SetWindowStackMode},
    {"dravelt://orvane/setAuxHint", &RuntimeServices::SetAuxHint},
};

RuntimeServices::RuntimeServices(tvset::Set& set, std::string app_id, Explain explain)
    : set_(set), app_id_(std::move(app_id)), explain_(std::move(explain)) {}

bool RuntimeServices::Send(const std::string& uri, const std::string& text) {
  return Handle(uri, text).answer == kSuccess;
}

std::string RuntimeServices::SendSync(const std::string& uri, const std::string& text) {
  return Handle(uri, text).answer;
}

void RuntimeServices::SendAsync(const std::string& uri, const std::string& text,
                                std::function<void(std::string)> answer) {
  const Outcome outcome = Handle(uri, text);
  if (outcome.answer == kSuccess) return answer(R"({"status":"success"})");
  answer(base::JsonText(
      {{"status", "error"},
       {"error", {{"code", 9999}, {"name", "UnknownError"}, {"message", outcome.reason}}}}));
}

RuntimeServices::Outcome RuntimeServices::Handle(const std::string& uri, const std::string& text) {
  Outcome outcome = Dispatch(uri, text);
  if (!outcome.reason.empty()) Tell(uri, outcome.reason);
  return outcome;
}

RuntimeServices::Outcome RuntimeServices::Dispatch(const std::string& uri,
                                                   const std::string& text) {
  for (const Row& row : kRows) {
    if (row.uri != uri) continue;
    if (text.size() > kMaxMessageBytes) {
      return {kError, "the message is longer than " + std::to_string(kMaxMessageBytes) + " bytes"};
    }
    return (this->*row.handle)(text);
  }
  return {kError, "the runtime knows no message of this URI"};
}

RuntimeServices::Outcome RuntimeServices::RegisterKey(const std::string& text) {
  return Grab(text, tvset::GrabMode::kNormal);
}

RuntimeServices::Outcome RuntimeServices::UnregisterKey(const std::string& text) {
  if (!Holds(tvset::kKeyPrivilege)) return {kError, MissingPrivilege(tvset::kKeyPrivilege)};
  return OfGrab(set_.key_grabs().Ungrab(app_id_, text), text);
}

// "XF86Red,2": the key's symbol and the number of the grab mode.
RuntimeServices::Outcome RuntimeServices::RegisterKeyInSpecialMode(const std::string& text) {
  const size_t comma = text.rfind(',');
  const auto mode = comma == std::string::npos ? std::nullopt : ReadInteger(text.substr(comma + 1));
  for (const tvset::GrabMode special : {tvset::GrabMode::kTopmost, tvset::GrabMode::kRegistered}) {
    if (mode == static_cast<int>(special)) return Grab(text.substr(0, comma), special);
  }
  return {kError,
          Quoted(text) + " is not a key's symbol, a comma and a grab mode, which is 2 or 5"};
}

RuntimeServices::Outcome RuntimeServices::Grab(const std::string& key_name, tvset::GrabMode mode) {
  if (!Holds(tvset::kKeyPrivilege)) return {kError, MissingPrivilege(tvset::kKeyPrivilege)};
  return OfGrab(set_.key_grabs().Grab(app_id_, key_name, mode), key_name);
}

RuntimeServices::Outcome RuntimeServices::OfGrab(tvset::GrabResult result,
                                                 const std::string& key_name) const {
  switch (result) {
    case tvset::GrabResult::kDone:
    case tvset::GrabResult::kNotGrabbed:  // what the page wants is so already
      return {kSuccess, ""};
    case tvset::GrabResult::kNotRunning:
      return {kError, NotRunning()};
    case tvset::GrabResult::kUnknownKey:
      break;
  }
  return {kError, "no key of the remote control is called " + Quoted(key_name)};
}

RuntimeServices::Outcome RuntimeServices::SetIMERecommendedType(const std::string& text) {
  const std::optional<int> type = ReadInteger(text);
  if (!type ||
      set_.input_method().SetRecommendedWordsType(*type) != tvset::InputMethodResult::kDone) {
    return {kError,
            Quoted(text) + " is neither 0 (no recommended words) nor 1 (recommended words)"};
  }
  return {kSuccess, ""};
}

RuntimeServices::Outcome RuntimeServices::SetIMERecommendedWords(const std::string& text) {
  std::vector<std::string> words;
  if (!text.empty()) words = PartsBetweenCommas(text);
  constexpr size_t kMaxWords = 1000;
  if (words.size() > kMaxWords) {
    return {kError, "there are more than " + std::to_string(kMaxWords) + " words"};
  }
  set_.input_method().SetRecommendedWords(words);
  return {kSuccess, ""};
}

// "960,1080,7": x and y in pixels and the number of the alignment.
RuntimeServices::Outcome RuntimeServices::SetIMEPosition(const std::string& text) {
  const std::vector<std::string> parts = PartsBetweenCommas(text);
  std::optional<int> numbers[3];
  for (size_t i = 0; parts.size() == 3 && i < 3; ++i) numbers[i] = ReadInteger(parts[i]);
  const std::string malformed =
      Quoted(text) + " is not x, y (pixels, from 0) and alignment (0 to 8) with commas between";
  if (!numbers[0] || !numbers[1] || !numbers[2]) return {kError, malformed};
  switch (set_.input_method().SetPosition(*numbers[0], *numbers[1], *numbers[2])) {
    case tvset::InputMethodResult::kDone:
      return {kSuccess, ""};
    case tvset::InputMethodResult::kNotDynamic:
      return {kNotSupported, "the keyboard's style is not dynamic, so that it stays where it is"};
    case tvset::InputMethodResult::kInvalid:
      break;
  }
  return {kError, malformed};
}

RuntimeServices::Outcome RuntimeServices::SetFocus(const std::string& text) {
  if (text != "true" && text != "false") {
    return {kError, Quoted(text) + R"( is neither "true" nor "false")"};
  }
  return OfWindow(set_.windows().SetFocusWanted(app_id_, text == "true"));
}

RuntimeServices::Outcome RuntimeServices::SetWindowStackMode(const std::string& text) {
  for (const auto& [mode, name] : tvset::kStackModeNames) {
    if (name == text) return OfWindow(set_.windows().SetStackMode(app_id_, mode));
  }
  return {kError, Quoted(text) + R"( is none of "NONE", "BELOW" and "ABOVE")"};
}

// "key,value"; only the value may have commas in it.
RuntimeServices::Outcome RuntimeServices::SetAuxHint(const std::string& text) {
  constexpr size_t kMaxHints = 256;
  constexpr size_t kMaxKeyBytes = 256;
  const size_t comma = text.find(',');
  if (comma == std::string::npos || comma == 0 || comma > kMaxKeyBytes) {
    return {kError, Quoted(text) + " is not a hint's key, a comma and its value"};
  }
  const std::string key = text.substr(0, comma);
  const tvset::Window window = set_.windows().window(app_id_);
  if (window.hints.size() >= kMaxHints && window.hints.count(key) == 0) {
    return {kError, "the window has " + std::to_string(kMaxHints) + " hints already"};
  }
  return OfWindow(set_.windows().SetHint(app_id_, key, text.substr(comma + 1)));
}

bool RuntimeServices::HasPrivilege(const std::string& privilege) {
  if (Holds(privilege)) return true;
  Tell("privilege check", MissingPrivilege(privilege));
  return false;
}

std::string RuntimeServices::MoveWindow(int x, int y) {
  const Outcome outcome = OfWindow(set_.windows().MoveTo(app_id_, x, y));
  if (outcome.answer == kSuccess) return kSuccess;
  Tell("widget.move", outcome.reason);
  return outcome.reason;
}

std::string RuntimeServices::SetQuarterPosition(int position) {
  if (set_.windows().SetQuarterPosition(app_id_, position)) return kSuccess;
  std::string reason = position < 0 || position > 4
                           ? std::to_string(position) + " is no quarter position (0 to 4)"
                           : NotRunning();
  Tell("widget.setQuarterPosition", reason);
  return reason;
}

RuntimeServices::Outcome RuntimeServices::OfWindow(bool done) const {
  if (done) return {kSuccess, ""};
  return {kError, NotRunning()};
}

// Asks what is installed rather than the platform's privilege service, which would put a line of
// its own into the log beside the explanation given here.
bool RuntimeServices::Holds(const std::string& privilege) const {
  const std::optional<tvset::Application> application = set_.applications().Find(app_id_);
  if (!application) return false;
  const std::vector<std::string>& held = application->privileges;
  return std::find(held.begin(), held.end(), privilege) != held.end();
}

std::string RuntimeServices::NotRunning() const {
  return "the application " + app_id_ + " does not run on the set. Launch it first";
}

void RuntimeServices::Tell(const std::string& request, const std::string& reason) const {
  if (explain_) explain_(Quoted(request) + ": " + reason + ".");
}

}  // namespace orvane::television
