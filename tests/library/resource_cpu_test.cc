// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include <unistd.h>

#include <stdexcept>

#include "orvane/orvane_resource.h"
#include "set_fixture.h"
#include "system_fakes.h"

namespace orvane::test {
namespace {

using extension::orvane::OrvaneResource;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kPrefix = " orvane_resource.cc ";

std::string Processors(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += "processor\t: " + std::to_string(i) + "\nmodel name\t: a processor of some kind\n\n";
  }
  return text;
}

class CpuTest : public SetFixture {
 protected:
  CpuTest() {
    SetCpuInfo(Processors(4));
    system_.SetCommandOutput("250\n");
    system_.SetPid(1234);
  }

  void SetCpuInfo(const std::string& text) {
    system_.RedirectFile("/proc/cpuinfo", WriteFile("cpuinfo", text));
  }
  void RemoveCpuInfo() { system_.RedirectFile("/proc/cpuinfo", folder() / "no file"); }

  static int Cores() { return OrvaneResource().getNumberOfCpuCore(); }
  static int Usage() { return OrvaneResource().getCpuConsumption(); }
  int UsageFor(const std::string& output) {
    system_.SetCommandOutput(output);
    ClearLog();
    return Usage();
  }

  const std::string command_ = "/usr/bin/top -b -n 1 -p 1234 | grep 1234 | awk '{print $7}'";
  SystemFakes system_;
};

TEST_F(CpuTest, CountsLinesThatBeginWithTheWord) {
  SetCpuInfo("processor : 0\n processor : 1\nthe processor\nprocessors too\nProcessor\nprocessor");
  EXPECT_EQ(Cores(), 3);
  EXPECT_THAT(Messages(), ElementsAre("D" + kPrefix + "getNumberOfCpuCore: CPU Core info [3]"));
}

TEST_F(CpuTest, CountsUpTo127Processors) {
  SetCpuInfo(Processors(127));
  EXPECT_EQ(Cores(), 127);
}

TEST_F(CpuTest, Gives0From128ProcessorsOn) {
  for (const int count : {128, 129, 500}) {
    SetCpuInfo(Processors(count));
    ClearLog();
    EXPECT_EQ(Cores(), 0) << count;
    EXPECT_THAT(Messages(), ElementsAre("E" + kPrefix +
                                        "getNumberOfCpuCore: Cpu count is greater than max "
                                        "cpu core, returning 0."));
  }
}

TEST_F(CpuTest, Gives0ForAFileWithoutProcessors) {
  SetCpuInfo("");
  EXPECT_EQ(Cores(), 0);
  EXPECT_THAT(Messages(), ElementsAre("D" + kPrefix + "getNumberOfCpuCore: CPU Core info [0]"));
}

TEST_F(CpuTest, Gives0ProcessorsWithoutTheFile) {
  RemoveCpuInfo();
  EXPECT_EQ(Cores(), 0);
  EXPECT_THAT(Messages(), ElementsAre("E" + kPrefix +
                                      "getNumberOfCpuCore: Failed to retrieve number of CPUs."));
}

TEST_F(CpuTest, DividesTheCommandsFigureByTheProcessors) {
  EXPECT_EQ(Usage(), 62);
  EXPECT_THAT(system_.commands(), ElementsAre(command_));
  EXPECT_EQ(system_.open_pipes(), 0);
  EXPECT_THAT(
      Messages(),
      ElementsAre(
          "D" + kPrefix + "getCpuConsumption: Getting CPU consumption for pid[1234]",
          "D" + kPrefix + "getNumberOfCpuCore: CPU Core info [4]",
          "I" + kPrefix + "getCpuConsumption: CPU Usage Data collected for pid[1234]: [62]"));
}

TEST_F(CpuTest, DropsFractions) {
  EXPECT_EQ(UsageFor("  12.9\n"), 3);
  EXPECT_EQ(UsageFor("+400"), 100);
  EXPECT_EQ(UsageFor("-9\n"), -2);
}

TEST_F(CpuTest, RaisesAnIdleProcessTo1) {
  for (const char* output : {"3.9\n", "0.0\n", "0", "-3"}) {
    EXPECT_EQ(UsageFor(output), 1) << output;
    EXPECT_THAT(Messages()[2],
                "E" + kPrefix +
                    "getCpuConsumption: There was a problem encountered while getting "
                    "CPU Usage, returning 1.");
    EXPECT_THAT(Messages()[3],
                "I" + kPrefix + "getCpuConsumption: CPU Usage Data collected for pid[1234]: [1]");
  }
}

TEST_F(CpuTest, ReadsTheFirstLineAlone) { EXPECT_EQ(UsageFor("40\n80\n"), 10); }

TEST_F(CpuTest, CutsALongLineAt31Characters) {
  EXPECT_EQ(UsageFor(std::string(30, ' ') + "87654321\n"), 2);
  EXPECT_EQ(UsageFor(std::string(28, '0') + "400999999999\n"), 100);
}

TEST_F(CpuTest, DoesNotRunTheCommandWithoutProcessors) {
  RemoveCpuInfo();
  EXPECT_EQ(Usage(), 0);
  EXPECT_THAT(system_.commands(), IsEmpty());
  EXPECT_THAT(Messages()[2],
              "E" + kPrefix + "getCpuConsumption: Failed to get number of CPU core.");
}

TEST_F(CpuTest, Gives0WhenTheCommandCannotBeStarted) {
  system_.FailCommands();
  EXPECT_EQ(Usage(), 0);
  EXPECT_EQ(Messages().back(),
            "E orvane_pipewrapper.cc PipeWrapper: Failed to execute command: " + command_);
}

TEST_F(CpuTest, Gives0WhenTheCommandPrintsNothing) {
  EXPECT_EQ(UsageFor(""), 0);
  EXPECT_EQ(Messages().back(),
            "E" + kPrefix + "getCpuConsumption: Failed to get result from command: " + command_);
  EXPECT_EQ(system_.open_pipes(), 0);
}

TEST_F(CpuTest, Gives0WhenTheCommandPrintsNoNumber) {
  for (const char* output : {"\n", "%CPU\n", "-\n", ".5\n"}) {
    EXPECT_EQ(UsageFor(output), 0) << output;
    EXPECT_EQ(Messages().back(), "E" + kPrefix + "getCpuConsumption: Failed to get CPU usage.");
  }
}

TEST_F(CpuTest, ThrowsForANumberBeyond32Bits) {
  for (const char* output : {"2147483648\n", "-2147483649\n", "99999999999999999999\n"}) {
    EXPECT_THROW(UsageFor(output), std::out_of_range) << output;
    EXPECT_EQ(system_.open_pipes(), 0);
  }
  EXPECT_EQ(UsageFor("2147483647\n"), 536870911);
}

TEST_F(CpuTest, DescribesTheProcessInWhichItWasMade) {
  OrvaneResource resource;
  system_.SetPid(77);
  resource.getCpuConsumption();
  EXPECT_THAT(system_.commands(), ElementsAre(command_));
}

}  // namespace
}  // namespace orvane::test
