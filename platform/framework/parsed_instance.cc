// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "common/parsed_instance.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "common/tools.h"
#include "json_reader.h"
#include "json_writer.h"
#include "log.h"

namespace common {

namespace {

constexpr size_t kMostRecent = 16;
constexpr size_t kMostRecentText = 1024;  // of one that is kept

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
  return WriteJson(out);
}

std::shared_ptr<const ParsedInstance::Request> ParsedInstance::Find(const char* message) {
  const auto found = std::find_if(recent_.begin(), recent_.end(), [message](const auto& request) {
    return std::strcmp(request->text.c_str(), message) == 0;
  });
  if (found == recent_.end()) {
    return nullptr;
  }
  std::rotate(recent_.begin(), found, found + 1);
  return recent_.front();
}

void ParsedInstance::Keep(std::shared_ptr<const Request> request) {
  if (request->text.size() > kMostRecentText) {
    return;
  }
  if (recent_.size() == kMostRecent) {
    recent_.pop_back();
  }
  recent_.insert(recent_.begin(), std::move(request));
}

// False: `out` says what is wrong with it.
bool ParsedInstance::Read(const char* message, Request& request, picojson::object& out) const {
  const auto refuse = [&out](const PlatformResult& result) {
    tools::ReportError(result, out);
    return false;
  };
  const std::string problem = ReadObject(message, request.message);
  if (!problem.empty()) {
    return refuse(UnknownError(problem));
  }
  const auto& members = request.message.get<picojson::object>();
  const picojson::value* const cmd = Member(members, "cmd");
  if (cmd == nullptr || !cmd->is<std::string>()) {
    return refuse(UnknownError("The message has no string member \"cmd\""));
  }
  const auto handler = handlers_.find(cmd->get<std::string>());
  if (handler == handlers_.end()) {
    return refuse(PlatformResult(ErrorCode::NOT_SUPPORTED_ERR,
                                 "Unknown command: " + cmd->get<std::string>()));
  }
  static const picojson::value kNoArguments{picojson::object()};
  const picojson::value* const args = Member(members, "args");
  if (args != nullptr && !args->is<picojson::object>()) {
    return refuse(UnknownError("The message's \"args\" is no JSON object"));
  }
  request.handler = &handler->second;
  request.args = args == nullptr ? &kNoArguments : args;
  return true;
}

void ParsedInstance::Dispatch(const char* message, picojson::object& out) {
  std::shared_ptr<const Request> request = Find(message);
  if (!request) {
    const auto made = std::make_shared<Request>();
    if (!Read(message, *made, out)) {
      return;
    }
    made->text = message;
    Keep(made);
    request = made;
  }
  (*request->handler)(*request->args, out);
}

}  // namespace common
