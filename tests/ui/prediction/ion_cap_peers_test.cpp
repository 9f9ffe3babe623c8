#include "ion_cap_fixture.h"

namespace skyhop::testing {
namespace {

class IonCapPeersTest : public IonCapTest {
 protected:
  int Requester() { return view_.Selected(OptionGroup::kDDEOption); }
  void AtRest() {
    window_.Button_Click(Button::kAbortButton);
    launcher_.starts.clear();
  }
};

TEST_F(IonCapPeersTest, APeersPredictionIsMarkedAsSuchUntilTheUserPredicts) {
  Start();
  EXPECT_EQ(Requester(), dde_option::kRequestedHere);
  const struct {
    std::optional<bool> short_path;
    int path;
  } cases[] = {
      {false, path_option::kLong}, {std::nullopt, path_option::kLong}, {true, path_option::kShort}};
  const int direction = view_.Selected(OptionGroup::kPredictSignals);
  for (const auto& [short_path, path] : cases) {
    window_.Commands().PredictForPeer({true, short_path}, "7");
    EXPECT_EQ(launcher_.starts.size(), 1U);
    EXPECT_EQ(view_.Selected(OptionGroup::kPath), path);
    EXPECT_EQ(view_.Selected(OptionGroup::kPredictSignals), direction);
    EXPECT_EQ(Requester(), dde_option::kRequestedByPeer);
    AtRest();
    window_.PathsButton_Click();
    EXPECT_EQ(Requester(), dde_option::kRequestedHere);
    AtRest();
  }
  EXPECT_NE(std::find(log_.debug.begin(), log_.debug.end(), "IonCap.PredictForPeer, theValue = 7"),
            log_.debug.end());
}

TEST_F(IonCapPeersTest, TheProvenanceTellsWhoAsked) {
  Start();
  for (const bool peer : {true, false}) {
    if (peer) {
      window_.Commands().PredictForPeer({true, std::nullopt}, "0");
    } else {
      window_.PathsButton_Click();
    }
    launcher_.running = {100 + static_cast<ProcessId>(launcher_.starts.size())};
    WriteFile(run_.ResultsFile(), TestData("results/newyork-london-method26.results.txt"));
    window_.Timer_Tick(WindowTimer::kEngineWatch);
    const bool told =
        view_.Shown(Label::kProvenance).find("requested by a peer") != std::string::npos;
    EXPECT_EQ(told, peer) << view_.Shown(Label::kProvenance);
  }
}

TEST_F(IonCapPeersTest, APredictionThatIsAskedForDuringOneFollowsIt) {
  Start();
  const auto end_run = [&] {
    launcher_.running.clear();
    // Without their heading the results could be any circuit's.
    const std::string results = TestData("results/newyork-london-method26.results.txt");
    WriteFile(run_.ResultsFile(), results.substr(results.find("HPF  ESMUF")));
    window_.Timer_Tick(WindowTimer::kEngineWatch);
  };
  window_.PathsButton_Click();
  const std::string summary = Summary();
  window_.Commands().PredictForPeer({true, std::nullopt}, "1");
  window_.Peers().FollowSelection({"10 30' 0\" N", "20 0' 0\" E", "Chad"});
  window_.Commands().PredictForPeer({true, false}, "2");
  window_.PathsButton_Click();
  EXPECT_EQ(launcher_.starts.size(), 1U);
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kShort) << "of the one that runs";
  end_run();
  ASSERT_EQ(launcher_.starts.size(), 2U);
  EXPECT_TRUE(Logged("IonCap.PredictForPeer, theValue = 2"));
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kLong);
  EXPECT_EQ(Requester(), dde_option::kRequestedByPeer);
  EXPECT_EQ(view_.Shown(Label::kSummary), summary) << "the chart is that of the first circuit";
  const std::string second = Summary();
  EXPECT_NE(second, summary);
  end_run();
  EXPECT_EQ(launcher_.starts.size(), 2U) << "of two requests the last one only";
  EXPECT_EQ(view_.Shown(Label::kSummary), second);

  // A run that fails makes way, too; one that the user ends does not.
  window_.PathsButton_Click();
  window_.Commands().PredictForPeer({true, true}, "3");
  launcher_.running.clear();
  for (int tick = 0; tick < 3; ++tick) {
    window_.Timer_Tick(WindowTimer::kExecuteTimer);
    clock_.now += EngineJob::kGrace;
  }
  EXPECT_EQ(launcher_.starts.size(), 4U);
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kShort);
  window_.Commands().PredictForPeer({true, false}, "4");
  window_.Button_Click(Button::kAbortButton);
  EXPECT_FALSE(Running());
  window_.PathsButton_Click();
  end_run();
  EXPECT_EQ(launcher_.starts.size(), 5U);
  errors_expected_ = true;
}

TEST_F(IonCapPeersTest, ValuesPublishedBeforeACommandBelongToItsPrediction) {
  Start();
  peers_.on_values = [&] {
    window_.Peers().FollowSelection({"10 30' 0\" N", "20 0' 0\" E", "Chad"});
  };
  window_.Commands().PredictForPeer({true, std::nullopt}, "0");
  EXPECT_EQ(launcher_.starts.size(), 1U);
  EXPECT_NE(Summary().find("10 30' 0\" N 20 0' 0\" E"), std::string::npos);
}

TEST_F(IonCapPeersTest, ARunningPredictionIsNotDisturbedByPeers) {
  Start();
  window_.PathsButton_Click();
  const std::string snr = parameters_.Set().snr;
  window_.Commands().PredictForPeer({true, false}, "0");
  window_.Commands().FreqPredictForPeer({true, false}, "14074", "FT8", "10");
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kShort);
  EXPECT_EQ(Requester(), dde_option::kRequestedHere);
  EXPECT_EQ(launcher_.starts.size(), 1U);
  EXPECT_EQ(parameters_.Set().snr, snr);
  EXPECT_EQ(events_.back(), "point FT8 10") << "a point is predicted beside it";
}

TEST_F(IonCapPeersTest, ThePredictionThatIsBeingStartedIsNotDisturbedByPeers) {
  Start();
  view_.SetText(TextField::kFlux, "63");
  messages_.while_shown = [&] { window_.Commands().PredictForPeer({true, false}, "0"); };
  window_.PathsButton_Click();
  EXPECT_FALSE(messages_.shown.empty());
  EXPECT_TRUE(launcher_.starts.empty());
  EXPECT_EQ(messages_.shown.size(), 4U) << "the peer's attempt fails after the user's";
  view_.SetText(TextField::kFlux, "150");
  window_.Commands().PredictForPeer({true, false}, "0");
  EXPECT_EQ(launcher_.starts.size(), 1U) << "after it another one may come";
}

TEST_F(IonCapPeersTest, TheBarsUnderAChartAreThoseOfItsStations) {
  Start();
  const auto tip = [&] {
    const Rectangle bars = chart_.Layout().xmit_sun;
    return ToolTipAt(chart_.Model(), chart_.Layout(), {bars.left + 5, bars.top + 2});
  };
  window_.PathsButton_Click();
  launcher_.running.clear();
  WriteFile(run_.ResultsFile(), TestData("results/newyork-london-method26.results.txt"));
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  ASSERT_TRUE(chart_.HasResult());
  const std::string predicted = tip();
  window_.Peers().FollowStation({"70 0' 0\" N", "20 0' 0\" E", ""});
  EXPECT_EQ(tip(), predicted);
}

TEST_F(IonCapPeersTest, AFrequencyIsTakenInKilohertzOrMegahertz) {
  Start();
  errors_expected_ = true;
  for (const char* frequency : {"14074.5", "14.0745"}) {
    window_.Commands().FreqPredictForPeer({true, false}, frequency, "FT8", "33");
    EXPECT_EQ(log_.debug.back(), "IonCap.FreqPredict, theFreq = 14.0745, theMode = FT8");
    EXPECT_EQ(events_.back(), "point FT8 33");
    EXPECT_TRUE(view_.Checked(CheckBox::kSNRDisplayCheck)) << "who asks wants to see it";
  }
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kLong);
  EXPECT_EQ(Requester(), dde_option::kRequestedByPeer);
  EXPECT_EQ(parameters_.Set().snr, "33");
  for (const char* frequency : {"", "x", "14074x"}) {
    events_.clear();
    window_.Commands().FreqPredictForPeer({false, true}, frequency, "FT8", "");
    EXPECT_EQ(events_, Events());
    EXPECT_EQ(log_.errors.back().find("program error 13 in module IonCap.FreqPredictForPeer"), 0U);
  }
}

TEST_F(IonCapPeersTest, ValuesThatAUserCouldNotEnterAreRefusedWithoutAMessage) {
  Start();
  const struct {
    std::function<void(const std::string&)> send;
    TextField field;
    const char* good;
    std::vector<std::string> bad;
  } cases[] = {
      {[&](const auto& text) { window_.Commands().SetSpaceWeather(text, "2"); },
       TextField::kFlux,
       "177",
       {"", "9", "1000", "x", "150 and more", "150\n"}},
      {[&](const auto& text) { window_.Commands().SetSpaceWeather("", text); },
       TextField::kKindex,
       "5",
       {"999", "-1", "5x"}},
      {[&](const auto& text) { window_.Commands().SetTransmitterPower(text); },
       TextField::kLocalPwr,
       "400",
       {"-5", "much", std::string(200, '1')}},
      {[&](const auto& text) { window_.Peers().Follow(LinkControl::kSFI, text); },
       TextField::kFlux,
       "120",
       {" ", "nan", "1e999"}},
      {[&](const auto& text) { window_.Peers().Follow(LinkControl::kK, text); },
       TextField::kKindex,
       "1",
       {"?"}},
      {[&](const auto& text) {
         window_.Peers().FollowStation({text, "20 0' 0\" E", ""});
       },
       TextField::kLocalLat,
       "10 30' 0\" N",
       {"91 N", "10 E", "north", "", "1e999"}},
      {[&](const auto& text) {
         window_.Peers().FollowStation({"10 30' 0\" N", text, ""});
       },
       TextField::kLocalLon,
       "20 0' 0\" E",
       {"181 E", "10 N", "", "1e999", "1e9", "1 999' E"}},
  };
  for (const auto& [send, field, good, bad] : cases) {
    send(std::string(" ") + good + " ");
    EXPECT_EQ(view_.Text(field), good);
    for (const std::string& text : bad) {
      send(text);
      EXPECT_EQ(view_.Text(field), good) << text;
    }
  }
  EXPECT_EQ(view_.Text(TextField::kLocalGrid), "KK00am");
  EXPECT_EQ(parameters_.Set().power, "400");
  EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(IonCapPeersTest, TheDXStationFollowsTesseraWhileItsBoxIsChecked) {
  Start();
  view_.SetChecked(CheckBox::kDXTracksTesseraLocation, false);
  const std::string before = view_.Text(TextField::kDXLat);
  const auto select = [&](const char* latitude, const char* longitude, const char* country) {
    window_.Peers().FollowSelection({latitude, longitude, country});
  };
  select("10 30' 0\" N", "20 0' 0\" E", "Chad");
  EXPECT_EQ(view_.Text(TextField::kDXLat), before);
  // The location that is selected already counts from the moment the box is checked.
  view_.SetChecked(CheckBox::kDXTracksTesseraLocation, true);
  window_.Check_Click(CheckBox::kDXTracksTesseraLocation);
  EXPECT_EQ(view_.Text(TextField::kDXLat), "10 30' 0\" N");
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "KK00am");
  EXPECT_EQ(view_.Shown(Label::kPrefix), "Chad");
  // Coordinates that are refused, or of which one is missing, take their country along.
  for (const auto& [latitude, longitude] :
       {std::pair("1 0' 0\" S", "200 W"), std::pair("1 0' 0\" S", "1e999"),
        std::pair("1 0' 0\" S", ""), std::pair("", "0 E")}) {
    select(latitude, longitude, "Gabon");
    EXPECT_EQ(view_.Text(TextField::kDXLat), "10 30' 0\" N") << longitude;
    EXPECT_EQ(view_.Text(TextField::kDXLon), "20 0' 0\" E");
    EXPECT_EQ(view_.Shown(Label::kPrefix), "Chad");
  }
  select("1 0' 0\" S", "0 0' 0\" E", "Gabon & sea");
  EXPECT_EQ(view_.Text(TextField::kDXLat), "1 0' 0\" S");
  EXPECT_EQ(view_.Shown(Label::kPrefix), "Gabon && sea");
  for (const std::string& country : {std::string("Chad\nSYSTEM"), std::string(200, 'x')}) {
    select("1 0' 0\" S", "0 0' 0\" E", "Gabon");
    select("1 0' 0\" S", "0 0' 0\" E", country.c_str());
    EXPECT_EQ(view_.Shown(Label::kPrefix), "") << "no country is better than another place's";
  }
  // What is being typed elsewhere is neither taken nor taken back by that.
  view_.SetText(TextField::kLocalLat, "51 0' 0\" N");
  window_.Field_Change(TextField::kLocalLat);
  select("2 0' 0\" S", "0 0' 0\" E", "Gabon");
  EXPECT_EQ(view_.Shown(Label::kPrefix), "Gabon");
  const std::string square = view_.Text(TextField::kLocalGrid);
  EXPECT_TRUE(window_.Field_Leave(TextField::kLocalLat));
  EXPECT_NE(view_.Text(TextField::kLocalGrid), square);
  // Without its peer the location is not used any more.
  const std::string last = view_.Text(TextField::kDXLat);
  for (const LinkControl control :
       {LinkControl::kDXLatitude, LinkControl::kDXLongitude, LinkControl::kDXPrefix}) {
    window_.Peers().Forget(control);
  }
  view_.SetText(TextField::kDXLat, "5 0' 0\" N");
  window_.Check_Click(CheckBox::kDXTracksTesseraLocation);
  EXPECT_NE(view_.Text(TextField::kDXLat), last);
  EXPECT_TRUE(messages_.shown.empty());
}

TEST_F(IonCapPeersTest, TheTransceiverMovesBandAndMode) {
  Start();
  EXPECT_EQ(window_.Peers().FollowFrequency(14.1).name, "20M");
  EXPECT_EQ(chart_.Model().band_indicator, 5);
  EXPECT_EQ(window_.GetPredictionBand(), 5);
  EXPECT_FALSE(window_.Peers().FollowFrequency(12.5).followed);
  EXPECT_EQ(chart_.Model().band_indicator, -1);
  EXPECT_TRUE(window_.Peers().FollowFrequency(7.1).followed);
  window_.Peers().Forget(LinkControl::kFreq);
  EXPECT_EQ(chart_.Model().band_indicator, -1) << "the transceiver has gone";
  const std::pair<const char*, const char*> modes[] = {
      {"CW", "CW"},       {"usb", "SSB"},     {"LSB ", "SSB"},   {"CW-R", "CW"},
      {"DATA-U", "FT8"},  {"psk", "PSK31"},   {"HELL", "PSK31"}, {"DATA-L", "PSK31"},
      {"RTTY-R", "RTTY"}, {"PKTUSB", "RTTY"}, {"FT4", "FT4"},    {"AM-N", "AM"},
      {"HELL", "AM"},     {"", "AM"},         {"PKT-L", "FT8"}};
  for (const auto& [told, selected] : modes) {
    window_.Peers().Follow(LinkControl::kMode, told);
    const int index = view_.Selected(OptionGroup::kModeSNRCombo);
    ASSERT_GE(index, 0) << told;
    EXPECT_EQ(view_.modes.at(static_cast<std::size_t>(index)), selected) << told;
    EXPECT_EQ(view_.Text(TextField::kSNR),
              configuration_.Modes().at(static_cast<std::size_t>(index)).snr);
  }
  EXPECT_EQ(log_.errors, Events{"the transceiver's mode \"HELL\" is none of the configured modes; "
                                "the mode stays as it is"});
  for (int i = 0; i < 1000; ++i)
    window_.Peers().Follow(LinkControl::kMode, "X" + std::to_string(i));
  EXPECT_LT(log_.errors.size(), 50U);
  errors_expected_ = true;
}

TEST_F(IonCapPeersTest, TheTransceiverDrivesThePointPredictionWhileItIsShown) {
  Start();
  events_.clear();
  (void)window_.Peers().FollowFrequency(14.1);
  EXPECT_EQ(events_, Events());
  peers_.kilohertz = 21074;
  view_.SetChecked(CheckBox::kSNRDisplayCheck, true);
  window_.Check_Click(CheckBox::kSNRDisplayCheck);
  EXPECT_EQ(events_, Events{"follow "});
  EXPECT_EQ(view_.Text(TextField::kSNRFrequency), "21.074");
  window_.Peers().Follow(LinkControl::kMode, "USB");
  EXPECT_EQ(events_.back(), "follow SSB");
  (void)window_.Peers().FollowFrequency(7.074);
  EXPECT_EQ(point_prediction_.predicted, 7.074);
}

TEST_F(IonCapPeersTest, ThePointPredictionHearsOfEveryInputAndIsMadeAnewForTheTransceiver) {
  Start();
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"DX station", [&] { Type(TextField::kDXGrid, "JN58"); }},
      {"power", [&] { Type(TextField::kLocalPwr, "7"); }},
      {"direction", [&] { Choose(OptionGroup::kPredictSignals, 0); }},
      {"DX power", [&] { Choose(OptionGroup::kDXPwr, 1); }},
      {"noise", [&] { Choose(OptionGroup::kLocalNoiseLevel, 1); }},
      {"DX noise", [&] { Choose(OptionGroup::kDXNoiseLevel, 1); }},
      {"sunspot number", [&] { space_weather_.window->PutDownloaded(TextField::kSSN, "33"); }},
      {"a peer's flux", [&] { window_.Commands().SetSpaceWeather("99", ""); }},
      {"hour",
       [&] { clock_.now += std::chrono::hours(1), window_.Timer_Tick(WindowTimer::kClockTimer); }},
      {"band settings", [&] { configuration_.SetFreqDependentEnabled(true); }},
      {"antenna",
       [&] {
         configuration_.SetAntenna(Station::kLocal, {"", "3", ""});
       }},
  };
  for (const auto& [what, change] : changes) {
    point_prediction_.looks = 0;
    change();
    EXPECT_GT(point_prediction_.looks, 0) << what;
  }
  point_prediction_.looks = 0;
  window_.Timer_Tick(WindowTimer::kClockTimer);
  EXPECT_EQ(point_prediction_.looks, 0) << "the hour is the same";
  window_.SetSNRDisplayActive(true);
  peers_.kilohertz = 21074;
  point_prediction_.outdated = true;
  Type(TextField::kLocalPwr, "8");
  EXPECT_EQ(point_prediction_.predicted, 21.074);
}

TEST_F(IonCapPeersTest, LinksAndTimersReachTheirParts) {
  Start();
  events_.clear();
  peers_.history = true;
  window_.Peers().LinksChanged();
  EXPECT_TRUE(view_.Enabled(Button::kHistoryCmd));
  window_.Timer_Tick(WindowTimer::kServerRetryTimer);
  window_.Timer_Tick(WindowTimer::kPeerValuesTimer);
  window_.Commands().ResetWindows(0);
  EXPECT_EQ(events_, (Events{"peers change", "retry", "values", "reset windows"}));
}

}  // namespace
}  // namespace skyhop::testing
