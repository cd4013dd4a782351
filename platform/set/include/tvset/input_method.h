// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "tvset/events.h"
#include "tvset/export.h"

namespace tvset {

// What came of a request to the keyboard; all but kDone left it as it was.
enum class InputMethodResult {
  kDone,
  kNotDynamic,  // the keyboard's style has a fixed place
  kInvalid,     // a value out of its range
};

struct InputMethodState {
  bool dynamic_style = true;  // the keyboard may be moved
  bool positioned = false;    // a position was given; otherwise x, y and align say nothing
  int x = 0;                  // pixels of the panel
  int y = 0;
  // Which point of the keyboard is at x, y: 0 top left, 1 top centre … 8 bottom right.
  int align = 7;
  bool recommended_words_enabled = false;
  std::vector<std::string> recommended_words;
};

// The on-screen keyboard's state: where it is to appear and what it is to offer. What a person
// types into it does not pass here. Partner of the runtime services, which answer an application's
// requests by it; each change is told to Observer::OnInputMethodChanged on the calling thread. A
// restart of the set resets it. Any thread.
class TVSET_EXPORT InputMethod {
 public:
  explicit InputMethod(EventHub& events);  // borrowed

  InputMethodState state() const;
  void set_dynamic_style(bool dynamic);
  // Pixels of the panel. kNotDynamic: the style has a fixed place. kInvalid: align outside 0 to 8,
  // or a negative coordinate.
  InputMethodResult SetPosition(int x, int y, int align);
  // 0 disables, 1 enables; kInvalid otherwise.
  InputMethodResult SetRecommendedWordsType(int type);
  void SetRecommendedWords(const std::vector<std::string>& words);  // replaces them
  void Reset();                                                     // tells nobody

 private:
  EventHub& events_;
  mutable std::mutex mutex_;
  InputMethodState state_;  // guarded by mutex_
};

}  // namespace tvset
