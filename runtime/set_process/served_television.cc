// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/served_television.h"

#include <utility>

namespace orvane::set_process {

ServedTelevision::ServedTelevision(const television::TelevisionOptions& options,
                                   const television::ShippedParts& shipped, const Json& snapshot,
                                   int64_t last_log_line, FrameSender& frames,
                                   MessageInHand& in_hand)
    : in_hand_(in_hand),
      television_(options, shipped, snapshot, *this),
      events_(
          television_.set().events(), television_.state(),
          [this] { return television_.TakeSnapshot(); }, last_log_line, frames) {
  television_.LoadExtensions();
  contexts_.emplace(television_.host(), frames);
  control_.emplace(television_);
}

// What extensions say and do at their end is still told.
ServedTelevision::~ServedTelevision() {
  control_.reset();
  contexts_.reset();
  television_.UnloadExtensions();
}

Json ServedTelevision::Started() {
  Json scripts = television_.Scripts();
  in_hand_.End();
  return {{"op", "started"},
          {"catalogue", television_.Catalogue()},
          {"scripts", std::move(scripts)},
          {"warnings", television_.warnings()}};
}

}  // namespace orvane::set_process
