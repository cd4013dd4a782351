// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/simulator_files.h"

// The bytes of one file, as the build embeds them.
#define SIMULATOR_FILE(name)                                         \
  extern "C" const char simulator_##name[], simulator_##name##End[]; \
  static const std::string_view name(                                \
      simulator_##name, static_cast<size_t>(simulator_##name##End - simulator_##name))

namespace orvane::simulator {

SIMULATOR_FILE(icon_svg);
SIMULATOR_FILE(index_html);
SIMULATOR_FILE(inter_latin_wght_normal_woff2);
SIMULATOR_FILE(jetbrains_mono_latin_wght_normal_woff2);
SIMULATOR_FILE(licenses_txt);
SIMULATOR_FILE(simulator_css);
SIMULATOR_FILE(simulator_js);

const std::vector<File>& Files() {
  static const std::vector<File> files = {
      {"/icon.svg", "image/svg+xml", icon_svg},
      {"/index.html", "text/html; charset=utf-8", index_html},
      {"/inter-latin-wght-normal.woff2", "font/woff2", inter_latin_wght_normal_woff2},
      {"/jetbrains-mono-latin-wght-normal.woff2", "font/woff2",
       jetbrains_mono_latin_wght_normal_woff2},
      {"/licenses.txt", "text/plain; charset=utf-8", licenses_txt},
      {"/simulator.css", "text/css; charset=utf-8", simulator_css},
      {"/simulator.js", "text/javascript; charset=utf-8", simulator_js},
  };
  return files;
}

}  // namespace orvane::simulator
