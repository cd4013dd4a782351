// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstring>
#include <deque>
#include <mutex>
#include <vector>

namespace tvset {

// The live handles of one kind. A handle is a number that is not given again for a long time, not
// an address, so that an invented handle, a destroyed one and one of another kind are told apart
// from a live one. Values stay where they are while their handle lives; their places are used
// again, so that a handle costs no allocation. Any thread. The callables run under the table's lock
// and must not call it.
//
// Partner of a service of the platform whose functions give out handles: they check their caller's
// handle by finding it here, since a caller may hand in anything. See handles.h for the tables.
template <typename Value>
class HandleTable {
 public:
  // `kind` keeps the numbers of two tables apart; 1 to 15.
  explicit HandleTable(uintptr_t kind) : kind_(kind) {}

  // A new handle, over a place that is free. Null, and no handle, when `fill(Value&)` answers
  // false. It finds the value as the last handle of that place left it.
  template <typename Fill>
  void* Add(Fill&& fill) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (free_.empty()) {
      free_.push_back(slots_.size());
      slots_.emplace_back();
    }
    const size_t index = free_.back();
    Slot& slot = slots_[index];
    if (!fill(slot.value)) return nullptr;
    free_.pop_back();
    slot.number = (++serial_ << kSerialShift) | (index << kIndexShift) | kind_;
    return ToHandle(slot.number);
  }

  // False: no such handle, and `read` was not called. Otherwise what `read(Value&)` answers; it may
  // change the value, too.
  template <typename Reader>
  bool Read(const void* handle, Reader&& read) {
    std::lock_guard<std::mutex> lock(mutex_);
    Slot* slot = Find(handle);
    return slot != nullptr && read(slot->value);
  }

  // The handle is none from here on. False: it was none before. `drop(Value&)` may free what the
  // value holds; the value itself stays for the next handle of the place.
  template <typename Drop>
  bool Remove(const void* handle, Drop&& drop) {
    std::lock_guard<std::mutex> lock(mutex_);
    Slot* slot = Find(handle);
    if (slot == nullptr) return false;
    drop(slot->value);
    free_.push_back(IndexOf(slot->number));
    slot->number = 0;
    return true;
  }

  // Ends every handle; numbers go on, so that those that are out stay invalid.
  void Clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    slots_.clear();
    free_.clear();
  }

  // How many handles live.
  size_t size() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return slots_.size() - free_.size();
  }

 private:
  // A place for a value, with a handle or free.
  struct Slot {
    // 0: free.
    uintptr_t number = 0;
    Value value{};
  };

  // A number is, from its lowest bit: the kind, the slot's index, and a serial number, which comes
  // again only when it has run through all its bits.
  static constexpr int kIndexShift = 4;
  static constexpr int kSerialShift = 24;

  // Where the slot of a number is, should the number be one that was given.
  static size_t IndexOf(uintptr_t number) {
    constexpr uintptr_t kMask = (uintptr_t{1} << (kSerialShift - kIndexShift)) - 1;
    return (number >> kIndexShift) & kMask;
  }

  // A pointer that points nowhere and is never followed.
  static void* ToHandle(uintptr_t number) {
    void* handle = nullptr;
    static_assert(sizeof(handle) == sizeof(number));
    std::memcpy(&handle, &number, sizeof(number));
    return handle;
  }

  // mutex_ held. Null: no such handle.
  Slot* Find(const void* handle) {
    const auto number = reinterpret_cast<uintptr_t>(handle);
    const size_t index = IndexOf(number);
    if (number == 0 || index >= slots_.size() || slots_[index].number != number) return nullptr;
    return &slots_[index];
  }

  const uintptr_t kind_;
  mutable std::mutex mutex_;
  // Guarded by mutex_:
  uintptr_t serial_ = 0;
  // A deque, so that values stay where they are.
  std::deque<Slot> slots_;
  // Indices of free slots, the one that is used next at the end.
  std::vector<size_t> free_;
};

}  // namespace tvset
