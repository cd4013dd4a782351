// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// A shared library that is no extension.

extern "C" __attribute__((visibility("default"))) int SomethingElse() { return 1; }
