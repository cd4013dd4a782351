// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/records/journal.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <utility>

#include "base/json_writer.h"
#include "base/wall_clock.h"

namespace orvane::server {

namespace {

constexpr int64_t kAll = std::numeric_limits<int64_t>::max();

// What is between the braces of an object.
std::string_view Inside(std::string_view object) { return object.substr(1, object.size() - 2); }

std::string IsoTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  const size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text, length};
}

// {"<name>":[…],"next":…} of what `params` asks for.
std::string ListJson(const RecordRing& ring, const char* name, const base::JsonObject& params) {
  int64_t next = 0;
  const std::string list =
      ring.List(params.Integer("since").value_or(0), params.Integer("limit").value_or(kAll), &next);
  return base::JsonWriter().Raw(name, list).Number("next", next).Take();
}

void AddList(Api& api, const char* method, const RecordRing& ring, const char* name) {
  api.Add(method,
          [&ring, name](const base::JsonObject& params) { return ListJson(ring, name, params); });
}

void AddClear(Api& api, const char* method, RecordRing& ring) {
  api.Add(method, [&ring](const base::JsonObject&) {
    ring.Clear();
    return std::string("null");
  });
}

}  // namespace

void Journal::AddTrace(const TraceRecord& record) {
  base::JsonWriter json;
  json.Number("time_ns", record.time_ns).Number("context", record.context);
  json.Text("direction", record.direction).Text("kind", record.kind).Raw("peer", record.peer);
  json.Raw("payload", record.payload);
  if (!record.reply.empty()) json.Raw("reply", record.reply);
  if (record.microseconds >= 0) json.Number("us", record.microseconds);
  if (!record.error.empty()) json.Raw("error", record.error);
  hub_.PublishItem("trace", trace_.Add(Inside(json.Take())));
}

void Journal::AddLog(std::string_view lines) {
  while (!lines.empty()) {
    const size_t end = std::min(lines.find('\n'), lines.size());
    hub_.PublishItem("log", log_.AddNumbered(lines.substr(0, end)));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
}

void Journal::AddConsole(const std::string& members) {
  hub_.Publish("console", console_.Add(members + R"(,"time_ns":)" + std::to_string(base::NowNs())));
}

void Journal::AddExplanation(const std::string& members) {
  hub_.Publish("explain",
               explanations_.Add(members + R"(,"time_ns":)" + std::to_string(base::NowNs())));
}

void Journal::AddMethods(Api& api, const std::string& app, std::function<std::string()> profile) {
  AddList(api, "log.list", log_, "lines");
  AddClear(api, "log.clear", log_);
  AddList(api, "trace.list", trace_, "records");
  AddClear(api, "trace.clear", trace_);
  AddList(api, "console.list", console_, "entries");
  AddClear(api, "console.clear", console_);
  api.Add("explain.list", [this](const base::JsonObject&) {
    int64_t next = 0;
    return explanations_.List(0, kAll, &next);
  });
  api.Add("trace.export", [this, app, profile = std::move(profile)](const base::JsonObject&) {
    int64_t next = 0;
    base::JsonWriter json;
    json.Number("orvane", 1).Text("created", IsoTime()).Raw("app", app);
    json.Text("profile", profile()).Raw("records", trace_.List(0, kAll, &next));
    return json.Take();
  });
}

}  // namespace orvane::server
