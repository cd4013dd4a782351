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
// names, each with one handler. The framework owns it. Construction, destruction and every handler
// run on the extension thread; work that blocks goes to the manager. Destruction waits for the
// manager's pending tasks.
//
// A handler checks its arguments, calls the platform and fills the reply. It throws for nothing
// that a platform can answer; a member that the script always sends and that is missing or of
// another type ends the process.
class OrvaneInstance : public common::ParsedInstance {
 public:
  OrvaneInstance();
  ~OrvaneInstance() override;

  void getVersion(const picojson::value& args, picojson::object& out);
  void getUuid(const picojson::value& args, picojson::object& out);
  void generateKey(const picojson::value& args, picojson::object& out);
  void getForegroundAppId(const picojson::value& args, picojson::object& out);
  void setEpopAppWindow(const picojson::value& args, picojson::object& out);
  void requestTvContextTask(const picojson::value& args, picojson::object& out);
  void registerKeyInSpecialMode(const picojson::value& args, picojson::object& out);
  void checkPlatformLevelPrivilege(const picojson::value& args, picojson::object& out);
  void getIMEResolution(const picojson::value& args, picojson::object& out);
  void getAppState(const picojson::value& args, picojson::object& out);

  // Answered later, with a posted message that carries the call's "callbackId".
  void getSystemStat(const picojson::value& args, picojson::object& out);
  void setScreenSaver(const picojson::value& args, picojson::object& out);
  void recordProfiling(const picojson::value& args, picojson::object& out);

 private:
  OrvaneManager manager_;

  // What the calling application declares for the special key-grab mode; empty until it was found.
  std::string special_mode_metadata_;
};

}  // namespace extension::orvane
