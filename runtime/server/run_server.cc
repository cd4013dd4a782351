// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_server.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <optional>
#include <system_error>
#include <utility>

#include "browser/folder_watcher.h"
#include "browser/open_in_browser.h"
#include "server/api.h"
#include "server/app_folder.h"
#include "server/app_site.h"
#include "server/browser_desk.h"
#include "server/dev_server.h"
#include "server/event_hub.h"
#include "server/http_server.h"
#include "server/journal.h"
#include "server/json_writer.h"
#include "server/key_presses.h"
#include "server/library.h"
#include "server/net.h"
#include "server/origins.h"
#include "server/page_contexts.h"
#include "server/page_messages.h"
#include "server/run_info.h"
#include "server/run_record.h"
#include "server/secret.h"
#include "server/simulator_site.h"
#include "server/wall_clock.h"
#include "simulator/simulator_files.h"

namespace orvane::server {

namespace {

bool FindSimulatorFile(const std::string& path, std::string* bytes, std::string* type) {
  const auto& files = simulator::Files();
  const auto file =
      std::find_if(files.begin(), files.end(),
                   [&path](const simulator::File& candidate) { return candidate.path == path; });
  if (file == files.end()) return false;
  *bytes = file->bytes;
  *type = file->type;
  return true;
}

LibraryOptions MakeLibraryOptions(const RunOptions& options) {
  LibraryOptions library;
  library.command = options.library_command;
  library.start_options = StartOptionsJson(options);
  library.deadline = options.deadline;
  library.patience = options.patience;
  return library;
}

PageContext::Times MakeTimes(const RunOptions& options) {
  PageContext::Times times;
  times.grace = options.context_grace;
  return times;
}

}  // namespace

class RunServer::Runner final : public LibraryListener {
 public:
  explicit Runner(RunOptions options)
      : options_(std::move(options)),
        loop_(1),
        signals_(loop_),
        hub_(loop_),
        library_(loop_, *this, MakeLibraryOptions(options_)),
        contexts_(loop_, library_, hub_, options_.limits, MakeTimes(options_)),
        journal_(hub_),
        api_(library_),
        keys_(loop_, library_, contexts_, options_.app.id),
        messages_(contexts_, library_, journal_, keys_),
        app_server_(loop_, options_.limits),
        simulator_server_(loop_, options_.limits) {
    contexts_.set_on_message([this](PageContext& context, std::string_view text) {
      messages_.HandleSocketMessage(context, text);
    });
  }

  void Run() {
    std::signal(SIGPIPE, SIG_IGN);
    signals_.add(SIGINT);
    signals_.add(SIGTERM);
    signals_.async_wait([this](beast::error_code error, int) {
      if (!error) BeginStop();
    });
    library_.Start();
    loop_.run();
    if (!failure_.empty()) throw RunError(failure_);
  }

  void Stop() {
    asio::post(loop_, [this] { BeginStop(); });
  }

  void OnStarted(const JsonObject& started) override;
  void OnStartFailed(const std::string& why) override { Fail(why); }
  void OnPosted(int64_t context, std::string_view extension, std::string_view text) override {
    messages_.DeliverPosted(context, extension, text);
  }
  void OnEvent(std::string_view name, std::string_view data) override;
  void OnRestarted() override;
  void OnProcessChanged() override { hub_.Publish("process", library_.Json()); }

 private:
  void Open(const JsonObject& started);
  void ServeContent(const Origins& origins);
  void NoteDocument(const DevServer::Document& document);
  void WatchFolder();
  void Explain(const std::string& text);
  void OpenBrowser();
  void TakePicture(const Api::Reply& reply);
  void AddMethods();
  void AskProfile();
  void TakeProfile(std::string_view part);
  void EnterText(const JsonObject& params);
  void Fail(const std::string& why);
  void BeginStop();

  RunOptions options_;
  asio::io_context loop_;
  asio::signal_set signals_;
  EventHub hub_;
  Library library_;
  PageContexts contexts_;
  Journal journal_;
  Api api_;
  KeyPresses keys_;
  PageMessages messages_;
  HttpServer app_server_;
  HttpServer simulator_server_;

  // From the moment the library process has started.
  std::optional<PageScript> script_;
  std::optional<AppFolder> folder_;      // either this
  std::optional<DevServer> dev_server_;  // or this
  std::optional<AppSite> app_site_;
  std::optional<SimulatorSite> simulator_site_;
  std::optional<browser::FolderWatcher> watcher_;
  std::optional<RunRecord> record_;
  BrowserDesk browser_desk_{loop_};
  RunAddresses addresses_;
  std::string profile_;
  int64_t started_ns_ = 0;
  bool stopping_ = false;
  std::string failure_;
};

void RunServer::Runner::OnStarted(const JsonObject& started) {
  try {
    Open(started);
  } catch (const std::exception& error) {
    Fail(error.what());
  }
}

void RunServer::Runner::Open(const JsonObject& started) {
  started_ns_ = NowNs();
  const std::string secret = MakeSecret();
  const Origins origins = ListenOnLoopback(app_server_, simulator_server_, options_.port);
  const auto& [app, simulator] = origins;
  addresses_ = {simulator.url() + "/#token=" + secret, app.url()};
  script_.emplace(started, PageAppJson(options_.app), options_.deadline, options_.check_script);
  app_site_.emplace(app, simulator, AppSite::Parts{contexts_, messages_, *script_},
                    StartPath(options_));
  ServeContent(origins);
  simulator_site_.emplace(simulator, app, secret, FindSimulatorFile, api_, hub_);
  AddMethods();
  AskProfile();
  record_.emplace(options_.state_folder, JsonWriter()
                                             .Text("url", addresses_.simulator)
                                             .Text("api", simulator.url() + "/api/call")
                                             .Text("token", secret)
                                             .Number("pid", getpid())
                                             .Text("appUrl", addresses_.app)
                                             .Take());
  app_server_.Serve(*app_site_);
  simulator_server_.Serve(*simulator_site_);
  WatchFolder();
  if (options_.on_ready) options_.on_ready(addresses_);
  OpenBrowser();
}

void RunServer::Runner::ServeContent(const Origins& origins) {
  if (!options_.dev_server.empty()) {
    dev_server_.emplace(
        loop_, options_.dev_server, origins.app, origins.simulator,
        DevServer::Listener{
            [this](HttpResponse* response) { app_site_->AddHeaders(response); },
            [this](const DevServer::Document& document) { NoteDocument(document); }});
    return app_site_->set_content(
        [this](const std::shared_ptr<Exchange>& exchange) { dev_server_->Handle(exchange); });
  }
  folder_.emplace(options_.app.folder);
  app_site_->set_content([this](const std::shared_ptr<Exchange>& exchange) {
    HttpResponse response = folder_->Answer(exchange->request());
    app_site_->AddHeaders(&response);
    exchange->Respond(std::move(response));
  });
}

void RunServer::Runner::NoteDocument(const DevServer::Document& document) {
  if (document.is_top) contexts_.ForgetScriptless();
  if (document.problem.empty()) return;
  contexts_.NoteScriptless(addresses_.app + document.path, document.is_top, document.problem);
}

void RunServer::Runner::WatchFolder() {
  if (!options_.watch || !options_.dev_server.empty()) return;
  try {
    watcher_.emplace(loop_, options_.app.folder, [this](const std::string& file) {
      hub_.Publish("reload", JsonWriter().Text("file", file).Take());
      contexts_.Reload();
    });
  } catch (const std::system_error& error) {
    Explain(std::string("Saved files do not reload the page: ") + error.what() + ".");
  }
}

void RunServer::Runner::Explain(const std::string& text) {
  journal_.AddExplanation(R"("text":)" + JsonText(text));
}

void RunServer::Runner::OpenBrowser() {
  if (options_.open_browser) browser::OpenInBrowser(addresses_.simulator);
  if (!options_.headless_browser) return;
  browser_desk_.Open(addresses_.simulator, [this](const std::string& why) { Fail(why); });
}

void RunServer::Runner::TakePicture(const Api::Reply& reply) {
  browser_desk_.TakePicture(
      addresses_.app + StartPath(options_), [reply](const BrowserDesk::Picture& picture) {
        if (!picture.error.empty()) return reply(Api::Error(picture.error));
        reply(Api::Result(
            JsonWriter().Text("png", picture.png).Flag("fresh", picture.is_fresh).Take()));
      });
}

void RunServer::Runner::AddMethods() {
  api_.AddSlow("screenshot",
               [this](const JsonObject&, const Api::Reply& reply) { TakePicture(reply); });
  journal_.AddMethods(api_, AppJson(options_.app), [this] { return profile_; });
  api_.Add("run.info", [this](const JsonObject&) {
    return RunInfoJson(options_, addresses_, profile_, started_ns_);
  });
  api_.Add("pages.list", [this](const JsonObject&) { return contexts_.Json(); });
  api_.Add("page.reload", [this](const JsonObject& params) {
    const auto id = params.Integer("context");
    const auto context = id ? contexts_.Find(*id) : nullptr;
    if (id && !context) throw ApiError("There is no page " + std::to_string(*id) + ".");
    context ? context->Deliver(R"("type":"reload")") : contexts_.Reload();
    return std::string("null");
  });
  api_.Add("process.get", [this](const JsonObject&) { return library_.Json(); });
  api_.Add("process.restart", [this](const JsonObject&) {
    library_.Restart();
    return std::string("null");
  });
  api_.Add("ime.input", [this](const JsonObject& params) {
    EnterText(params);
    return std::string("null");
  });
}

void RunServer::Runner::EnterText(const JsonObject& params) {
  const std::string operation = params.Text("op").value_or("");
  if (operation != "text" && operation != "backspace" && operation != "enter" &&
      operation != "clear") {
    throw ApiError(R"("op" is "text", "backspace", "enter" or "clear".)");
  }
  const auto context = contexts_.Foremost();
  if (!context) throw ApiError("No page of the application is open.");
  const std::string_view text = params.RawText("text");
  context->Deliver(R"("type":"ime","op":")" + operation + R"(","text":)" +
                   (text.empty() ? "\"\"" : std::string(text)));
}

void RunServer::Runner::AskProfile() {
  library_.Request("control", R"("method":"state.get","params":{})",
                   [this](const LibraryAnswer& answer) {
                     const auto state = JsonObject::Parse(answer.result);
                     if (state) TakeProfile(state->Raw("profile"));
                   });
}

void RunServer::Runner::TakeProfile(std::string_view part) {
  const auto profile = JsonObject::Parse(part);
  if (profile) profile_ = profile->Text("name").value_or(profile_);
}

void RunServer::Runner::OnEvent(std::string_view name, std::string_view data) {
  if (name == "log") return journal_.AddLog(data);
  if (name == "explain") {
    const auto explanation = JsonObject::Parse(data);
    if (explanation && data.size() > 2) {
      journal_.AddExplanation(std::string(data.substr(1, data.size() - 2)));
    }
    return;
  }
  hub_.Publish(name, data);
  if (name == "profile") TakeProfile(data);
  if (name == "key") {
    const auto event = JsonObject::Parse(data);
    if (event) keys_.OnKeyEvent(*event);
  }
}

void RunServer::Runner::OnRestarted() {
  contexts_.ForgetInstances();
  contexts_.DeliverToAll(R"("type":"restarted")");
}

void RunServer::Runner::Fail(const std::string& why) {
  failure_ = why;
  BeginStop();
}

void RunServer::Runner::BeginStop() {
  if (std::exchange(stopping_, true)) return;
  app_server_.Stop();
  simulator_server_.Stop();
  record_.reset();
  watcher_.reset();
  beast::error_code ignored;
  signals_.cancel(ignored);
  library_.Stop([this] { loop_.stop(); });
}

RunServer::RunServer(RunOptions options) : runner_(std::make_unique<Runner>(std::move(options))) {}

RunServer::~RunServer() = default;

void RunServer::Run() { runner_->Run(); }

void RunServer::Stop() { runner_->Stop(); }

}  // namespace orvane::server
