// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

#include "XW_Extension.h"
#include "extensions/call_gate.h"
#include "extensions/instance_client.h"
#include "extensions/sync_calls.h"

namespace orvane::extensions {

class Extension;

// The host's side of one instance, found by its handle from before `created` until after
// `destroyed`. Kept alive by its Instance, by the registry, and by whoever is calling.
class InstanceState {
 public:
  // `client` is borrowed until Destroy or Abandon returned.
  InstanceState(std::shared_ptr<Extension> extension, InstanceClient& client);

  XW_Instance handle() const { return handle_; }
  Extension& extension() const { return *extension_; }

  // ---- For the page: extension thread only, the caller keeps this alive. ----

  // Calls `created`. Throws HostError when that throws; the instance is dead then.
  void Create();
  // Calls `destroyed`, once however often it is called.
  void Destroy();
  // Tells of an exception that left one of the instance's callbacks.
  void WarnAboutEscape(const std::string& callback, const std::string& escaped);

  // ---- For any thread. ----

  // Lets the client go on another thread than the extension thread; Destroy is still to come.
  void Abandon();
  bool is_abandoned() const { return abandoned_.load(); }
  bool is_alive() const { return alive_.load(std::memory_order_acquire); }
  SyncCalls& sync_calls() { return sync_calls_; }

  // From the extension. False: the instance is dead.
  template <typename Deliver>
  bool Post(Deliver&& deliver) {
    CallGate::Pass pass(client_gate_);
    if (pass) {
      deliver(client_);
      return true;
    }
    return is_alive();  // nobody listens any more, which is not the extension's fault
  }

  void set_data(void* data) { data_.store(data, std::memory_order_release); }
  void* data() const { return data_.load(std::memory_order_acquire); }

 private:
  void Die();

  const XW_Instance handle_;
  const std::shared_ptr<Extension> extension_;
  InstanceClient& client_;  // behind client_gate_
  CallGate client_gate_;
  SyncCalls sync_calls_;
  std::atomic<void*> data_{nullptr};
  std::atomic<bool> alive_{true};
  std::atomic<bool> abandoned_{false};
  bool destroying_ = false;  // extension thread only
};

}  // namespace orvane::extensions
