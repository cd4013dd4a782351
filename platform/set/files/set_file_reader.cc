// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "files/set_file_reader.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "file_text.h"
#include "files/set_file_text.h"
#include "tvset/faults.h"

namespace fs = std::filesystem;

namespace tvset {
namespace {

using Access = SetFileReader::Access;
using AnswerKind = SetFileReader::AnswerKind;

Access Error(int error) { return Access{AnswerKind::kError, error, {}, {}}; }
Access Text(std::string text) { return Access{AnswerKind::kText, 0, std::move(text), {}}; }

void ReplaceAll(std::string& text, std::string_view from, const std::string& to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string WithProcessId(std::string text) {
  ReplaceAll(text, "{pid}", std::to_string(getpid()));
  return text;
}

// One word of a shell command, whatever is in it.
std::string Quoted(std::string word) {
  ReplaceAll(word, "'", "'\\''");
  return "'" + word + "'";
}

// The set's own tool lies beside this library.
std::string TopTool() {
  static const char here = 0;
  Dl_info info{};
  if (dladdr(&here, &info) == 0 || info.dli_fname == nullptr) return "top";
  std::error_code error;
  const fs::path library = fs::canonical(info.dli_fname, error);
  return (library.parent_path() / "tvset" / "top").string();
}

}  // namespace

std::optional<Access> SetFileReader::Instead(SetFile file) const {
  const std::string fault = "file:" + std::string(NameOf(file));
  if (const std::optional<int> code = files_.faults_.Take(fault.c_str())) {
    return Error(std::abs(*code));
  }
  {
    std::lock_guard<std::mutex> lock(files_.mutex_);
    const auto found = files_.replacements_.find(file);
    if (found != files_.replacements_.end()) {
      return found->second ? Text(WithProcessId(*found->second)) : Error(ENOENT);
    }
  }
  const std::string path = files_.FolderFile(file);
  if (path.empty()) return std::nullopt;
  return Access{AnswerKind::kFile, 0, {}, path};
}

SetFileReader::Access SetFileReader::Own(SetFile file) const {
  switch (file) {
    case SetFile::kMemoryStatistics: {
      std::optional<std::string> text = MemoryStatisticsText();
      return text ? Text(std::move(*text)) : Error(EIO);
    }
    case SetFile::kGpuMemory:
      return Text(GpuMemoryText(files_.features_));
    case SetFile::kGemInfo:
      return Text(GemInfoText(files_.features_, files_.log_));
    case SetFile::kDebugSwitch:
      return Error(ENOENT);
    case SetFile::kProcessors:
    case SetFile::kTop:
      break;
  }
  return Access{AnswerKind::kMachine, 0, {}, {}};
}

SetFileReader::Access SetFileReader::Open(SetFile file) const {
  std::optional<Access> instead = Instead(file);
  if (!instead) return Own(file);
  if (instead->answer != AnswerKind::kFile) return std::move(*instead);
  std::error_code error;
  if (fs::is_directory(instead->path, error)) return Error(EISDIR);
  const std::optional<std::string> text = ReadFileBytes(instead->path);
  return text ? Text(WithProcessId(*text)) : Error(EACCES);
}

SetFileReader::Access SetFileReader::Status(SetFile file) const {
  if (std::optional<Access> instead = Instead(file)) return std::move(*instead);
  // Whether there is such a file does not depend on what is in it.
  if (file == SetFile::kDebugSwitch || file == SetFile::kProcessors) return Own(file);
  return Text({});
}

SetFileReader::Access SetFileReader::Command() const {
  const std::string tool = Quoted(TopTool());
  const std::optional<Access> instead = Instead(SetFile::kTop);
  if (!instead) return Text(tool);
  switch (instead->answer) {
    case AnswerKind::kText:
      return Text(tool + " --print-text " + Quoted(instead->text));
    case AnswerKind::kFile:
      if (access(instead->path.c_str(), X_OK) == 0) return Text(Quoted(instead->path));
      return Text(tool + " --print-file " + Quoted(instead->path));
    default:
      // No such tool is what the shell finds out; only a fault keeps it from being started.
      return instead->error == ENOENT ? Text(tool + " --missing") : *instead;
  }
}

}  // namespace tvset
