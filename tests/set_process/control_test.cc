// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What people and tools may send to any method of the set.
#include <map>

#include "driver.h"

namespace orvane::television {
namespace {

using testing::HasSubstr;

// Every method, with parameters that it takes.
const std::map<std::string, std::string>& Methods() {
  static const auto* const methods = new std::map<std::string, std::string>{
      {"applications.focus", R"({"id":"aBcDe01234.App"})"},
      {"applications.install", R"({"folder":")" EXAMPLES R"(/tour","wgt":null})"},
      {"applications.launch", R"({"id":"aBcDe01234.App"})"},
      {"applications.setState", R"({"id":"aBcDe01234.App","state":1})"},
      {"applications.terminate", R"({"id":"aBcDe01234.App"})"},
      {"clock.advance", R"({"ms":5})"},
      {"factoryReset", "{}"},
      {"debug.log", R"({"priority":4,"tag":"T","text":"x","count":1})"},
      {"faults.clear", R"({"function":"dlog_print"})"},
      {"faults.set", R"({"function":"dlog_print","code":-1,"mode":"once"})"},
      {"features.remove", R"({"key":"a.b/c"})"},
      {"features.set", R"({"key":"a.b/c","type":"int","text":"1","group":"custom"})"},
      {"inputMethod.setDynamic", R"({"dynamic":true})"},
      {"keys.press", R"({"name":"Left","long":false,"native":false})"},
      {"markers.list", "{}"},
      {"profile.use", R"({"profile":"uhd"})"},
      {"screenSaver.activity", "{}"},
      {"settings.set", R"({"key":"db/a","type":"string","value":"x"})"},
      {"settings.unset", R"({"key":"db/a"})"},
      {"stat.read", R"({"resource":"MEMORY"})"},
      {"state.get", "{}"},
  };
  return *methods;
}

std::vector<Json> OddValues() {
  return {nullptr,
          true,
          0,
          -1,
          0.5,
          1e300,
          -1e300,
          9007199254740994,
          "",
          "x",
          "../../x",
          std::string("a\0b", 3),
          "\xc3\xa4\xe2\x82\xac\n",
          std::string(100000, 'y'),
          "db/" + std::string(5000, 'z'),
          Json::array({1, "2"}),
          Json{{"a", Json::object()}}};
}

class ControlTest : public SetProcessTest {
 protected:
  ControlTest() { Start(); }

  // The error's text; empty when there is none. What no frame holds as an answer is an error too.
  std::string Try(const std::string& method, const Json& parameters) {
    const Json answer = Call({{"op", "control"}, {"method", method}, {"params", parameters}});
    return answer.contains("error") ? answer.at("error").get<std::string>() : "";
  }
};

TEST_F(ControlTest, AnswersEveryOddValueOfEveryParameter) {
  for (const auto& [method, text] : Methods()) {
    const Json usual = base::ParseJson(text);
    for (const auto& [name, ignored] : usual.items()) {
      for (const Json& odd : OddValues()) {
        Json parameters = usual;
        parameters[name] = odd;
        const std::string error = Try(method, parameters);
        EXPECT_LT(error.size(), 1500U) << method << " " << name;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
      }
    }
  }
  EXPECT_EQ(Orvane(7, "getVersion").at("result"), "3.9");
}

TEST_F(ControlTest, RefusesEachMethodsMissingParametersInASentence) {
  for (const auto& [method, text] : Methods()) {
    const std::string error = Try(method, {});
    if (error.empty()) continue;
    EXPECT_THAT(error, HasSubstr("has to be")) << method;
    EXPECT_THAT(error, HasSubstr(", but is not given.")) << method;
  }
}

TEST_F(ControlTest, RefusesAParameterThatTheMethodHasNot) {
  for (const auto& [method, text] : Methods()) {
    Json parameters = base::ParseJson(text);
    parameters["colour"] = 1;
    EXPECT_THAT(
        Try(method, parameters),
        HasSubstr("There is no \"colour\" among the parameters of " + method + "; there is "));
  }
  EXPECT_THAT(ControlError("keys.press", R"({"nam":"Left"})"), HasSubstr("Did you mean \"name\"?"));
  EXPECT_THAT(ControlError("factoryReset", R"({"key":"db/a"})"), HasSubstr("there is none."));
}

TEST_F(ControlTest, RefusesAMethodThatIsNone) {
  EXPECT_THAT(ControlError("keys.pres"), HasSubstr("Did you mean \"keys.press\"?"));
  EXPECT_LT(ControlError(std::string(100000, 'm')).size(), 200U);
}

TEST_F(ControlTest, TakesItsParametersAsAnObjectOnly) {
  for (const char* parameters : {"[]", "5", "\"x\"", "true"}) {
    EXPECT_THAT(ControlError("state.get", parameters), HasSubstr("has to be a JSON object"));
  }
}

}  // namespace
}  // namespace orvane::television
