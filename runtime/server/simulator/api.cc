// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/simulator/api.h"

#include <utility>

#include "base/json_writer.h"

namespace orvane::server {

void Api::Add(const std::string& name, Method method) {
  AddSlow(name, [method = std::move(method)](const base::JsonObject& params, const Reply& reply) {
    reply(Result(method(params)));
  });
}

void Api::Call(const base::JsonObject& request, const Reply& reply) {
  const std::string method = request.Text("method").value_or("");
  const std::string_view given = request.Raw("params");
  const std::string_view params = given.empty() || given == "null" ? "{}" : given;
  const auto object = base::JsonObject::Parse(params);
  if (method.empty() || !object) {
    return reply(Error(R"(A call has a "method", a string, and may have "params", an object.)"));
  }
  const auto found = methods_.find(method);
  if (found == methods_.end()) return Forward(method, params, reply);
  try {
    found->second(*object, reply);
  } catch (const ApiError& error) {
    reply(Error(error.what()));
  }
}

void Api::Forward(const std::string& method, std::string_view params, const Reply& reply) {
  Json head{{"op", "control"}, {"method", method}};
  try {
    head["params"] = base::ParseJson(params);
  } catch (const base::JsonError& error) {
    return reply(Error(method + ": " + error.what()));
  }
  set_process_.Request(std::move(head), "", [reply, method](const set_process::Answer& answer) {
    if (answer.ok()) return reply(Result(base::JsonText(answer.result())));
    reply(Error(answer.error().empty() ? method + ": " + answer.failure + "." : answer.error()));
  });
}

std::string Api::Result(std::string_view json) {
  return R"("result":)" + std::string(json.empty() ? "null" : json);
}

std::string Api::Error(std::string_view message) {
  return R"("error":)" + base::JsonWriter().Text("message", message).Take();
}

}  // namespace orvane::server
