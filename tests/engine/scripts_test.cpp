#include <gtest/gtest.h>

#include "common/files.h"
#include "common/text.h"
#include "engine/ioncap_script.h"
#include "engine/its_script.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::FakePause;
using skyhop::testing::PredictionFixture;
using skyhop::testing::TestData;

class ScriptsTest : public ::testing::Test {
 protected:
  ScriptsTest() { with_.SetTransatlantic(); }

  std::string IonCapDeck() {
    EXPECT_TRUE(ioncap_.CreateIONCAPScript(26, script_));
    return ReadFile(script_, 10000);
  }

  std::string ItsDeck(EngineChoice engine, std::int16_t method) {
    EXPECT_TRUE(its_.CreateScript(engine, method, script_));
    return ReplaceAll(ReadFile(script_, 10000), "\r\n", "\n");
  }

  /// One line of a deck, without its end.
  static std::string Card(const std::string& deck, const std::string& name) {
    const std::size_t start = ("\n" + deck).find("\n" + name);
    if (start == std::string::npos) return "no card " + name;
    const std::string rest = deck.substr(start);
    return rest.substr(0, rest.find_first_of("\r\n"));
  }

  PredictionFixture with_;
  FakePause pause_;
  ScriptCards cards_{pause_, with_.log.diagnostics};
  IonCapScript ioncap_{cards_, with_.panel, with_.parameters, with_.log.diagnostics};
  ItsScript its_{cards_, with_.panel, with_.parameters, with_.log.diagnostics};
  std::filesystem::path script_ = with_.log.folder / "script.txt";
};

TEST_F(ScriptsTest, TheTransatlanticDeckIsExactToTheByte) {
  EXPECT_EQ(IonCapDeck(), TestData("decks/transatlantic-ioncap.txt"));
}

TEST_F(ScriptsTest, LocationsFollowTheirRoles) {
  with_.panel.SetChoice(PanelChoice::kPath, path_option::kLong);
  with_.parameters.SetTransmitterLatitude("33 54' 0\" S");
  with_.parameters.SetTransmitterLongitude("151 12' 59\" E");
  EXPECT_EQ(Card(IonCapDeck(), "CIRCUIT"),
            "CIRCUIT   03390S    15120E    05150N    00012W    00001");
}

TEST_F(ScriptsTest, SystemCardsHoldWhateverPassedValidation) {
  const struct {
    const char* power;
    std::int16_t noise;
    const char* takeoff;
    const char* availability;
    const char* snr;
    const char* card;
  } cases[] = {
      {"5", 0, "0", "50", "-30", "SYSTEM    00001  -1.   0.  50. -30."},
      {"25", 1, "12.5", "90", "24.5", "SYSTEM    00003  -2.  12.  90.  24."},
      {"100 W", 3, "90", "99.9", "99", "SYSTEM    00010  -4.  90. 100.  99."},
      {"watts", 9, "3", "10", "24", "SYSTEM    00000  -4.   3.  10.  24."},
      // Too wide for its field: the later columns shift.
      {"1000000", 2, "3", "10", "24", "SYSTEM    100000  -3.   3.  10.  24."},
  };
  for (const auto& row : cases) {
    with_.parameters.SetPredictionPower(row.power);
    with_.parameters.SetPredictionNoise(row.noise);
    with_.parameters.SetPredictionTakeoff(row.takeoff);
    with_.panel.SetText(PanelText::kAvail, row.availability);
    with_.parameters.SetPredictionSNR(row.snr);
    EXPECT_EQ(Card(IonCapDeck(), "SYSTEM"), row.card);
  }
}

TEST_F(ScriptsTest, TheSunspotNumberIsGivenOrDerived) {
  const struct {
    const char* flux;
    const char* sunspot_number;
    const char* card;
  } cases[] = {{"150", "", "SUNSPOT   10500"},   {"64", "", "SUNSPOT   00000"},
               {"400", "", "SUNSPOT   32900"},   {"150", "120", "SUNSPOT   12000"},
               {"", "115.3", "SUNSPOT   11530"}, {"150", "0", "SUNSPOT   10500"},
               {"", "0", "SUNSPOT   00000"},     {"150", "-5", "SUNSPOT   -00500"},
               {"149.5", "", "SUNSPOT   10500"}};
  for (const auto& [flux, sunspot_number, card] : cases) {
    with_.panel.SetText(PanelText::kFlux, flux);
    with_.panel.SetText(PanelText::kSSN, sunspot_number);
    EXPECT_EQ(Card(IonCapDeck(), "SUNSPOT"), card) << flux << "/" << sunspot_number;
  }
}

TEST_F(ScriptsTest, AValueBeyondItsTypeFailsWithTheReasonLogged) {
  with_.parameters.SetPredictionPower("99999999999");
  EXPECT_FALSE(ioncap_.CreateIONCAPScript(26, script_));
  ASSERT_EQ(with_.log.errors.size(), 1U);
  EXPECT_EQ(with_.log.errors[0].find("program error 6 in module IONCAPModule.CreateIONCAPScript"),
            0U);
}

TEST_F(ScriptsTest, TheItsDeckIsTheOneThatTheEngineWasRunWith) {
  const std::string expected = ReplaceAll(TestData("results/newyork-london-method26.deck.txt"),
                                          "LABEL     NEW YORK            LONDON              ",
                                          "LABEL     YOUR STATION        DX STATION          ");
  EXPECT_EQ(ItsDeck(EngineChoice::kVoaCap, 26), expected);
  EXPECT_EQ(Card(ItsDeck(EngineChoice::kVoaCapSnr, 30), "METHOD"), "METHOD       30    0");
}

TEST_F(ScriptsTest, OnlyIcePacGetsTheGeomagneticIndex) {
  with_.panel.SetText(PanelText::kKindex, "4");
  EXPECT_EQ(Card(ItsDeck(EngineChoice::kIcePac, 26), "SUNSPOT"), "SUNSPOT   105.0 5.50");
  EXPECT_EQ(Card(ItsDeck(EngineChoice::kVoaCap, 26), "SUNSPOT"), "SUNSPOT   105.0");
}

}  // namespace
}  // namespace skyhop::IONCAPModule
