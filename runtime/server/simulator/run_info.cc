// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/run_info.h"

#include <algorithm>

#include "base/json_writer.h"
#include "server/web/http_message.h"

namespace orvane::server {

namespace {

std::string MetadataJson(const app::WebApplication& app) {
  return base::JsonArray(app.metadata, [](const auto& pair) {
    return "[" + base::JsonText(pair.first) + "," + base::JsonText(pair.second) + "]";
  });
}

std::string WarningJson(const app::Problem& problem) {
  return base::JsonWriter()
      .Text("file", problem.file)
      .Number("line", problem.line)
      .Text("element", problem.element)
      .Text("text", problem.text)
      .Take();
}

base::JsonWriter AppMembers(const app::WebApplication& app) {
  base::JsonWriter json;
  json.Text("id", app.id).Text("name", app.name).Text("version", app.version);
  json.Text("folder", app.folder.string()).Raw("metadata", MetadataJson(app));
  json.Raw("privileges", base::JsonArray(app.privileges, base::JsonText<std::string>));
  return json;
}

// The part of an address behind the host.
std::string PathOfUrl(const std::string& url) {
  const size_t scheme = url.find("://");
  const size_t host = scheme == std::string::npos ? 0 : scheme + 3;
  const size_t path = url.find('/', host);
  return path == std::string::npos ? "/" : url.substr(path);
}

}  // namespace

std::string StartOptionsJson(const RunOptions& options) {
  base::JsonWriter json;
  json.Text("state", options.state_folder.string()).Text("profile", options.profile);
  json.Raw("app", AppMembers(options.app).Text("package", options.app.package).Take());
  json.Raw("faults", base::JsonArray(options.faults, base::JsonText<std::string>));
  json.Raw("extensions", base::JsonArray(options.extensions, base::JsonText<std::string>));
  json.Number("deadlineMs", options.deadline.count());
  json.Flag("testHooks", options.test_hooks);
  return json.Take();
}

std::string PageAppJson(const app::WebApplication& app) {
  return base::JsonWriter()
      .Text("id", app.id)
      .Text("name", app.name)
      .Text("version", app.version)
      .Take();
}

std::string AppJson(const app::WebApplication& app) {
  return AppMembers(app).Raw("warnings", base::JsonArray(app.warnings, WarningJson)).Take();
}

std::string StartPath(const RunOptions& options) {
  if (!options.dev_server.empty()) return PathOfUrl(options.dev_server);
  const std::string& content = options.app.content;
  const size_t query = std::min(content.find_first_of("?#"), content.size());
  const std::string path = EncodePath(content.substr(0, query)) + content.substr(query);
  return path.empty() || path[0] != '/' ? "/" + path : path;
}

std::string RunInfoJson(const RunOptions& options, const RunAddresses& addresses,
                        const std::string& profile, int64_t started_ns) {
  base::JsonWriter json;
  json.Text("version", options.version).Raw("app", AppJson(options.app));
  json.Text("appUrl", addresses.app).Text("startPath", StartPath(options));
  json.Text("simulatorUrl", addresses.simulator).Text("profile", profile);
  json.Number("deadlineMs", options.deadline.count()).Flag("watch", options.watch);
  json.Raw("browser", base::JsonWriter().Flag("headless", options.headless_browser).Take());
  json.Number("started_ns", started_ns);
  return json.Take();
}

}  // namespace orvane::server
