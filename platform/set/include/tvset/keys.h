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

// A key of the remote control, by the names and numbers that the parts of a television have for it.
struct RemoteKey {
  // The platform's symbol, for example "XF86Red".
  std::string name;
  // The keyCode of the page's key event; 0: not known.
  int key_code = 0;
  // Hardware code, for injection; 0: cannot be injected.
  int x_key_code = 0;
  // What pages call it, for example "ColorF0Red".
  std::vector<std::string> page_names{};
};

// The keys of the set's own remote control, made from the project's table of keys at build time.
// The list stays as it is while the process lives. KeyGrabs knows those of a particular device
// besides.
TVSET_EXPORT const std::vector<RemoteKey>& RemoteKeys();
// One of the six keys that every application receives without registering, by its symbol.
TVSET_EXPORT bool IsMandatoryKey(std::string_view name);
// The symbol that arrives when the key is held down: that of another key for a few, else its own.
TVSET_EXPORT std::string SymbolOfHeldKey(const std::string& name);

// The key-injection library: partner of the platform's VirtualKey functions. An injected key is
// recorded, reported (Observer::OnKeyInjected), and then takes the way of a key that was pressed on
// the remote control (KeyGrabs::Press), all on the calling thread. A restart of the set forgets
// what was recorded. Owned by Set. Any thread.
class TVSET_EXPORT KeyInjector {
 public:
  // The oldest go first.
  static constexpr size_t kMaxRecorded = 1000;

  // Both borrowed.
  KeyInjector(EventHub& events, KeyGrabs& grabs);

  // By a component that is going to send. Counts, and is not undone but by Clear and a restart.
  void Initialize();
  // How often since the set's start.
  int initialized() const;
  // `key_code` is a hardware code, RemoteKey::x_key_code; one that no key has is recorded and
  // reaches nobody. False before the first Initialize, and for another mode than 2, a press and
  // release.
  bool Send(int key_code, int mode);
  // The newest, oldest first.
  std::vector<InjectedKey> injected() const;
  // As at the set's start: what was recorded is forgotten, and so is that anybody has initialised
  // it.
  void Clear();

 private:
  EventHub& events_;
  KeyGrabs& grabs_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  int initialized_ = 0;
  std::vector<InjectedKey> injected_;
};

}  // namespace tvset
