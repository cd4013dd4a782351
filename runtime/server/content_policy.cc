// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/content_policy.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

#include "server/http_message.h"

namespace orvane::server {

namespace {

using Sources = std::vector<std::string>;

struct Directive {
  std::string name;
  Sources sources;
};

std::vector<Directive> ReadPolicy(std::string_view policy) {
  std::vector<Directive> directives;
  std::istringstream parts{std::string(policy)};
  for (std::string part; std::getline(parts, part, ';');) {
    std::istringstream words(part);
    Directive directive;
    if (!(words >> directive.name)) continue;
    for (std::string source; words >> source;) directive.sources.push_back(source);
    directives.push_back(std::move(directive));
  }
  return directives;
}

// The directive that decides about script elements; null: there is none.
const Directive* ScriptDirective(const std::vector<Directive>& directives) {
  constexpr std::array<std::string_view, 3> kNames{"script-src-elem", "script-src", "default-src"};
  for (const std::string_view name : kNames) {
    const auto found = std::find_if(
        directives.begin(), directives.end(),
        [name](const Directive& directive) { return EqualsIgnoringCase(directive.name, name); });
    if (found != directives.end()) return &*found;
  }
  return nullptr;
}

bool Has(const Sources& sources, std::string_view wanted) {
  return std::any_of(sources.begin(), sources.end(), [wanted](const std::string& source) {
    return EqualsIgnoringCase(source, wanted);
  });
}

bool Allows(const Sources& sources, std::string_view origin) {
  // It makes a browser pass over everything that names an origin.
  if (Has(sources, "'strict-dynamic'")) return false;
  const std::string_view host = origin.substr(origin.find("//") + 2);
  const std::array<std::string_view, 5> own{"'self'", "*", "http:", origin, host};
  return std::any_of(own.begin(), own.end(),
                     [&sources](std::string_view source) { return Has(sources, source); });
}

}  // namespace

std::string WhyPolicyForbidsScript(std::string_view policy, std::string_view origin) {
  const std::vector<Directive> directives = ReadPolicy(policy);
  const Directive* const directive = ScriptDirective(directives);
  if (directive == nullptr || Allows(directive->sources, origin)) return {};
  const bool is_strict = Has(directive->sources, "'strict-dynamic'");
  return "The page's Content-Security-Policy forbids the runtime's script, so the page has no "
         "extensions: " +
         std::string(is_strict ? "take 'strict-dynamic' out of " : "add 'self' to ") +
         directive->name + " while you develop.";
}

}  // namespace orvane::server
