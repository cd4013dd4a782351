// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

namespace orvane::simulator {

// One file of the simulator's page, as the server serves it. Everything lives as long as the
// program.
struct File {
  std::string_view path;   // with a leading slash: "/index.html"
  std::string_view type;   // the value of Content-Type
  std::string_view bytes;  // may be binary
};

// All of them, sorted by path. "/" is "/index.html". Any thread.
const std::vector<File>& Files();

}  // namespace orvane::simulator
