// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <memory>
#include <stdexcept>

#include <JavaScriptCore/JavaScript.h>

#include "page/js_string.h"

namespace orvane::page {

// The C++ side of an object that only the runtime's own scripts hold. Its functions find it as
// their `this`. The engine's object borrows it: whoever makes one keeps the NativeObject for as
// long as the context lives. Page thread only.
class NativeObject {
 public:
  virtual ~NativeObject() = default;
};

// A value that a script threw, on its way through C++ to the next script. Only GuardNative catches
// it.
struct ThrownValue {
  JSValueRef value;
};

// What a script called a native function with. Lives for the call. The script decides what the
// arguments are, so each is read through a function that knows what to do with any value; what
// reading one throws (a toString of the page's may) goes on as ThrownValue.
struct NativeCall {
  JSContextRef context;
  const JSValueRef* arguments;
  size_t count;

  // undefined for one that was not given.
  JSValueRef operator[](size_t index) const {
    return index < count ? arguments[index] : JSValueMakeUndefined(context);
  }
  // The argument's text as String() gives it, written over `text` to reuse its memory.
  void ReadText(size_t index, std::string* text) const;
  std::string Text(size_t index) const;
  // Cut to the range of int; 0 for what is no number.
  int Int(size_t index) const;
  // The argument, which must be a function. Throws std::invalid_argument with `what` in its text.
  JSObjectRef Function(size_t index, const char* what) const;
};

// An Error of the script, not thrown yet.
JSValueRef MakeError(JSContextRef context, const char* message);

// A class of objects that carry a pointer of their maker and inherit nothing: with these functions,
// which an entry without a name ends, or callable themselves. Lives as long as the process; what is
// given is copied.
JSClassRef MakeNativeClass(const char* name, const JSStaticFunction* functions,
                           JSObjectCallAsFunctionCallback call = nullptr);

// The one guard between the engine and C++: no exception unwinds through the engine. What `body`
// throws goes to `exception`: a script's value as it was, a C++ exception as an Error with its
// text. The script that called sees it thrown, and the result does not count.
template <typename Body>
JSValueRef GuardNative(JSContextRef context, JSValueRef* exception, Body&& body) {
  try {
    return body();
  } catch (const ThrownValue& thrown) {
    *exception = thrown.value;
  } catch (const std::exception& error) {
    *exception = MakeError(context, error.what());
  } catch (...) {
    *exception = MakeError(context, "an exception of unknown type");
  }
  return JSValueMakeUndefined(context);
}

// A member function as the engine calls it: with the NativeObject that `this` holds, or an Error
// when the script made it the method of something else.
template <typename Self, JSValueRef (Self::*kFunction)(const NativeCall&)>
JSValueRef CallNative(JSContextRef context, JSObjectRef, JSObjectRef self, size_t count,
                      const JSValueRef arguments[], JSValueRef* exception) {
  return GuardNative(context, exception, [&] {
    // Scripts decide what `this` is.
    auto* object = dynamic_cast<Self*>(static_cast<NativeObject*>(JSObjectGetPrivate(self)));
    if (object == nullptr) throw std::invalid_argument("This function belongs to another object.");
    return (object->*kFunction)(NativeCall{context, arguments, count});
  });
}

// A row for MakeNativeClass: a function that scripts cannot replace.
template <typename Self, JSValueRef (Self::*kFunction)(const NativeCall&)>
constexpr JSStaticFunction NativeFunction(const char* name) {
  return {name, CallNative<Self, kFunction>, kJSPropertyAttributeReadOnly};
}

// Keeps a function from being collected for as long as one of these lives, which must not be longer
// than its context.
using ProtectedFunction = std::shared_ptr<OpaqueJSValue>;
ProtectedFunction Protect(JSContextRef context, JSObjectRef function);

}  // namespace orvane::page
