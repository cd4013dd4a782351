// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Marks what the framework library gives to extensions; everything else in it stays hidden.
#define WEBAPI_EXPORT __attribute__((visibility("default")))
