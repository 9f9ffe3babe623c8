#include "platform/windows/dde_links.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "contract/link_transport_contract.h"
#include "desktop_world.h"
#include "link_peer_process.h"
#include "platform/windows/dde_text.h"

namespace skyhop::testing {
namespace {

using platform::DdeBytes;
using platform::DdeLinks;
using platform::DdeText;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using Texts = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(Backends, LinkTransportContract,
                         ::testing::Values(LinkBackend{
                             "dde", [] { return std::make_unique<DesktopWorld>(); }}),
                         [](const auto& backend) { return std::string(backend.param.name); });

constexpr unsigned kWestern = 1252;
constexpr unsigned kCyrillic = 1251;

TEST(DdeTextTest, ConvertsToAndFromACodePage) {
  const struct {
    std::string text;
    unsigned code_page;
    std::string bytes;
  } cases[] = {
      {"", kWestern, ""},
      {"Z\xC3\xBCrich", kWestern, "Z\xFCrich"},
      {"\xE2\x82\xAC \xC2\x81", kWestern, "\x80 \x81"},
      {"\xD0\x96", kCyrillic, "\xC6"},
      {"Z\xC3\xBCrich", CP_UTF8, "Z\xC3\xBCrich"},
  };
  for (const auto& [text, code_page, bytes] : cases) {
    EXPECT_EQ(DdeBytes(text, code_page), bytes);
    EXPECT_EQ(DdeText(bytes + std::string("\0rest", 5), code_page), text);
  }
}

TEST(DdeTextTest, ReplacesMissingLettersByQuestionMarks) {
  EXPECT_EQ(DdeBytes("a\xD0\x96\xE2\x88\x9E", kWestern), "a??");
  EXPECT_EQ(DdeBytes(std::string("a\xFF\0b", 4), kWestern), "a??b");
  EXPECT_THROW((void)DdeBytes(std::string(LinkTopic::kLongestCommand + 1, 'x'), kWestern), Error);
}

TEST(DdeTextTest, RecognisesCharactersOfTwoBytes) {
  EXPECT_EQ(DdeText(std::string("0\0005\0\xFC\0\x16\x04\0\0rest", 14), kWestern),
            "05\xC3\xBC\xD0\x96");
  EXPECT_EQ(DdeText(std::string("0\0005\0", 4), kWestern), "05") << "nothing at the end";
  EXPECT_EQ(DdeText(std::string("0\0\0\0", 4), kWestern), "0");
  EXPECT_EQ(DdeText(std::string("05\0\0", 4), kWestern), "05");
  EXPECT_EQ(DdeText("x", kWestern), "x");
}

class DdeLinksTest : public ::testing::Test {
 protected:
  DesktopWorld world_;
  DdeLinks links_{"Skyhop"};
  RecordingListener listener_;
  RecordingTopic topic_;
};

TEST_F(DdeLinksTest, TakesCommandsOfTwoByteCharacters) {
  links_.Serve("DDEServer", topic_);
  LinkPeerProcess peer("Tessera");
  peer.Order({"execute-wide", "Skyhop", "DDEServer", "003setpower100"});
  EXPECT_TRUE(world_.RunUntil([&] { return !topic_.executed.empty(); }));
  EXPECT_EQ(topic_.executed, Texts{"003setpower100"});
}

TEST_F(DdeLinksTest, IgnoresTheCaseOfNames) {
  links_.Serve("DDEServer", topic_);
  LinkPeerProcess peer("TESSERA");
  peer.Serve("TESSERAMAIN", {{"COUNTRY", "England"}});
  peer.Execute("SKYHOP", "ddeserver", "003test");
  EXPECT_TRUE(world_.RunUntil([&] { return !topic_.executed.empty(); }));
}

TEST_F(DdeLinksTest, FollowsAllItemsOfATopic) {
  LinkPeerProcess peer("Tessera");
  peer.Serve("TesseraMain", {{"A", "1"}, {"B", "2"}, {"C", "3"}, {"D", "4"}});
  const auto conversation = ConnectPatiently(links_, "Tessera", "TesseraMain", listener_);
  for (const char* item : {"A", "B", "C", "D"}) conversation->Advise(item);
  EXPECT_TRUE(world_.RunUntil([&] { return listener_.changes.size() >= 4; }));
  EXPECT_EQ(listener_.changes, (std::vector<std::pair<std::string, std::string>>{
                                   {"A", "1"}, {"B", "2"}, {"C", "3"}, {"D", "4"}}));
  peer.Publish("TesseraMain", "C", "5");
  EXPECT_TRUE(world_.RunUntil([&] { return listener_.changes.size() >= 5; }));
  EXPECT_EQ(listener_.changes.back().second, "5");
}

TEST_F(DdeLinksTest, RefusesOrIgnoresInvalidMessages) {
  links_.Serve("DDEServer", topic_);
  topic_.items = {{"Country", "x"}};
  LinkPeerProcess peer("Tessera");
  peer.SendGarbage("Skyhop", "DDEServer");
  EXPECT_TRUE(world_.RunUntil([&] { return peer.AllTaken(); }));
  peer.Execute("Skyhop", "DDEServer", "003test");
  EXPECT_TRUE(world_.RunUntil([&] { return !topic_.executed.empty(); }));
  EXPECT_EQ(topic_.executed.back(), "003test");
  for (const std::string& text : topic_.executed) EXPECT_LT(text.size(), 100U);
}

TEST_F(DdeLinksTest, TakesTenThousandCommands) {
  constexpr int count = 10000;
  links_.Serve("DDEServer", topic_);
  LinkPeerProcess peer("Tessera");
  const auto start = steady_clock::now();
  peer.Flood("Skyhop", "DDEServer", "005test", count);
  // A busy machine needs several times as long as RunUntil waits.
  for (int wait = 0; wait < 5 && !peer.AllTaken(); ++wait) {
    world_.RunUntil([&] { return peer.AllTaken(); });
  }
  EXPECT_TRUE(peer.AllTaken());
  world_.RunShortly();
  RecordProperty(
      "commands_per_second",
      static_cast<int>(count / std::chrono::duration<double>(steady_clock::now() - start).count()));
  EXPECT_EQ(topic_.executed.size(), static_cast<std::size_t>(count));
}

TEST_F(DdeLinksTest, AnswersAPeerBeforeItsCommandEnds) {
  struct WaitingTopic : RecordingTopic {
    void Execute(const std::string& command) override {
      executed.push_back(command);
      if (executed.size() == 1) told_second = world->RunUntil([&] { return executed.size() > 1; });
    }
    DesktopWorld* world = nullptr;
    bool told_second = false;
  } topic;
  topic.world = &world_;
  links_.Serve("DDEServer", topic);
  LinkPeerProcess peer("Tessera");
  peer.Flood("Skyhop", "DDEServer", "005test", 2);
  EXPECT_TRUE(world_.RunUntil([&] { return peer.AllTaken() && topic.executed.size() == 2; }));
  EXPECT_TRUE(topic.told_second);
}

TEST_F(DdeLinksTest, SendsCommandsWithoutWaitingWhenAPeerHangs) {
  LinkPeerProcess peer("Tessera");
  peer.Serve("DDEServer", {});
  const auto conversation = ConnectPatiently(links_, "Tessera", "DDEServer", listener_);
  peer.Hang();
  const auto start = steady_clock::now();
  conversation->Execute("005test");
  EXPECT_LT(steady_clock::now() - start, milliseconds(100));
  EXPECT_TRUE(world_.RunUntil([&] { return listener_.closed > 0; }));
  EXPECT_GE(steady_clock::now() - start, LinkTransport::kSlowAnswer - milliseconds(500));
  EXPECT_FALSE(conversation->Open());
}

TEST_F(DdeLinksTest, TriesAllPeersWithinASecondWhenAProgramHangs) {
  LinkPeerProcess hung("Tessera");
  hung.Serve("DDEServer", {});
  LinkPeerProcess other("Gleaner");
  other.Serve("DDEServer", {});
  hung.Hang();
  const auto start = steady_clock::now();
  for (const char* application : {"Tessera", "Gleaner", "TunewardClassic", "MarloTest", "Chirpa",
                                  "Archivo", "MarloLauncher", "Tessera"}) {
    try {
      (void)links_.Connect(application, "DDEServer", listener_);
    } catch (const Error&) {
      // The system determines whether the other peers can be reached meanwhile.
    }
  }
  EXPECT_LT(steady_clock::now() - start, milliseconds(1000));
  hung.Continue();
  for (const char* application : {"Tessera", "Gleaner"}) {
    EXPECT_TRUE(ConnectPatiently(links_, application, "DDEServer", listener_)->Open());
  }
}

TEST_F(DdeLinksTest, EndsWithinASecondWhenAPeerHangs) {
  LinkPeerProcess peer("MarloLauncher");
  peer.Serve("DDEClient", {});
  auto ending = std::make_unique<DdeLinks>("Skyhop");
  auto conversation = ConnectPatiently(*ending, "MarloLauncher", "DDEClient", listener_);
  peer.Hang();
  const auto start = steady_clock::now();
  conversation->Execute("005stop");
  conversation.reset();
  ending.reset();
  EXPECT_LT(steady_clock::now() - start, milliseconds(1500));
}

}  // namespace
}  // namespace skyhop::testing
