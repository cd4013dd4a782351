// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// A program that is linked with the framework's library and with no library of the set.
#include <cstdio>

#include "common/tools.h"

int main() {
  const common::PlatformResult access = common::tools::CheckAccess("http://orvane.example/none");
  const bool reads = std::fopen("/proc/self/status", "r") != nullptr;
  std::printf("%s, %s\n", access.message().c_str(), reads ? "reads files" : "reads no file");
  return 0;
}
