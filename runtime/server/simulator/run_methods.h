// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "server/pages/page_contexts.h"
#include "server/pictures/picture_taker.h"
#include "server/simulator/api.h"
#include "server/simulator/run_options.h"
#include "set_process/set_process.h"

namespace orvane::server {

// What the simulator asks of the run itself: its facts, its pages, its process, text typed and
// pictures taken. The loop's thread only.
class RunMethods {
 public:
  struct Targets {  // all borrowed
    const RunOptions& options;
    const RunAddresses& addresses;
    set_process::SetProcess& set_process;
    PageContexts& contexts;
    PictureTaker& pictures;
  };

  explicit RunMethods(Targets targets) : targets_(targets) {}

  // run.…, pages.…, page.…, process.…, ime.input and screenshot. `started_ns` is when it began.
  void AddTo(Api& api, int64_t started_ns);

  // The name of the set's profile, as far as the set process has told it.
  const std::string& profile() const { return profile_; }
  void AskProfile();
  void TakeProfile(const Json& part);  // that part of the set's state

 private:
  void ReloadPage(std::optional<int64_t> id);  // none: every page
  void EnterText(Json input);
  void TakePicture(const Api::Reply& reply);

  const Targets targets_;
  std::string profile_;
};

}  // namespace orvane::server
