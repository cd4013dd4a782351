// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../support/temporary_folder.h"
#include "extensions/extension_host.h"

namespace orvane::extensions {

// A page that keeps what it is sent. Thread-safe.
class Recorder final : public InstanceClient {
 public:
  void OnMessage(std::string_view text) override;
  void OnBinaryMessage(std::string_view bytes) override;

  std::vector<std::string> messages() const;
  std::vector<std::string> binary_messages() const;

  // Waits until there are that many messages; fails the test after ten seconds.
  void WaitForMessages(size_t count);

  // Called for each text message, on the thread that posts it. To be set before the instance is
  // made.
  std::function<void(std::string_view)> on_message;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> messages_;
  std::vector<std::string> binary_messages_;
};

// A host whose warnings are kept, a folder of the test's own, and a journal in which test
// extensions write.
class HostTest : public ::testing::Test {
 protected:
  HostTest();
  ~HostTest() override;

  // The library of a test extension.
  static std::filesystem::path ExtensionPath(const std::string& name);

  // Counts as used from its first call on; options() may be changed before.
  ExtensionHost& host();
  void EndHost() { host_.reset(); }
  HostOptions& options() { return options_; }

  // Loads the test extension and finds it by the name that it gives itself. Null, and a failed
  // test, if that fails.
  Extension* Load(const std::string& library, const std::string& name);

  // The reason why the test extension is not loaded; fails the test when it is.
  std::string ErrorOfLoading(const std::filesystem::path& library);

  std::unique_ptr<Instance> CreateInstance(Extension* extension) {
    return extension->CreateInstance(&page_);
  }
  Recorder& page() { return page_; }

  std::vector<std::string> warnings() const;

  const std::filesystem::path& folder() const { return folder_.path(); }
  void WriteFile(const std::string& name, std::string_view content);
  void CopyExtension(const std::string& name);  // into folder()
  std::vector<std::string> journal() const;

 private:
  const test::TemporaryFolder folder_;
  const std::filesystem::path journal_;
  mutable std::mutex mutex_;
  std::vector<std::string> warnings_;  // guarded by mutex_
  HostOptions options_;
  Recorder page_;
  std::unique_ptr<ExtensionHost> host_;
};

}  // namespace orvane::extensions
