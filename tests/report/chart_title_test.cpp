#include "report/chart_title.h"

#include <gtest/gtest.h>

#include "support/prediction_fixture.h"

namespace skyhop::testing {
namespace {

TEST(SummaryLine, NamesPathUnitDirectionAndSettings) {
  LoggedDiagnostics log;
  ParameterSet set = IONCAPModule::ParametersOf(Transatlantic());
  EXPECT_EQ(SummaryLine(set, true, "", log.diagnostics),
            "SP 24 db 3480 mi  propagation to DX 51 30' 0\" N 0 7' 0\" W on 15-Nov-26");
  PredictionForm form = Transatlantic();
  form.path = path_option::kLong;
  form.direction = direction_option::kFromTheDXStation;
  set = IONCAPModule::ParametersOf(form);
  EXPECT_EQ(SummaryLine(set, false, "contest", log.diagnostics),
            "LP 24 db 34473 km  propagation from DX 51 30' 0\" N 0 7' 0\" W on 15-Nov-26 "
            "(contest settings)");
  set.path = "sideways";
  EXPECT_EQ(SummaryLine(set, true, "", log.diagnostics).substr(0, 6), "24 db ");
}

}  // namespace
}  // namespace skyhop::testing
