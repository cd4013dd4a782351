// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/run_methods.h"

#include <optional>

#include "server/simulator/run_info.h"

namespace orvane::server {

struct RunMethods::ReloadParameters {
  std::optional<int64_t> context;  // none: every page

  template <class Map>
  friend void MapFields(Map& map, ReloadParameters& parameters) {
    map.Optional("context", parameters.context);
  }
};

namespace {

// Of the set's profile, as the state tells it.
struct ProfilePart {
  std::optional<std::string> name;
};
template <class Map>
void MapFields(Map& map, ProfilePart& part) {
  map.Optional("name", part.name);
}

}  // namespace

enum class Input { kText, kBackspace, kEnter, kClear };
constexpr base::EnumName<Input> kInputNames[] = {{Input::kText, "text"},
                                                 {Input::kBackspace, "backspace"},
                                                 {Input::kEnter, "enter"},
                                                 {Input::kClear, "clear"}};
constexpr auto& EnumNames(Input) { return kInputNames; }

struct RunMethods::InputParameters {
  Input op = Input::kText;
  std::string text;

  template <class Map>
  friend void MapFields(Map& map, InputParameters& parameters) {
    map("op", parameters.op);
    map.Optional("text", parameters.text);
  }
};

void RunMethods::AddTo(Api& api, int64_t started_ns) {
  api.Add<NoParameters>("run.info", [this, started_ns](const NoParameters&) {
    return RunInfo(parts_.options, parts_.addresses, profile_, started_ns);
  });
  api.Add<NoParameters>(
      "pages.list", [this](const NoParameters&) { return base::ToJson(parts_.contexts.List()); });
  api.Add<ReloadParameters>("page.reload",
                            [this](const ReloadParameters& parameters) { ReloadPage(parameters); });
  api.Add<NoParameters>("process.get",
                        [this](const NoParameters&) { return parts_.set_process.Description(); });
  api.Add<NoParameters>("process.restart",
                        [this](const NoParameters&) { parts_.set_process.Restart(); });
  api.Add<InputParameters>("ime.input",
                           [this](const InputParameters& parameters) { EnterText(parameters); });
  api.AddSlow<NoParameters>(
      "screenshot", [this](const NoParameters&, const Api::Reply& reply) { TakePicture(reply); });
}

void RunMethods::ReloadPage(const ReloadParameters& parameters) {
  if (!parameters.context) return parts_.contexts.Reload();
  const auto context = parts_.contexts.Find(*parameters.context);
  if (!context) {
    throw ApiError("There is no page " + std::to_string(*parameters.context) + ".");
  }
  context->Deliver({Json{{"type", "reload"}}, std::nullopt, false});
}

void RunMethods::EnterText(const InputParameters& parameters) {
  const auto context = parts_.contexts.Foremost();
  if (!context) throw ApiError("No page of the application is open.");
  Json head = base::ToJson(parameters);
  head["type"] = "ime";
  context->Deliver({std::move(head), std::nullopt, false});
}

void RunMethods::TakePicture(const Api::Reply& reply) {
  parts_.pictures.TakePicture(
      parts_.addresses.app + StartPath(parts_.options),
      [reply](const PictureTaker::Picture& picture) {
        if (!picture.error.empty()) return reply({"", picture.error});
        reply({base::JsonText({{"png", picture.png}, {"fresh", picture.is_fresh}}), std::nullopt});
      });
}

void RunMethods::AskProfile() {
  set_process::SetProcess& set_process = parts_.set_process;
  set_process.Request({{"op", "control"}, {"method", "state.get"}, {"params", Json::object()}}, "",
                      [this](const set_process::Answer& answer) {
                        const Json state = answer.result();
                        if (state.is_object()) TakeProfile(state.value("profile", Json::object()));
                      });
}

void RunMethods::TakeProfile(const Json& part) {
  profile_ = base::FromJson<ProfilePart>(part, "the profile").name.value_or(profile_);
}

}  // namespace orvane::server
