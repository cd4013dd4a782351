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
constexpr int kNoCurrentExtension = 21;    // GetCurrentExtension: assert(g_extension)
constexpr int kInitializeEntry = 37;       // XW_Initialize: entry of the scope
constexpr int kNoExtensionCreated = 40;    // XW_Initialize: Can't initialize extension: …
constexpr int kExtensionCreated = 43;      // XW_Initialize: … Created Extension - <address>
constexpr int kInstanceCreatedEntry = 48;  // OnInstanceCreated: entry of the scope
constexpr int kShutdownEntry = 60;         // OnShutdown: entry of the scope
constexpr int kExtensionDeleted = 61;      // OnShutdown: … Delete extension - <address>

// orvane_instance.cc
constexpr int kInstanceDestroyed = 79;   // ~OrvaneInstance: Entered ~OrvaneInstance, Params: None
constexpr int kVersion = 85;             // getVersion: Version of plugin: <version>
constexpr int kUuid = 103;               // getUuid: UUID is [<uuid>]
constexpr int kNoUuid = 109;             // getUuid: UUID is not generated
constexpr int kForegroundAppId = 118;    // getForegroundAppId: appID is [<id>]
constexpr int kNoForegroundAppId = 123;  // getForegroundAppId: appID is null
constexpr int kNoPanelFeature = 132;     // setEpopAppWindow: get ud_panel_supported value failed
constexpr int kNoImeResolution = 215;    // getIMEResolution: Failed to get ime resolution

// logger.h
constexpr int kScopeExit = 288;  // ~ScopeLogger: exit of any scope

}  // namespace common::fixed_line
