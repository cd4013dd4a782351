// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "extensions/call_gate.h"
#include "extensions/host_options.h"

namespace orvane::extensions {

// What the parts of one host share: its options, its extension thread, the way to its warnings.
// Made by the ExtensionHost and closed at its end; kept alive by its extensions and instances, and
// by the Registry for calls that name neither. Thread-safe, but for what says otherwise.
class HostContext {
 public:
  // No thread is the extension thread yet.
  explicit HostContext(HostOptions options) : options_(std::move(options)) {}

  const HostOptions& options() const { return options_; }

  // One text for people, without a line break at its end. Any thread. Nothing after Close. Never
  // throws: a warning that fails is lost.
  void Warn(const std::string& text) noexcept;

  // What every member of a host, its extensions and its instances does first. Makes the first
  // caller's thread the extension thread; throws HostError, naming `call`, on another. Outside
  // callbacks it also destroys the instances that other threads have let go.
  void Enter(const char* call);
  // False as long as there is none.
  bool OnExtensionThread() const {
    return thread_.load(std::memory_order_relaxed) == std::this_thread::get_id();
  }
  bool HasThread() const { return thread_.load() != std::thread::id(); }

  // Any thread: an instance that another thread let go waits for the extension thread to destroy
  // it.
  void NoteAbandonedInstance() { has_abandoned_instances_ = true; }

  // When it returns, HostOptions::warn and HostOptions::access_check are not running on another
  // thread and will not be called again.
  void Close() { calls_out_.Close(); }

  // To be passed by every call of a function in options().
  CallGate& calls_out() { return calls_out_; }

 private:
  // Extension thread, outside callbacks.
  void DestroyAbandonedInstances();

  const HostOptions options_;
  CallGate calls_out_;
  // The extension thread; nobody until the first Enter.
  std::atomic<std::thread::id> thread_{};
  std::atomic<bool> has_abandoned_instances_{false};
};

}  // namespace orvane::extensions
