// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/run_info.h"

#include <algorithm>
#include <utility>

#include "server/web/http_message.h"

namespace orvane::server {

namespace {

// The part of an address behind the host.
std::string PathOfUrl(const std::string& url) {
  const size_t scheme = url.find("://");
  const size_t host = scheme == std::string::npos ? 0 : scheme + 3;
  const size_t path = url.find('/', host);
  return path == std::string::npos ? "/" : url.substr(path);
}

}  // namespace

Json StartOptions(const RunOptions& options) {
  television::TelevisionOptions set = options.set;
  set.app = television::ToInstall(options.app);
  set.deadline_ms = options.deadline.count();
  return base::ToJson(set);
}

Json PageAppInfo(const app::WebApplication& app) {
  return {{"id", app.id}, {"name", app.name}, {"version", app.version}};
}

Json AppInfo(const app::WebApplication& app) {
  Json info = base::ToJson(television::ToInstall(app));
  info.update(PageAppInfo(app));
  info["warnings"] = Json::array();
  for (const app::Problem& warning : app.warnings) {
    info["warnings"].push_back({{"file", warning.file},
                                {"line", warning.line},
                                {"element", warning.element},
                                {"text", warning.text}});
  }
  return info;
}

std::string StartPath(const RunOptions& options) {
  if (!options.dev_server.empty()) return PathOfUrl(options.dev_server);
  const std::string& content = options.app.content;
  const size_t query = std::min(content.find_first_of("?#"), content.size());
  const std::string path = EncodePath(content.substr(0, query)) + content.substr(query);
  return path.empty() || path[0] != '/' ? "/" + path : path;
}

Json RunInfo(const RunOptions& options, const RunAddresses& addresses, const std::string& profile,
             int64_t started_ns) {
  return {{"version", options.version},
          {"app", AppInfo(options.app)},
          {"appUrl", addresses.app},
          {"startPath", StartPath(options)},
          {"simulatorUrl", addresses.simulator},
          {"profile", profile},
          {"deadlineMs", options.deadline.count()},
          {"watch", options.watch},
          {"browser", {{"headless", options.headless_browser}}},
          {"started_ns", started_ns}};
}

}  // namespace orvane::server
