#include "platform/linux/dbus_links.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "bus_world.h"
#include "contract/link_transport_contract.h"
#include "link_peer_process.h"

namespace skyhop::testing {
namespace {

using platform::DBusLinks;
using Texts = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(Backends, LinkTransportContract,
                         ::testing::Values(LinkBackend{
                             "dbus", [] { return std::make_unique<BusWorld>(); }}),
                         [](const auto& backend) { return std::string(backend.param.name); });

/// Sets an environment variable while this object lives; null unsets it.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    Set(value);
  }
  ~Variable() { Set(old_ ? old_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Set(const char* value) {
    if (value == nullptr) {
      ::unsetenv(name_);
    } else {
      ::setenv(name_, value, 1);
    }
  }
  const char* name_;
  std::optional<std::string> old_;
};

TEST(DBusLinksTest, ReportsAProblemWhenThereIsNoBus) {
  const struct {
    const char* address;
    const char* folder;
    const char* problem;
  } cases[] = {
      {nullptr, nullptr, "there is no session bus"},
      {"", "/nonexistent", "there is no session bus"},
      {"unix:path=/nonexistent/bus", nullptr, "the session bus cannot be reached: "},
      {"nonsense", nullptr, "the session bus cannot be reached: "},
  };
  for (const auto& [address, folder, problem] : cases) {
    const Variable bus("DBUS_SESSION_BUS_ADDRESS", address);
    const Variable runtime("XDG_RUNTIME_DIR", folder);
    DBusLinks links("Skyhop");
    EXPECT_EQ(links.Problem().find(problem), 0U) << links.Problem();
    RecordingTopic topic;
    RecordingListener listener;
    EXPECT_THROW(links.Serve("DDEServer", topic), Error);
    EXPECT_THROW((void)links.Connect("Tessera", "DDEServer", listener), Error);
    links.Publish("DDEServer", "item", "value");
    links.Unserve("DDEServer");
  }
}

class DBusLinksBusTest : public ::testing::Test {
 protected:
  BusWorld world_;
  RecordingListener listener_;
  RecordingTopic topic_;
};

TEST_F(DBusLinksBusTest, RefusesASecondOwnerOfAName) {
  DBusLinks first("Skyhop");
  DBusLinks second("Skyhop");
  first.Serve("DDEServer", topic_);
  try {
    second.Serve("DDEServer", topic_);
    ADD_FAILURE() << "two programs serve as Skyhop";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), errors::kPermissionDenied);
    EXPECT_STREQ(error.what(), "another program has the name org.marlo.Skyhop");
  }
}

TEST_F(DBusLinksBusTest, ClosesLinksWhenTheBusEnds) {
  DBusLinks links("Skyhop");
  LinkPeerProcess peer("Tessera");
  peer.Serve("TesseraMain", {{"Country", "England"}});
  const auto conversation = ConnectPatiently(links, "Tessera", "TesseraMain", listener_);
  links.Serve("DDEServer", topic_);
  world_.Down();
  EXPECT_TRUE(world_.RunUntil([&] { return listener_.closed > 0; }));
  EXPECT_EQ(links.Problem(), "the session bus has ended");
  conversation->Execute("005test");
  EXPECT_THROW((void)links.Connect("Tessera", "TesseraMain", listener_), Error);
  EXPECT_THROW(links.Serve("DDEClient", topic_), Error);
  links.Publish("DDEServer", "item", "value");
  links.Unserve("DDEServer");
}

TEST_F(DBusLinksBusTest, RefusesOrIgnoresInvalidMessages) {
  DBusLinks links("Skyhop");
  links.Serve("DDEServer", topic_);
  LinkPeerProcess peer("Tessera");
  peer.Serve("TesseraMain", {{"Country", "England"}});
  const auto conversation = ConnectPatiently(links, "Tessera", "TesseraMain", listener_);
  conversation->Advise("Country");
  EXPECT_TRUE(world_.RunUntil([&] { return !listener_.changes.empty(); }));
  peer.SendGarbage("Skyhop", "DDEServer");
  peer.Publish("TesseraMain", "Country", "Malta");
  EXPECT_TRUE(world_.RunUntil([&] { return peer.AllTaken() && listener_.changes.size() >= 2; }));
  EXPECT_EQ(topic_.executed, Texts());
  EXPECT_EQ(listener_.changes, (std::vector<std::pair<std::string, std::string>>{
                                   {"Country", "England"}, {"Country", "Malta"}}));
}

TEST_F(DBusLinksBusTest, IgnoresChangesForgedByOthers) {
  DBusLinks links("Skyhop");
  LinkPeerProcess peer("Tessera");
  LinkPeerProcess stranger("Stranger");
  for (LinkPeerProcess* one : {&peer, &stranger}) one->Serve("TesseraMain", {{"Country", "x"}});
  const auto conversation = ConnectPatiently(links, "Tessera", "TesseraMain", listener_);
  conversation->Advise("Country");
  stranger.Publish("TesseraMain", "Country", "forged");
  peer.Publish("TesseraMain", "Country", "true");
  EXPECT_TRUE(world_.RunUntil(
      [&] { return !listener_.changes.empty() && listener_.changes.back().second == "true"; }));
  for (const auto& [item, value] : listener_.changes) EXPECT_NE(value, "forged");
}

TEST_F(DBusLinksBusTest, ReplacesInvalidUtf8) {
  DBusLinks links("Skyhop");
  LinkPeerProcess peer("Tessera");
  peer.Serve("DDEServer", {});
  const auto conversation = ConnectPatiently(links, "Tessera", "DDEServer", listener_);
  conversation->Execute(std::string("a\xFF\0b", 4));
  EXPECT_TRUE(world_.RunUntil([&] { return !peer.Executed().empty(); }));
  EXPECT_EQ(peer.Executed(), Texts{"a\xEF\xBF\xBD\xEF\xBF\xBD"
                                   "b"});
  EXPECT_THROW(conversation->Execute(std::string(LinkTopic::kLongestCommand + 1, 'x')), Error);
}

TEST_F(DBusLinksBusTest, TakesTenThousandCommands) {
  constexpr int count = 10000;
  DBusLinks links("Skyhop");
  links.Serve("DDEServer", topic_);
  LinkPeerProcess peer("Tessera");
  peer.Flood("Skyhop", "DDEServer", "005test", count);
  EXPECT_TRUE(world_.RunUntil([&] { return peer.AllTaken(); }));
  EXPECT_EQ(topic_.executed.size(), static_cast<std::size_t>(count));
}

TEST_F(DBusLinksBusTest, SendsCommandsWithoutWaitingWhenAPeerHangs) {
  DBusLinks links("Skyhop");
  LinkPeerProcess peer("Tessera");
  peer.Serve("DDEServer", {});
  const auto conversation = ConnectPatiently(links, "Tessera", "DDEServer", listener_);
  peer.Hang();
  const auto start = std::chrono::steady_clock::now();
  conversation->Execute("005test");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
  EXPECT_TRUE(world_.RunUntil([&] { return listener_.closed > 0; }));
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, LinkTransport::kSlowAnswer - std::chrono::milliseconds(500));
  EXPECT_FALSE(conversation->Open());
}

}  // namespace
}  // namespace skyhop::testing
