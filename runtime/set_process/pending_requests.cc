// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/pending_requests.h"

#include <utility>

namespace orvane::set_process {

Json Answer::result() const { return ok() ? head.value("result", Json()) : Json(); }

std::string Answer::error() const {
  return ok() || !head.contains("error") ? "" : head["error"].value("message", "");
}

int64_t Answer::microseconds() const {
  return head.is_object() ? head.value("us", int64_t{-1}) : -1;
}

uint64_t PendingRequests::Add(Receiver receiver, TimePoint deadline) {
  pending_[++last_id_] = {std::move(receiver), deadline};
  return last_id_;
}

std::optional<PendingRequests::Receiver> PendingRequests::Take(uint64_t id) {
  const auto found = pending_.find(id);
  if (found == pending_.end()) return std::nullopt;
  Receiver receiver = std::move(found->second.receiver);
  pending_.erase(found);
  return receiver;
}

std::vector<PendingRequests::Receiver> PendingRequests::TakeLate(TimePoint now) {
  std::vector<Receiver> late;
  for (auto& [id, pending] : pending_) {
    if (now < pending.deadline) break;
    if (pending.receiver) late.push_back(std::exchange(pending.receiver, nullptr));
  }
  return late;
}

std::optional<PendingRequests::TimePoint> PendingRequests::oldest_deadline() const {
  if (pending_.empty()) return std::nullopt;
  return pending_.begin()->second.deadline;
}

void PendingRequests::FailAll(const std::string& why) {
  for (auto& [id, pending] : std::exchange(pending_, {})) {
    Answer answer;
    answer.failure = why;
    if (pending.receiver) pending.receiver(answer);
  }
}

}  // namespace orvane::set_process
