// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/parsed_instance.h"

#include <utility>

#include "common/tools.h"
#include "json_reader.h"
#include "log.h"

namespace common {

namespace {

PlatformResult UnknownError(std::string message) {
  return PlatformResult(ErrorCode::UNKNOWN_ERR, std::move(message));
}

// Reads `text` as one JSON object. Returns what is wrong with it, or an empty text.
std::string ReadObject(const char* text, picojson::value& request) {
  std::string problem = ReadJson(text, "message", request);
  if (problem.empty() && !request.is<picojson::object>()) {
    problem = "The message is no JSON object";
  }
  return problem;
}

const picojson::value* Member(const picojson::object& object, const char* name) {
  const auto found = object.find(name);
  return found == object.end() ? nullptr : &found->second;
}

}  // namespace

ParsedInstance::ParsedInstance(std::string version) : version_(std::move(version)) {}

ParsedInstance::~ParsedInstance() = default;

void ParsedInstance::HandleMessage(const char* message) {
  PostMessage(this, Answer(message).c_str());
}

void ParsedInstance::HandleSyncMessage(const char* message) {
  SendSyncReply(Answer(message).c_str());
}

void ParsedInstance::RegisterSyncHandler(const std::string& name, Handler handler) {
  handlers_.emplace(name, std::move(handler));
}

void ParsedInstance::ReportSuccess(picojson::object& out) { tools::ReportSuccess(out); }

void ParsedInstance::ReportSuccess(const picojson::value& result, picojson::object& out) {
  tools::ReportSuccess(result, out);
}

void ParsedInstance::ReportError(const PlatformResult& result, picojson::object& out) {
  tools::ReportError(result, out);
}

void ParsedInstance::ReportError(const PlatformException& exception, picojson::object& out) {
  tools::ReportError(exception, out);
}

std::string ParsedInstance::Answer(const char* message) {
  picojson::object out;
  std::string failure;
  try {
    Dispatch(message, out);
  } catch (const std::exception& error) {
    failure = error.what();
    if (failure.empty()) {
      failure = "An exception without a text";
    }
  } catch (...) {
    failure = "An exception of unknown type";
  }
  if (!failure.empty()) {
    FRAMEWORK_LOG_ERROR("parsed_instance.cc", "A handler threw: %s", failure.c_str());
    out.clear();
    tools::ReportError(UnknownError(failure), out);
  }
  return picojson::value(std::move(out)).serialize();
}

void ParsedInstance::Dispatch(const char* message, picojson::object& out) {
  picojson::value request;
  const std::string problem = ReadObject(message, request);
  if (!problem.empty()) {
    return tools::ReportError(UnknownError(problem), out);
  }
  const auto& members = request.get<picojson::object>();
  const picojson::value* const cmd = Member(members, "cmd");
  if (cmd == nullptr || !cmd->is<std::string>()) {
    return tools::ReportError(UnknownError("The message has no string member \"cmd\""), out);
  }
  const auto handler = handlers_.find(cmd->get<std::string>());
  if (handler == handlers_.end()) {
    return tools::ReportError(
        PlatformResult(ErrorCode::NOT_SUPPORTED_ERR, "Unknown command: " + cmd->get<std::string>()),
        out);
  }
  static const picojson::value kNoArguments{picojson::object()};
  const picojson::value* const args = Member(members, "args");
  if (args != nullptr && !args->is<picojson::object>()) {
    return tools::ReportError(UnknownError("The message's \"args\" is no JSON object"), out);
  }
  handler->second(args == nullptr ? kNoArguments : *args, out);
}

}  // namespace common
