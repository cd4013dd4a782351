// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tvset/export.h"

namespace tvset {

// A line of the set's log, as LogBuffer keeps it.
struct LogLine {
  int64_t time_ns = 0;  // CLOCK_REALTIME
  pid_t pid = 0;
  pid_t tid = 0;
  int log_id = 0;    // LOG_ID_…: which of the platform's logs
  int priority = 0;  // DLOG_…
  std::string tag;   // who logged it
  std::string text;  // may have several lines; cut at LogBuffer::kMaxText bytes
};

// A key that a component injected, as it was given to the key-injection library.
struct InjectedKey {
  int key_code = 0;  // hardware code
  int mode = 0;      // 2: press and release
  std::string
      key_name;  // the key's symbol; empty for a hardware code that no key of the remote has
};

// What a component wrote into the kernel's trace.
struct KernelMarker {
  int64_t time_ns = 0;  // CLOCK_REALTIME
  pid_t tid = 0;
  size_t length = 0;  // as it was given
  std::string text;   // cut where it is longer than is kept
};

// A task that the context service accepted, as a component asked for it.
struct ContextTask {
  std::string target;
  std::string action;
};

// Why a key goes where it goes.
enum class KeyRoute {
  kMandatory,       // every application receives it, the focused one now
  kRegistered,      // the focused application registered it
  kSpecialGrab,     // an application with a special grab receives it before the focused one
  kNotRegistered,   // nobody receives it
  kGrabbedByOther,  // the focused application did not register it, another one did
  kNoPrivilege,     // nobody receives it, and the focused application may not register it
  kNoFocus,         // a mandatory key while no application has the focus
};

// How a key was pressed. The set routes by the key's symbol alone; the rest is for its observers.
struct KeyPress {
  enum class Source { kPerson, kComponent };  // on the remote control, or through KeyInjector
  Source source = Source::kPerson;
  bool is_long = false;    // held down, and the same key all the same
  bool is_native = false;  // the browser has given it to the page itself
  std::string held;        // the key that was held down and arrives as another one; else empty
};

// Where a key went, and why.
struct KeyDelivery {
  bool delivered = false;
  std::string app;  // who receives the key; empty when nobody does
  KeyRoute reason = KeyRoute::kNotRegistered;
  std::string text;      // one sentence for a person, without its full stop
  std::string key_name;  // the key's symbol
  int key_code = 0;  // the code that the page's key event carries; 0 when the set does not know it
  KeyPress press;    // as it was given to KeyGrabs::Press
  int64_t time_ns = 0;  // CLOCK_REALTIME of the press
};

// Why the set refuses or cannot do something, which its log holds too.
struct Refusal {
  pid_t tid = 0;     // of the thread that asked for it
  std::string text;  // one sentence for a person, with the remedy and a full stop
};

// Watches the set. Calls come on the thread that caused the event, but for OnSettingChanged, with
// no lock held, so an observer may call the set back. A line that an observer logs from OnLogLine
// is recorded but not reported to observers. Calls of several threads may come at the same time.
// They say that something changed; what it is now is asked of the service, which is ahead of the
// call when it changed again. An observer must not throw.
class TVSET_EXPORT Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  virtual ~Observer();

  virtual void OnLogLine(const LogLine&) {}           // that the log took
  virtual void OnRefusal(const Refusal&) {}           // after its line in the log
  virtual void OnKeyInjected(const InjectedKey&) {}   // before it is delivered
  virtual void OnKeyDelivered(const KeyDelivery&) {}  // also when it reached nobody
  virtual void OnContextTask(const ContextTask&) {}
  // Installed, uninstalled, launched, terminated, or in another state.
  virtual void OnApplicationChanged(const std::string& /*app_id*/) {}
  virtual void OnFocusChanged(const std::string& /*app_id*/) {}  // empty: nobody has the focus
  virtual void OnWindowChanged() {}                              // some application's
  virtual void OnInputMethodChanged() {}
  virtual void OnKeyGrabsChanged() {}  // some application's
  // A setting was written, if with the value it had, or removed, by whatever process. Once for each
  // change, in their order, on the thread of the settings (see Settings).
  virtual void OnSettingChanged(const std::string& /*key*/) {}
  virtual void OnScreenSaverChanged() {}  // anything about it; before the two below
  virtual void OnScreenSaverOn() {}
  virtual void OnScreenSaverOff() {}
  virtual void OnKernelMarker(const KernelMarker&) {}
  virtual void OnFeatureChanged(const std::string& /*key*/) {}
  virtual void OnProfileChanged() {}  // of the running set: every feature may be another one
  virtual void OnFaultChanged(const std::string& /*function*/) {}  // also when it was taken
};

// Hands events to the observers, in the order they were added. The Set owns it, and its services
// notify. Costs one atomic load while there are none. Observers are borrowed and stay registered
// when the set restarts: each is removed before it is destroyed. Any thread.
class TVSET_EXPORT EventHub {
 public:
  EventHub();
  ~EventHub();
  EventHub(const EventHub&) = delete;
  EventHub& operator=(const EventHub&) = delete;

  // An event that is being handed out just now may pass it by.
  void Add(Observer* observer);

  // Returns when no other thread is inside a call into the observer; none begins afterwards. An
  // observer may remove itself, or another, from inside a call.
  void Remove(Observer* observer);

  // Worth asking before something costly is made for the observers.
  bool empty() const { return count_.load(std::memory_order_acquire) == 0; }

  // Calls `call(Observer&)` for each. With no lock held that an observer may want.
  template <typename Call>
  void Notify(Call&& call) {
    if (empty()) return;
    for (const std::shared_ptr<Entry>& entry : Snapshot()) {
      if (!Enter(*entry)) continue;
      const Leaver leaver(*this, *entry);
      call(*entry->observer);
    }
  }

 private:
  struct Entry {
    Observer* observer = nullptr;
    bool removed = false;  // guarded by mutex_
    int running = 0;       // guarded by mutex_
  };
  class Leaver {
   public:
    Leaver(EventHub& hub, Entry& entry) : hub_(hub), entry_(entry) {}
    ~Leaver() { hub_.Leave(entry_); }
    Leaver(const Leaver&) = delete;
    Leaver& operator=(const Leaver&) = delete;

   private:
    EventHub& hub_;
    Entry& entry_;
  };

  std::vector<std::shared_ptr<Entry>> Snapshot() const;
  bool Enter(Entry& entry);
  void Leave(Entry& entry);

  std::atomic<int> count_{0};
  mutable std::mutex mutex_;
  std::condition_variable left_;
  std::vector<std::shared_ptr<Entry>> entries_;  // guarded by mutex_
};

}  // namespace tvset
