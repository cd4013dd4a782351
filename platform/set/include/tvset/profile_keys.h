// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace tvset {

// Keys of the custom group of a device profile that say how the simulated set itself behaves. They
// are read when they are needed, so FeatureStore::Set changes them while it runs.

// int, KiB: graphics memory of a process, on a machine whose drivers do not report it.
inline constexpr char kGpuMemoryKey[] = "orvane.set/gpu_memory_kib";
// string: sizes in bytes, parted by blanks, of the buffers that a process shares with the
// compositor, on such a machine.
inline constexpr char kGemBuffersKey[] = "orvane.set/gem_buffers";
// int: seconds without input until the set's own screen saver comes on; 0 or less: never.
inline constexpr char kScreenSaverKey[] = "orvane.set/screen_saver_seconds";

}  // namespace tvset
