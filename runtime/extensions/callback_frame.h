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
//
// Made by RunCallback, and seen by its own thread alone: an extension's own threads have no frame
// when they call the host. One callback may lead to another, of the same extension or of a second
// one, when what it calls sends a message in its turn.
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

  // Null outside callbacks.
  static const CallbackFrame* innermost() { return innermost_; }

  // Whether code of the extension is on this thread's stack, however deep: its library must not be
  // unloaded then.
  static bool IsRunning(const Extension& extension) {
    const CallbackFrame* frame = innermost_;
    while (frame != nullptr && &frame->extension_ != &extension) frame = frame->outer_;
    return frame != nullptr;
  }

  Extension& extension() const { return extension_; }
  // Null in XW_Initialize and in the shutdown callback. May be dead already: its own callback may
  // have led to its destruction.
  InstanceState* instance() const { return instance_; }

 private:
  static inline thread_local CallbackFrame* innermost_ = nullptr;

  Extension& extension_;
  InstanceState* const instance_;
  CallbackFrame* const outer_;
};

// Runs `callback`, which calls into the extension. Returns the text of an exception that escaped
// it, for the caller to say what it was about: a warning where nobody waits, an exception of the
// host's own where a page does. Nothing when none escaped. On the extension thread; whoever calls
// keeps both objects alive.
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
