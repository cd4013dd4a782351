// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "common/json.h"
#include "common/parsed_instance.h"
#include "orvane/orvane_manager.h"

namespace extension::orvane {

// One row of the tables that turn a script's number into a name of the TV's context manager.
struct ContextTaskEntry {
  int32_t value;
  char name[1024];
};

// One page context's native side of `dravelt.orvane`: it answers the script's messages, thirteen
// names, each with one handler. The framework owns it, from the context's creation to its end.
// Construction, destruction and every handler run on the extension thread; work that blocks goes to
// the manager. Destruction waits for the manager's pending tasks.
//
// A handler checks its arguments, calls the platform and fills the reply `out` with a result or
// with an error: 9 (not supported), 9999 (unknown) or a type mismatch for a missing argument. It
// throws for nothing that a platform can answer. An argument that the script always sends, and that
// is missing or of another type, ends the process; † marks those. docs/messages.md has every text.
class OrvaneInstance : public common::ParsedInstance {
 public:
  OrvaneInstance();
  ~OrvaneInstance() override;

  // "3.9", whatever the arguments: the version of the script's interface, which pages test for, and
  // not that of this build.
  void getVersion(const picojson::value& args, picojson::object& out);

  // The UUID of the application's package, a string; 9999 without one.
  void getUuid(const picojson::value& args, picojson::object& out);

  // Presses and releases the key with the hardware code `xKeyCode`, a number of which the fraction
  // is cut. True whatever became of the key.
  void generateKey(const picojson::value& args, picojson::object& out);

  // A string; 9999 when no application has the focus and when nobody can tell.
  void getForegroundAppId(const picojson::value& args, picojson::object& out);

  // True on a panel that supports the window, else 9. Moves nothing: the script does so afterwards.
  void setEpopAppWindow(const picojson::value& args, picojson::object& out);

  // Has the TV's context manager do `action`† to `target`†, numbers of table rows; 9999 when it
  // refuses, and for numbers without a row. It is initialised for each request and never finalised.
  void requestTvContextTask(const picojson::value& args, picojson::object& out);

  // True when the application's package declares "true" for the mode, else 9. Grabs nothing: the
  // script does so afterwards. A value that was found is kept, whatever it is.
  void registerKeyInSpecialMode(const picojson::value& args, picojson::object& out);

  // Success without a result, or the access check's own error.
  void checkPlatformLevelPrivilege(const picojson::value& args, picojson::object& out);

  // The keyboard's layout as the set's number: 0 for 1920 × 1080 pixels, 1 for 3840 × 2160.
  void getIMEResolution(const picojson::value& args, picojson::object& out);

  // The state's name for `appid`†, a string; empty means the calling application. 9999 for an
  // application that does not run.
  void getAppState(const picojson::value& args, picojson::object& out);

  // Answered later, by the manager, with a posted message that carries the call's `callbackId`†. A
  // `resource`† other than "CPU" and "MEMORY" is answered at once, with 9999.
  void getSystemStat(const picojson::value& args, picojson::object& out);
  void setScreenSaver(const picojson::value& args, picojson::object& out);
  void recordProfiling(const picojson::value& args, picojson::object& out);

 private:
  OrvaneManager manager_;

  // What the calling application declares for the special key-grab mode; empty until it was found.
  // Extension thread only.
  std::string special_mode_metadata_;
};

}  // namespace extension::orvane
