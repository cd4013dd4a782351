// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_pipewrapper.h"

#include "common/logger.h"

namespace extension::orvane {

PipeWrapper::PipeWrapper(const std::string& command) : pipe(nullptr) {
  if (command.empty()) {
    LoggerE("Provided command is empty");
    return;
  }
  pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    LoggerE("Failed to execute command: %s", command.c_str());
  }
}

PipeWrapper::~PipeWrapper() {
  if (pipe != nullptr) {
    pclose(pipe);
  }
}

FILE* PipeWrapper::getPipe() { return pipe; }

}  // namespace extension::orvane
