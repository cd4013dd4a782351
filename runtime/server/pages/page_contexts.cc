// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_contexts.h"

#include <iterator>
#include <utility>
#include <vector>

#include "base/json_writer.h"
#include "base/wall_clock.h"
#include "server/web/secret.h"

namespace orvane::server {

namespace {

constexpr size_t kMostScriptless = 32;

}  // namespace

PageContexts::PageContexts(asio::io_context& loop, set_process::SetProcess& set_process,
                           EventHub& hub, const Limits& limits, const PageContext::Times& times)
    : loop_(loop), set_process_(set_process), hub_(hub), limits_(limits), times_(times) {}

std::shared_ptr<PageContext> PageContexts::Open(const std::string& href) {
  if (contexts_.size() >= limits_.contexts) {
    NoteScriptless(href, true,
                   "The page has no extensions, because " + std::to_string(limits_.contexts) +
                       " pages and frames of the application are open already: close some, and "
                       "load it again.");
    return nullptr;
  }
  PageContext::Owner owner{
      [this](PageContext& context, std::string_view text) { on_message_(context, text); },
      [this](PageContext& context) {
        NoteFocus(context);
        TellChange();
      },
      [this](PageContext& context) { Close(context); },
      [this] { return set_process_.queued_bytes() < limits_.library_bytes; }};
  auto context =
      std::make_shared<PageContext>(loop_, ++last_id_, std::move(owner), limits_, times_);
  context->set_href(href);
  context->Await();
  contexts_[context->id()] = context;
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
  set_process_.Request({{"op", "close"}, {"context", id}}, "", [](const set_process::Answer&) {});
  TellChange();
}

std::shared_ptr<PageContext> PageContexts::Foremost() const {
  std::shared_ptr<PageContext> foremost;
  for (const auto& [id, context] : contexts_) {
    if (!context->is_top() || !context->has_contact()) continue;
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
  if (context && context->instances().insert(base::DecodeJsonString(extension)).second)
    TellChange();
}

void PageContexts::ForgetInstances() {
  for (const auto& [id, context] : contexts_) context->instances().clear();
  TellChange();
}

void PageContexts::NoteScriptless(const std::string& href, bool is_top,
                                  const std::string& problem) {
  if (scriptless_.size() == kMostScriptless) scriptless_.clear();
  const int64_t now = base::NowNs();
  base::JsonWriter json;
  json.Number("context", ++last_id_).Text("href", href).Text("title", "").Flag("top", is_top);
  json.Flag("visible", true).Flag("focused", false).Flag("editing", false).Flag("isolated", false);
  json.Number("opened_ns", now).Raw("instances", "[]");
  json.Text("runtime", "noScript").Text("problem", problem);
  scriptless_[href] = {now, json.Take()};
  TellChange();
}

void PageContexts::ForgetScriptlessBefore(int64_t opened_ns) {
  const size_t before = scriptless_.size();
  for (auto entry = scriptless_.begin(); entry != scriptless_.end();) {
    entry = entry->second.opened_ns < opened_ns ? scriptless_.erase(entry) : std::next(entry);
  }
  if (scriptless_.size() != before) TellChange();
}

std::string PageContexts::Json() const {
  std::vector<std::string> pages;
  for (const auto& [id, context] : contexts_) {
    if (context->has_contact()) pages.push_back(context->Json());
  }
  for (const auto& [href, page] : scriptless_) pages.push_back(page.json);
  return base::JsonArray(pages, [](const std::string& page) { return page; });
}

void PageContexts::TellChange() { hub_.Publish("pages", Json()); }

}  // namespace orvane::server
