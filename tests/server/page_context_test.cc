// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include <gmock/gmock.h>

#include "base/json.h"
#include "test_server.h"

namespace orvane::server {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class PageContextTest : public ServerTest {
 protected:
  // The set's event of a key that goes to the application, but for what `more` says of it.
  static std::string KeyEvent(const std::string& symbol, int code,
                              const Json& more = Json::object()) {
    Json data{{"key_name", symbol}, {"key_code", code},       {"app", "0123456789.App"},
              {"delivered", true},  {"reason", "registered"}, {"text", "it reaches the page"},
              {"injected", false},  {"long", false},          {"native", false},
              {"time_ns", 1}};
    data.update(more);
    return base::JsonText({{"name", "key"}, {"data", data}});
  }
  static std::string Posted(int seq) {
    return R"({"extension":"test.ext","seq":)" + std::to_string(seq) + R"(,"type":"posted"})" +
           "\n" + std::to_string(seq);
  }
};

TEST_F(PageContextTest, BringsPostedMessagesInOrder) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "post", R"(,"count":100)"));
  for (int seq = 1; seq <= 100; ++seq) EXPECT_EQ(page.client.ReceiveText(), Posted(seq));
}

TEST_F(PageContextTest, SendsWhatAPageMissedAfterAShortLoss) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "post", R"(,"count":5)"));
  for (int seq = 1; seq <= 5; ++seq) page.client.ReceiveText();
  page.client.Drop();
  Sync(page, Message(2, "post", R"(,"count":0)"));
  Connect(page, 2);
  EXPECT_EQ(page.client.ReceiveText(), R"({"received":2,"type":"hello"})");
  for (int seq = 3; seq <= 5; ++seq) EXPECT_EQ(page.client.ReceiveText(), Posted(seq));
}

TEST_F(PageContextTest, SendsAPageAwayThatMissedMoreThanIsKept) {
  options().limits.kept_frames = 10;
  Start();
  TestPage page = ConnectPage();
  page.client.Drop();
  Sync(page, Message(1, "post", R"(,"count":10)"));
  Connect(page, 0);
  EXPECT_EQ(page.client.ReceiveText(), R"({"received":1,"type":"hello"})");
  for (int seq = 1; seq <= 10; ++seq) EXPECT_EQ(page.client.ReceiveText(), Posted(seq));
  page.client.Drop();
  Sync(page, Message(2, "post", R"(,"count":1)"));
  Connect(page, 0);
  EXPECT_EQ(page.client.ReceiveText(), R"({"type":"gone"})");
}

TEST_F(PageContextTest, SendsAPageAwayForWhichTooManyBytesAreKept) {
  options().limits.kept_bytes = 1000;
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "post", R"(,"count":100)"));
  std::string last;
  while (const auto text = page.client.ReceiveText()) {
    last = *text;
    if (last == R"({"type":"gone"})") break;
  }
  EXPECT_EQ(last, R"({"type":"gone"})");
}

TEST_F(PageContextTest, DisconnectsAPageThatDoesNotReadItsSocket) {
  options().limits.queued_bytes = 1000000;
  options().page_times.grace = std::chrono::milliseconds(50);
  Start();
  TestPage page = ConnectPage();
  // Each answer is as long as its question, and the kernel keeps a few megabytes of them.
  const std::string more = R"(,"more":")" + std::string(100000, 'x') + "\"";
  for (int id = 1; id <= 200; ++id) {
    if (!page.client.TrySendText(Message(id, "echo", more))) break;
  }
  EXPECT_EQ(CallUntil("pages.list", R"("result":[])"), R"({"result":[]})");
}

TEST_F(PageContextTest, ClosesAContextWhosePageVanished) {
  options().page_times.grace = std::chrono::milliseconds(50);
  Start();
  TestPage page = ConnectPage();
  EXPECT_THAT(Call("pages.list"), HasSubstr(R"("context":1)"));
  page.client.Drop();
  EXPECT_EQ(CallUntil("pages.list", R"("result":[])"), R"({"result":[]})");
  Connect(page, 0);
  EXPECT_EQ(page.client.ReceiveText(), R"({"type":"gone"})");
}

TEST_F(PageContextTest, ClosesAContextAtOnceWhenItsPageSaysSo) {
  Start();
  TestPage page = ConnectPage();
  RawClient(app_port())
      .Request("POST", "/.orvane/bye" + page.query,
               {{"Host", app_host()}, {"Origin", app_origin()}});
  EXPECT_EQ(Call("pages.list"), R"({"result":[]})");
}

TEST_F(PageContextTest, TellsWhatPagesSayOfThemselves) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(
      R"({"type":"state","href":"http://x/","title":"A \"title\"","focused":true,"visible":true,)"
      R"("top":true,"editing":true,"isolated":true})");
  EXPECT_THAT(CallUntil("pages.list", "A \\\"title\\\""),
              AllOf(HasSubstr(R"("editing":true)"), HasSubstr(R"("isolated":true)")));
}

TEST_F(PageContextTest, PassesOverWhatAPageSaysOfItselfInAnotherForm) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"state","href":{"a":1},"title":5,"top":"x","editing":[true]})");
  page.client.SendText(R"({"type":"state","isolated":true})");
  EXPECT_THAT(CallUntil("pages.list", R"("isolated":true)"),
              AllOf(HasSubstr(R"("title":"","top":true)"), HasSubstr(R"("editing":false)")));
}

TEST_F(PageContextTest, LetsAPageWaitThatIsFasterThanTheLibrary) {
  options().limits.library_bytes = 1000000;
  options().deadline = std::chrono::minutes(10);
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(Message(1, "hang"));
  const std::string text = R"(,"extension":"test.ext"})"
                           "\n" +
                           std::string(100000, 'x');
  int sent = 0;
  while (sent < 1000) {  // a hundred megabytes, of which the kernel keeps a few
    if (!page.client.TrySendText(R"({"type":"post","id":)" + std::to_string(sent + 2) + text))
      break;
    ++sent;
  }
  EXPECT_LT(sent, 500);
}

TEST_F(PageContextTest, CutsALongTitle) {
  Start();
  TestPage page = ConnectPage();
  page.client.SendText(R"({"type":"state","title":")" + std::string(1000000, 't') + "\"}");
  EXPECT_LT(CallUntil("pages.list", "ttt").size(), 10000U);
}

TEST_F(PageContextTest, ListsTheInstancesThatAPageHas) {
  Start();
  const TestPage page = OpenPage();
  Sync(page, R"({"type":"create","id":1,"extension":"refuse.me"})");
  Sync(page, R"({"type":"create","id":2,"extension":"test.ext"})");
  EXPECT_THAT(Call("pages.list"), HasSubstr(R"("instances":["test.ext"])"));
}

TEST_F(PageContextTest, BringsKeysThatTheSetDelivers) {
  Start();
  TestPage page = ConnectPage();
  Call("event", KeyEvent("XF86Red", 403));
  EXPECT_EQ(page.client.ReceiveText(),
            R"({"key_code":403,"key_name":"XF86Red","phase":"press","seq":1,"type":"key"})");
}

TEST_F(PageContextTest, BringsKeysToNoPageThatWentBeforeItsScriptRan) {
  Start();
  TestPage page = ConnectPage();
  const TestPage gone = OpenPage();
  EXPECT_THAT(Call("pages.list"), Not(HasSubstr(R"("context":2)")));
  Call("event", KeyEvent("Left", 37));
  EXPECT_THAT(page.client.ReceiveText().value_or(""), HasSubstr(R"("type":"key")"));
}

TEST_F(PageContextTest, KeepsKeysFromThePageThatAreNotForIt) {
  Start();
  TestPage page = ConnectPage();
  for (const Json& more :
       {Json{{"delivered", false}}, Json{{"app", "another.App"}}, Json{{"native", true}}}) {
    Call("event", KeyEvent("Left", 37, more));
  }
  page.client.SendText(R"({"type":"echo","id":1})");
  EXPECT_THAT(page.client.ReceiveText().value_or(""), HasSubstr(R"("type":"answer")"));
}

TEST_F(PageContextTest, RepeatsAKeyThatIsHeld) {
  options().key_times = {std::chrono::milliseconds(5), std::chrono::milliseconds(1), 2};
  Start();
  TestPage page = ConnectPage();
  Call("event", KeyEvent("Left", 37, {{"long", true}}));
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              AllOf(HasSubstr(R"("phase":"down")"), Not(HasSubstr("repeat"))));
  EXPECT_THAT(page.client.ReceiveText().value_or(""),
              AllOf(HasSubstr(R"("phase":"down")"), HasSubstr(R"("repeat":true)")));
  std::string last;
  do {
    last = page.client.ReceiveText().value_or(R"("phase":"up")");
  } while (last.find(R"("phase":"up")") == std::string::npos);
  EXPECT_THAT(last, HasSubstr(R"("key_name":"Left")"));
}

TEST_F(PageContextTest, TypesTextIntoThePage) {
  Start();
  TestPage page = ConnectPage();
  Call("ime.input", R"({"op":"text","text":"a<b"})");
  EXPECT_EQ(page.client.ReceiveText(), R"({"op":"text","seq":1,"text":"a<b","type":"ime"})");
  EXPECT_THAT(Call("ime.input", R"({"op":"jump"})"), HasSubstr("error"));
}

TEST_F(PageContextTest, ReloadsPages) {
  Start();
  TestPage page = ConnectPage();
  EXPECT_EQ(Call("page.reload"), R"({"result":null})");
  EXPECT_EQ(page.client.ReceiveText(), R"({"seq":1,"type":"reload"})");
  EXPECT_THAT(Call("page.reload", R"({"context":99})"), HasSubstr("There is no page 99."));
}

}  // namespace
}  // namespace orvane::server
