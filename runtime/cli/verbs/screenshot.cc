// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/base64.h"
#include "cli/output.h"
#include "cli/verbs/simulator_verb.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

struct ScreenshotOptions : SimulatorOptions {
  std::string file;
};

// Whole or not at all, so that nobody finds half a picture. False: it cannot be written.
bool WriteFile(const fs::path& file, const std::string& bytes) {
  const fs::path temporary = file.string() + ".part";
  std::ofstream stream(temporary, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  std::error_code error;
  if (stream) fs::rename(temporary, file, error);
  if (stream && !error) return true;
  fs::remove(temporary, error);
  return false;
}

ExitCode Take(const Simulator& simulator, const ScreenshotOptions& options) {
  const Json picture = simulator.Call("screenshot");
  const auto png = base::DecodeBase64(TextOf(picture.value("png", Json())));
  if (!png || png->rfind("\x89PNG", 0) != 0) {
    throw CommandError("the simulator gave no picture.", ExitCode::kScriptError);
  }
  if (options.file == "-") {
    std::fwrite(png->data(), 1, png->size(), stdout);
    return ExitCode::kDone;
  }
  if (!WriteFile(options.file, *png)) {
    throw CommandError(options.file + " cannot be written. Check the folder and its permissions.",
                       ExitCode::kScriptError);
  }
  if (options.json) {
    PrintJson(
        {{"file", options.file}, {"bytes", png->size()}, {"fresh", picture.value("fresh", false)}});
  }
  return ExitCode::kDone;
}

}  // namespace

void AddScreenshotVerb(CLI::App& command, Run& run) {
  const auto verb = AddSimulatorVerb<ScreenshotOptions>(
      command, run, "screenshot", "Write a picture of the set's screen as PNG", Take);
  verb.app.add_option("FILE", verb.options.file, "Where to; - is the standard output")
      ->required()
      ->type_name("");
  AddSimulatorOptions(verb.app, verb.options, "Print file, size and freshness as JSON");
  verb.app.footer(
      "Exit status: 0 written, 1 the simulator has no picture or the file cannot be written,\n"
      "4 no simulator runs.");
}

}  // namespace orvane::cli
