// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "television/contexts.h"

#include <string_view>
#include <utility>

#include "base/frame.h"
#include "base/json_text.h"
#include "base/near_names.h"
#include "television/request_error.h"

namespace orvane::television {

namespace {

std::string NoExtension(const extensions::ExtensionHost& host, const std::string& name) {
  std::vector<std::string> names;
  for (const auto& entry : host.catalogue()) names.push_back(entry.name);
  return "There is no extension \"" + name + "\"." +
         base::DidYouMean(base::NearNames(name, names)) + " Add its library with --extension.";
}

}  // namespace

// One extension in one page context.
class Contexts::Connection final : public extensions::InstanceClient {
 public:
  Connection(int64_t context, extensions::Extension& extension, Outbox& outbox)
      : extension_(extension), outbox_(outbox), head_(Head(context, extension.name())) {
    instance_ = extension.CreateInstance(this);
  }

  const extensions::Extension* extension() const { return &extension_; }
  extensions::Instance& instance() { return *instance_; }

  void OnMessage(std::string_view text) override { Send(head_ + "}", base::WellFormed(text)); }

  void OnBinaryMessage(std::string_view bytes) override {
    Send(head_ + R"(,"binary":true})", bytes);
  }

 private:
  void Send(const std::string& head, std::string_view body) {
    try {
      outbox_.Send(head, body);
    } catch (const base::FrameError& error) {
      outbox_.Event(
          "explain",
          {{"text", "A message to the page was lost: " + std::string(error.what()) + "."}});
    }
  }

  static std::string Head(int64_t context, const std::string& extension) {
    std::string head = R"({"op":"posted","context":)" + std::to_string(context);
    head.append(R"(,"extension":)");
    base::AppendJsonString(extension, &head);
    return head;
  }

  extensions::Extension& extension_;
  Outbox& outbox_;
  const std::string head_;  // of every frame, but for its end
  std::unique_ptr<extensions::Instance> instance_;
};

Contexts::Contexts(extensions::ExtensionHost& host, Outbox& outbox)
    : host_(host), outbox_(outbox) {}

Contexts::~Contexts() = default;

void Contexts::Create(int64_t context, const std::string& extension) { Find(context, extension); }

std::string Contexts::SendSync(int64_t context, const std::string& extension,
                               const std::string& text) {
  return Find(context, extension).instance().SendSyncMessage(text);
}

void Contexts::Post(int64_t context, const std::string& extension, const std::string& text) {
  Find(context, extension).instance().PostMessage(text);
}

void Contexts::PostBinary(int64_t context, const std::string& extension, const std::string& bytes) {
  Find(context, extension).instance().PostBinaryMessage(bytes);
}

void Contexts::Close(int64_t context) {
  closed_.insert(context);
  contexts_.erase(context);
}

Contexts::Connection& Contexts::Find(int64_t context, const std::string& extension) {
  extensions::Extension* const found = host_.Find(extension);
  if (found == nullptr) throw RequestError(NoExtension(host_, extension));
  if (closed_.count(context) != 0) {
    throw RequestError("The page context " + std::to_string(context) +
                       " is closed. Load the page again.");
  }
  Connections& connections = contexts_[context];
  for (const auto& connection : connections) {
    if (connection->extension() == found) return *connection;
  }
  auto made = std::make_unique<Connection>(context, *found, outbox_);
  return *connections.emplace_back(std::move(made));
}

}  // namespace orvane::television
