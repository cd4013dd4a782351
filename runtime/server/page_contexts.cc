// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/page_contexts.h"

#include <utility>

#include "server/json_writer.h"
#include "server/secret.h"

namespace orvane::server {

PageContexts::PageContexts(asio::io_context& loop, Library& library, EventHub& hub,
                           const Limits& limits, const PageContext::Times& times)
    : loop_(loop),
      library_(library),
      hub_(hub),
      most_contexts_(limits.contexts),
      most_queued_bytes_(limits.library_bytes),
      times_(times) {}

std::shared_ptr<PageContext> PageContexts::Open(const std::string& href) {
  if (contexts_.size() >= most_contexts_) return nullptr;
  PageContext::Owner owner{
      [this](PageContext& context, std::string_view text) { on_message_(context, text); },
      [this](PageContext& context) { Close(context); },
      [this] { return library_.queued_bytes() < most_queued_bytes_; }};
  auto context = std::make_shared<PageContext>(loop_, ++last_id_, std::move(owner), times_);
  context->set_href(href);
  context->Touch();
  NoteFocus(*context);
  contexts_[context->id()] = context;
  TellChange();
  return context;
}

std::shared_ptr<PageContext> PageContexts::Find(int64_t id) const {
  const auto found = contexts_.find(id);
  return found == contexts_.end() ? nullptr : found->second;
}

std::shared_ptr<PageContext> PageContexts::Find(int64_t id, std::string_view secret) const {
  auto context = Find(id);
  return context && SecretsMatch(context->secret(), secret) ? context : nullptr;
}

void PageContexts::Close(PageContext& context) {
  const int64_t id = context.id();
  if (contexts_.erase(id) == 0) return;
  library_.Request("close", R"("context":)" + std::to_string(id), [](const LibraryAnswer&) {});
  TellChange();
}

std::shared_ptr<PageContext> PageContexts::Foremost() const {
  std::shared_ptr<PageContext> foremost;
  for (const auto& [id, context] : contexts_) {
    if (!context->is_top()) continue;
    if (!foremost || context->focus_order() > foremost->focus_order()) foremost = context;
  }
  return foremost;
}

void PageContexts::DeliverToAll(std::string_view members) {
  const auto contexts = contexts_;
  for (const auto& [id, context] : contexts) context->Deliver(members);
}

void PageContexts::Reload() {
  const auto contexts = contexts_;
  for (const auto& [id, context] : contexts) {
    if (context->is_top()) context->Deliver(R"("type":"reload")");
  }
}

void PageContexts::NoteInstance(int64_t id, std::string_view extension) {
  const auto context = Find(id);
  if (context && context->instances().insert(DecodeJsonString(extension)).second) TellChange();
}

void PageContexts::ForgetInstances() {
  for (const auto& [id, context] : contexts_) context->instances().clear();
  TellChange();
}

std::string PageContexts::Json() const {
  return JsonArray(contexts_, [](const auto& entry) { return entry.second->Json(); });
}

void PageContexts::TellChange() { hub_.Publish("pages", Json()); }

}  // namespace orvane::server
