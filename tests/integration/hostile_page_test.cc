// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Pages that change what every script shares, to have something sent that a method refuses. The
// library ends the process when a message holds a value of the wrong type, so these tests fail by
// crashing.

#include <string>

#include <gmock/gmock.h>

#include "page_world.h"

namespace orvane::test {
namespace {

using ::testing::StartsWith;

class HostilePage : public PageWorldTest {
 protected:
  // The value of `call` as JSON after `change`, or the exception after "threw ".
  std::string After(const std::string& change, const std::string& call) {
    const auto page = MakePage();
    EXPECT_FALSE(page->Evaluate(change, "hostile.js"));
    const Evaluation evaluation = EvaluateToJson(*page, call, "call.js");
    return evaluation.error ? "threw " + evaluation.error->message : evaluation.json;
  }

  // Calls whose arguments are of the wrong type for the native side.
  void ExpectStillRefused(const std::string& change) {
    for (const char* call :
         {"requestTvContextTask('x', 'x')", "requestTvContextTask()", "getAppState(5)",
          "getSystemStat(5, () => {})", "getSystemStat(undefined, () => {})", "setScreenSaver('x')",
          "setScreenSaver()", "recordProfiling(5)", "recordProfiling()"}) {
      EXPECT_THAT(After(change, std::string("dravelt.orvane.") + call),
                  StartsWith("threw TypeMismatchError: "))
          << change << "\n"
          << call;
    }
  }

  // Calls that must reach the native side as the script wrote them.
  void ExpectWorks(const std::string& change) {
    EXPECT_EQ(After(change, "dravelt.orvane.requestTvContextTask(0, 0)"), "true") << change;
    EXPECT_EQ(After(change, "dravelt.orvane.generateKey('VolumeUp')"), "") << change;
    EXPECT_EQ(After(change, "dravelt.orvane.getAppState('')"), "\"FOREGROUND\"") << change;
  }
};

TEST_F(HostilePage, CannotWidenTheValidatorThroughTheEnginesFunctions) {
  ExpectStillRefused("Array.prototype.indexOf = () => 0; Array.prototype.includes = () => true;");
  ExpectStillRefused("Object.values = Object.keys = () => ['x'];");
  ExpectStillRefused(
      "Number.isFinite = Number.isInteger = Array.isArray = Object.hasOwn = () => true;");
}

TEST_F(HostilePage, CannotWidenTheValidatorThroughTheSharedPrototype) {
  ExpectStillRefused("Object.prototype.optional = Object.prototype.nullable = true;");
  ExpectStillRefused("Object.prototype[0] = Object.prototype[1] = 0;");
  ExpectStillRefused("Object.prototype.validator = { Types: {}, validateArgsStrict() {} };");
}

TEST_F(HostilePage, CannotReplaceTheValidatorOfTheScript) {
  ExpectStillRefused("xwalk.utils.validator.validateArgsStrict = () => {};");
  ExpectStillRefused(
      "Object.defineProperty(xwalk.utils, 'validator',"
      " { value: { Types: {}, validateArgsStrict() {} } });");
  ExpectStillRefused("xwalk = { utils: { validator: { Types: {}, validateArgsStrict() {} } } };");
}

TEST_F(HostilePage, CannotRewriteAMessage) {
  ExpectWorks("JSON.stringify = () => '{\"cmd\":\"OrvaneManager_getAppState\",\"args\":{}}';");
  ExpectWorks("Object.prototype.toJSON = function () { return { cmd: this.cmd, args: {} }; };");
  ExpectWorks("Object.defineProperty(Object.prototype, 'toJSON', { get: () => () => 'x' });");
  ExpectWorks("Number = () => 'x'; Number.isFinite = () => true;");
  ExpectWorks("xwalk.utils.converter.toDouble = () => 'x';");
}

TEST_F(HostilePage, CannotReachTheExtensionObject) {
  const std::string attack =
      "var stolen = [];"
      "const steal = (value) => { if (value && (value.internal || value.sendSyncMessage)) "
      "stolen.push(value); };"
      "const { call } = Function.prototype; const { apply } = Reflect;"
      "Function.prototype.call = function (self, ...rest) "
      "{ steal(self); return apply(this, self, rest); };"
      "for (const name of ['extension_', 'send_', 'callbacks_', 'listeners_', 'native'])"
      "  Object.defineProperty(Object.prototype, name,"
      "    { set(value) { steal(value); steal(this); }, configurable: true });"
      "const page = xwalk.utils.NativeManager;"
      "page.prototype.callSync = function () { stolen.push(this); };";
  EXPECT_EQ(After(attack, "dravelt.orvane.getVersion(); stolen.length"), "0");
}

TEST_F(HostilePage, GetsItsConsoleAndTheLibraryWhateverDescriptorsInherit) {
  EXPECT_EQ(After("Object.prototype.get = Object.prototype.value = () => 1;",
                  "console.log(''); dravelt.orvane.getVersion()"),
            "\"3.9\"");
}

}  // namespace
}  // namespace orvane::test
