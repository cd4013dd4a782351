// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "base/json.h"
#include "set_process/frame_sender.h"
#include "television/set_state.h"
#include "tvset/events.h"

namespace orvane::set_process {

// Tells the server what happens on the set: log lines in batches, none left out; what changed of
// the state, several changes as one: a part by the event of its name, a row of a part that is a
// list as the event "changed" with {"part","key","value"}, whose value is null when the row is
// gone; a snapshot a little after a change; everything else one by one, as it happens. Watches the
// set from construction to destruction; then what is left is sent.
//
// Events are sent by a thread of this object. The set's threads only leave them here; they wait
// when so many log lines are left that memory would run short. Any thread.
class EventSender final : public tvset::Observer {
 public:
  using MakeSnapshot = std::function<Json()>;

  // All borrowed. `snapshot` is called on this object's thread. `last_log_line` is the number after
  // which those of the log lines go on.
  EventSender(tvset::EventHub& events, const television::SetState& state, MakeSnapshot snapshot,
              int64_t last_log_line, FrameSender& frames);
  ~EventSender() override;
  EventSender(const EventSender&) = delete;
  EventSender& operator=(const EventSender&) = delete;

  // A part was changed past the set's own observers, or is to be told once more.
  void Touch(television::Part part) { TouchRow(part, ""); }
  // One row of it, see SetState::RowOf.
  void TouchRow(television::Part part, const std::string& key);

  // Sends a snapshot now when the set is not as the last one told: what the calling thread does
  // next may end the process. A screen saver's wait that began afresh is not worth one.
  void SendChangedSnapshot();

  // Why something was refused, for people, to the page context that the thread works for.
  void Explain(const std::string& text, pid_t thread = gettid());
  // For which page context the calling thread, which is the extension thread, works until it is
  // told otherwise; empty: for none.
  void SetContext(std::optional<int64_t> context);

  void OnLogLine(const tvset::LogLine& line) override;
  void OnRefusal(const tvset::Refusal& refusal) override;
  void OnKeyDelivered(const tvset::KeyDelivery& delivery) override;
  void OnContextTask(const tvset::ContextTask& task) override;
  void OnKernelMarker(const tvset::KernelMarker& marker) override;
  void OnApplicationChanged(const std::string& app_id) override;
  void OnFocusChanged(const std::string& app_id) override;
  void OnWindowChanged() override;
  void OnInputMethodChanged() override;
  void OnKeyGrabsChanged() override;
  void OnSettingChanged(const std::string& key) override;
  void OnScreenSaverChanged() override;
  void OnFeatureChanged(const std::string& key) override;
  void OnProfileChanged() override;
  void OnFaultChanged(const std::string& function) override;

 private:
  using TimePoint = std::chrono::steady_clock::time_point;
  // What waits to be sent, each for a time of its own.
  enum class Kind { kUrgent, kLog, kTouched, kSnapshot };
  // Parts of the state, each whole where the key is empty, else the row of the key.
  using Touched = std::set<std::pair<television::Part, std::string>>;
  // Log lines of one frame.
  struct Batch {
    std::string lines;
    size_t count = 0;
    int64_t last = 0;  // number of the last one
  };
  // What is to be sent now.
  struct Load {
    std::vector<Json> events;
    std::deque<Batch> log;
    Touched touched;
    bool snapshot = false;
  };

  void Run();
  std::optional<Load> NextLoad();  // waits for it; empty: the end
  Load TakeDueLocked(TimePoint now);
  void Send(const Load& load);
  void SendTouched(const Touched& touched);
  void SendSnapshot();
  void AddEvent(std::string_view name, Json data);
  void BeginLocked(Kind kind, std::chrono::milliseconds delay);  // unless it waits already

  tvset::EventHub& events_;
  const television::SetState& state_;
  const MakeSnapshot snapshot_;
  FrameSender& frames_;
  const pid_t extension_thread_;    // the one that made this object
  std::optional<int64_t> context_;  // belongs to the extension thread
  std::mutex snapshot_mutex_;  // held while one is taken and sent, so that the later one is newer
  std::mutex mutex_;
  std::condition_variable added_;
  std::condition_variable sent_;
  // Guarded by mutex_:
  std::vector<Json> urgent_;  // heads of frames
  std::deque<Batch> log_;
  size_t log_bytes_ = 0;
  int64_t last_log_line_;
  Touched touched_;
  std::map<Kind, TimePoint> due_;
  bool snapshot_changed_ = false;
  bool is_over_ = false;
  std::thread thread_;  // last: begins with everything else in place
};

}  // namespace orvane::set_process
