// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "../support/temporary_folder.h"
#include "tvset/set.h"

namespace tvset::testing {

using orvane::test::TemporaryFolder;

// A running UHD set on a state folder of its own.
class SetTest : public ::testing::Test {
 protected:
  SetTest() { StartSet(); }
  ~SetTest() override { Set::Stop(); }

  // Also restarts it on the same folder.
  void StartSet(const std::string& profile = "uhd") {
    Set::Start(Options{state_folder_.path() / "state", profile});
  }

  static Set& set() { return Set::Current(); }
  std::filesystem::path folder() const { return state_folder_.path(); }

  // An application that is installed; its package is the id's part before the first dot.
  static Application Install(const std::string& id) {
    Application application;
    application.id = id;
    application.package = id.substr(0, id.find('.'));
    application.name = id;
    set().applications().Install(application);
    return application;
  }

  // One that runs as this process.
  static Application Launch(const std::string& id) {
    Application application = Install(id);
    set().applications().Launch(id, getpid());
    return application;
  }

  static bool LogHas(const std::string& text) {
    for (const LogLine& line : set().log().lines()) {
      if (line.text.find(text) != std::string::npos) return true;
    }
    return false;
  }

 private:
  TemporaryFolder state_folder_;
};

}  // namespace tvset::testing
