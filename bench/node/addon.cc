// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The comparison: a native function behind Node's add-on interface that does the same JSON work as
// the library does for one synchronous message, and nothing else.

#include <cstddef>
#include <string>

#include <node_api.h>
#include <picojson.h>

namespace {

std::string Answer(const std::string& message) {
  picojson::value request;
  const char* const begin = message.c_str();
  picojson::parse(request, begin, begin + message.size(), nullptr);
  const bool own = request.get("cmd").get<std::string>() == "OrvaneManager_getAppState" &&
                   request.get("args").get("appid").get<std::string>().empty();
  picojson::object reply;
  reply["status"] = picojson::value("success");
  reply["result"] = picojson::value(own ? "FOREGROUND" : "");
  return picojson::value(std::move(reply)).serialize();
}

napi_value Call(napi_env env, napi_callback_info info) {
  size_t count = 1;
  napi_value argument = nullptr;
  napi_get_cb_info(env, info, &count, &argument, nullptr, nullptr);
  size_t size = 0;
  napi_get_value_string_utf8(env, argument, nullptr, 0, &size);
  std::string message(size, '\0');
  napi_get_value_string_utf8(env, argument, message.data(), size + 1, &size);
  const std::string reply = Answer(message);
  napi_value result = nullptr;
  napi_create_string_utf8(env, reply.data(), reply.size(), &result);
  return result;
}

napi_value Initialize(napi_env env, napi_value exports) {
  napi_value function = nullptr;
  napi_create_function(env, "call", NAPI_AUTO_LENGTH, Call, nullptr, &function);
  napi_set_named_property(env, exports, "call", function);
  return exports;
}

}  // namespace

NAPI_MODULE(orvane_bench, Initialize)
