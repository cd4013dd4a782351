// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The set's tool that shows processes, as far as a set's software asks it: one process, once.
//
//   top -b -n 1 [-d SECONDS] -p PID
//
// prints a line of headings and, if there is such a process, a line with its figures:
//
//   PID PPID USER STAT VSZ %VSZ %CPU COMMAND
//
// %CPU is the share of one processor that all threads of the process used together during the
// window that the tool measures (0.2 seconds, or what -d says, up to 60): 100 is one processor, 250
// two and a half. It comes from the process's own CPU clock, which counts nanoseconds. There are no
// lines about the machine and no digits in the headings: who looks for a process id in the output
// finds its line alone.
//
// What stands before the arguments makes it a stand-in for the tool: --print-text TEXT and
// --print-file FILE print that, with {pid} replaced, --missing behaves as if there were no tool.
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace {

using Window = std::chrono::duration<double>;

constexpr Window kWindow{0.2};
constexpr Window kLongestWindow{60};
constexpr int kNotFound = 127;  // what a shell answers for a command that is not there
constexpr int kUsage = 2;

struct Arguments {
  std::string pid;
  Window window = kWindow;
  std::optional<std::string> text;
  std::optional<std::string> file;
  bool missing = false;
};

// Empty: it is no window that the tool takes.
std::optional<Window> ReadWindow(const std::string& text) {
  double seconds = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, seconds);
  const bool fits = seconds >= 0 && seconds <= kLongestWindow.count();
  if (error != std::errc() || rest != end || !fits) return std::nullopt;
  return Window(seconds);
}

// Empty: something is not understood.
std::optional<Arguments> Read(const std::vector<std::string>& words) {
  Arguments arguments;
  for (size_t i = 0; i < words.size(); ++i) {
    const bool more = i + 1 < words.size();
    if (words[i] == "-b") continue;
    if (words[i] == "--missing") {
      arguments.missing = true;
    } else if (words[i] == "-n" && more && words[i + 1] == "1") {
      ++i;
    } else if (words[i] == "-d" && more) {
      const std::optional<Window> window = ReadWindow(words[++i]);
      if (!window) return std::nullopt;
      arguments.window = *window;
    } else if (words[i] == "-p" && more) {
      arguments.pid = words[++i];
    } else if (words[i] == "--print-text" && more) {
      arguments.text = words[++i];
    } else if (words[i] == "--print-file" && more) {
      arguments.file = words[++i];
    } else {
      return std::nullopt;
    }
  }
  const bool number =
      !arguments.pid.empty() && arguments.pid.find_first_not_of("0123456789") == std::string::npos;
  if (!number && !arguments.missing) return std::nullopt;
  return arguments;
}

std::string ReadFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void Print(std::string text, const std::string& pid) {
  const std::string mark = "{pid}";
  for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
    text.replace(at, mark.size(), pid);
  }
  std::fwrite(text.data(), 1, text.size(), stdout);
}

struct Process {
  std::string name, state, parent;
  double size_kib = 0;
};

// Empty: there is no such process.
std::optional<Process> FindProcess(const std::string& pid) {
  const std::string line = ReadFile("/proc/" + pid + "/stat");
  const size_t open = line.find('(');
  const size_t close = line.rfind(')');
  if (open == std::string::npos || close == std::string::npos) return std::nullopt;
  Process process;
  process.name = line.substr(open + 1, close - open - 1);
  std::istringstream rest(line.substr(close + 1));
  rest >> process.state >> process.parent;
  constexpr int kFieldsBeforeSize = 18;
  std::string field;
  for (int i = 0; i < kFieldsBeforeSize; ++i) rest >> field;
  double bytes = 0;
  rest >> bytes;
  process.size_kib = bytes / 1024;
  if (!rest || process.state == "Z" || process.state == "X") return std::nullopt;
  return process;
}

double Seconds(const timespec& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Empty: the process is gone.
std::optional<double> ReadClock(clockid_t clock) {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) return std::nullopt;
  return Seconds(time);
}

// In percent of one processor; empty when the process is gone.
std::optional<double> MeasureShare(const std::string& pid, Window window) {
  clockid_t clock{};
  if (clock_getcpuclockid(static_cast<pid_t>(std::strtol(pid.c_str(), nullptr, 10)), &clock) != 0) {
    return std::nullopt;
  }
  const std::optional<double> used_before = ReadClock(clock);
  const std::optional<double> before = ReadClock(CLOCK_MONOTONIC);
  std::this_thread::sleep_for(window);
  const std::optional<double> used_after = ReadClock(clock);
  const std::optional<double> after = ReadClock(CLOCK_MONOTONIC);
  if (!used_before || !used_after || !before || !after) return std::nullopt;
  return 100 * (*used_after - *used_before) / (*after - *before);
}

double MachineKib() {
  return static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE)) /
         1024;
}

void PrintProcess(const std::string& pid, Window window) {
  std::puts("  PID  PPID USER     STAT   VSZ %VSZ %CPU COMMAND");
  const std::optional<double> share = MeasureShare(pid, window);
  const std::optional<Process> process = FindProcess(pid);
  if (!share || !process) return;
  std::printf("%5s %5s owner    %-4s %5.0f %4.0f %4.1f %s\n", pid.c_str(), process->parent.c_str(),
              process->state.c_str(), process->size_kib, 100 * process->size_kib / MachineKib(),
              *share, process->name.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  const std::optional<Arguments> arguments = Read({argv + 1, argv + argc});
  if (!arguments) {
    std::fputs("top: only -b -n 1 [-d SECONDS] -p PID is known here\n", stderr);
    return kUsage;
  }
  if (arguments->missing) {
    std::fputs("top: not found\n", stderr);
    return kNotFound;
  }
  if (arguments->text) {
    Print(*arguments->text, arguments->pid);
  } else if (arguments->file) {
    Print(ReadFile(*arguments->file), arguments->pid);
  } else {
    PrintProcess(arguments->pid, arguments->window);
  }
  return std::fflush(stdout) == 0 ? 0 : 1;
}
