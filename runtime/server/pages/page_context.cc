// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_context.h"

#include <algorithm>
#include <utility>

#include "base/utf8.h"
#include "base/wall_clock.h"
#include "server/web/secret.h"

namespace orvane::server {

namespace {

constexpr uint16_t kGoingAway = 1001;
// Of an address or a title: every simulator is sent them again and again.
constexpr size_t kMostTextBytes = 2048;

void Bound(std::string& text) {
  if (text.size() > kMostTextBytes) text = base::WellFormedUtf8(text.substr(0, kMostTextBytes));
}

}  // namespace

PageContext::PageContext(asio::io_context& loop, int64_t id, Owner owner, const Limits& limits,
                         const Times& times)
    : id_(id),
      secret_(MakeSecret()),
      owner_(std::move(owner)),
      limits_(limits),
      times_(times),
      opened_ns_(base::NowNs()),
      timer_(loop) {
  timer_.expires_at(std::chrono::steady_clock::time_point::max());
}

PageContext::~PageContext() {
  if (socket_) socket_->Close(kGoingAway, "the page is closed");
}

void PageContext::Attach(std::shared_ptr<Socket> socket, int64_t last_received) {
  if (socket_) socket_->Close(kGoingAway, "another connection took its place");
  timer_.cancel();
  socket_ = std::move(socket);
  socket_->set_listener(this);
  if (is_gone_) return GiveUp();
  Acknowledge(last_received);
  socket_->SendText(base::JsonText({{"type", "hello"}, {"received", received_}}));
  for (const Kept& kept : kept_) socket_->Send(kept.message);
  NoteContact();
}

void PageContext::Touch() {
  if (!socket_) AbandonAfter(times_.first_contact);
  NoteContact();
}

void PageContext::NoteContact() {
  if (!std::exchange(has_contact_, true)) owner_.on_contact(*this);
}

void PageContext::Deliver(PageMessage message) {
  if (is_gone_) return;
  message.head["seq"] = ++last_seq_;
  auto written = std::make_shared<const SocketMessage>(WritePageMessage(message));
  kept_bytes_ += written->data.size();
  kept_.push_back({last_seq_, written});
  if (kept_.size() > limits_.kept_frames ||
      (kept_.size() > 1 && kept_bytes_ > limits_.kept_bytes)) {
    return GiveUp();
  }
  // A copy of the pointer: a socket that fails while it is written to lets go of this context.
  if (const auto socket = socket_) socket->Send(std::move(written));
}

void PageContext::Acknowledge(int64_t seq) {
  while (!kept_.empty() && kept_.front().seq <= seq) {
    kept_bytes_ -= kept_.front().message->data.size();
    kept_.pop_front();
  }
}

bool PageContext::Receive(int64_t message_id) {
  if (message_id <= received_) return false;
  received_ = message_id;
  return true;
}

void PageContext::GiveUp() {
  is_gone_ = true;
  kept_.clear();
  kept_bytes_ = 0;
  if (socket_) socket_->SendText(R"({"type":"gone"})");
}

void PageContext::set_state(PageState state) {
  state_ = std::move(state);
  Bound(state_.href);
  Bound(state_.title);
}

ListedPage PageContext::Description() const {
  ListedPage page;
  page.context = id_;
  page.state = state_;
  page.opened_ns = opened_ns_;
  page.instances.assign(instances_.begin(), instances_.end());
  return page;
}

void PageContext::OnSocketMessage(std::string_view data, bool is_binary) {
  owner_.on_message(*this, data, is_binary);
}

void PageContext::OnSocketClosed() {
  socket_.reset();
  AbandonAfter(times_.grace);
}

void PageContext::AbandonAfter(std::chrono::milliseconds time) {
  timer_.expires_after(time);
  timer_.async_wait([weak = weak_from_this()](beast::error_code error) {
    const auto self = weak.lock();
    if (!error && self && !self->socket_) self->owner_.on_abandoned(*self);
  });
}

}  // namespace orvane::server
