// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_resource.h"

#include <unistd.h>

#include <fstream>
#include <stdexcept>
#include <vector>

#include "common/logger.h"
#include "orvane/numbers.h"
#include "orvane/orvane_pipewrapper.h"

namespace extension::orvane {

namespace {

// From bytes to KiB, and from KiB to MiB.
constexpr double kPerUnit = 0.0009765625;
constexpr double kFailed = -1.0;

constexpr int kHexadecimal = 16;
// Entries that are not counted, by their flags word and by their count.
constexpr long kFlagsNotCounted = 2;
constexpr uint32_t kCountNotCounted = 1;

// False for a word that is no hexadecimal number as well.
bool AreFlagsNotCounted(const std::string& word) {
  try {
    return std::stol(word, nullptr, kHexadecimal) == kFlagsNotCounted;
  } catch (const std::logic_error&) {
    return false;
  }
}

}  // namespace

OrvaneResource::OrvaneResource()
    : scratchValue(0.0),
      pid(getpid()),
      maxCpuCore(128),
      readBufferSize(32),
      gemInfoPath("/sys/kernel/debug/dri/0/gem_info"),
      gpuMemoryPath("/sys/kernel/debug/gpu/gpu_memory"),
      cpuUsageCommand("/usr/bin/top -b -n 1 -p " + std::to_string(pid) + " | grep " +
                      std::to_string(pid) + " | awk '{print $7}'") {}

int OrvaneResource::getNumberOfCpuCore() {
  std::ifstream file("/proc/cpuinfo");
  if (!file.is_open()) {
    LoggerE("Failed to retrieve number of CPUs.");
    return 0;
  }
  int count = 0;
  std::string line;
  while (std::getline(file, line)) {
    if (line.rfind("processor", 0) == 0) {
      ++count;
    }
  }
  file.close();
  if (maxCpuCore > count) {
    LoggerD("CPU Core info [%d]", count);
    return count;
  }
  LoggerE("Cpu count is greater than max cpu core, returning 0.");
  return 0;
}

int OrvaneResource::getCpuConsumption() {
  LoggerD("Getting CPU consumption for pid[%ld]", pid);
  const int cores = getNumberOfCpuCore();
  if (cores == 0) {
    LoggerE("Failed to get number of CPU core.");
    return 0;
  }
  PipeWrapper command(cpuUsageCommand);
  if (command.getPipe() == nullptr) {
    return 0;
  }
  std::vector<char> buffer(readBufferSize, '\0');
  if (fgets(buffer.data(), static_cast<int>(readBufferSize), command.getPipe()) == nullptr) {
    LoggerE("Failed to get result from command: %s", cpuUsageCommand.c_str());
    return 0;
  }
  int share = 0;
  try {
    // A number beyond 32 bits is not caught: it leaves as std::out_of_range.
    share = std::stoi(buffer.data());
  } catch (const std::invalid_argument&) {
    LoggerE("Failed to get CPU usage.");
    return 0;
  }
  int usage = share / cores;
  if (usage == 0) {
    // 0 stands for a failure, so an idle process uses 1.
    LoggerE("There was a problem encountered while getting CPU Usage, returning 1.");
    usage = 1;
  }
  LoggerI("CPU Usage Data collected for pid[%ld]: [%d]", pid, usage);
  return usage;
}

double OrvaneResource::getPSSAndSwap() {
  const std::string pid_text = std::to_string(pid);
  const std::string path = "/proc/" + pid_text + "/qm_memstat";
  std::ifstream file(path);
  if (!file.is_open()) {
    LoggerE("Failed to open [%s].", path.c_str());
    return kFailed;
  }
  // Two lines of headings, a label of two words, and five figures stand before the two that count.
  std::getline(file, scratchText);
  std::getline(file, scratchText);
  file >> scratchText >> scratchText;
  file >> scratchValue >> scratchValue >> scratchValue >> scratchValue >> scratchValue;
  double pss = 0.0;
  double swap = 0.0;
  file >> pss >> swap;
  const double total = (pss + swap) * kPerUnit;
  LoggerI("PSS and Swap collected for pid[%s]: pss[%f] swap[%f] total[%f]", pid_text.c_str(), pss,
          swap, total);
  return total;
}

double OrvaneResource::getGPUMemory() {
  std::ifstream file(gpuMemoryPath);
  if (!file.is_open()) {
    LoggerE("Failed to open [%s].", gpuMemoryPath.c_str());
    return kFailed;
  }
  std::getline(file, scratchText);
  std::getline(file, scratchText);
  uint32_t process = 0;
  double gpu = 0.0;
  std::string rest_of_line;
  // Each pass drops a line's rest before it reads an entry, and the first pass a whole line: the
  // third of the file is a heading as well.
  while (std::getline(file, rest_of_line)) {
    file >> scratchText >> process >> gpu;
    if (process == static_cast<uint32_t>(pid)) {
      LoggerI("Gpu memory collected for pid[%ld]: gpu[%f]", pid, gpu);
      return gpu * kPerUnit;
    }
  }
  LoggerI("Gpu memory collection failed for pid[%ld]. Pid not present in gpu_memory file", pid);
  return kFailed;
}

double OrvaneResource::getGEMMemory() {
  std::ifstream file(gemInfoPath);
  if (!file.is_open()) {
    LoggerE("Failed to open [%s].", gemInfoPath.c_str());
    return kFailed;
  }
  std::getline(file, scratchText);
  double total = 0.0;
  uint32_t process = 0;
  double size = 0.0;
  uint32_t count = 0;
  std::string rest_of_line;
  while (std::getline(file, rest_of_line)) {
    file >> process;
    if (process != static_cast<uint32_t>(pid)) {
      continue;
    }
    std::string flags_word;
    file >> scratchValue >> scratchValue >> flags_word >> size;
    file >> scratchValue >> scratchValue >> scratchValue >> scratchValue >> scratchText >> count;
    // Without a flags word the file ended before the entry: the figures are of the one before.
    if (!flags_word.empty() && !AreFlagsNotCounted(flags_word) && count != kCountNotCounted) {
      total += size;
    }
  }
  LoggerI("Gem memory collection done for pid[%ld]. Total Gem usage: [%f]", pid, total);
  return total * kPerUnit * kPerUnit;
}

double OrvaneResource::getMemoryConsumption() {
  LoggerD("Getting Memory consumption for pid[%ld]", pid);
  const double pss = getPSSAndSwap();
  const double gpu = getGPUMemory();
  const double gem = getGEMMemory();
  if (pss == kFailed || gpu == kFailed || gem == kFailed) {
    LoggerE("Failed to collect memory consumption.");
    return kFailed;
  }
  return TruncateToInt32((pss + gpu) + gem);
}

}  // namespace extension::orvane
