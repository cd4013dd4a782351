// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/resource_reader.h"

#include <optional>

#include <picojson.h>

#include "extensions/bounded_json.h"
#include "television/request_error.h"

namespace orvane::television {

using picojson::object;
using picojson::value;

namespace {

constexpr char kExtension[] = "dravelt.orvane";

std::string Request(int64_t call, const std::string& resource) {
  const object args{{"resource", value(resource)},
                    {"callbackId", value(static_cast<double>(call))}};
  return value(object{{"cmd", value("OrvaneManager_getSystemStat")}, {"args", value(args)}})
      .serialize();
}

// The library's reply; null for what is none.
value Parse(std::string_view text) {
  std::string error;
  std::optional<value> reply = extensions::ParseBoundedJson(text, &error);
  return reply && reply->is<object>() ? *reply : value();
}

// Empty when the reply is no error.
std::string ErrorOf(const value& reply) {
  if (!reply.is<object>()) return "The library's answer is no JSON object.";
  const value& error = reply.get("error");
  if (!error.is<object>()) return "";
  return error.get("message").to_str() + " (" + error.get("name").to_str() + ", code " +
         error.get("code").to_str() + ")";
}

object Result(const value& reply) {
  const value& result = reply.get("result");
  object answer = result.is<object>() ? result.get<object>() : object();
  for (const char* const name : {"cpuUsage", "memoryUsage"}) {
    if (answer.count(name) != 0) answer["value"] = answer[name];
  }
  return answer;
}

}  // namespace

void ResourceReader::Read(int64_t id, const std::string& resource) {
  extensions::Instance& instance = Instance();
  int64_t call = 0;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    call = ++last_call_;
    waiting_[call] = id;
  }
  // The figure may be posted before this returns; then the request is answered already.
  const std::string error = ErrorOf(Parse(instance.SendSyncMessage(Request(call, resource))));
  if (error.empty()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    waiting_.erase(call);
  }
  throw RequestError("The library refused to read \"" + resource + "\": " + error +
                     ". There are CPU and MEMORY.");
}

void ResourceReader::OnMessage(std::string_view text) {
  const value reply = Parse(text);
  if (!reply.is<object>() || !reply.get("callbackId").is<double>()) return;
  int64_t id = 0;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = waiting_.find(static_cast<int64_t>(reply.get("callbackId").get<double>()));
    if (found == waiting_.end()) return;
    id = found->second;
    waiting_.erase(found);
  }
  const std::string error = ErrorOf(reply);
  if (error.empty()) return outbox_.Answer(id, value(Result(reply)));
  outbox_.AnswerError(id, "The library could not read it: " + error + ".");
}

extensions::Instance& ResourceReader::Instance() {
  if (instance_) return *instance_;
  extensions::Extension* const extension = host_.Find(kExtension);
  if (extension == nullptr) {
    throw RequestError(std::string("There is no extension ") + kExtension +
                       ", which reads the figures. Load its library with --extension.");
  }
  instance_ = extension->CreateInstance(this);
  return *instance_;
}

}  // namespace orvane::television
