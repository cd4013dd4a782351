// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "page/runtime_messages.h"
#include "tvset/set.h"

namespace orvane::television {

// What the web runtime itself answers the pages of one application: remote keys, the on-screen
// keyboard, focus and window. Every accepted request changes the simulated set; its services decide
// what follows, such as which keys reach the page.
//
// Answers. SendSync gives "success", or "error" ("notsupportederror" for a keyboard that cannot be
// moved). Send is true for what SendSync would call "success". SendAsync gives a reply text of the
// form that extensions use: {"status":"success"} or the error form. Messages are known by URI
// alone, so each can be sent in each of the three ways. Everything a page sends is checked here:
// nothing it sends throws or reaches the set unchecked.
//
// Threads: called on the page thread; `explain` is called there too, and SendAsync answers before
// it returns. Borrows the set, which must outlive it.
class RuntimeServices final : public page::RuntimeMessages {
 public:
  using Explain = std::function<void(const std::string&)>;

  // `explain` receives one line for each refusal, with its cause and the remedy. May be empty.
  RuntimeServices(tvset::Set& set, std::string app_id, Explain explain);

  bool Send(const std::string& uri, const std::string& text) override;
  std::string SendSync(const std::string& uri, const std::string& text) override;
  void SendAsync(const std::string& uri, const std::string& text,
                 std::function<void(std::string)> answer) override;
  bool HasPrivilege(const std::string& privilege) override;
  std::string MoveWindow(int x, int y) override;
  std::string SetQuarterPosition(int position) override;

 private:
  // What came of a request. `reason` is empty when there is nothing to explain.
  struct Outcome {
    std::string answer;
    std::string reason;
  };
  using Handler = Outcome (RuntimeServices::*)(const std::string& text);
  struct Row;
  static const Row kRows[];

  Outcome Handle(const std::string& uri, const std::string& text);
  Outcome Dispatch(const std::string& uri, const std::string& text);
  Outcome RegisterKey(const std::string& text);
  Outcome UnregisterKey(const std::string& text);
  Outcome RegisterKeyInSpecialMode(const std::string& text);
  Outcome SetIMERecommendedType(const std::string& text);
  Outcome SetIMERecommendedWords(const std::string& text);
  Outcome SetIMEPosition(const std::string& text);
  Outcome SetFocus(const std::string& text);
  Outcome SetWindowStackMode(const std::string& text);
  Outcome SetAuxHint(const std::string& text);

  Outcome Grab(const std::string& key_name, tvset::GrabMode mode);
  Outcome OfGrab(tvset::GrabResult result, const std::string& key_name) const;
  Outcome OfWindow(bool done) const;
  bool Holds(const std::string& privilege) const;
  std::string NotRunning() const;
  void Tell(const std::string& request, const std::string& reason) const;

  tvset::Set& set_;
  const std::string app_id_;
  const Explain explain_;
};

}  // namespace orvane::television
