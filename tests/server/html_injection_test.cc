// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "server/application/html_injection.h"

#include <string>

#include <gtest/gtest.h>

namespace orvane::server {
namespace {

const std::string kScript = R"(<script src="/.orvane/page.js"></script>)";

// "|" marks where the script belongs.
void ExpectScriptAt(const std::string& marked) {
  const size_t at = marked.find('|');
  const std::string html = marked.substr(0, at) + marked.substr(at + 1);
  EXPECT_EQ(InjectPageScript(html), marked.substr(0, at) + kScript + marked.substr(at + 1));
}

TEST(HtmlInjectionTest, ComesFirstOfAllThatRuns) {
  ExpectScriptAt("<!doctype html><html lang=\"a>b\"><head>|<script>1</script></head></html>");
  ExpectScriptAt("<!DOCTYPE html>\n<HTML>\n<HEAD>|\n<meta charset=utf-8>");
  ExpectScriptAt("<!doctype html>|<title>x</title>");
  ExpectScriptAt("<!doctype html><html>|<body></body></html>");
  ExpectScriptAt("<!-- <head> --><!doctype html><html><!-- x --><head class='>'>|");
  ExpectScriptAt("|<p>text</p>");
  ExpectScriptAt("|");
  ExpectScriptAt("<html>|<header>no head</header>");
}

TEST(HtmlInjectionTest, SurvivesWhatNeverEnds) {
  ExpectScriptAt("|<!-- no end");
  ExpectScriptAt("|<html lang=\"no end>");
  ExpectScriptAt("|<");
  ExpectScriptAt("|<head");
}

TEST(HtmlInjectionTest, KeepsTheByteOrderMark) {
  ExpectScriptAt("\xef\xbb\xbf<!doctype html><head>|</head>");
}

TEST(HtmlInjectionTest, KeepsXmlDeclarations) {
  ExpectScriptAt(
      "<?xml version=\"1.0\"?><html xmlns=\"http://www.w3.org/1999/xhtml\"><head>|</head>");
}

TEST(HtmlInjectionTest, WritesInTheDocumentsOwnUnits) {
  const auto wide = [](const std::string& text, bool little) {
    std::string units = little ? "\xff\xfe" : "\xfe\xff";
    for (const char c : text) units += little ? std::string{c, '\0'} : std::string{'\0', c};
    return units;
  };
  for (const bool little : {true, false}) {
    EXPECT_EQ(InjectPageScript(wide("<html><head><p>", little)),
              wide("<html><head>" + kScript + "<p>", little));
  }
}

}  // namespace
}  // namespace orvane::server
