// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <thread>

#include <glib.h>
#include <spawn.h>

#include "posix/unique_fd.h"

namespace orvane::base {

namespace {

// The actions and attributes of posix_spawn, freed together.
struct SpawnSetup {
  SpawnSetup() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
  }
  ~SpawnSetup() {
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;

  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

// The server blocks signals for nobody, and ignores SIGPIPE for itself alone.
void ResetSignals(posix_spawnattr_t* attributes) {
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(attributes, &signals);
  sigaddset(&signals, SIGPIPE);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  posix_spawnattr_setsigdefault(attributes, &signals);
  // A group of its own: Ctrl-C in the terminal is for the server, which then ends the child.
  posix_spawnattr_setpgroup(attributes, 0);
  posix_spawnattr_setflags(attributes,
                           POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
}

void AddStandardStreams(const ChildProcess::Descriptors& descriptors,
                        posix_spawn_file_actions_t* actions) {
  for (int stream = 0; stream <= 2; ++stream) {
    const bool given = std::any_of(descriptors.begin(), descriptors.end(),
                                   [&](const auto& pair) { return pair.second == stream; });
    if (!given) posix_spawn_file_actions_addopen(actions, stream, "/dev/null", O_RDWR, 0);
  }
}

}  // namespace

std::string FindProgram(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const std::unique_ptr<char, decltype(&g_free)> file(g_find_program_in_path(name.c_str()),
                                                        &g_free);
    if (file) return file.get();
  }
  return {};
}

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const Descriptors& descriptors) {
  SpawnSetup setup;
  ResetSignals(&setup.attributes);
  // Every descriptor of the server is closed by exec; those below stay, under their new numbers. A
  // copy above these is not written over before it has its own.
  constexpr int kAboveAll = 64;
  std::vector<UniqueFd> copies;
  for (const auto& [from, to] : descriptors) {
    copies.emplace_back(fcntl(from, F_DUPFD_CLOEXEC, kAboveAll));
    posix_spawn_file_actions_adddup2(&setup.actions, copies.back().get(), to);
  }
  AddStandardStreams(descriptors, &setup.actions);
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  // posix_spawn takes them as non-const and leaves them alone.
  for (const std::string& argument : arguments) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    argv.push_back(const_cast<char*>(argument.c_str()));
  }
  argv.push_back(nullptr);
  const int error =
      posix_spawnp(&pid_, argv[0], &setup.actions, &setup.attributes, argv.data(), environ);
  if (error != 0) throw std::system_error(error, std::generic_category(), arguments[0]);
}

bool ChildProcess::StartAlone(const std::vector<std::string>& arguments) {
  // A shell that is waited for starts the program, so that the program becomes init's.
  std::vector<std::string> shell = {"/bin/sh", "-c", "\"$@\" &", "sh"};
  shell.insert(shell.end(), arguments.begin(), arguments.end());
  try {
    ChildProcess starter(shell, {});
    return starter.Wait(std::chrono::seconds(10)) && starter.end_->signal == 0 &&
           starter.end_->exit_code == 0;
  } catch (const std::system_error&) {
    return false;
  }
}

ChildProcess::~ChildProcess() { Kill(); }

// Its own children are in its group.
void ChildProcess::Kill() {
  if (end()) return;
  kill(-pid_, SIGKILL);
  int status = 0;
  while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  end_ = ProcessEnd{SIGKILL, 0};
}

void ChildProcess::Stop(std::chrono::milliseconds patience) {
  Signal(SIGTERM);
  Wait(patience);
  Kill();
}

bool ChildProcess::Wait(std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds kStep(5);
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!end() && std::chrono::steady_clock::now() < deadline) std::this_thread::sleep_for(kStep);
  return end().has_value();
}

std::optional<ProcessEnd> ChildProcess::end() {
  int status = 0;
  if (!end_ && waitpid(pid_, &status, WNOHANG) == pid_) {
    end_ =
        WIFSIGNALED(status) ? ProcessEnd{WTERMSIG(status), 0} : ProcessEnd{0, WEXITSTATUS(status)};
  }
  return end_;
}

void ChildProcess::Signal(int signal) {
  if (!end()) kill(pid_, signal);
}

std::string Describe(const ProcessEnd& end) {
  if (end.signal == 0) return "it ended with exit code " + std::to_string(end.exit_code);
  return "it was killed by signal " + std::to_string(end.signal) + " (" + strsignal(end.signal) +
         ")";
}

}  // namespace orvane::base
