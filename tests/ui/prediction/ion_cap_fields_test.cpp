#include "ion_cap_fixture.h"

namespace skyhop::testing {
namespace {

constexpr TextField kAllFields[] = {
    TextField::kLocalLat,     TextField::kLocalLon, TextField::kLocalGrid, TextField::kLocalPwr,
    TextField::kLocalTakeOff, TextField::kDXLat,    TextField::kDXLon,     TextField::kDXGrid,
    TextField::kFlux,         TextField::kKindex,   TextField::kSSN,       TextField::kAvail,
    TextField::kSNR,          TextField::kTheDate};

TEST(IonCapKeys, EachFieldTakesItsOwnCharacters) {
  const std::string number = "0123456789";
  const std::string upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const std::string letters = upper + LowerCase(upper);
  const struct {
    TextField field;
    std::string accepted;
  } cases[] = {
      {TextField::kLocalPwr, number},
      {TextField::kLocalTakeOff, number},
      {TextField::kFlux, number},
      {TextField::kKindex, number},
      {TextField::kAvail, number},
      {TextField::kSNR, number + "-"},
      {TextField::kSSN, number + "."},
      {TextField::kLocalLat, number + ". '\",-+\xB0\xBANSns"},
      {TextField::kDXLat, number + ". '\",-+\xB0\xBANSns"},
      {TextField::kLocalLon, number + ". '\",-+\xB0\xBA"
                                      "EWew"},
      {TextField::kDXLon, number + ". '\",-+\xB0\xBA"
                                   "EWew"},
      {TextField::kLocalGrid, number + letters},
      {TextField::kDXGrid, number + letters},
      {TextField::kTheDate, number + letters + "- "},
  };
  for (const auto& [field, accepted] : cases) {
    for (char32_t key = ' '; key < 0x180; ++key) {
      const bool expected = key == 0x7F || (key < 0x100 && accepted.find(static_cast<char>(key)) !=
                                                               std::string::npos);
      EXPECT_EQ(AcceptsKey(field, key), expected)
          << Caption(field) << " and " << static_cast<unsigned>(key);
    }
  }
  for (const TextField field : kAllFields) {
    for (const char32_t key : {U'\b', U'\t', U'\r', U'\x16'}) {
      EXPECT_TRUE(AcceptsKey(field, key));
    }
  }
}

TEST_F(IonCapTest, RefusesWhatIsOutOfRangeWhenAFieldIsLeft) {
  Start();
  const struct {
    TextField field;
    std::vector<const char*> refused;
    const char* message;
    std::vector<const char*> accepted;
  } cases[] = {
      {TextField::kLocalLat,
       {"91 0' 0\" N", "90 0' 1\" N", "51 30", "51 E", "-5 N", "51 60' 0\" N"},
       "Illegal latitude",
       {"90 0' 0\" S", ""}},
      {TextField::kDXLat, {"5 5' W"}, "Illegal latitude", {"5 5' S"}},
      {TextField::kLocalLon,
       {"181 0' 0\" W", "180 0' 1\" W", "30 N"},
       "Illegal longitude",
       {"180 0' 0\" W", " "}},
      {TextField::kDXLon, {"x W"}, "Illegal longitude", {"71 30' 0\" W"}},
      {TextField::kLocalGrid,
       {"FN4", "SA00", "FN42a"},
       "Illegal grid square",
       {"fn42AB", " jn58 "}},
      {TextField::kDXGrid, {"12AB"}, "Illegal grid square", {"RR99", ""}},
      {TextField::kLocalPwr, {"-1", "watts"}, "Illegal Local Power", {"0", "100000", "12w", ""}},
      {TextField::kLocalTakeOff, {"90.5", "-1", "low"}, "Illegal local takeoff angle", {"0", "90"}},
      {TextField::kFlux, {"63", "400.1", "x"}, "Illegal solar flux", {"64", "400", ""}},
      {TextField::kKindex, {"21", "-1"}, "Illegal geomagnetic K-index", {"20", "0"}},
      {TextField::kAvail, {"100", "-1"}, "Illegal Availability", {"99.9", "0"}},
      {TextField::kSNR, {"100", "-30.5", "dB"}, "Illegal SNR", {"99.9", "-30"}},
      {TextField::kSSN, {"-1", "many"}, "Illegal SSN", {"0", "120.5", ""}},
      {TextField::kSSN, {"1000"}, "The engines cannot take a sunspot number above 999", {"999"}},
      {TextField::kLocalPwr, {"999991"}, "The engines cannot take more than 999990 W", {"999990"}},
      {TextField::kTheDate, {"31-Feb-26", "", "today"}, "Illegal date", {"1-jan-27"}},
  };
  errors_expected_ = true;  // the parser of coordinates reports what is no number
  for (const auto& [field, refused, message, accepted] : cases) {
    for (const char* text : refused) {
      messages_.shown.clear();
      EXPECT_FALSE(Type(field, text)) << text;
      EXPECT_EQ(messages_.shown, (decltype(messages_.shown){{message, "Skyhop"}})) << text;
      EXPECT_TRUE(view_.Marked(field));
      EXPECT_EQ(view_.Text(field), text);
      EXPECT_TRUE(window_.Field_Leave(field));
      EXPECT_EQ(messages_.shown.size(), 1U) << "told twice";
    }
    messages_.shown.clear();
    for (const char* text : accepted) {
      EXPECT_TRUE(Type(field, text)) << text;
      EXPECT_FALSE(view_.Marked(field));
    }
    EXPECT_TRUE(messages_.shown.empty());
  }
}

TEST_F(IonCapTest, TheSameBadTextTypedAgainIsToldAgain) {
  Start();
  EXPECT_FALSE(Type(TextField::kFlux, "9"));
  EXPECT_FALSE(Type(TextField::kFlux, "9"));
  EXPECT_EQ(messages_.shown.size(), 2U);
}

TEST_F(IonCapTest, ACommandAsksForRefusedTextsToBeMended) {
  Start();
  EXPECT_TRUE(Accepted());
  // Typed and not left yet.
  view_.SetText(TextField::kDXGrid, "12AB");
  EXPECT_FALSE(Accepted());
  EXPECT_FALSE(Accepted());
  EXPECT_EQ(messages_.Texts(),
            (std::vector<std::string>{"Illegal grid square", "Illegal grid square"}));
  Type(TextField::kDXGrid, "IO91");
  EXPECT_TRUE(Accepted());
  messages_.shown.clear();
  // The prediction itself reports these, but would take letters for 0.
  Type(TextField::kSNR, "150");
  Type(TextField::kDXLat, "91 N");
  messages_.shown.clear();
  EXPECT_TRUE(Accepted());
  EXPECT_TRUE(view_.Marked(TextField::kDXLat));
  Type(TextField::kSNR, "dB");
  messages_.shown.clear();
  EXPECT_FALSE(Accepted());
  EXPECT_EQ(messages_.Texts(), std::vector<std::string>{"Illegal SNR"});
}

TEST_F(IonCapTest, TypedCoordinatesAreRewrittenToWhatWasUnderstood) {
  Start();
  const struct {
    TextField field;
    const char* typed;
    const char* shown;
  } cases[] = {
      {TextField::kDXLat, "33S54", "33 54' 0\" S"},
      {TextField::kDXLat, "-33.9", "33 54' 0\" S"},
      {TextField::kDXLat, "33\u00B054'S", "33 54' 0\" S"},
      {TextField::kDXLat, "40 30 N", "40 30' 0\" N"},
      {TextField::kDXLon, "W071 30.0", "71 30' 0\" W"},
      {TextField::kLocalLon, "18,4 e", "18 24' 0\" E"},
  };
  for (const auto& [field, typed, shown] : cases) {
    EXPECT_TRUE(Type(field, typed)) << typed;
    EXPECT_EQ(view_.Text(field), shown) << typed;
  }
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "FN40gm");
  EXPECT_FALSE(Type(TextField::kDXLat, "33 54"));
  EXPECT_EQ(view_.Text(TextField::kDXLat), "33 54");
  EXPECT_EQ(view_.status, "Write it like 33 54' 0\" S, 33.9 S or -33.9");
  // Predict takes what was typed and not left yet.
  view_.SetText(TextField::kDXLat, "51.5 N");
  EXPECT_TRUE(Accepted());
  EXPECT_EQ(view_.Text(TextField::kDXLat), "51 30' 0\" N");
}

TEST_F(IonCapTest, StationsAreSavedWhenTheyAreCommittedAndComeBack) {
  Start();
  view_.SetText(TextField::kLocalGrid, "FN20");
  window_.Field_Enter(TextField::kLocalGrid);
  view_.SetText(TextField::kDXGrid, "JJ00");
  window_.Field_Enter(TextField::kDXGrid);
  EXPECT_EQ(Stored("XGrid"), "FN20");
  EXPECT_EQ(Stored("DXGrid"), "JJ00");
  EXPECT_EQ(Stored("Xlon"), view_.Text(TextField::kLocalLon));
  Choose(OptionGroup::kPath, path_option::kLong);
  window_.Form_Unload();
  for (const TextField field : {TextField::kDXLat, TextField::kDXLon, TextField::kDXGrid,
                                TextField::kLocalGrid, TextField::kLocalLat}) {
    view_.SetText(field, "");
  }
  ASSERT_TRUE(window_.Form_Load());
  EXPECT_EQ(view_.Text(TextField::kLocalGrid), "FN20");
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "JJ00");
  EXPECT_EQ(view_.Text(TextField::kDXLat), "0 30' 0\" S");
  EXPECT_EQ(view_.Selected(OptionGroup::kPath), path_option::kLong);
}

TEST_F(IonCapTest, OnlyGoodValuesAreSavedAtTheEnd) {
  Start();
  Type(TextField::kSNR, "20");
  Type(TextField::kSNR, "150");
  view_.SetText(TextField::kAvail, "80");  // typed and not left yet
  view_.SetText(TextField::kFlux, "1");
  window_.Form_Unload();
  EXPECT_EQ(settings_.GetStringSetting("Skyhop", "Configuration", "SNR", ""), "20");
  EXPECT_EQ(settings_.GetStringSetting("Skyhop", "Configuration", "Availability", ""), "80");
  EXPECT_NE(view_.Text(TextField::kFlux), "1");
}

TEST_F(IonCapTest, AStoredTextThatIsRefusedIsMarked) {
  settings_.Store().SaveSetting("Skyhop", "Configuration", "Availability", "103");
  Start();
  EXPECT_TRUE(view_.Marked(TextField::kAvail));
  EXPECT_TRUE(Type(TextField::kAvail, "90"));
  EXPECT_FALSE(view_.Marked(TextField::kAvail));
}

TEST_F(IonCapTest, AnSnrOfTheUsersOwnEndsTheChoiceOfAMode) {
  Start();
  Choose(OptionGroup::kModeSNRCombo, 0);
  EXPECT_EQ(view_.Text(TextField::kSNR), "24");
  window_.Field_Leave(TextField::kSNR);
  EXPECT_EQ(view_.Selected(OptionGroup::kModeSNRCombo), 0);
  Type(TextField::kSNR, "30");
  EXPECT_EQ(view_.Selected(OptionGroup::kModeSNRCombo), -1);
  EXPECT_EQ(parameters_.Set().snr, "30");
}

TEST_F(IonCapTest, OptionsPassTheirChoiceAtOnce) {
  Start();
  Choose(OptionGroup::kDXPwr, 3);
  EXPECT_EQ(parameters_.Set().power, "500");
  Choose(OptionGroup::kDXNoiseLevel, 1);
  EXPECT_EQ(parameters_.Set().noise, 1);
  Choose(OptionGroup::kLocalNoiseLevel, 0);
  EXPECT_EQ(parameters_.Set().noise, 0);
  EXPECT_EQ(view_.Shown(Label::kConditions),
            "Your station transmits 1500 W; the DX station listens in residential noise");
  Choose(OptionGroup::kPredictSignals, 0);
  EXPECT_EQ(view_.Shown(Label::kConditions),
            "The DX station transmits 500 W; your station listens in industrial noise");
}

TEST_F(IonCapTest, EnterInAGridSquareMovesTheStationThere) {
  Start();
  parameters_.SetLastPrefix("G");
  parameters_.SetPrefix();
  view_.SetText(TextField::kLocalGrid, "fn42");
  window_.Field_Enter(TextField::kLocalGrid);
  EXPECT_EQ(view_.Text(TextField::kLocalGrid), "FN42");
  EXPECT_EQ(view_.Text(TextField::kLocalLat), "42 30' 0\" N");
  EXPECT_EQ(view_.Text(TextField::kLocalLon), "71 0' 0\" W");
  EXPECT_EQ(parameters_.Set().prefix, "G");
  view_.SetText(TextField::kDXGrid, " jn58TD");
  window_.Field_Enter(TextField::kDXGrid);
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "JN58td");
  EXPECT_EQ(view_.Text(TextField::kDXLat), "48 8' 45\" N");
  EXPECT_EQ(view_.Text(TextField::kDXLon), "11 37' 30\" E");
  // The country that was looked up for the place before is not this one's.
  EXPECT_EQ(parameters_.Set().prefix, "");
  EXPECT_EQ(view_.Shown(Label::kPrefix), "");
  // Enter does it again even when the text has not changed.
  view_.SetText(TextField::kDXLat, "");
  window_.Field_Enter(TextField::kDXGrid);
  EXPECT_EQ(view_.Text(TextField::kDXLat), "48 8' 45\" N");
}

TEST_F(IonCapTest, CoordinatesBringTheirGridSquare) {
  Start();
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "IO91wm");
  view_.SetText(TextField::kDXLat, "48 8' 45\" N");
  window_.Field_Enter(TextField::kDXLat);
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "IN98wd");
  // Half a position has no square, and its bearings are not known.
  Type(TextField::kDXLon, "");
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "");
  EXPECT_EQ(view_.Shown(Label::kBearingFromQTH), "");
  EXPECT_EQ(view_.Shown(Label::kDistance), "");
  // A refused coordinate leaves everything as it was.
  Type(TextField::kDXLon, "11 37' 30\" E");
  Type(TextField::kDXLat, "95 N");
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "JN58td");
}

TEST_F(IonCapTest, BearingsAndDistanceFollowStationsPathAndUnit) {
  Start();
  EXPECT_EQ(view_.Shown(Label::kBearingFromQTH), "SP 51° / LP 231°");
  EXPECT_EQ(view_.Shown(Label::kBearingFromDX), "SP 288° / LP 108°");
  EXPECT_EQ(view_.Shown(Label::kDistance), "3480 miles");
  configuration_.SetDistanceMiles(false);
  EXPECT_EQ(view_.Shown(Label::kDistance), "5602 km");
  Choose(OptionGroup::kPath, path_option::kLong);
  EXPECT_EQ(view_.Shown(Label::kDistance), "34473 km");
  // The parameter set moves the DX station, which receives.
  parameters_.SetReceiverLatitude("48 8' 45\" N");
  parameters_.SetReceiverLongitude("11 37' 30\" E");
  EXPECT_EQ(view_.Text(TextField::kDXGrid), "JN58td");
  EXPECT_NE(view_.Shown(Label::kDistance), "34473 km");
  parameters_.SetLastPrefix("DL");
  window_.Field_Leave(TextField::kDXLat);
  EXPECT_EQ(view_.Shown(Label::kPrefix), "DL")
      << "leaving a field that a peer filled changes nothing";
}

TEST_F(IonCapTest, TheDateFollowsTheClockWhileTheTimeDoes) {
  Start();
  clock_.now += std::chrono::hours{11};
  window_.Timer_Tick(WindowTimer::kClockTimer);
  EXPECT_EQ(view_.Text(TextField::kTheDate), "16-Nov-26");
  EXPECT_NEAR(chart_.TimeIndex(), 5 / 60.0, 0.05);
  EXPECT_EQ(view_.Shown(Label::kClock), "00:05 UTC");

  // A date of the user's own is not overwritten.
  Type(TextField::kTheDate, "1-Mar-27");
  EXPECT_FALSE(view_.Checked(CheckBox::kShowCurrentTimeCheck));
  clock_.now += std::chrono::hours{3};
  window_.Timer_Tick(WindowTimer::kClockTimer);
  EXPECT_EQ(view_.Text(TextField::kTheDate), "1-Mar-27");
  EXPECT_NEAR(chart_.TimeIndex(), 5 / 60.0, 0.05);
  EXPECT_EQ(view_.Shown(Label::kClock), "03:05 UTC");

  Check(CheckBox::kShowCurrentTimeCheck, false);
  EXPECT_NEAR(chart_.TimeIndex(), 3 + 5 / 60.0, 0.05);
  EXPECT_EQ(view_.Text(TextField::kTheDate), "1-Mar-27");
  EXPECT_EQ(Stored("ShowCurrentTime"), "False");
  Check(CheckBox::kShowCurrentTimeCheck, true);
  EXPECT_EQ(view_.Text(TextField::kTheDate), "16-Nov-26");
  EXPECT_EQ(Stored("ShowCurrentTime"), "True");
}

TEST_F(IonCapTest, ATimeIndexMovedByTheUserStaysThere) {
  Start();
  chart_.StepTimeIndex(2);
  EXPECT_FALSE(view_.Checked(CheckBox::kShowCurrentTimeCheck));
  const double moved = chart_.TimeIndex();
  clock_.now += std::chrono::hours{1};
  window_.Timer_Tick(WindowTimer::kClockTimer);
  EXPECT_EQ(chart_.TimeIndex(), moved);
}

TEST_F(IonCapTest, ADoubleClickBringsTodaysDate) {
  Start();
  Type(TextField::kTheDate, "nonsense");
  window_.TheDate_DblClick();
  EXPECT_EQ(view_.Text(TextField::kTheDate), "15-Nov-26");
  EXPECT_FALSE(view_.Marked(TextField::kTheDate));
}

TEST_F(IonCapTest, TheSolarBarsAreThoseOfTheDate) {
  Start();
  // In the far north the sun does not rise in November and does not set in June.
  const auto tip = [&] {
    const Rectangle bars = chart_.Layout().xmit_sun;
    return ToolTipAt(chart_.Model(), chart_.Layout(), {bars.left + 5, bars.top + 2});
  };
  Type(TextField::kLocalGrid, "JQ78");
  Type(TextField::kTheDate, "16-Nov-26");
  const std::string winter = tip();
  Type(TextField::kTheDate, "21-Jun-27");
  EXPECT_NE(tip(), "");
  EXPECT_NE(tip(), winter);
}

TEST_F(IonCapTest, ChartOptionsAreSavedAndReachTheChart) {
  Start();
  Check(CheckBox::kShowColorKeyCheck, false);
  EXPECT_EQ(Stored("ShowColorKey"), "False");
  Check(CheckBox::kShowColorKeyCheck, true);
  EXPECT_EQ(Stored("ShowColorKey"), "True");
}

// A letter that two share presses neither: the focus goes from one to the other.
TEST(IonCapControls, NoTwoShortcutsAreTheSame) {
  std::string used = "fervwoh";  // the menus
  const auto add = [&](std::string_view caption) {
    const std::size_t mark = caption.find('&');
    if (mark == std::string_view::npos) return;
    const char letter = LowerCase(caption.at(mark + 1));
    EXPECT_EQ(used.find(letter), std::string::npos) << caption;
    used += letter;
  };
  for (int box = 0; box < kCheckBoxCount; ++box) add(Caption(static_cast<CheckBox>(box)));
  for (int button = 0; button < kButtonCount; ++button) add(Caption(static_cast<Button>(button)));
  EXPECT_EQ(ToolTip(CheckBox::kShowColorKeyCheck),
            "when checked shows Critial Frequency and Solar Position color keys");
}

TEST_F(IonCapTest, ADownloadedValueTakesThePlaceOfARefusedOne) {
  Start();
  EXPECT_FALSE(Type(TextField::kKindex, "99"));
  EXPECT_TRUE(view_.Marked(TextField::kKindex));
  space_weather_.window->PutDownloaded(TextField::kKindex, "3");
  EXPECT_EQ(view_.Text(TextField::kKindex), "3");
  EXPECT_FALSE(view_.Marked(TextField::kKindex));
  EXPECT_TRUE(window_.Field_Leave(TextField::kKindex));
}

TEST_F(IonCapTest, AClickedBandGivesThePointPredictionItsFrequency) {
  Start();
  window_.PathsButton_Click();
  launcher_.running = {100 + static_cast<ProcessId>(launcher_.starts.size())};
  WriteFile(run_.ResultsFile(), TestData("results/newyork-london-method26.results.txt"));
  window_.Timer_Tick(WindowTimer::kEngineWatch);
  const auto click = [&](std::int16_t band) {
    for (double y = 0; y < 600; ++y) {
      chart_.Press({400, y});
      chart_.Release();
      if (window_.GetPredictionBand() == band) return;
    }
    ADD_FAILURE() << "no place for band " << band;
  };
  EXPECT_EQ(window_.GetPredictionBand(), -1);
  click(5);
  EXPECT_EQ(chart_.Model().band_indicator, 5);
  EXPECT_EQ(view_.Text(TextField::kSNRFrequency), "") << "nobody looks at the point prediction";
  window_.Button_Click(Button::kSNRPredictCmd);
  EXPECT_EQ(view_.Text(TextField::kSNRFrequency), "14.175") << "the middle of the clicked band";
  EXPECT_DOUBLE_EQ(point_prediction_.predicted, 14.175);
  window_.SetSNRDisplayActive(true);
  click(3);
  EXPECT_EQ(view_.Text(TextField::kSNRFrequency), "7.15");
  click(4);
  EXPECT_EQ(view_.Text(TextField::kSNRFrequency), "10.1") << "no edges in the band file";
  EXPECT_TRUE(messages_.shown.empty());
}

}  // namespace
}  // namespace skyhop::testing
