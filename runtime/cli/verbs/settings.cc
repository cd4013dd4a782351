// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include <cstdio>
#include <map>
#include <string>

#include <CLI/CLI.hpp>
#include <vconf.h>

#include "cli/output.h"
#include "cli/set_options.h"
#include "cli/verbs/verbs.h"
#include "television/set_state.h"
#include "tvset/events.h"
#include "tvset/paths.h"
#include "tvset/set.h"

namespace orvane::cli {

namespace {

struct SettingOptions {
  std::string key;
  std::string value;
  std::string type = "string";
  std::string state_folder;
  bool json = false;
};

const std::map<std::string, int>& Types() {
  static const std::map<std::string, int> types = [] {
    std::map<std::string, int> made;
    for (const auto& [type, name] : television::kSettingTypes) made.emplace(name, type);
    return made;
  }();
  return types;
}

// The settings of a state folder, whether a set runs on it or not: none is started for this.
struct FolderSettings {
  explicit FolderSettings(const std::string& state_folder) : paths(StateFolder(state_folder)) {}
  std::string folder() const { return paths.state_folder().string(); }

  tvset::EventHub events;
  const tvset::Paths paths;
  tvset::Settings store{events, paths};
};

void RequireKey(const std::string& key) {
  if (tvset::Settings::IsKey(key)) return;
  throw CommandError("\"" + key +
                     "\" is no key of a setting: a key begins with db/, file/ or memory/, " +
                     "as in memory/runningApps/performance_data");
}

// What the memory of a set held that no longer runs is still in its folder, until the next one
// starts.
bool IsForgotten(const SettingOptions& options, const FolderSettings& settings) {
  return options.key.rfind(VCONF_PREFIX_MEMORY, 0) == 0 && !tvset::Set::RunsOn(settings.folder());
}

[[noreturn]] void Fail(const std::string& text) {
  throw CommandError(text, ExitCode::kScriptError);
}

void PrintAsJson(const tvset::Setting& setting) {
  PrintJson(base::ToJson(television::RowOf(setting)));
}

ExitCode Get(const SettingOptions& options) {
  RequireKey(options.key);
  FolderSettings settings(options.state_folder);
  const std::string remedy = "; --state names the folder of another set";
  if (IsForgotten(options, settings)) {
    Fail("there is no setting " + options.key + ": no set runs on " + settings.folder() +
         ", and those under memory/ go with it" + remedy);
  }
  const auto setting = settings.store.Find(options.key);
  if (!setting) {
    Fail("there is no setting " + options.key + " below " + settings.folder() + remedy);
  }
  if (options.json) {
    PrintAsJson(*setting);
  } else {
    std::printf("%s\n", setting->value.c_str());
  }
  return ExitCode::kDone;
}

ExitCode Set(const SettingOptions& options) {
  RequireKey(options.key);
  FolderSettings settings(options.state_folder);
  if (!settings.store.Set(options.key, Types().at(options.type), options.value)) {
    Fail("the setting " + options.key + " below " + settings.folder() + " did not take \"" +
         options.value + "\" as " + options.type +
         ": the value is none of that type, or the folder cannot be written");
  }
  if (IsForgotten(options, settings)) {
    Complain("warning: no set runs on " + settings.folder() +
             "; the next one that starts forgets " + options.key);
  }
  // What is stored now, which another process may have changed meanwhile.
  const auto stored = settings.store.Find(options.key);
  if (options.json && stored) PrintAsJson(*stored);
  return ExitCode::kDone;
}

Verb<SettingOptions> AddSettingVerb(CLI::App& command, Run& run, const char* name, const char* help,
                                    ExitCode (*work)(const SettingOptions&)) {
  const auto verb = AddVerb<SettingOptions>(command, run, name, help, work);
  verb.app.add_option("KEY", verb.options.key, "Key, such as memory/runningApps/performance_data")
      ->required()
      ->type_name("");
  verb.app
      .add_option("--state", verb.options.state_folder,
                  "Folder of the set, running or not.\n"
                  "Without it: $ORVANE_STATE, else $XDG_STATE_HOME/orvane,\n"
                  "else ~/.local/state/orvane")
      ->type_name("DIR");
  return verb;
}

}  // namespace

void AddGetVerb(CLI::App& command, Run& run) {
  const auto verb = AddSettingVerb(command, run, "get", "Print a setting of the set", Get);
  verb.app.footer("Exit status: 0 printed, 1 no such setting, 2 no such key.");
  verb.app.add_flag("--json", verb.options.json, "Print key, type and value as JSON");
}

void AddSetVerb(CLI::App& command, Run& run) {
  const auto verb = AddSettingVerb(command, run, "set", "Write a setting of the set", Set);
  verb.app.footer(
      "A set that runs on the folder sees the new value at once.\n"
      "Exit status: 0 written, 1 not written, 2 no such key.");
  verb.app.add_option("VALUE", verb.options.value, "The new value; may be empty")
      ->required()
      ->type_name("");
  verb.app.add_option("--type", verb.options.type, "string (the default), int, double or bool")
      ->type_name("NAME")
      ->check(CLI::IsMember(Types()).description(""));
  verb.app.add_flag("--json", verb.options.json,
                    "Print key, type and the value as it is stored as JSON");
}

}  // namespace orvane::cli
