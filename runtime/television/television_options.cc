// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/television_options.h"

#include <charconv>

#include "television/request_error.h"

namespace orvane::television {

namespace {

[[noreturn]] void Refuse(const std::string& text) {
  throw RequestError("--fail " + text +
                     ": write FUNCTION=CODE, or FUNCTION=CODE:once to fail the next call only, "
                     "such as vconf_set_str=-1:once.");
}

}  // namespace

tvset::Application ToInstall(const app::WebApplication& loaded) {
  tvset::Application application{loaded.id,     loaded.package,  loaded.name,
                                 loaded.folder, loaded.metadata, loaded.privileges};
  if (!loaded.version.empty()) application.version = loaded.version;
  return application;
}

tvset::Fault ParseFault(const std::string& text) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) Refuse(text);
  tvset::Fault fault;
  fault.function = text.substr(0, equals);
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data() + equals + 1, end, fault.code);
  if (error != std::errc()) Refuse(text);
  const std::string rest(stopped, end);
  if (!rest.empty() && rest != ":once") Refuse(text);
  fault.mode = rest.empty() ? tvset::FaultMode::kAlways : tvset::FaultMode::kOnce;
  return fault;
}

}  // namespace orvane::television
