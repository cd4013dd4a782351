// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Whatever a config.xml holds, it gives an application that can be used, or problems that name a
// place.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/config_reader.h"
#include "app/problem.h"
#include "fuzz_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const FuzzFolder folder;
  folder.Write("index.html", "<!doctype html>");
  folder.Write("config.xml", std::string_view(reinterpret_cast<const char*>(data), size));

  try {
    const orvane::app::WebApplication application = orvane::app::ReadConfig(folder.path());

    Require(application.id.rfind(application.package + ".", 0) == 0);
    Require(!application.name.empty());
    Require(!application.content.empty());
    Require(application.folder.is_absolute());
    for (const auto& problem : application.warnings) Require(!problem.text.empty());
  } catch (const orvane::app::AppError& error) {
    Require(!error.problems().empty());
    for (const auto& problem : error.problems())
      Require(problem.line >= 0 && !problem.text.empty());
  }
  return 0;
}
