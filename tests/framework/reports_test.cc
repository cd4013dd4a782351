// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <unistd.h>

#include "common/tools.h"
#include "set_fixture.h"

namespace orvane::test {
namespace {

using common::ErrorCode;
using common::PlatformException;
using common::PlatformResult;
using common::TypeMismatchException;

constexpr char kPrivilege[] = "http://tizen.org/privilege/internal/default/platform";

std::string Text(const picojson::object& out) { return picojson::value(out).serialize(); }

std::string ErrorText(const PlatformResult& result) {
  picojson::object out;
  common::tools::ReportError(result, out);
  return Text(out);
}

TEST(Reports, SuccessHasAStatusAndAValueIfThereIsOne) {
  picojson::object out;
  common::tools::ReportSuccess(out);
  EXPECT_EQ(Text(out), R"({"status":"success"})");

  common::tools::ReportSuccess(picojson::value(), out);
  EXPECT_EQ(Text(out), R"({"result":null,"status":"success"})");
}

TEST(Reports, ErrorHasCodeNameAndMessage) {
  EXPECT_EQ(ErrorText(PlatformResult(ErrorCode::NOT_SUPPORTED_ERR, "not here")),
            R"({"error":{"code":9,"message":"not here","name":"NotSupportedError"},)"
            R"("status":"error"})");
  EXPECT_EQ(ErrorText(PlatformResult(ErrorCode::UNKNOWN_ERR, "lost")),
            R"({"error":{"code":9999,"message":"lost","name":"UnknownError"},"status":"error"})");
  EXPECT_EQ(ErrorText(PlatformResult(ErrorCode::SECURITY_ERR)),
            R"({"error":{"code":18,"message":"","name":"SecurityError"},"status":"error"})");
}

TEST(Reports, ExceptionGivesItsOwnName) {
  picojson::object out;
  common::tools::ReportError(TypeMismatchException("label is required argument"), out);
  EXPECT_EQ(Text(out), R"({"error":{"code":17,"message":"label is required argument",)"
                       R"("name":"TypeMismatchError"},"status":"error"})");

  common::tools::ReportError(PlatformException(ErrorCode::UNKNOWN_ERR, "OddError", "odd"), out);
  EXPECT_EQ(Text(out),
            R"({"error":{"code":9999,"message":"odd","name":"OddError"},"status":"error"})");
}

TEST(Reports, LaterReportReplacesAnEarlierOne) {
  picojson::object out{{"callbackId", picojson::value(1.0)}};
  common::tools::ReportSuccess(picojson::value(true), out);
  common::tools::ReportError(PlatformResult(ErrorCode::UNKNOWN_ERR, "lost"), out);
  EXPECT_EQ(out.count("result"), 0U);

  common::tools::ReportSuccess(out);
  EXPECT_EQ(Text(out), R"({"callbackId":1,"status":"success"})");
}

TEST(Reports, EveryCodeHasAName) {
  EXPECT_STREQ(common::ErrorName(ErrorCode::NO_ERROR), "NoError");
  EXPECT_STREQ(common::ErrorName(ErrorCode::NOT_SUPPORTED_ERR), "NotSupportedError");
  EXPECT_STREQ(common::ErrorName(ErrorCode::TYPE_MISMATCH_ERR), "TypeMismatchError");
  EXPECT_STREQ(common::ErrorName(ErrorCode::SECURITY_ERR), "SecurityError");
  EXPECT_STREQ(common::ErrorName(ErrorCode::UNKNOWN_ERR), "UnknownError");
  EXPECT_STREQ(common::ErrorName(static_cast<ErrorCode>(1)), "UnknownError");
}

TEST(PlatformResult, IsASuccessUnlessItHasACode) {
  EXPECT_TRUE(PlatformResult().IsSuccess());
  EXPECT_FALSE(PlatformResult().IsError());
  EXPECT_TRUE(static_cast<bool>(PlatformResult()));
  EXPECT_TRUE(PlatformResult(ErrorCode::UNKNOWN_ERR).IsError());
  EXPECT_FALSE(static_cast<bool>(PlatformResult(ErrorCode::UNKNOWN_ERR)));
}

TEST(PlatformException, IsAStandardException) {
  const TypeMismatchException exception("state is required argument");
  EXPECT_STREQ(exception.what(), "state is required argument");
  EXPECT_EQ(exception.message(), "state is required argument");
  EXPECT_EQ(exception.name(), "TypeMismatchError");
  EXPECT_EQ(exception.code(), ErrorCode::TYPE_MISMATCH_ERR);
}

class CheckAccessTest : public SetFixture {
 protected:
  void ExpectRefused() {
    const PlatformResult result = common::tools::CheckAccess(kPrivilege);
    EXPECT_EQ(result.error_code(), ErrorCode::SECURITY_ERR);
    EXPECT_EQ(result.message(), "Permission denied");
  }
};

TEST_F(CheckAccessTest, GrantsWhatTheApplicationDeclares) {
  Declare({}, {kPrivilege});
  EXPECT_TRUE(common::tools::CheckAccess(kPrivilege).IsSuccess());
}

TEST_F(CheckAccessTest, RefusesWhatTheApplicationDoesNotDeclare) {
  Declare({}, {"http://tizen.org/privilege/internet"});
  ExpectRefused();
}

TEST_F(CheckAccessTest, AsksEachTime) {
  ExpectRefused();
  Declare({}, {kPrivilege});
  EXPECT_TRUE(common::tools::CheckAccess(kPrivilege).IsSuccess());
}

TEST_F(CheckAccessTest, RefusesAProcessThatIsNoApplication) {
  set().applications().Uninstall(kApp);
  ExpectRefused();
}

TEST_F(CheckAccessTest, RefusesWhenThePlatformCannotTell) {
  Declare({}, {kPrivilege});
  Fail("aul_app_get_appid_bypid");
  ExpectRefused();
  set().faults().ClearAll();
  Fail("privilege_check_application", -3);
  ExpectRefused();
}

}  // namespace
}  // namespace orvane::test
