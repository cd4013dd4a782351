// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

#include "orvane/orvane_manager.h"

#include <stdio.h>
#include <string.h>
#include <sys/prctl.h>

#include <initializer_list>
#include <string>

#include <screensaver.h>

#include "common/logger.h"
#include "common/task-queue.h"
#include "common/tools.h"
#include "orvane/AppUtil.h"
#include "orvane/constants.h"
#include "orvane/numbers.h"
#include "orvane/orvane_instance.h"

namespace extension::orvane {

namespace {

using common::ErrorCode;
using common::PlatformResult;
namespace tools = common::tools;

// The television kernel's own option: takes a text and its length. Other kernels refuse it, which
// is harmless.
constexpr int kKernelMarkerOption = 666;
constexpr size_t kKernelMarkerSize = 1024;

constexpr int32_t kScreenSaverOff = 0;

// Answers a message that lacks one of `names`. True when there is nothing more to do.
bool ReportMissing(const picojson::value& args, std::initializer_list<const char*> names,
                   picojson::object& out) {
  for (const char* name : names) {
    if (!args.contains(name)) {
      tools::ReportError(common::TypeMismatchException(std::string(name) + " is required argument"),
                         out);
      return true;
    }
  }
  return false;
}

// Writes what a task came to: `value` for a success.
void Report(const PlatformResult& result, const picojson::value& value, picojson::value& reply) {
  auto& out = reply.get<picojson::object>();
  if (result.IsError()) {
    tools::ReportError(result, out);
  } else {
    tools::ReportSuccess(value, out);
  }
}

picojson::value ObjectWith(const char* name, double number) {
  return picojson::value(picojson::object{{name, picojson::value(number)}});
}

picojson::value EmptyObject() { return picojson::value(picojson::object()); }

void WriteKernelMarker(const char* text) { prctl(kKernelMarkerOption, text, strlen(text)); }

// True when the platform's own screen saver is in charge again.
bool RestoreScreenSaverOwner() {
  return screensaver_set_appid("DEFAULT") == 0 || screensaver_set_timeout(0) == 0;
}

}  // namespace

TaskCounter::~TaskCounter() { WaitUntilIdle(); }

void TaskCounter::WaitUntilIdle() {
  std::unique_lock<std::mutex> lock(mutex);
  cond.wait(lock, [this] { return count == 0; });
}

void TaskCounter::Add(int32_t change) {
  const std::lock_guard<std::mutex> lock(mutex);
  count += change;
  cond.notify_one();
}

OrvaneManager::OrvaneManager(OrvaneInstance* instance) : instance_(instance) {
  pending_ = std::make_unique<TaskCounter>();
  resource_ = std::make_unique<OrvaneResource>();
  timer_ = std::make_unique<TimerManager>();
  debug_points_ = std::make_unique<std::vector<DebugPointInfo>>();
}

OrvaneManager::~OrvaneManager() {
  // First, so that no task finds a member gone, or publishes a record after the last was cleared.
  pending_->WaitUntilIdle();
  CommonUtil::RecordProfiling("");
  debug_points_.reset();
  timer_.reset();
  resource_.reset();
  pending_.reset();
}

void OrvaneManager::GetCpuStat(const picojson::value& args, picojson::object& out) {
  if (ReportMissing(args, {"callbackId"}, out)) {
    return;
  }
  const double callback_id = args.get("callbackId").get<double>();
  LoggerD("Getting CPU stats.");
  const Work work = [this](const Result& reply) {
    PlatformResult result;
    const int usage = resource_->getCpuConsumption();
    // A failed measurement gives 0, not -1, and so reaches the page as a usage of 0.
    if (usage == -1) {
      LoggerE("Failed Retrieving Cpu Usage.");
      LoggerE("Creating PlatformResult with error");
      result = PlatformResult(ErrorCode::UNKNOWN_ERR, "CPU proc file retrieval error.");
    }
    Report(result, ObjectWith("cpuUsage", usage), *reply);
  };
  QueueTask("GetCpuStat", callback_id, work);
}

void OrvaneManager::GetMemoryStat(const picojson::value& args, picojson::object& out) {
  if (ReportMissing(args, {"callbackId"}, out)) {
    return;
  }
  const double callback_id = args.get("callbackId").get<double>();
  LoggerD("Getting Memory stats.");
  const Work work = [this](const Result& reply) {
    PlatformResult result;
    const double usage = resource_->getMemoryConsumption();
    if (usage == -1.0) {
      LoggerE("Failed Retrieving Memory Usage.");
      LoggerE("Creating PlatformResult with error");
      result = PlatformResult(ErrorCode::UNKNOWN_ERR, "Memory proc file retrieval error.");
    }
    Report(result, ObjectWith("memoryUsage", usage), *reply);
  };
  QueueTask("GetMemoryStat", callback_id, work);
}

void OrvaneManager::SetScreenSaver(const picojson::value& args, picojson::object& out) {
  if (ReportMissing(args, {"callbackId", "state"}, out)) {
    return;
  }
  const double callback_id = args.get("callbackId").get<double>();
  const int32_t state = TruncateToInt32(args.get("state").get<double>());
  const Work work = [this, state](const Result& reply) {
    PlatformResult result;
    if (state == kScreenSaverOff) {
      if (timer_->startTimer()) {
        LoggerI("Success to deactivate screensaver");
      } else {
        LoggerE("Failed to start timer. Timer is already running.");
      }
    } else if (RestoreScreenSaverOwner()) {
      LoggerI("Success to activate screensaver");
      if (!timer_->stopTimer()) {
        LoggerE("Failed to stop timer. Timer is not running.");
      }
    } else {
      LoggerE("Fail to activate screensaver");
      result = PlatformResult(ErrorCode::UNKNOWN_ERR, "Fail to activate ScreenSaver");
    }
    Report(result, EmptyObject(), *reply);
  };
  QueueTask("SetScreenSaver", callback_id, work);
}

void OrvaneManager::RecordProfiling(const picojson::value& args, picojson::object& out) {
  if (ReportMissing(args, {"callbackId", "label"}, out)) {
    return;
  }
  const double callback_id = args.get("callbackId").get<double>();
  const std::string label = args.get("label").get<std::string>();
  const Work work = [this, label](const Result& reply) {
    PlatformResult result;
    char marker[kKernelMarkerSize] = {};
    if (CommonUtil::RecordProfiling(label)) {
      const std::string timestamp = CommonUtil::GetTimeStamp(*debug_points_, label);
      LoggerI("Success to RecordProfiling with [%s][%s]", timestamp.c_str(), label.c_str());
      const std::string focused = AppUtil::GetFocusedAppID();
      snprintf(marker, sizeof(marker), "orvane.RecordProfiling with [%s] [%s][%s]", focused.c_str(),
               timestamp.c_str(), label.c_str());
    } else {
      LoggerE("Fail to RecordProfiling");
      snprintf(marker, sizeof(marker), "orvane.RecordProfiling Failed");
      result = PlatformResult(ErrorCode::UNKNOWN_ERR, "Fail to record profile");
    }
    WriteKernelMarker(marker);
    Report(result, EmptyObject(), *reply);
  };
  QueueTask("RecordProfiling", callback_id, work);
}

void OrvaneManager::QueueTask(const char* name, double callback_id, const Work& work) {
  const Result result = std::make_shared<picojson::value>(picojson::object());
  const Work response = [this, callback_id](const Result& reply) { Respond(callback_id, reply); };
  const auto finalizer = [this, name, callback_id] {
    LoggerD("Finalizing %s task with callback id=%d", name, TruncateToInt32(callback_id));
    pending_->Add(-1);
  };
  common::TaskQueue::GetInstance().Queue<picojson::value>(work, response, finalizer, result);
  pending_->Add(1);
}

void OrvaneManager::Respond(double callback_id, const Result& result) {
  result->get<picojson::object>().insert({"callbackId", picojson::value(callback_id)});
  common::Instance::PostMessage(instance_, result->serialize().c_str());
}

}  // namespace extension::orvane
