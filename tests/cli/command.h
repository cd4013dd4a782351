// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvane::cli {

// What one run of the real command gave.
struct Outcome {
  int exit_code = -1;  // 128 and the signal's number when a signal ended it
  std::string out;
  std::string err;
};

// Runs the command with a state folder of the test's own, in a folder for the test's scripts.
class CommandTest : public ::testing::Test {
 protected:
  CommandTest();
  ~CommandTest() override;

  Outcome Run(const std::vector<std::string>& arguments, const std::string& input = "",
              const std::vector<std::string>& environment = {}) const;

  // Writes a script, or another file, and returns its name, which is relative to the folder that
  // the command runs in.
  std::string Write(const std::string& name, const std::string& text) const;
  // An application's folder with these elements in its config.xml.
  std::string WriteApplication(const std::string& elements) const;

  // Runs this copy of the command from now on.
  void UseCommand(const std::filesystem::path& command) { command_ = command.string(); }

  std::filesystem::path folder() const { return root_ / "work"; }
  std::filesystem::path state() const { return root_ / "state"; }

 private:
  std::filesystem::path root_;
  std::string command_ = ORVANE_COMMAND;
};

std::string ReadText(const std::filesystem::path& file);

}  // namespace orvane::cli
