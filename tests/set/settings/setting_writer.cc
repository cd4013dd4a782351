// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Writes a setting from a process of its own: setting_writer STATE_FOLDER KEY VALUE COUNT.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include <vconf.h>

#include "tvset/set.h"

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  try {
    tvset::Set::Start(tvset::Options{argv[1], "fhd"});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 3;
  }
  const long count = std::strtol(argv[4], nullptr, 10);
  for (long i = 0; i < count; ++i) {
    if (vconf_set_str(argv[2], argv[3]) != 0) return 1;
  }
  return 0;
}
