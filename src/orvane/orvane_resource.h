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

  // The processors that /proc/cpuinfo lists; 0 when they cannot be counted or are 128 or more.
  int getNumberOfCpuCore();

  // The process's share of the CPU in percent of all processors, as `top` prints it: a whole number
  // of at least 1, or 0 for a failure. Throws std::out_of_range when `top` prints a number beyond
  // 32 bits.
  int getCpuConsumption();

  // The three below are in MiB, and -1.0 when the file that they read cannot be opened. A figure
  // that is missing in a file counts as 0; nothing throws for what a file holds.

  // Proportional set size and swap, from the kernel's statistics of the process.
  double getPSSAndSwap();

  // What the graphics driver keeps for the process; -1.0 as well when it does not list it.
  double getGPUMemory();

  // The process's graphics buffers, without the entries that the driver's list marks as not to be
  // counted; 0.0 when it has none.
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
