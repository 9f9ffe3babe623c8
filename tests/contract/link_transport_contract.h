#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/errors.h"
#include "contract/link_world.h"
#include "interop/link_transport.h"
#include "support/link_recorders.h"

namespace skyhop::testing {

struct LinkBackend {
  const char* name;
  std::function<std::unique_ptr<LinkWorld>()> make;

  /// The name in the test's report.
  friend void PrintTo(const LinkBackend& backend, std::ostream* out) { *out << backend.name; }
};

/// Texts that a link must transport unchanged.
inline const std::vector<std::string>& LinkTexts() {
  static const std::vector<std::string> texts = {
      "",
      "005test",
      "005newwwv<a:1>1<b:3>x>y<c:2>:<",
      "Z\xC3\xBCrich",
      "a\tb\r\nc%41 \x01",
      std::string(std::size_t{64} << 10U, 'x'),
  };
  return texts;
}

/// Tests for every link transport.
class LinkTransportContract : public ::testing::TestWithParam<LinkBackend> {
 protected:
  using Texts = std::vector<std::string>;
  using Changes = std::vector<std::pair<std::string, std::string>>;

  void StartTessera() {
    peer_ = world_->StartPeer("Tessera");
    peer_->Serve("TesseraMain", {{"Country", "England"}, {"SelectedLatitude", "51 30' N"}});
    peer_->Serve("DDEServer", {});
  }
  std::unique_ptr<LinkConversation> Connect(const std::string& topic = "TesseraMain") {
    return ConnectPatiently(*links_, "Tessera", topic, listener_);
  }
  int ConnectError(const std::string& application, const std::string& topic) {
    try {
      (void)links_->Connect(application, topic, listener_);
      return 0;
    } catch (const Error& error) {
      EXPECT_STRNE(error.what(), "");
      return error.Number();
    }
  }
  bool RunUntil(const std::function<bool()>& done) { return world_->RunUntil(done); }

  std::unique_ptr<LinkWorld> world_ = GetParam().make();
  std::unique_ptr<LinkTransport> links_ = world_->MakeTransport("Skyhop");
  std::unique_ptr<LinkPeer> peer_;
  RecordingListener listener_;
  RecordingTopic topic_;
};

TEST_P(LinkTransportContract, RefusesToConnectWhenThePartnerIsMissing) {
  StartTessera();
  EXPECT_EQ(links_->Problem(), "");
  const std::pair<const char*, const char*> absent[] = {
      {"Gleaner", "DDEServer"}, {"Tessera", "Nothing"}, {"Tessera", ""},
      {"", "DDEServer"},        {"Tes sera", "x"},      {"Tessera", "../DDEServer"}};
  for (const auto& [application, topic] : absent) {
    EXPECT_EQ(ConnectError(application, topic), errors::kNoLinkPartner)
        << application << "|" << topic;
  }
  EXPECT_EQ(ConnectError("Tessera", "DDEServer"), 0);
}

TEST_P(LinkTransportContract, DeliversCommandsWholeAndInOrder) {
  StartTessera();
  links_->Serve("DDEServer", topic_);
  const auto conversation = Connect("DDEServer");
  for (const std::string& text : LinkTexts()) {
    conversation->Execute(text);
    peer_->Execute("Skyhop", "DDEServer", text);
  }
  EXPECT_TRUE(RunUntil([&] {
    return peer_->Executed().size() >= LinkTexts().size() &&
           topic_.executed.size() >= LinkTexts().size();
  }));
  EXPECT_EQ(peer_->Executed(), LinkTexts());
  EXPECT_EQ(topic_.executed, LinkTexts());
}

TEST_P(LinkTransportContract, DeliversACommandAfterItsConversationEnds) {
  StartTessera();
  Connect("DDEServer")->Execute("005stop");
  links_.reset();
  EXPECT_TRUE(RunUntil([&] { return peer_->Executed() == Texts{"005stop"}; }));
}

TEST_P(LinkTransportContract, ReturnsRequestedValues) {
  StartTessera();
  const auto conversation = Connect();
  EXPECT_EQ(conversation->Request("Country"), "England");
  EXPECT_THROW((void)conversation->Request("Unknown"), Error);
  topic_.items = {{"State", "\xC3\xBC"}};
  links_->Serve("Data", topic_);
  for (const char* item : {"State", "Nothing"}) peer_->Request("Skyhop", "Data", item);
  EXPECT_TRUE(RunUntil([&] { return peer_->Values().size() >= 2; }));
  EXPECT_EQ(peer_->Values(), (Texts{"\xC3\xBC", "(error)"}));
}

TEST_P(LinkTransportContract, ReportsTheValueAndEveryChangeOfAnAdvisedItem) {
  StartTessera();
  peer_->Serve("TesseraConfig", {{"Country", "Italy"}});
  const auto conversation = Connect();
  conversation->Advise("Country");
  conversation->Advise("Unknown");
  EXPECT_TRUE(listener_.changes.empty()) << "told before the loop ran";
  EXPECT_TRUE(RunUntil([&] { return !listener_.changes.empty(); }));
  peer_->Publish("TesseraMain", "SelectedLatitude", "0");
  peer_->Publish("TesseraConfig", "Country", "Malta");
  Changes expected = {{"Country", "England"}};
  for (const std::string& text : LinkTexts()) {
    peer_->Publish("TesseraMain", "Country", text);
    expected.emplace_back("Country", text);
  }
  EXPECT_TRUE(RunUntil([&] { return listener_.changes.size() >= expected.size(); }));
  EXPECT_EQ(listener_.changes, expected);
}

TEST_P(LinkTransportContract, ReportsAPeersEndOnceAndReconnects) {
  StartTessera();
  auto conversation = Connect();
  conversation->Advise("Country");
  EXPECT_TRUE(RunUntil([&] { return !listener_.changes.empty(); }));
  peer_.reset();
  EXPECT_TRUE(RunUntil([&] { return listener_.closed > 0; }));
  EXPECT_FALSE(conversation->Open());
  conversation->Execute("005test");
  conversation->Advise("Country");
  EXPECT_THROW((void)conversation->Request("Country"), Error);
  EXPECT_EQ(ConnectError("Tessera", "TesseraMain"), errors::kNoLinkPartner);
  StartTessera();
  conversation = Connect();
  EXPECT_EQ(conversation->Request("Country"), "England");
  EXPECT_EQ(listener_.closed, 1);
}

TEST_P(LinkTransportContract, CallsNoListenerAfterTheConversationEnds) {
  StartTessera();
  auto conversation = Connect();
  conversation->Advise("Country");
  conversation.reset();
  peer_->Publish("TesseraMain", "Country", "Malta");
  world_->RunShortly();
  peer_.reset();
  world_->RunShortly();
  EXPECT_EQ(listener_.changes, Changes());
  EXPECT_EQ(listener_.closed, 0);
}

TEST_P(LinkTransportContract, LetsAListenerEndItsConversation) {
  for (const bool by_death : {false, true}) {
    listener_.on_call = {};
    listener_.changes.clear();
    StartTessera();
    auto conversation = Connect();
    conversation->Advise("Country");
    if (by_death) {
      EXPECT_TRUE(RunUntil([&] { return !listener_.changes.empty(); }));
    }
    listener_.on_call = [&] { conversation.reset(); };
    if (by_death) peer_.reset();
    EXPECT_TRUE(RunUntil([&] { return conversation == nullptr; }));
    world_->RunShortly();
  }
}

TEST_P(LinkTransportContract, WaitsOnlyBrieflyWhenAPeerHangs) {
  StartTessera();
  const auto conversation = Connect();
  peer_->Hang();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(ConnectError("Tessera", "TesseraMain"), errors::kLinkTimedOut);
  try {
    (void)conversation->Request("Country");
    ADD_FAILURE() << "a peer that hangs answered";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), errors::kLinkTimedOut);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(900));
  peer_->Continue();
  EXPECT_TRUE(RunUntil([&] { return ConnectError("Tessera", "TesseraMain") == 0; }));
}

TEST_P(LinkTransportContract, SeparatesManyConversations) {
  constexpr int count = 20;
  StartTessera();
  std::vector<RecordingListener> listeners(count);
  std::vector<std::unique_ptr<LinkConversation>> conversations;
  for (RecordingListener& listener : listeners) {
    const bool odd = conversations.size() % 2 == 1;
    conversations.push_back(ConnectPatiently(*links_, "Tessera", "TesseraMain", listener));
    conversations.back()->Advise(odd ? "Country" : "SelectedLatitude");
  }
  EXPECT_TRUE(RunUntil([&] {
    return std::all_of(listeners.begin(), listeners.end(),
                       [](const RecordingListener& one) { return !one.changes.empty(); });
  }));
  peer_->Publish("TesseraMain", "Country", "Malta");
  EXPECT_TRUE(RunUntil([&] { return listeners.back().changes.size() > 1; }));
  world_->RunShortly();
  conversations.front().reset();
  peer_.reset();
  EXPECT_TRUE(RunUntil([&] {
    return std::all_of(listeners.begin() + 1, listeners.end(),
                       [](const RecordingListener& one) { return one.closed > 0; });
  }));
  world_->RunShortly();
  for (std::size_t i = 1; i < listeners.size(); ++i) {
    const Changes odd = {{"Country", "England"}, {"Country", "Malta"}};
    const Changes even = {{"SelectedLatitude", "51 30' N"}};
    EXPECT_EQ(listeners[i].changes, i % 2 == 1 ? odd : even) << i;
    EXPECT_EQ(listeners[i].closed, 1) << i;
  }
  EXPECT_EQ(listeners.front().closed, 0);
}

TEST_P(LinkTransportContract, ServesTopicsWithValidNamesUntilUnserve) {
  StartTessera();
  for (const char* name : {"", "a b", "a/b", "\xC3\xBC"}) {
    EXPECT_THROW(links_->Serve(name, topic_), Error) << name;
  }
  links_->Serve("DDEServer", topic_);
  EXPECT_THROW(links_->Serve("DDEServer", topic_), Error);
  RecordingTopic other;
  links_->Serve("DDEClient", other);
  peer_->Execute("Skyhop", "DDEClient", "003start");
  EXPECT_TRUE(RunUntil([&] { return !other.executed.empty(); }));
  EXPECT_EQ(topic_.executed, Texts());
  links_->Unserve("DDEServer");
  peer_->Execute("Skyhop", "DDEServer", "003test");
  peer_->Execute("Skyhop", "DDEClient", "003start");
  EXPECT_TRUE(RunUntil([&] { return other.executed.size() == 2; }));
  EXPECT_EQ(topic_.executed, Texts());
  links_->Serve("DDEServer", topic_);
  peer_->Execute("Skyhop", "DDEServer", "003test");
  EXPECT_TRUE(RunUntil([&] { return topic_.executed == Texts{"003test"}; }));
}

}  // namespace skyhop::testing
