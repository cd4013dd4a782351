// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "common/json.h"
#include "fake_host.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {

// The library between a fake host and a simulated set, with one page's instance.
class LibraryFixture : public SetFixture {
 protected:
  LibraryFixture();
  ~LibraryFixture() override;

  // The synchronous reply to the message that the script would send for the method.
  picojson::value Call(const std::string& method, const std::string& arguments = "{}");

  void ExpectSuccess(const std::string& method, const std::string& arguments,
                     const std::string& result_json);
  void ExpectError(const std::string& method, const std::string& arguments, int code,
                   const std::string& name, const std::string& message);
  void ExpectUnknownError(const std::string& method, const std::string& arguments,
                          const std::string& message) {
    ExpectError(method, arguments, 9999, "UnknownError", message);
  }

  // Sends an asynchronous call, which must be accepted.
  void Start(const std::string& method, const std::string& arguments);
  // The next posted reply, as compact JSON.
  std::string AwaitReply() { return host_.AwaitPost(instance_); }

  // Waits until the worker has finalised every task.
  static void AwaitIdleWorker();

  void CloseInstance();

  SystemFakes system_;
  FakeHost host_;
  XW_Instance instance_ = 0;
};

}  // namespace orvane::test
