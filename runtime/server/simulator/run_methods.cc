// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/run_methods.h"

#include "base/json_writer.h"
#include "server/simulator/run_info.h"

namespace orvane::server {

void RunMethods::AddTo(Api& api, int64_t started_ns) {
  api.Add("run.info", [this, started_ns](const base::JsonObject&) {
    return RunInfoJson(parts_.options, parts_.addresses, profile_, started_ns);
  });
  api.Add("pages.list", [this](const base::JsonObject&) { return parts_.contexts.Json(); });
  api.Add("page.reload", [this](const base::JsonObject& params) {
    ReloadPage(params);
    return std::string("null");
  });
  api.Add("process.get", [this](const base::JsonObject&) {
    return base::JsonText(parts_.set_process.Description());
  });
  api.Add("process.restart", [this](const base::JsonObject&) {
    parts_.set_process.Restart();
    return std::string("null");
  });
  api.Add("ime.input", [this](const base::JsonObject& params) {
    EnterText(params);
    return std::string("null");
  });
  api.AddSlow("screenshot",
              [this](const base::JsonObject&, const Api::Reply& reply) { TakePicture(reply); });
}

void RunMethods::ReloadPage(const base::JsonObject& params) {
  const auto id = params.Integer("context");
  if (!id) return parts_.contexts.Reload();
  const auto context = parts_.contexts.Find(*id);
  if (!context) throw ApiError("There is no page " + std::to_string(*id) + ".");
  context->Deliver(R"("type":"reload")");
}

void RunMethods::EnterText(const base::JsonObject& params) {
  const std::string operation = params.Text("op").value_or("");
  if (operation != "text" && operation != "backspace" && operation != "enter" &&
      operation != "clear") {
    throw ApiError(R"("op" is "text", "backspace", "enter" or "clear".)");
  }
  const auto context = parts_.contexts.Foremost();
  if (!context) throw ApiError("No page of the application is open.");
  const std::string_view text = params.RawText("text");
  context->Deliver(R"("type":"ime","op":")" + operation + R"(","text":)" +
                   (text.empty() ? "\"\"" : std::string(text)));
}

void RunMethods::TakePicture(const Api::Reply& reply) {
  parts_.browser_desk.TakePicture(
      parts_.addresses.app + StartPath(parts_.options),
      [reply](const BrowserDesk::Picture& picture) {
        if (!picture.error.empty()) return reply(Api::Error(picture.error));
        reply(Api::Result(
            base::JsonWriter().Text("png", picture.png).Flag("fresh", picture.is_fresh).Take()));
      });
}

void RunMethods::AskProfile() {
  parts_.set_process.Request(
      {{"op", "control"}, {"method", "state.get"}}, "", [this](const set_process::Answer& answer) {
        if (!answer.ok()) return;
        TakeProfile(base::JsonText(answer.result().value("profile", Json())));
      });
}

void RunMethods::TakeProfile(std::string_view part) {
  const auto profile = base::JsonObject::Parse(part);
  if (profile) profile_ = profile->Text("name").value_or(profile_);
}

}  // namespace orvane::server
