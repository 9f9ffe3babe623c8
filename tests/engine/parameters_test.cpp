#include "engine/parameters.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "common/program.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::PredictionFixture;

/// Keeps what the set shows.
class FakeWindow : public ParametersWindow {
 public:
  void ShowCoordinate(Station station, LatLonModule::Axis axis, const std::string& text) override {
    const bool latitude = axis == LatLonModule::Axis::kLatitude;
    shown.push_back((station == Station::kLocal ? "local " : "DX ") +
                    std::string(latitude ? "latitude " : "longitude ") + text);
  }
  void ShowPrefix(const std::string& text) override { prefix = text; }
  void RestoreWindow() override { ++restored; }

  std::vector<std::string> shown;
  std::string prefix;
  int restored = 0;
};

class ParametersTest : public ::testing::Test {
 protected:
  ParametersTest() {
    with_.Hand();
    parameters_.Attach(&window_);
  }

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
  FakeWindow window_;
};

TEST_F(ParametersTest, ValidationShowsTheMessagesOfTheFirstFault) {
  using Texts = std::vector<std::string>;
  using Form = PredictionForm;
  const Texts flux_range = {"Illegal solar flux", "Illegal Solar Flux"};
  const Texts k_range = {"Illegal geomagnetic K-index", "Illegal Geomagnetic K-index"};
  const Texts takeoff_range = {"Illegal transmitter takeoff angle",
                               "Illegal Transmitter TakeOff Angle"};
  const struct {
    std::string Form::*field;
    const char* text;
    Texts messages;
  } cases[] = {
      {&Form::date, "31-Feb-26", {"Illegal Date"}},
      {&Form::date, "", {"Illegal Date"}},
      {&Form::date, "2026-11-15", {}},
      {&Form::flux, "  ", {"Illegal Solar Flux and SSN"}},
      {&Form::flux, "63", flux_range},
      {&Form::flux, "64", {}},
      {&Form::flux, "400", {}},
      {&Form::flux, "400.1", flux_range},
      {&Form::flux, "flux", flux_range},
      {&Form::k_index, " ", {"No Geomagnetic K-index specified"}},
      {&Form::k_index, "20", {}},
      {&Form::k_index, "21", k_range},
      {&Form::k_index, "-1", k_range},
      {&Form::local_power, "", {"No Transmitter Power specified"}},
      {&Form::local_power, "-0.1", {"Illegal Transmitter power", "Illegal Transmitter Power"}},
      {&Form::local_power, "watts", {}},
      {&Form::snr, "", {"No SNR specified"}},
      {&Form::snr, "-30", {}},
      {&Form::snr, "-30.5", {"Illegal SNR", "Illegal SNR"}},
      {&Form::snr, "99.9", {}},
      {&Form::snr, "100", {"Illegal SNR", "Illegal SNR"}},
      {&Form::availability, "", {"No Availability specified"}},
      {&Form::availability, "0", {}},
      {&Form::availability, "99.9", {}},
      {&Form::availability, "100", {"Illegal Availability", "Illegal Availability"}},
      {&Form::takeoff, " ", {"No Transmitter TakeOff Angle specified"}},
      {&Form::takeoff, "90", {}},
      {&Form::takeoff, "90.5", takeoff_range},
      {&Form::takeoff, "-1", takeoff_range},
  };
  for (const auto& [field, text, messages] : cases) {
    with_.form = skyhop::testing::Transatlantic();
    with_.form.*field = text;
    with_.Hand();
    with_.messages.shown.clear();
    window_.restored = 0;
    EXPECT_EQ(parameters_.PredictionParametersValid(), messages.empty()) << text;
    EXPECT_EQ(with_.messages.Texts(), messages) << text;
    EXPECT_EQ(window_.restored, messages.empty() ? 0 : 1) << text;
  }
}

TEST_F(ParametersTest, SunspotNumberReplacesTheFlux) {
  with_.form.flux = " ";
  with_.form.sunspot_number = "120";
  with_.form.k_index = "";
  EXPECT_EQ(FaultsOf(ParametersOf(with_.form)),
            std::vector<std::string>{"No Geomagnetic K-index specified"});
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

TEST_F(ParametersTest, ShowsCoordinatesInTheFieldsOfTheirStation) {
  with_.form.local_latitude = "20 30'S";
  with_.form.dx_latitude = "10N";
  for (const int direction :
       {direction_option::kToTheDXStation, direction_option::kFromTheDXStation}) {
    with_.form.direction = direction;
    window_.shown.clear();
    with_.Hand();
    ASSERT_EQ(window_.shown.size(), 4U);
    std::sort(window_.shown.begin(), window_.shown.end());
    EXPECT_EQ(window_.shown, (std::vector<std::string>{
                                 "DX latitude 10 0' 0\" N", "DX longitude 0 7' 0\" W",
                                 "local latitude 20 30' 0\" S", "local longitude 74 15' 0\" W"}));
    const bool to = direction == direction_option::kToTheDXStation;
    EXPECT_EQ(parameters_.GetReceiverLocation().latitude.degrees, to ? 10 : 20);
    EXPECT_EQ(parameters_.GetTransmitterLocation().latitude.degrees, to ? 20 : 10);
  }
}

TEST_F(ParametersTest, StoresButDoesNotShowAnUnreadableCoordinate) {
  parameters_.SetReceiverLongitude("nowhere");
  EXPECT_TRUE(window_.shown.empty());
  EXPECT_TRUE(LatLonModule::IsUndefined(parameters_.GetReceiverLocation().longitude));
}

TEST_F(ParametersTest, DirectionGivesTheStationsTheirRoles) {
  with_.form.local_noise = 0;
  with_.form.dx_noise = 3;
  with_.form.local_antenna.gain = "5";
  with_.form.dx_antenna.gain = "7";
  const ParameterSet to = ParametersOf(with_.form);
  EXPECT_EQ(to.power, "1500");
  EXPECT_EQ(to.noise, 3);
  EXPECT_EQ(to.transmitter.latitude.degrees, 40);
  EXPECT_EQ(to.transmitter_antenna.gain, "5");
  with_.form.direction = direction_option::kFromTheDXStation;
  with_.form.path = path_option::kLong;
  const ParameterSet from = ParametersOf(with_.form);
  EXPECT_EQ(from.power, "100");
  EXPECT_EQ(from.noise, 0);
  EXPECT_EQ(from.transmitter.latitude.degrees, 51);
  EXPECT_EQ(from.transmitter_antenna.gain, "7");
  EXPECT_EQ(from.path, "Long Path");
  EXPECT_EQ(from.Local(), to.Local());
  EXPECT_EQ(from.DX(), to.DX());
  with_.form.dx_latitude = "nowhere";
  EXPECT_TRUE(LatLonModule::IsUndefined(ParametersOf(with_.form).DX()));
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
  EXPECT_EQ(window_.prefix, "G&&M");
  EXPECT_EQ(parameters_.Set().prefix, "G&M");
}

TEST_F(ParametersTest, UnselectedOptionsHaveTheirOwnFallbacks) {
  PredictionForm form;
  form.dx_power = 4;
  EXPECT_EQ(DXPower(form), "1500");
  form.dx_power = -1;
  EXPECT_EQ(DXPower(form), "100");
  EXPECT_EQ(LocalNoiseIndex(form), 3);
  EXPECT_EQ(DXNoiseIndex(form), 2);
}

TEST_F(ParametersTest, FreshInstallationHasTheDocumentedDefaults) {
  const PredictionForm form = parameters_.Initialize();
  EXPECT_EQ(form.flux, "100");
  EXPECT_EQ(form.sunspot_number, "");
  EXPECT_EQ(form.k_index, "1");
  EXPECT_EQ(form.availability, "10");
  EXPECT_EQ(form.snr, "24");
  EXPECT_EQ(form.takeoff, "3");
  EXPECT_EQ(form.local_power, "1500");
  EXPECT_EQ(form.local_latitude + form.local_longitude, "");
  EXPECT_EQ(form.dx_power, 2);
  EXPECT_EQ(form.dx_noise, 2);
  EXPECT_EQ(form.local_noise, 2);
  EXPECT_EQ(form.direction, direction_option::kToTheDXStation);
  EXPECT_EQ(form.mode, -1);
  EXPECT_TRUE(form.show_open_bands);
  EXPECT_TRUE(form.show_critical_frequencies);
  EXPECT_TRUE(form.dx_tracks_tessera);
}

TEST_F(ParametersTest, StoredOptionsAreReadWithTheirOldMeanings) {
  const struct {
    const char* key;
    int PredictionForm::*choice;
    const char* stored;
    int expected;
  } cases[] = {
      {"NoiseLevel", &PredictionForm::dx_noise, "0", 1},
      {"NoiseLevel", &PredictionForm::dx_noise, "1", 1},
      {"NoiseLevel", &PredictionForm::dx_noise, "2", 2},
      {"NoiseLevel", &PredictionForm::dx_noise, "3", 2},
      {"LcoalNoiseLevel", &PredictionForm::local_noise, "3", 3},
      {"LcoalNoiseLevel", &PredictionForm::local_noise, "0", 0},
      {"LcoalNoiseLevel", &PredictionForm::local_noise, "4", 2},
      {"DXPower", &PredictionForm::dx_power, "-1", 2},
      {"DXPower", &PredictionForm::dx_power, "letters", 2},
      {"PredictSignals", &PredictionForm::direction, "0", 0},
      {"SNRMode", &PredictionForm::mode, "4", 4},
      {"SNRMode", &PredictionForm::mode, "-1.0", -1},
      {"SNRMode", &PredictionForm::mode, "40000", -1},
      {"SNRMode", &PredictionForm::mode, "CW", -1},
  };
  for (const auto& [key, choice, stored, expected] : cases) {
    Store(key, stored);
    EXPECT_EQ(parameters_.Initialize().*choice, expected) << key << " = " << stored;
  }
}

TEST_F(ParametersTest, BadValueDoesNotCostTheOthers) {
  Store("DXTracksTessera", "perhaps");
  Store("SFI", "200");
  Store("XLat", "1 2' 3\" S");
  const PredictionForm form = parameters_.Initialize();
  EXPECT_EQ(form.flux, "200");
  EXPECT_EQ(form.local_latitude, "1 2' 3\" S");
  EXPECT_TRUE(form.dx_tracks_tessera);
}

TEST_F(ParametersTest, RestoresWhatItSaved) {
  PredictionForm form = parameters_.Initialize();
  form.flux = "170";
  form.snr = "13";
  form.local_power = "5";
  form.local_latitude = "40 30' 0\" N";
  form.local_longitude = "74 15' 0\" W";
  form.show_critical_frequencies = false;
  form.local_noise = 0;
  form.direction = direction_option::kFromTheDXStation;
  parameters_.Finalize(form);

  PredictionFixture other;
  other.store.values = with_.store.values;
  const PredictionForm restored = other.parameters.Initialize();
  EXPECT_EQ(restored.flux, "170");
  EXPECT_EQ(restored.snr, "13");
  EXPECT_EQ(restored.local_power, "5");
  EXPECT_EQ(restored.local_latitude, form.local_latitude);
  EXPECT_EQ(restored.local_longitude, form.local_longitude);
  EXPECT_EQ(other.parameters.Set().power, "5");
  EXPECT_EQ(other.parameters.Set().snr, "13");
  EXPECT_FALSE(restored.show_critical_frequencies);
  EXPECT_TRUE(restored.show_open_bands);
  EXPECT_EQ(restored.local_noise, 0);
  EXPECT_EQ(restored.direction, direction_option::kFromTheDXStation);
}

TEST_F(ParametersTest, ChosenModeKeepsTheUsersOwnSnrInTheSettings) {
  Store("SNR", "13");
  with_.form.mode = 2;
  with_.form.snr = "45";
  parameters_.Finalize(with_.form);
  EXPECT_EQ(Saved("SNR"), "13");
  EXPECT_EQ(Saved("SNRMode"), "2");
}

TEST_F(ParametersTest, AFailingStoreIsReportedAndSavesNothing) {
  with_.store.save_error = 70;
  parameters_.Finalize(with_.form);
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
    parameters_.LocateQTH(with_.form);
    EXPECT_EQ(with_.form.local_latitude, latitude);
    EXPECT_EQ(with_.form.local_longitude, longitude);
  }
}

TEST_F(ParametersTest, WithoutTheLocationApplicationTheOwnSettingsCount) {
  Store("XLat", "1 2' 3\" S");
  Store("Xlon", "4 5' 6\" W");
  parameters_.LocateQTH(with_.form);
  EXPECT_EQ(with_.form.local_latitude, "1 2' 3\" S");
  EXPECT_EQ(with_.form.local_longitude, "4 5' 6\" W");
}

}  // namespace
}  // namespace skyhop::IONCAPModule
