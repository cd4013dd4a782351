// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/CommonUtil.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <utility>

#include <boost/format.hpp>
#include <system_info.h>
#include <vconf.h>

#include "common/logger.h"

namespace {

constexpr const char* kDebugFile = "/etc/debug";
constexpr const char* kProfilingKey = "memory/runningApps/performance_data";
constexpr const char* kPlatformVersionKey = "http://tizen.org/feature/platform.version";
constexpr size_t kShortVersionLength = 3;

using Clock = std::chrono::system_clock;

double SecondsBetween(const DebugPointInfo& point, Clock::time_point now) {
  constexpr double kNanosecondsPerSecond = 1e9;
  const std::chrono::nanoseconds gap = now - point.time;
  return static_cast<double>(gap.count()) / kNanosecondsPerSecond;
}

}  // namespace

bool CommonUtil::IsDebug() {
  struct stat status = {};
  if (stat(kDebugFile, &status) != 0) {
    return false;
  }
  LoggerI("File [%s] exists - debug mode is on", kDebugFile);
  return true;
}

std::string CommonUtil::GetPlatformVersion() {
  char* version = nullptr;
  if (system_info_get_platform_string(kPlatformVersionKey, &version) != 0) {
    return {};
  }
  std::string result = std::string(version).substr(0, kShortVersionLength);
  LoggerI("tizen version is [%s]", result.c_str());
  free(version);
  return result;
}

bool CommonUtil::RecordProfiling(std::string text) {
  if (vconf_set_str(kProfilingKey, text.c_str()) != 0) {
    LoggerI("Fail to set the vonf value, key = [%s]", kProfilingKey);
    return false;
  }
  LoggerI("Success to recordProfiling");
  return true;
}

std::string CommonUtil::GetTimeStamp(std::vector<DebugPointInfo>& points, std::string label) {
  if (label.empty()) {
    LoggerI("data clear!");
    points.clear();
    return {};
  }
  const Clock::time_point time = Clock::now();
  const double elapsed = points.empty() ? 0.0 : SecondsBetween(points.back(), Clock::now());
  points.push_back({elapsed, time, std::move(label)});
  LoggerE("added = [%f][%s]", elapsed, points.back().label.c_str());
  return (boost::format("%5.3f") % elapsed).str();
}
