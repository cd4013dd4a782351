// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "library_fixture.h"

#include <future>

#include "common/task-queue.h"

namespace orvane::test {

namespace {

std::string ErrorReply(int code, const std::string& name, const std::string& message) {
  const picojson::object error{{"code", picojson::value(static_cast<double>(code))},
                               {"name", picojson::value(name)},
                               {"message", picojson::value(message)}};
  return picojson::value(picojson::object{{"status", picojson::value("error")},
                                          {"error", picojson::value(error)}})
      .serialize();
}

}  // namespace

LibraryFixture::LibraryFixture() {
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_OK);
  instance_ = host_.Create();
  ClearLog();
}

LibraryFixture::~LibraryFixture() {
  set().faults().ClearAll();
  CloseInstance();
  host_.ShutDown();
  EXPECT_EQ(system_.open_pipes(), 0);
  EXPECT_EQ(host_.dropped_posts(), 0);
}

picojson::value LibraryFixture::Call(const std::string& method, const std::string& arguments) {
  const std::string reply = host_.SendSync(
      instance_, R"({"cmd":"OrvaneManager_)" + method + R"(","args":)" + arguments + "}");
  picojson::value value;
  EXPECT_EQ(picojson::parse(value, reply), "") << reply;
  return value;
}

void LibraryFixture::ExpectSuccess(const std::string& method, const std::string& arguments,
                                   const std::string& result_json) {
  EXPECT_EQ(Call(method, arguments).serialize(),
            R"({"result":)" + result_json + R"(,"status":"success"})");
}

void LibraryFixture::ExpectError(const std::string& method, const std::string& arguments, int code,
                                 const std::string& name, const std::string& message) {
  EXPECT_EQ(Call(method, arguments).serialize(), ErrorReply(code, name, message));
}

void LibraryFixture::Start(const std::string& method, const std::string& arguments) {
  EXPECT_EQ(Call(method, arguments).serialize(), "{}");
}

void LibraryFixture::AwaitIdleWorker() {
  // The worker runs in order: a job of ours behind the others.
  std::promise<void> done;
  const auto nothing = [](const std::shared_ptr<int>& /*data*/) {};
  common::TaskQueue::GetInstance().Queue<int>(
      nothing, nothing, [&done] { done.set_value(); }, nullptr);
  done.get_future().wait();
}

void LibraryFixture::CloseInstance() {
  if (instance_ != 0) {
    host_.Destroy(instance_);
    instance_ = 0;
  }
}

}  // namespace orvane::test
