// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "base/net.h"
#include "server/pages/page_message.h"
#include "server/pages/page_state.h"
#include "server/web/limits.h"
#include "server/web/socket.h"

namespace orvane::server {

// One document of the application in a browser, from the moment its script was made for it. It
// outlives the loss of its socket for a while: what was sent and not acknowledged is kept, and sent
// again to the socket that follows. The loop's thread only.
class PageContext final : public SocketListener, public std::enable_shared_from_this<PageContext> {
 public:
  struct Owner {
    std::function<void(PageContext& context, std::string_view data, bool is_binary)> on_message;
    std::function<void(PageContext& context)> on_contact;    // the first time that it is heard of
    std::function<void(PageContext& context)> on_abandoned;  // closes it
    std::function<bool()> may_receive;                       // whether the library keeps up
  };
  struct Times {
    std::chrono::milliseconds first_contact{30000};  // between the script and a message of it
    std::chrono::milliseconds grace{5000};           // without a socket
  };

  PageContext(asio::io_context& loop, int64_t id, Owner owner, const Limits& limits,
              const Times& times);
  ~PageContext() override;
  PageContext(const PageContext&) = delete;
  PageContext& operator=(const PageContext&) = delete;

  int64_t id() const { return id_; }
  const std::string& secret() const { return secret_; }
  int64_t opened_ns() const { return opened_ns_; }

  // Its script has been sent; the page may have gone before that arrived.
  void Await() { AbandonAfter(times_.first_contact); }
  void Attach(std::shared_ptr<Socket> socket, int64_t last_received);
  // Something came from the page another way than by its socket.
  void Touch();
  // Whether the page was ever heard of.
  bool has_contact() const { return has_contact_; }
  // Numbers a message, sends it, and keeps it until the page has acknowledged it.
  void Deliver(PageMessage message);
  void Acknowledge(int64_t seq);
  // Whether the message with this number is a new one; from then on it is not.
  bool Receive(int64_t message_id);

  // What the page told about itself; long texts are cut.
  void set_state(PageState state);
  const PageState& state() const { return state_; }
  int64_t focus_order() const { return focus_order_; }
  void set_focus_order(int64_t order) { focus_order_ = order; }
  std::set<std::string>& instances() { return instances_; }
  ListedPage Description() const;

  void OnSocketMessage(std::string_view data, bool is_binary) override;
  bool MayReceive() const override { return owner_.may_receive(); }
  void OnSocketClosed() override;

 private:
  struct Kept {
    int64_t seq;
    std::shared_ptr<const SocketMessage> message;
  };

  void AbandonAfter(std::chrono::milliseconds time);
  void NoteContact();
  void GiveUp();  // too much is kept: the page has to start anew

  const int64_t id_;
  const std::string secret_;
  const Owner owner_;
  const Limits limits_;
  const Times times_;
  const int64_t opened_ns_;
  asio::steady_timer timer_;
  std::shared_ptr<Socket> socket_;
  int64_t received_ = 0;
  int64_t last_seq_ = 0;
  std::deque<Kept> kept_;
  size_t kept_bytes_ = 0;
  bool is_gone_ = false;
  bool has_contact_ = false;

  PageState state_;
  int64_t focus_order_ = 0;          // grows each time a page gets the focus or is loaded
  std::set<std::string> instances_;  // names of extensions
};

}  // namespace orvane::server
