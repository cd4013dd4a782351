// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/log.h"

#include <pthread.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include <dlog.h>

#include "log/line_ring.h"

namespace tvset {
namespace {

constexpr size_t kMaxTag = 255;
constexpr int kBadParameter = -22;
constexpr int kNotPermitted = -1;

// The process and thread numbers, asked of the kernel once per thread and again after a fork.
struct Caller {
  pid_t pid = 0;
  pid_t tid = 0;
  int generation = -1;
};
std::atomic<int> g_fork_generation{0};

const Caller& CurrentCaller() {
  static const int registered = pthread_atfork(
      nullptr, nullptr, [] { g_fork_generation.fetch_add(1, std::memory_order_relaxed); });
  static_cast<void>(registered);
  thread_local Caller caller;
  const int generation = g_fork_generation.load(std::memory_order_relaxed);
  if (caller.generation != generation) caller = Caller{getpid(), gettid(), generation};
  return caller;
}

int64_t Now() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

// True on a thread that is reporting a line: what an observer logs is not reported in turn.
thread_local bool g_reporting = false;

class Reporting {
 public:
  Reporting() { g_reporting = true; }
  ~Reporting() { g_reporting = false; }
  Reporting(const Reporting&) = delete;
  Reporting& operator=(const Reporting&) = delete;
};

}  // namespace

LogBuffer::LogBuffer(EventHub& events)
    : events_(events), ring_(std::make_unique<LineRing>(kDefaultCapacity)) {}

LogBuffer::~LogBuffer() = default;

int LogBuffer::Admit(int log_id, int priority) const {
  if (log_id < LOG_ID_MAIN || log_id >= LOG_ID_MAX) return kBadParameter;
  if (priority < DLOG_VERBOSE || priority > DLOG_SILENT) return kBadParameter;
  if (log_id != LOG_ID_APPS && !platform_logging_.load(std::memory_order_relaxed)) {
    return kNotPermitted;
  }
  if (priority <= DLOG_DEBUG && !debug_mode_.load(std::memory_order_relaxed)) return kBadParameter;
  return 0;
}

int LogBuffer::Write(int log_id, int priority, std::string_view tag, std::string_view text) {
  if (const int refused = Admit(log_id, priority); refused != 0) return refused;
  tag = tag.substr(0, kMaxTag);
  text = text.substr(0, kMaxText);
  const Caller& caller = CurrentCaller();
  const LineHead head{Now(),
                      caller.pid,
                      caller.tid,
                      static_cast<int16_t>(log_id),
                      static_cast<int16_t>(priority),
                      static_cast<uint16_t>(tag.size()),
                      static_cast<uint16_t>(text.size())};
  {
    std::lock_guard<std::mutex> lock(mutex_);
    dropped_ += ring_->Append(head, tag, text);
    ++written_;
  }
  if (!events_.empty() && !g_reporting) {
    const Reporting reporting;
    const LogLine line{head.time_ns, head.pid,         head.tid,         log_id,
                       priority,     std::string(tag), std::string(text)};
    events_.Notify([&line](Observer& observer) { observer.OnLogLine(line); });
  }
  if (priority == DLOG_FATAL && abort_on_fatal_.load(std::memory_order_relaxed)) std::abort();
  return static_cast<int>(text.size());
}

void LogBuffer::WriteRefusal(const std::string& text) {
  Write(LOG_ID_MAIN, DLOG_ERROR, "TVSET", text);
  const Refusal refusal{CurrentCaller().tid, text + "."};
  events_.Notify([&refusal](Observer& observer) { observer.OnRefusal(refusal); });
}

std::vector<LogLine> LogBuffer::lines() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return ring_->Lines();
}

uint64_t LogBuffer::written() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return written_;
}

uint64_t LogBuffer::dropped() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return dropped_;
}

void LogBuffer::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  ring_->Clear();
  written_ = 0;
  dropped_ = 0;
}

size_t LogBuffer::capacity() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return ring_->capacity();
}

void LogBuffer::set_capacity(size_t bytes) {
  constexpr size_t kLongestLine = sizeof(LineHead) + kMaxTag + kMaxText + alignof(LineHead);
  auto ring = std::make_unique<LineRing>(std::max(bytes, kLongestLine));
  std::lock_guard<std::mutex> lock(mutex_);
  ring_ = std::move(ring);
  written_ = 0;
  dropped_ = 0;
}

LogPolicy LogBuffer::policy() const {
  return LogPolicy{platform_logging_.load(), debug_mode_.load(), abort_on_fatal_.load()};
}

void LogBuffer::set_policy(const LogPolicy& policy) {
  platform_logging_ = policy.platform_logging;
  debug_mode_ = policy.debug_mode;
  abort_on_fatal_ = policy.abort_on_fatal;
}

}  // namespace tvset
