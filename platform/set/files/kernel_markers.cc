// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/kernel_markers.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace tvset {
namespace {

int64_t Now() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

}  // namespace

KernelMarkers::KernelMarkers(EventHub& events) : events_(events) {}

void KernelMarkers::Record(const char* text, size_t length) {
  KernelMarker marker;
  marker.time_ns = Now();
  marker.tid = gettid();
  marker.length = length;
  if (length != 0) marker.text.assign(text, std::min(length, kMaxText));
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (markers_.size() == kMaxRecorded) markers_.pop_front();
    markers_.push_back(marker);
    ++count_;
  }
  events_.Notify([&marker](Observer& observer) { observer.OnKernelMarker(marker); });
}

std::vector<KernelMarker> KernelMarkers::list() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return {markers_.begin(), markers_.end()};
}

uint64_t KernelMarkers::count() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return count_;
}

void KernelMarkers::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  markers_.clear();
  count_ = 0;
}

}  // namespace tvset
