// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/pages/page_script.h"

#include "base/json_writer.h"
#include "page/script_files.h"
#include "server/browser_script/client_text.h"

namespace orvane::server {

PageScript::PageScript(const base::JsonObject& started, std::string_view app,
                       std::chrono::milliseconds deadline, const ScriptCheck& check) {
  base::JsonWriter broken;
  const auto scripts = base::JsonObject::Parse(started.Raw("scripts"));
  if (scripts) {
    for (const auto& [name, value] : scripts->members()) {
      const std::string quoted = "\"" + std::string(name) + "\"";
      if (value.front() != '"') continue;
      const std::string script = base::DecodeJsonString(value);
      const std::string why = check ? check(base::DecodeJsonString(quoted), script) : "";
      if (!why.empty()) {
        broken.Text(name, why);
        continue;
      }
      scripts_ +=
          ForScript(quoted) + ":\n" + kExtensionWrapperHead + script + kExtensionWrapperTail + ",";
    }
  }
  const std::string_view catalogue = started.Raw("catalogue");
  boot_ = R"(,"catalogue":)" + std::string(catalogue.empty() ? "[]" : catalogue);
  boot_.append(R"(,"app":)").append(app);
  boot_ += R"(,"deadlineMs":)" + std::to_string(deadline.count());
  boot_ += R"(,"broken":)" + broken.Take();
}

std::string PageScript::Make(int64_t context, std::string_view secret) const {
  std::string boot = R"({"context":)" + std::to_string(context) + R"(,"token":)";
  boot += base::JsonText(secret) + boot_ + "}";
  std::string script = kPageClient;
  script += "(" + ForScript(boot) + ",{" + scripts_ + "})";
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
