// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/json_fields.h"

namespace orvane::server {

// What a page tells about itself.
struct PageState {
  std::string href;
  std::string title;
  bool top = true;
  bool visible = true;
  bool focused = false;
  bool editing = false;
  bool isolated = false;
};
template <class Map>
void MapFields(Map& map, PageState& state) {
  map.Optional("href", state.href);
  map.Optional("title", state.title);
  map.Optional("top", state.top);
  map.Optional("visible", state.visible);
  map.Optional("focused", state.focused);
  map.Optional("editing", state.editing);
  map.Optional("isolated", state.isolated);
}

// A page as the simulator lists it.
struct ListedPage {
  int64_t context = 0;
  PageState state;
  int64_t opened_ns = 0;
  std::vector<std::string> instances;  // names of extensions
  std::string runtime = "ready";       // "noScript": the runtime's script cannot run in it
  std::optional<std::string> problem;  // and why
};
template <class Map>
void MapFields(Map& map, ListedPage& page) {
  map("context", page.context);
  MapFields(map, page.state);
  map("opened_ns", page.opened_ns);
  map("instances", page.instances);
  map("runtime", page.runtime);
  map.Optional("problem", page.problem);
}

}  // namespace orvane::server
