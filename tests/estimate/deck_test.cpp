#include "estimate/deck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "common/errors.h"
#include "common/text.h"
#include "estimate/propagation_math.h"
#include "support/temporary_folder.h"

namespace skyhop::estimate {
namespace {

std::string Example() {
  return skyhop::testing::TestData("estimate/example.deck.txt");
}

/// The example with its line `number` replaced.
std::string ExampleWith(int number, const std::string& replacement) {
  const std::string example = Example();
  std::string text;
  int line = 1;
  for (std::size_t start = 0; start < example.size(); ++line) {
    const std::size_t end = example.find('\n', start);
    text += line == number ? replacement : example.substr(start, end - start);
    text += '\n';
    start = end + 1;
  }
  return text;
}

/// The error of ReadDeck; empty if it accepts the deck.
std::string Complaint(const std::string& text) {
  try {
    (void)ReadDeck(text);
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), errors::kTypeMismatch);
    return error.what();
  }
  return {};
}

void ExpectExample(const Deck& deck) {
  const CircuitParameters& circuit = deck.circuit;
  EXPECT_DOUBLE_EQ(Degrees(circuit.transmitter.latitude), 40.5);
  EXPECT_DOUBLE_EQ(Degrees(circuit.transmitter.longitude), -74.25);
  EXPECT_DOUBLE_EQ(Degrees(circuit.receiver.latitude), 51.5);
  EXPECT_DOUBLE_EQ(Degrees(circuit.receiver.longitude), -0.12);
  EXPECT_FALSE(circuit.long_way);
  EXPECT_EQ(deck.year, 2026);
  EXPECT_EQ(circuit.month, 11);
  EXPECT_EQ(circuit.sunspot_number, 105);
  EXPECT_EQ(circuit.power, 1.5);
  EXPECT_EQ(circuit.man_made_noise, 150);
  EXPECT_DOUBLE_EQ(Degrees(circuit.min_elevation), 3);
  EXPECT_EQ(circuit.required_reliability, 0.1);
  EXPECT_EQ(circuit.required_snr, 24);
  EXPECT_EQ(deck.hours.first, 1);
  EXPECT_EQ(deck.hours.last, 24);
  EXPECT_EQ(deck.hours.step, 1);
  EXPECT_EQ(deck.lines.size(), 11U);
}

TEST(EstimateDeck, ReadsTheExampleWithEitherLineEnd) {
  ExpectExample(ReadDeck(Example()));
  ExpectExample(ReadDeck(ReplaceAll(Example(), "\n", "\r\n")));
}

TEST(EstimateDeck, ReadsTheWideFormatsOfOtherWriters) {
  std::string text = ExampleWith(1, "CIRCUIT   40.50N    74.25W    51.50N     0.12W  S     0");
  text = ReplaceAll(text, "SYSTEM    00150  -3.   3.  10.  24.",
                    "SYSTEM     1.50-150. 3.00   10 24.0 3.00 0.10");
  text = ReplaceAll(text, "MONTH     0202600011", "MONTH      202611.15");
  text = ReplaceAll(text, "SUNSPOT   10500", "SUNSPOT   105.0");
  text = ReplaceAll(text, "TIME      00001000240000100000", "TIME          1   24    1    1");
  ExpectExample(ReadDeck(text));
}

TEST(EstimateDeck, ReadsTheDecksOfIcepacAndVoacap) {
  for (const char* name : {"decks/transatlantic-voacap26.txt", "decks/transatlantic-icepac26.txt",
                           "decks/transatlantic-voacap30.txt"}) {
    SCOPED_TRACE(name);
    Deck deck = ReadDeck(skyhop::testing::TestData(name));
    EXPECT_EQ(deck.lines.size(), 15U);
    EXPECT_EQ(deck.transmitter_name, "YOUR STATION FN20vm");
    EXPECT_EQ(deck.receiver_name, "DX STATION IO91wm");
    EXPECT_EQ(deck.frequencies,
              (std::vector<double>{0, 3.5, 5.3, 7.1, 10.1, 14.1, 18.1, 21.1, 24.9, 28.2, 50.1}));
    deck.lines.resize(11);
    ExpectExample(deck);
  }
  EXPECT_EQ(ReadDeck(skyhop::testing::TestData("decks/transatlantic-voacap30.txt")).method,
            Method::kSystemByDistance);
}

TEST(EstimateDeck, ReadsPowerAndGainsFromAntennaCardsInAnyOrder) {
  const std::string voacap = skyhop::testing::TestData("decks/transatlantic-voacap26.txt");
  const std::string system = "SYSTEM     1.00  -3. 3.00   10 24.0 3.00 0.10\n";
  std::string text = ReplaceAll(ReplaceAll(voacap, system, ""), "METHOD", system + "METHOD");
  text = ReplaceAll(text, "2    2    2   30     0.000", "2    2    2   30     6.500");
  text = ReplaceAll(text, "1    1    2   30     0.000[default/isotrope     ]",
                    "1    1    2   30    12.000[samples/sample.23    ]");
  const Deck deck = ReadDeck(text);
  EXPECT_EQ(deck.circuit.power, 1.5);
  // The estimate ignores a pattern, including its gain.
  EXPECT_EQ(deck.circuit.antenna_gain, 6.5);
  EXPECT_EQ(deck.transmitter_antenna.file, "samples/sample.23");
  EXPECT_EQ(deck.receiver_antenna.file, "");
}

TEST(EstimateDeck, AcceptsCardsInAnyOrderAndIgnoresTextAfterQuit) {
  std::string text = Example();
  const std::size_t circuit_end = text.find('\n') + 1;
  const std::string circuit = text.substr(0, circuit_end);
  text = ReplaceAll(text.substr(circuit_end), "METHOD", "\n" + circuit + "METHOD");
  ExpectExample(ReadDeck(text + "anything\n\x01"));
}

TEST(EstimateDeck, ReadsTheSignsAndSpecialValuesOfFields) {
  struct Case {
    const char* card;
    double CircuitParameters::*field;
    double expected;
  };
  const std::vector<Case> cases = {
      {"SYSTEM    00150  -1.   3.  10.  24.", &CircuitParameters::man_made_noise, 140.4},
      {"SYSTEM    00150  -2.   3.  10.  24.", &CircuitParameters::man_made_noise, 144.7},
      {"SYSTEM    00150  -4.   3.  10.  24.", &CircuitParameters::man_made_noise, 164},
      {"SYSTEM    00150 155.   3.  10.  24.", &CircuitParameters::man_made_noise, 155},
      {"SYSTEM    00150  -3.   0.  10.  24.", &CircuitParameters::min_elevation, Radians(3)},
      {"SYSTEM    00150  -3.  90.  10.  24.", &CircuitParameters::min_elevation, Radians(90)},
      {"SYSTEM    00150  -3.   3.   0. -30.", &CircuitParameters::required_snr, -30},
      {"SYSTEM    00150  -3.   3. 100.  24.", &CircuitParameters::required_reliability, 1},
      {"SYSTEM    00150  -3.   3.  10.", &CircuitParameters::required_snr, 0},
      // Up to 5 W round to 0 in steps of 10 W.
      {"SYSTEM    00000  -3.   3.  10.  24.", &CircuitParameters::power, 0.005},
      {"SYSTEM    99999  -3.   3.  10.  24.", &CircuitParameters::power, 999.99},
      {"SYSTEM    1 5 0  -3.   3.  10.  24.", &CircuitParameters::power, 1.5},
      {"SYSTEM    +.25   -3.   3.  10.  24.", &CircuitParameters::power, 0.25},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.card);
    EXPECT_DOUBLE_EQ(ReadDeck(ExampleWith(2, c.card)).circuit.*c.field, c.expected);
  }
  const Deck south =
      ReadDeck(ExampleWith(1, "CIRCUIT   03390S    01840E    09000S    18000W    00001"));
  EXPECT_DOUBLE_EQ(Degrees(south.circuit.transmitter.latitude), -33.9);
  EXPECT_DOUBLE_EQ(Degrees(south.circuit.transmitter.longitude), 18.4);
  EXPECT_DOUBLE_EQ(Degrees(south.circuit.receiver.latitude), -90);
  EXPECT_DOUBLE_EQ(Degrees(south.circuit.receiver.longitude), -180);
  EXPECT_TRUE(south.circuit.long_way);
}

TEST(EstimateDeck, ReportsTheCardAndColumnsOfAnError) {
  struct Case {
    int line;
    const char* card;
    const char* complaint;
  };
  const std::vector<Case> cases = {
      {1, "CIRCUIT   09001N    07425W    05150N    00012W    00000",
       "line 1, CIRCUIT card, columns 11-15: transmitter latitude \"09001\" stands for 90.01, "
       "which "
       "is not from 0 to 90"},
      {1, "CIRCUIT   04050X    07425W    05150N    00012W    00000",
       "line 1, CIRCUIT card, column 16: transmitter hemisphere \"X\" is not N or S"},
      {1, "CIRCUIT   04050N    18001W    05150N    00012W    00000",
       "line 1, CIRCUIT card, columns 17-25: transmitter longitude \"    18001\" stands for "
       "180.01, "
       "which is not from 0 to 180"},
      {1, "CIRCUIT   04050N    07425W    -5150N    00012W    00000",
       "line 1, CIRCUIT card, columns 27-35: receiver latitude \"    -5150\" stands for -51.5, "
       "which is not from 0 to 90"},
      {1, "CIRCUIT   04050N    07425W    051,5N    00012W    00000",
       "line 1, CIRCUIT card, columns 27-35: receiver latitude \"    051,5\" is not a number"},
      {1, "CIRCUIT   04050N    07425W    05150N    00012W    00002",
       "line 1, CIRCUIT card, columns 51-55: path \"00002\" is not from 0 to 1"},
      {1, "CIRCUIT   04050N    07425W    05150N    00012",
       "line 1, CIRCUIT card, column 46: receiver hemisphere \"\" is not E or W"},
      // A latitude one column too wide moves all that follows.
      {1, "CIRCUIT   004050N    07425W    05150N    00012W    00000",
       "line 1, CIRCUIT card, column 16: transmitter hemisphere \"0\" is not N or S"},
      {2, "SYSTEM    -0150  -3.   3.  10.  24.",
       "line 2, SYSTEM card, columns 11-15: power in kW \"-0150\" stands for -1.5, which is not "
       "from 0 to 99999"},
      {2, "SYSTEM    100000  -3.   3.  10.  24.",
       "line 2, SYSTEM card, columns 16-20: man-made noise \"0  -3\" is not a number"},
      {2, "SYSTEM    00150  -5.   3.  10.  24.",
       "line 2, SYSTEM card, columns 16-20: man-made noise \"  -5.\" is neither a code from -1 to "
       "-4 nor a level from 100 to 200 dB below 1 W"},
      {2, "SYSTEM    00150  -3.  91.  10.  24.",
       "line 2, SYSTEM card, columns 21-25: minimum take-off angle \"  91.\" stands for 91, which "
       "is not from 0 to 90"},
      {2, "SYSTEM    00150  -3.   3. 101.  24.",
       "line 2, SYSTEM card, columns 26-30: required reliability \" 101.\" stands for 101, which "
       "is "
       "not from 0 to 100"},
      {2, "SYSTEM    00150  -3.   3.  10.  1e3",
       "line 2, SYSTEM card, columns 31-35: required SNR \"  1e3\" is not a number"},
      {2, "SYSTEM    00150  -3.   3.  10.  ***",
       "line 2, SYSTEM card, columns 31-35: required SNR \"  ***\" is not a number"},
      {3, "MONTH     0202600013",
       "line 3, MONTH card, columns 16-20: month \"00013\" is not from 1 to 12"},
      {3, "MONTH     0202600000",
       "line 3, MONTH card, columns 16-20: month \"00000\" is not from 1 to 12"},
      {3, "MONTH     0202613.00",
       "line 3, MONTH card, columns 16-20: month \"13.00\" is not a month.day from 1.00 to 12.31"},
      {3, "MONTH     02026-1.00",
       "line 3, MONTH card, columns 16-20: month \"-1.00\" is not a month.day from 1.00 to 12.31"},
      {3, "MONTH     20.2600011",
       "line 3, MONTH card, columns 11-15: year \"20.26\" is not a whole number"},
      {4, "SUNSPOT   -0500",
       "line 4, SUNSPOT card, columns 11-15: sunspot number \"-0500\" stands for -5, which is not "
       "from 0 to 9999"},
      {4, "SUNSPOT   100000",
       "line 4, SUNSPOT card, column 16: text \"0\" stands behind the last field"},
      {4, "SUNSPOT   1-5",
       "line 4, SUNSPOT card, columns 11-15: sunspot number \"1-5\" is not a number"},
      {5, "TIME      00000000240000100000",
       "line 5, TIME card, columns 11-15: first hour \"00000\" is not from 1 to 24"},
      {5, "TIME      00012000110000100000",
       "line 5, TIME card, columns 16-20: last hour \"00011\" is not from 12 to 24"},
      {5, "TIME      00001000240000000000",
       "line 5, TIME card, columns 21-25: step in hours \"00000\" is not from 1 to 24"},
      {5, "TIME      00001000240000199999999",
       "line 5, TIME card, columns 26-30: kind of time \"99999\" is not from 0 to 1"},
      {6, "ANTENNA   0000100003      .0x1",
       "line 6, ANTENNA card, columns 26-30: antenna figure \" .0x1\" is not a number"},
      {4, "SUNSPOT   10500 9.01",
       "line 4, SUNSPOT card, columns 17-20: geomagnetic index \"9.01\" stands for 9.01, which is "
       "not from 0 to 9"},
      {6, "ANTENNA       3    1    2   30     0.000[default/isotrope     ]  0.0    1.5000",
       "line 6, ANTENNA card, columns 11-15: end of the path \"    3\" is not from 1 to 2"},
      {6, "ANTENNA       1    1    2   30     0.000[default/isotrope        0.0    1.5000",
       "line 6, ANTENNA card, columns 42-62: antenna file \"default/isotrope     \" has no bracket "
       "behind it"},
      {9, "METHOD    00030", "line 10, EXECUTE card, before which there is no FREQUENCY card"},
      {9, "METHOD    99999999999",
       "line 9, METHOD card, columns 11-15: method \"99999\" is not 20, 26 or 30, the methods of "
       "this engine"},
      {9, "FREQUENCY 100.0",
       "line 9, FREQUENCY card, columns 11-15: frequency in MHz \"100.0\" "
       "stands for 100, which is not from 0 to 99.99"},
      {9, "COEFFS    MAPS",
       "line 9, COEFFS card, columns 11-14: coefficients \"MAPS\" is not CCIR "
       "or URSI"},
      {9, " METHOD   00026", "line 9,  METHOD card, which this engine does not know"},
      {9, "TIME      00001000240000100000", "line 9, TIME card, which comes a second time"},
      {9, "", "line 10, EXECUTE card, before which there is no METHOD card"},
      {10, "", "line 11, QUIT card, which comes before any EXECUTE card"},
      {11, "SUNSPOT   00500",
       "line 11, SUNSPOT card, which comes after EXECUTE: a deck is for one run"},
      {4, "SUNSPOT\t10500", "line 4, column 8: the byte 0x09 is not a character of a card"},
      {4, "SUNSPOT   \xC3\xA9", "line 4, column 11: the byte 0xC3 is not a character of a card"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.card);
    EXPECT_EQ(Complaint(ExampleWith(c.line, c.card)), c.complaint);
  }
}

TEST(EstimateDeck, RefusesTextThatIsNotADeck) {
  EXPECT_EQ(Complaint(""), "the deck is empty");
  EXPECT_EQ(Complaint("\r\n  \r\n"), "the deck is empty");
  EXPECT_EQ(Complaint(Example().substr(0, Example().find("EXECUTE"))),
            "the deck has no EXECUTE card");
  EXPECT_EQ(Complaint(std::string("\0\0\0\0", 4)),
            "line 1, column 1: the byte 0x00 is not a character of a card");
  // However long the line, the message stays short.
  EXPECT_LT(Complaint(std::string(100000, 'x')).size(), 100U);
  EXPECT_LT(Complaint(ExampleWith(4, "SUNSPOT   10500" + std::string(100000, 'x'))).size(), 200U);
}

}  // namespace
}  // namespace skyhop::estimate
