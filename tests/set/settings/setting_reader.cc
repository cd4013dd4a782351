// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Prints what a process of its own reads under a setting: setting_reader STATE_FOLDER KEY.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include <vconf.h>

#include "tvset/set.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  try {
    tvset::Set::Start(tvset::Options{argv[1], "fhd"});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 3;
  }
  char* value = vconf_get_str(argv[2]);
  if (value == nullptr) return 1;
  std::fputs(value, stdout);
  std::free(value);
  return 0;
}
