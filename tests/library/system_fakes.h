// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace orvane::test {

// What the kernel was told through the television's own prctl option.
struct KernelMarker {
  std::string text;
  size_t length;
};

// Stands between the code under test and the C library, for what no simulated set answers: files,
// commands, the process id, memory, the kernel's marker, and answers that a platform might give
// and the simulated one does not.
// The test program defines those functions; while no SystemFakes lives, and for everything that is
// not faked, they pass the call on. One at a time; set up before the code under test runs.
class SystemFakes {
 public:
  SystemFakes();
  ~SystemFakes();
  SystemFakes(const SystemFakes&) = delete;
  SystemFakes& operator=(const SystemFakes&) = delete;

  // Opening `path` opens `other` instead; with a mode, only openings in this mode.
  void RedirectFile(const std::string& path, const std::string& other,
                    const std::string& mode = "");
  void FailStat(const std::string& path);
  // Asking for `path` asks for `other` instead.
  void RedirectStat(const std::string& path, const std::string& other);
  // The next fwrite writes one byte less than it should.
  void FailNextWrite();
  // The next strdup finds no memory.
  void FailNextStrdup();
  void SetPid(pid_t pid);

  // A command prints `output` instead of running.
  void SetCommandOutput(const std::string& output);
  void FailCommands();
  // Those that were to run.
  const std::vector<std::string>& commands() const;
  // Pipes that were opened and are not closed.
  int open_pipes() const;

  const std::vector<KernelMarker>& markers() const;

  // The platform finds the next metadata value that is asked for, and hands out null.
  void GiveNoNextMetadataValue();

  // The platform reports this state of any application; it need not be one that a set has.
  void ReportAppState(int state);
};

// Makes the `countdown`th allocation of this thread, counted from 1, throw std::bad_alloc, and the
// others succeed; while it lives.
class FailingAllocation {
 public:
  explicit FailingAllocation(int countdown);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether there were that many.
  bool failed() const;
};

// Holds waits with a deadline on the steady clock for as long as the test likes: such a wait ends
// when the test lets the deadline pass, or when the condition is notified while it waits. One at a
// time. Destruction lets every wait pass.
class HeldWaits {
 public:
  HeldWaits();
  ~HeldWaits();
  HeldWaits(const HeldWaits&) = delete;
  HeldWaits& operator=(const HeldWaits&) = delete;

  // Blocks until the `number`th wait, counted from 1, has begun; returns its deadline.
  std::chrono::steady_clock::time_point AwaitWait(int number);
  int begun() const;

  // The deadline of the wait passes.
  void PassDeadline();
  // The wait ends without a reason, as waits may.
  void WakeSpuriously();

  // The next wait stops before it listens: what is notified meanwhile is lost to it.
  void HoldEntry();
  void AwaitHeldEntry();
  void ReleaseEntry();
  // Blocks until the condition was notified while nobody waited.
  void AwaitLostNotification();
};

}  // namespace orvane::test
