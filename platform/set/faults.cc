// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/faults.h"

#include <algorithm>
#include <numeric>

#include "tvset/error.h"
#include "tvset/set_files.h"

namespace tvset {
namespace {

size_t EditDistance(const std::string& from, const std::string& to) {
  std::vector<size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < from.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i + 1;
    for (size_t j = 0; j < to.size(); ++j) {
      const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

std::vector<std::string> AllNames() {
  std::vector<std::string> names = FaultTable::functions();
  const std::vector<std::string>& accesses = FaultTable::accesses();
  names.insert(names.end(), accesses.begin(), accesses.end());
  return names;
}

// Up to three names that a person may have meant.
std::vector<std::string> NearNames(const std::string& name) {
  std::vector<std::pair<size_t, std::string>> near;
  for (const std::string& function : AllNames()) {
    const bool part = name.size() >= 4 && function.find(name) != std::string::npos;
    const size_t distance = part ? 0 : EditDistance(name, function);
    if (distance <= function.size() / 3) near.emplace_back(distance, function);
  }
  std::sort(near.begin(), near.end());
  std::vector<std::string> names;
  for (size_t i = 0; i < near.size() && i < 3; ++i) names.push_back(near[i].second);
  return names;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::string UnknownFunctionText(const std::string& name) {
  const std::string text = "\"" + name + "\" is no platform function; ";
  const std::vector<std::string> near = NearNames(name);
  if (near.empty()) return text + "those that can fail are " + Joined(AllNames());
  return text + "did you mean " + Joined(near) + "?";
}

void RequireKnown(const std::string& name) {
  const std::vector<std::string> names = AllNames();
  if (std::find(names.begin(), names.end(), name) != names.end()) return;
  throw SetError(UnknownFunctionText(name));
}

}  // namespace

const std::vector<std::string>& FaultTable::functions() {
  static const std::vector<std::string>* const names = new std::vector<std::string>{
      "VirtualKey_Initialize",
      "VirtualKey_Send_KeyCode",
      "__dlog_print",
      "app_context_destroy",
      "app_context_get_app_id",
      "app_context_get_app_state",
      "app_context_get_pid",
      "app_context_manager_init",
      "app_context_manager_request_task",
      "app_manager_get_app_context",
      "app_manager_get_focused_app_context",
      "aul_app_get_appid_bypid",
      "dlog_print",
      "pkgmgrinfo_appinfo_destroy_appinfo",
      "pkgmgrinfo_appinfo_get_appinfo",
      "pkgmgrinfo_appinfo_get_metadata_value",
      "privilege_check_application",
      "screensaver_reset_timeout",
      "screensaver_set_appid",
      "screensaver_set_timeout",
      "system_info_get_custom_bool",
      "system_info_get_custom_int",
      "system_info_get_platform_string",
      "tzplatform_getenv",
      "tzplatform_getid",
      "tzplatform_getname",
      "vconf_get_str",
      "vconf_ignore_key_changed",
      "vconf_notify_key_changed",
      "vconf_set_str",
  };
  return *names;
}

const std::vector<std::string>& FaultTable::accesses() {
  static const std::vector<std::string>* const names = [] {
    auto* const list = new std::vector<std::string>{"prctl"};
    for (const SetFile file : kSetFiles) list->push_back("file:" + std::string(NameOf(file)));
    std::sort(list->begin(), list->end());
    return list;
  }();
  return *names;
}

void FaultTable::Fail(const std::string& function, int code, FaultMode mode, uint64_t hits) {
  RequireKnown(function);
  if (code == 0)
    throw SetError("code 0 is success; give " + function + " another one to fail with");
  {
    std::lock_guard<std::mutex> lock(mutex_);
    faults_[function] = Fault{function, code, mode, hits};
    count_.store(static_cast<int>(faults_.size()), std::memory_order_release);
  }
  Changed(function);
}

void FaultTable::Clear(const std::string& function) {
  RequireKnown(function);
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (faults_.erase(function) == 0) return;
    count_.store(static_cast<int>(faults_.size()), std::memory_order_release);
  }
  Changed(function);
}

void FaultTable::ClearAll() {
  std::unordered_map<std::string, Fault> cleared;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    cleared.swap(faults_);
    count_.store(0, std::memory_order_release);
  }
  for (const auto& [function, fault] : cleared) Changed(function);
}

void FaultTable::Reset() {
  std::lock_guard<std::mutex> lock(mutex_);
  faults_.clear();
  count_.store(0, std::memory_order_release);
}

void FaultTable::Changed(const std::string& function) const {
  if (changed_) changed_(function);
}

std::vector<Fault> FaultTable::list() const {
  std::vector<Fault> faults;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& [name, fault] : faults_) faults.push_back(fault);
  }
  std::sort(faults.begin(), faults.end(),
            [](const Fault& a, const Fault& b) { return a.function < b.function; });
  return faults;
}

std::optional<int> FaultTable::TakeSlowly(const char* function) {
  int code = 0;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = faults_.find(function);
    if (found == faults_.end()) return std::nullopt;
    code = found->second.code;
    ++found->second.hits;
    if (found->second.mode == FaultMode::kOnce) {
      faults_.erase(found);
      count_.store(static_cast<int>(faults_.size()), std::memory_order_release);
    }
  }
  Changed(function);
  return code;
}

}  // namespace tvset
