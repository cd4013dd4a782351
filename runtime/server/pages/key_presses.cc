// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/key_presses.h"

#include <utility>

#include "television/set_fields.h"

namespace orvane::server {

struct KeyPresses::LongPress {
  LongPress(asio::io_context& loop, Json pressed) : key(std::move(pressed)), timer(loop) {}

  const Json key;
  asio::steady_timer timer;
  int repeats = 0;
};

void KeyPresses::Press(const std::string& key_name, PressKind kind) {
  const Json parameters{{"name", key_name},
                        {"long", kind == PressKind::kLong},
                        {"native", kind == PressKind::kNative}};
  set_process_.Request({{"op", "control"}, {"method", "keys.press"}, {"params", parameters}}, "",
                       [](const set_process::Answer&) {});
}

void KeyPresses::OnKeyEvent(const Json& data) {
  const auto event = base::FromJson<tvset::KeyDelivery>(data, "a key");
  if (!event.delivered || event.press.is_native || event.app != app_id_) return;
  const Json key{{"type", "key"}, {"key_name", event.key_name}, {"key_code", event.key_code}};
  if (event.press.is_long) return StartLongPress(key);
  Deliver(key, "press", false);
}

void KeyPresses::Deliver(Json key, const char* phase, bool is_repeat) {
  const auto context = contexts_.Foremost();
  if (!context) return;
  key["phase"] = phase;
  if (is_repeat) key["repeat"] = true;
  context->Deliver({std::move(key), std::nullopt, false});
}

void KeyPresses::StartLongPress(const Json& key) {
  const auto press = std::make_shared<LongPress>(loop_, key);
  Deliver(key, "down", false);
  press->timer.expires_after(times_.before_repeat);
  Repeat(press);
}

void KeyPresses::Repeat(const std::shared_ptr<LongPress>& press) {
  press->timer.async_wait([this, press](beast::error_code error) {
    if (error) return;
    if (press->repeats == times_.repeats) return Deliver(press->key, "up", false);
    ++press->repeats;
    Deliver(press->key, "down", true);
    press->timer.expires_after(times_.between_repeats);
    Repeat(press);
  });
}

}  // namespace orvane::server
