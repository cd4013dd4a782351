// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The peer: what somebody would write who wanted the same of a Node add-on. A message of JSON is
// parsed and given to the handler of its command, which writes two lines to a log in memory, looks
// the application up and makes the reply, which becomes JSON.

#include <stdio.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <mutex>
#include <string>

#include <node_api.h>
#include <picojson.h>

namespace {

// The newest lines of a log, each with its time, its process and thread, its priority and its tag.
class Log {
 public:
  __attribute__((format(printf, 4, 5))) void Write(int priority, const char* tag,
                                                   const char* format, ...) {
    std::array<char, 4076> text;
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const Head head{now, process_, thread_, priority, length};
    const std::lock_guard<std::mutex> lock(mutex_);
    if (next_ + sizeof(head) + strlen(tag) + text.size() > lines_.size()) {
      next_ = 0;
    }
    Append(&head, sizeof(head));
    Append(tag, strlen(tag) + 1);
    Append(text.data(), static_cast<size_t>(length));
  }

 private:
  struct Head {
    timespec time;
    pid_t process, thread;
    int priority, length;
  };

  void Append(const void* bytes, size_t size) {
    memcpy(lines_.data() + next_, bytes, size);
    next_ += size;
  }

  const pid_t process_ = getpid();
  const pid_t thread_ = gettid();
  std::mutex mutex_;
  std::string lines_ = std::string(size_t{1} << 20, '\0');  // guarded by mutex_
  size_t next_ = 0;                                         // guarded by mutex_
};

constexpr int kInfo = 4;
constexpr const char* kTag = "BENCH";
constexpr const char* kOwnId = "OrvaneBnch.App0";

Log g_log;

// Whether each running application is in the foreground.
std::map<std::string, bool> RunningApplications() {
  std::map<std::string, bool> running;
  for (int i = 0; i < 8; ++i) {
    running["OrvaneBnch.App" + std::to_string(i)] = i == 0;
  }
  return running;
}

void GetAppState(const picojson::value& args, picojson::object& out) {
  static const std::map<std::string, bool> running = RunningApplications();
  std::string id = args.get("appid").get<std::string>();
  if (id.empty()) {
    id = kOwnId;
  }
  g_log.Write(kInfo, kTag, "%s: %s(%d) > App ID : %s", "addon.cc", __func__, __LINE__, id.c_str());
  const auto found = running.find(id);
  if (found == running.end()) {
    out["status"] = picojson::value("error");
    return;
  }
  g_log.Write(kInfo, kTag, "%s: %s(%d) > App State : %d", "addon.cc", __func__, __LINE__,
              found->second ? 1 : 2);
  out["status"] = picojson::value("success");
  out["result"] = picojson::value(found->second ? "FOREGROUND" : "BACKGROUND");
}

using Handler = std::function<void(const picojson::value& args, picojson::object& out)>;

std::string Answer(const std::string& message) {
  static const std::map<std::string, Handler> handlers{{"OrvaneManager_getAppState", GetAppState}};
  picojson::value request;
  const char* const begin = message.c_str();
  picojson::parse(request, begin, begin + message.size(), nullptr);
  picojson::value reply{picojson::object()};
  const auto handler = handlers.find(request.get("cmd").get<std::string>());
  if (handler != handlers.end()) {
    handler->second(request.get("args"), reply.get<picojson::object>());
  }
  return reply.serialize();
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
