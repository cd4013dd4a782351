// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// The test's own surroundings stay out, but for what a build with sanitizers needs to run.
std::vector<std::string> SanitizerOptions() {
  std::vector<std::string> variables;
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = getenv(name)) variables.push_back(std::string(name) + "=" + value);
  }
  return variables;
}

void Redirect(int stream, const fs::path& file, int flags) {
  const int descriptor = open(file.c_str(), flags, 0600);
  if (descriptor < 0 || dup2(descriptor, stream) < 0) _exit(126);
  close(descriptor);
}

}  // namespace

CommandTest::CommandTest() {
  std::string name = (fs::temp_directory_path() / "orvane-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
  root_ = fs::canonical(name);
  fs::create_directory(folder());
}

CommandTest::~CommandTest() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

// The streams go through files, so that no reader has to keep up.
Outcome CommandTest::Run(const std::vector<std::string>& arguments, const std::string& input,
                         const std::vector<std::string>& environment) const {
  std::vector<std::string> command = {command_};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = SanitizerOptions();
  variables.push_back("ORVANE_STATE=" + state().string());
  variables.emplace_back("PATH=/usr/bin:/bin");
  variables.insert(variables.end(), environment.begin(), environment.end());
  std::ofstream(root_ / "in") << input;
  const std::vector<char*> argv = Pointers(command);
  const std::vector<char*> envp = Pointers(variables);
  const pid_t child = fork();
  if (child == 0) {
    Redirect(STDIN_FILENO, root_ / "in", O_RDONLY);
    Redirect(STDOUT_FILENO, root_ / "out", O_WRONLY | O_CREAT | O_TRUNC);
    Redirect(STDERR_FILENO, root_ / "err", O_WRONLY | O_CREAT | O_TRUNC);
    if (chdir(folder().c_str()) == 0) execve(command_.c_str(), argv.data(), envp.data());
    _exit(127);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) throw std::runtime_error("cannot run it");
  Outcome outcome;
  outcome.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  outcome.out = ReadText(root_ / "out");
  outcome.err = ReadText(root_ / "err");
  return outcome;
}

std::string CommandTest::Write(const std::string& name, const std::string& text) const {
  const fs::path file = folder() / name;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
  return name;
}

std::string CommandTest::WriteApplication(const std::string& elements) const {
  Write("app/index.html", "<!DOCTYPE html>");
  Write("app/config.xml",
        "<widget xmlns=\"http://www.w3.org/ns/widgets\" "
        "xmlns:tizen=\"http://tizen.org/ns/widgets\" version=\"1.0.0\">\n"
        "<tizen:application id=\"aBcDeFgHiJ.App\" package=\"aBcDeFgHiJ\" "
        "required_version=\"3.0\"/>\n" +
            elements + "\n</widget>\n");
  return "app";
}

std::string ReadText(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace orvane::cli
