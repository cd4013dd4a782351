// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

// What came of a request to the keyboard, for who made it to answer with; all but kDone left it as
// it was.
enum class InputMethodResult {
  kDone,
  // The keyboard's style has a fixed place.
  kNotDynamic,
  // A value out of its range.
  kInvalid,
};

// Everything about the keyboard at one moment.
struct InputMethodState {
  // The keyboard may be moved.
  bool dynamic_style = true;
  // A position was given; otherwise x, y and align say nothing.
  bool positioned = false;
  // Pixels of the panel.
  int x = 0;
  // Pixels of the panel.
  int y = 0;
  // Which point of the keyboard is at x, y: 0 top left, 1 top centre … 8 bottom right.
  int align = 7;
  // Whether words are offered above the keys, and which; either may be set without the other.
  bool recommended_words_enabled = false;
  std::vector<std::string> recommended_words;
};

// The on-screen keyboard's state: where it is to appear and what it is to offer. What a person
// types into it does not pass here. Partner of the runtime services, which answer an application's
// requests by it; each change is told to Observer::OnInputMethodChanged on the calling thread. A
// restart of the set resets it. Owned by Set. Any thread.
class TVSET_EXPORT InputMethod {
 public:
  // Borrowed.
  explicit InputMethod(EventHub& events);

  // All of it as it is at one moment.
  InputMethodState state() const;
  // Whether the keyboard may be moved. A position that was given before stays.
  void set_dynamic_style(bool dynamic);
  // Pixels of the panel. kNotDynamic: the style has a fixed place. kInvalid: align outside 0 to 8,
  // or a negative coordinate.
  InputMethodResult SetPosition(int x, int y, int align);
  // 0 disables, 1 enables; kInvalid otherwise.
  InputMethodResult SetRecommendedWordsType(int type);
  // Replaces them; empty: there are none. Any texts, in the order in which they are to be offered.
  void SetRecommendedWords(const std::vector<std::string>& words);
  // As at the set's start. Tells nobody.
  void Reset();

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  InputMethodState state_;  // guarded by mutex_
};

}  // namespace tvset
