// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "page/page_runtime.h"

#include <JavaScriptCore/JavaScript.h>

#include "extensions/extension.h"
#include "page/describe_error.h"
#include "page/script_files.h"
#include "page/shared_script.h"
#include "page/unhandled_rejections.h"

namespace orvane::page {

PageRuntime::PageRuntime(extensions::ExtensionHost& host, Clock& clock)
    : host_(host),
      clock_(clock),
      group_(JSContextGroupCreate()),
      rejections_(std::make_unique<UnhandledRejections>(group_)),
      page_script_(std::make_unique<SharedScript>(group_, kPageScript, "runtime:page.js")) {}

PageRuntime::~PageRuntime() {
  extension_scripts_.clear();
  page_script_.reset();
  rejections_.reset();
  JSContextGroupRelease(group_);
}

const SharedScript& PageRuntime::ScriptOf(const extensions::Extension& extension) {
  std::unique_ptr<SharedScript>& script = extension_scripts_[&extension];
  if (script == nullptr) {
    const std::string source = kExtensionWrapperHead + extension.api() + kExtensionWrapperTail;
    script = std::make_unique<SharedScript>(group_, source,
                                            std::string(kExtensionScheme) + extension.name());
  }
  return *script;
}

}  // namespace orvane::page
