// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "base/json_fields.h"
#include "set_process/set_process.h"

namespace orvane::server {

// The text of a JSON value.
struct JsonDocument {
  std::string text;
};

// What came of a call.
struct ApiAnswer {
  std::string result = "null";       // the text of a JSON value
  std::optional<std::string> error;  // why there is none, for a person

  // {"result":…} or {"error":{"message":"…"}}, with "id" unless that is null.
  std::string Text(const Json& id = nullptr) const;
};

// The parameters of a method that has none.
struct NoParameters {};
template <class Map>
void MapFields(Map&, NoParameters&) {}

// The methods that the simulator and the command line call. Those that nobody added here are the
// set process's. The loop's thread only.
class Api {
 public:
  using Reply = std::function<void(const ApiAnswer& answer)>;  // called once

  explicit Api(set_process::SetProcess& set_process) : set_process_(set_process) {}  // borrowed

  // `handle(parameters)` returns Json, a JsonDocument or nothing, and may throw
  // std::runtime_error, whose text says to a person why not.
  // Parameters that it does not have are refused.
  template <class Parameters, class Handle>
  void Add(const std::string& name, Handle handle);
  // `handle(parameters, reply)` replies when it can.
  template <class Parameters, class Handle>
  void AddSlow(const std::string& name, Handle handle);

  // `request` has "method" and may have "params". Replies once, at once or later.
  void Call(const Json& request, const Reply& reply);

 private:
  void Forward(const std::string& method, Json parameters, const Reply& reply);

  set_process::SetProcess& set_process_;
  std::map<std::string, std::function<void(const Json& parameters, const Reply& reply)>> methods_;
};

template <class Parameters, class Handle>
void Api::AddSlow(const std::string& name, Handle handle) {
  const std::string owner = "the parameters of " + name;
  methods_[name] = [owner, handle](const Json& parameters, const Reply& reply) {
    handle(base::FromJson<Parameters>(parameters, owner, base::Unknown::kRefuse), reply);
  };
}

template <class Parameters, class Handle>
void Api::Add(const std::string& name, Handle handle) {
  AddSlow<Parameters>(name, [handle](const Parameters& parameters, const Reply& reply) {
    using Result = std::invoke_result_t<Handle, const Parameters&>;
    if constexpr (std::is_void_v<Result>) {
      handle(parameters);
      reply({});
    } else if constexpr (std::is_same_v<Result, JsonDocument>) {
      reply({handle(parameters).text, std::nullopt});
    } else {
      reply({base::JsonText(handle(parameters)), std::nullopt});
    }
  });
}

}  // namespace orvane::server
