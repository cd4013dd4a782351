// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <stdlib.h>

#include <new>

#include "system_fakes.h"

namespace {

// Allocations left until the one that fails; 0: none fails.
thread_local int g_countdown = 0;

}  // namespace

// Every form is replaced, so that no memory goes from one allocator to another.

void* operator new(size_t size) {
  if (g_countdown > 0 && --g_countdown == 0) {
    throw std::bad_alloc();
  }
  void* const memory = malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return malloc(size == 0 ? 1 : size);
}

void* operator new[](size_t size) { return operator new(size); }

void* operator new[](size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}

void operator delete(void* memory) noexcept { free(memory); }

void operator delete(void* memory, size_t /*size*/) noexcept { free(memory); }

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { free(memory); }

void operator delete[](void* memory) noexcept { free(memory); }

void operator delete[](void* memory, size_t /*size*/) noexcept { free(memory); }

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { free(memory); }

namespace orvane::test {

FailingAllocation::FailingAllocation(int countdown) { g_countdown = countdown; }

FailingAllocation::~FailingAllocation() { g_countdown = 0; }

bool FailingAllocation::failed() const { return g_countdown == 0; }

}  // namespace orvane::test
