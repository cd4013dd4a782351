// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "set_fixture.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <regex>

#include "tvset/log_format.h"

namespace orvane::test {

namespace {

tvset::Application TestApplication() {
  tvset::Application application;
  application.id = kApp;
  application.package = kPackage;
  application.name = "Player";
  return application;
}

}  // namespace

SetFixture::SetFixture() {
  tvset::Set::Start({folder() / "state", "uhd"});
  set().applications().Install(TestApplication());
  set().applications().Launch(kApp, getpid());
  ClearLog();
}

SetFixture::~SetFixture() {
  set().faults().ClearAll();
  EXPECT_EQ(set().open_app_contexts(), 0U);
  EXPECT_EQ(set().open_package_handles(), 0U);
  tvset::Set::Stop();
}

void SetFixture::Declare(const Metadata& metadata, const std::vector<std::string>& privileges) {
  tvset::Application application = TestApplication();
  application.metadata = metadata;
  application.privileges = privileges;
  set().applications().Install(application);
}

std::filesystem::path SetFixture::WriteFile(const std::string& name, const std::string& text) {
  std::filesystem::path path = folder() / name;
  std::ofstream(path) << text;
  return path;
}

void SetFixture::ExpectLog(log_priority priority, const std::string& tag, const std::string& text) {
  std::string lines;
  for (const tvset::LogLine& line : set().log().lines()) {
    if (line.log_id == LOG_ID_MAIN && line.priority == priority && line.tag == tag &&
        line.text == text) {
      return;
    }
    lines += "\n  " + std::to_string(line.priority) + " " + line.tag + " " + line.text;
  }
  ADD_FAILURE() << "no line \"" << text << "\" with priority " << priority << " and tag " << tag
                << " in the log:" << lines;
}

std::vector<std::string> SetFixture::Messages() {
  static const std::regex kLine(R"(([\w.-]+): ([~\w()]+)\(\d+\) > ([^]*))");
  std::vector<std::string> messages;
  for (const tvset::LogLine& line : set().log().lines()) {
    std::smatch parts;
    if (line.tag == "QM_WEBAPI" && std::regex_match(line.text, parts, kLine)) {
      messages.push_back(std::string(1, tvset::PriorityLetter(line.priority)) + " " + parts.str(1) +
                         " " + parts.str(2) + ": " + parts.str(3));
    }
  }
  return messages;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace orvane::test
