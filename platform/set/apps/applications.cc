// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/applications.h"

#include <algorithm>
#include <system_error>

#include <app_context.h>

#include "tvset/error.h"
#include "tvset/paths.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

// The most that an app_state_e can hold; those above APP_STATE_TERMINATED have no name.
constexpr int kHighestState = 7;

void RequireFolderName(const std::string& what, const std::string& name) {
  const bool bad = name.empty() || name == "." || name == ".." || name.size() > 255 ||
                   name.find('/') != std::string::npos || name.find('\0') != std::string::npos;
  if (bad) throw SetError("the " + what + " \"" + name + "\" cannot name a folder");
}

void MakeFolders(const fs::path& home) {
  for (const char* name : {"data", "cache", "tmp", "shared/data", "shared/res", "shared/trusted"}) {
    std::error_code error;
    fs::create_directories(home / name, error);
    if (error) {
      throw SetError((home / name).string() + " cannot be made: " + error.message() +
                     "; choose another state folder or mend this one");
    }
  }
}

}  // namespace

Applications::Applications(EventHub& events) : events_(events) {}

void Applications::Reset(const Paths* paths) {
  std::lock_guard<std::mutex> lock(mutex_);
  paths_ = paths;
  installed_.clear();
  running_.clear();
  focused_.clear();
}

void Applications::RequireInstalled(const std::string& id) const {
  if (installed_.count(id) == 0) {
    throw SetError("there is no application \"" + id + "\" on the set; install it first");
  }
}

void Applications::Install(const Application& application) {
  RequireFolderName("application id", application.id);
  RequireFolderName("package", application.package);
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (paths_ == nullptr) throw SetError("the set does not run; start it before installing");
    MakeFolders(paths_->app_root() / application.package);
    installed_[application.id] = application;
  }
  events_.Notify([&](Observer& observer) { observer.OnApplicationChanged(application.id); });
}

void Applications::Uninstall(const std::string& id) {
  Terminate(id);
  {
    std::lock_guard<std::mutex> lock(mutex_);
    RequireInstalled(id);
    installed_.erase(id);
  }
  events_.Notify([&id](Observer& observer) { observer.OnApplicationChanged(id); });
}

std::optional<Application> Applications::Find(const std::string& id) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = installed_.find(id);
  if (found == installed_.end()) return std::nullopt;
  return found->second;
}

std::vector<Application> Applications::list() const {
  std::vector<Application> applications;
  std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& [id, application] : installed_) applications.push_back(application);
  return applications;
}

void Applications::Launch(const std::string& id, pid_t pid) {
  std::string covered;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    RequireInstalled(id);
    const auto before = running_.find(focused_);
    if (before != running_.end() && focused_ != id &&
        before->second.state == APP_STATE_FOREGROUND) {
      before->second.state = APP_STATE_BACKGROUND;
      covered = focused_;
    }
    ++clock_;
    running_[id] = Run{pid, APP_STATE_FOREGROUND, clock_, clock_};
    focused_ = id;
  }
  events_.Notify([&](Observer& observer) {
    if (!covered.empty()) observer.OnApplicationChanged(covered);
    observer.OnApplicationChanged(id);
    observer.OnFocusChanged(id);
  });
}

void Applications::SetState(const std::string& id, int app_state) {
  if (app_state < 0 || app_state > kHighestState) {
    throw SetError("an application's state is a number from 0 to " + std::to_string(kHighestState) +
                   ", not " + std::to_string(app_state));
  }
  {
    std::lock_guard<std::mutex> lock(mutex_);
    RequireInstalled(id);
    const auto [run, started] = running_.try_emplace(id);
    if (started) {
      ++clock_;
      run->second.launched = run->second.raised = clock_;
    }
    run->second.state = app_state;
  }
  events_.Notify([&id](Observer& observer) { observer.OnApplicationChanged(id); });
}

std::optional<int> Applications::State(const std::string& id) const {
  const std::optional<RunningApplication> running = Running(id);
  if (!running) return std::nullopt;
  return running->state;
}

std::optional<RunningApplication> Applications::Running(const std::string& id) const {
  RunningApplication running;
  if (!ReadRunning(id, &running)) return std::nullopt;
  return running;
}

bool Applications::ReadRunning(std::string_view id, RunningApplication* running) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return ReadLocked(id, running);
}

bool Applications::ReadFocused(RunningApplication* running) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return ReadLocked(focused_, running);
}

bool Applications::ReadLocked(std::string_view id, RunningApplication* running) const {
  const auto found = running_.find(id);
  if (found == running_.end()) return false;
  running->id = id;
  running->pid = found->second.pid;
  running->state = found->second.state;
  return true;
}

void Applications::Terminate(const std::string& id) {
  bool had_focus = false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    RequireInstalled(id);
    if (running_.erase(id) == 0) return;
    had_focus = focused_ == id;
    if (had_focus) focused_.clear();
  }
  if (terminated_) terminated_(id);
  events_.Notify([&](Observer& observer) {
    observer.OnApplicationChanged(id);
    if (had_focus) observer.OnFocusChanged("");
  });
}

void Applications::SetFocus(const std::string& id) {
  bool raised_from_background = false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    RequireInstalled(id);
    const auto run = running_.find(id);
    if (run == running_.end()) {
      throw SetError("\"" + id + "\" does not run, so it cannot have the focus; launch it first");
    }
    raised_from_background = run->second.state == APP_STATE_BACKGROUND;
    if (raised_from_background) run->second.state = APP_STATE_FOREGROUND;
    run->second.raised = ++clock_;
    focused_ = id;
  }
  events_.Notify([&](Observer& observer) {
    if (raised_from_background) observer.OnApplicationChanged(id);
    observer.OnFocusChanged(id);
  });
}

void Applications::ClearFocus() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (focused_.empty()) return;
    focused_.clear();
  }
  events_.Notify([](Observer& observer) { observer.OnFocusChanged(""); });
}

std::string Applications::focused() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return focused_;
}

std::string Applications::IdOfPid(pid_t pid) const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::string id;
  uint64_t launched = 0;
  for (const auto& [candidate, run] : running_) {
    if (run.pid == pid && run.launched > launched) {
      launched = run.launched;
      id = candidate;
    }
  }
  return id;
}

std::vector<std::string> Applications::raise_order() const {
  std::vector<std::pair<uint64_t, std::string>> raised;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& [id, run] : running_) raised.emplace_back(run.raised, id);
  }
  std::sort(raised.rbegin(), raised.rend());
  std::vector<std::string> ids;
  ids.reserve(raised.size());
  for (auto& [order, id] : raised) ids.push_back(std::move(id));
  return ids;
}

}  // namespace tvset
