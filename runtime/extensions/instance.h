// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "XW_Extension.h"
#include "extensions/instance_client.h"

namespace orvane::extensions {

class InstanceState;

// One extension in one page context. Made by Extension::CreateInstance, owned by the page.
//
// Every member but EndWaits and handle belongs to the extension thread and throws HostError on any
// other. Texts reach the extension as C strings: they end at their first NUL. A handler may lead to
// the destruction of the Instance that called it; the call then ends as if nothing were left to do.
class Instance {
 public:
  // For Extension::CreateInstance.
  explicit Instance(std::shared_ptr<InstanceState> state);

  // Calls the extension's `destroyed`, the last call that names the instance. When it returns, no
  // call into the client runs or will run on another thread. On a wrong thread the client is let go
  // in the same way, and `destroyed` waits until the extension thread calls the host again.
  ~Instance();

  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  // Text for the extension's message handler. Nobody to receive it, or a handler that throws: a
  // warning.
  void PostMessage(const std::string& text);
  // The same for bytes, zero bytes included; they live for the call.
  void PostBinaryMessage(std::string_view bytes);

  // Returns the extension's reply, which may come from any thread, before or after the handler
  // returned. Empty when the instance is destroyed, or its waits are ended, before a reply came.
  // Throws HostError, with the beginning of the message, when no reply came within
  // HostOptions::sync_deadline, when the handler threw, and when the extension has no handler.
  // Replies carry no id: one that comes later than its deadline answers the message that waits
  // then. A message sent while a handler of this instance runs is answered first; its reply never
  // counts for the outer one.
  std::string SendSyncMessage(const std::string& text);

  // Any thread: the page is going away. A wait in progress and every later one end with an empty
  // answer. The instance is still to be destroyed.
  void EndWaits();

  // Any thread. What the extension knows the instance by.
  XW_Instance handle() const;

 private:
  // What every message does first: the thread is checked, then that the instance is alive. Throws
  // HostError, naming `call`.
  std::shared_ptr<InstanceState> Enter(const char* call) const;

  const std::shared_ptr<InstanceState> state_;
};

}  // namespace orvane::extensions
