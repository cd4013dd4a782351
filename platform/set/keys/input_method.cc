// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "tvset/input_method.h"

namespace tvset {

InputMethod::InputMethod(EventHub& events) : events_(events) {}

InputMethodState InputMethod::state() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return state_;
}

void InputMethod::set_dynamic_style(bool dynamic) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.dynamic_style = dynamic;
  }
  events_.Notify([](Observer& observer) { observer.OnInputMethodChanged(); });
}

InputMethodResult InputMethod::SetPosition(int x, int y, int align) {
  if (x < 0 || y < 0 || align < 0 || align > 8) return InputMethodResult::kInvalid;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!state_.dynamic_style) return InputMethodResult::kNotDynamic;
    state_.positioned = true;
    state_.x = x;
    state_.y = y;
    state_.align = align;
  }
  events_.Notify([](Observer& observer) { observer.OnInputMethodChanged(); });
  return InputMethodResult::kDone;
}

InputMethodResult InputMethod::SetRecommendedWordsType(int type) {
  if (type != 0 && type != 1) return InputMethodResult::kInvalid;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.recommended_words_enabled = type == 1;
  }
  events_.Notify([](Observer& observer) { observer.OnInputMethodChanged(); });
  return InputMethodResult::kDone;
}

void InputMethod::SetRecommendedWords(const std::vector<std::string>& words) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    state_.recommended_words = words;
  }
  events_.Notify([](Observer& observer) { observer.OnInputMethodChanged(); });
}

void InputMethod::Reset() {
  std::lock_guard<std::mutex> lock(mutex_);
  state_ = InputMethodState{};
}

}  // namespace tvset
