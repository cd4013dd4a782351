// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>

#include "extensions/extension_host.h"
#include "set_process/frame_sender.h"

namespace orvane::set_process {

// The page contexts, each with an instance of every extension that it uses. A context begins with
// its first message, and its number is not used again once it was closed. What instances post goes
// to the frame sender from whatever thread, with the context's number and the extension's name.
//
// Borrows the host and the frames, which outlive it. Belongs to the extension thread. Throws
// RequestError for what does not exist, extensions::HostError as extensions::Instance does.
class PageInstances {
 public:
  PageInstances(extensions::ExtensionHost& host, FrameSender& frames);
  ~PageInstances();  // closes those that are left
  PageInstances(const PageInstances&) = delete;
  PageInstances& operator=(const PageInstances&) = delete;

  // The extension's instance for the context, made with the first call. Valid until Close.
  extensions::Instance& Get(int64_t context, const std::string& extension);
  // Destroys its instances. Nothing happens to one that was never used.
  void Close(int64_t context);

 private:
  class Connection;
  using Connections = std::map<std::string, std::unique_ptr<Connection>>;  // by extension

  extensions::ExtensionHost& host_;
  FrameSender& frames_;
  std::map<int64_t, Connections> contexts_;
  std::unordered_set<int64_t> closed_;
};

}  // namespace orvane::set_process
