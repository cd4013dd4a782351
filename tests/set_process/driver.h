// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/frame.h"
#include "base/json.h"
#include "set_process/message_in_hand.h"

namespace orvane::television {

inline constexpr char kOrvane[] = "dravelt.orvane";
inline constexpr char kTester[] = "example.tester";
inline constexpr char kApp[] = "aBcDe01234.App";

// The real set process, with the test in the server's place. Every wait has a bound, after
// which it throws.
class SetProcessTest : public testing::Test {
 protected:
  using Predicate = std::function<bool(const Json& frame)>;

  SetProcessTest();
  ~SetProcessTest() override;

  void Spawn();
  // Spawns it when that is not done, and starts the set with an application that may register keys.
  // `changes` replace members of the options. Gives "started" or "failed".
  Json Start(const Json& changes = Json::object(), const Json& snapshot = Json());
  Json DefaultOptions() const;

  // One request, and its answer's frame.
  Json Call(Json request);
  Json Sync(int context, const std::string& text, const std::string& extension = kOrvane);
  // A native message of the library, and its reply.
  Json Orvane(int context, const std::string& command, const std::string& args = "{}");
  std::string Runtime(const std::string& kind, const std::string& uri, const std::string& text);
  void Post(int context, const std::string& text, const std::string& extension = kOrvane);
  void Close(int context);

  // The result of a control method; the parameters as JSON text. An error fails the test.
  Json Control(const std::string& method, const std::string& parameters = "{}");
  std::string ControlError(const std::string& method, const std::string& parameters = "{}");
  Json State(const std::string& part);
  // Its row in the state; null: there is none.
  Json Setting(const std::string& key);

  void SendFrame(const Json& frame);
  void SendFrame(std::string_view head, std::string_view body);
  void SendRaw(std::string_view bytes);
  // The next frame for which the predicate holds; those before it stay to be asked for.
  Json WaitFor(const Predicate& predicate);
  Json WaitForOp(const std::string& op);
  Json WaitForAnswer(int64_t id);
  // The last message that the process noted before it handled it, when that is one of `what`.
  set_process::HandledMessage WaitForMessage(const std::string& what);
  // The event's data.
  Json WaitForEvent(const std::string& name, const Predicate& of_data = nullptr);
  // Texts of the log lines with that tag, until there are so many.
  std::vector<std::string> WaitForLog(const std::string& tag, size_t count);

  void CloseSocket();
  // Waits for its end: the exit code, or 128 and the signal's number.
  int WaitForExit();
  void Kill();
  pid_t pid() const { return pid_; }
  std::filesystem::path state_folder() const { return folder_ / "state"; }
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::optional<Json> Receive();  // empty: closed

  std::filesystem::path folder_;
  pid_t pid_ = 0;
  int socket_ = -1;
  std::unique_ptr<set_process::MessageInHand> in_hand_;
  int64_t last_id_ = 0;
  base::FrameReader reader_;
  std::list<Json> kept_;  // received and not asked for yet
};

}  // namespace orvane::television
