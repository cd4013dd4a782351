// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the command finds beside itself.
#include <filesystem>
#include <string>

#include "command.h"

namespace orvane::cli {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// The command in a folder of its own, with a file of a device's keys.
class ShippedPartsTest : public CommandTest {
 protected:
  ShippedPartsTest() {
    fs::create_directories(folder() / "bin");
    fs::copy_file(ORVANE_COMMAND, folder() / "bin/orvane");
    fs::create_directories(folder() / "lib");
    const fs::path libraries = fs::path(ORVANE_EXTENSION).parent_path();
    fs::create_symlink(libraries / "libtvset.so", folder() / "lib/libtvset.so");
    UseCommand(folder() / "bin/orvane");
  }

  Outcome CallWithKeys(const std::string& device_keys) const {
    Write("share/orvane/device_keys.json", device_keys);
    return Run({"call", "--extension", ORVANE_EXTENSION, "getVersion"});
  }
};

std::string Repeated(size_t count, const std::string& text) {
  std::string repeated;
  for (size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

TEST_F(ShippedPartsTest, RefusesADamagedFileOfTheDevicesKeys) {
  for (const std::string& damaged :
       {std::string("no JSON"), std::string(R"([{"name":"Red"}])"), std::string("{}"),
        Repeated(100000, R"({"a":)") + "1" + Repeated(100000, "}")}) {
    const Outcome outcome = CallWithKeys(damaged);
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_THAT(outcome.err, HasSubstr("the file of the device's keys is damaged"));
  }
  EXPECT_EQ(CallWithKeys("[]").exit_code, 0);
}

TEST_F(ShippedPartsTest, SaysThatTheLibraryIsMissing) {
  const Outcome outcome = Run({"call", "getVersion"});
  EXPECT_EQ(outcome.exit_code, 2);
  EXPECT_THAT(outcome.err, HasSubstr("liborvane.so is not where it belongs"));
}

}  // namespace
}  // namespace orvane::cli
