// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "tvset/features.h"
#include "tvset/log.h"

namespace tvset {

// Texts of the files that a set's kernel and graphics driver have, with this process's figures in
// them.

// Two lines of headings, then one line: process id, name, five figures of the resident memory, the
// proportional set size and the swap, in KiB. Empty when the kernel does not give the figures.
std::optional<std::string> MemoryStatisticsText();

// Three lines of headings, then one line per process: name, process id, size in KiB. The size is
// the drivers' where they report one, otherwise the profile's.
std::string GpuMemoryText(const FeatureStore& features);

// Two lines of headings, then one line per buffer: process id, user, handle, flags in hexadecimal,
// size in bytes, pages, offset, pins, mappings, name, and how many hold it. The buffers are those
// that the drivers report as shared, otherwise the profile's.
std::string GemInfoText(const FeatureStore& features, LogBuffer& log);

}  // namespace tvset
