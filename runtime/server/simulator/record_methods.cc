// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/record_methods.h"

#include <ctime>
#include <limits>
#include <utility>

namespace orvane::server {

namespace {

constexpr int64_t kAll = std::numeric_limits<int64_t>::max();

struct ListParameters {
  int64_t since = 0;
  int64_t limit = kAll;
};
template <class Map>
void MapFields(Map& map, ListParameters& parameters) {
  map.Optional("since", parameters.since);
  map.Optional("limit", parameters.limit);
}

std::string IsoTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  const size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text, length};
}

std::string AllOf(const RecordRing& ring) {
  int64_t next = 0;
  return ring.List(0, kAll, &next);
}

// The object with one member more, whose value's text is there already.
JsonDocument With(const Json& object, const char* name, const std::string& value) {
  std::string text = base::JsonText(object);
  text.back() = ',';
  return {text + base::JsonText(name) + ":" + value + "}"};
}

void AddListAndClear(Api& api, const std::string& what, RecordRing& ring, const char* name) {
  api.Add<ListParameters>(what + ".list", [&ring, name](const ListParameters& parameters) {
    int64_t next = 0;
    const std::string list = ring.List(parameters.since, parameters.limit, &next);
    return With({{"next", next}}, name, list);
  });
  api.Add<NoParameters>(what + ".clear", [&ring](const NoParameters&) { ring.Clear(); });
}

}  // namespace

void AddRecordMethods(Api& api, Journal& journal, const Json& app,
                      std::function<std::string()> profile) {
  AddListAndClear(api, "log", journal.log(), "lines");
  AddListAndClear(api, "trace", journal.trace(), "records");
  AddListAndClear(api, "console", journal.console(), "entries");
  api.Add<NoParameters>("explain.list", [&journal](const NoParameters&) {
    return JsonDocument{AllOf(journal.explanations())};
  });
  api.Add<NoParameters>("trace.export", [&journal, app,
                                         profile = std::move(profile)](const NoParameters&) {
    const Json file{{"orvane", 1}, {"created", IsoTime()}, {"app", app}, {"profile", profile()}};
    return With(file, "records", AllOf(journal.trace()));
  });
}

}  // namespace orvane::server
