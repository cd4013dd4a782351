// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The numbers that some log lines carry. Field tools match these lines by their whole text, the
// number in it included, and so the number is part of what the library promises, as a message is:
// it does not follow the source. All other lines carry the number of their source line.
//
// A name here is given to the macros of logger.h that end in _AT. The tests named LogLines hold
// every row; docs/log-lines.md shows the lines as they are written.
namespace common::fixed_line {

// XW_Extension.cc
constexpr int kNoCurrentExtension = 21;
constexpr int kInitializeEntry = 37;
constexpr int kNoExtensionCreated = 40;
constexpr int kExtensionCreated = 43;
constexpr int kInstanceCreatedEntry = 48;
constexpr int kShutdownEntry = 60;
constexpr int kExtensionDeleted = 61;

// orvane_instance.cc
constexpr int kInstanceDestroyed = 79;
constexpr int kVersion = 85;
constexpr int kUuid = 103;
constexpr int kNoUuid = 109;
constexpr int kForegroundAppId = 118;
constexpr int kNoForegroundAppId = 123;
constexpr int kNoPanelFeature = 132;
constexpr int kNoImeResolution = 215;

// logger.h
constexpr int kScopeExit = 288;

}  // namespace common::fixed_line
