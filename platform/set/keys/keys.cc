// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/keys.h"

#include "tvset/key_grabs.h"

namespace tvset {
namespace {

constexpr int kPressAndRelease = 2;

}  // namespace

KeyInjector::KeyInjector(EventHub& events, KeyGrabs& grabs) : events_(events), grabs_(grabs) {}

void KeyInjector::Initialize() {
  std::lock_guard<std::mutex> lock(mutex_);
  ++initialized_;
}

int KeyInjector::initialized() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return initialized_;
}

bool KeyInjector::Send(int key_code, int mode) {
  if (mode != kPressAndRelease) return false;
  const std::optional<RemoteKey> known = grabs_.FindKeyByHardwareCode(key_code);
  const InjectedKey key{key_code, mode, known ? known->name : std::string()};
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (initialized_ == 0) return false;
    if (injected_.size() == kMaxRecorded) injected_.erase(injected_.begin());
    injected_.push_back(key);
  }
  events_.Notify([&key](Observer& observer) { observer.OnKeyInjected(key); });
  if (known) {
    KeyPress press;
    press.source = KeyPress::Source::kComponent;
    grabs_.Press(known->name, press);
  }
  return true;
}

std::vector<InjectedKey> KeyInjector::injected() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return injected_;
}

void KeyInjector::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  initialized_ = 0;
  injected_.clear();
}

}  // namespace tvset
