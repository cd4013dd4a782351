// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/settings.h"

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>
#include <vconf.h>

#include "cli/exit_code.h"
#include "cli/output.h"
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
class FolderSettings {
 public:
  explicit FolderSettings(const std::string& state_folder)
      : paths_(state_folder.empty() ? tvset::Paths::DefaultStateFolder()
                                    : std::filesystem::path(state_folder)),
        settings_(events_, paths_) {}

  tvset::Settings& get() { return settings_; }
  std::string folder() const { return paths_.state_folder().string(); }

 private:
  tvset::EventHub events_;
  const tvset::Paths paths_;
  tvset::Settings settings_;
};

void RequireKey(const std::string& key) {
  if (tvset::Settings::IsKey(key)) return;
  throw UsageError("\"" + key +
                   "\" is no key of a setting: a key begins with db/, file/ or memory/, " +
                   "as in memory/runningApps/performance_data");
}

// What the memory of a set held that no longer runs is still in its folder, until the next one
// starts.
bool IsForgotten(const SettingOptions& options, const FolderSettings& settings) {
  return options.key.rfind(VCONF_PREFIX_MEMORY, 0) == 0 && !tvset::Set::RunsOn(settings.folder());
}

void PrintSetting(const tvset::Setting& setting) {
  PrintJson(base::ToJson(television::RowOf(setting)));
}

ExitCode Get(const SettingOptions& options) {
  RequireKey(options.key);
  FolderSettings settings(options.state_folder);
  if (IsForgotten(options, settings)) {
    Complain("there is no setting " + options.key + ": no set runs on " + settings.folder() +
             ", and those under memory/ go with it; --state names the folder of another set");
    return ExitCode::kScriptError;
  }
  const auto setting = settings.get().Find(options.key);
  if (!setting) {
    Complain("there is no setting " + options.key + " below " + settings.folder() +
             "; --state names the folder of another set");
    return ExitCode::kScriptError;
  }
  if (!options.json) {
    std::printf("%s\n", setting->value.c_str());
    return ExitCode::kDone;
  }
  PrintSetting(*setting);
  return ExitCode::kDone;
}

// What is stored now, which another process may have changed meanwhile.
void PrintStored(const SettingOptions& options, FolderSettings& settings) {
  const auto setting = settings.get().Find(options.key);
  if (setting) PrintSetting(*setting);
}

ExitCode Set(const SettingOptions& options) {
  RequireKey(options.key);
  FolderSettings settings(options.state_folder);
  if (settings.get().Set(options.key, Types().at(options.type), options.value)) {
    if (IsForgotten(options, settings)) {
      Complain("warning: no set runs on " + settings.folder() +
               "; the next one that starts forgets " + options.key);
    }
    if (options.json) PrintStored(options, settings);
    return ExitCode::kDone;
  }
  Complain("the setting " + options.key + " below " + settings.folder() + " did not take \"" +
           options.value + "\" as " + options.type +
           ": the value is none of that type, or the folder cannot be written");
  return ExitCode::kScriptError;
}

void AddCommonOptions(CLI::App& verb, SettingOptions& options) {
  verb.add_option("KEY", options.key, "Key, such as memory/runningApps/performance_data")
      ->required()
      ->type_name("");
  verb.add_option("--state", options.state_folder,
                  "Folder of the set, running or not.\n"
                  "Without it: $ORVANE_STATE, else $XDG_STATE_HOME/orvane,\n"
                  "else ~/.local/state/orvane")
      ->type_name("DIR");
}

}  // namespace

void AddGetVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<SettingOptions>();
  CLI::App* const verb = command.add_subcommand("get", "Print a setting of the set");
  verb->group("Verbs");
  verb->footer("Exit status: 0 printed, 1 no such setting, 2 no such key.");
  AddCommonOptions(*verb, *options);
  verb->add_flag("--json", options->json, "Print key, type and value as JSON");
  verb->callback([options, &run] { run = [options] { return Get(*options); }; });
}

void AddSetVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<SettingOptions>();
  CLI::App* const verb = command.add_subcommand("set", "Write a setting of the set");
  verb->group("Verbs");
  verb->footer(
      "A set that runs on the folder sees the new value at once.\n"
      "Exit status: 0 written, 1 not written, 2 no such key.");
  AddCommonOptions(*verb, *options);
  verb->add_option("VALUE", options->value, "The new value; may be empty")
      ->required()
      ->type_name("");
  verb->add_option("--type", options->type, "string (the default), int, double or bool")
      ->type_name("NAME")
      ->check(CLI::IsMember(Types()).description(""));
  verb->add_flag("--json", options->json, "Print key, type and the value as it is stored as JSON");
  verb->callback([options, &run] { run = [options] { return Set(*options); }; });
}

}  // namespace orvane::cli
