// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "extensions/extension_host.h"
#include "television/outbox.h"

namespace orvane::television {

// Reads the figures of this process through the library's own getSystemStat, as a page would, on an
// instance that no page has. Answers the requests itself, from the library's threads. Borrows the
// host and the outbox. Belongs to the extension thread but for OnMessage.
class ResourceReader final : public extensions::InstanceClient {
 public:
  ResourceReader(extensions::ExtensionHost& host, Outbox& outbox) : host_(host), outbox_(outbox) {}

  // "CPU" or "MEMORY"; the answer has the figure as "value", and the library's own result beside
  // it. Throws RequestError for what is refused at once.
  void Read(int64_t id, const std::string& resource);

  void OnMessage(std::string_view text) override;
  void OnBinaryMessage(std::string_view) override {}

 private:
  extensions::Instance& Instance();

  extensions::ExtensionHost& host_;
  Outbox& outbox_;
  std::mutex mutex_;
  int64_t last_call_ = 0;               // guarded by mutex_
  std::map<int64_t, int64_t> waiting_;  // guarded by mutex_; requests by the number of their call
  std::unique_ptr<extensions::Instance> instance_;  // last: ends before the rest goes
};

}  // namespace orvane::television
