// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <string>

namespace extension::orvane {

// Measures the CPU and memory use of the process in which it was made. The manager of an instance
// owns it.
//
// Each call reads its files or runs its command anew and blocks for as long as that takes; nothing
// stays open between calls. Two calls on one object must not overlap: they share the scratch
// members. The task worker sees to that.
class OrvaneResource {
 public:
  OrvaneResource();

  // The processors of the machine; 0 when they cannot be counted or are 128 or more.
  int getNumberOfCpuCore();

  // The process's share of the CPU in percent of all processors, a whole number of at least 1; 0
  // for a failure. Throws std::out_of_range when the command prints a number beyond 32 bits.
  int getCpuConsumption();

  // In MiB; -1.0 for a failure.
  double getPSSAndSwap();
  double getGPUMemory();
  // 0.0 for a process without buffers.
  double getGEMMemory();

  // The sum of the three in whole MiB, cut and not rounded; -1.0 when any of them failed.
  double getMemoryConsumption();

 private:
  // Where parsing puts what it skips; without meaning between calls.
  std::string scratchText;
  double scratchValue;

  // Fixed after construction.
  long pid;  // NOLINT(google-runtime-int): the width of the formats that log it
  int32_t maxCpuCore;
  size_t readBufferSize;
  std::string gemInfoPath;
  std::string gpuMemoryPath;
  std::string cpuUsageCommand;
};

}  // namespace extension::orvane
