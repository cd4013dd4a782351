// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/json.h"
#include "television/resource_reader.h"
#include "television/television.h"

namespace orvane::television {

// What people and tools ask of the set, by the method names that the simulator and the command line
// use too: "keys.press", "settings.set". Partner of the set process, which has one for the server's
// requests "control". Here only what needs the set is answered; methods about pages, the log that
// is kept and the process are the server's own.
//
// Borrows the television, which has its extensions for as long as this object lives. Belongs to the
// extension thread. A method does its work before Call returns; the set's observers hear of it on
// that thread meanwhile, and of a setting a moment later on the thread that watches those.
//
// Everything given is foreign text: a parameter with a name that the method has not is refused as
// well as one that is missing or of another type, so that a slip does not pass for a default.
class Control {
 public:
  // Called once for a call that did not throw: before it returns, but for stat.read, where the
  // library's thread may make it later. Not called any more when this object is gone.
  // `error` is a sentence for a person, and empty when there is a result; the result of a method
  // that has nothing to tell is null.
  using Receiver = std::function<void(const Json& result, const std::string& error)>;

  explicit Control(Television& television);
  ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // `parameters` is an object, or null, which counts as an empty one.
  //
  // Throws, without calling the receiver: RequestError for a method or a key that is not known, and
  // for what the set's present state does not allow; base::JsonError for the parameters' form;
  // app::AppError for an application that cannot be read; tvset::SetError for what the set refuses.
  // what() is a sentence or two for a person, and may quote what was given at any length.
  void Call(const std::string& method, const Json& parameters, const Receiver& receiver);

 private:
  struct Row;
  static const Row kRows[];

  // The handlers, one per method. The arguments are the parameters, which the table names in their
  // order; a std::optional one may be left out, or null. What they return is the result.

  // Every part of the state, see SetState::All.
  Json StateGet();
  // A profile by its name or its file: another device, whose features replace those of now.
  void ProfileUse(const std::string& profile);
  // `type` is "bool", "int", "double" or "string", `text` the value as a profile has it; the group
  // is "custom" unless it is given.
  void FeaturesSet(const std::string& key, const std::string& type, const std::string& text,
                   std::optional<tvset::FeatureGroup> group);
  void FeaturesRemove(const std::string& key);
  // `state` is a name of kAppStates, or a number from 0 to 7, which may be none of those.
  void ApplicationsSetState(const std::string& id, const Json& state);
  // An empty id takes the focus from whoever has it.
  void ApplicationsFocus(const std::string& id);
  // One of the two is the path, read by this process; the archive counts if both are given. Gives
  // what was installed, and does not launch it.
  Json ApplicationsInstall(const std::optional<std::string>& wgt,
                           const std::optional<std::string>& folder);
  // Only the application in front has a process, app_pid(); others run without one.
  void ApplicationsLaunch(const std::string& id);
  void ApplicationsTerminate(const std::string& id);
  // A press and release by the viewer. `name` is a symbol ("XF86Red"), its short form ("red") or
  // what pages call the key ("ColorF0Red"), in any case. A key that is another one when it is held
  // is that one. `is_native`: a browser has given the page the event itself. Gives where it went
  // and why, which is also the event "key".
  Json KeysPress(const std::string& name, std::optional<bool> is_long,
                 std::optional<bool> is_native);
  // Whether pages may move the on-screen keyboard.
  void InputMethodSetDynamic(bool dynamic);
  // Without a type, the value's own says it; a number that is no whole one of 32 bits is a double.
  void SettingsSet(const std::string& key, const std::optional<std::string>& type,
                   const Json& value);
  void SettingsUnset(const std::string& key);
  // The viewer is there: counts for the screen saver as a key does. Gives its state.
  Json ScreenSaverActivity();
  // Moves the screen saver's clock forward by milliseconds, a year at most in one step, so that
  // nobody has to wait for it. Gives its state after that.
  Json ClockAdvance(int64_t ms);
  // `code` is what the function answers instead of doing anything, always unless `mode` says once.
  void FaultsSet(const std::string& function, int code, std::optional<tvset::FaultMode> mode);
  // Without a function: every fault.
  void FaultsClear(const std::optional<std::string>& function);
  // As a set comes out of its box, with its applications still installed and running: settings,
  // the applications' data, key grabs, faults and changed features are gone. Pages keep what they
  // hold.
  void FactoryReset();
  // The kernel's markers since the set was started, the oldest first, as far as they are kept.
  Json MarkersList();
  // "CPU" or "MEMORY" of this process, see ResourceReader.
  void StatRead(const std::string& resource, const Receiver& receiver);

  // With the option test_hooks alone:
  // Lines in the set's log, 100,000 at most, as if the library had written them.
  void DebugLog(std::optional<int> priority, const std::optional<std::string>& tag,
                const std::string& text, std::optional<int64_t> count);
  // Ends the process by a signal, SIGABRT unless it is given, as a fault of the library would.
  void DebugCrash(std::optional<int> signal);

  void RequireTestHooks(const char* method) const;
  tvset::Set& set() { return television_.set(); }

  // Borrowed.
  Television& television_;
  // Makes its instance of the library when it is first asked.
  ResourceReader resources_;
};

}  // namespace orvane::television
