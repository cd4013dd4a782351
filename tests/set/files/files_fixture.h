// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "set_fixture.h"

namespace tvset::testing {

inline constexpr char kGpuMemoryPath[] = "/sys/kernel/debug/gpu/gpu_memory";
inline constexpr char kGemInfoPath[] = "/sys/kernel/debug/dri/0/gem_info";
inline constexpr char kDebugPath[] = "/etc/debug";

// A set, and what the process finds at the paths of its files.
class FilesTest : public SetTest {
 protected:
  static std::string MemoryPath() { return "/proc/" + std::to_string(getpid()) + "/qm_memstat"; }
  static std::string Pid() { return std::to_string(getpid()); }

  // Empty: the file cannot be opened.
  static std::optional<std::string> ReadStream(const std::string& path) {
    std::ifstream stream(path);
    if (!stream.is_open()) return std::nullopt;
    return std::string{std::istreambuf_iterator<char>(stream), {}};
  }

  static std::vector<std::vector<std::string>> Words(const std::string& text) {
    std::vector<std::vector<std::string>> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
      std::istringstream words(line);
      lines.emplace_back();
      for (std::string word; words >> word;) lines.back().push_back(word);
    }
    return lines;
  }

  // What a command prints; "no process" when it cannot be started.
  static std::string Output(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "no process";
    std::string text;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) text += static_cast<char>(c);
    pclose(pipe);
    return text;
  }

  // Puts a file into the folder of replacements.
  static std::filesystem::path PutFile(SetFile file, const std::string& text) {
    const std::filesystem::path path = set().paths().files() / NameOf(file);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  // A figure of the kernel's summary of the process's memory, in KiB.
  static double Rollup(const std::string& key) {
    std::ifstream stream("/proc/self/smaps_rollup");
    for (std::string line; std::getline(stream, line);) {
      if (line.compare(0, key.size(), key) == 0) return std::stod(line.substr(key.size()));
    }
    return -1;
  }
};

}  // namespace tvset::testing
