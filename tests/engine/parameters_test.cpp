#include "engine/parameters.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/program.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::PredictionFixture;

class ParametersTest : public ::testing::Test {
 protected:
  ParametersTest() { with_.SetTransatlantic(); }

  void Store(const std::string& key, const std::string& value) {
    with_.store.SaveSetting(kProductName, "Configuration", key, value);
  }

  void StoreTessera(const std::string& key, const std::string& value) {
    with_.store.SaveSetting("Tessera", "QTH", key, value);
  }

  std::string Saved(const std::string& key) {
    return with_.store.Read(kProductName, "Configuration", key, "(nothing)");
  }

  PredictionFixture with_;
  Parameters& parameters_ = with_.parameters;
};

TEST_F(ParametersTest, ValidationStopsAtTheFirstFailureWithItsMessages) {
  using Texts = std::vector<std::string>;
  const auto text = [this](PanelText field, const char* value) {
    return [this, field, value] { with_.panel.SetText(field, value); };
  };
  const auto power = [this](const char* value) {
    return [this, value] { parameters_.SetPredictionPower(value); };
  };
  const auto snr = [this](const char* value) {
    return [this, value] { parameters_.SetPredictionSNR(value); };
  };
  const auto takeoff = [this](const char* value) {
    return [this, value] { parameters_.SetPredictionTakeoff(value); };
  };
  const auto date = [this](const char* value) {
    return [this, value] { parameters_.SetDate(value); };
  };
  const Texts flux_range = {"Illegal solar flux", "Illegal Solar Flux"};
  const Texts k_range = {"Illegal geomagnetic K-index", "Illegal Geomagnetic K-index"};
  const Texts takeoff_range = {"Illegal transmitter takeoff angle",
                               "Illegal Transmitter TakeOff Angle"};
  const struct {
    std::function<void()> change;
    Texts messages;
  } cases[] = {
      {[] {}, {}},
      {date("31-Feb-26"), {"Illegal Date"}},
      {date(""), {"Illegal Date"}},
      {date("2026-11-15"), {}},
      {text(PanelText::kFlux, "  "), {"Illegal Solar Flux and SSN"}},
      {text(PanelText::kFlux, "63"), flux_range},
      {text(PanelText::kFlux, "64"), {}},
      {text(PanelText::kFlux, "400"), {}},
      {text(PanelText::kFlux, "400.1"), flux_range},
      {text(PanelText::kFlux, "flux"), flux_range},
      {text(PanelText::kKindex, " "), {"No Geomagnetic K-index specified"}},
      {text(PanelText::kKindex, "20"), {}},
      {text(PanelText::kKindex, "21"), k_range},
      {text(PanelText::kKindex, "-1"), k_range},
      {power(""), {"No Transmitter Power specified"}},
      {power("-0.1"), {"Illegal Transmitter power", "Illegal Transmitter Power"}},
      {power("watts"), {}},
      {snr(""), {"No SNR specified"}},
      {snr("-30"), {}},
      {snr("-30.5"), {"Illegal SNR", "Illegal SNR"}},
      {snr("99.9"), {}},
      {snr("100"), {"Illegal SNR", "Illegal SNR"}},
      {text(PanelText::kAvail, ""), {"No Availability specified"}},
      {text(PanelText::kAvail, "0"), {}},
      {text(PanelText::kAvail, "99.9"), {}},
      {text(PanelText::kAvail, "100"), {"Illegal Availability", "Illegal Availability"}},
      {takeoff(" "), {"No Transmitter TakeOff Angle specified"}},
      {takeoff("90"), {}},
      {takeoff("90.5"), takeoff_range},
      {takeoff("-1"), takeoff_range},
  };
  for (const auto& [change, messages] : cases) {
    with_.SetTransatlantic();
    with_.panel.SetText(PanelText::kFlux, "150");
    with_.panel.SetText(PanelText::kSSN, "");
    with_.panel.SetText(PanelText::kKindex, "1");
    with_.panel.SetText(PanelText::kAvail, "10");
    with_.messages.shown.clear();
    with_.panel.restored = 0;
    change();
    EXPECT_EQ(parameters_.PredictionParametersValid(), messages.empty());
    EXPECT_EQ(with_.messages.Texts(), messages);
    EXPECT_EQ(with_.panel.restored, messages.empty() ? 0 : 1);
  }
}

TEST_F(ParametersTest, ASunspotNumberStandsInForTheFlux) {
  with_.panel.SetText(PanelText::kFlux, " ");
  with_.panel.SetText(PanelText::kSSN, "120");
  with_.panel.SetText(PanelText::kKindex, "");
  EXPECT_FALSE(parameters_.PredictionParametersValid());
  EXPECT_EQ(with_.messages.Texts(), std::vector<std::string>{"No Geomagnetic K-index specified"});
}

TEST_F(ParametersTest, MessagesCarryTheProductsNameAndReachTheLog) {
  parameters_.SetDate("soon");
  EXPECT_FALSE(parameters_.PredictionParametersValid());
  EXPECT_EQ(with_.messages.shown.at(0).second, "Skyhop");
  EXPECT_EQ(with_.log.debug.back(), "IONCAPModule.ParameterError: Illegal Date");
}

TEST_F(ParametersTest, AForeignSnrIsClamped) {
  const std::pair<const char*, const char*> cases[] = {
      {"150", "99"}, {"100", "99"}, {"-40", "-30"}, {"-30", "-30"}, {"99.9", "99.9"}, {"x", "x"}};
  for (const auto& [given, expected] : cases) {
    EXPECT_EQ(Parameters::ValidatedSNR(given), expected);
  }
}

TEST_F(ParametersTest, LocationsAreWrittenBackIntoTheFieldOfTheirStation) {
  const struct {
    int direction;
    PanelText receiver;
    PanelText transmitter;
  } cases[] = {
      {direction_option::kToTheDXStation, PanelText::kDXLat, PanelText::kLocalLat},
      {direction_option::kFromTheDXStation, PanelText::kLocalLat, PanelText::kDXLat},
  };
  for (const auto& [direction, receiver, transmitter] : cases) {
    with_.panel.SetChoice(PanelChoice::kPredictSignals, direction);
    with_.panel.station_changes = 0;
    parameters_.SetReceiverLatitude("10N");
    parameters_.SetTransmitterLatitude("20 30'S");
    EXPECT_EQ(with_.panel.Text(receiver), "10 0' 0\" N");
    EXPECT_EQ(with_.panel.Text(transmitter), "20 30' 0\" S");
    EXPECT_EQ(with_.panel.station_changes, 2);
  }
}

TEST_F(ParametersTest, AnUnreadableLocationIsStoredButNotWrittenBack) {
  with_.panel.SetText(PanelText::kDXLon, "as typed");
  with_.panel.station_changes = 0;
  parameters_.SetReceiverLongitude("nowhere");
  EXPECT_EQ(with_.panel.Text(PanelText::kDXLon), "as typed");
  EXPECT_EQ(with_.panel.station_changes, 0);
  EXPECT_TRUE(LatLonModule::IsUndefined(parameters_.GetReceiverLocation().longitude));
}

TEST_F(ParametersTest, SettersLogWhatTheyWereGiven) {
  with_.log.debug.clear();
  parameters_.SetPredictionPower("5");
  parameters_.SetPredictionSNR("10");
  parameters_.SetPredictionTakeoff("7");
  parameters_.SetPredictionNoise(3);
  parameters_.SetLastPrefix("G&M");
  parameters_.SetPrefix();
  EXPECT_EQ(with_.log.debug,
            (std::vector<std::string>{"IONCAPModule.SetPredictionPower, thePower = 5",
                                      "IONCAPModule.SetPredictionSNR, theSNR = 10",
                                      "IONCAPModule.SetPredictionTakeoff, theTakeoff = 7",
                                      "IONCAPModule.SetPredictionNoise, theNoise = 3",
                                      "IONCAPModule.SetPrefix: G&M"}));
  EXPECT_EQ(with_.panel.Text(PanelText::kLastPrefix), "G&&M");
  EXPECT_EQ(parameters_.Prefix(), "G&M");
}

TEST_F(ParametersTest, UnselectedOptionsHaveTheirOwnFallbacks) {
  with_.panel.SetChoice(PanelChoice::kDXPwr, 4);
  EXPECT_EQ(parameters_.DXPower(), "1500");
  for (const PanelChoice choice :
       {PanelChoice::kDXPwr, PanelChoice::kLocalNoiseLevel, PanelChoice::kDXNoiseLevel}) {
    with_.panel.SetChoice(choice, -1);
  }
  EXPECT_EQ(parameters_.DXPower(), "100");
  EXPECT_EQ(parameters_.LocalNoiseIndex(), 3);
  EXPECT_EQ(parameters_.DXNoiseIndex(), 2);
}

TEST_F(ParametersTest, AFreshInstallationHasTheDocumentedDefaults) {
  parameters_.Initialize();
  const std::pair<PanelText, const char*> texts[] = {
      {PanelText::kFlux, "100"},      {PanelText::kSSN, ""},      {PanelText::kKindex, "1"},
      {PanelText::kAvail, "10"},      {PanelText::kSNR, "24"},    {PanelText::kLocalTakeOff, "3"},
      {PanelText::kLocalPwr, "1500"}, {PanelText::kLocalLat, ""}, {PanelText::kLocalLon, ""}};
  for (const auto& [text, expected] : texts) EXPECT_EQ(with_.panel.Text(text), expected);
  EXPECT_EQ(with_.panel.Choice(PanelChoice::kDXPwr), 2);
  EXPECT_EQ(with_.panel.Choice(PanelChoice::kDXNoiseLevel), 2);
  EXPECT_EQ(with_.panel.Choice(PanelChoice::kLocalNoiseLevel), 2);
  EXPECT_EQ(with_.panel.Choice(PanelChoice::kPredictSignals), 1);
  EXPECT_EQ(with_.panel.Choice(PanelChoice::kModeSNRCombo), -1);
  EXPECT_TRUE(with_.panel.Checked(PanelCheck::kOpenBandEnable));
  EXPECT_TRUE(with_.panel.Checked(PanelCheck::kPlotEnable));
  EXPECT_TRUE(with_.panel.Checked(PanelCheck::kDXTracksTesseraLocation));
}

TEST_F(ParametersTest, StoredOptionsAreReadWithTheirOldMeanings) {
  const struct {
    const char* key;
    PanelChoice choice;
    const char* stored;
    int expected;
  } cases[] = {
      {"NoiseLevel", PanelChoice::kDXNoiseLevel, "0", 1},
      {"NoiseLevel", PanelChoice::kDXNoiseLevel, "1", 1},
      {"NoiseLevel", PanelChoice::kDXNoiseLevel, "2", 2},
      {"NoiseLevel", PanelChoice::kDXNoiseLevel, "3", 2},
      {"LcoalNoiseLevel", PanelChoice::kLocalNoiseLevel, "3", 3},
      {"LcoalNoiseLevel", PanelChoice::kLocalNoiseLevel, "0", 0},
      {"LcoalNoiseLevel", PanelChoice::kLocalNoiseLevel, "4", 2},
      {"DXPower", PanelChoice::kDXPwr, "-1", 2},
      {"DXPower", PanelChoice::kDXPwr, "letters", 2},
      {"PredictSignals", PanelChoice::kPredictSignals, "0", 0},
      {"SNRMode", PanelChoice::kModeSNRCombo, "4", 4},
      {"SNRMode", PanelChoice::kModeSNRCombo, "-1.0", -1},
      {"SNRMode", PanelChoice::kModeSNRCombo, "40000", -1},
      {"SNRMode", PanelChoice::kModeSNRCombo, "CW", -1},
  };
  for (const auto& [key, choice, stored, expected] : cases) {
    Store(key, stored);
    parameters_.Initialize();
    EXPECT_EQ(with_.panel.Choice(choice), expected) << key << " = " << stored;
  }
}

TEST_F(ParametersTest, TheFormerEnthusiastsPageIsReplacedAtOnce) {
  Store("URL1", "http://www.swpc.noaa.gov/communities/space-weather-enthusiasts");
  parameters_.Initialize();
  const std::string secure = "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts";
  EXPECT_EQ(with_.panel.Text(PanelText::kURL1), secure);
  EXPECT_EQ(Saved("URL1"), secure);
}

TEST_F(ParametersTest, OneBadValueDoesNotCostTheOthers) {
  Store("URL1", "http://www.swpc.noaa.gov/communities/space-weather-enthusiasts");
  Store("DXTracksTessera", "perhaps");
  Store("SFI", "200");
  Store("XLat", "1 2' 3\" S");
  with_.store.save_error = 70;
  parameters_.Initialize();
  EXPECT_EQ(with_.panel.Text(PanelText::kFlux), "200");
  EXPECT_EQ(with_.panel.Text(PanelText::kLocalLat), "1 2' 3\" S");
  EXPECT_NE(with_.panel.Text(PanelText::kURL2), "");
  EXPECT_TRUE(with_.panel.Checked(PanelCheck::kDXTracksTesseraLocation));
  EXPECT_EQ(with_.log.errors.size(), 1U);
}

TEST_F(ParametersTest, WhatWasSavedIsRestored) {
  parameters_.Initialize();
  with_.panel.SetText(PanelText::kFlux, "170");
  with_.panel.SetText(PanelText::kSNR, "13");
  with_.panel.SetText(PanelText::kLocalPwr, "5");
  with_.panel.SetText(PanelText::kLocalLat, "40 30' 0\" N");
  with_.panel.SetText(PanelText::kLocalLon, "74 15' 0\" W");
  with_.panel.SetText(PanelText::kURL3, "https://example.org/&?=%20#x");
  with_.panel.SetChecked(PanelCheck::kPlotEnable, false);
  with_.panel.SetChoice(PanelChoice::kLocalNoiseLevel, 0);
  with_.panel.SetChoice(PanelChoice::kPredictSignals, 0);
  parameters_.Finalize();

  PredictionFixture other;
  other.store.values = with_.store.values;
  other.parameters.Initialize();
  for (const PanelText text : {PanelText::kFlux, PanelText::kSNR, PanelText::kLocalPwr,
                               PanelText::kLocalLat, PanelText::kLocalLon, PanelText::kURL3}) {
    EXPECT_EQ(other.panel.Text(text), with_.panel.Text(text));
  }
  EXPECT_EQ(other.parameters.Power(), "5");
  EXPECT_EQ(other.parameters.Snr(), "13");
  EXPECT_FALSE(other.panel.Checked(PanelCheck::kPlotEnable));
  EXPECT_TRUE(other.panel.Checked(PanelCheck::kOpenBandEnable));
  EXPECT_EQ(other.panel.Choice(PanelChoice::kLocalNoiseLevel), 0);
  EXPECT_EQ(other.panel.Choice(PanelChoice::kPredictSignals), 0);
}

TEST_F(ParametersTest, AChosenModeKeepsTheUsersOwnSnrInTheSettings) {
  Store("SNR", "13");
  with_.panel.SetChoice(PanelChoice::kModeSNRCombo, 2);
  with_.panel.SetText(PanelText::kSNR, "45");
  parameters_.Finalize();
  EXPECT_EQ(Saved("SNR"), "13");
  EXPECT_EQ(Saved("SNRMode"), "2");
}

TEST_F(ParametersTest, AFailingStoreIsReportedAndSavesNothing) {
  with_.store.save_error = 70;
  parameters_.Finalize();
  EXPECT_EQ(with_.log.errors,
            std::vector<std::string>{
                "program error 70 in module IONCAPModule.Finalize: the store fails"});
  EXPECT_TRUE(with_.store.values.empty());
}

TEST_F(ParametersTest, TheStationComesFromTheLocationApplication) {
  const struct {
    std::vector<std::pair<const char*, const char*>> stored;
    const char* latitude;
    const char* longitude;
  } cases[] = {
      {{{"LatDeg", "-33"}, {"LatMin", "75"}, {"LonDeg", "18"}, {"LonMin", "25"}},
       "33 0' 0\" N",
       "18 25' 0\" E"},
      {{{"LatDeg", "51"}, {"LatSign", "-1"}, {"LonDeg", "0"}, {"LonSec", "61"}},
       "51 0' 0\" N",
       "0 0' 0\" E"},
      {{{"LatDeg", "90"}, {"LatMin", "1"}, {"LonDeg", "180"}, {"LonSec", "1"}},
       "0 1' 0\" S",
       "0 0' 1\" E"},
      {{{"LatDeg", "north"}, {"LatMin", "30"}}, "0 30' 0\" S", "0 0' 0\" E"},
  };
  for (const auto& [stored, latitude, longitude] : cases) {
    with_.store.values.clear();
    for (const auto& [key, value] : stored) StoreTessera(key, value);
    parameters_.LocateQTH();
    EXPECT_EQ(with_.panel.Text(PanelText::kLocalLat), latitude);
    EXPECT_EQ(with_.panel.Text(PanelText::kLocalLon), longitude);
  }
}

TEST_F(ParametersTest, WithoutTheLocationApplicationTheOwnSettingsCount) {
  Store("XLat", "1 2' 3\" S");
  Store("Xlon", "4 5' 6\" W");
  parameters_.LocateQTH();
  EXPECT_EQ(with_.panel.Text(PanelText::kLocalLat), "1 2' 3\" S");
  EXPECT_EQ(with_.panel.Text(PanelText::kLocalLon), "4 5' 6\" W");
}

}  // namespace
}  // namespace skyhop::IONCAPModule
