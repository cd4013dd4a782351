// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/resource_reader.h"

#include <optional>
#include <utility>

#include "base/json_fields.h"
#include "television/request_error.h"

namespace orvane::television {

namespace {

constexpr char kExtension[] = "dravelt.orvane";

struct LibraryError {
  Json code;
  std::string name;
  std::string message;
};
template <class Map>
void MapFields(Map& map, LibraryError& error) {
  map.Optional("code", error.code);
  map.Optional("name", error.name);
  map.Optional("message", error.message);
}

// What the library answers at once, and what it posts later.
struct ResourceReply {
  std::optional<int64_t> callback_id;
  std::optional<LibraryError> error;
  Json result = Json::object();
};
template <class Map>
void MapFields(Map& map, ResourceReply& reply) {
  map("callbackId", reply.callback_id);
  map("error", reply.error);
  map.Optional("result", reply.result);
}

// Throws base::JsonError.
ResourceReply ReadReply(std::string_view text) {
  return base::FromJson<ResourceReply>(base::ParseJson(text), "the library's answer");
}

std::string TextOf(const LibraryError& error) {
  return error.message + " (" + error.name + ", code " + base::JsonText(error.code) + ")";
}

Json WithValue(Json result) {
  for (const char* const name : {"cpuUsage", "memoryUsage"}) {
    if (result.contains(name)) result["value"] = result[name];
  }
  return result;
}

}  // namespace

void ResourceReader::Read(const std::string& resource, const Receiver& receiver) {
  extensions::Instance& instance = Instance();
  int64_t call = 0;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    call = ++last_call_;
    waiting_[call] = receiver;
  }
  const Json request = {{"cmd", "OrvaneManager_getSystemStat"},
                        {"args", {{"resource", resource}, {"callbackId", call}}}};
  // The figure may be posted before this returns; then the request is answered already.
  const ResourceReply reply = ReadReply(instance.SendSyncMessage(base::JsonText(request)));
  if (!reply.error) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    waiting_.erase(call);
  }
  throw RequestError("The library refused to read \"" + resource + "\": " + TextOf(*reply.error) +
                     ". There are CPU and MEMORY.");
}

void ResourceReader::OnMessage(std::string_view text) {
  ResourceReply reply;
  try {
    reply = ReadReply(text);
  } catch (const base::JsonError&) {
    return;  // no answer to a call of this object
  }
  Receiver receiver;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = waiting_.extract(reply.callback_id.value_or(0));
    if (found.empty()) return;
    receiver = std::move(found.mapped());
  }
  if (!reply.error) return receiver(WithValue(std::move(reply.result)), "");
  receiver(Json(), "The library could not read it: " + TextOf(*reply.error) + ".");
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
