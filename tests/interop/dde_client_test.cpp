#include "interop/dde_client_module.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "interop/suite.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_application.h"
#include "support/link_recorders.h"

namespace skyhop::testing {
namespace {

using DDEClientModule::Links;
using std::chrono::milliseconds;
using Lines = std::vector<std::string>;

class Window : public PeerWindow {
 public:
  FollowedBand FollowFrequency(double frequency) override {
    followed.push_back("frequency " + std::to_string(frequency));
    return {"20M", true};
  }
  void Follow(LinkControl control, const std::string& text) override {
    followed.push_back(std::to_string(static_cast<int>(control)) + " " + text);
    if (failing) throw Error(errors::kTypeMismatch, "unusable");
  }
  void FollowSelection(const PeerPlace& place) override {
    followed.push_back("selection " + place.latitude + "/" + place.longitude + "/" + place.country);
  }
  void FollowStation(const PeerPlace& place) override {
    followed.push_back("station " + place.latitude + "/" + place.longitude + "/" + place.country);
  }
  void Forget(LinkControl control) override { forgotten.push_back(control); }
  void LinksChanged() override { ++changes; }

  Lines followed;
  std::vector<LinkControl> forgotten;
  int changes = 0;
  bool failing = false;
};

class Timer : public LinkTimer {
 public:
  void Start(milliseconds every) override { interval = every; }
  void Stop() override { interval.reset(); }
  std::optional<milliseconds> interval;
};

class LinksTest : public ::testing::Test {
 protected:
  void StartGleaner() {
    gleaner_.emplace(
        bus_, "Gleaner",
        std::map<std::string, std::map<std::string, std::string>>{
            {"DDEServer", {}}, {"SpotDatabaseUI", {{"SFI", "150"}, {"A", "5"}, {"K", "2"}}}});
  }
  void StartTessera() {
    tessera_.emplace(
        bus_, "Tessera",
        std::map<std::string, std::map<std::string, std::string>>{
            {"DDEServer", {}},
            {"TesseraMain",
             {{"SelectedLatitude", "51"}, {"SelectedLongitude", "0"}, {"Country", "England"}}},
            {"TesseraConfig", {{"Latitude", "40"}, {"Longitude", "-74"}}}});
  }
  void StartTuneward() {
    tuneward_.emplace(
        bus_, "TunewardClassic",
        std::map<std::string, std::map<std::string, std::string>>{
            {"DDEServer", {}}, {"CIV_TunewardUI", {{"FreqDisplay", "14074.5"}, {"Mode", "USB"}}}});
  }
  void StartAll() {
    StartGleaner();
    StartTessera();
    StartTuneward();
  }
  void Initialize() {
    links_.Initialize();
    Run();
  }
  /// Delivers what was published and lets the timer of the values tick.
  void Run() {
    bus_.Run();
    if (values_timer_.interval) client_.PeerValuesTimer_Tick();
  }
  std::string Connected() {
    std::string roles;
    for (const auto role : {role::kTransceiverControl, role::kTessera, role::kSpots}) {
      if (links_.ServerConnected(role)) roles += std::to_string(role);
    }
    return roles;
  }
  bool Logged(const std::string& line) {
    return std::find(log_.debug.begin(), log_.debug.end(), line) != log_.debug.end();
  }

  LoggedDiagnostics log_;
  FakeLinkBus bus_;
  std::optional<FakeApplication> gleaner_;
  std::optional<FakeApplication> tessera_;
  std::optional<FakeApplication> tuneward_;
  FakeLinks transport_{bus_, "Skyhop"};
  Window window_;
  Timer timer_;
  DDECommon::Records records_{log_.diagnostics};
  Timer values_timer_;
  DDEClient client_{window_, values_timer_, log_.diagnostics};
  Links links_{{transport_, client_, window_, timer_, records_, log_.diagnostics}};
};

TEST_F(LinksTest, LinksEveryTopicAndItemOfThePeers) {
  StartAll();
  Initialize();
  EXPECT_EQ(transport_.connects,
            (Lines{"Gleaner|DDEServer", "Gleaner|SpotDatabaseUI", "Tessera|DDEServer",
                   "Tessera|TesseraMain", "Tessera|TesseraConfig", "TunewardClassic|DDEServer",
                   "TunewardClassic|CIV_TunewardUI"}));
  EXPECT_EQ(window_.followed, (Lines{"0 150", "1 5", "2 2", "selection 51/0/England",
                                     "station 40/-74/", "frequency 14.074500", "9 USB"}));
  EXPECT_EQ(Connected(), "034");
  EXPECT_FALSE(timer_.interval) << "nobody is missing";
  EXPECT_TRUE(Logged("DDEClientModule.ConnectToServer, theServer = 4"));
  EXPECT_TRUE(Logged("DDEClientModule.SetServerConnected: SpotServer True"));
  EXPECT_TRUE(Logged("   PredBand = 20M"));
  EXPECT_TRUE(Logged("DDEClient.Freq_Change, thestate = True"));
  EXPECT_EQ(links_.InteropCaption(), "Gleaner, Tessera, Tuneward");
  EXPECT_EQ(client_.Frequency(), 14074.5);
  window_.followed.clear();
  tessera_->links.Publish("TesseraMain", "Country", "Malta");
  Run();
  EXPECT_EQ(window_.followed, Lines{"selection 51/0/Malta"});
  EXPECT_EQ(client_.Text(LinkControl::kDXPrefix), "Malta");
}

TEST_F(LinksTest, RetriesAbsentPeersEveryThirtySeconds) {
  StartTessera();
  Initialize();
  EXPECT_EQ(Connected(), "3");
  EXPECT_EQ(timer_.interval, milliseconds(30000));
  EXPECT_TRUE(
      Logged("DDEClientModule.ConnectToServer: failed to connect to SpotServer: Gleaner is "
             "not running"));
  EXPECT_EQ(links_.InteropCaption(), "Tessera");
  transport_.connects.clear();
  StartGleaner();
  links_.ServerRetryTimer_Tick();
  EXPECT_EQ(transport_.connects,
            (Lines{"Gleaner|DDEServer", "Gleaner|SpotDatabaseUI", "TunewardClassic|DDEServer"}));
  EXPECT_TRUE(Logged("  retrying SpotServer"));
  EXPECT_EQ(Connected(), "34");
  EXPECT_EQ(timer_.interval, milliseconds(30000));
  StartTuneward();
  links_.ServerRetryTimer_Tick();
  EXPECT_EQ(Connected(), "034");
  EXPECT_FALSE(timer_.interval);
  EXPECT_FALSE(Logged("SpotServer reconnected")) << "it was never away";
}

TEST_F(LinksTest, ReconnectsWhenAPeerDiesAndReturns) {
  StartAll();
  Initialize();
  const int changes = window_.changes;
  tuneward_.reset();
  Run();
  EXPECT_EQ(Connected(), "34");
  EXPECT_GT(window_.changes, changes);
  EXPECT_EQ(
      std::count(log_.debug.begin(), log_.debug.end(), "XcvrControlServer died; initiating retry"),
      1)
      << "its links close one after the other";
  EXPECT_EQ(client_.Frequency(), std::nullopt);
  EXPECT_EQ(timer_.interval, milliseconds(30000));
  StartTuneward();
  links_.ServerRetryTimer_Tick();
  Run();
  EXPECT_TRUE(Logged("XcvrControlServer reconnected"));
  EXPECT_EQ(client_.Frequency(), 14074.5);
  EXPECT_FALSE(timer_.interval);
}

TEST_F(LinksTest, DoesNotConnectWhenATopicIsMissingOrAPeerHangs) {
  StartTuneward();
  gleaner_.emplace(bus_, "Gleaner",
                   std::map<std::string, std::map<std::string, std::string>>{{"DDEServer", {}}});
  bus_.hung = {"TunewardClassic"};
  Initialize();
  EXPECT_EQ(Connected(), "");
  EXPECT_TRUE(
      Logged("DDEClientModule.ConnectToServer: failed to connect to SpotServer: Gleaner has "
             "no topic SpotDatabaseUI"));
  EXPECT_EQ(std::count(transport_.connects.begin(), transport_.connects.end(),
                       "TunewardClassic|CIV_TunewardUI"),
            0)
      << "the first failure is enough waiting";
  gleaner_.reset();
  Run();
  EXPECT_FALSE(Logged("SpotServer died; initiating retry")) << "the half-open links were given up";
}

TEST_F(LinksTest, ConnectsAfterTheTransactionOfAnAnnouncement) {
  Initialize();
  StartGleaner();
  transport_.connects.clear();
  client_.Execute("004start");
  client_.Execute("004START ");
  EXPECT_TRUE(Logged("DDEClient.Form_LinkExecute: SpotServer start"));
  EXPECT_TRUE(transport_.connects.empty()) << "within the transaction";
  EXPECT_EQ(timer_.interval, Links::kStartDelay);
  links_.ServerRetryTimer_Tick();
  EXPECT_EQ(transport_.connects, (Lines{"Gleaner|DDEServer", "Gleaner|SpotDatabaseUI"}));
  EXPECT_EQ(Connected(), "4");
  EXPECT_EQ(timer_.interval, Links::kRetryInterval);
  // A connected peer that restarts is linked again.
  client_.Execute("004start");
  links_.ServerRetryTimer_Tick();
  EXPECT_EQ(transport_.connects.size(), 4U);
  EXPECT_EQ(Connected(), "4");
}

TEST_F(LinksTest, IgnoresOtherAnnouncements) {
  Initialize();
  transport_.connects.clear();
  timer_.interval.reset();
  for (const char* command : {"004stop", "004", "001start", "999start", "-04start"}) {
    client_.Execute(command);
  }
  EXPECT_TRUE(log_.errors.empty());
  for (const char* garbage : {"", "4", "start", "\xFF\xFE"}) {
    client_.Execute(garbage);
    ASSERT_FALSE(log_.errors.empty()) << garbage;
    EXPECT_EQ(log_.errors.back().find("program error 13 in module DDEClient.Form_LinkExecute"), 0U);
    log_.errors.clear();
  }
  EXPECT_FALSE(timer_.interval);
  EXPECT_TRUE(transport_.connects.empty());
}

TEST_F(LinksTest, UnusableValuesAreReportedUnderTheirHandler) {
  StartAll();
  Initialize();
  window_.failing = true;
  tuneward_->links.Publish("CIV_TunewardUI", "FreqDisplay", "fourteen");
  gleaner_->links.Publish("SpotDatabaseUI", "K", "?");
  Run();
  EXPECT_EQ(log_.errors.at(1).find("program error 13 in module DDEClient.Freq_Change"), 0U);
  EXPECT_EQ(log_.errors.at(0).find("program error 13 in module DDEClient.K_Change"), 0U);
  EXPECT_EQ(client_.Frequency(), std::nullopt);
  log_.errors.clear();
  tuneward_->links.Publish("CIV_TunewardUI", "FreqDisplay", " ");
  Run();
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(LinksTest, HandsOnTheLastOfSeveralValues) {
  StartAll();
  Initialize();
  window_.followed.clear();
  for (int i = 0; i < 10'000; ++i) {
    tessera_->links.Publish("TesseraMain", "SelectedLatitude", std::to_string(i));
    tessera_->links.Publish("TesseraConfig", "Longitude", std::to_string(i));
    gleaner_->links.Publish("SpotDatabaseUI", "K", std::to_string(i));
  }
  tessera_->links.Publish("TesseraMain", "SelectedLongitude", "7");
  Run();
  EXPECT_EQ(window_.followed, (Lines{"2 9999", "selection 9999/7/England", "station 40/9999/"}));
  EXPECT_FALSE(values_timer_.interval);
  // The last value of a peer is dropped with its link.
  tuneward_->links.Publish("CIV_TunewardUI", "Mode", "CW");
  bus_.Run();
  tuneward_.reset();
  window_.followed.clear();
  Run();
  EXPECT_EQ(window_.followed, Lines());
}

TEST_F(LinksTest, ReadsOnlyUnambiguousFrequencies) {
  StartAll();
  Initialize();
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"14025", 14025},
      {" 14025.5 ", 14025.5},
      {"7.030.25", 7030.25},
      {"14.025.500", 14025.5},
      {"14,025.50", 14025.5},
      {"14.025,50", 14025.5},
      {"14025,5", 14025.5},
      {"1,296,000.5", 1296000.5},
      {"7,030,25", 7030.25},
      {"3,5", 3.5},
      {"14,025", std::nullopt},
      {"7.03.25", std::nullopt},
      {"7.030.2.5", std::nullopt},
      {"14025,", std::nullopt},
      {",", std::nullopt},
      {"1234,567.8", std::nullopt},
      {"1e999", std::nullopt},
      {"-14025", std::nullopt},
      {"14.025 MHz", std::nullopt},
      {"---", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& [text, kilohertz] : cases) {
    tuneward_->links.Publish("CIV_TunewardUI", "FreqDisplay", text);
    Run();
    EXPECT_EQ(client_.Frequency(), kilohertz) << text;
  }
  EXPECT_EQ(log_.errors,
            Lines{"program error 13 in module DDEClient.Freq_Change: the transceiver's frequency "
                  "\"14,025\" cannot be read as a number of kHz"})
      << "not one for each step of the dial";
}

TEST_F(LinksTest, CommandsGoToConnectedPeersInTheirFormat) {
  StartAll();
  Initialize();
  const auto send_all = [this] {
    links_.Qsy("14074.5");
    links_.SetTransceiverMode("USB");
    links_.SetVfoA();
    links_.SetSplit(true);
    links_.SetSplit(false);
    links_.BeaconLookup({"4U1UN", "4U", "40", "", "New York", "UN", "NA", "5", "8", "-5"});
    links_.SelectBearing(45);
    links_.RotateShortPath(359);
    links_.DisplaySolarHistory();
  };
  send_all();
  EXPECT_EQ(
      transport_.sent,
      (Lines{"TunewardClassic|DDEServer 005qsy14074.5",
             "TunewardClassic|DDEServer 005xcvrsetmodecmd<xcvrsetmodearg:3>USB",
             "TunewardClassic|DDEServer 005setvfoa", "TunewardClassic|DDEServer 005setspliton",
             "TunewardClassic|DDEServer 005setsplitoff",
             "Tessera|DDEServer 005beaconlookup<call:5>4U1UN<prefix:2>4U<lat:2>40<lon:0>"
             "<qth:8>New York<country:2>UN<cont:2>NA<cq:1>5<itu:1>8<timezone:2>-5",
             "Tessera|DDEServer 005selectbearing45", "Tessera|DDEServer 005rotatesp359",
             "Gleaner|DDEServer 005displaysolarhistory"}));
  transport_.sent.clear();
  for (auto* application : {&gleaner_, &tessera_, &tuneward_}) application->reset();
  Run();
  send_all();
  EXPECT_TRUE(transport_.sent.empty());
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(LinksTest, HandlesEventsWhileALinkIsOpened) {
  StartAll();
  Initialize();
  const std::string all = Connected();
  const auto connect_while = [&](std::function<void()> happening) {
    transport_.connects.clear();
    transport_.while_connecting = std::move(happening);
    links_.ConnectToServer(role::kTessera);
    Run();
  };
  connect_while([&] { links_.ConnectToServer(role::kTessera); });
  EXPECT_EQ(transport_.connects.size(), 3U) << "one attempt at a time";
  EXPECT_EQ(Connected(), all);
  connect_while([&] { links_.Terminate(); });
  EXPECT_EQ(Connected(), "");
  EXPECT_FALSE(timer_.interval);
}

TEST_F(LinksTest, ForgetsValuesWhenTheirPeerCloses) {
  StartAll();
  Initialize();
  Run();
  window_.forgotten.clear();
  tuneward_->links.Publish("CIV_TunewardUI", "FreqDisplay", "---");
  Run();
  EXPECT_EQ(window_.forgotten, std::vector{LinkControl::kFreq});
  log_.errors.clear();
  window_.forgotten.clear();
  tessera_.reset();
  Run();
  for (const LinkControl control :
       {LinkControl::kDXLatitude, LinkControl::kDXLongitude, LinkControl::kDXPrefix}) {
    EXPECT_EQ(std::count(window_.forgotten.begin(), window_.forgotten.end(), control), 1);
  }
}

TEST_F(LinksTest, DoesNotRetryAfterTerminate) {
  StartAll();
  Initialize();
  links_.Terminate();
  EXPECT_TRUE(links_.GetTerminating());
  EXPECT_EQ(Connected(), "");
  transport_.connects.clear();
  gleaner_.reset();
  Run();
  client_.Execute("003start");
  links_.ServerRetryTimer_Tick();
  links_.ConnectToServer(role::kTessera);
  EXPECT_TRUE(transport_.connects.empty());
  EXPECT_FALSE(timer_.interval);
  EXPECT_FALSE(Logged("SpotServer died; initiating retry"));
}

TEST_F(LinksTest, WorksWithoutLinksAndLogsTheReason) {
  transport_.problem = "there is no session bus";
  Initialize();
  links_.ConnectToServer(role::kTessera);
  links_.Qsy("14074");
  EXPECT_TRUE(transport_.connects.empty());
  EXPECT_FALSE(timer_.interval);
  EXPECT_EQ(links_.InteropCaption(), "no links: there is no session bus");
  EXPECT_TRUE(Logged("   no links with other programs: there is no session bus"));
  links_.Terminate();
  EXPECT_TRUE(log_.errors.empty());
}

}  // namespace
}  // namespace skyhop::testing
