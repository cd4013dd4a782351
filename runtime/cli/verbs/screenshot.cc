// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "base/base64.h"
#include "base/json_fields.h"
#include "cli/output.h"
#include "cli/simulator.h"
#include "cli/verbs/verbs.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

struct ScreenshotOptions {
  SimulatorOptions simulator;
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

struct Picture {
  std::string png;  // base64
  bool fresh = false;
};
template <class Map>
void MapFields(Map& map, Picture& picture) {
  map.Optional("png", picture.png);
  map.Optional("fresh", picture.fresh);
}

ExitCode Take(const Simulator& simulator, const ScreenshotOptions& options) {
  const auto picture = base::FromJson<Picture>(simulator.Call("screenshot"), "the picture");
  const auto png = base::DecodeBase64(picture.png);
  if (!png || png->rfind("\x89PNG", 0) != 0) {
    throw SimulatorRefusal("the simulator gave no picture.");
  }
  if (options.file == "-") {
    std::fwrite(png->data(), 1, png->size(), stdout);
    return ExitCode::kDone;
  }
  if (!WriteFile(options.file, *png)) {
    Complain(options.file + " cannot be written. Check the folder and its permissions.");
    return ExitCode::kScriptError;
  }
  if (options.simulator.json) {
    PrintJson({{"file", options.file}, {"bytes", png->size()}, {"fresh", picture.fresh}});
  }
  return ExitCode::kDone;
}

}  // namespace

void AddScreenshotVerb(CLI::App& command, Run& run) {
  const auto options = std::make_shared<ScreenshotOptions>();
  CLI::App* const verb =
      command.add_subcommand("screenshot", "Write a picture of the set's screen as PNG");
  verb->add_option("FILE", options->file, "Where to; - is the standard output")
      ->required()
      ->type_name("");
  AddSimulatorOptions(*verb, options->simulator, "Print file, size and freshness as JSON");
  verb->footer(
      "Exit status: 0 written, 1 the simulator has no picture or the file cannot be written,\n"
      "4 no simulator runs.");
  verb->callback([options, &run] {
    run = [options] {
      return WithSimulator(options->simulator,
                           [&](const Simulator& simulator) { return Take(simulator, *options); });
    };
  });
}

}  // namespace orvane::cli
