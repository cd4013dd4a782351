// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "files/drm_usage.h"

#include <vector>

#include <gtest/gtest.h>

namespace tvset {
namespace {

constexpr uint64_t kKib = 1024;

constexpr char kClient[] =
    "pos:\t0\n"
    "flags:\t02100002\n"
    "drm-driver:\tsome\n"
    "drm-client-id:\t12\n"
    "drm-pdev:\t0000:00:02.0\n"
    "drm-engine-render:\t25662044495 ns\n"
    "drm-total-system:\t4000 KiB\n"
    "drm-resident-system:\t3000 KiB\n"
    "drm-shared-system:\t1000 KiB\n"
    "drm-total-local:\t2 MiB\n";

TEST(DrmUsageTest, FileOfNoDriverChangesNothing) {
  DrmUsage usage;
  usage.Add("pos:\t0\nflags:\t0100000\nmnt_id:\t24\n");
  usage.Add("");
  EXPECT_FALSE(usage.found());
}

TEST(DrmUsageTest, SharedAndPrivateMemoryAreToldApart) {
  DrmUsage usage;
  usage.Add(kClient);
  EXPECT_TRUE(usage.found());
  EXPECT_EQ(usage.private_bytes(), (2000 + 2048) * kKib);
  EXPECT_EQ(usage.shared_bytes(), (std::vector<uint64_t>{1000 * kKib}));
}

TEST(DrmUsageTest, FilesOfOneClientCountOnce) {
  DrmUsage usage;
  usage.Add(kClient);
  usage.Add(kClient);
  EXPECT_EQ(usage.private_bytes(), (2000 + 2048) * kKib);
  EXPECT_EQ(usage.shared_bytes().size(), 1u);
}

TEST(DrmUsageTest, ClientsOfOtherDevicesAndIdsAddUp) {
  DrmUsage usage;
  usage.Add("drm-pdev: a\ndrm-client-id: 1\ndrm-memory-vram: 100\n");
  usage.Add("drm-pdev: b\ndrm-client-id: 1\ndrm-memory-vram: 10\n");
  usage.Add("drm-pdev: b\ndrm-client-id: 2\ndrm-memory-vram: 1\n");
  EXPECT_EQ(usage.private_bytes(), 111u);
}

TEST(DrmUsageTest, MoreSharedThanTakenIsAllShared) {
  DrmUsage usage;
  usage.Add("drm-client-id: 1\ndrm-resident-vram: 10 KiB\ndrm-shared-vram: 20 KiB\n");
  EXPECT_EQ(usage.private_bytes(), 0u);
  EXPECT_EQ(usage.shared_bytes(), (std::vector<uint64_t>{10 * kKib}));
}

TEST(DrmUsageTest, FiguresThatAreNoneArePassedOver) {
  DrmUsage usage;
  usage.Add("drm-client-id: 1\ndrm-memory-vram: many\ndrm-memory-gtt: 5 GB\ndrm-memory-cpu:\n");
  EXPECT_FALSE(usage.found());
}

TEST(DrmUsageTest, ClientWithoutIdIsPassedOver) {
  DrmUsage usage;
  usage.Add("drm-driver: some\ndrm-memory-vram: 10 KiB\n");
  EXPECT_FALSE(usage.found());
}

}  // namespace
}  // namespace tvset
