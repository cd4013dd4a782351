// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>
#include <vector>

// One labelled point in a page's life.
struct DebugPointInfo {
  // Seconds since the point before it in the same list; 0.0 for the first.
  double elapsed;
  std::chrono::time_point<std::chrono::system_clock, std::chrono::nanoseconds> time;
  std::string label;
};

// Small services over the platform. No state of its own, any thread; a list of points is its
// owner's to guard. Nothing throws for a failure of the platform.
class CommonUtil {
 public:
  // True while the file "/etc/debug" exists, whatever it is.
  static bool IsDebug();

  // The first three characters of the platform's version, such as "6.5"; empty when it cannot be
  // read.
  static std::string GetPlatformVersion();

  // Publishes `text`, which may be empty, for the platform's performance tools. False when it was
  // not stored; then the text before it stays.
  static bool RecordProfiling(std::string text);

  // Adds a point named `label` and returns the seconds since the one before it, as "%5.3f" writes
  // them. An empty label removes all points and returns an empty text.
  static std::string GetTimeStamp(std::vector<DebugPointInfo>& points, std::string label);
};
