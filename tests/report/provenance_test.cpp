#include "report/provenance.h"

#include <gtest/gtest.h>

#include "support/fakes.h"

namespace skyhop::testing {
namespace {

const AskedPrediction kAsked{105, true, "150", false};

TEST(Provenance, NamesEngineSunspotNumberAndTime) {
  const struct {
    const char* what;
    const char* named;
    const char* version;
    EngineChoice engine;
    AskedPrediction asked;
    const char* note;
  } cases[] = {
      {"the built-in engine", "SKYHOP ESTIMATE ENGINE", "1.0.0", EngineChoice::kIonCap, kAsked,
       "Built-in estimate engine 1.0.0 \u00B7 sunspot number 105 (from flux 150) \u00B7 "
       "computed 15-Nov-26 13:05 UTC"},
      {"another",
       "VOACAP",
       "16.1207W",
       EngineChoice::kVoaCap,
       {79.5F, false, "150", true},
       "VOACAP 16.1207W \u00B7 sunspot number 79.5 \u00B7 computed 15-Nov-26 13:05 UTC "
       "\u00B7 requested by a peer"},
      {"a silent one", "", "", EngineChoice::kIcePac, kAsked,
       "ICEPAC \u00B7 sunspot number 105 (from flux 150) \u00B7 computed 15-Nov-26 13:05 UTC"},
      {"nothing known",
       "",
       "",
       EngineChoice::kNone,
       {},
       "Unnamed engine \u00B7 sunspot number 0 \u00B7 computed 15-Nov-26 13:05 UTC"},
  };
  for (const auto& c : cases) {
    IONCAPModule::ResultsHeading heading;
    heading.engine = c.named;
    heading.version = c.version;
    EXPECT_EQ(Provenance(heading, c.engine, c.asked, FakeClock().now), c.note) << c.what;
  }
}

}  // namespace
}  // namespace skyhop::testing
