// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_script.h"

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
    const std::string why = check ? check(name, script) : "";
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

std::string ForScript(std::string_view json) {
  std::string text;
  text.reserve(json.size());
  for (size_t i = 0; i < json.size(); ++i) {
    const std::string_view three = json.substr(i, 3);
    if (json[i] == '<') {
      text += "\\u003c";
    } else if (three == "\xe2\x80\xa8" || three == "\xe2\x80\xa9") {
      text += three[2] == '\xa8' ? "\\u2028" : "\\u2029";
      i += 2;
    } else {
      text.push_back(json[i]);
    }
  }
  return text;
}

}  // namespace orvane::server
