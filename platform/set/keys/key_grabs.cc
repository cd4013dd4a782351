// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/key_grabs.h"

#include <algorithm>
#include <chrono>
#include <tuple>

#include "tvset/applications.h"
#include "tvset/windows.h"

namespace tvset {
namespace {

int64_t RealtimeNanoseconds() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

bool InOrder(const KeyGrab& a, const KeyGrab& b) {
  return std::tie(a.app, a.key_name) < std::tie(b.app, b.key_name);
}

// The grabs of one key.
class GrabsOfKey {
 public:
  GrabsOfKey(const std::vector<KeyGrab>& grabs, const std::string& key_name) {
    for (const KeyGrab& grab : grabs) {
      if (grab.key_name == key_name) grabs_.push_back(grab);
    }
  }

  bool Has(const std::string& app, GrabMode mode) const {
    return std::any_of(grabs_.begin(), grabs_.end(),
                       [&](const KeyGrab& grab) { return grab.app == app && grab.mode == mode; });
  }

  // The first application of the list that has a grab of that mode; empty when none has.
  std::string First(const std::vector<std::string>& apps, GrabMode mode) const {
    for (const std::string& app : apps) {
      if (Has(app, mode)) return app;
    }
    return {};
  }

  std::string AnyHolder() const { return grabs_.empty() ? std::string() : grabs_.front().app; }

 private:
  std::vector<KeyGrab> grabs_;
};

// The applications whose windows are shown, the topmost first, then the others that run.
std::vector<std::string> HighestFirst(const std::vector<std::string>& stack,
                                      std::vector<std::string> running) {
  std::vector<std::string> order = stack;
  for (std::string& app : running) {
    if (std::find(stack.begin(), stack.end(), app) == stack.end()) order.push_back(std::move(app));
  }
  return order;
}

KeyDelivery To(const std::string& app, KeyRoute reason, const std::string& text) {
  KeyDelivery delivery;
  delivery.delivered = true;
  delivery.app = app;
  delivery.reason = reason;
  delivery.text = text;
  return delivery;
}

KeyDelivery ToNobody(KeyRoute reason, const std::string& text) {
  KeyDelivery delivery;
  delivery.reason = reason;
  delivery.text = text;
  return delivery;
}

KeyDelivery MandatoryRoute(const std::string& key_name, const std::string& focused) {
  if (focused.empty()) {
    return ToNobody(KeyRoute::kNoFocus, key_name + " reaches nobody: no application has the focus");
  }
  return To(focused, KeyRoute::kMandatory,
            key_name + " reaches " + focused + ", as every application receives it with the focus");
}

KeyDelivery RouteOf(const std::string& key_name, const GrabsOfKey& grabs,
                    const std::string& focused, const std::vector<std::string>& stack,
                    const std::vector<std::string>& highest_first) {
  if (!stack.empty() && grabs.Has(stack.front(), GrabMode::kTopmost)) {
    return To(stack.front(), KeyRoute::kSpecialGrab,
              key_name + " reaches " + stack.front() + ", which grabbed it while topmost");
  }
  if (const std::string app = grabs.First(highest_first, GrabMode::kRegistered); !app.empty()) {
    return To(app, KeyRoute::kSpecialGrab,
              key_name + " reaches " + app + ", which grabbed it wherever the focus is");
  }
  if (!focused.empty() && grabs.Has(focused, GrabMode::kNormal)) {
    return To(focused, KeyRoute::kRegistered,
              key_name + " reaches " + focused + ", which registered it and has the focus");
  }
  const std::string holder = grabs.AnyHolder();
  if (!holder.empty()) {
    return ToNobody(KeyRoute::kGrabbedByOther,
                    key_name + " reaches nobody: " + holder +
                        " asked for it, but is not where it could receive it now");
  }
  return ToNobody(KeyRoute::kNotRegistered,
                  key_name + " reaches nobody: " +
                      (focused.empty() ? "no application has" : focused + " has not") +
                      " registered it with registerKey");
}

bool MayRegisterKeys(const Application& application) {
  const std::vector<std::string>& held = application.privileges;
  return std::find(held.begin(), held.end(), kKeyPrivilege) != held.end();
}

// A key that nobody registered, when the focused application could not have done it.
void NameMissingPrivilege(const Application& focused, KeyDelivery* delivery) {
  delivery->reason = KeyRoute::kNoPrivilege;
  delivery->text = delivery->key_name + " reaches nobody: " + focused.id +
                   " lacks the privilege to register keys. Add <tizen:privilege name=\"" +
                   kKeyPrivilege + "\"/> to its config.xml";
}

}  // namespace

KeyGrabs::KeyGrabs(EventHub& events, Applications& applications, WindowManager& windows)
    : events_(events), applications_(applications), windows_(windows), keys_(RemoteKeys()) {}

void KeyGrabs::Reset() {
  std::lock_guard<std::mutex> lock(mutex_);
  keys_ = RemoteKeys();
  grabs_.clear();
}

GrabResult KeyGrabs::Grab(const std::string& app, const std::string& key_name, GrabMode mode) {
  if (!IsKnownKey(key_name)) return GrabResult::kUnknownKey;
  if (!applications_.Running(app)) return GrabResult::kNotRunning;
  const KeyGrab grab{app, key_name, mode};
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto at = std::lower_bound(grabs_.begin(), grabs_.end(), grab, InOrder);
    if (at != grabs_.end() && at->app == app && at->key_name == key_name) {
      *at = grab;
    } else {
      grabs_.insert(at, grab);
    }
  }
  events_.Notify([](Observer& observer) { observer.OnKeyGrabsChanged(); });
  return GrabResult::kDone;
}

GrabResult KeyGrabs::Ungrab(const std::string& app, const std::string& key_name) {
  if (!IsKnownKey(key_name)) return GrabResult::kUnknownKey;
  {
    const KeyGrab grab{app, key_name, GrabMode::kNormal};
    std::lock_guard<std::mutex> lock(mutex_);
    const auto at = std::lower_bound(grabs_.begin(), grabs_.end(), grab, InOrder);
    if (at == grabs_.end() || at->app != app || at->key_name != key_name) {
      return GrabResult::kNotGrabbed;
    }
    grabs_.erase(at);
  }
  events_.Notify([](Observer& observer) { observer.OnKeyGrabsChanged(); });
  return GrabResult::kDone;
}

void KeyGrabs::Release(const std::string& app) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto first = std::remove_if(grabs_.begin(), grabs_.end(),
                                      [&app](const KeyGrab& grab) { return grab.app == app; });
    if (first == grabs_.end()) return;
    grabs_.erase(first, grabs_.end());
  }
  events_.Notify([](Observer& observer) { observer.OnKeyGrabsChanged(); });
}

std::vector<KeyGrab> KeyGrabs::list() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return grabs_;
}

std::vector<KeyGrab> KeyGrabs::list(const std::string& app) const {
  std::vector<KeyGrab> grabs;
  for (KeyGrab& grab : list()) {
    if (grab.app == app) grabs.push_back(std::move(grab));
  }
  return grabs;
}

KeyDelivery KeyGrabs::Route(const std::string& key_name) const {
  const std::string focused = applications_.focused();
  KeyDelivery delivery;
  if (IsMandatoryKey(key_name)) {
    delivery = MandatoryRoute(key_name, focused);
  } else {
    const std::vector<std::string> stack = windows_.stack();
    delivery = RouteOf(key_name, GrabsOfKey(list(), key_name), focused, stack,
                       HighestFirst(stack, applications_.raise_order()));
  }
  delivery.key_name = key_name;
  if (delivery.reason == KeyRoute::kNotRegistered) {
    const std::optional<Application> application = applications_.Find(focused);
    if (application && !MayRegisterKeys(*application))
      NameMissingPrivilege(*application, &delivery);
  }
  if (const std::optional<RemoteKey> key = FindKey(key_name)) delivery.key_code = key->key_code;
  return delivery;
}

KeyDelivery KeyGrabs::Press(const std::string& key_name, const KeyPress& press) {
  if (pressed_) pressed_();
  KeyDelivery delivery = Route(key_name);
  delivery.press = press;
  delivery.time_ns = RealtimeNanoseconds();
  if (!press.held.empty()) {
    delivery.text.insert(0, press.held + " held down is " + key_name + ": ");
  }
  events_.Notify([&delivery](Observer& observer) { observer.OnKeyDelivered(delivery); });
  return delivery;
}

void KeyGrabs::AddKnownKeys(const std::vector<std::string>& key_names) {
  std::vector<RemoteKey> keys;
  keys.reserve(key_names.size());
  for (const std::string& name : key_names) keys.push_back(RemoteKey{name, 0, 0, {}});
  AddKnownKeys(keys);
}

void KeyGrabs::AddKnownKeys(const std::vector<RemoteKey>& keys) {
  std::lock_guard<std::mutex> lock(mutex_);
  for (const RemoteKey& key : keys) {
    const auto known = std::find_if(keys_.begin(), keys_.end(),
                                    [&key](const RemoteKey& row) { return row.name == key.name; });
    if (known == keys_.end()) {
      keys_.push_back(key);
      continue;
    }
    if (key.key_code != 0) known->key_code = key.key_code;
    if (key.x_key_code != 0) known->x_key_code = key.x_key_code;
    for (const std::string& page_name : key.page_names) known->page_names.push_back(page_name);
  }
}

bool KeyGrabs::IsKnownKey(const std::string& key_name) const {
  return FindKey(key_name).has_value();
}

std::vector<RemoteKey> KeyGrabs::known_keys() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return keys_;
}

std::optional<RemoteKey> KeyGrabs::FindKey(const std::string& key_name) const {
  std::lock_guard<std::mutex> lock(mutex_);
  for (const RemoteKey& key : keys_) {
    if (key.name == key_name) return key;
  }
  return std::nullopt;
}

std::optional<RemoteKey> KeyGrabs::FindKeyByHardwareCode(int x_key_code) const {
  if (x_key_code == 0) return std::nullopt;
  std::lock_guard<std::mutex> lock(mutex_);
  for (const RemoteKey& key : keys_) {
    if (key.x_key_code == x_key_code) return key;
  }
  return std::nullopt;
}

}  // namespace tvset
