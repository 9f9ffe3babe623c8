#include "bands/bands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "common/files.h"
#include "common/numbers.h"
#include "support/diagnostics_fixture.h"
#include "support/sample_results.h"

namespace skyhop {
namespace {

using FreqDependentModule::BandTable;
using IONCAPModule::BandForFreq;
using IONCAPModule::RelaxedBandForFreq;

using Texts = std::vector<std::string>;

class Bands : public ::testing::Test {
 protected:
  void Write(const std::string& name, const std::string& content) {
    WriteFile(log.folder / name, content);
  }
  /// The table as text, "name lower-upper" for each band.
  [[nodiscard]] Texts Read() {
    table.InitializeBandArray();
    Texts read;
    for (const BandTable::Band& band : table.Bands()) {
      read.push_back(band.name + " " + NumberText(band.lower) + "-" + NumberText(band.upper));
    }
    return read;
  }
  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return PathText(log.folder / name);
  }

  testing::LoggedDiagnostics log;
  int missing = 0;
  BandTable table{log.folder.Path(), log.diagnostics, [this] { ++missing; }};
};

std::string Records(int count) {
  std::string content;
  for (int i = 0; i < count; ++i) content += "B" + std::to_string(i) + ", 1.0, 2.0\n";
  return content;
}

TEST_F(Bands, AreReadInAllValidForms) {
  const Texts twenty_metres = {"20M 14-14.35"};
  const struct {
    const char* content;
    Texts expected;
  } cases[] = {
      {"20M, 14.0, 14.35\n", twenty_metres},
      {"20M,14,14.35", twenty_metres},
      {"\xEF\xBB\xBF\r\n\r\n  20M , 14.0 ,\t14.35  \r\n \r\n", twenty_metres},
      {"20M\n14.0\n14.35\n", twenty_metres},
      {"20M, 14.0, 14.35,\n", twenty_metres},
      {"\"20M\" , \"14.0\", \" 14.35\"", twenty_metres},
      {"\"20 m, phone\", 14.0, 14.35", {"20 m, phone 14-14.35"}},
      {"40M, 7, 7.3\r20M, 14, 14.35\r", {"40M 7-7.3", "20M 14-14.35"}},
      {"20m, 14.35, 14", {"20m 14.35-14"}},
      {"", {}},
      {" \r\n\n", {}},
  };
  for (const auto& c : cases) {
    Write("Bands.txt", c.content);
    EXPECT_EQ(Read(), c.expected) << c.content;
    EXPECT_TRUE(log.errors.empty()) << c.content;
  }
  EXPECT_EQ(missing, 0);
}

TEST_F(Bands, AreKeptBeforeAnErrorAndItsPlaceIsReported) {
  const struct {
    const char* bad;
    const char* error;
    int line;
  } cases[] = {
      {"20M, low, 14.35", "13 * Type mismatch: \"low\" is not a number", 2},
      {"20M, 14.0\n, 14.35", "13 * Type mismatch: \"\" is not a number", 3},
      {"20M, 14.0 14.35", "13 * Type mismatch: \"14.0 14.35\" is not a number", 2},
      {"20M, 14.0, 1e999", "6 * Overflow: 1e999", 2},
      {"20M, 14,0", "", 0},
      {"20M, 14.0", "62 * Input past end of file: the last band is incomplete", 2},
      {"20M\r\n14.0,\r\n", "62 * Input past end of file: the last band is incomplete", 4},
      {"\"20M, 14.0, 14.35\n", "62 * Input past end of line: quotes are not closed", 2},
      {"\"20M\" x, 14.0, 14.35", "13 * Type mismatch: a comma is missing after closing quotes", 2},
  };
  for (const auto& c : cases) {
    log.errors.clear();
    Write("Bands.txt", std::string("40M, 7.0, 7.3\n") + c.bad);
    const Texts read = Read();
    ASSERT_FALSE(read.empty()) << c.bad;
    EXPECT_EQ(read[0], "40M 7-7.3");
    if (c.line == 0) {
      // A decimal comma splits the number into two fields, which a reader cannot recognise.
      EXPECT_EQ(read.size(), 2U);
      continue;
    }
    EXPECT_EQ(read.size(), 1U) << c.bad;
    std::string expected = "program error " + std::string(c.error) + " (" + PathOf("Bands.txt") +
                           ", line " + std::to_string(c.line) + ")";
    expected.replace(expected.find('*'), 1, "in module FreqDependentModule.InitializeBandArray:");
    EXPECT_EQ(log.errors, Texts{expected});
  }
}

TEST_F(Bands, HoldTwentyAndReportTheTwentieth) {
  const std::string message =
      "More than 20 band definitions found in " + PathOf("DefaultBands.txt");
  const struct {
    int records;
    const char* rest;
    std::size_t kept;
    Texts messages;
  } cases[] = {{19, "", 19, {}},
               {20, "", 20, {message}},
               {25, "", 20, {message}},
               {20, "not, a, band", 20, {message}}};
  for (const auto& c : cases) {
    log.errors.clear();
    Write("DefaultBands.txt", Records(c.records) + c.rest);
    EXPECT_EQ(Read().size(), c.kept);
    EXPECT_EQ(log.errors, c.messages);
  }
}

TEST_F(Bands, PreferTheUsersFile) {
  Write("DefaultBands.txt", "40M, 7.0, 7.3");
  EXPECT_EQ(Read(), Texts{"40M 7-7.3"});
  Write("Bands.txt", "20M, 14.0, 14.35");
  EXPECT_EQ(Read(), Texts{"20M 14-14.35"});
  Write("Bands.txt", "");
  EXPECT_TRUE(Read().empty());
  EXPECT_TRUE(log.errors.empty());
}

TEST_F(Bands, AreReportedMissingWithoutAFile) {
  std::filesystem::create_directory(log.folder / "Bands.txt");
  EXPECT_TRUE(Read().empty());
  EXPECT_EQ(log.errors, Texts{"Missing band definition file in " + PathOf("DefaultBands.txt")});
  EXPECT_EQ(missing, 1);
  EXPECT_EQ(table.GetBandNameForFreq(14.1), "");
  BandTable without_control(log.folder.Path(), log.diagnostics);
  without_control.InitializeBandArray();
  EXPECT_EQ(log.errors.size(), 2U);
}

TEST_F(Bands, AreFoundByFrequencyInFileOrder) {
  Write("Bands.txt", "first, 14.0, 14.35\nsecond, 14.2, 15\nreversed, 8, 7");
  ASSERT_EQ(Read().size(), 3U);
  const struct {
    double frequency;
    const char* name;
  } cases[] = {{14.0, "first"},  {14.35, "first"}, {14.3501, "second"},
               {15.0, "second"}, {13.9999, ""},    {7.5, ""},
               {0.0, ""},        {-1, ""},         {std::numeric_limits<double>::quiet_NaN(), ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(table.GetBandNameForFreq(c.frequency), c.name) << c.frequency;
  }
}

TEST_F(Bands, HaveAnIndexByName) {
  EXPECT_EQ(table.GetbandIndex("20m"), 5);
  EXPECT_EQ(table.GetbandIndex("160M"), 0);
  EXPECT_EQ(table.GetbandIndex("6M"), 10);
  for (const char* name : {"", "2M", "20", " 20M", "20M "}) {
    EXPECT_EQ(table.GetbandIndex(name), -1) << name;
  }
}

TEST_F(Bands, CoverEveryChartLineInTheShippedFile) {
  Write("DefaultBands.txt",
        ReadFile(std::filesystem::path(SKYHOP_TEST_DATA) / "../../data/DefaultBands.txt", 10000));
  ASSERT_EQ(Read().size(), kBandCount);
  for (std::size_t band = 0; band < kBandCount; ++band) {
    // The band lines are in single precision; one hertz covers the difference.
    const std::string name = table.GetBandNameForFreq(double{kBandLineFrequencies[band]} + 1e-6);
    EXPECT_EQ(table.GetbandIndex(name), static_cast<std::int16_t>(band));
  }
  EXPECT_TRUE(log.errors.empty());
}

TEST(FixedBandEdges, IncludeBothEndsOfEveryBand) {
  const struct {
    float lower, upper, relaxed_lower, relaxed_upper;
  } edges[] = {
      {1.8F, 2.0F, 1.5F, 2.5F},     {3.5F, 4.0F, 3.0F, 4.5F},     {5.3F, 5.5F, 5.0F, 5.5F},
      {7.0F, 7.3F, 6.5F, 8.0F},     {10.1F, 10.2F, 9.5F, 11.0F},  {14.0F, 14.35F, 13.5F, 15.0F},
      {18.0F, 18.2F, 17.0F, 19.0F}, {21.0F, 21.5F, 20.0F, 22.0F}, {24.8F, 25.0F, 24.0F, 26.0F},
      {28.0F, 29.7F, 27.0F, 30.0F}, {50.0F, 54.0F, 49.0F, 55.0F}};
  std::int16_t band = 0;
  for (const auto& e : edges) {
    for (const auto& [find, lower, upper] :
         {std::tuple(&BandForFreq, e.lower, e.upper),
          std::tuple(&RelaxedBandForFreq, e.relaxed_lower, e.relaxed_upper)}) {
      EXPECT_EQ(find(lower), band);
      EXPECT_EQ(find(upper), band);
      EXPECT_EQ(find(std::nextafter(lower, 0.0F)), -1);
      EXPECT_EQ(find(std::nextafter(upper, 100.0F)), -1);
    }
    EXPECT_EQ(BandForFreq(kBandLineFrequencies[static_cast<std::size_t>(band)]), band);
    ++band;
  }
  EXPECT_EQ(BandForFreq(18.25F), -1);
  EXPECT_EQ(RelaxedBandForFreq(18.25F), 6);
  EXPECT_EQ(BandForFreq(0), -1);
}

class Openings : public ::testing::Test {
 protected:
  std::int16_t Level(EngineChoice engine, float frequency, std::int16_t hour) {
    return IONCAPModule::FreqOpen(table, engine, frequency, hour, log.diagnostics);
  }

  testing::LoggedDiagnostics log;
  ResultsTable table;
};

TEST_F(Openings, GradeCriticalFrequencies) {
  table = testing::ConstantResult(5, 14.1F, 16, 19);
  const struct {
    float frequency;
    int level;
  } cases[] = {{4.99F, 0}, {5, 3},     {14.09F, 3}, {14.1F, 2}, {15.9F, 2},
               {16, 1},    {18.9F, 1}, {19, 0},     {50.1F, 0}};
  for (const auto& c : cases)
    EXPECT_EQ(Level(EngineChoice::kVoaCap, c.frequency, 24), c.level) << c.frequency;
}

TEST_F(Openings, GradeReliabilities) {
  const struct {
    float reliability;
    int level;
  } cases[] = {{0, 0},    {0.2F, 0},  {0.205F, 0}, {0.21F, 1}, {0.4F, 1}, {0.41F, 2},
               {0.6F, 2}, {0.61F, 3}, {0.8F, 3},   {0.81F, 4}, {1, 4},    {-0.5F, 4}};
  for (const auto& c : cases) {
    table.reliability[5].fill(c.reliability);
    EXPECT_EQ(Level(EngineChoice::kVoaCapSnr, 14.1F, 7), c.level) << c.reliability;
  }
  table.reliability[6].fill(1);
  EXPECT_EQ(Level(EngineChoice::kVoaCapSnr, 18.25F, 7), 0);  // in no band
  EXPECT_TRUE(log.errors.empty());
  table.reliability[5].fill(400);
  EXPECT_EQ(Level(EngineChoice::kVoaCapSnr, 14.1F, 7), 0);
  EXPECT_EQ(Level(EngineChoice::kVoaCapSnr, 14.1F, 25), 0);
  EXPECT_EQ(Level(EngineChoice::kVoaCapSnr, 14.1F, -1), 0);
  EXPECT_EQ(
      log.errors,
      (std::vector<std::string>{
          "program error 6 in module IONCAPModule.FreqOpen: Overflow: 40000 is beyond 16 bits",
          "program error 9 in module IONCAPModule.FreqOpen: Subscript out of range: hour 25 "
          "is not 0 to 24",
          "program error 9 in module IONCAPModule.FreqOpen: Subscript out of range: hour -1 "
          "is not 0 to 24"}));
}

}  // namespace
}  // namespace skyhop
