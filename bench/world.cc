// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "world.h"

#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "tvset/set.h"

namespace bench {

namespace {

constexpr const char* kAppId = "OrvaneBnch.Main";

std::filesystem::path MakeFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("Cannot make a folder like " + pattern);
  }
  return pattern;
}

}  // namespace

World::World(const std::filesystem::path& library) : folder_(MakeFolder()) {
  tvset::Set::Start({folder_, "uhd"});
  auto& set = tvset::Set::Current();
  tvset::Application application;
  application.id = kAppId;
  application.package = "OrvaneBnch";
  application.name = "Main";
  application.folder = folder_;
  set.applications().Install(application);
  set.applications().Launch(kAppId, getpid());

  orvane::extensions::Options options;
  options.app_id = kAppId;
  host_ = std::make_unique<orvane::extensions::ExtensionHost>(options);
  std::string error;
  if (!host_->LoadFile(library, &error)) {
    throw std::runtime_error(error);
  }
  extension_ = host_->Find("dravelt.orvane");
  services_ = std::make_unique<orvane::television::RuntimeServices>(set, kAppId, nullptr);
  pages_ = std::make_unique<orvane::page::PageRuntime>(*host_);
}

World::~World() {
  pages_.reset();
  host_.reset();
  services_.reset();
  tvset::Set::Stop();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<orvane::page::Page> World::MakePage() {
  orvane::page::PageOptions options;
  options.runtime = services_.get();
  return std::make_unique<orvane::page::Page>(*pages_, options);
}

}  // namespace bench
