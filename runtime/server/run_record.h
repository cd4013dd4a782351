// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

#include "server/simulator/run_options.h"

namespace orvane::server {

// The file by which the command line finds the running server of a state folder:
// run/simulator.json, for its owner alone. It is there while this object is. A later server of the
// same folder takes it over.
class RunRecord {
 public:
  // Throws std::runtime_error when it cannot be written.
  RunRecord(const std::filesystem::path& state_folder, const RunAddresses& addresses);
  ~RunRecord();
  RunRecord(const RunRecord&) = delete;
  RunRecord& operator=(const RunRecord&) = delete;

 private:
  const std::filesystem::path file_;
  const std::string json_;
};

}  // namespace orvane::server
