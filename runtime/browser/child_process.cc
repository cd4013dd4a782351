// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "browser/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <thread>

#include <spawn.h>

#include "browser/browser_error.h"

namespace orvane::browser {

namespace {

// What posix_spawn is to do in the child before the program begins.
class SpawnActions {
 public:
  SpawnActions() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  void Give(int child, int own) { posix_spawn_file_actions_adddup2(&actions_, own, child); }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// A group of its own, so that the terminal's Ctrl-C leaves the ending of it to its owner.
class SpawnAttributes {
 public:
  SpawnAttributes() {
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setpgroup(&attributes_, 0);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
  }
  ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

// The program's arguments as posix_spawn takes them: non-const, and left alone.
std::vector<char*> ArgumentVector(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    argv.push_back(const_cast<char*>(argument.c_str()));
  }
  argv.push_back(nullptr);
  return argv;
}

// An errno value, 0 when it was started.
int Spawn(const std::vector<std::string>& arguments, const ChildProcess::Descriptors& descriptors,
          pid_t* pid) {
  SpawnActions actions;
  for (const auto& [child, own] : descriptors) actions.Give(child, own);
  const SpawnAttributes attributes;
  const std::vector<char*> argv = ArgumentVector(arguments);
  return posix_spawn(pid, argv[0], actions.get(), attributes.get(), argv.data(), environ);
}

}  // namespace

std::string FindProgram(const std::vector<std::string>& names) {
  const char* const path = std::getenv("PATH");
  if (path == nullptr) return {};
  for (const std::string& name : names) {
    std::istringstream folders(path);
    for (std::string folder; std::getline(folders, folder, ':');) {
      if (folder.empty()) continue;
      std::string file = folder.append("/").append(name);
      if (access(file.c_str(), X_OK) == 0) return file;
    }
  }
  return {};
}

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const Descriptors& descriptors) {
  const int error = Spawn(arguments, descriptors, &pid_);
  if (error != 0) {
    throw BrowserError(arguments.front() + " cannot be started: " + std::strerror(error) + ".");
  }
}

bool ChildProcess::StartAlone(const std::vector<std::string>& arguments) {
  // A child that is waited for starts the program, so that the program becomes init's.
  const std::vector<std::string> shell = {"/bin/sh", "-c", "\"$@\" &", "sh"};
  std::vector<std::string> all = shell;
  all.insert(all.end(), arguments.begin(), arguments.end());
  pid_t pid = 0;
  int status = 0;
  return Spawn(all, {}, &pid) == 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status) &&
         WEXITSTATUS(status) == 0;
}

ChildProcess::~ChildProcess() {
  constexpr std::chrono::seconds kPatience(2);
  Stop(kPatience);
}

bool ChildProcess::running() { return !WaitUntil(std::chrono::steady_clock::now()); }

void ChildProcess::Stop(std::chrono::milliseconds patience) {
  if (!running()) return;
  kill(pid_, SIGTERM);
  if (WaitUntil(std::chrono::steady_clock::now() + patience)) return;
  kill(-pid_, SIGKILL);  // its own children, too: they are in its group
  waitpid(pid_, nullptr, 0);
  reaped_ = true;
}

// True: it has ended.
bool ChildProcess::WaitUntil(std::chrono::steady_clock::time_point deadline) {
  constexpr std::chrono::milliseconds kStep(5);
  while (!reaped_) {
    const pid_t ended = waitpid(pid_, nullptr, WNOHANG);
    reaped_ = ended == pid_ || (ended < 0 && errno == ECHILD);
    if (reaped_ || std::chrono::steady_clock::now() >= deadline) break;
    std::this_thread::sleep_for(kStep);
  }
  return reaped_;
}

}  // namespace orvane::browser
