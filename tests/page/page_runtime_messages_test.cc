// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <thread>

#include "page_fixture.h"

namespace orvane::page {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Writes down what it is asked, and answers what the test has laid ready.
class FakeRuntime final : public RuntimeMessages {
 public:
  bool Send(const std::string& uri, const std::string& text) override {
    asked.push_back("plain " + uri + " " + text);
    return answer == "success";
  }
  std::string SendSync(const std::string& uri, const std::string& text) override {
    asked.push_back("sync " + uri + " " + text);
    if (answer == "throw") throw std::runtime_error("out of order");
    return answer;
  }
  void SendAsync(const std::string& uri, const std::string& text,
                 std::function<void(std::string)> receiver) override {
    asked.push_back("async " + uri + " " + text);
    if (answer == "throw") throw std::runtime_error("out of order");
    receivers.push_back(std::move(receiver));
  }
  bool HasPrivilege(const std::string& privilege) override { return privilege == granted; }
  std::string MoveWindow(int x, int y) override {
    return "moved to " + std::to_string(x) + "," + std::to_string(y);
  }
  std::string SetQuarterPosition(int position) override {
    return "quarter " + std::to_string(position);
  }

  std::vector<std::string> asked;
  std::vector<std::function<void(std::string)>> receivers;
  std::string answer = "success";
  std::string granted;
};

class PageRuntimeMessages : public PageTest {
 protected:
  void SetUp() override {
    LoadExtension();
    options_.runtime = &services_;
    Run("var { extension } = test.direct; 0");
  }

  FakeRuntime services_;
};

TEST_F(PageRuntimeMessages, SendsPlainMessages) {
  EXPECT_EQ(Run("extension.sendRuntimeMessage('x://plain', 7)"), "true");
  EXPECT_THAT(services_.asked, ElementsAre("plain x://plain 7"));
}

TEST_F(PageRuntimeMessages, GivesTheAnswerOfASynchronousMessage) {
  services_.answer = "some text";
  EXPECT_EQ(Run("extension.sendRuntimeSyncMessage('x://sync', 'a,b')"), "\"some text\"");
  EXPECT_THAT(services_.asked, ElementsAre("sync x://sync a,b"));
}

TEST_F(PageRuntimeMessages, GivesTheAnswerOfAnAsynchronousMessageToTheCallback) {
  Run("var got; extension.sendRuntimeAsyncMessage('x://async', 'a', (answer) => { got = answer; "
      "})");
  std::thread([this] { services_.receivers.at(0)("late"); }).join();
  EXPECT_EQ(Run("typeof got"), "\"undefined\"");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_EQ(Run("got"), "\"late\"");
}

TEST_F(PageRuntimeMessages, IsNotIdleBeforeTheAnswerComes) {
  Run("extension.sendRuntimeAsyncMessage('x://async', '', () => {})");
  EXPECT_FALSE(page().RunUntilIdle(std::chrono::milliseconds(20)));
  services_.receivers.at(0)("now");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
}

TEST_F(PageRuntimeMessages, TakesOneAnswerOnly) {
  Run("var count = 0; extension.sendRuntimeAsyncMessage('x://async', '', () => { count += 1; })");
  services_.receivers.at(0)("first");
  services_.receivers.at(0)("second");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_EQ(Run("count"), "1");
}

TEST_F(PageRuntimeMessages, DropsAnAnswerForAPageThatIsGone) {
  Run("extension.sendRuntimeAsyncMessage('x://async', '', () => { throw new Error('too late'); })");
  page_.reset();
  services_.receivers.at(0)("late");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
  EXPECT_THAT(errors_.Take(), IsEmpty());
}

TEST_F(PageRuntimeMessages, DropsAnAnswerAfterTheRuntimeIsGone) {
  Run("extension.sendRuntimeAsyncMessage('x://async', '', () => {})");
  page_.reset();
  runtime_.reset();
  services_.receivers.at(0)("very late");
}

TEST_F(PageRuntimeMessages, WantsACallbackForAnAsynchronousMessage) {
  EXPECT_EQ(Run("extension.sendRuntimeAsyncMessage('x://async', '')"),
            "threw Error: The callback of a runtime message must be a function.");
}

TEST_F(PageRuntimeMessages, ThrowsWhatTheServicesThrow) {
  services_.answer = "throw";
  EXPECT_EQ(Run("extension.sendRuntimeSyncMessage('x://sync', '')"), "threw Error: out of order");
  EXPECT_EQ(Run("extension.sendRuntimeAsyncMessage('x://sync', '', () => {})"),
            "threw Error: out of order");
  EXPECT_TRUE(page().RunUntilIdle(kLimit));
}

TEST_F(PageRuntimeMessages, AsksForPrivileges) {
  services_.granted = "http://tizen.org/privilege/tv.inputdevice";
  EXPECT_EQ(
      Run("xwalk.utils.checkPrivilegeAccess(xwalk.utils.privilege.TV_INPUT_DEVICE); 'granted'"),
      "\"granted\"");
  EXPECT_THAT(Run("xwalk.utils.checkPrivilegeAccess('http://x.org/other')"),
              HasSubstr("threw SecurityError: "));
}

TEST_F(PageRuntimeMessages, MovesTheWindow) {
  EXPECT_EQ(Run("[widget.move(5, -3.9), widget.setQuarterPosition(2)]"),
            R"(["moved to 5,-3","quarter 2"])");
  EXPECT_EQ(Run("widget.move('a', 0)"),
            "\"x must be a finite number, but is the string \\\"a\\\"\"");
  EXPECT_EQ(Run("widget.move(0, NaN)"), "\"y must be a finite number, but is the number NaN\"");
  EXPECT_EQ(Run("widget.setQuarterPosition(1.5)"),
            "\"position must be a whole number, but is the number 1.5\"");
}

TEST_F(PageRuntimeMessages, TellsTheWidgetsIdentity) {
  EXPECT_EQ(Run("[widget.id, widget.name, widget.version]"),
            R"(["org.example.test","Test","1.0.0"])");
}

TEST_F(PageRuntimeMessages, EscapesTheWidgetsName) {
  options_.widget_name = "say \"hi\" \\ \n";
  const auto other = MakePage();
  EXPECT_EQ(Run(*other, "widget.name"), R"("say \"hi\" \\ \n")");
}

TEST_F(PageRuntimeMessages, AreRefusedInAPageWithoutServices) {
  options_.runtime = nullptr;
  const auto other = MakePage();
  EXPECT_EQ(Run(*other, "test.direct.extension.sendRuntimeSyncMessage('x', '')"),
            "threw Error: No web runtime answers messages in this page.");
  EXPECT_THAT(Run(*other, "xwalk.utils.checkPrivilegeAccess('p')"),
              HasSubstr("threw SecurityError"));
}

TEST_F(PageRuntimeMessages, AreTraced) {
  struct Sink : TraceSink {
    void OnTrace(const TracedMessage& record) override {
      text += std::string(record.direction == TraceDirection::kFromPage ? ">" : "<") +
              std::string(record.peer) + "=" + std::string(record.payload) + " ";
    }
    std::string text;
  } sink;
  options_.trace = &sink;
  const auto other = MakePage();
  Run(*other,
      "const e = test.direct.extension; e.sendRuntimeMessage('p', '1'); "
      "e.sendRuntimeSyncMessage('s', '2');"
      "e.sendRuntimeAsyncMessage('a', '3', () => {})");
  services_.receivers.at(0)("done");
  EXPECT_TRUE(other->RunUntilIdle(kLimit));
  EXPECT_EQ(sink.text, ">p=1 <p=true >s=2 <s=success >a=3 <a=done ");
}

}  // namespace
}  // namespace orvane::page
