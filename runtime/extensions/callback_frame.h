// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>

namespace orvane::extensions {

class Extension;
class InstanceState;

// A callback of an extension that runs on this thread; frames of one thread form a stack. While it
// runs, the C interface finds the instance it is about without a look into the registry, and a
// warning finds its host.
class CallbackFrame {
 public:
  // Both borrowed; `instance` is null for a callback about the extension itself.
  CallbackFrame(Extension& extension, InstanceState* instance)
      : extension_(extension), instance_(instance), outer_(innermost_) {
    innermost_ = this;
  }
  ~CallbackFrame() { innermost_ = outer_; }
  CallbackFrame(const CallbackFrame&) = delete;
  CallbackFrame& operator=(const CallbackFrame&) = delete;

  static const CallbackFrame* innermost() { return innermost_; }
  static bool IsRunning(const Extension& extension) {
    const CallbackFrame* frame = innermost_;
    while (frame != nullptr && &frame->extension_ != &extension) frame = frame->outer_;
    return frame != nullptr;
  }

  Extension& extension() const { return extension_; }
  InstanceState* instance() const { return instance_; }

 private:
  static inline thread_local CallbackFrame* innermost_ = nullptr;

  Extension& extension_;
  InstanceState* const instance_;
  CallbackFrame* const outer_;
};

// Runs `callback`, which calls into the extension. Returns the text of an exception that escaped
// it.
template <typename Callback>
std::optional<std::string> RunCallback(Extension& extension, InstanceState* instance,
                                       Callback&& callback) {
  CallbackFrame frame(extension, instance);
  try {
    std::forward<Callback>(callback)();
    return std::nullopt;
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    return "an exception of unknown type";
  }
}

}  // namespace orvane::extensions
