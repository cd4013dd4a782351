// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace orvane::extensions {

// The page's side of an Instance: receives what the extension posts. Borrowed by the Instance,
// which it must outlive. Called from any thread, the extension thread included (while a callback
// runs), from the first moment of CreateInstance until ~Instance returned. The text lives for the
// call. An implementation queues a copy and returns: it must not wait for the extension thread,
// which may be waiting in ~Instance for this very call to end.
class InstanceClient {
 public:
  virtual ~InstanceClient() = default;
  // What the extension gave as a C string, so without a NUL. Not checked: it may be no UTF-8.
  virtual void OnMessage(std::string_view text) = 0;
  virtual void OnBinaryMessage(std::string_view bytes) = 0;
};

}  // namespace orvane::extensions
