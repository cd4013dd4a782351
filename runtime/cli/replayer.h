// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/net.h"
#include "cli/session_file.h"
#include "set_process/set_process.h"

namespace orvane::cli {

// Where a replay went another way than the recording.
struct Difference {
  RecordedMessage message;
  std::string recorded;  // for people, as the next
  std::string replayed;
};

enum class Comparison {
  kForm,    // figures that differ from run to run, and the application's UUID, count as the same
  kStrict,  // every reply has to be the recorded one
};

// Sends the messages of a recorded session to a set process of its own, in their order, and
// compares what comes back. Replies are compared as JSON where they are; posted ones are known by
// the callback that they are for. Every wait has a bound: the process's deadline, or `patience` for
// posted messages. One thread, whose loop it runs.
class Replayer final : private set_process::SetProcessListener {
 public:
  // `patience` is how long all waits for posted messages may take together. Starts the process;
  // throws CommandError when no such set can be started.
  Replayer(set_process::SetProcessOptions process, Comparison comparison,
           std::chrono::milliseconds patience);
  ~Replayer() override;  // when the process has ended
  Replayer(const Replayer&) = delete;
  Replayer& operator=(const Replayer&) = delete;

  // Ends early, with a difference, when the process dies or does not answer. Once.
  std::vector<Difference> Replay(const std::vector<RecordedMessage>& messages);

 private:
  // What became of a request; copied, since an answer lives for the call.
  struct Reply {
    std::string text;
    std::string error;    // the process refused
    std::string failure;  // nobody answered
  };

  void OnStarted(const Json&) override { is_started_ = true; }
  void OnStartFailed(const std::string& why) override { failure_ = why; }
  void OnPosted(const set_process::Posted& posted) override;
  void OnEvent(const std::string&, const Json&, std::string_view) override {}
  void OnRestarted() override {}
  void OnProcessChanged() override { failure_ = process_.why_down(); }

  Reply Ask(Json head, const std::string& body);
  bool ReplayOne(const RecordedMessage& message);  // false: the end
  void NoteCallback(const RecordedMessage& message);
  void CompareReply(const RecordedMessage& message, const Reply& reply);
  void ComparePosted(const RecordedMessage& message);
  std::optional<RecordedMessage> TakePosted(const RecordedMessage& message);
  bool WaitForPosted();
  void ReportUnexpected();
  bool IsSame(const std::string& recorded, const std::string& replayed,
              const std::string& command) const;

  asio::io_context loop_{1};
  set_process::SetProcess process_;
  const Comparison comparison_;
  std::chrono::milliseconds patience_;  // what is left of it
  bool is_started_ = false;
  std::string failure_;                // why there is no process, or none that answers
  std::list<RecordedMessage> posted_;  // to pages; the oldest first, without what was compared
  // The command of each callback that waits: its reply does not name it.
  std::map<std::pair<int64_t, int64_t>, std::string> commands_;
  std::vector<Difference> differences_;
};

}  // namespace orvane::cli
