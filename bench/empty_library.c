// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What loading a library costs at least.
int orvane_bench_empty(void);
__attribute__((visibility("default"))) int orvane_bench_empty(void) { return 0; }
