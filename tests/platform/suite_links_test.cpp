// Tests the command server and the peer links with peers in separate processes.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "interop/dde_client_module.h"
#include "interop/dde_server.h"
#include "interop/dde_server_module.h"
#include "interop/suite.h"
#include "link_peer_process.h"
#include "platform/links.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::testing {
namespace {

using std::chrono::milliseconds;
using Texts = std::vector<std::string>;

/// The program around the links. Records their actions.
class Program : public CommandTarget,
                public SNRService,
                public DDECommon::Window,
                public DDECommon::OpenWindows,
                public PeerWindow,
                public LinkTimer {
 public:
  void SetShutdownTrigger() override { done.emplace_back("shutdown"); }
  void ResetWindows(std::int32_t) override { done.emplace_back("reset"); }
  void SetSpaceWeather(const std::string& flux, const std::string& k_index) override {
    done.push_back("weather " + flux + " " + k_index);
  }
  void SetTransmitterPower(const std::string& watts) override { done.push_back("power " + watts); }
  void PredictForPeer(const PeerRequest&, const std::string& argument) override {
    done.push_back("predict " + argument);
  }
  void FreqPredictForPeer(const PeerRequest&, const std::string& frequency, const std::string& mode,
                          const std::string&) override {
    done.push_back("predict " + frequency + " " + mode);
  }
  [[nodiscard]] std::string ValidatedSNR(const std::string& snr) override { return snr; }
  void PredictSNR(const SNRRequest& request) override { done.push_back("snr " + request.first); }
  void Minimise() override { done.emplace_back("minimise"); }
  void Activate() override { done.emplace_back("activate"); }
  [[nodiscard]] std::vector<Window*> All() override { return {this}; }
  FollowedBand FollowFrequency(double) override { return {}; }
  void Follow(LinkControl, const std::string& text) override { followed.push_back(text); }
  void FollowSelection(const PeerPlace& place) override { followed.push_back(place.latitude); }
  void FollowStation(const PeerPlace&) override {}
  void Forget(LinkControl) override {}
  void LinksChanged() override {}
  void Start(milliseconds every) override { interval = every; }
  void Stop() override { interval.reset(); }

  Texts done;
  Texts followed;
  std::optional<milliseconds> interval;
};

class SuiteLinksTest : public ::testing::Test {
 protected:
  std::unique_ptr<LinkPeerProcess> Gleaner() {
    auto peer = std::make_unique<LinkPeerProcess>("Gleaner");
    peer->Serve("DDEServer", {});
    peer->Serve("DDEClient", {});
    peer->Serve("SpotDatabaseUI", {{"SFI", "150"}, {"A", "5"}, {"K", "2"}});
    return peer;
  }
  std::unique_ptr<LinkPeerProcess> Tuneward() {
    auto peer = std::make_unique<LinkPeerProcess>("TunewardClassic");
    peer->Serve("DDEServer", {});
    peer->Serve("CIV_TunewardUI", {{"FreqDisplay", "14074.5"}, {"Mode", "USB"}});
    return peer;
  }
  std::unique_ptr<LinkPeerProcess> Tessera() {
    auto peer = std::make_unique<LinkPeerProcess>("Tessera");
    peer->Serve("DDEServer", {});
    peer->Serve("TesseraMain", {{"SelectedLatitude", "51"}});
    peer->Serve("TesseraConfig", {});
    return peer;
  }
  void Start() {
    announcer_.Initialize();
    links_.Initialize();
  }
  /// Tries repeatedly like the timer: a busy machine may need longer than one call waits.
  bool Connects(std::int16_t role) {
    return world_->RunUntil([&] {
      if (!links_.ServerConnected(role)) links_.ServerRetryTimer_Tick();
      return links_.ServerConnected(role);
    });
  }
  std::optional<double> Frequency() {
    client_.PeerValuesTimer_Tick();
    return client_.Frequency();
  }
  bool Followed(const std::string& text) {
    client_.PeerValuesTimer_Tick();
    return std::find(program_.followed.begin(), program_.followed.end(), text) !=
           program_.followed.end();
  }

  std::unique_ptr<LinkWorld> world_ = MakeSystemLinkWorld();
  LoggedDiagnostics log_;
  std::unique_ptr<LinkTransport> transport_ = platform::MakeLinkTransport("Skyhop");
  Program program_;
  DDECommon::Records records_{log_.diagnostics};
  DDEServer server_{{program_, program_, program_, program_, records_, log_.diagnostics}};
  DDEServerModule::Announcer announcer_{*transport_, server_, log_.diagnostics};
  /// Replaces the timer. Each check of the values is a tick.
  class ValuesTimer : public LinkTimer {
   public:
    void Start(milliseconds) override {}
    void Stop() override {}
  };
  ValuesTimer values_timer_;
  DDEClient client_{program_, values_timer_, log_.diagnostics};
  DDEClientModule::Links links_{
      {*transport_, client_, program_, program_, records_, log_.diagnostics}};
};

TEST_F(SuiteLinksTest, ConnectsPeersThatStartBeforeOrAfter) {
  const auto gleaner = Gleaner();
  Start();
  EXPECT_TRUE(Connects(role::kSpots));
  EXPECT_TRUE(world_->RunUntil([&] { return Followed("150"); }));
  // An announcement waits no longer than a connection, so it may need several attempts.
  EXPECT_TRUE(world_->RunUntil([&] {
    if (gleaner->Executed().empty()) announcer_.InformClient("Gleaner");
    return !gleaner->Executed().empty();
  }));
  EXPECT_EQ(gleaner->Executed().front(), "005start");
  EXPECT_EQ(program_.interval, DDEClientModule::Links::kRetryInterval);

  const auto tessera = Tessera();
  tessera->Execute("Skyhop", "DDEClient", "003start");
  EXPECT_TRUE(
      world_->RunUntil([&] { return program_.interval == DDEClientModule::Links::kStartDelay; }));
  EXPECT_TRUE(Connects(role::kTessera));
  EXPECT_TRUE(world_->RunUntil([&] { return Followed("51"); }));

  const auto tuneward = Tuneward();
  EXPECT_TRUE(Connects(role::kTransceiverControl));
  EXPECT_TRUE(world_->RunUntil([&] { return Frequency() == 14074.5; }));
  EXPECT_FALSE(program_.interval) << "all are connected";
  tuneward->Publish("CIV_TunewardUI", "FreqDisplay", "7030");
  EXPECT_TRUE(world_->RunUntil([&] { return Frequency() == 7030; }));
  links_.SetSplit(true);
  links_.RotateShortPath(45);
  EXPECT_TRUE(world_->RunUntil([&] { return !tuneward->Executed().empty(); }));
  EXPECT_TRUE(world_->RunUntil([&] { return !tessera->Executed().empty(); }));
  EXPECT_EQ(tuneward->Executed(), Texts{"005setspliton"});
  EXPECT_EQ(tessera->Executed(), Texts{"005rotatesp45"});
  EXPECT_EQ(log_.errors, Texts());
}

TEST_F(SuiteLinksTest, ReconnectsAfterAPeerDiesOrHangs) {
  auto gleaner = Gleaner();
  Start();
  gleaner.reset();
  EXPECT_TRUE(world_->RunUntil([&] { return !links_.ServerConnected(role::kSpots); }));
  gleaner = Gleaner();
  gleaner->Hang();
  const auto start = std::chrono::steady_clock::now();
  links_.ServerRetryTimer_Tick();
  EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(900));
  EXPECT_FALSE(links_.ServerConnected(role::kSpots));
  EXPECT_NE(std::find(log_.debug.begin(), log_.debug.end(),
                      "DDEClientModule.ConnectToServer: failed to connect to SpotServer: Gleaner "
                      "does not answer"),
            log_.debug.end());
  gleaner->Continue();
  program_.followed.clear();
  EXPECT_TRUE(Connects(role::kSpots));
  EXPECT_TRUE(world_->RunUntil([&] { return Followed("150"); }));
}

TEST_F(SuiteLinksTest, TakesEveryCommandAndIgnoresInvalidMessages) {
  Start();
  const auto gleaner = Gleaner();
  const std::string large(std::size_t{64} << 10U, 'x');
  for (const std::string& command :
       Texts{"004test", "004iconify", "004activate", "004resetwindows1", "", "x", "\xC3\xBC",
             "004newwwv<a:1>1<b:3>144<c:40000>1<d:1>3", "004newwwv<a:1>1<b:3>144<c:0><d:1>3",
             "004setpower100", "004predict", "004predsp1", "004predlp2",
             "004predfmp<f:5>14074<m:3>ft8", "004reqsnr<f:5>14074", "004setpower" + large,
             "004" + large, "004predict<", "004shutdown"}) {
    gleaner->Execute("Skyhop", "DDEServer", command);
  }
  gleaner->SendGarbage("Skyhop", "DDEServer");
  gleaner->SendGarbage("Skyhop", "DDEClient");
  EXPECT_TRUE(world_->RunUntil([&] { return gleaner->AllTaken(); }));
  EXPECT_EQ(program_.done,
            (Texts{"minimise", "activate", "reset", "weather 144 ", "weather 144 3", "power 100",
                   "predict 0", "predict 1", "predict 2", "predict 14074 FT8", "snr 14074",
                   "power " + large, "predict <", "shutdown"}));
  EXPECT_EQ(log_.errors.size(), 3U) << "the texts without a role";
}

}  // namespace
}  // namespace skyhop::testing
