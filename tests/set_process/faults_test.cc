// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

class FaultsTest : public SetProcessTest {
 protected:
  FaultsTest() { Start(); }
  std::string AskForSource() {
    return Orvane(7, "requestTvContextTask", R"({"target":0,"action":0})")
        .at("status")
        .get<std::string>();
  }
};

constexpr char kFunction[] = R"({"function":"app_context_manager_request_task","code":-5)";

TEST_F(FaultsTest, FailsTheNextCallOnly) {
  Control("faults.set", std::string(kFunction) + R"(,"mode":"once"})");
  EXPECT_EQ(AskForSource(), "error");
  EXPECT_EQ(AskForSource(), "success");
}

TEST_F(FaultsTest, FailsEveryCallUntilItIsCleared) {
  Control("faults.set", std::string(kFunction) + R"(,"mode":"always"})");
  EXPECT_EQ(AskForSource(), "error");
  EXPECT_EQ(AskForSource(), "error");
  EXPECT_EQ(State("faults").at(0).at("hits"), 2);
  Control("faults.clear", R"({"function":"app_context_manager_request_task"})");
  EXPECT_EQ(AskForSource(), "success");
}

TEST_F(FaultsTest, TellsThatAFaultWasTaken) {
  Control("faults.set", std::string(kFunction) + R"(,"mode":"once"})");
  EXPECT_EQ(WaitForEvent("changed").dump(),
            R"({"key":"app_context_manager_request_task","part":"faults","value":{"code":-5,)"
            R"("function":"app_context_manager_request_task","hits":0,"mode":"once"}})");
  AskForSource();
  EXPECT_EQ(WaitForEvent("changed").dump(),
            R"({"key":"app_context_manager_request_task","part":"faults","value":null})");
}

TEST_F(FaultsTest, ClearsAllWhenNoFunctionIsNamed) {
  Control("faults.set", R"({"function":"dlog_print","code":-1})");
  Control("faults.set", R"({"function":"vconf_set_str","code":-1})");
  Control("faults.clear");
  EXPECT_TRUE(State("faults").empty());
}

TEST_F(FaultsTest, RefusesWhatNoFunctionIs) {
  EXPECT_THAT(ControlError("faults.set", R"({"function":"dlog_prin","code":-1})"),
              HasSubstr("did you mean __dlog_print, dlog_print?"));
  EXPECT_THAT(ControlError("faults.set", R"({"function":"dlog_print","code":0})"),
              HasSubstr("code 0 is success"));
  EXPECT_THAT(ControlError("faults.set", R"({"function":"dlog_print","code":1e12})"),
              HasSubstr("\"code\""));
  EXPECT_THAT(ControlError("faults.set", R"({"function":"dlog_print","code":1,"mode":"often"})"),
              HasSubstr(R"("once" or "always")"));
}

TEST_F(FaultsTest, ListsWhatCanFail) {
  EXPECT_GT(State("functions").size(), 20U);
  EXPECT_THAT(State("functions"), testing::Contains("vconf_set_str"));
  EXPECT_THAT(State("accesses"), testing::Contains("file:qm_memstat"));
}

}  // namespace
}  // namespace orvane::television
