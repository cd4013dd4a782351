// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Stands in for the script text in the library whose size is compared.

#include "orvane/orvane_api.h"

const char kSource_orvane_api[] = "";
