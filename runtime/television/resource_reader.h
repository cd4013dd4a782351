// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "base/json.h"
#include "extensions/extension_host.h"

namespace orvane::television {

// Reads the figures of this process through the library's own getSystemStat, as a page would: what
// a person sees in the simulator is what an application would be told, by the same files and with
// the same faults. Has an instance of the library that no page has, from its first use on.
//
// Owned by Control. Borrows the host, which outlives it. Belongs to the extension thread but for
// OnMessage, which the library's task worker calls; the destructor ends the instance, and waits for
// what the worker still does for it.
class ResourceReader final : public extensions::InstanceClient {
 public:
  // Called at most once for a Read that did not throw (never, if the library does not answer), on
  // the library's thread, and maybe before Read returns; with no lock held. `error` is a sentence
  // for a person, and empty when there is a result. Must not throw.
  using Receiver = std::function<void(const Json& result, const std::string& error)>;

  explicit ResourceReader(extensions::ExtensionHost& host) : host_(host) {}

  // "CPU" (percent of all processors) or "MEMORY" (MiB). The result is the library's own, with the
  // figure as "value" besides, so that whoever draws it need not know how the library calls it.
  //
  // Throws RequestError for a resource that the library refuses, and where no extension of its name
  // is loaded; base::JsonError for a library that answers in another form than its own.
  void Read(const std::string& resource, const Receiver& receiver);

  // What the library posts to its page. An answer that is none of a Read's is passed over.
  void OnMessage(std::string_view text) override;
  void OnBinaryMessage(std::string_view) override {}

 private:
  extensions::Instance& Instance();  // made when it is first asked for

  extensions::ExtensionHost& host_;

  // Guarded by mutex_:
  std::mutex mutex_;
  int64_t last_call_ = 0;
  // By the number of the call, which the library calls its callback's id.
  std::map<int64_t, Receiver> waiting_;

  // Last: it ends before the rest goes, since until then the worker may call OnMessage.
  std::unique_ptr<extensions::Instance> instance_;
};

}  // namespace orvane::television
