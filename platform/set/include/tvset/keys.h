// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

class KeyGrabs;

// A key of the remote control.
struct RemoteKey {
  std::string name;                       // the platform's symbol, for example "XF86Red"
  int key_code = 0;                       // the keyCode of the page's key event; 0: not known
  int x_key_code = 0;                     // hardware code, for injection; 0: cannot be injected
  std::vector<std::string> page_names{};  // what pages call it, for example "ColorF0Red"
};

// The keys of the set's own remote control. The list stays as it is while the process lives.
TVSET_EXPORT const std::vector<RemoteKey>& RemoteKeys();
// The six keys that every application receives without registering.
TVSET_EXPORT bool IsMandatoryKey(std::string_view name);
// The symbol that arrives when the key is held down: that of another key for a few.
TVSET_EXPORT std::string SymbolOfHeldKey(const std::string& name);

// The key-injection library: partner of the platform's VirtualKey functions. An injected key is
// recorded, reported (Observer::OnKeyInjected), and then takes the way of a key that was pressed on
// the remote control (KeyGrabs::Press), all on the calling thread. A restart of the set forgets
// what was recorded. Any thread.
class TVSET_EXPORT KeyInjector {
 public:
  static constexpr size_t kMaxRecorded = 1000;  // the oldest go first

  KeyInjector(EventHub& events, KeyGrabs& grabs);  // both borrowed

  void Initialize();
  int initialized() const;  // how often since the set's start
  // `key_code` is a hardware code, RemoteKey::x_key_code; one that no key has is recorded and
  // reaches nobody. False before the first Initialize, and for another mode than 2, a press and
  // release.
  bool Send(int key_code, int mode);
  std::vector<InjectedKey> injected() const;  // the newest, oldest first
  void Clear();

 private:
  EventHub& events_;
  KeyGrabs& grabs_;
  mutable std::mutex mutex_;
  int initialized_ = 0;                // guarded by mutex_
  std::vector<InjectedKey> injected_;  // guarded by mutex_
};

}  // namespace tvset
