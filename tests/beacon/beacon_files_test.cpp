#include "beacon/beacon_files.h"

#include <gtest/gtest.h>

#include <set>

#include "common/files.h"
#include "geo/dx_grid.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::BeaconModule {
namespace {

using testing::LoggedDiagnostics;
using Texts = std::vector<std::string>;

Texts Messages(const std::vector<FileProblem>& problems) {
  Texts messages;
  for (const FileProblem& problem : problems) messages.push_back(problem.Message());
  return messages;
}

TEST(SeparatedValues, AreSplitAtCommasAndLineEnds) {
  struct Case {
    const char* content;
    std::vector<Texts> records;
  };
  for (const Case& c : std::initializer_list<Case>{
           {"", {}},
           {"\n  \r\n# a, remark\n   # another\n", {}},
           {"a, b ,c\r\nd\re,\n", {{"a", "b", "c"}, {"d"}, {"e", ""}}},
           {"\xEF\xBB\xBFOH2B,60", {{"OH2B", "60"}}},
           {R"("Lohja, Finland" , "the ""old"" one",)",
            {{"Lohja, Finland", "the \"old\" one", ""}}},
           {"40 45' 2\" N, x", {{"40 45' 2\" N", "x"}}},
       }) {
    std::vector<FileProblem> problems;
    std::vector<Texts> found;
    for (const Record& record : SplitRecords(c.content, "f", problems)) {
      Texts& fields = found.emplace_back();
      for (const Field& field : record.fields) fields.push_back(field.text);
    }
    EXPECT_EQ(found, c.records) << c.content;
    EXPECT_EQ(Messages(problems), Texts{}) << c.content;
  }
}

TEST(SeparatedValues, LogTheFirstProblemsAndTheNumberOfTheOthers) {
  LoggedDiagnostics log;
  std::vector<FileProblem> problems;
  for (int line = 1; line <= 1000; ++line) problems.push_back({"a.txt", line, 1, "wrong"});
  for (int line = 1; line <= 20; ++line) problems.push_back({"b.txt", line, 1, "wrong"});
  problems.push_back({"a.txt", 0, 0, "not used"});
  LogProblems(problems, log.diagnostics);
  ASSERT_EQ(log.errors.size(), 41U);
  EXPECT_EQ(log.errors.front(), "a.txt: not used")
      << "what concerns the whole file is not left out";
  EXPECT_EQ(log.errors[19], "a.txt, line 19, column 1: wrong");
  EXPECT_EQ(log.errors.back(), "a.txt: 981 more problems");
}

TEST(SeparatedValues, ReportWrongQuotesAndKeepABrokenRecord) {
  std::vector<FileProblem> problems;
  // Columns count characters, not bytes.
  const auto records =
      SplitRecords("\xC3\x85land, \"open\ngood\n\"x\" y, z\n", "places.txt", problems);
  ASSERT_EQ(records.size(), 3U);
  EXPECT_TRUE(records[0].broken);
  EXPECT_FALSE(records[1].broken);
  EXPECT_TRUE(records[2].broken);
  EXPECT_EQ(records[2].line, 3);
  EXPECT_EQ(Messages(problems), (Texts{"places.txt, line 1, column 8: the quotes are not closed",
                                       "places.txt, line 3, column 5: a comma is missing after "
                                       "closing quotes"}));
}

TEST(SeparatedValues, RoundTripThroughCsvField) {
  for (const char* text :
       {"plain", "a,b", "\"quoted\"", " blanks ", "# no remark", "S9 \"loud\", "}) {
    std::vector<FileProblem> problems;
    const auto records = SplitRecords(CsvField(text) + ",x", "f", problems);
    ASSERT_EQ(records.size(), 1U) << text;
    EXPECT_EQ(records[0].fields[0].text, text);
  }
}

BeaconLocations Locations(const std::string& content) {
  return ReadBeaconLocations(content, "L.txt");
}

TEST(BeaconLocations, AreReadWithAllTheirFields) {
  const BeaconLocations found = Locations(
      "oh2b, OH, 60 19' N, 24 23' 30\" E, \"Lohja, south\", Finland, eu, 15, 18, 2, NO\n"
      "4S7B, 4S, 6 54' N, 79 52' E, Colombo, Sri Lanka, AS, 22, 41, 5.5, yes\n");
  EXPECT_EQ(Messages(found.problems), Texts{});
  ASSERT_EQ(found.beacons.size(), 2U);
  const Beacon& beacon = found.beacons[0];
  EXPECT_EQ(beacon.call, "OH2B");
  EXPECT_EQ(beacon.position, (Position{{60, 19, 0, -1}, {24, 23, 30, 1}}));
  EXPECT_EQ(beacon.place, "Lohja, south");
  EXPECT_EQ(beacon.continent, "EU");
  EXPECT_FALSE(beacon.on_air);
  EXPECT_EQ(found.Find("4s7b")->utc_offset, std::chrono::minutes(330));
  EXPECT_EQ(found.Find("OH2BX"), nullptr);
}

TEST(BeaconLocations, ReportEveryErrorAndKeepValidFields) {
  struct Case {
    const char* line;
    bool kept;
    Texts problems;
  };
  for (
      const Case& c : std::initializer_list<Case>{
          {"OHB, OH, 60 N, 24 E, a, b, EU, 15, 18, 2, yes",
           false,
           {"L.txt, line 2, column 1: the call \"OHB\" is not a callsign"}},
          {"W6WX, K, 1 N, 1 E, a, b, NA, 3, 6, -8, yes",
           false,
           {"L.txt, line 2, column 1: W6WX has been described before"}},
          {"OH2B, OH, 6O N, 24 E, a, b, EU, 15, 18, 2, yes",
           false,
           {"L.txt, line 2, column 11: the latitude \"6O N\" is not a latitude such as 40 45' N"}},
          {"OH2B, OH, 60 E, -24 E, a, b, EU, 15, 18, 2, yes",
           false,
           {"L.txt, line 2, column 11: the latitude \"60 E\" is not a latitude such as 40 45' N",
            "L.txt, line 2, column 17: the longitude \"-24 E\" is not a longitude such as "
            "73 58' W"}},
          {"OH2B, OH, 90 1' N, 181 W",
           false,
           {"L.txt, line 2, column 11: the latitude \"90 1' N\" is not a latitude such as "
            "40 45' N",
            "L.txt, line 2, column 20: the longitude \"181 W\" is not a longitude such as "
            "73 58' W"}},
          {"OH2B",
           false,
           {"L.txt, line 2, column 5: the latitude \"\" is not a latitude such as 40 45' N",
            "L.txt, line 2, column 5: the longitude \"\" is not a longitude such as "
            "73 58' W"}},
          // Missing or misplaced marks would give another place.
          {"OH2B, OH, 60 19 N, 24 23' 30 E",
           false,
           {"L.txt, line 2, column 11: the latitude \"60 19 N\" is not a latitude such as 40 45' N",
            "L.txt, line 2, column 20: the longitude \"24 23' 30 E\" is not a longitude such as "
            "73 58' W"}},
          {"OH2B, OH, 60.32 N, 23' E",
           false,
           {"L.txt, line 2, column 11: the latitude \"60.32 N\" is not a latitude such as 40 45' N",
            "L.txt, line 2, column 20: the longitude \"23' E\" is not a longitude such as "
            "73 58' W"}},
          {"\"OH2B,OH,60 N,24 E", false, {"L.txt, line 2, column 1: the quotes are not closed"}},
          {"OH2B,OH,60 N,24 E,a,b,XX,41,1.5,15,maybe",
           true,
           {"L.txt, line 2, column 23: the continent \"XX\" is not AF, AN, AS, EU, NA, OC or SA",
            "L.txt, line 2, column 26: the CQ zone \"41\" is not a whole number from 1 to 40",
            "L.txt, line 2, column 29: the ITU zone \"1.5\" is not a whole number from 1 to 90",
            "L.txt, line 2, column 33: the time zone \"15\" is not a number of hours from -12 to "
            "14",
            "L.txt, line 2, column 36: \"on the air\" \"maybe\" is not yes or no"}},
          {"OH2B,OH,60 N,24 E", true, {"L.txt, line 2, column 18: 4 fields instead of 11"}},
          {"OH2B,OH,60 N,24 E,,,,,,,,more",
           true,
           {"L.txt, line 2, column 26: 12 fields instead of 11"}},
      }) {
    const BeaconLocations found =
        Locations(std::string("W6WX,K,37 N,122 W,a,b,NA,3,6,-8,yes\n") + c.line +
                  "\nVR2B,VR,22 N,114 E,a,"
                  "b,AS,24,44,8,yes");
    EXPECT_EQ(Messages(found.problems), c.problems);
    EXPECT_EQ(found.beacons.size(), c.kept ? 3U : 2U) << c.line;
    EXPECT_NE(found.Find("VR2B"), nullptr) << c.line;
  }
}

/// The beacon on each frequency in each slot, "-" for none.
std::vector<std::string> Slots(const SlotTable& table) {
  std::vector<std::string> lines;
  for (const std::vector<std::string>& slot : table.slots) {
    std::string& line = lines.emplace_back();
    for (const std::string& call : slot) {
      line += (line.empty() ? "" : " ") + (call.empty() ? "-" : call);
    }
  }
  return lines;
}

constexpr const char* kThree = "A1A,,1 N,1 E,,,,,,,\nB1B,,2 N,2 E,,,,,,,\nC1C,,3 N,3 E,,,,,,,\n";

struct ReadCase {
  const char* content;
  Texts slots;  ///< empty if there is no schedule
  Texts problems;
};

void PrintTo(const ReadCase& c, std::ostream* out) {
  *out << c.content;
}

class ScheduleReading : public ::testing::TestWithParam<ReadCase> {};

TEST_P(ScheduleReading, KeepsTheTimesOfValidSlots) {
  const ScheduleFile file = ReadBeaconSchedule(GetParam().content, "S.txt", Locations(kThree));
  EXPECT_EQ(file.table ? Slots(*file.table) : Texts{}, GetParam().slots);
  EXPECT_EQ(Messages(file.problems), GetParam().problems);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ScheduleReading,
    ::testing::Values(
        ReadCase{"frequencies,14100,18110\na1a\nB1B\nC1C", {"A1A C1C", "B1B A1A", "C1C B1B"}, {}},
        ReadCase{"Slot,7.5\nFREQUENCIES,7039.5\nA1A\n-\n", {"A1A", "-"}, {}},
        ReadCase{"frequencies,14100,18110\nA1A,-\n-,B1B", {"A1A -", "- B1B"}, {}},
        // More frequencies than slots: a beacon is on several at a time.
        ReadCase{"frequencies,1000,2000,3000\nA1A\nB1B", {"A1A B1B A1A", "B1B A1A B1B"}, {}},
        ReadCase{"frequencies,14100,18110\nA1A\n7up!\nC1C",
                 {"A1A C1C", "- A1A", "C1C -"},
                 {"S.txt, line 3, column 1: \"7up!\" is not a callsign"}},
        ReadCase{"frequencies,14100,l8110,21150\nA1A\nB1B\nC1C",
                 {"A1A B1B", "B1B C1C", "C1C A1A"},
                 {"S.txt, line 1, column 19: \"l8110\" is not a frequency from 100 to 500000 kHz"}},
        ReadCase{"frequencies,14100,18110\nA1A\nB1B,C1C\nX9X",
                 {"A1A X9X", "- A1A", "X9X -"},
                 {"S.txt, line 3, column 5: 2 calls instead of 1",
                  "S.txt, line 4, column 1: the location of X9X is not known"}},
        ReadCase{
            "slot,ten\nfrequencies,14100\nA1A",
            {},
            {"S.txt, line 1, column 6: the slot length \"ten\" is not a number of seconds from "
             "0.5 to 3600"}},
        // Wrong quotes silence a slot and keep the times of the others.
        ReadCase{"frequencies,14100,18110\nA1A\n\"B1B\nC1C",
                 {"A1A C1C", "- A1A", "C1C -"},
                 {"S.txt, line 3, column 1: the quotes are not closed"}},
        // Most lines determine the form, not the first one.
        ReadCase{
            "slott,10\nfrequencies,14100,18110\nA1A,\nB1B\nC1C",
            {"- C1C", "B1B -", "C1C B1B"},
            {"S.txt, line 1, column 1: this line stands before the frequencies and is left out",
             "S.txt, line 3, column 5: 2 calls instead of 1"}},
        ReadCase{"frequencies,14100,18110\nA1A\n-,B1B\nC1C,-",
                 {"- -", "- B1B", "C1C -"},
                 {"S.txt, line 2, column 4: 1 calls instead of 2"}},
        ReadCase{"frequencies,101,102,103,104,105,106,107,108,109,110,111\n"
                 "A1A,-,-,-,-,-,-,-,-,-,B1B",
                 {"A1A - - - - - - - - -"},
                 {"S.txt, line 1, column 53: there are more than ten"}},
        ReadCase{"slot,5\nslot,6\nfrequencies,14100\nfrequencies,18110\nA1A",
                 {"A1A"},
                 {"S.txt, line 2, column 1: there is a slot length before",
                  "S.txt, line 4, column 1: there are frequencies before"}},
        ReadCase{"frequencies\nA1A\n",
                 {},
                 {"S.txt, line 1, column 12: there is no frequency",
                  "S.txt, line 2, column 1: this line stands before the frequencies and is left "
                  "out"}},
        ReadCase{"frequencies,14100\n-\nA-A",
                 {},
                 {"S.txt, line 3, column 1: \"A-A\" is not a callsign",
                  "S.txt: nobody transmits in any slot"}},
        ReadCase{"frequencies,14100\n", {}, {"S.txt: there is no slot"}},
        ReadCase{"slot,10", {}, {"S.txt: there is no line with frequencies"}},
        ReadCase{"", {}, {"S.txt: there is no line with frequencies"}}));

TEST(ScheduleReading, RefusesACycleLongerThanADay) {
  std::string content = "slot,3600\nfrequencies,14100\n";
  for (int slot = 0; slot < 24; ++slot) content += "A1A\n";
  EXPECT_TRUE(ReadBeaconSchedule(content, "S", Locations(kThree)).table);
  EXPECT_FALSE(ReadBeaconSchedule(content + "A1A\n", "S", Locations(kThree)).table);
}

class BeaconFilesTest : public ::testing::Test {
 protected:
  void Put(const char* name, const std::string& content) { WriteFile(log_.folder / name, content); }
  BeaconFiles Read(bool custom) {
    return ReadBeaconFiles(log_.folder.Path(), custom, log_.diagnostics);
  }

  LoggedDiagnostics log_;
};

TEST_F(BeaconFilesTest, UsesTheUsersScheduleWhenSelectedAndPresent) {
  Put(kLocationFile, kThree);
  Put(kScheduleFile, "frequencies,14100\nA1A");
  Put(kCustomScheduleFile, "frequencies,10144\nB1B");
  EXPECT_EQ(Read(true).schedule->frequencies, std::vector<double>{10144});
  EXPECT_TRUE(Read(true).custom);
  EXPECT_EQ(Read(false).schedule->frequencies, std::vector<double>{14100});

  Put(kCustomScheduleFile, "slot,0\n");
  const BeaconFiles files = Read(true);
  EXPECT_FALSE(files.custom);
  EXPECT_EQ(files.schedule->frequencies, std::vector<double>{14100});
  EXPECT_EQ(Messages(files.problems).back(),
            "CustomBeaconSchedule.txt: no schedule; the standard one is used");
  EXPECT_EQ(log_.errors.front(), Messages(files.problems).back());
  EXPECT_EQ(log_.errors.size(), files.problems.size());
}

TEST_F(BeaconFilesTest, ReportsMissingFiles) {
  const BeaconFiles files = Read(false);
  EXPECT_FALSE(files.schedule);
  ASSERT_EQ(files.problems.size(), 2U);
  EXPECT_EQ(files.problems[0].file, kLocationFile);
  EXPECT_EQ(files.problems[1].file, kScheduleFile);
}

TEST(ShippedBeaconFiles, DescribeTheNetworkWithoutErrors) {
  LoggedDiagnostics log;
  const BeaconFiles files = ReadBeaconFiles(SKYHOP_SHIPPED, false, log.diagnostics);
  EXPECT_EQ(Messages(files.problems), Texts{});
  ASSERT_TRUE(files.schedule);
  EXPECT_EQ(files.schedule->Cycle(), std::chrono::minutes(3));
  EXPECT_EQ(files.schedule->slots.size(), 18U);
  EXPECT_EQ(files.locations.beacons.size(), 18U);
  // The grid fields in which the beacons are.
  const std::vector<std::pair<const char*, const char*>> squares = {
      {"4U1UN", "FN30"}, {"VE8AT", "CP38"},  {"W6WX", "CM97"},   {"KH6RS", "BL10"},
      {"ZL6B", "RE78"},  {"VK6RBP", "OF87"}, {"JA2IGY", "PM84"}, {"RR9O", "NO14"},
      {"VR2B", "OL72"},  {"4S7B", "MJ96"},   {"ZS6DN", "KG44"},  {"5Z4B", "KI88"},
      {"4X6TU", "KM72"}, {"OH2B", "KP20"},   {"CS3B", "IM12"},   {"LU4AA", "GF05"},
      {"OA4B", "FH17"},  {"YV5B", "FK60"}};
  ASSERT_EQ(squares.size(), 18U);
  for (std::size_t i = 0; i < squares.size(); ++i) {
    const Beacon* beacon = files.locations.Find(squares[i].first);
    ASSERT_NE(beacon, nullptr) << squares[i].first;
    EXPECT_EQ(DXGridModule::GetGridSquare(beacon->position, log.diagnostics).substr(0, 4),
              squares[i].second)
        << beacon->call;
    EXPECT_EQ(files.schedule->slots[i][0], squares[i].first);
  }
}

}  // namespace
}  // namespace skyhop::BeaconModule
