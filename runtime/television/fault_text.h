// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tvset/faults.h"

namespace orvane::television {

// "FUNCTION=CODE" or "FUNCTION=CODE:once". Throws RequestError. Whether there is such a function is
// for the set to say.
tvset::Fault ParseFault(const std::string& text);

}  // namespace orvane::television
