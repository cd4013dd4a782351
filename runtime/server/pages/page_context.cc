// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_context.h"

#include <algorithm>
#include <utility>

#include "base/json_text.h"
#include "base/json_writer.h"
#include "base/wall_clock.h"
#include "server/web/secret.h"

namespace orvane::server {

namespace {

constexpr uint16_t kGoingAway = 1001;
// Of an address or a title: every simulator is sent them again and again.
constexpr size_t kMostTextBytes = 2048;

std::string BoundedText(const std::string& text) {
  return base::JsonText(base::WellFormed(text.substr(0, kMostTextBytes)));
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
  socket_->Send(std::make_shared<const std::string>(
      base::JsonWriter().Text("type", "hello").Number("received", received_).Take()));
  for (const Kept& kept : kept_) socket_->Send(kept.text);
  NoteContact();
}

void PageContext::Touch() {
  if (!socket_) AbandonAfter(times_.first_contact);
  NoteContact();
}

void PageContext::NoteContact() {
  if (!std::exchange(has_contact_, true)) owner_.on_contact(*this);
}

void PageContext::Deliver(std::string_view members) {
  if (is_gone_) return;
  auto text = std::make_shared<std::string>(R"({"seq":)" + std::to_string(++last_seq_));
  text->append(",").append(members).append("}");
  kept_bytes_ += text->size();
  kept_.push_back({last_seq_, text});
  if (kept_.size() > limits_.kept_frames ||
      (kept_.size() > 1 && kept_bytes_ > limits_.kept_bytes)) {
    return GiveUp();
  }
  // A copy of the pointer: a socket that fails while it is written to lets go of this context.
  if (const auto socket = socket_) socket->Send(std::move(text));
}

void PageContext::Acknowledge(int64_t seq) {
  while (!kept_.empty() && kept_.front().seq <= seq) {
    kept_bytes_ -= kept_.front().text->size();
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
  if (socket_) socket_->Send(std::make_shared<const std::string>(R"({"type":"gone"})"));
}

void PageContext::SetState(const base::JsonObject& state) {
  const std::pair<const char*, std::string*> texts[] = {{"href", &href_}, {"title", &title_}};
  for (const auto& [name, value] : texts) {
    if (const auto text = state.Text(name)) *value = BoundedText(*text);
  }
  const std::pair<const char*, bool*> flags[] = {{"top", &top_},
                                                 {"visible", &visible_},
                                                 {"focused", &focused_},
                                                 {"editing", &editing_},
                                                 {"isolated", &isolated_}};
  for (const auto& [name, value] : flags) {
    const std::string_view raw = state.Raw(name);
    if (raw == "true" || raw == "false") *value = raw == "true";
  }
}

void PageContext::set_href(const std::string& href) { href_ = BoundedText(href); }

std::string PageContext::Json() const {
  base::JsonWriter json;
  json.Number("context", id_).Raw("href", href_).Raw("title", title_).Flag("top", top_);
  json.Flag("visible", visible_).Flag("focused", focused_).Flag("editing", editing_);
  json.Flag("isolated", isolated_).Number("opened_ns", opened_ns_);
  json.Raw("instances", base::JsonArray(instances_, base::JsonText<std::string>))
      .Text("runtime", "ready");
  return json.Take();
}

void PageContext::OnSocketMessage(std::string_view text) { owner_.on_message(*this, text); }

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
