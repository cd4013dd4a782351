// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// What the sanitizers are told, linked into every program of a sanitizer build: it holds for a
// program that a test starts with an environment of its own, and for one that is started by hand.
//
// The suppressions are for what comes without instrumentation. Of the JavaScript engine the own
// locks are not seen, what its threads hand to each other looks like a race, and its virtual
// machines live until the process ends. The C library reads the time zone under a lock of its own.
// Nothing of this project belongs in them.

#include <stdlib.h>

#define HOOK extern "C" __attribute__((visibility("default"))) const char*

HOOK __asan_default_options();
HOOK __asan_default_options() { return "strict_string_checks=1:check_initialization_order=1"; }

HOOK __ubsan_default_options();
HOOK __ubsan_default_options() { return "print_stacktrace=1"; }

HOOK __lsan_default_options();
HOOK __lsan_default_options() { return "print_suppressions=0"; }

HOOK __lsan_default_suppressions();
HOOK __lsan_default_suppressions() { return "leak:libjavascriptcoregtk-4.1.so\n"; }

HOOK __tsan_default_options();
HOOK __tsan_default_options() {
  return "print_suppressions=0:halt_on_error=1:second_deadlock_stack=1";
}

HOOK __tsan_default_suppressions();
HOOK __tsan_default_suppressions() {
  return "race:libjavascriptcoregtk-4.1.so.0\n"
         "signal:libjavascriptcoregtk-4.1.so.0\n"
         "race:tzset_internal\n";
}

#ifdef __SANITIZE_THREAD__
// The engine's collector thread stops the page's thread with a signal, which this sanitizer holds
// back for as long as it sees no blocking call; both then wait for ever. So the page's thread is to
// collect by itself.
__attribute__((constructor)) static void CollectInThePagesThread() {
  setenv("JSC_useConcurrentGC", "0", 0);
}
#endif
