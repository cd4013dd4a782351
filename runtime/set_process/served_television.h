// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/json.h"
#include "television/contexts.h"
#include "television/control.h"
#include "television/event_stream.h"
#include "television/outbox.h"
#include "television/television.h"

namespace orvane::set_process {

// The television of the set process, with its page contexts, its control methods and what tells the
// server of it. Borrows the outbox. Belongs to the extension thread.
class ServedTelevision final : private television::TelevisionListener {
 public:
  // `last_log_line` is the number after which those of the log go on. Throws as Television and
  // Television::LoadExtensions; no set runs then.
  ServedTelevision(const television::TelevisionOptions& options,
                   const television::ShippedParts& shipped, const Json& snapshot,
                   int64_t last_log_line, television::Outbox& outbox);
  ~ServedTelevision() override;
  ServedTelevision(const ServedTelevision&) = delete;
  ServedTelevision& operator=(const ServedTelevision&) = delete;

  // The answer to the server's "start". Loads every extension for it: a page's script text holds
  // the script of each.
  Json Started();

  television::RuntimeServices& services() { return television_.services(); }
  television::EventStream& events() { return events_; }
  television::Contexts& contexts() { return *contexts_; }
  television::Control& control() { return *control_; }

 private:
  void OnExplanation(const std::string& text) override { events_.Explain(text); }
  void OnWarning(const std::string& text) override { events_.Explain("Warning: " + text); }
  void OnLoading(const std::string& name) override;
  void OnTouched(television::Part part) override { events_.Touch(part); }

  television::Outbox& outbox_;
  television::Television television_;
  television::EventStream events_;
  std::optional<television::Contexts> contexts_;
  std::optional<television::Control> control_;
};

}  // namespace orvane::set_process
