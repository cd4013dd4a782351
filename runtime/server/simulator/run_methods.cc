// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/run_methods.h"

#include <stdexcept>
#include <utility>

#include "server/simulator/run_info.h"

namespace orvane::server {

namespace {

struct ReloadParameters {
  std::optional<int64_t> context;  // none: every page
};
template <class Map>
void MapFields(Map& map, ReloadParameters& parameters) {
  map.Optional("context", parameters.context);
}

enum class Input { kText, kBackspace, kEnter, kClear };
constexpr base::EnumName<Input> kInputNames[] = {{Input::kText, "text"},
                                                 {Input::kBackspace, "backspace"},
                                                 {Input::kEnter, "enter"},
                                                 {Input::kClear, "clear"}};
constexpr auto& EnumNames(Input) { return kInputNames; }

struct InputParameters {
  Input op = Input::kText;
  std::string text;
};
template <class Map>
void MapFields(Map& map, InputParameters& parameters) {
  map("op", parameters.op);
  map.Optional("text", parameters.text);
}

}  // namespace

void RunMethods::AddTo(Api& api, int64_t started_ns) {
  api.Add<NoParameters>("run.info", [this, started_ns](const NoParameters&) {
    return RunInfo(targets_.options, targets_.addresses, profile_, started_ns);
  });
  api.Add<NoParameters>(
      "pages.list", [this](const NoParameters&) { return base::ToJson(targets_.contexts.List()); });
  api.Add<ReloadParameters>("page.reload", [this](const ReloadParameters& parameters) {
    ReloadPage(parameters.context);
  });
  api.Add<NoParameters>("process.get",
                        [this](const NoParameters&) { return targets_.set_process.Description(); });
  api.Add<NoParameters>("process.restart",
                        [this](const NoParameters&) { targets_.set_process.Restart(); });
  api.Add<InputParameters>("ime.input", [this](const InputParameters& parameters) {
    EnterText(base::ToJson(parameters));
  });
  api.AddSlow<NoParameters>(
      "screenshot", [this](const NoParameters&, const Api::Reply& reply) { TakePicture(reply); });
}

void RunMethods::ReloadPage(std::optional<int64_t> id) {
  if (!id) return targets_.contexts.Reload();
  const auto context = targets_.contexts.Find(*id);
  if (!context) throw std::runtime_error("There is no page " + std::to_string(*id) + ".");
  context->Deliver({Json{{"type", "reload"}}, std::nullopt, false});
}

void RunMethods::EnterText(Json input) {
  const auto context = targets_.contexts.Foremost();
  if (!context) throw std::runtime_error("No page of the application is open.");
  input["type"] = "ime";
  context->Deliver({std::move(input), std::nullopt, false});
}

void RunMethods::TakePicture(const Api::Reply& reply) {
  targets_.pictures.TakePicture(
      targets_.addresses.app + StartPath(targets_.options),
      [reply](const PictureTaker::Picture& picture) {
        if (!picture.error.empty()) return reply({"", picture.error});
        reply({base::JsonText({{"png", picture.png}, {"fresh", picture.is_fresh}}), std::nullopt});
      });
}

void RunMethods::AskProfile() {
  set_process::SetProcess& set_process = targets_.set_process;
  set_process.Request({{"op", "control"}, {"method", "state.get"}, {"params", Json::object()}}, "",
                      [this](const set_process::Answer& answer) {
                        const Json state = answer.result();
                        if (state.is_object()) TakeProfile(state.value("profile", Json::object()));
                      });
}

void RunMethods::TakeProfile(const Json& part) {
  const Json name = part.is_object() ? part.value("name", Json()) : Json();
  if (name.is_string()) profile_ = name.get<std::string>();
}

}  // namespace orvane::server
