// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/api.h"

#include <utility>

namespace orvane::server {

namespace {

struct CallForm {
  std::string method;
  Json params = Json::object();
};
template <class Map>
void MapFields(Map& map, CallForm& call) {
  map("method", call.method);
  map.Optional("params", call.params);
}

}  // namespace

std::string ApiAnswer::Text(const Json& id) const {
  std::string text = id.is_null() ? "{" : "{\"id\":" + base::JsonText(id) + ",";
  if (error) return text + "\"error\":" + base::JsonText({{"message", *error}}) + "}";
  return text + "\"result\":" + result + "}";
}

void Api::Call(const Json& request, const Reply& reply) {
  try {
    auto call = base::FromJson<CallForm>(request, "a call");
    if (call.method.empty()) throw std::runtime_error("A call names its \"method\".");
    const auto found = methods_.find(call.method);
    if (found == methods_.end()) return Forward(call.method, std::move(call.params), reply);
    found->second(call.params, reply);
  } catch (const std::runtime_error& error) {  // JsonError too
    reply({"", error.what()});
  }
}

void Api::Forward(const std::string& method, Json parameters, const Reply& reply) {
  if (!parameters.is_object()) throw std::runtime_error("The \"params\" of a call are an object.");
  Json head{{"op", "control"}, {"method", method}, {"params", std::move(parameters)}};
  set_process_.Request(std::move(head), "", [reply, method](const set_process::Answer& answer) {
    if (answer.ok()) return reply({base::JsonText(answer.result()), std::nullopt});
    const std::string refused = answer.error();
    reply({"", refused.empty() ? method + ": " + answer.failure + "." : refused});
  });
}

}  // namespace orvane::server
