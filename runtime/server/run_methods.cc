// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/run_methods.h"

#include "server/json_writer.h"
#include "server/run_info.h"

namespace orvane::server {

void RunMethods::AddTo(Api& api, int64_t started_ns) {
  api.Add("run.info", [this, started_ns](const JsonObject&) {
    return RunInfoJson(parts_.options, parts_.addresses, profile_, started_ns);
  });
  api.Add("pages.list", [this](const JsonObject&) { return parts_.contexts.Json(); });
  api.Add("page.reload", [this](const JsonObject& params) {
    ReloadPage(params);
    return std::string("null");
  });
  api.Add("process.get", [this](const JsonObject&) { return parts_.library.Json(); });
  api.Add("process.restart", [this](const JsonObject&) {
    parts_.library.Restart();
    return std::string("null");
  });
  api.Add("ime.input", [this](const JsonObject& params) {
    EnterText(params);
    return std::string("null");
  });
  api.AddSlow("screenshot",
              [this](const JsonObject&, const Api::Reply& reply) { TakePicture(reply); });
}

void RunMethods::ReloadPage(const JsonObject& params) {
  const auto id = params.Integer("context");
  if (!id) return parts_.contexts.Reload();
  const auto context = parts_.contexts.Find(*id);
  if (!context) throw ApiError("There is no page " + std::to_string(*id) + ".");
  context->Deliver(R"("type":"reload")");
}

void RunMethods::EnterText(const JsonObject& params) {
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
            JsonWriter().Text("png", picture.png).Flag("fresh", picture.is_fresh).Take()));
      });
}

void RunMethods::AskProfile() {
  parts_.library.Request("control", R"("method":"state.get","params":{})",
                         [this](const LibraryAnswer& answer) {
                           const auto state = JsonObject::Parse(answer.result);
                           if (state) TakeProfile(state->Raw("profile"));
                         });
}

void RunMethods::TakeProfile(std::string_view part) {
  const auto profile = JsonObject::Parse(part);
  if (profile) profile_ = profile->Text("name").value_or(profile_);
}

}  // namespace orvane::server
