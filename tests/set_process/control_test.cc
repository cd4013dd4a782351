// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What people and tools may send to any method of the set.
#include <map>

#include "driver.h"

namespace orvane::television {
namespace {

using picojson::object;
using picojson::value;
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
      {"faults.clear", R"({"function":"dlog_print"})"},
      {"faults.set", R"({"function":"dlog_print","code":-1,"mode":"once"})"},
      {"features.remove", R"({"key":"a.b/c"})"},
      {"features.set", R"({"key":"a.b/c","type":"int","text":"1","group":"custom"})"},
      {"functions.list", "{}"},
      {"inputMethod.setDynamic", R"({"dynamic":true})"},
      {"keys.press", R"({"name":"Left","long":false,"native":false})"},
      {"log.tail", R"({"count":3,"level":"D","tag":"x"})"},
      {"log.write", R"({"priority":"I","tag":"T","text":"x","count":1})"},
      {"markers.list", "{}"},
      {"profile.use", R"({"profile":"uhd"})"},
      {"screenSaver.activity", "{}"},
      {"settings.get", R"({"key":"db/a"})"},
      {"settings.list", "{}"},
      {"settings.set", R"({"key":"db/a","type":"string","value":"x"})"},
      {"settings.unset", R"({"key":"db/a"})"},
      {"stat.read", R"({"resource":"MEMORY"})"},
      {"state.get", "{}"},
  };
  return *methods;
}

std::vector<value> OddValues() {
  return {value(),
          value(true),
          value(0.0),
          value(-1.0),
          value(0.5),
          value(1e300),
          value(-1e300),
          value(9007199254740994.0),
          value(""),
          value("x"),
          value("../../x"),
          value(std::string("a\0b", 3)),
          value("\xc3\xa4\xe2\x82\xac\n"),
          value(std::string(100000, 'y')),
          value("db/" + std::string(5000, 'z')),
          value(picojson::array{value(1.0), value("2")}),
          value(object{{"a", value(object())}})};
}

class ControlTest : public SetProcessTest {
 protected:
  ControlTest() { Start(); }

  // The error's text; empty when there is none. What no frame holds as an answer is an error too.
  std::string Try(const std::string& method, const object& parameters) {
    const value answer =
        Call({{"op", value("control")}, {"method", value(method)}, {"params", value(parameters)}});
    return answer.contains("error") ? answer.get("error").to_str() : "";
  }
};

TEST_F(ControlTest, AnswersEveryOddValueOfEveryParameter) {
  for (const auto& [method, text] : Methods()) {
    const object usual = Json(text).get<object>();
    for (const auto& [name, ignored] : usual) {
      for (const value& odd : OddValues()) {
        object parameters = usual;
        parameters[name] = odd;
        const std::string error = Try(method, parameters);
        EXPECT_LT(error.size(), 1500U) << method << " " << name;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
      }
    }
  }
  EXPECT_EQ(Orvane(7, "getVersion").get("result").to_str(), "3.9");
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
    object parameters = Json(text).get<object>();
    parameters["colour"] = value(1.0);
    EXPECT_THAT(
        Try(method, parameters),
        HasSubstr("There is no \"colour\" among the parameters of " + method + "; there is "));
  }
  EXPECT_THAT(ControlError("keys.press", R"({"nam":"Left"})"), HasSubstr("Did you mean \"name\"?"));
  EXPECT_THAT(ControlError("settings.list", R"({"key":"db/a"})"), HasSubstr("there is none."));
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
