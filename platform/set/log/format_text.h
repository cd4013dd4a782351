// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdarg>
#include <cstddef>

namespace tvset {

// As vsnprintf, and by it where the format has more than the plain conversions that nearly every
// log line is made of (%s %d %i %u %x %c %p %% and their l, ll and z forms, without flags, width or
// precision): these are formatted here, at about half the cost.
__attribute__((format(printf, 3, 0))) int FormatText(char* out, size_t size, const char* format,
                                                     va_list arguments);

}  // namespace tvset
