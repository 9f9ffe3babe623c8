#include "report/csv_report.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/results_parser.h"
#include "support/diagnostics_fixture.h"
#include "support/sample_results.h"

namespace skyhop::testing {
namespace {

std::string Csv(const ResultsTable& table, EngineChoice engine) {
  LoggedDiagnostics log;
  IONCAPModule::ResultsHeading heading;
  heading.engine = "AN ENGINE, \"NEW\"";
  heading.version = "1.2";
  return CsvReport({table, log.diagnostics, engine}, heading);
}

std::string Line(const std::string& text, int number) {
  std::size_t begin = 0;
  for (; number > 0; --number) begin = text.find('\n', begin) + 1;
  return text.substr(begin, text.find('\n', begin) - begin);
}

constexpr const char* kHeader =
    "hour_utc,fot_mhz,muf_mhz,hpf_mhz,luf_mhz,open_160m,open_80m,open_60m,open_40m,open_30m,"
    "open_20m,open_17m,open_15m,open_12m,open_10m,open_6m";

TEST(CsvReports, ListFrequenciesAndOpenBandsByHour) {
  ResultsTable table = NewYorkLondon();
  table.reached[13] = false;
  const std::string csv = Csv(table, EngineChoice::kVoaCap);
  const std::string engine = ",\"AN ENGINE, \"\"NEW\"\"\",1.2";
  EXPECT_EQ(Line(csv, 0), std::string(kHeader) + ",reached,engine,engine_version");
  EXPECT_EQ(Line(csv, 1), "0,8.09,11.08,12.96,2.23,0,3,3,3,2,0,0,0,0,0,0,1" + engine);
  EXPECT_EQ(Line(csv, 14), "13,21.58,30.82,38.53,6.96,0,0,0,0,0,0,0,0,0,0,0,0" + engine);
  EXPECT_EQ(Line(csv, 24).substr(0, 3), "23,");
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 25);
  EXPECT_TRUE(csv.ends_with('\n'));
}

TEST(CsvReports, LeaveMissingPredictionsEmpty) {
  ResultsTable table = NewYorkLondonReliability();
  for (std::size_t band = 1; band < kBandCount; ++band) table.known[band].fill(0xF);
  table.known[2][5] = 0;
  table.frequencies[rows::kMuf90][5] = 0;
  table.frequencies[rows::kMuf50][6] = 0;
  const std::string csv = Csv(table, EngineChoice::kVoaCapSnr);
  EXPECT_EQ(Line(csv, 14).substr(0, 38), "13,21.60,30.80,,,,0,0,0,1,4,4,4,4,4,0,");
  EXPECT_EQ(Line(csv, 6).substr(0, 17), "5,,10.30,,,,4,,4,");
  EXPECT_EQ(Line(csv, 7).substr(0, 13), "6,6.80,,,,,4,");
}

TEST(CsvReports, ListPredictedBandValues) {
  ResultsTable table;
  IONCAPModule::ParseMethod30Results(TestData("results/newyork-london-method30.results.txt"), "",
                                     table);
  table.known[2][1] = 0;
  const std::string csv = Csv(table, EngineChoice::kVoaCapSnr);
  const std::string header = Line(csv, 0);
  EXPECT_EQ(header.substr(0, std::string(kHeader).size()), kHeader);
  EXPECT_NE(header.find(",reliability_80m,reliability_60m,"), std::string::npos);
  EXPECT_TRUE(header.ends_with(",signal_dbw_10m,signal_dbw_6m,reached,engine,engine_version"));
  const std::string line = Line(csv, 2);
  EXPECT_NE(line.find(",64,,89,85,1,0,0,0,0,0,28,,44,45,-28,"), std::string::npos) << line;
  EXPECT_NE(line.find(",2F2,,2F2,"), std::string::npos);
  EXPECT_NE(line.find(",-414,-415,-419,,\"AN ENGINE,"), std::string::npos) << line;
  EXPECT_EQ(std::count(line.begin(), line.end(), ','),
            std::count(header.begin(), header.end(), ',') + 1)
      << "one in the engine's name";
}

}  // namespace
}  // namespace skyhop::testing
