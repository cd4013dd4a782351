// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_script.h"

#include <boost/algorithm/string/replace.hpp>

#include "page/script_files.h"
#include "server/browser_script/client_text.h"

namespace orvane::server {

PageScript::PageScript(const Json& started, const Json& app, std::chrono::milliseconds deadline,
                       const ScriptCheck& check)
    : boot_{{"catalogue", started.at("catalogue")},
            {"app", app},
            {"deadlineMs", deadline.count()},
            {"broken", Json::object()}} {
  for (const auto& [name, value] : started.at("scripts").items()) {
    const auto script = value.get<std::string>();
    const std::string why = check ? check(script, name) : "";
    if (why.empty()) {
      scripts_ += ForScript(base::JsonText(name)) + ":\n" + kExtensionWrapperHead + script +
                  kExtensionWrapperTail + ",";
    } else {
      boot_["broken"][name] = why;
    }
  }
}

std::string PageScript::Make(int64_t context, const std::string& secret) const {
  Json boot = boot_;
  boot["context"] = context;
  boot["token"] = secret;
  std::string script = kPageClient;
  script += "(" + ForScript(base::JsonText(boot)) + ",{" + scripts_ + "})";
  script += kPageClientEnd;
  return script;
}

std::string ForScript(std::string json) {
  boost::replace_all(json, "<", "\\u003c");
  boost::replace_all(json, "\xe2\x80\xa8", "\\u2028");
  boost::replace_all(json, "\xe2\x80\xa9", "\\u2029");
  return json;
}

}  // namespace orvane::server
