// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>

#include "../support/temporary_folder.h"
#include "page_fixture.h"

namespace orvane::page {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What pages and an extension have to do with each other.
class PageExtension : public PageTest {
 protected:
  void SetUp() override { LoadExtension(); }

  std::string Events() { return Run("test.direct.send('events:')"); }
};

TEST_F(PageExtension, AnswersASynchronousMessage) {
  EXPECT_EQ(Run("test.direct.send('reply:here')"), "\"here\"");
}

TEST_F(PageExtension, CarriesTextsOfAnyKind) {
  EXPECT_EQ(
      Run("const text = '\\u00e9 \\u20ac \\u{1F600}'; test.direct.send('reply:' + text) === text"),
      "true");
  EXPECT_EQ(Run("test.direct.send('reply:') === ''"), "true");
  EXPECT_EQ(Run("const long = 'x'.repeat(2000000); test.direct.send('reply:' + long) === long"),
            "true");
  EXPECT_EQ(Run("test.direct.send('reply:\\uD800') === '\\uFFFD'"), "true");
}

TEST_F(PageExtension, ThrowsWhatTheTextOfAMessageThrows) {
  EXPECT_EQ(Run("test.direct.send({ toString() { throw new Error('no text'); } })"),
            "threw Error: no text");
}

TEST_F(PageExtension, ThrowsWhenNoReplyComes) {
  EXPECT_THAT(Run("test.direct.send('none:')"), HasSubstr("threw Error: "));
}

TEST_F(PageExtension, DeliversPostedTextsInOrder) {
  RunToEnd(
      "var got = []; test.direct.extension.setMessageListener((text) => got.push(text));"
      "test.direct.send('post:first'); test.direct.extension.postMessage('second');"
      "test.direct.send('thread:third')");
  EXPECT_EQ(Run("got"), R"(["first","second","third"])");
}

TEST_F(PageExtension, DeliversNothingWhileAScriptRuns) {
  EXPECT_EQ(Run("let got = 0; test.direct.extension.setMessageListener(() => { got += 1; });"
                "test.direct.send('post:x'); got"),
            "0");
}

TEST_F(PageExtension, DropsTextsWithoutAListener) {
  EXPECT_EQ(RunToEnd("var got = 0; const { extension } = test.direct; "
                     "extension.setMessageListener(() => { got += 1; });"
                     "extension.setMessageListener(undefined); extension.postMessage('x'); got"),
            "0");
  EXPECT_EQ(Run("got"), "0");
}

TEST_F(PageExtension, RefusesAListenerThatIsNoFunction) {
  EXPECT_EQ(Run("test.direct.extension.setMessageListener(5)"),
            "threw Error: The message listener must be a function.");
}

TEST_F(PageExtension, CarriesBytesBothWays) {
  RunToEnd(
      "var got; test.direct.extension.setMessageListener((data) => { got = data; });"
      "test.direct.extension.postMessage(new Uint8Array([1, 0, 255]).buffer)");
  EXPECT_EQ(Run("[got instanceof ArrayBuffer, ...new Uint8Array(got)]"), "[true,255,0,1]");
}

TEST_F(PageExtension, CarriesThePartOfABufferThatAViewShows) {
  RunToEnd(
      "var got; test.direct.extension.setMessageListener((data) => { got = data; });"
      "test.direct.extension.postMessage(new Uint8Array([9, 1, 2, 3, 9]).subarray(1, 4))");
  EXPECT_EQ(Run("[...new Uint8Array(got)]"), "[3,2,1]");
}

TEST_F(PageExtension, CarriesNoBytes) {
  RunToEnd(
      "var got; test.direct.extension.setMessageListener((data) => { got = data; });"
      "test.direct.extension.postMessage(new ArrayBuffer(0))");
  EXPECT_EQ(Run("got.byteLength"), "0");
}

TEST_F(PageExtension, MakesTheInstanceOnFirstTouch) {
  const auto untouched = MakePage();
  Run(*untouched, "typeof test");
  EXPECT_EQ(Events(), "\"created \"");
  Run("test.direct.send('x')");
  EXPECT_EQ(Events(), "\"created \"");
}

TEST_F(PageExtension, GivesEachPageItsOwnInstanceAndScript) {
  const auto other = MakePage();
  EXPECT_EQ(Run("test.direct.countCalls() + test.direct.countCalls()"), "3");
  EXPECT_EQ(Run(*other, "test.direct.countCalls()"), "1");
  EXPECT_EQ(Events(), "\"created created \"");
}

TEST_F(PageExtension, DeliversToThePageThatIsMeant) {
  const auto other = MakePage();
  const char* const listen =
      "var got = []; test.direct.extension.setMessageListener((text) => got.push(text)); 0";
  Run(listen);
  Run(*other, listen);
  Run(*other, "test.direct.send('post:yours')");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_TRUE(other->RunUntilIdle(kLimit));
  EXPECT_EQ(Run("got") + Run(*other, "got"), "[][\"yours\"]");
}

TEST_F(PageExtension, KeepsMailForPagesThatDoNotRun) {
  const auto other = MakePage();
  Run(*other,
      "var got; test.direct.extension.setMessageListener((text) => { got = text; });"
      "test.direct.send('post:kept')");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_EQ(Run(*other, "typeof got"), "\"undefined\"");
  EXPECT_TRUE(other->RunUntilIdle(kLimit));
  EXPECT_EQ(Run(*other, "got"), "\"kept\"");
}

TEST_F(PageExtension, DestroysTheInstanceWithThePage) {
  auto other = MakePage();
  Run(*other, "test.direct.send('x')");
  other.reset();
  EXPECT_EQ(Events(), "\"created destroyed created \"");
}

TEST_F(PageExtension, DropsWhatIsPostedWhileThePageCloses) {
  auto other = MakePage();
  Run(*other,
      "test.direct.extension.setMessageListener(() => { throw new Error('too late'); });"
      "test.direct.send('post:before'); test.direct.send('destroyed:last words')");
  other.reset();
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_THAT(errors_.Take(), IsEmpty());
  EXPECT_EQ(Events(), "\"created destroyed created \"");
}

TEST_F(PageExtension, IsPublishedReadOnly) {
  EXPECT_EQ(Run("const before = test.direct; test.direct = 1; test.direct === before"), "true");
  EXPECT_EQ(Run("test = 1; typeof test.direct"), "\"object\"");
  EXPECT_EQ(Run("[delete test.direct, delete globalThis.test]"), "[false,false]");
  for (const char* change : {"test.direct = 1", "test = 1", "test.other = 1",
                             "Object.defineProperty(test, 'direct', { value: 1 })"}) {
    EXPECT_THAT(Run(std::string("(() => { 'use strict'; ") + change + "; })()"),
                HasSubstr("threw TypeError"));
  }
}

TEST_F(PageExtension, IsListedInItsNamespace) {
  EXPECT_EQ(Run("Object.keys(test)"), "[\"direct\"]");
}

TEST_F(PageExtension, WaitsForRepliesThatAManagerExpects) {
  // The posted reply comes as another thread's work, which no timer announces.
  RunToEnd(
      "var got; const manager = test.direct.makeManager();"
      "manager.call('x', {}, (reply) => { got = reply.result; });"
      "test.direct.send('post:{\"status\":\"success\",\"result\":7,\"callbackId\":1}')");
  EXPECT_EQ(Run("got"), "7");
}

TEST_F(PageExtension, IsNotIdleWhileAReplyIsToCome) {
  Run("test.direct.makeManager().call('x', {}, () => {})");
  EXPECT_FALSE(page().RunUntilIdle(std::chrono::milliseconds(20)));
}

TEST_F(PageExtension, ClosesWithReplyPending) {
  auto other = MakePage();
  Run(*other,
      "test.direct.makeManager().call('x', {}, () => { throw new Error('too late'); });"
      "test.direct.send('destroyed:{\"callbackId\":1}')");
  other.reset();
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_THAT(errors_.Take(), IsEmpty());
}

TEST_F(PageExtension, TracesEveryMessage) {
  struct Sink : TraceSink {
    void OnTrace(const TracedMessage& record) override {
      lines.push_back(std::string(record.direction == TraceDirection::kFromPage ? ">" : "<") +
                      std::to_string(static_cast<int>(record.kind)) + " " +
                      std::string(record.peer) + " " + std::string(record.payload));
      EXPECT_EQ(record.microseconds > 0, record.direction == TraceDirection::kToPage);
    }
    std::vector<std::string> lines;
  } sink;
  options_.trace = &sink;
  RunToEnd("test.direct.send('reply:yes'); test.direct.extension.postMessage('text')");
  EXPECT_THAT(sink.lines, ElementsAre(">0 test.direct reply:yes", "<0 test.direct yes",
                                      ">1 test.direct text", "<1 test.direct text"));
}

// Extensions that a set's folder announces.
class LazyExtension : public PageTest {
 protected:
  void SetUp() override { WriteMetadata(TEST_LAZY_EXTENSION); }

  void WriteMetadata(const std::string& library) {
    std::ofstream(folder_ / "lazy.json") << R"([{"name":"test.lazy","lib":")" << library
                                         << R"(","entry_points":["test.LazyKind"]}])";
    host_.LoadFolder(folder_);
  }

  // Another library, which waits.
  void Announce(const std::string& name, const std::string& entry_point) {
    std::filesystem::remove(folder_ / "lazy.json");
    std::filesystem::copy_file(TEST_LAZY_EXTENSION, folder_ / "other.so");
    std::ofstream(folder_ / "other.json")
        << R"([{"name":")" << name << R"(","lib":"other.so","entry_points":[")" << entry_point
        << R"("]}])";
    host_.LoadFolder(folder_);
  }

  bool IsLoaded() const { return host_.catalogue().at(0).extension != nullptr; }

  const test::TemporaryFolder temporary_;
  const std::filesystem::path& folder_ = temporary_.path();
};

TEST_F(LazyExtension, IsNotLoadedBeforeItIsTouched) {
  EXPECT_EQ(Run("Object.keys(test)"), R"(["lazy","LazyKind"])");
  EXPECT_FALSE(IsLoaded());
}

TEST_F(LazyExtension, IsLoadedWhenItsNameIsTouched) {
  EXPECT_EQ(Run("test.lazy.send('reply:x')"), "\"x\"");
  EXPECT_TRUE(IsLoaded());
}

TEST_F(LazyExtension, IsLoadedWhenAnEntryPointIsTouched) {
  EXPECT_EQ(Run("typeof test.LazyKind"), "\"undefined\"");
  EXPECT_TRUE(IsLoaded());
  EXPECT_EQ(Run("test.lazy.send('events:')"), "\"created \"");
}

TEST_F(LazyExtension, SharesANamespaceWithOthers) {
  LoadExtension();
  EXPECT_EQ(Run("[test.direct.send('reply:a'), test.lazy.send('reply:b')]"), R"(["a","b"])");
}

TEST_F(LazyExtension, LivesOnTheExtensionWhoseNameItsOwnBeginsWith) {
  Announce("test.direct.inner", "deep.er.name");
  LoadExtension();
  EXPECT_EQ(Run("Object.keys(test.direct).includes('inner')"), "true");
  EXPECT_EQ(Run("[Object.keys(deep), Object.keys(deep.er)]"), R"([["er"],["name"]])");
}

TEST_F(LazyExtension, IsAddedToObjectsThatThePageHas) {
  Announce("JSON.extra", "JSON.more");
  EXPECT_EQ(Run("['extra' in JSON, 'more' in JSON, JSON.stringify([1])]"), R"([true,true,"[1]"])");
}

TEST_F(LazyExtension, IsUndefinedWhenItsLibraryDoesNotLoad) {
  std::filesystem::remove(folder_ / "lazy.json");
  std::ofstream(folder_ / "broken.json")
      << R"([{"name":"test.broken","lib":"/none.so","entry_points":[]}])";
  host_.LoadFolder(folder_);
  EXPECT_EQ(Run("typeof test.broken"), "\"undefined\"");
  EXPECT_THAT(warnings_, ElementsAre(HasSubstr("/none.so")));
}

}  // namespace
}  // namespace orvane::page
