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

// Reads the figures of this process through the library's own getSystemStat, as a page would, on an
// instance that no page has. Borrows the host. Belongs to the extension thread but for OnMessage.
class ResourceReader final : public extensions::InstanceClient {
 public:
  // Called once, on the library's thread or before Read returns; `error` is empty when there is a
  // result.
  using Receiver = std::function<void(const Json& result, const std::string& error)>;

  explicit ResourceReader(extensions::ExtensionHost& host) : host_(host) {}

  // "CPU" or "MEMORY"; the result has the figure as "value", and the library's own result beside
  // it. Throws RequestError for what is refused at once.
  void Read(const std::string& resource, const Receiver& receiver);

  void OnMessage(std::string_view text) override;
  void OnBinaryMessage(std::string_view) override {}

 private:
  extensions::Instance& Instance();

  extensions::ExtensionHost& host_;
  std::mutex mutex_;
  int64_t last_call_ = 0;                           // guarded by mutex_
  std::map<int64_t, Receiver> waiting_;             // guarded by mutex_; by the number of the call
  std::unique_ptr<extensions::Instance> instance_;  // last: ends before the rest goes
};

}  // namespace orvane::television
