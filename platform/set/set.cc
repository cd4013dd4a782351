// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/set.h"

#include <atomic>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>

#include <dlog.h>

#include "functions/handles.h"
#include "profile_reader.h"
#include "settings/setting_watches.h"
#include "state_folder.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

fs::path ProfileFile(const std::string& given) {
  if (!given.empty()) return Paths::FindProfile(given);
  const char* environment = std::getenv("ORVANE_PROFILE");
  const bool named = environment != nullptr && *environment != '\0';
  return Paths::FindProfile(named ? environment : "uhd");
}

void WarnOfMissingFiles(LogBuffer& log) {
  if (SetFiles::in_force()) return;
  log.WriteRefusal(
      "the files that only a set has cannot be read in this process: its program loads the C "
      "library before libtvset.so; link the program itself with libtvset.so");
}

}  // namespace

// The services, each after those it stands on.
struct Set::State {
  EventHub events;
  FaultTable faults;
  LogBuffer log{events};
  FeatureStore features{events};
  Applications applications{events};
  WindowManager windows{events, applications};
  KeyGrabs key_grabs{events, applications, windows};
  KeyInjector keys{events, key_grabs};
  ContextManager context_manager{events};
  Settings settings{events};
  ScreenSaver screen_saver{events, features};
  InputMethod input_method{events};
  SetFiles files{faults, features, log};
  KernelMarkers kernel_markers{events};

  std::atomic<bool> running{false};
  std::atomic<const Paths*> paths{nullptr};

  std::mutex start_mutex;               // held while the set starts and stops
  std::deque<Paths> all_paths;          // guarded by start_mutex; references to them are given out
  std::unique_ptr<StateFolder> folder;  // guarded by start_mutex

  mutable std::mutex profile_mutex;
  fs::path profile;  // guarded by profile_mutex

  void Start(const Options& options);  // start_mutex held
  void Reset(const Paths* new_paths);
};

void Set::State::Start(const Options& options) {
  const fs::path file = ProfileFile(options.profile);
  ProfileContent content = ReadProfile(file);
  const fs::path state_folder =
      options.state_folder.empty() ? Paths::DefaultStateFolder() : options.state_folder;
  const Paths& new_paths = all_paths.emplace_back(fs::absolute(state_folder).lexically_normal());
  auto new_folder = std::make_unique<StateFolder>(new_paths);
  // From here on the old set is gone: it gives up its folder, which may be the new one.
  running = false;
  settings.Reset(nullptr);
  folder.reset();
  new_folder->Use(options.goes_on);
  folder = std::move(new_folder);
  Reset(&new_paths);
  log.set_capacity(LogBuffer::kDefaultCapacity);
  log.set_policy(LogPolicy{});
  features.Adopt(std::move(content));
  {
    std::lock_guard<std::mutex> lock(profile_mutex);
    profile = file;
  }
  screen_saver.Start();
  running.store(true, std::memory_order_release);
  WarnOfMissingFiles(log);
}

void Set::State::Reset(const Paths* new_paths) {
  paths = new_paths;
  files.Reset(new_paths);
  faults.Reset();
  applications.Reset(new_paths);
  windows.Reset();
  key_grabs.Reset();
  keys.Clear();
  context_manager.Clear();
  settings.Reset(new_paths);
  screen_saver.Stop();
  input_method.Reset();
  kernel_markers.Clear();
  AppContexts().Clear();
  PackageHandles().Clear();
}

Set::Set() : state_(new State) {
  State* const state = state_;
  state->faults.changed_ = [state](const std::string& function) {
    state->events.Notify([&](Observer& observer) { observer.OnFaultChanged(function); });
  };
  state->key_grabs.pressed_ = [state] { state->screen_saver.NoteInput(); };
  state->applications.terminated_ = [state](const std::string& id) {
    state->key_grabs.Release(id);
    state->windows.Forget(id);
  };
}

// Never destroyed: threads and exit handlers of the process may log to the end.
Set& Set::Instance() {
  static Set* const set = new Set();
  return *set;
}

Set& Set::Current() {
  Set& set = Instance();
  if (set.state_->running.load(std::memory_order_acquire)) return set;
  std::lock_guard<std::mutex> lock(set.state_->start_mutex);
  if (!set.state_->running) set.state_->Start(Options{});
  return set;
}

void Set::Start(const Options& options) {
  State& state = *Instance().state_;
  const std::shared_ptr<SettingWatches> old_watches = state.settings.watches();
  {
    std::lock_guard<std::mutex> lock(state.start_mutex);
    state.Start(options);
  }
  if (old_watches) old_watches->Wait();
}

void Set::Stop() {
  State& state = *Instance().state_;
  // First: a callback that called a platform function later would start another set.
  if (const std::shared_ptr<SettingWatches> watches = state.settings.watches()) {
    watches->Stop();
    watches->Wait();
  }
  std::lock_guard<std::mutex> lock(state.start_mutex);
  state.running = false;
  state.Reset(nullptr);
  state.folder.reset();
}

bool Set::running() { return Instance().state_->running; }

bool Set::RunsOn(const fs::path& state_folder) {
  return StateFolder::IsUsed(
      Paths(state_folder.empty() ? Paths::DefaultStateFolder() : state_folder));
}

FaultTable& Set::faults() { return state_->faults; }
EventHub& Set::events() { return state_->events; }
LogBuffer& Set::log() { return state_->log; }
FeatureStore& Set::features() { return state_->features; }
Applications& Set::applications() { return state_->applications; }
KeyInjector& Set::keys() { return state_->keys; }
ContextManager& Set::context_manager() { return state_->context_manager; }
Settings& Set::settings() { return state_->settings; }
ScreenSaver& Set::screen_saver() { return state_->screen_saver; }
WindowManager& Set::windows() { return state_->windows; }
InputMethod& Set::input_method() { return state_->input_method; }
KeyGrabs& Set::key_grabs() { return state_->key_grabs; }
SetFiles& Set::files() { return state_->files; }
KernelMarkers& Set::kernel_markers() { return state_->kernel_markers; }

const Paths& Set::paths() {
  const Paths* paths = state_->paths;
  if (paths == nullptr) throw SetError("the set does not run, so it has no folders; start it");
  return *paths;
}

fs::path Set::profile() {
  std::lock_guard<std::mutex> lock(state_->profile_mutex);
  return state_->profile;
}

void Set::UseProfile(const std::string& profile) {
  const fs::path file = Paths::FindProfile(profile);
  state_->features.Load(file);
  {
    std::lock_guard<std::mutex> lock(state_->profile_mutex);
    state_->profile = file;
  }
  // The screen saver's own time-out is one of the profile's.
  state_->screen_saver.SetTimeout(state_->screen_saver.state().timeout_seconds);
  state_->events.Notify([](Observer& observer) { observer.OnProfileChanged(); });
}

size_t Set::open_app_contexts() const { return AppContexts().size(); }
size_t Set::open_package_handles() const { return PackageHandles().size(); }

}  // namespace tvset
