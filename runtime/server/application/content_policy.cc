// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/content_policy.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <vector>

#include <boost/algorithm/string/predicate.hpp>

namespace orvane::server {

namespace {

using Sources = std::vector<std::string>;

struct Directive {
  std::string name;
  Sources sources;
};

using Policy = std::vector<Directive>;

Policy ReadPolicy(const std::string& text) {
  Policy policy;
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ';');) {
    std::istringstream words(part);
    Directive directive;
    if (!(words >> directive.name)) continue;
    for (std::string source; words >> source;) directive.sources.push_back(source);
    policy.push_back(std::move(directive));
  }
  return policy;
}

// Each of them has to allow what a page does.
std::vector<Policy> ReadPolicies(std::string_view header) {
  std::vector<Policy> policies;
  std::istringstream parts{std::string(header)};
  for (std::string part; std::getline(parts, part, ',');) policies.push_back(ReadPolicy(part));
  return policies;
}

const Directive* Find(const Policy& policy, std::string_view name) {
  const auto found = std::find_if(policy.begin(), policy.end(), [name](const Directive& directive) {
    return boost::iequals(directive.name, name);
  });
  return found == policy.end() ? nullptr : &*found;
}

// The directive that decides about script elements; null: there is none.
const Directive* ScriptDirective(const Policy& policy) {
  for (const char* const name : {"script-src-elem", "script-src", "default-src"}) {
    if (const Directive* const directive = Find(policy, name)) return directive;
  }
  return nullptr;
}

bool Has(const Sources& sources, std::string_view wanted) {
  return std::any_of(sources.begin(), sources.end(), [wanted](const std::string& source) {
    return boost::iequals(source, wanted);
  });
}

// Whether a list of sources names the origin, in one of the ways to do so.
bool NamesOrigin(const Sources& sources, std::string_view origin) {
  const std::string_view host = origin.substr(origin.find("//") + 2);
  const std::string any_port(host.substr(0, host.rfind(':')));
  const std::string names[] = {"*",
                               "http:",
                               std::string(origin),
                               std::string(host),
                               any_port + ":*",
                               "http://" + any_port + ":*"};
  return std::any_of(std::begin(names), std::end(names),
                     [&sources](const std::string& name) { return Has(sources, name); });
}

bool AllowsScript(const Sources& sources, std::string_view origin) {
  // It makes a browser pass over everything that names an origin.
  if (Has(sources, "'strict-dynamic'")) return false;
  return Has(sources, "'self'") || NamesOrigin(sources, origin);
}

constexpr char kNoScript[] =
    "The page's Content-Security-Policy forbids the runtime's script, so the page has no "
    "extensions: ";

// A sandbox takes the origin from the document, or its scripts.
std::string WhySandboxForbidsScript(const Policy& policy) {
  const Directive* const sandbox = Find(policy, "sandbox");
  if (sandbox == nullptr) return {};
  for (const char* const needed : {"allow-scripts", "allow-same-origin"}) {
    if (!Has(sandbox->sources, needed)) {
      return std::string(kNoScript) + "add " + needed + " to sandbox while you develop.";
    }
  }
  return {};
}

}  // namespace

std::string WhyPolicyForbidsScript(std::string_view header, std::string_view origin) {
  for (const Policy& policy : ReadPolicies(header)) {
    std::string why = WhySandboxForbidsScript(policy);
    if (!why.empty()) return why;
    const Directive* const directive = ScriptDirective(policy);
    if (directive == nullptr || AllowsScript(directive->sources, origin)) continue;
    const bool is_strict = Has(directive->sources, "'strict-dynamic'");
    return kNoScript + std::string(is_strict ? "take 'strict-dynamic' out of " : "add 'self' to ") +
           directive->name + " while you develop.";
  }
  return {};
}

std::string WhyPolicyForbidsFrame(std::string_view header, std::string_view simulator) {
  for (const Policy& policy : ReadPolicies(header)) {
    const Directive* const directive = Find(policy, "frame-ancestors");
    if (directive == nullptr || NamesOrigin(directive->sources, simulator)) continue;
    return "The page's Content-Security-Policy forbids the television to show it: take "
           "frame-ancestors out of it while you develop, or open the application's own address.";
  }
  return {};
}

}  // namespace orvane::server
