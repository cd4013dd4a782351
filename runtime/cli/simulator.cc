// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/simulator.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>

#include "base/json_fields.h"
#include "cli/set_options.h"
#include "posix/unique_fd.h"

namespace orvane::cli {

namespace fs = std::filesystem;

namespace {

// A picture may take half of it.
constexpr std::chrono::seconds kPatience{60};

std::string NoneRuns(const fs::path& folder) {
  return "no simulator runs on " + folder.string() + ". Start one with orvane run --state " +
         folder.string() + ", or name the folder of another one with --state.";
}

// Null for what is no JSON.
Json ParseOrNull(const std::string& text) {
  try {
    return base::ParseJson(text);
  } catch (const base::JsonError&) {
    return {};
  }
}

std::string ErrorOf(const Json& answer) {
  const Json error = answer.value("error", Json());
  const Json text = error.is_object() ? error.value("message", Json()) : error;
  return text.is_string() ? text.get<std::string>() : std::string();
}

}  // namespace

Simulator::Simulator(const std::string& state_folder)
    : folder_(StateFolder(state_folder).lexically_normal()) {
  const fs::path file = folder_ / "run" / "simulator.json";
  std::error_code error;
  if (!fs::exists(file, error)) throw NoSimulator(NoneRuns(folder_));
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  try {
    run_ = base::FromJson<server::RunAddresses>(base::ParseJson(text.str()), "the file");
  } catch (const base::JsonError&) {
    // names no address then
  }
  const auto address = ParseLocalAddress(run_.api);
  if (!address) {
    throw NoSimulator(file.string() + " does not say where the simulator is. " +
                      "End the simulator and start it again.");
  }
  address_ = *address;
  if (!runs()) throw NoSimulator(NoneRuns(folder_) + " The last one ended without cleaning up.");
}

bool Simulator::runs() const { return kill(run_.pid, 0) == 0 || errno == EPERM; }

bool Simulator::EndsWithin(std::chrono::milliseconds patience) const {
  const base::UniqueFd process(static_cast<int>(syscall(SYS_pidfd_open, run_.pid, 0)));
  pollfd ended{process.get(), POLLIN, 0};
  if (process) poll(&ended, 1, static_cast<int>(patience.count()));
  return !runs() || ended.revents != 0;
}

template <class Work>
auto Simulator::Reach(const Work& work) const {
  const std::string failure = "the simulator on " + folder_.string() + " does not answer: ";
  const std::string remedy = ". Start it again if it stays so.";
  try {
    return work();
  } catch (const NobodyListens& error) {
    throw SimulatorGone(failure + error.what() + remedy);
  } catch (const HttpError& error) {
    throw NoSimulator(failure + error.what() + remedy);
  }
}

std::unique_ptr<MessageStream> Simulator::OpenEvents() const {
  return Reach([this] {
    return std::make_unique<MessageStream>(address_, "/api?token=" + run_.secret, kPatience);
  });
}

Json Simulator::Call(const std::string& method, const Json& parameters) const {
  const Json request{{"method", method}, {"params", parameters}};
  const HttpAnswer http = Reach([&] {
    return HttpPost(address_, "/api/call",
                    {{"Content-Type", "application/json"}, {"X-Orvane-Token", run_.secret}},
                    base::JsonText(request), kPatience);
  });
  const std::string place = address_.host + ":" + address_.port;
  const std::string remedy =
      " Was " + (folder_ / "run/simulator.json").string() + " left behind by another run?";
  if (http.status == 403) {
    throw NoSimulator("the simulator at " + place +
                      " does not take this command for one of its own." + remedy);
  }
  const Json answer = ParseOrNull(http.body);
  if (!answer.is_object()) {
    throw NoSimulator("what answers at " + place + " is no simulator: status " +
                      std::to_string(http.status) + " and no JSON." + remedy);
  }
  const std::string error = ErrorOf(answer);
  if (!error.empty()) throw CommandError(error, ExitCode::kScriptError);
  if (http.status != 200) {
    throw CommandError(
        "the simulator refused " + method + " with status " + std::to_string(http.status) + ".",
        ExitCode::kScriptError);
  }
  return answer.value("result", Json());
}

}  // namespace orvane::cli
