// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/event_sender.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "television/set_fields.h"

namespace orvane::set_process {

using std::chrono::milliseconds;
using television::Part;
using television::SetState;

namespace {

constexpr milliseconds kLogDelay{20};
constexpr milliseconds kTouchedDelay{8};
constexpr milliseconds kSnapshotDelay{100};
constexpr size_t kBatchLines = 256;
constexpr size_t kMostLogBytes = size_t{32} << 20;  // that wait; above it the set's threads do

// What was to be sent is lost, such as a setting that fills more than a frame.
void Complain(const std::exception& error) {
  std::fprintf(stderr, "orvane: an event could not be sent: %s\n", error.what());
}

// What a snapshot holds, but for the wait of the screen saver.
bool IsKept(Part part) {
  return part != Part::kSettings && part != Part::kPanel && part != Part::kScreenSaver;
}

}  // namespace

EventSender::EventSender(tvset::EventHub& events, const SetState& state, MakeSnapshot snapshot,
                         int64_t last_log_line, FrameSender& frames)
    : events_(events),
      state_(state),
      snapshot_(std::move(snapshot)),
      frames_(frames),
      extension_thread_(gettid()),
      last_log_line_(last_log_line),
      thread_([this] { Run(); }) {
  events_.Add(this);
}

EventSender::~EventSender() {
  events_.Remove(this);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    is_over_ = true;
  }
  added_.notify_all();
  thread_.join();
}

void EventSender::OnLogLine(const tvset::LogLine& line) {
  std::unique_lock<std::mutex> lock(mutex_);
  // This object's own thread empties the queue, so it cannot wait for that.
  if (std::this_thread::get_id() != thread_.get_id()) {
    sent_.wait(lock, [this] { return log_bytes_ < kMostLogBytes || is_over_; });
  }
  if (log_.empty() || log_.back().count == kBatchLines) log_.emplace_back();
  Batch& batch = log_.back();
  const size_t before = batch.lines.size();
  ++batch.count;
  batch.last = ++last_log_line_;
  batch.lines.append(base::TextOf(base::Numbered<tvset::LogLine>{line, batch.last}));
  batch.lines.push_back('\n');
  log_bytes_ += batch.lines.size() - before;
  const bool full = batch.count == kBatchLines && log_.size() == 1;
  if (full) due_.erase(Kind::kLog);
  BeginLocked(Kind::kLog, full ? milliseconds(0) : kLogDelay);
}

void EventSender::OnRefusal(const tvset::Refusal& refusal) { Explain(refusal.text, refusal.tid); }

void EventSender::OnKeyDelivered(const tvset::KeyDelivery& delivery) {
  AddEvent("key", base::ToJson(delivery));
  Touch(Part::kScreenSaver);  // every key starts its wait afresh
}

void EventSender::OnContextTask(const tvset::ContextTask& task) {
  AddEvent("contextTask", base::ToJson(task));
}

void EventSender::OnKernelMarker(const tvset::KernelMarker& marker) {
  AddEvent("kernelMarker", base::ToJson(marker));
}

void EventSender::SetContext(std::optional<int64_t> context) { context_ = context; }

void EventSender::Explain(const std::string& text, pid_t thread) {
  Json data{{"text", text}};
  // Other threads work for no page context in particular.
  if (thread == extension_thread_ && context_) data["context"] = *context_;
  AddEvent("explain", data);
}

void EventSender::OnApplicationChanged(const std::string& app_id) {
  TouchRow(Part::kApplications, app_id);
  Touch(Part::kWindows);  // which windows are shown depends on it
}

void EventSender::OnFocusChanged(const std::string&) {
  Touch(Part::kFocus);
  Touch(Part::kWindows);  // the focus raises
}

void EventSender::OnWindowChanged() { Touch(Part::kWindows); }
void EventSender::OnInputMethodChanged() { Touch(Part::kInputMethod); }
void EventSender::OnKeyGrabsChanged() { Touch(Part::kKeyGrabs); }
void EventSender::OnSettingChanged(const std::string& key) { TouchRow(Part::kSettings, key); }
void EventSender::OnScreenSaverChanged() { Touch(Part::kScreenSaver); }
void EventSender::OnFaultChanged(const std::string& function) { TouchRow(Part::kFaults, function); }

void EventSender::OnFeatureChanged(const std::string&) {
  Touch(Part::kFeatures);
  Touch(Part::kPanel);
}

void EventSender::OnProfileChanged() {
  Touch(Part::kProfile);
  Touch(Part::kFeatures);
  Touch(Part::kPanel);
  Touch(Part::kScreenSaver);
}

void EventSender::TouchRow(Part part, const std::string& key) {
  const std::lock_guard<std::mutex> lock(mutex_);
  touched_.emplace(part, key);
  BeginLocked(Kind::kTouched, kTouchedDelay);
  if (IsKept(part)) snapshot_changed_ = true;
  if (IsKept(part) || part == Part::kScreenSaver) BeginLocked(Kind::kSnapshot, kSnapshotDelay);
}

void EventSender::SendChangedSnapshot() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!snapshot_changed_) return;
    due_.erase(Kind::kSnapshot);
  }
  try {
    SendSnapshot();
  } catch (const std::exception& error) {
    Complain(error);  // the caller's message is to be handled all the same
  }
}

void EventSender::SendSnapshot() {
  const std::lock_guard<std::mutex> snapshot_lock(snapshot_mutex_);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    snapshot_changed_ = false;
  }
  frames_.Send({{"op", "snapshot"}}, base::JsonText(snapshot_()));
}

void EventSender::AddEvent(std::string_view name, Json data) {
  const std::lock_guard<std::mutex> lock(mutex_);
  urgent_.push_back({{"op", "event"}, {"name", name}, {"data", std::move(data)}});
  BeginLocked(Kind::kUrgent, milliseconds(0));
}

void EventSender::BeginLocked(Kind kind, milliseconds delay) {
  const bool begins = due_.emplace(kind, std::chrono::steady_clock::now() + delay).second;
  if (begins) added_.notify_one();
}

void EventSender::Run() {
  pthread_setname_np(pthread_self(), "events");
  while (const std::optional<Load> load = NextLoad()) {
    try {
      Send(*load);
    } catch (const std::exception& error) {
      Complain(error);
    }
  }
}

std::optional<EventSender::Load> EventSender::NextLoad() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (true) {
    const TimePoint now = std::chrono::steady_clock::now();
    const auto next = std::min_element(
        due_.begin(), due_.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    if (next == due_.end()) {
      if (is_over_) return std::nullopt;
      added_.wait(lock);
    } else if (is_over_ || next->second <= now) {
      return TakeDueLocked(now);
    } else {
      const TimePoint due = next->second;  // the table may change while this waits
      added_.wait_until(lock, due);
    }
  }
}

EventSender::Load EventSender::TakeDueLocked(TimePoint now) {
  const auto take = [&](Kind kind) {
    const auto due = due_.find(kind);
    if (due == due_.end() || (due->second > now && !is_over_)) return false;
    due_.erase(due);
    return true;
  };
  Load load;
  if (take(Kind::kUrgent)) load.events.swap(urgent_);
  if (take(Kind::kLog)) {
    load.log.swap(log_);
    log_bytes_ = 0;
    sent_.notify_all();
  }
  if (take(Kind::kTouched)) load.touched.swap(touched_);
  load.snapshot = take(Kind::kSnapshot);
  return load;
}

void EventSender::Send(const Load& load) {
  for (const Json& event : load.events) frames_.Send(event);
  for (const Batch& batch : load.log) {
    frames_.Send({{"op", "event"}, {"name", "log"}, {"lastLogLine", batch.last}}, batch.lines);
  }
  SendTouched(load.touched);
  if (load.snapshot) SendSnapshot();
}

// A part that is sent whole holds its rows; the whole comes first, as its key is empty.
void EventSender::SendTouched(const Touched& touched) {
  for (const auto& [part, key] : touched) {
    const auto name = base::ToJson(part).get<std::string>();
    if (key.empty()) {
      frames_.Event(name, state_.ValueOf(part));
    } else if (touched.count({part, ""}) == 0) {
      frames_.Event("changed", {{"part", name}, {"key", key}, {"value", state_.RowOf(part, key)}});
    }
  }
}

}  // namespace orvane::set_process
