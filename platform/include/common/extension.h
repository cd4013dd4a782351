// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "XW_Extension.h"
#include "common/export.h"
#include "common/instance.h"

namespace common {

// One loaded extension: its script name, its script text, and the maker of its instances.
//
// The library that derives from it owns the object: it creates it in its initialise callback and
// deletes it in its shutdown callback. Everything here runs on the host's extension thread. The
// Set… members count only while the host's initialisation of the library runs: outside it, where
// they could not reach the host, they throw std::logic_error.
class WEBAPI_EXPORT Extension {
 public:
  // The library's glue callbacks; each library defines this class itself.
  class Detail;

  Extension();

  // Waits for the task that the process's worker runs just now, if any: its code may be in the
  // library, which the host unloads next. The library's instances are gone by now, and with them
  // the tasks that were queued.
  virtual ~Extension();

  Extension(const Extension&) = delete;
  Extension& operator=(const Extension&) = delete;

  // A new instance for one page context; the caller hands it to OnInstanceCreated. Null binds
  // nothing.
  virtual Instance* CreateInstance() = 0;

  // The dotted name under which the page finds the script object. Copied.
  void SetExtensionName(const char* name);

  // The script text that the host evaluates in each page. Copied.
  void SetJavaScriptAPI(const char* api);

  // A NULL-terminated array of further dotted names that lead to this extension. Copied.
  void SetExtraJSEntryPoints(const char** entry_points);

  // The host's variable `key` without its JSON quotes; empty when the host does not know it, when
  // it is no string, and when it is longer than 4095 bytes.
  std::string GetRuntimeVariable(const char* key) const;

  // Connects a library with its host: looks the host's tables up, registers the callbacks and runs
  // `initialize`. Returns XW_ERROR when a table is missing or `initialize` fails or throws; a
  // second call replaces the first.
  static int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface,
                               XW_Initialize_Func initialize, XW_CreatedInstanceCallback created,
                               XW_ShutdownCallback shutdown);

  // Binds `instance` to the host's handle and takes ownership; it is deleted when the host destroys
  // the handle. Null does nothing.
  static void OnInstanceCreated(XW_Instance handle, Instance* instance);

 private:
  XW_Extension handle_;
};

// The library's extension object, never null. Each library defines it.
Extension* GetCurrentExtension();

}  // namespace common
