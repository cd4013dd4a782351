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

// What happens on the set, as its observers hear of it. All of these are plain data, which an
// observer may copy; references to them live for the call.

// A line of the set's log, as LogBuffer keeps it. Times here are nanoseconds of CLOCK_REALTIME, so
// that lines, keys and marks can be put in one order.
struct LogLine {
  // CLOCK_REALTIME.
  int64_t time_ns = 0;
  // The process and thread that logged it.
  pid_t pid = 0;
  pid_t tid = 0;
  // LOG_ID_…: which of the platform's logs.
  int log_id = 0;
  // DLOG_…
  int priority = 0;
  // Who logged it.
  std::string tag;
  // May have several lines; cut at LogBuffer::kMaxText bytes.
  std::string text;
};

// A key that a component injected, as it was given to the key-injection library.
struct InjectedKey {
  // Hardware code.
  int key_code = 0;
  // 2: press and release.
  int mode = 0;
  // The key's symbol; empty for a hardware code that no key of the remote has.
  std::string key_name;
};

// What a component wrote into the kernel's trace, see KernelMarkers.
struct KernelMarker {
  // CLOCK_REALTIME.
  int64_t time_ns = 0;
  pid_t tid = 0;
  // As it was given, whether or not the text is cut.
  size_t length = 0;
  // Cut at KernelMarkers::kMaxText bytes. Any bytes.
  std::string text;
};

// A task that the context service accepted, as a component asked for it.
struct ContextTask {
  // What it is done to, such as "last:source".
  std::string target;
  // What is done, such as "launch".
  std::string action;
};

// Why a key goes where it goes, see KeyGrabs for the rules.
enum class KeyRoute {
  // Every application receives it, the focused one now.
  kMandatory,
  // The focused application registered it.
  kRegistered,
  // An application with a special grab receives it before the focused one.
  kSpecialGrab,
  // Nobody receives it.
  kNotRegistered,
  // The focused application did not register it, another one did.
  kGrabbedByOther,
  // Nobody receives it, and the focused application may not register it.
  kNoPrivilege,
  // A mandatory key while no application has the focus.
  kNoFocus,
};

// How a key was pressed. The set routes by the key's symbol alone; the rest is for its observers,
// which bring the key to the page.
struct KeyPress {
  // On the remote control, or through KeyInjector.
  enum class Source { kPerson, kComponent };
  Source source = Source::kPerson;
  // Held down, and the same key all the same.
  bool is_long = false;
  // The browser has given it to the page itself.
  bool is_native = false;
  // The key that was held down and arrives as another one; else empty.
  std::string held;
};

// Where a key went, and why. The set itself brings it nowhere: that is for whoever has the
// application's page.
struct KeyDelivery {
  // Whether an application receives the key.
  bool delivered = false;
  // Who receives the key; empty when nobody does.
  std::string app;
  // Told for every key, delivered or not.
  KeyRoute reason = KeyRoute::kNotRegistered;
  // One sentence for a person, without its full stop.
  std::string text;
  // The key's symbol.
  std::string key_name;
  // The code that the page's key event carries; 0 when the set does not know it.
  int key_code = 0;
  // As it was given to KeyGrabs::Press.
  KeyPress press;
  // CLOCK_REALTIME of the press.
  int64_t time_ns = 0;
};

// Why the set refuses or cannot do something, which its log holds too: what the platform's answer,
// a number, does not say. Made by LogBuffer::WriteRefusal.
struct Refusal {
  // Of the thread that asked for it.
  pid_t tid = 0;
  // One sentence for a person, with the remedy and a full stop.
  std::string text;
};

// Watches the set. Every method does nothing unless it is overridden. Calls come on the thread that
// caused the event, but for OnSettingChanged, with no lock held, so an observer may call the set
// back. A line that an observer logs from OnLogLine is recorded but not reported to observers.
// Calls of several threads may come at the same time. They say that something changed; what it is
// now is asked of the service, which is ahead of the call when it changed again. An observer must
// not throw.
class TVSET_EXPORT Observer {
 public:
  Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  virtual ~Observer();

  // A line that the log took, after it is in there. Several threads may log at once, so that lines
  // may come in another order than they stand in the log.
  virtual void OnLogLine(const LogLine&) {}
  // After its line in the log, which comes by OnLogLine too.
  virtual void OnRefusal(const Refusal&) {}
  // A component's key, before it is delivered; then OnKeyDelivered tells of it as of any other.
  virtual void OnKeyInjected(const InjectedKey&) {}
  // A key that was pressed, also when it reached nobody.
  virtual void OnKeyDelivered(const KeyDelivery&) {}
  // A task that the context service accepted.
  virtual void OnContextTask(const ContextTask&) {}
  // Installed, uninstalled, launched, terminated, or in another state.
  virtual void OnApplicationChanged(const std::string& /*app_id*/) {}
  // Empty: nobody has the focus.
  virtual void OnFocusChanged(const std::string& /*app_id*/) {}
  // Anything about some application's window, set or forgotten. Which windows are shown depends on
  // states and focus as well, which are told by their own methods.
  virtual void OnWindowChanged() {}
  // Anything about the on-screen keyboard, also when it is as it was.
  virtual void OnInputMethodChanged() {}
  // Some application's grabs: another one, one less.
  virtual void OnKeyGrabsChanged() {}
  // A setting was written, if with the value it had, or removed, by whatever process. Once for each
  // change, in their order, on the thread of the settings (see Settings).
  virtual void OnSettingChanged(const std::string& /*key*/) {}
  // Anything about it; before the two below.
  virtual void OnScreenSaverChanged() {}
  // It came on: nobody was there. On the thread of the clock's alarm, or on that of a time-out
  // which had passed already when it was set.
  virtual void OnScreenSaverOn() {}
  // It went, by a reset or a key.
  virtual void OnScreenSaverOff() {}
  // A mark that some component of this process left in the kernel's trace.
  virtual void OnKernelMarker(const KernelMarker&) {}
  // A feature was set or removed since the profile was read. `key` is without "http://".
  virtual void OnFeatureChanged(const std::string& /*key*/) {}
  // Of the running set: every feature may be another one.
  virtual void OnProfileChanged() {}
  // A fault was set, cleared, or met by a call, by which its hits changed and a single one ended.
  virtual void OnFaultChanged(const std::string& /*function*/) {}
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

  // From now on the observer is called. An event that is being handed out just now may pass it by.
  // Once per observer.
  void Add(Observer* observer);

  // Returns when no other thread is inside a call into the observer; none begins afterwards, so
  // that it may be destroyed. An observer may remove itself, or another, from inside a call. With
  // no lock held that the observer may want. No effect for one that was not added.
  void Remove(Observer* observer);

  // Worth asking before something costly is made for the observers.
  bool empty() const { return count_.load(std::memory_order_acquire) == 0; }

  // For the set's services: calls `call(Observer&)` for each of those that are added now, and not
  // removed meanwhile. With no lock held that an observer may want.
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
  // An observer that was added. Calls that are under way share it, so that it outlives its removal.
  struct Entry {
    Observer* observer = nullptr;
    bool removed = false;  // guarded by mutex_
    int running = 0;       // guarded by mutex_
  };
  // Ends the call into an observer, however it is left.
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
  // False: it was removed since.
  bool Enter(Entry& entry);
  void Leave(Entry& entry);

  // How many entries there are, for empty().
  std::atomic<int> count_{0};
  mutable std::mutex mutex_;
  // A call into an observer that was removed has ended.
  std::condition_variable left_;
  std::vector<std::shared_ptr<Entry>> entries_;  // guarded by mutex_
};

}  // namespace tvset
