// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/windows.h"

#include <algorithm>

#include <app_context.h>

#include "tvset/applications.h"
#include "tvset/error.h"

namespace tvset {
namespace {

// Higher is nearer to the viewer.
int Layer(StackMode mode) {
  switch (mode) {
    case StackMode::kAbove:
      return 2;
    case StackMode::kNone:
      return 1;
    case StackMode::kBelow:
      return 0;
  }
  return 1;
}

}  // namespace

WindowManager::WindowManager(EventHub& events, Applications& applications)
    : events_(events), applications_(applications) {}

void WindowManager::Reset() {
  std::lock_guard<std::mutex> lock(mutex_);
  windows_.clear();
}

template <typename Change>
bool WindowManager::Update(const std::string& app, Change change) {
  if (!applications_.Running(app)) return false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    change(windows_[app]);
  }
  events_.Notify([](Observer& observer) { observer.OnWindowChanged(); });
  return true;
}

Window WindowManager::window(const std::string& app) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto found = windows_.find(app);
  return found == windows_.end() ? Window{} : found->second;
}

bool WindowManager::SetStackMode(const std::string& app, StackMode mode) {
  return Update(app, [mode](Window& window) { window.stack_mode = mode; });
}

bool WindowManager::SetHint(const std::string& app, const std::string& key,
                            const std::string& value) {
  return Update(app, [&](Window& window) { window.hints[key] = value; });
}

bool WindowManager::MoveTo(const std::string& app, int x, int y) {
  return Update(app, [x, y](Window& window) {
    window.position = {x, y};
    window.quarter_position.reset();
  });
}

bool WindowManager::SetQuarterPosition(const std::string& app, int position) {
  if (position < 0 || position > 4) return false;
  return Update(app, [position](Window& window) {
    window.quarter_position = position;
    window.position.reset();
  });
}

bool WindowManager::SetFocusWanted(const std::string& app, bool wanted) {
  if (!Update(app, [wanted](Window& window) { window.focus_wanted = wanted; })) return false;
  if (wanted) {
    try {
      applications_.SetFocus(app);
    } catch (const SetError&) {
      return false;  // it ended meanwhile
    }
  } else if (applications_.focused() == app) {
    applications_.ClearFocus();
  }
  return true;
}

std::vector<std::string> WindowManager::stack() const {
  std::vector<std::string> shown;
  for (std::string& app : applications_.raise_order()) {
    if (applications_.State(app) == APP_STATE_FOREGROUND) shown.push_back(std::move(app));
  }
  std::vector<std::pair<int, std::string>> layered;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (std::string& app : shown) {
      const auto found = windows_.find(app);
      const StackMode mode = found == windows_.end() ? StackMode::kNone : found->second.stack_mode;
      layered.emplace_back(Layer(mode), std::move(app));
    }
  }
  std::stable_sort(layered.begin(), layered.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<std::string> stack;
  stack.reserve(layered.size());
  for (auto& [layer, app] : layered) stack.push_back(std::move(app));
  return stack;
}

std::string WindowManager::topmost() const {
  const std::vector<std::string> windows = stack();
  return windows.empty() ? std::string() : windows.front();
}

void WindowManager::Forget(const std::string& app) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (windows_.erase(app) == 0) return;
  }
  events_.Notify([](Observer& observer) { observer.OnWindowChanged(); });
}

}  // namespace tvset
