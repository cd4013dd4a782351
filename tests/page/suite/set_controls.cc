// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "suite/set_controls.h"

#include <unistd.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <picojson.h>

#include "tvset/set.h"

namespace orvane::page {
namespace {

using Json = picojson::value;
using Answer = std::function<Json(const picojson::array& arguments)>;

tvset::Set& TheSet() { return tvset::Set::Current(); }

Json Number(double number) { return Json(number); }

template <typename List, typename Convert>
Json ToArray(const List& list, Convert convert) {
  picojson::array array;
  for (const auto& item : list) array.push_back(convert(item));
  return Json(array);
}

std::vector<std::string> ToStrings(const Json& list) {
  std::vector<std::string> strings;
  for (const Json& item : list.get<picojson::array>()) strings.push_back(item.get<std::string>());
  return strings;
}

const std::string& Text(const picojson::array& arguments, size_t index) {
  return arguments.at(index).get<std::string>();
}

int Int(const picojson::array& arguments, size_t index) {
  return static_cast<int>(arguments.at(index).get<double>());
}

// A null answer is undefined to the script.
void Define(Page& page, const std::string& name, Answer answer) {
  page.DefineFunction("testing." + name, [answer = std::move(answer)](const std::string& json) {
    Json arguments;
    const std::string error = picojson::parse(arguments, json);
    if (!error.empty()) throw std::runtime_error(error);
    const Json result = answer(arguments.get<picojson::array>());
    return result.is<picojson::null>() ? std::string() : result.serialize();
  });
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

SetControls::SetControls(const std::filesystem::path& state_folder) {
  tvset::Set::Start({state_folder, "uhd"});
  application_.id = kSuiteApp;
  application_.package = std::string(kSuiteApp, std::string(kSuiteApp).find('.'));
  application_.name = "Suite";
  application_.folder = state_folder;
  TheSet().applications().Install(application_);
  TheSet().applications().Launch(kSuiteApp, getpid());
}

SetControls::~SetControls() { tvset::Set::Stop(); }

void SetControls::DefineFor(Page& page) {
  DefineFaultsAndFeatures(page);
  DefineApplications(page);
  DefineQuestions(page);
  DefineInputQuestions(page);
}

void SetControls::DefineFaultsAndFeatures(Page& page) {
  Define(page, "fail", [](const picojson::array& arguments) {
    const bool once = arguments.size() > 2 && Text(arguments, 2) == "once";
    TheSet().faults().Fail(Text(arguments, 0), Int(arguments, 1),
                           once ? tvset::FaultMode::kOnce : tvset::FaultMode::kAlways);
    return Json();
  });
  Define(page, "clearFaults", [](const picojson::array&) {
    TheSet().faults().ClearAll();
    return Json();
  });
  Define(page, "setFeature", [](const picojson::array& arguments) {
    TheSet().features().Set(Text(arguments, 0), Text(arguments, 1), Text(arguments, 2),
                            tvset::FeatureGroup::kCustom);
    return Json();
  });
  Define(page, "removeFeature", [](const picojson::array& arguments) {
    TheSet().features().Remove(Text(arguments, 0));
    return Json();
  });
  Define(page, "setDynamicStyle", [](const picojson::array& arguments) {
    TheSet().input_method().set_dynamic_style(arguments.at(0).get<bool>());
    return Json();
  });
}

void SetControls::DefineApplications(Page& page) {
  Define(page, "setPrivileges", [this](const picojson::array& arguments) {
    application_.privileges = ToStrings(arguments.at(0));
    TheSet().applications().Install(application_);
    return Json();
  });
  Define(page, "setMetadata", [this](const picojson::array& arguments) {
    application_.metadata = {{Text(arguments, 0), Text(arguments, 1)}};
    TheSet().applications().Install(application_);
    return Json();
  });
  // Another application, with the run state of that number; 0 leaves it installed only.
  Define(page, "addApplication", [](const picojson::array& arguments) {
    tvset::Application other;
    other.id = Text(arguments, 0);
    other.package = other.id.substr(0, other.id.find('.'));
    TheSet().applications().Install(other);
    if (Int(arguments, 1) > 0) TheSet().applications().SetState(other.id, Int(arguments, 1));
    return Json();
  });
  Define(page, "setState", [](const picojson::array& arguments) {
    TheSet().applications().SetState(Text(arguments, 0), Int(arguments, 1));
    return Json();
  });
  Define(page, "setFocus", [](const picojson::array& arguments) {
    TheSet().applications().SetFocus(Text(arguments, 0));
    return Json();
  });
  // The suite's own application runs no more.
  Define(page, "terminate", [](const picojson::array&) {
    TheSet().applications().Terminate(kSuiteApp);
    return Json();
  });
  Define(page, "clearFocus", [](const picojson::array&) {
    TheSet().applications().ClearFocus();
    return Json();
  });
}

void SetControls::DefineQuestions(Page& page) {
  Define(page, "logLines", [](const picojson::array&) {
    return ToArray(TheSet().log().lines(), [](const tvset::LogLine& line) {
      return Json(picojson::object{
          {"tag", Json(line.tag)}, {"priority", Number(line.priority)}, {"text", Json(line.text)}});
    });
  });
  Define(page, "explanations", [this](const picojson::array&) {
    return ToArray(explanations_, [](const std::string& line) { return Json(line); });
  });
  Define(page, "contextTasks", [](const picojson::array&) {
    return ToArray(TheSet().context_manager().tasks(), [](const tvset::ContextTask& task) {
      return Json(picojson::array{Json(task.target), Json(task.action)});
    });
  });
  Define(page, "setting", [](const picojson::array& arguments) {
    const auto value = TheSet().settings().GetString(Text(arguments, 0));
    return value ? Json(*value) : Json();
  });
  // A file of the application's data folder.
  Define(page, "readDataFile", [this](const picojson::array& arguments) {
    return Json(ReadFile(TheSet().paths().app_data(application_.package) / Text(arguments, 0)));
  });
  Define(page, "focused",
         [](const picojson::array&) { return Json(TheSet().applications().focused()); });
  Define(page, "window", [](const picojson::array&) {
    const tvset::Window window = TheSet().windows().window(kSuiteApp);
    static const char* const kModes[] = {"NONE", "BELOW", "ABOVE"};
    picojson::object hints;
    for (const auto& [key, value] : window.hints) hints[key] = Json(value);
    picojson::object object{{"stackMode", Json(kModes[static_cast<int>(window.stack_mode)])},
                            {"hints", Json(hints)}};
    if (window.quarter_position) object["quarterPosition"] = Number(*window.quarter_position);
    if (window.position) {
      object["position"] =
          Json(picojson::array{Number(window.position->first), Number(window.position->second)});
    }
    return Json(object);
  });
}

void SetControls::DefineInputQuestions(Page& page) {
  Define(page, "injectedKeys", [](const picojson::array&) {
    return ToArray(TheSet().keys().injected(), [](const tvset::InjectedKey& key) {
      return Json(picojson::array{Number(key.key_code), Number(key.mode)});
    });
  });
  Define(page, "keyGrabs", [](const picojson::array&) {
    return ToArray(TheSet().key_grabs().list(kSuiteApp), [](const tvset::KeyGrab& grab) {
      return Json(picojson::array{Json(grab.key_name), Number(static_cast<int>(grab.mode))});
    });
  });
  Define(page, "keyReaches", [](const picojson::array& arguments) {
    return Json(TheSet().key_grabs().Route(Text(arguments, 0)).app);
  });
  Define(page, "inputMethod", [](const picojson::array&) {
    const tvset::InputMethodState state = TheSet().input_method().state();
    return Json(picojson::object{
        {"position", Json(picojson::array{Number(state.x), Number(state.y), Number(state.align)})},
        {"wordsEnabled", Json(state.recommended_words_enabled)},
        {"words",
         ToArray(state.recommended_words, [](const std::string& word) { return Json(word); })}});
  });
}

}  // namespace orvane::page
