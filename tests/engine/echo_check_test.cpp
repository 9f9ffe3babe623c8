#include "engine/echo_check.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/text.h"
#include "support/prediction_fixture.h"
#include "support/temporary_folder.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::PredictionFixture;
using skyhop::testing::TestData;

constexpr EngineChoice kIonCap = EngineChoice::kIonCap;
constexpr EngineChoice kVoaCap = EngineChoice::kVoaCap;

/// What the samples between New York and London were asked.
PredictionInputs London() {
  PredictionFixture with;
  with.form.sunspot_number = "105";
  with.form.engine = kVoaCap;
  return with.Inputs();
}

/// What the samples between Tokyo and Sao Paulo were asked.
PredictionInputs SaoPaulo() {
  PredictionInputs deck = London();
  deck.short_path = false;
  deck.transmitter = {{35, 41, 0, -1}, {139, 46, 0, 1}};
  deck.receiver = {{23, 33, 0, 1}, {46, 38, 0, -1}};
  deck.power = 100;
  deck.availability = 50;
  deck.noise = 1;
  deck.date = std::chrono::year(2026) / 3 / 1;
  deck.sunspot_number = 140;
  return deck;
}

std::string Difference(const std::string& text, const PredictionInputs& asked) {
  return EchoDifference(ReadHeading(text), asked);
}

TEST(EchoCheck, RealResultsAnswerTheirOwnQuestionOnly) {
  for (const char* method : {"26", "30"}) {
    const auto results = [&](const char* circuit) {
      return TestData(std::string("results/") + circuit + "-method" + method + ".results.txt");
    };
    EXPECT_EQ(Difference(results("newyork-london"), London()), "");
    EXPECT_EQ(Difference(results("tokyo-saopaulo-long"), SaoPaulo()), "");
    EXPECT_EQ(Difference(results("tokyo-saopaulo-long"), London()),
              "Results are for Mar 2026, not Nov 2026; "
              "for 35.68 N 139.77 E to 23.55 S 46.63 W, not 40.50 N 74.25 W to 51.50 N 0.12 W; "
              "for the long path, not the short path; for sunspot number 140, not 105; "
              "for 100 W, not 1500 W; for a required reliability of 50 %, not 10 %; "
              "for a noise of -144.7 dBW, not -150.0 dBW");
  }
}

TEST(EchoCheck, EachPartOfTheQuestionCounts) {
  const struct {
    const char* what;
    std::function<void(PredictionInputs& deck)> change;
    const char* difference;  ///< behind "Results are for "
  } cases[] = {
      {"transmitter", [](auto& deck) { deck.transmitter.latitude.minutes = 33; },
       "40.50 N 74.25 W to 51.50 N 0.12 W, not 40.55 N 74.25 W to 51.50 N 0.12 W"},
      {"receiver", [](auto& deck) { deck.receiver.longitude.sign = 1; },
       "40.50 N 74.25 W to 51.50 N 0.12 W, not 40.50 N 74.25 W to 51.50 N 0.12 E"},
      {"path", [](auto& deck) { deck.short_path = false; }, "the short path, not the long path"},
      {"year", [](auto& deck) { deck.date += std::chrono::years(1); }, "Nov 2026, not Nov 2027"},
      {"sunspots", [](auto& deck) { deck.sunspot_number = 79.3F; }, "sunspot number 105, not 79.3"},
      {"power", [](auto& deck) { deck.power = 5; }, "1500 W, not 5 W"},
      {"noise", [](auto& deck) { deck.noise = 0; }, "a noise of -150.0 dBW, not -140.4 dBW"},
      {"takeoff", [](auto& deck) { deck.takeoff = 0; },
       "a minimum take-off angle of 3 degrees, not 0.1 degrees"},
      {"SNR", [](auto& deck) { deck.snr = 24.2; }, "a required SNR of 24 dB, not 24.2 dB"},
      {"reliability", [](auto& deck) { deck.availability = 12; },
       "a required reliability of 10 %, not 12 %"},
      {"antenna", [](auto& deck) { deck.transmitter_antenna.file = "samples/sample.23"; },
       "the transmitter's antenna default/isotrope, not samples/sample.23"},
      {"DX antenna", [](auto& deck) { deck.receiver_antenna.file = "samples/sample.23"; },
       "the receiver's antenna default/isotrope, not samples/sample.23"},
  };
  // The estimate shows no brackets around an antenna's file.
  const std::string estimate =
      ReplaceAll(TestData("estimate/example.results.txt"), "@VERSION@", "1");
  for (const std::string& text :
       {TestData("results/newyork-london-method26.results.txt"), estimate}) {
    EXPECT_EQ(Difference(text, London()), "");
    for (const auto& [what, change, difference] : cases) {
      PredictionInputs asked = London();
      change(asked);
      EXPECT_EQ(Difference(text, asked), std::string("Results are for ") + difference) << what;
    }
  }
}

TEST(EchoCheck, RoundingOfCardsAndHeadingsIsNoDifference) {
  const struct {
    const char* what;
    std::function<void(PredictionInputs& deck)> change;
    EngineChoice engine;
    const char* shown;    ///< the text in the sample's heading
    const char* instead;  ///< the text in this heading
    const char* difference;
  } cases[] = {
      {"seconds", [](auto& deck) { deck.transmitter.latitude.seconds = 59; }, kVoaCap, "", "", ""},
      {"hundredths", [](auto& deck) { deck.transmitter.latitude.minutes = 28; }, kVoaCap, "40.50 N",
       "40.47 N", ""},
      {"the date line",
       [](auto& deck) {
         deck.receiver.longitude = {180, 0, 0, 1};
       },
       kVoaCap, "  0.12 W", "180.00 W", ""},
      {"a pole",
       [](auto& deck) {
         deck.receiver.latitude = {90, 0, 0, -1};
       },
       kVoaCap, "51.50 N    0.12 W", "89.90 N   10.00 E", ""},
      {"whole sunspots", [](auto& deck) { deck.sunspot_number = 104.5F; }, kVoaCap, "", "", ""},
      {"IONCAP's watts", [](auto& deck) { deck.power = 1234; }, kIonCap, "1.500kW", "1.230kW", ""},
      {"VOACAP's watts", [](auto& deck) { deck.power = 1234; }, kVoaCap, "1.500kW", "1.230kW",
       "Results are for 1230 W, not 1234 W"},
      {"less than a watt", [](auto& deck) { deck.power = 0.4; }, kVoaCap, "1.500kW", "0.000kW", ""},
      {"no power", [](auto& deck) { deck.power = 0; }, kVoaCap, "1.500kW", "0.005kW", ""},
      {"another power", [](auto& deck) { deck.power = 0; }, kVoaCap, "1.500kW", "1.000kW",
       "Results are for 1000 W, not 0 W"},
      {"IONCAP's angle", [](auto& deck) { deck.takeoff = 0.4; }, kIonCap, "", "", ""},
      {"IONCAP's SNR", [](auto& deck) { deck.snr = 24.4; }, kIonCap, "", "", ""},
      {"almost all days", [](auto& deck) { deck.availability = 99.9; }, kVoaCap, " 10%", " 99%",
       ""},
      {"IONCAP's antennas", [](auto& deck) { deck.transmitter_antenna.file = "a/b"; }, kIonCap, "",
       "", ""},
      {"another model of remote noise", [](auto& deck) { deck.noise = 3; }, kVoaCap, "-150.0 dBW",
       "-163.6 dBW", ""},
  };
  const std::string sample = TestData("results/newyork-london-method26.results.txt");
  for (const auto& [what, change, engine, shown, instead, difference] : cases) {
    PredictionInputs asked = London();
    asked.engine = engine;
    change(asked);
    const bool as_it_is = std::string(shown).empty();
    EXPECT_EQ(Difference(as_it_is ? sample : ReplaceAll(sample, shown, instead), asked), difference)
        << what;
  }
}

TEST(EchoCheck, WhatAHeadingDoesNotRepeatReadablyIsNoDifference) {
  const char* headings[] = {
      "",
      "  11.00  year      SSN = ?            Minimum Angle=****** degrees\n"
      "  XMTR much kW\n  3 MHz NOISE = -3. dBW   REQ. REL = .90   REQ. SNR = *****\n",
      // Names that a user typed.
      " LABEL     REQ. SNR = 99       XMTR [x/y] 3kW\n",
      "  40.5 N - 51.5 N\n  1.00 N 1.00 E 2.00 N 2.00 E\n",
      "   1993 N\n",
  };
  for (const char* heading : headings) EXPECT_EQ(Difference(heading, London()), "") << heading;
  EXPECT_EQ(Difference("  Oct     SSN = 105.\n", London()), "Results are for Oct, not Nov");
  EXPECT_EQ(Difference("  1.0 N 1.0 E - 51.5 N 0.1 W\n", London()),
            "Results are for 1.0 N 1.0 E to 51.5 N 0.1 W, "
            "not 40.50 N 74.25 W to 51.50 N 0.12 W");
}

}  // namespace
}  // namespace skyhop::IONCAPModule
