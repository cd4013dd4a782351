// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

// The marks that the process leaves in the kernel's trace with prctl option 666, which only a
// television's kernel knows: a text and its length in bytes. While a set runs they come here
// instead and succeed; without a set they reach the machine's kernel. FaultTable::Fail takes
// "prctl" for them, with an errno value as the code. Any thread.
class TVSET_EXPORT KernelMarkers {
 public:
  static constexpr size_t kMaxRecorded = 1000;  // the oldest go first
  static constexpr size_t kMaxText = 4096;      // bytes of a text that are kept

  explicit KernelMarkers(EventHub& events);  // borrowed

  // Reads `length` bytes. Told to Observer::OnKernelMarker on the calling thread.
  void Record(const char* text, size_t length);
  std::vector<KernelMarker> list() const;  // oldest first
  uint64_t count() const;                  // also those that went
  void Clear();                            // and counts from nought

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  std::deque<KernelMarker> markers_;  // guarded by mutex_
  uint64_t count_ = 0;                // guarded by mutex_
};

}  // namespace tvset
