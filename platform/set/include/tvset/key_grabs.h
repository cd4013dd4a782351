// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"
#include "tvset/keys.h"

namespace tvset {

class Applications;
class WindowManager;

// How an application asked for a key. The values of the special ones are the platform's.
enum class GrabMode {
  // Reaches the application while it has the focus.
  kNormal = 0,
  // Reaches it while its window is the topmost, whoever has the focus.
  kTopmost = 2,
  // Reaches it while it runs, whoever has the focus.
  kRegistered = 5,
};

// What came of Grab and Ungrab; all but kDone left the grabs as they were.
enum class GrabResult {
  kDone,
  // No key of the remote control has that name.
  kUnknownKey,
  // No such application runs.
  kNotRunning,
  // Ungrab of a key that the application had not asked for.
  kNotGrabbed,
};

// What an application needs to hold to register keys.
inline constexpr char kKeyPrivilege[] = "http://tizen.org/privilege/tv.inputdevice";

// One key that an application asked for.
struct KeyGrab {
  // The application's id.
  std::string app;
  // The key's symbol.
  std::string key_name;
  GrabMode mode = GrabMode::kNormal;
};

// Which keys reach which application, in this order:
// 1. the mandatory keys reach the focused application, whatever was grabbed;
// 2. a kTopmost grab of the application whose window is topmost;
// 3. a kRegistered grab; of several, that of the application whose window is higher;
// 4. a kNormal grab of the focused application;
// 5. otherwise the key reaches nobody.
//
// Partner of the runtime services, which grab for their application's page and hand it the keys
// that Press delivers. Whether the application may grab (kKeyPrivilege) is theirs to ask; Route
// says so of a key that is lost. Grabs end with their application, and all with a restart of the
// set. A change is told to Observer::OnKeyGrabsChanged, a press to OnKeyDelivered, on the calling
// thread. Any thread.
class TVSET_EXPORT KeyGrabs {
 public:
  // All borrowed.
  KeyGrabs(EventHub& events, Applications& applications, WindowManager& windows);

  // By an application that runs. A second grab of the same key by the same application replaces the
  // first; several applications may grab one key, and the rules above tell who gets it.
  GrabResult Grab(const std::string& app, const std::string& key_name, GrabMode mode);
  // Ends the application's grab of the key, whatever its mode. Never kNotRunning.
  GrabResult Ungrab(const std::string& app, const std::string& key_name);
  // Ends every grab of the application. No effect when it has none.
  void Release(const std::string& app);
  // By application, then by key.
  std::vector<KeyGrab> list() const;
  // Those of one application, by key.
  std::vector<KeyGrab> list(const std::string& app) const;

  // Where the key would go now, and why, for who asks before it is pressed; changes nothing. A name
  // that no key has reaches nobody.
  KeyDelivery Route(const std::string& key_name) const;
  // A press and release of the key: routes it and reports it to the observers, with the press.
  // Starts the screen saver's wait afresh, wherever the key goes.
  KeyDelivery Press(const std::string& key_name, const KeyPress& press = {});

  // Names of further keys of this device's remote control, beyond RemoteKeys(). A name that is
  // known already takes the new codes where they are not 0, and the pages' names. A restart of the
  // set forgets them.
  void AddKnownKeys(const std::vector<std::string>& key_names);
  void AddKnownKeys(const std::vector<RemoteKey>& keys);
  bool IsKnownKey(const std::string& key_name) const;
  // The set's own first, then in the order added.
  std::vector<RemoteKey> known_keys() const;
  // Empty: no key of the remote control has the name, or the code.
  std::optional<RemoteKey> FindKey(const std::string& key_name) const;
  std::optional<RemoteKey> FindKeyByHardwareCode(int x_key_code) const;

 private:
  friend class Set;
  void Reset();

  // Fixed after construction: a key was pressed, for the screen saver.
  std::function<void()> pressed_;
  EventHub& events_;
  Applications& applications_;
  WindowManager& windows_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  std::vector<RemoteKey> keys_;
  // By application, then by key.
  std::vector<KeyGrab> grabs_;
};

}  // namespace tvset
