// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pictures/headless_browser.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <system_error>
#include <thread>
#include <vector>

#include "base/child_process.h"
#include "posix/unique_fd.h"
#include "server/pictures/devtools_pipe.h"

namespace orvane::server {

namespace fs = std::filesystem;

namespace {

std::string FindBrowser() {
  const char* const given = std::getenv("ORVANE_BROWSER");
  if (given != nullptr && *given != '\0') return given;
  std::string found = base::FindProgram({"chromium", "chromium-browser"});
  if (found.empty()) {
    throw std::runtime_error(
        "There is no chromium on the PATH. Install it (on Debian: apt-get install chromium), or "
        "name one in ORVANE_BROWSER.");
  }
  return found;
}

std::vector<std::string> Arguments(const fs::path& profile, ViewSize size) {
  std::vector<std::string> arguments = {
      FindBrowser(),
      "--headless=new",
      "--remote-debugging-pipe",
      "--user-data-dir=" + profile.string(),
      "--window-size=" + std::to_string(size.width) + "," + std::to_string(size.height),
      "--disable-background-networking",
      "--disable-component-update",
      "--disable-default-apps",
      "--disable-dev-shm-usage",
      "--disable-gpu",
      "--disable-quic",
      "--disable-sync",
      "--hide-scrollbars",
      "--mute-audio",
      "--no-default-browser-check",
      "--no-first-run"};
  // The browser refuses its sandbox to the superuser.
  if (geteuid() == 0) arguments.emplace_back("--no-sandbox");
  arguments.emplace_back("about:blank");
  return arguments;
}

std::unique_ptr<base::ChildProcess> StartBrowser(
    const std::vector<std::string>& arguments, const base::ChildProcess::Descriptors& descriptors) {
  try {
    return std::make_unique<base::ChildProcess>(arguments, descriptors);
  } catch (const std::system_error& error) {
    throw std::runtime_error(arguments.front() + " cannot be started: " + error.code().message() +
                             ".");
  }
}

// Empty where there is no such text.
std::string Text(const Json& from, const char* name) {
  const Json text = from.is_object() ? from.value(name, Json()) : Json();
  return text.is_string() ? text.get<std::string>() : std::string();
}

}  // namespace

HeadlessBrowser::HeadlessBrowser(const std::string& url, ViewSize size,
                                 std::chrono::milliseconds limit)
    : limit_(limit), profile_("orvane-browser-") {
  constexpr int kBrowserReads = 3;  // by the protocol's rule
  constexpr int kBrowserWrites = 4;
  constexpr int kFirst = 10;  // above these numbers, which would keep it from being closed
  const auto arguments = Arguments(profile_.path(), size);
  int sockets[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) {
    throw std::runtime_error("No socket can be made for the browser.");
  }
  pipe_ = std::make_unique<DevToolsPipe>(sockets[0]);
  {
    // Gone before an answer is waited for, so that the browser's end is noticed.
    const base::UniqueFd low(sockets[1]);
    const base::UniqueFd end(fcntl(low.get(), F_DUPFD_CLOEXEC, kFirst));
    process_ = StartBrowser(arguments, {{end.get(), kBrowserReads}, {end.get(), kBrowserWrites}});
  }
  const Json attached =
      Call("Target.attachToTarget", {{"targetId", FindPage()}, {"flatten", true}});
  session_ = Text(attached, "sessionId");
  Call("Emulation.setDeviceMetricsOverride", {{"width", size.width},
                                              {"height", size.height},
                                              {"deviceScaleFactor", 1},
                                              {"mobile", false}});
  const std::string error = Text(Call("Page.navigate", {{"url", url}}), "errorText");
  if (!error.empty()) {
    throw std::runtime_error("The browser cannot open " + url + ": " + error + ".");
  }
}

HeadlessBrowser::~HeadlessBrowser() {
  constexpr std::chrono::seconds kPatience(2);
  process_->Stop(kPatience);
}

pid_t HeadlessBrowser::pid() const { return process_->pid(); }
bool HeadlessBrowser::running() const { return !process_->end(); }

// To the page, once there is a session.
Json HeadlessBrowser::Call(const std::string& method, const Json& parameters) {
  return pipe_->Call(method, parameters, session_, std::chrono::steady_clock::now() + limit_);
}

// The browser's first page may take a moment to be there.
std::string HeadlessBrowser::FindPage() {
  constexpr std::chrono::milliseconds kStep(20);
  const auto deadline = std::chrono::steady_clock::now() + limit_;
  while (std::chrono::steady_clock::now() < deadline) {
    const Json targets = Call("Target.getTargets", Json::object());
    for (const Json& target : targets.value("targetInfos", Json::array())) {
      if (Text(target, "type") == "page") return Text(target, "targetId");
    }
    std::this_thread::sleep_for(kStep);
  }
  throw std::runtime_error("The browser did not open a page in time.");
}

void HeadlessBrowser::WaitUntilDrawn() {
  Evaluate(R"(new Promise((done) => {
    const draw = () => document.fonts.ready.then(() =>
      requestAnimationFrame(() => requestAnimationFrame(() => done('drawn'))));
    if (document.readyState === 'complete') {
      draw();
    } else {
      addEventListener('load', draw, { once: true });
    }
  }))");
}

std::string HeadlessBrowser::ScreenshotOf(const std::string& selector, int width) {
  Json clip = Evaluate("(() => { const found = document.querySelector(" + base::JsonText(selector) +
                       R"();
    if (!found) return null;
    const { x, y, width, height } = found.getBoundingClientRect();
    return { x, y, width, height };
  })())");
  const double own_width = clip.is_object() ? clip.value("width", 0.0) : 0.0;
  if (own_width < 1) {
    throw std::runtime_error("The page shows nothing that is called " + selector + ".");
  }
  clip["scale"] = width / own_width;
  return Capture({{"clip", clip}});
}

std::string HeadlessBrowser::Capture(const Json& parameters) {
  return Text(Call("Page.captureScreenshot", parameters), "data");
}

// The expression's value, or its promise's.
Json HeadlessBrowser::Evaluate(const std::string& expression) {
  const Json answer =
      Call("Runtime.evaluate",
           {{"expression", expression}, {"awaitPromise", true}, {"returnByValue", true}});
  if (answer.contains("exceptionDetails")) {
    throw std::runtime_error("The page's script failed: " +
                             base::JsonText(answer["exceptionDetails"]));
  }
  const Json result = answer.value("result", Json::object());
  return result.is_object() ? result.value("value", Json()) : Json();
}

}  // namespace orvane::server
