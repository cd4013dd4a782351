// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "set_process/page_instances.h"

#include <string_view>
#include <utility>

#include "base/frame.h"
#include "base/json.h"
#include "base/near_names.h"
#include "base/utf8.h"
#include "television/request_error.h"

namespace orvane::set_process {

namespace {

std::string NoExtension(const extensions::ExtensionHost& host, const std::string& name) {
  std::vector<std::string> names;
  for (const auto& entry : host.catalogue()) names.push_back(entry.name);
  return "There is no extension \"" + name + "\"." +
         base::DidYouMean(base::NearNames(name, names)) + " Add its library with --extension.";
}

}  // namespace

// One extension in one page context.
class PageInstances::Connection final : public extensions::InstanceClient {
 public:
  Connection(int64_t context, extensions::Extension& extension, FrameSender& frames)
      : frames_(frames),
        head_{{"op", "posted"}, {"context", context}, {"extension", extension.name()}} {
    instance_ = extension.CreateInstance(this);
  }

  extensions::Instance& instance() { return *instance_; }

  void OnMessage(std::string_view text) override { Send(head_, base::WellFormedUtf8(text)); }

  void OnBinaryMessage(std::string_view bytes) override {
    Json head = head_;
    head["binary"] = true;
    Send(head, bytes);
  }

 private:
  void Send(const Json& head, std::string_view body) {
    try {
      frames_.Send(head, body);
    } catch (const base::FrameError& error) {
      frames_.Event(
          "explain",
          {{"text", "A message to the page was lost: " + std::string(error.what()) + "."}});
    }
  }

  FrameSender& frames_;
  const Json head_;  // of every frame
  std::unique_ptr<extensions::Instance> instance_;
};

PageInstances::PageInstances(extensions::ExtensionHost& host, FrameSender& frames)
    : host_(host), frames_(frames) {}

PageInstances::~PageInstances() = default;

void PageInstances::Close(int64_t context) {
  closed_.insert(context);
  contexts_.erase(context);
}

extensions::Instance& PageInstances::Get(int64_t context, const std::string& extension) {
  extensions::Extension* const found = host_.Find(extension);
  if (found == nullptr) throw television::RequestError(NoExtension(host_, extension));
  if (closed_.count(context) != 0) {
    throw television::RequestError("The page context " + std::to_string(context) +
                                   " is closed. Load the page again.");
  }
  std::unique_ptr<Connection>& connection = contexts_[context][found->name()];
  if (!connection) connection = std::make_unique<Connection>(context, *found, frames_);
  return connection->instance();
}

}  // namespace orvane::set_process
