// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/key_presses.h"

#include <utility>

namespace orvane::server {

using std::chrono::milliseconds;

namespace {

// As a remote control that is held for a second: the first repetition comes late.
constexpr milliseconds kBeforeRepeat{500};
constexpr milliseconds kBetweenRepeats{100};
constexpr int kRepeats = 6;

}  // namespace

struct KeyPresses::LongPress {
  LongPress(asio::io_context& loop, std::string pressed) : key(std::move(pressed)), timer(loop) {}

  const std::string key;
  asio::steady_timer timer;
  int repeats = 0;
};

void KeyPresses::Press(std::string_view key_name_json, Kind kind) {
  Json parameters{{"name", base::ParseJson(key_name_json)}};
  if (kind == Kind::kLong) parameters["long"] = true;
  if (kind == Kind::kNative) parameters["native"] = true;
  set_process_.Request({{"op", "control"}, {"method", "keys.press"}, {"params", parameters}}, "",
                       [](const set_process::Answer&) {});
}

void KeyPresses::OnKeyEvent(const base::JsonObject& event) {
  if (!event.Flag("delivered") || event.Flag("native") || event.Text("app") != app_id_) return;
  std::string key = R"("key_name":)" + std::string(event.RawText("key_name")) + R"(,"key_code":)" +
                    std::string(event.Raw("key_code"));
  if (event.Flag("long")) return StartLongPress(key);
  Deliver(key, "press", false);
}

void KeyPresses::Deliver(std::string_view key, std::string_view phase, bool is_repeat) {
  const auto context = contexts_.Foremost();
  if (!context) return;
  std::string members = R"("type":"key",)";
  members.append(key).append(R"(,"phase":")").append(phase).append("\"");
  if (is_repeat) members += R"(,"repeat":true)";
  context->Deliver(members);
}

void KeyPresses::StartLongPress(const std::string& key) {
  const auto press = std::make_shared<LongPress>(loop_, key);
  Deliver(key, "down", false);
  press->timer.expires_after(kBeforeRepeat);
  Repeat(press);
}

void KeyPresses::Repeat(const std::shared_ptr<LongPress>& press) {
  press->timer.async_wait([this, press](beast::error_code error) {
    if (error) return;
    if (press->repeats == kRepeats) return Deliver(press->key, "up", false);
    ++press->repeats;
    Deliver(press->key, "down", true);
    press->timer.expires_after(kBetweenRepeats);
    Repeat(press);
  });
}

}  // namespace orvane::server
