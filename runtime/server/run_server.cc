// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_server.h"

#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <utility>

#include "base/wall_clock.h"
#include "server/pictures/open_in_browser.h"
#include "server/simulator/record_methods.h"
#include "server/simulator/run_info.h"
#include "server/web/origins.h"
#include "server/web/secret.h"

namespace orvane::server {

RunServer::RunServer(RunOptions options)
    : options_(std::move(options)),
      set_process_(loop_, *this,
                   {options_.set_process_command, StartOptions(options_), options_.deadline,
                    options_.patience}),
      contexts_(loop_, set_process_, events_, options_.limits, options_.page_times),
      keys_(loop_, set_process_, contexts_, options_.app.id, options_.key_times),
      app_server_(loop_, options_.limits),
      simulator_server_(loop_, options_.limits) {
  contexts_.set_on_message([this](PageContext& context, std::string_view data, bool is_binary) {
    messages_.HandleSocketMessage(context, data, is_binary);
  });
}

RunServer::~RunServer() = default;

void RunServer::Run() {
  std::signal(SIGPIPE, SIG_IGN);
  signals_.add(SIGINT);
  signals_.add(SIGTERM);
  signals_.async_wait([this](beast::error_code error, int) {
    if (!error) BeginStop();
  });
  set_process_.Start();
  loop_.run();
  if (!failure_.empty()) throw std::runtime_error(failure_);
}

void RunServer::Stop() {
  asio::post(loop_, [this] { BeginStop(); });
}

void RunServer::OnStarted(const Json& started) {
  try {
    Open(started);
  } catch (const std::exception& error) {
    Fail(error.what());
  }
}

void RunServer::Open(const Json& started) {
  const std::string secret = MakeSecret();
  const Origins origins = ListenOnLoopback(app_server_, simulator_server_, options_.port);
  addresses_ = {origins.simulator.url() + "/#token=" + secret,
                origins.simulator.url() + "/api/call", secret, origins.app.url(), getpid()};
  script_.emplace(started, PageAppInfo(options_.app), options_.deadline, options_.check_script);
  app_site_.emplace(origins, options_,
                    AppSite::Partners{loop_, contexts_, messages_, *script_, events_, journal_});
  simulator_site_.emplace(origins, secret, api_, events_);
  AddRecordMethods(api_, journal_, AppInfo(options_.app),
                   [this] { return run_methods_.profile(); });
  run_methods_.AddTo(api_, base::NowNs());
  run_methods_.AskProfile();
  record_.emplace(options_.set.state_folder, addresses_);
  app_server_.Serve(*app_site_);
  simulator_server_.Serve(*simulator_site_);
  if (options_.on_ready) options_.on_ready(addresses_);
  if (options_.open_browser) OpenInBrowser(addresses_.simulator);
  if (!options_.headless_browser) return;
  pictures_.Open(addresses_.simulator, [this](const std::string& why) { Fail(why); });
}

void RunServer::OnEvent(const std::string& name, const Json& data, std::string_view body) {
  if (name == "log") return journal_.AddLog(body);
  if (name == "explain") return journal_.AddExplanation(data);
  events_.Publish(name, data);
  if (name == "profile") run_methods_.TakeProfile(data);
  if (name == "key") keys_.OnKeyEvent(data);
}

void RunServer::OnRestarted() {
  contexts_.ForgetInstances();
  contexts_.DeliverToAll({Json{{"type", "restarted"}}, std::nullopt, false});
}

void RunServer::Fail(const std::string& why) {
  failure_ = why;
  BeginStop();
}

void RunServer::BeginStop() {
  if (std::exchange(stopping_, true)) return;
  app_server_.Stop();
  simulator_server_.Stop();
  record_.reset();
  if (app_site_) app_site_->StopWatching();
  beast::error_code ignored;
  signals_.cancel(ignored);
  set_process_.Stop([this] { loop_.stop(); });
}

}  // namespace orvane::server
