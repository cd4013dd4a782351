// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/AppUUID.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <memory>
#include <string>

#include <tzplatform_config.h>
#include <uuid/uuid.h>

#include "common/logger.h"
#include "orvane/AppUtil.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 9999;
constexpr int kCannotCreate = 101;

constexpr size_t kUuidLength = 36;

// The folder that holds one folder for each application. The name behind the number differs between
// platform images.
constexpr auto kApplicationRoot = static_cast<tzplatform_variable>(61);

struct FileCloser {
  void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

std::string UuidPath(const char* short_app_id) {
  const char* const root = tzplatform_getenv(kApplicationRoot);
  return std::string(root == nullptr ? "" : root) + "/" + short_app_id + "/data/uuid";
}

}  // namespace

void AppUUID::GenerateUUID(char* buffer) {
  uuid_t uuid;
  uuid_generate_random(uuid);
  uuid_unparse_lower(uuid, buffer);
  uuid_clear(uuid);
}

int AppUUID::GetUUID(char* buffer) {
  char* app_id = nullptr;
  if (!AppUtil::GetAppID(&app_id)) {
    LoggerE("getAppID failed");
    return kFailure;
  }
  const std::string path = UuidPath(app_id);
  free(app_id);

  const File stored(fopen(path.c_str(), "r"));
  if (stored) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
      LoggerE("stat failed");
      return kFailure;
    }
    if (fread(buffer, 1, kUuidLength, stored.get()) == kUuidLength &&
        status.st_size == static_cast<off_t>(kUuidLength)) {
      LoggerE("uuid fread suceess");
      return kSuccess;
    }
  }

  GenerateUUID(buffer);
  File written(fopen(path.c_str(), "w+"));
  if (!written && !stored) {
    LoggerE("uuid fopen failed, errno: [%d]", errno);
    return kCannotCreate;
  }
  if (!written || fwrite(buffer, 1, kUuidLength, written.get()) != kUuidLength) {
    LoggerE("uuid fwrite failed");
    return kFailure;
  }
  if (stored) {
    LoggerE("uuid newly generated");
  } else {
    LoggerE("uuid fwrite suceess");
  }
  // A full device shows here at the earliest. The page has its UUID all the same; the next call
  // finds a file of another length and makes another.
  if (fclose(written.release()) != 0) {
    LoggerE("uuid fclose failed, errno: [%d]", errno);
  }
  return kSuccess;
}
