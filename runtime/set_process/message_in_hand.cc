// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/message_in_hand.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "base/utf8.h"

namespace orvane::set_process {

namespace {

template <size_t kSize>
struct Text {
  size_t size;
  char bytes[kSize];

  void Set(std::string_view text) {
    size = std::min(text.size(), kSize);
    std::memcpy(bytes, text.data(), size);
  }
  std::string Get() const { return base::WellFormedUtf8({bytes, std::min(size, kSize)}); }
};

[[noreturn]] void Fail(const char* call) {
  throw std::system_error(errno, std::generic_category(), call);
}

// Neither side can take the memory from below the other.
base::UniqueFd MakeMemory(size_t size) {
  base::UniqueFd memory(memfd_create("message-in-hand", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  if (memory.get() < 0) Fail("memfd_create");
  if (ftruncate(memory.get(), static_cast<off_t>(size)) != 0) Fail("ftruncate");
  if (fcntl(memory.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0) {
    Fail("F_ADD_SEALS");
  }
  return memory;
}

}  // namespace

// Zeros are its beginning.
struct MessageInHand::Memory {
  std::atomic<uint64_t> writes;  // odd while one goes on
  std::atomic<bool> is_busy;
  std::atomic<int64_t> begun_ns;  // of the steady clock, which all processes share
  int64_t context;
  Text<16> what;
  Text<1024> name;
  Text<kMostText> text;

  static Memory* Map(int descriptor) {
    void* const memory =
        mmap(nullptr, sizeof(Memory), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) Fail("mmap");
    return static_cast<Memory*>(memory);
  }
};

MessageInHand::MessageInHand() : MessageInHand(MakeMemory(sizeof(Memory))) {}

MessageInHand::MessageInHand(base::UniqueFd memory)
    : descriptor_(std::move(memory)), memory_(Memory::Map(descriptor_.get())) {}

MessageInHand::~MessageInHand() { munmap(memory_, sizeof(Memory)); }

void MessageInHand::Begin(std::string_view what, int64_t context, std::string_view name,
                          std::string_view text) {
  const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
  memory_->writes.fetch_add(1, std::memory_order_acq_rel);
  memory_->context = context;
  memory_->what.Set(what);
  memory_->name.Set(name);
  memory_->text.Set(text);
  memory_->begun_ns = now.count();
  memory_->is_busy = true;
  memory_->writes.fetch_add(1, std::memory_order_release);
}

void MessageInHand::End() { memory_->is_busy = false; }

bool MessageInHand::is_busy() const { return memory_->is_busy; }

MessageInHand::TimePoint MessageInHand::last_begin() const {
  return TimePoint(std::chrono::nanoseconds(memory_->begun_ns));
}

std::optional<HandledMessage> MessageInHand::Last() const {
  if (memory_->begun_ns == 0) return std::nullopt;
  constexpr int kTries = 100;  // a process that ended within a write leaves what it had written
  HandledMessage message;
  for (int i = 0; i < kTries; ++i) {
    const uint64_t before = memory_->writes.load(std::memory_order_acquire);
    message = {memory_->what.Get(), memory_->context, memory_->name.Get(), memory_->text.Get()};
    std::atomic_thread_fence(std::memory_order_acquire);
    if (before % 2 == 0 && memory_->writes == before) break;
  }
  return message;
}

}  // namespace orvane::set_process
