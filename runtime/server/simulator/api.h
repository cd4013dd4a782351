// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/json_object.h"
#include "set_process/set_process.h"

namespace orvane::server {

// A method cannot do what it was asked for; what() says why, for a person.
class ApiError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The methods that the simulator and the command line call. Those that nobody added here are the
// set process's. The loop's thread only.
class Api {
 public:
  // Gets {"result":…} or {"error":{"message":"…"}}, without the braces.
  using Reply = std::function<void(const std::string& members)>;
  using Method =
      std::function<std::string(const base::JsonObject& params)>;  // JSON; throws ApiError
  using SlowMethod = std::function<void(const base::JsonObject& params, Reply reply)>;

  explicit Api(set_process::SetProcess& set_process) : set_process_(set_process) {}

  void Add(const std::string& name, Method method);
  void AddSlow(const std::string& name, SlowMethod method) { methods_[name] = std::move(method); }

  // `request` has "method" and may have "params". Replies once, at once or later.
  void Call(const base::JsonObject& request, const Reply& reply);

  static std::string Result(std::string_view json);
  static std::string Error(std::string_view message);

 private:
  void Forward(const std::string& method, std::string_view params, const Reply& reply);

  set_process::SetProcess& set_process_;
  std::map<std::string, SlowMethod> methods_;
};

}  // namespace orvane::server
