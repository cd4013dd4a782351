// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "television/runtime_services.h"
#include "tvset/set.h"

namespace orvane::television {

inline constexpr char kApp[] = "aBcDe01234.Player";
inline constexpr char kOtherApp[] = "oThEr01234.Game";
inline constexpr char kKeyPrivilege[] = "http://tizen.org/privilege/tv.inputdevice";

// A set of its own with two applications, of which the first runs in front and may use keys.
class ServicesFixture : public ::testing::Test {
 protected:
  ServicesFixture() {
    std::string name = (std::filesystem::temp_directory_path() / "orvane-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
    state_folder_ = name;
    tvset::Set::Start({state_folder_, "uhd"});
    Install(kOtherApp, {});
    Install(kApp, {kKeyPrivilege});
    set().applications().Launch(kOtherApp, 0);
    set().applications().Launch(kApp, getpid());
  }

  ~ServicesFixture() override {
    tvset::Set::Stop();
    std::error_code ignored;
    std::filesystem::remove_all(state_folder_, ignored);
  }

  tvset::Set& set() { return tvset::Set::Current(); }

  void Install(const std::string& id, const std::vector<std::string>& privileges) {
    tvset::Application application;
    application.id = id;
    application.package = id.substr(0, 10);
    application.privileges = privileges;
    set().applications().Install(application);
  }

  // Sends and checks that it is done, without a word.
  void ExpectDone(const std::string& uri, const std::string& text) {
    EXPECT_EQ(services_.SendSync(uri, text), "success") << text;
    EXPECT_THAT(explanations_, ::testing::IsEmpty());
  }

  // Sends and checks the refusal and the one line that explains it.
  void ExpectRefused(const std::string& uri, const std::string& text, const std::string& reason,
                     const std::string& answer = "error") {
    explanations_.clear();
    EXPECT_EQ(services_.SendSync(uri, text), answer) << text;
    ASSERT_EQ(explanations_.size(), 1U) << text;
    EXPECT_THAT(explanations_[0], ::testing::HasSubstr(reason));
    EXPECT_EQ(explanations_[0].find('\n'), std::string::npos);
  }

  std::filesystem::path state_folder_;
  std::vector<std::string> explanations_;
  RuntimeServices services_{tvset::Set::Current(), kApp,
                            [this](const std::string& line) { explanations_.push_back(line); }};
};

}  // namespace orvane::television
