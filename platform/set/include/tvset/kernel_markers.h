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
// "prctl" for them, with an errno value as the code: the call answers -1 then, and nothing is
// recorded. Owned by Set; a restart forgets them. Any thread.
class TVSET_EXPORT KernelMarkers {
 public:
  // The oldest go first.
  static constexpr size_t kMaxRecorded = 1000;
  // Bytes of a text that are kept.
  static constexpr size_t kMaxText = 4096;

  // Borrowed.
  explicit KernelMarkers(EventHub& events);

  // Reads `length` bytes of the text, which need not end in a zero. Told to
  // Observer::OnKernelMarker on the calling thread.
  void Record(const char* text, size_t length);
  // Those that are kept, oldest first.
  std::vector<KernelMarker> list() const;
  // How many were recorded since the start or Clear, also those that went.
  uint64_t count() const;
  // Forgets them, and counts from nought. Tells nobody.
  void Clear();

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  std::deque<KernelMarker> markers_;
  // Also of those that went.
  uint64_t count_ = 0;
};

}  // namespace tvset
