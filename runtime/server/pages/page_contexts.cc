// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_contexts.h"

#include <iterator>
#include <utility>

#include "base/wall_clock.h"
#include "server/web/secret.h"

namespace orvane::server {

namespace {

constexpr size_t kMostScriptless = 32;

}  // namespace

PageContexts::PageContexts(asio::io_context& loop, set_process::SetProcess& set_process,
                           EventBroadcast& events, const Limits& limits,
                           const PageContext::Times& times)
    : loop_(loop), set_process_(set_process), events_(events), limits_(limits), times_(times) {}

std::shared_ptr<PageContext> PageContexts::Open(const std::string& href) {
  if (contexts_.size() >= limits_.contexts) {
    NoteScriptless(href, true,
                   "The page has no extensions, because " + std::to_string(limits_.contexts) +
                       " pages and frames of the application are open already: close some, and "
                       "load it again.");
    return nullptr;
  }
  PageContext::Owner owner{[this](PageContext& context, std::string_view data, bool is_binary) {
                             on_message_(context, data, is_binary);
                           },
                           [this](PageContext& context) {
                             NoteFocus(context);
                             TellChange();
                           },
                           [this](PageContext& context) { Close(context); },
                           [this] { return set_process_.queued_bytes() < limits_.library_bytes; }};
  auto context =
      std::make_shared<PageContext>(loop_, ++last_id_, std::move(owner), limits_, times_);
  PageState state;
  state.href = href;
  context->set_state(std::move(state));
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
    if (!context->state().top || !context->has_contact()) continue;
    if (!foremost || context->focus_order() > foremost->focus_order()) foremost = context;
  }
  return foremost;
}

void PageContexts::DeliverToAll(const PageMessage& message) {
  const auto contexts = contexts_;
  for (const auto& [id, context] : contexts) context->Deliver(message);
}

void PageContexts::Reload() {
  const auto contexts = contexts_;
  for (const auto& [id, context] : contexts) {
    if (context->state().top) context->Deliver({Json{{"type", "reload"}}, std::nullopt, false});
  }
}

void PageContexts::NoteInstance(int64_t id, const std::string& extension) {
  const auto context = Find(id);
  if (context && context->instances().insert(extension).second) TellChange();
}

void PageContexts::ForgetInstances() {
  for (const auto& [id, context] : contexts_) context->instances().clear();
  TellChange();
}

void PageContexts::NoteScriptless(const std::string& href, bool is_top,
                                  const std::string& problem) {
  if (scriptless_.size() == kMostScriptless) scriptless_.clear();
  ListedPage page;
  page.context = ++last_id_;
  page.state.href = href;
  page.state.top = is_top;
  page.opened_ns = base::NowNs();
  page.runtime = "noScript";
  page.problem = problem;
  scriptless_[href] = std::move(page);
  TellChange();
}

void PageContexts::ForgetScriptlessBefore(int64_t opened_ns) {
  const size_t before = scriptless_.size();
  for (auto entry = scriptless_.begin(); entry != scriptless_.end();) {
    entry = entry->second.opened_ns < opened_ns ? scriptless_.erase(entry) : std::next(entry);
  }
  if (scriptless_.size() != before) TellChange();
}

std::vector<ListedPage> PageContexts::List() const {
  std::vector<ListedPage> pages;
  for (const auto& [id, context] : contexts_) {
    if (context->has_contact()) pages.push_back(context->Description());
  }
  for (const auto& [href, page] : scriptless_) pages.push_back(page);
  return pages;
}

void PageContexts::TellChange() { events_.Publish("pages", base::ToJson(List())); }

}  // namespace orvane::server
