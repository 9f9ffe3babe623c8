#include "ui/beacon/beacon_links.h"

#include <gtest/gtest.h>

#include "beacon/beacon_files.h"
#include "beacon/selection.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_application.h"
#include "support/link_recorders.h"

namespace skyhop::testing {
namespace {

using BeaconModule::Selection;
using Lines = std::vector<std::string>;

class NoWindow : public PeerWindow {
 public:
  FollowedBand FollowFrequency(double) override { return {}; }
  void Follow(LinkControl, const std::string&) override {}
  void FollowSelection(const PeerPlace&) override {}
  void FollowStation(const PeerPlace&) override {}
  void Forget(LinkControl) override {}
  void LinksChanged() override {}
};

class NoTimer : public LinkTimer {
 public:
  void Start(std::chrono::milliseconds) override {}
  void Stop() override {}
};

class BeaconLinksTest : public ::testing::Test {
 protected:
  BeaconLinksTest() {
    StartTessera();
    tuneward_.emplace(
        bus_, "TunewardClassic",
        std::map<std::string, std::map<std::string, std::string>>{
            {"DDEServer", {}}, {"CIV_TunewardUI", {{"FreqDisplay", ""}, {"Mode", ""}}}});
    links_.Initialize();
    bus_.Run();
    follower_.SetOptions({.retune = true, .rotate = true, .look_up = true, .select_bearing = true});
  }

  void StartTessera() {
    tessera_.emplace(
        bus_, "Tessera",
        std::map<std::string, std::map<std::string, std::string>>{
            {"DDEServer", {}},
            {"TesseraMain", {{"SelectedLatitude", ""}, {"SelectedLongitude", ""}, {"Country", ""}}},
            {"TesseraConfig", {{"Latitude", ""}, {"Longitude", ""}}}});
  }

  /// Follows OA4B and returns the commands sent at `seconds` after the hour.
  Lines SentAfter(int seconds) {
    const UtcTime hour =
        std::chrono::sys_days(std::chrono::year(2026) / 11 / 15) + std::chrono::hours(16);
    const auto target = TargetAt(schedule_, {Selection::By::kCall, 0, "OA4B", {}},
                                 hour + std::chrono::seconds(seconds),
                                 {nullptr, nullptr, [](auto&, auto) { return 0; }});
    follower_.Follow(target, target ? schedule_.Table().frequencies[target->frequency] : 0,
                     files_.locations.Find("OA4B"), 183);
    bus_.Run();
    return std::exchange(transport_.sent, {});
  }

  LoggedDiagnostics log_;
  FakeLinkBus bus_;
  std::optional<FakeApplication> tessera_;
  std::optional<FakeApplication> tuneward_;
  FakeLinks transport_{bus_, "Skyhop"};
  NoWindow window_;
  NoTimer timer_;
  DDECommon::Records records_{log_.diagnostics};
  DDEClient client_{window_, timer_, log_.diagnostics};
  DDEClientModule::Links links_{{transport_, client_, window_, timer_, records_, log_.diagnostics}};
  BeaconLinks peers_{[this] { return &links_; }};
  BeaconModule::Follower follower_{peers_};
  BeaconModule::BeaconFiles files_ =
      BeaconModule::ReadBeaconFiles(SKYHOP_SHIPPED, false, log_.diagnostics);
  BeaconModule::Schedule schedule_{*files_.schedule};
};

TEST_F(BeaconLinksTest, SendsCommandsInEachSlot) {
  EXPECT_TRUE(peers_.HasTransceiver());
  EXPECT_EQ(SentAfter(159), Lines{});
  EXPECT_EQ(
      SentAfter(160),
      (Lines{"TunewardClassic|DDEServer 005setvfoa", "TunewardClassic|DDEServer 005setsplitoff",
             "TunewardClassic|DDEServer 005xcvrsetmodecmd<xcvrsetmodearg:2>CW",
             "TunewardClassic|DDEServer 005qsy14100", "Tessera|DDEServer 005rotatesp183",
             "Tessera|DDEServer 005beaconlookup<call:4>OA4B<prefix:2>OA<lat:7>12 4' S"
             "<lon:8>76 57' W<qth:4>Lima<country:4>Peru<cont:2>SA<cq:2>10<itu:2>12"
             "<timezone:2>-5",
             "Tessera|DDEServer 005selectbearing183"}));
  EXPECT_EQ(SentAfter(165), Lines{});
  EXPECT_EQ(
      SentAfter(170),
      (Lines{"TunewardClassic|DDEServer 005setvfoa", "TunewardClassic|DDEServer 005setsplitoff",
             "TunewardClassic|DDEServer 005xcvrsetmodecmd<xcvrsetmodearg:2>CW",
             "TunewardClassic|DDEServer 005qsy18110"}));
  tuneward_.reset();
  bus_.Run();
  EXPECT_FALSE(peers_.HasTransceiver());
  EXPECT_EQ(SentAfter(180), Lines{}) << "no transceiver control";

  // Tessera starts again and has lost the beacon.
  tessera_.reset();
  bus_.Run();
  EXPECT_EQ(peers_.Connection(BeaconModule::BeaconPeer::kMap), 0);
  StartTessera();
  links_.RetryDeadServers();
  const Lines shown = SentAfter(185);
  ASSERT_EQ(shown.size(), 3U);
  EXPECT_EQ(shown[0], "Tessera|DDEServer 005rotatesp183");
}

TEST_F(BeaconLinksTest, DoesNothingWithoutLinks) {
  BeaconLinks none([] { return nullptr; });
  EXPECT_FALSE(none.HasTransceiver());
  none.SetVfoA();
  none.SetSplit(false);
  none.Qsy("14100");
  none.SetTransceiverMode("CW");
  none.RotateShortPath(1);
  none.SelectBearing(1);
  none.LookUp(files_.locations.beacons.front());
  EXPECT_TRUE(transport_.sent.empty());
}

}  // namespace
}  // namespace skyhop::testing
