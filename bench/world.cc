// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "world.h"

#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "script_loops.h"
#include "tvset/set.h"

namespace bench {

namespace {

constexpr const char* kPackage = "OrvaneBnch";

std::string NameOf(int application) { return "App" + std::to_string(application); }

std::string IdOf(int application) { return std::string(kPackage) + "." + NameOf(application); }

std::filesystem::path MakeFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("Cannot make a folder like " + pattern);
  }
  return pattern;
}

// The first is launched last, and alone in this process.
void LaunchApplications(int count, const std::filesystem::path& folder) {
  auto& applications = tvset::Set::Current().applications();
  for (int i = count - 1; i >= 0; --i) {
    tvset::Application application;
    application.id = IdOf(i);
    application.package = kPackage;
    application.name = NameOf(i);
    application.folder = folder;
    applications.Install(application);
    applications.Launch(application.id, i == 0 ? getpid() : 0);
  }
}

}  // namespace

World::World(const std::filesystem::path& library, int applications) : folder_(MakeFolder()) {
  tvset::Set::Start({folder_, "uhd"});
  LaunchApplications(applications, folder_);
  extensions::HostOptions options;
  options.app_id = IdOf(0);
  host_ = std::make_unique<extensions::ExtensionHost>(options);
  std::string error;
  if (!host_->LoadFile(library, &error)) {
    throw std::runtime_error(error);
  }
  extension_ = host_->Find("dravelt.orvane");
  pages_ = std::make_unique<orvane::page::PageRuntime>(*host_);
}

World::~World() {
  pages_.reset();
  host_.reset();
  tvset::Set::Stop();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<orvane::page::Page> World::MakePage() {
  return std::make_unique<orvane::page::Page>(*pages_, orvane::page::PageOptions());
}

std::unique_ptr<orvane::page::Page> World::MakeTouchedPage() {
  auto page = MakePage();
  Evaluate(page->context(), "dravelt.orvane");
  return page;
}

}  // namespace bench
