// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/content_policy.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

namespace orvane::server {

namespace {

using Sources = std::vector<std::string>;

// By the names of its directives, in small letters.
using Policy = std::map<std::string, Sources>;

Policy ReadPolicy(const std::string& text) {
  Policy policy;
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ';');) {
    std::istringstream words(part);
    std::string name;
    if (!(words >> name)) continue;
    // The first of a name counts.
    policy.emplace(boost::to_lower_copy(name),
                   Sources{std::istream_iterator<std::string>(words), {}});
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

// The directive that decides about script elements, or the policy's end.
Policy::const_iterator ScriptDirective(const Policy& policy) {
  for (const char* const name : {"script-src-elem", "script-src", "default-src"}) {
    if (const auto found = policy.find(name); found != policy.end()) return found;
  }
  return policy.end();
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
  const auto sandbox = policy.find("sandbox");
  if (sandbox == policy.end()) return {};
  for (const char* const needed : {"allow-scripts", "allow-same-origin"}) {
    if (!Has(sandbox->second, needed)) {
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
    const auto directive = ScriptDirective(policy);
    if (directive == policy.end() || AllowsScript(directive->second, origin)) continue;
    const bool is_strict = Has(directive->second, "'strict-dynamic'");
    return kNoScript + std::string(is_strict ? "take 'strict-dynamic' out of " : "add 'self' to ") +
           directive->first + " while you develop.";
  }
  return {};
}

std::string WhyPolicyForbidsFrame(std::string_view header, std::string_view simulator) {
  for (const Policy& policy : ReadPolicies(header)) {
    const auto directive = policy.find("frame-ancestors");
    if (directive == policy.end() || NamesOrigin(directive->second, simulator)) continue;
    return "The page's Content-Security-Policy forbids the television to show it: take "
           "frame-ancestors out of it while you develop, or open the application's own address.";
  }
  return {};
}

}  // namespace orvane::server
