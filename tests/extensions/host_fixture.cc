// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "host_fixture.h"

#include <stdlib.h>

#include <chrono>
#include <fstream>

namespace orvane::extensions {
namespace {}  // namespace

void Recorder::OnMessage(std::string_view text) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    messages_.emplace_back(text);
    changed_.notify_all();
  }
  if (on_message) on_message(text);
}

void Recorder::OnBinaryMessage(std::string_view bytes) {
  std::lock_guard<std::mutex> lock(mutex_);
  binary_messages_.emplace_back(bytes);
}

std::vector<std::string> Recorder::messages() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return messages_;
}

std::vector<std::string> Recorder::binary_messages() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return binary_messages_;
}

void Recorder::WaitForMessages(size_t count) {
  std::unique_lock<std::mutex> lock(mutex_);
  const bool came = changed_.wait_for(lock, std::chrono::seconds(10),
                                      [this, count] { return messages_.size() >= count; });
  EXPECT_TRUE(came) << "only " << messages_.size() << " of " << count << " messages came";
}

HostTest::HostTest() : journal_(folder() / "journal.txt") {
  setenv("ORVANE_TEST_JOURNAL", journal_.c_str(), 1);
  options_.app_id = "test.app";
  options_.warn = [this](const std::string& text) {
    std::lock_guard<std::mutex> lock(mutex_);
    warnings_.push_back(text);
  };
}

HostTest::~HostTest() {
  EndHost();
  unsetenv("ORVANE_TEST_JOURNAL");
}

std::filesystem::path HostTest::ExtensionPath(const std::string& name) {
  return std::filesystem::path(TEST_EXTENSION_FOLDER) / ("lib" + name + ".so");
}

ExtensionHost& HostTest::host() {
  if (host_ == nullptr) host_ = std::make_unique<ExtensionHost>(options_);
  return *host_;
}

Extension* HostTest::Load(const std::string& library, const std::string& name) {
  std::string error;
  EXPECT_TRUE(host().LoadFile(ExtensionPath(library), &error)) << error;
  Extension* extension = host().Find(name);
  if (extension == nullptr) throw std::runtime_error("no extension " + name);
  return extension;
}

std::string HostTest::ErrorOfLoading(const std::filesystem::path& library) {
  std::string error;
  EXPECT_FALSE(host().LoadFile(library, &error));
  return error;
}

std::vector<std::string> HostTest::warnings() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return warnings_;
}

void HostTest::WriteFile(const std::string& name, std::string_view content) {
  std::ofstream(folder() / name, std::ios::binary) << content;
}

void HostTest::CopyExtension(const std::string& name) {
  const std::filesystem::path source = ExtensionPath(name);
  std::filesystem::copy_file(source, folder() / source.filename());
}

std::vector<std::string> HostTest::journal() const {
  std::vector<std::string> lines;
  std::ifstream file(journal_);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

}  // namespace orvane::extensions
