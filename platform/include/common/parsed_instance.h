// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <picojson.h>

#include "common/export.h"
#include "common/instance.h"
#include "common/platform_exception.h"
#include "common/platform_result.h"

namespace common {

// An instance whose messages are JSON: {"cmd": name, "args": object}. It finds the handler by name,
// calls it with the arguments and an empty reply object, and sends the object back. Text that is no
// such message, an unknown name and an exception that leaves a handler (UNKNOWN_ERR with its text)
// are answered with an error reply, and so is text that is nested more than 100 levels deep or
// holds a number that no double does.
//
// Handlers run on the host's extension thread. They are registered while the instance is
// constructed, and live as long as it: a handler may refer to the instance, and to what the derived
// class owns.
class WEBAPI_EXPORT ParsedInstance : public Instance {
 public:
  // `args` is an object, empty when the message has none; it lives for the call. `out` is empty,
  // and sent as the handler leaves it: {} when it was left alone, as for an answer that comes
  // later.
  using Handler = std::function<void(const picojson::value& args, picojson::object& out)>;

  // `version` is the extension's own, for its version query; nothing here reads it.
  explicit ParsedInstance(std::string version);
  ~ParsedInstance() override;

  const std::string& version() const { return version_; }

  // The reply is sent as a message.
  void HandleMessage(const char* message) override;

  // The reply is the synchronous answer.
  void HandleSyncMessage(const char* message) override;

 protected:
  // A name that is registered twice keeps its first handler.
  void RegisterSyncHandler(const std::string& name, Handler handler);

  // Each fills the reply object in the message format; what it held before under the same names is
  // replaced.
  void ReportSuccess(picojson::object& out);
  void ReportSuccess(const picojson::value& result, picojson::object& out);
  void ReportError(const PlatformResult& result, picojson::object& out);
  void ReportError(const PlatformException& exception, picojson::object& out);

 private:
  // A message that was read, and its handler.
  struct Request {
    std::string text;
    picojson::value message;
    const picojson::value* args;
    const Handler* handler;
  };

  std::string Answer(const char* message);
  std::shared_ptr<const Request> Find(const char* message);
  void Keep(std::shared_ptr<const Request> request);
  bool Read(const char* message, Request& request, picojson::object& out) const;
  void Dispatch(const char* message, picojson::object& out);

  std::string version_;
  // By the name of the command. Not changed after construction.
  std::unordered_map<std::string, Handler> handlers_;
  // The latest requests, the last one first: a page asks the same again and again. A handler may
  // lead to another message, which takes the request in hand from here and not from the handler.
  std::vector<std::shared_ptr<const Request>> recent_;
};

}  // namespace common
