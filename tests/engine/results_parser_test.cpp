#include "engine/results_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "common/errors.h"
#include "common/text.h"
#include "support/temporary_folder.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::TestData;

constexpr const char* kMethod26[] = {"results/newyork-london-method26.results.txt",
                                     "results/tokyo-saopaulo-long-method26.results.txt"};
constexpr const char* kMethod30[] = {"results/newyork-london-method30.results.txt",
                                     "results/tokyo-saopaulo-long-method30.results.txt"};

std::vector<std::string> Words(const std::string& line) {
  std::istringstream in(line);
  return {std::istream_iterator<std::string>(in), {}};
}

std::vector<std::string> Lines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

/// The text with its `number`-th line (from 1) replaced.
std::string WithLine(const std::string& text, std::size_t number, const std::string& line) {
  std::vector<std::string> lines = Lines(text);
  lines.at(number - 1) = line;
  std::string result;
  for (const std::string& each : lines) result += each + "\n";
  return result;
}

std::string ErrorOf(const std::string& text, bool has_luf = true) {
  ResultsTable table;
  try {
    ParseLufMufResults(text, "results.txt", has_luf, table);
  } catch (const Error& error) {
    return std::to_string(error.Number()) + " " + error.what();
  }
  return "no error";
}

TEST(LufMufResults, EveryValueOfARealFileIsTaken) {
  for (const char* name : kMethod26) {
    for (const bool carriage_returns : {false, true}) {
      const std::string file = TestData(name);
      ResultsTable table;
      ParseLufMufResults(carriage_returns ? ReplaceAll(file, "\n", "\r\n") : file, name, true,
                         table);
      // Read the lines of seven numbers independently of the parser, word by word.
      std::size_t hour = 0;
      for (const std::string& line : Lines(file)) {
        const std::vector<std::string> words = Words(line);
        if (words.size() != 7 || words[0] != std::to_string(hour + 1) + ".0") continue;
        ++hour;
        for (std::size_t row = 1; row < rows::kCount; ++row) {
          float expected = std::stof(words[row - 1]);
          if (row == rows::kLuf) expected = std::abs(expected);
          EXPECT_EQ(table.frequencies[row][hour], expected) << name << " hour " << hour;
          EXPECT_EQ(table.frequencies[row][hour % 24], expected);
        }
        EXPECT_EQ(table.reached[hour % 24], words.back().front() != '-') << name << hour;
      }
      EXPECT_EQ(hour, 24U);
    }
  }
}

TEST(LufMufResults, TheAxisCoversMufAndLufInWholeMegahertz) {
  ResultsTable table;
  ParseLufMufResults(TestData(kMethod26[0]), "", true, table);
  EXPECT_EQ(table.f_min, 2.0F);
  EXPECT_EQ(table.f_max, 42.0F);
  ParseLufMufResults(TestData(kMethod26[1]), "", true, table);
  EXPECT_EQ(table.f_min, 14.0F);
  EXPECT_EQ(table.f_max, 50.0F);
}

TEST(LufMufResults, WithoutTheLufColumnTheRowHoldsMinusOne) {
  std::string text = "HPF  ESMUF\n\n";
  for (int hour = 1; hour <= 24; ++hour) {
    text += "      1.0  20.0   8.16  13.19   0.00  11.18\n";
  }
  ResultsTable table;
  ParseLufMufResults(text, "", false, table);
  EXPECT_EQ(table.Luf(0), -1.0F);
  EXPECT_EQ(table.Luf(24), -1.0F);
  EXPECT_EQ(table.f_min, -1.0F);
  EXPECT_EQ(table.f_max, 14.0F);
  EXPECT_EQ(ErrorOf(text).substr(0, 3), "13 ") << "with a LUF expected, the column is missing";
}

TEST(LufMufResults, DamagedFilesAreToldByLineAndColumn) {
  const std::string good = TestData(kMethod26[0]);
  const std::vector<std::string> lines = Lines(good);
  const std::size_t header = 33;
  ASSERT_NE(lines.at(header - 1).find("HPF  ESMUF"), std::string::npos);
  const std::string cut = good.substr(0, good.find("     24.0"));
  const struct {
    std::string text;
    const char* error;
  } cases[] = {
      {"",
       "62 Input past end of file: results.txt ends after line 0, without the header "
       "\"HPF  ESMUF\""},
      {std::string("\0\x01\xff\n\0", 5),
       "62 Input past end of file: results.txt ends after line 2, without the header "
       "\"HPF  ESMUF\""},
      {"HPF  ESMUF",
       "62 Input past end of file: results.txt ends after line 1, right after the "
       "header"},
      {cut,
       "62 Input past end of file: results.txt ends after line 57, before its 24 hours are "
       "complete"},
      {WithLine(good, 41, "      3.0  22.0   8.87  14.34   0.00  12.x5   2.13"),
       "13 Type mismatch: \"  12.x5\" is not a number (results.txt, line 41, columns 37-43)"},
      {WithLine(good, 41, "      3.0  22.0   8.87  ******   0.00  12.15   2.13"),
       "13 Type mismatch: \"  *****\" is not a number (results.txt, line 41, columns 23-29)"},
      {WithLine(good, 50, ""),
       "13 Type mismatch: \"\" is not a number (results.txt, line 50, "
       "columns 1-9)"},
  };
  for (const auto& [text, error] : cases) EXPECT_EQ(ErrorOf(text), error);
}

TEST(LufMufResults, RowsBeforeAFaultKeepTheirNewValues) {
  ResultsTable table;
  table.frequencies[rows::kMuf50][1] = 99;
  table.frequencies[rows::kMuf50][7] = 99;
  const std::string text = WithLine(TestData(kMethod26[0]), 41, "letters");
  EXPECT_THROW(ParseLufMufResults(text, "", true, table), Error);
  EXPECT_EQ(table.Muf50(1), 11.18F);
  EXPECT_EQ(table.Muf50(7), 99.0F);
}

/// One band's values of one hour, read without the parser: the lines of the hour's block by their
/// tag, split into words of five columns from the right.
std::map<std::string, std::vector<std::string>> Block(const std::vector<std::string>& lines,
                                                      int hour) {
  std::map<std::string, std::vector<std::string>> block;
  const std::string start = std::to_string(hour) + ".0";
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::vector<std::string> words = Words(lines[i]);
    if (words.size() < 2 || words[0] != start || words.back() != "FREQ") continue;
    for (; i < lines.size() && !Words(lines[i]).empty(); ++i) {
      if (lines[i].size() < 68) continue;
      std::vector<std::string>& cells = block[std::string(Trim(lines[i].substr(67)))];
      for (std::size_t column = 16; column < 66; column += 5) {
        cells.push_back(lines[i].substr(column, 5));
      }
      cells.push_back(words[1]);
      cells.push_back(words[2]);
    }
    break;
  }
  return block;
}

TEST(Method30Results, EveryValueOfARealFileIsTaken) {
  for (const char* name : kMethod30) {
    const std::string file = TestData(name);
    const std::vector<std::string> lines = Lines(file);
    ResultsTable table;
    const Method30Outcome outcome = ParseMethod30Results(file, name, table);
    EXPECT_TRUE(outcome.header_found);
    EXPECT_EQ(outcome.last_hour, 24);
    for (int hour = 1; hour <= 24; ++hour) {
      auto block = Block(lines, hour);
      ASSERT_GE(block.size(), 22U) << name << " hour " << hour;
      for (const int place : {hour, hour % 24}) {
        const auto at = static_cast<std::size_t>(place);
        EXPECT_EQ(table.Muf50(at), std::stof(block["FREQ"][10]));
        EXPECT_EQ(table.Muf90(at), std::stof(block["FREQ"][11]));
        for (std::size_t band = 1; band < kBandCount; ++band) {
          EXPECT_EQ(table.snr[band][at], std::stof(block["SNR"][band - 1]));
          EXPECT_EQ(table.reliability[band][at], std::stof(block["REL"][band - 1]));
          EXPECT_EQ(table.mode[band][at], block["MODE"][band - 1]);
          EXPECT_EQ(table.signal_power[band][at], std::stoi(block["S DBW"][band - 1]));
        }
      }
    }
  }
}

std::string FreqLine(const char* hour) {
  return std::string(6 - std::string(hour).size(), ' ') + hour +
         " 11.2  8.2  3.5  5.3  7.1 10.1 14.1 18.1 21.1 24.9 28.2 50.1 FREQ\n";
}

/// A line of the given tag in which every band has `value`, and the band of 28.2 MHz `other`.
std::string BandLine(const std::string& value, const std::string& other, const std::string& tag) {
  std::string line(16, ' ');
  for (int band = 1; band <= 10; ++band) {
    const std::string& text = band == 9 ? other : value;
    line += std::string(5 - text.size(), ' ') + text;
  }
  return line + " " + tag + "\n";
}

constexpr const char* kHeader = "  MULTIPATH POWER TOLERANCE =  3.0 dB\n\n";

TEST(Method30Results, ReliabilityAboveOneFifthWidensTheAxis) {
  const struct {
    const char* reliability;
    float f_max;
  } cases[] = {{"0.20", 12}, {"0.21", 29}};
  for (const auto& [reliability, f_max] : cases) {
    ResultsTable table;
    ParseMethod30Results(kHeader + FreqLine("1.0") + BandLine("0.00", reliability, "rel  "), "",
                         table);
    EXPECT_EQ(table.f_min, 8.0F);
    EXPECT_EQ(table.f_max, f_max) << reliability;
  }
}

TEST(Method30Results, AnHourBeyondTheDayEndsTheParse) {
  ResultsTable table;
  const std::string text = kHeader + FreqLine("2.0") + BandLine("7", "8", "SNR") +
                           FreqLine("25.0") + BandLine("1", "1", "SNR");
  EXPECT_EQ(ParseMethod30Results(text, "", table).last_hour, 2);
  EXPECT_EQ(table.snr[1][2], 7.0F);
  EXPECT_EQ(table.snr[9][2], 8.0F);
}

TEST(Method30Results, NothingOfAnEarlierPredictionStaysBehind) {
  ResultsTable table;
  ParseMethod30Results(TestData(kMethod30[0]), "", table);
  ParseMethod30Results(kHeader + FreqLine("1.0"), "", table);
  EXPECT_EQ(table.reliability[4][1], 0.0F);
  EXPECT_EQ(table.Muf50(13), 0.0F);
  EXPECT_EQ(table.mode[4][13], "");
}

TEST(Method30Results, AFieldThatCannotBeReadCostsNothingElse) {
  const std::string file = TestData(kMethod30[0]);
  const std::vector<std::string> lines = Lines(file);
  const auto number_of = [&](int hour, const std::string& tag) {
    int current = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const std::string here = lines[i].size() < 68 ? "" : std::string(Trim(lines[i].substr(67)));
      if (here == "FREQ") ++current;
      if (current == hour && here == tag) return i + 1;
    }
    return std::size_t{0};
  };
  const struct {
    const char* tag;
    const char* replacement;  // of the columns of 14.1 MHz, 37 to 41
    const char* fault;        // none for nothing
    BandQuantity quantity;
  } cases[] = {
      {"SNR", "*****", "hour 5, 14.1 MHz: Type mismatch: \"*****\" is not a number (r.txt, line ",
       BandQuantity::kSnr},
      {"REL", " 0.x1", "hour 5, 14.1 MHz: Type mismatch: \" 0.x1\" is not a number (r.txt, line ",
       BandQuantity::kReliability},
      {"S DBW", "40000", "hour 5, 14.1 MHz: Overflow: 40000 is beyond 16 bits (r.txt, line ",
       BandQuantity::kSignalPower},
      {"SNR", "    -", nullptr, BandQuantity::kSnr},
      {"MODE", "  -  ", nullptr, BandQuantity::kMode},
  };
  ResultsTable whole;
  ParseMethod30Results(file, "r.txt", whole);
  for (const auto& [tag, replacement, fault, quantity] : cases) {
    const std::size_t at = number_of(5, tag);
    std::string line = lines.at(at - 1);
    line.replace(36, 5, replacement);
    ResultsTable table;
    const Method30Outcome outcome = ParseMethod30Results(WithLine(file, at, line), "r.txt", table);
    EXPECT_EQ(outcome.complete_hours, 24) << tag;
    ASSERT_EQ(outcome.faults.size(), fault == nullptr ? 0U : 1U) << tag;
    if (fault != nullptr) {
      EXPECT_EQ(outcome.faults[0], fault + std::to_string(at) + ", columns 37-41)");
    }
    EXPECT_FALSE(table.Known(quantity, 5, 5));
    // All other values equal those of the whole file.
    table.snr[5][5] = whole.snr[5][5];
    table.reliability[5][5] = whole.reliability[5][5];
    table.mode[5][5] = whole.mode[5][5];
    table.signal_power[5][5] = whole.signal_power[5][5];
    table.known[5][5] = whole.known[5][5];
    EXPECT_EQ(table.snr, whole.snr);
    EXPECT_EQ(table.reliability, whole.reliability);
    EXPECT_EQ(table.mode, whole.mode);
    EXPECT_EQ(table.signal_power, whole.signal_power);
    EXPECT_EQ(table.known, whole.known);
  }
}

TEST(Method30Results, ABlockWithoutAReadableHourIsLeftOut) {
  for (const char* hour : {"x.0", "-1.0"}) {
    ResultsTable table;
    const std::string text = kHeader + FreqLine("1.0") + BandLine("7", "7", "SNR") +
                             FreqLine(hour) + BandLine("8", "8", "SNR") + FreqLine("3.0") +
                             BandLine("9", "9", "SNR");
    const Method30Outcome outcome = ParseMethod30Results(text, "r.txt", table);
    ASSERT_EQ(outcome.faults.size(), 3U);
    EXPECT_NE(outcome.faults[1].find("(r.txt, line 5"), std::string::npos);
    EXPECT_EQ(table.snr[1][1], 7.0F);
    EXPECT_FALSE(table.Known(BandQuantity::kSnr, 1, 2));
    EXPECT_EQ(table.snr[1][3], 9.0F);
  }
}

TEST(Method30Results, AnHourWhoseLineIsDamagedDoesNotReplaceTheOneBefore) {
  const std::string file = TestData(kMethod30[0]);
  ResultsTable whole;
  ParseMethod30Results(file, "r.txt", whole);
  std::vector<std::string> lines = Lines(file);
  std::size_t at = 0;
  while (!lines[at].starts_with("   6.0")) ++at;
  const std::string damaged = WithLine(file, at + 1, ReplaceAll(lines[at], "FREQ", "F?EQ"));
  ResultsTable table;
  const Method30Outcome outcome = ParseMethod30Results(damaged, "r.txt", table);
  EXPECT_EQ(outcome.faults, std::vector<std::string>{
                                "hour 5: a second line MODE, of an hour that is not told (r.txt, "
                                "line " +
                                std::to_string(at + 2) + ")"});
  EXPECT_EQ(outcome.complete_hours, 23);
  for (std::size_t band = 1; band < kBandCount; ++band) {
    EXPECT_EQ(table.mode[band][5], whole.mode[band][5]);
    EXPECT_EQ(table.snr[band][5], whole.snr[band][5]);
    EXPECT_EQ(table.known[band][6], 0);
    EXPECT_EQ(table.snr[band][7], whole.snr[band][7]);
  }
  EXPECT_EQ(table.Muf50(6), 0.0F);
}

TEST(Method30Results, AnHourIsCompleteWithAllFourOfItsLines) {
  const std::string tags[] = {"MODE", "S DBW", "SNR", "REL"};
  for (const std::string& missing : tags) {
    std::string text = kHeader + FreqLine("1.0");
    for (const std::string& tag : tags) text += BandLine("1", "1", tag == missing ? "LOSS" : tag);
    text += FreqLine("2.0");
    for (const std::string& tag : tags) text += BandLine("1", "1", tag);
    ResultsTable table;
    const Method30Outcome outcome = ParseMethod30Results(text, "r.txt", table);
    EXPECT_EQ(outcome.complete_hours, 1);
    EXPECT_EQ(outcome.faults, std::vector<std::string>{"hour 1: no line " + missing});
  }
}

TEST(Method30Results, AMufThatIsNotToldCostsNeitherTheFotNorTheAxis) {
  const struct {
    const char* muf;
    const char* fault;  // none for nothing
  } cases[] = {
      {"******",
       "hour 1, MUF: Type mismatch: \"******\" is not a number (r.txt, line 3, columns 7-12)"},
      {"    - ", nullptr}};
  for (const auto& [muf, fault] : cases) {
    ResultsTable table;
    std::string line = FreqLine("1.0");
    line.replace(6, 6, muf);
    const Method30Outcome outcome =
        ParseMethod30Results(kHeader + line + FreqLine("2.0"), "r.txt", table);
    EXPECT_EQ(outcome.faults.front(),
              fault == nullptr ? "hour 1: no line SNR, REL, MODE, S DBW" : fault);
    EXPECT_EQ(table.Muf50(1), 0.0F);
    EXPECT_EQ(table.Muf90(1), 8.2F);
    EXPECT_EQ(table.f_min, 8.0F);
  }
}

TEST(Method30Results, ZeroHasNoSign) {
  ResultsTable table;
  ParseMethod30Results(kHeader + FreqLine("1.0") + BandLine("-0", "-0.0", "SNR"), "", table);
  EXPECT_FALSE(std::signbit(table.snr[1][1]));
  EXPECT_FALSE(std::signbit(table.snr[9][1]));
  EXPECT_TRUE(table.Known(BandQuantity::kSnr, 9, 1));
}

TEST(Method30Results, PageHeadingsWithinADayAreNoResults) {
  for (const char* name : kMethod30) {
    const std::vector<std::string> lines = Lines(TestData(name));
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].find("~METHOD 30") != std::string::npos) first = i;
      if (last == 0 && lines[i].find("MULTIPATH POWER") != std::string::npos) last = i;
    }
    ASSERT_LT(0U, first);
    ASSERT_LT(first, last);
    std::string paged;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      // Break the page when it is full, even within an hour.
      if (i > last && (i - last) % 37 == 0) {
        paged += "\f";
        for (std::size_t k = first; k <= last; ++k) paged += lines[k] + "\n";
        paged += "\n";
      }
      // Remove the blanks after the tags.
      paged += lines[i].substr(0, lines[i].find_last_not_of(' ') + 1) + "\n";
    }
    ResultsTable whole;
    ParseMethod30Results(TestData(name), "", whole);
    ResultsTable table;
    const Method30Outcome outcome = ParseMethod30Results(paged, "", table);
    EXPECT_EQ(outcome.complete_hours, 24);
    EXPECT_TRUE(outcome.faults.empty());
    EXPECT_EQ(table.snr, whole.snr);
    EXPECT_EQ(table.reliability, whole.reliability);
    EXPECT_EQ(table.mode, whole.mode);
    EXPECT_EQ(table.frequencies, whole.frequencies);
  }
}

TEST(Method30Results, AMissingHeaderLeavesTheTableAlone) {
  ResultsTable table;
  table.f_max = 77;
  EXPECT_FALSE(ParseMethod30Results(FreqLine("1.0"), "", table).header_found);
  EXPECT_EQ(table.f_max, 77.0F);
}

TEST(ResultsHeadings, NameEngineMonthSunspotNumberAndPower) {
  for (const char* name : {kMethod26[1], kMethod30[1]}) {
    const ResultsHeading heading = ReadHeading(TestData(name));
    EXPECT_EQ(heading.engine, "VOACAP");
    EXPECT_EQ(heading.version, "16.1207W");
    EXPECT_EQ(heading.month, "Mar");
    EXPECT_EQ(heading.year, "2026");
    EXPECT_EQ(heading.sunspot_number, "140");
    EXPECT_EQ(heading.power, "0.100");
  }
  EXPECT_EQ(ReadHeading("no heading").engine, "");
}

}  // namespace
}  // namespace skyhop::IONCAPModule
