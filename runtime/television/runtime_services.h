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
// Partner of the page (page::RuntimeMessages) in process, and of the set process's requests
// "runtime", "widget" and "privilege" for pages in a browser. The names of messages are those of a
// television's web runtime, letter for letter.
//
// Threads: everything is called on the extension thread; `explain` is called there too, and
// SendAsync answers before it returns. Owned by Television; borrows the set, which outlives it.
class RuntimeServices final : public page::RuntimeMessages {
 public:
  using Explain = std::function<void(const std::string&)>;

  // `explain` receives one line for each refusal, with its cause and the remedy: what the page
  // itself is told does not say why. May be empty.
  RuntimeServices(tvset::Set& set, std::string app_id, Explain explain);

  // See page::RuntimeMessages. A message of a URI that is none of these is refused as any other; so
  // is one whose text is above 64 KiB. The texts:
  //   registerKey, unregisterKey       a key's symbol, "XF86Red"
  //   RegisterKeyInSpecialMode         a symbol and a tvset::GrabMode, 2 or 5, "XF86Red,2"
  //   setIMERecommendedType            "0" or "1": whether words are recommended
  //   setIMERecommendedWords           words with commas between, 1000 at most; "": none
  //   setIMEPosition                   x, y (pixels) and alignment (0 to 8), "960,1080,7"
  //   setFocus                         "true" or "false": whether the application wants the focus
  //   setWindowStackMode               "NONE", "BELOW" or "ABOVE"
  //   setAuxHint                       key and value, "key,value"; the value may have commas
  // Keys need the privilege tvset::kKeyPrivilege; the last three need an application that runs.
  bool Send(const std::string& uri, const std::string& text) override;
  std::string SendSync(const std::string& uri, const std::string& text) override;
  void SendAsync(const std::string& uri, const std::string& text,
                 std::function<void(std::string)> answer) override;
  // All three explain what they refuse, as the messages do.
  bool HasPrivilege(const std::string& privilege) override;
  std::string MoveWindow(int x, int y) override;
  std::string SetQuarterPosition(int position) override;

 private:
  // What came of a request.
  struct Outcome {
    // What SendSync gives.
    std::string answer;
    // The cause and the remedy, without a full stop; empty when it was done.
    std::string reason;
  };
  using Handler = Outcome (RuntimeServices::*)(const std::string& text);
  struct Row;
  static const Row kRows[];

  // Dispatches, and explains a refusal.
  Outcome Handle(const std::string& uri, const std::string& text);
  Outcome Dispatch(const std::string& uri, const std::string& text);

  // The handlers of the table.
  Outcome RegisterKey(const std::string& text);
  Outcome UnregisterKey(const std::string& text);
  Outcome RegisterKeyInSpecialMode(const std::string& text);
  Outcome SetIMERecommendedType(const std::string& text);
  Outcome SetIMERecommendedWords(const std::string& text);
  Outcome SetIMEPosition(const std::string& text);
  Outcome SetFocus(const std::string& text);
  Outcome SetWindowStackMode(const std::string& text);
  Outcome SetAuxHint(const std::string& text);

  // `key_name` is the page's text, checked by the set.
  Outcome Grab(const std::string& key_name, tvset::GrabMode mode);
  Outcome OfGrab(tvset::GrabResult result, const std::string& key_name) const;
  // The answer to what the set's windows did, or did not since the application does not run.
  Outcome OfWindow(bool done) const;
  bool Holds(const std::string& privilege) const;
  std::string NotRunning() const;
  void Tell(const std::string& request, const std::string& reason) const;

  tvset::Set& set_;
  const std::string app_id_;
  const Explain explain_;
};

}  // namespace orvane::television
