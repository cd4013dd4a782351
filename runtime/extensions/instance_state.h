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
// `destroyed`. Kept alive by its Instance, by the Registry while it is alive, and by whoever is
// calling, so that a call from an extension's own thread may meet one that has just died.
class InstanceState {
 public:
  // `client` is borrowed until Destroy or Abandon returned. Takes a new handle; the caller makes it
  // known in the Registry.
  InstanceState(std::shared_ptr<Extension> extension, InstanceClient& client);

  // Any thread, for both: they never change.
  XW_Instance handle() const { return handle_; }
  Extension& extension() const { return *extension_; }

  // ---- For the page: extension thread only, the caller keeps this alive. ----

  // Calls `created`. Throws HostError when that throws; the instance is dead then.
  void Create();

  // Calls `destroyed`, once however often it is called; what it throws is a warning. The client is
  // reachable until that returned, and not any more when this returns.
  void Destroy();

  // Warns of an exception that left one of the instance's callbacks. `callback` begins the text,
  // `escaped` is what RunCallback returned.
  void WarnAboutEscape(const std::string& callback, const std::string& escaped);

  // ---- For any thread. ----

  // Lets the client go on another thread than the extension thread, and ends the waits. Destroy is
  // still to come, when that thread next enters the host.
  void Abandon();
  bool is_abandoned() const { return abandoned_.load(); }
  bool is_alive() const { return alive_.load(std::memory_order_acquire); }

  // The synchronous messages that wait for replies.
  SyncCalls& sync_calls() { return sync_calls_; }

  // A message from the extension: `deliver(InstanceClient&)` runs on the calling thread. False: the
  // instance is dead, and nothing was done. True without a call: the client was let go.
  template <typename Deliver>
  bool Post(Deliver&& deliver) {
    CallGate::Pass pass(client_gate_);
    if (pass) {
      deliver(client_);
      return true;
    }
    return is_alive();  // nobody listens any more, which is not the extension's fault
  }

  // What the extension keeps with the instance; the host never looks at it.
  void set_data(void* data) { data_.store(data, std::memory_order_release); }
  void* data() const { return data_.load(std::memory_order_acquire); }

 private:
  // After `destroyed`: the handle is dead, the client let go, every wait over.
  void Die();

  const XW_Instance handle_;
  const std::shared_ptr<Extension> extension_;
  // Behind client_gate_.
  InstanceClient& client_;
  CallGate client_gate_;
  SyncCalls sync_calls_;
  std::atomic<void*> data_{nullptr};
  std::atomic<bool> alive_{true};
  std::atomic<bool> abandoned_{false};
  // Extension thread only.
  bool destroying_ = false;
};

}  // namespace orvane::extensions
