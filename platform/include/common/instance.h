// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XW_Extension.h"
#include "common/export.h"

namespace common {

// One page context's side of an extension. The framework owns it from Extension::OnInstanceCreated
// on and deletes it when the host destroys the handle. Messages come on the host's extension
// thread; PostMessage may be called from any thread. An exception that leaves a handler is logged
// and stopped; a synchronous message then has no answer.
class WEBAPI_EXPORT Instance {
 public:
  Instance();
  virtual ~Instance();

  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  // A message that wants no synchronous answer. The text lives for the call. The base class drops
  // it.
  virtual void HandleMessage(const char* message);

  // A message whose sender waits: answer with SendSyncReply, once, before it returns. The text
  // lives for the call. The base class answers neither.
  virtual void HandleSyncMessage(const char* message);

  // Sends `message` to the page of `instance`. The caller keeps the instance alive for the call;
  // the text is copied. An instance that is not bound to a host drops the message.
  static void PostMessage(Instance* instance, const char* message);

 protected:
  // On the extension thread, inside HandleSyncMessage, once: the host ignores a second reply. The
  // text is copied. Without a host, nothing.
  void SendSyncReply(const char* reply);

 private:
  friend class Extension;

  // Set by Extension::OnInstanceCreated. 0: not bound to a host.
  XW_Instance handle_ = 0;
};

}  // namespace common
