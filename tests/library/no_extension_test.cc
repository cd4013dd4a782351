// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/create_extension.h"
#include "fake_host.h"
#include "set_fixture.h"

// The glue of the library in front of a maker that makes nothing.
common::Extension* CreateExtension() { return nullptr; }

namespace orvane::test {
namespace {

class LogLinesWithoutAnExtension : public SetFixture {
 protected:
  FakeHost host_;
};

TEST_F(LogLinesWithoutAnExtension, Initialization) {
  EXPECT_EQ(host_.Initialize(XW_Initialize), XW_ERROR);
  ExpectLog(DLOG_ERROR, "WEBAPI_PLUGINS",
            "XW_Extension.cc: XW_Initialize(40) > Can't initialize extension: CreateExtension() "
            "returned NULL.");
  ExpectLog(DLOG_DEBUG, "WEBAPI_PLUGINS",
            "logger.h: ~ScopeLogger(288) > XW_Extension.cc: XW_Initialize > Exit");
}

TEST_F(LogLinesWithoutAnExtension, ShutdownAfterAFailedInitialization) {
  host_.Initialize(XW_Initialize);
  host_.ShutDown();
  ExpectLog(DLOG_ERROR, "WEBAPI_PLUGINS",
            "XW_Extension.cc: OnShutdown(61) > Extension::Detail::OnShutdown Delete extension - "
            "(nil)");
}

}  // namespace
}  // namespace orvane::test
