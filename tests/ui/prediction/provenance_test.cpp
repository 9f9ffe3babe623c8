#include "ui/prediction/provenance.h"

#include <gtest/gtest.h>

#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using IONCAPModule::ReadHeading;
using IONCAPModule::ResultsHeading;

const AskedPrediction kAsked{"15-Nov-26", 105, true, "150", 1500};

Provenance Of(const ResultsHeading& heading, EngineChoice engine = EngineChoice::kVoaCap,
              const AskedPrediction& asked = kAsked) {
  return ProvenanceOf(heading, engine, asked, FakeClock().now);
}

TEST(Provenance, NamesEngineSunspotNumberAndTime) {
  const struct {
    const char* what;
    ResultsHeading heading;
    EngineChoice engine;
    AskedPrediction asked;
    const char* note;
  } cases[] = {
      {"the built-in engine",
       {"SKYHOP ESTIMATE ENGINE", "1.0.0", "", "", "", ""},
       EngineChoice::kIonCap,
       kAsked,
       "Built-in estimate engine 1.0.0 \u00B7 sunspot number 105 (from flux 150) \u00B7 "
       "computed 15-Nov-26 13:05 UTC"},
      {"another",
       {"VOACAP", "16.1207W", "", "", "", ""},
       EngineChoice::kVoaCap,
       {"15-Nov-26", 79.5F, false, "150", 100},
       "VOACAP 16.1207W \u00B7 sunspot number 79.5 \u00B7 computed 15-Nov-26 13:05 UTC"},
      {"a silent one",
       {},
       EngineChoice::kIcePac,
       kAsked,
       "ICEPAC \u00B7 sunspot number 105 (from flux 150) \u00B7 computed 15-Nov-26 13:05 UTC"},
      {"nothing known",
       {},
       EngineChoice::kNone,
       {},
       "Unnamed engine \u00B7 sunspot number 0 \u00B7 computed 15-Nov-26 13:05 UTC"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Of(c.heading, c.engine, c.asked), (Provenance{c.note, ""})) << c.what;
  }
}

TEST(Provenance, OfRealResultsThatWereAskedForTellsNoDifference) {
  const ResultsHeading london =
      ReadHeading(TestData("results/newyork-london-method26.results.txt"));
  EXPECT_EQ(Of(london).difference, "");
  const ResultsHeading tokyo =
      ReadHeading(TestData("results/tokyo-saopaulo-long-method30.results.txt"));
  EXPECT_EQ(Of(tokyo, EngineChoice::kVoaCapSnr, {"01-Mar-26", 140, false, "", 100}).difference, "");
  EXPECT_EQ(Of(tokyo).difference,
            "Results are for Mar 2026, not Nov 2026; for sunspot number 140, not 105; "
            "for 100 W, not 1500 W");
}

TEST(Provenance, TellsWhatRoundingDoesNotExplain) {
  // Month, year, sunspot number and power in kW of the heading.
  const auto heading = [](const char* month, const char* year, const char* ssn, const char* power) {
    return ResultsHeading{"E", "1", month, year, ssn, power};
  };
  const EngineChoice ioncap = EngineChoice::kIonCap;
  const EngineChoice voacap = EngineChoice::kVoaCap;
  const auto asked = [](float ssn, double watts) {
    return AskedPrediction{"15-Nov-26", ssn, false, "", watts};
  };
  const struct {
    ResultsHeading heading;
    EngineChoice engine;
    AskedPrediction asked;
    const char* difference;
  } cases[] = {
      {heading("NOV", "2026", "", ""), voacap, asked(79, 100), ""},
      {heading("Oct", "", "", ""), voacap, asked(79, 100), "Results are for Oct, not Nov"},
      {heading("Nov", "2025", "", ""), voacap, asked(79, 100),
       "Results are for Nov 2025, not Nov 2026"},
      {heading("", "2025", "100", ""), voacap, asked(79, 100),
       "Results are for 2025, not 2026; for sunspot number 100, not 79"},
      {heading("11.00", "year", "?", "much"), voacap, asked(79, 100), ""},
      {heading("Nov", "2026", "79", ""), voacap, asked(79.4F, 100), ""},
      {heading("Nov", "2026", "80", ""), voacap, asked(79.5F, 100), ""},
      {heading("Nov", "2026", "80", ""), voacap, asked(79.3F, 100),
       "Results are for sunspot number 80, not 79.3"},
      {heading("Nov", "2026", "79.46", ""), ioncap, asked(79.456F, 100), ""},
      {heading("Nov", "2026", "79.4", ""), ioncap, asked(79.56F, 100),
       "Results are for sunspot number 79.4, not 79.56"},
      {heading("Nov", "2026", "0", ""), voacap, asked(0, 100), ""},
      {heading("", "", "", "0.100"), voacap, asked(79, 100), ""},
      {heading("", "", "", "1.230"), ioncap, asked(79, 1234), ""},
      {heading("", "", "", "1.230"), voacap, asked(79, 1234), "Results are for 1230 W, not 1234 W"},
      {heading("", "", "", "1.5"), voacap, asked(79, 1499.7), ""},
      {heading("", "", "", "0.011"), voacap, asked(79, 10.5), ""},
      {heading("", "", "", "0.000"), voacap, asked(79, 5), "Results are for 0 W, not 5 W"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Of(c.heading, c.engine, c.asked).difference, c.difference);
  }
  EXPECT_EQ(Of(heading("Oct", "2026", "", ""), voacap, {"no date", 79, false, "", 5}).difference,
            "");
}

}  // namespace
}  // namespace skyhop::testing
