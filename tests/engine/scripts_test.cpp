#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "engine/deck_writer.h"
#include "engine/engine_probe.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::PredictionFixture;
using skyhop::testing::TestData;

class ScriptsTest : public ::testing::Test {
 protected:
  std::string IonCapDeck() {
    form_.engine = EngineChoice::kIonCap;
    EXPECT_TRUE(Write());
    return ReadFile(script_, 10000);
  }

  std::string ItsDeck(EngineChoice engine) {
    form_.engine = engine;
    EXPECT_TRUE(Write());
    return ReplaceAll(ReadFile(script_, 10000), "\r\n", "\n");
  }

  bool Write() {
    PredictionInputs inputs = with_.Inputs();
    inputs.prefix = prefix_;
    return decks_.Write(inputs, script_);
  }

  void SetTokyoSaoPaulo() {
    form_.path = path_option::kLong;
    form_.sunspot_number = "140";
    form_.availability = "50";
    form_.local_power = "100";
    form_.dx_noise = 1;
    form_.date = "1-Mar-26";
    prefix_ = "PY";
    form_.local_latitude = "35 41' 0\" N";
    form_.local_longitude = "139 46' 0\" E";
    form_.dx_latitude = "23 33' 0\" S";
    form_.dx_longitude = "46 38' 0\" W";
  }

  /// One line of a deck, without its end.
  static std::string Card(const std::string& deck, const std::string& name) {
    const std::size_t start = ("\n" + deck).find("\n" + name);
    if (start == std::string::npos) return "no card " + name;
    const std::string rest = deck.substr(start);
    return rest.substr(0, rest.find_first_of("\r\n"));
  }

  PredictionFixture with_;
  PredictionForm& form_ = with_.form;
  std::string prefix_;
  DeckWriter& decks_ = with_.engine.decks;
  std::filesystem::path script_ = with_.log.folder / "script.txt";
};

TEST_F(ScriptsTest, TheTransatlanticDeckIsExactToTheByte) {
  EXPECT_EQ(IonCapDeck(), TestData("decks/transatlantic-ioncap.txt"));
}

TEST_F(ScriptsTest, LocationsFollowTheirRoles) {
  form_.path = path_option::kLong;
  form_.local_latitude = "33 54' 0\" S";
  form_.local_longitude = "151 12' 59\" E";
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
      {"watts", 3, "3", "10", "24", "SYSTEM    00000  -4.   3.  10.  24."},
      // Too wide for its field: the later columns shift.
      {"1000000", 2, "3", "10", "24", "SYSTEM    100000  -3.   3.  10.  24."},
  };
  for (const auto& row : cases) {
    form_.local_power = row.power;
    form_.dx_noise = row.noise;
    form_.takeoff = row.takeoff;
    form_.availability = row.availability;
    form_.snr = row.snr;
    EXPECT_EQ(Card(IonCapDeck(), "SYSTEM"), row.card);
  }
}

TEST_F(ScriptsTest, ItsCardsKeepTheDecimalsThatTheyHold) {
  const struct {
    const char* power;
    const char* takeoff;
    const char* availability;
    const char* snr;
    const char* system;
    const char* kilowatts;
  } cases[] = {
      {"0.4", "2.5", "99.9", "16.5", " 2.50   99 16.5", " 0.0004000"},
      {"0.01", "0.04", "49.6", "-29.5", " 0.10   50-29.5", " 0.0000100"},
      {"0", "0", "0", "99.99", " 0.10    0100.0", "    0.0000"},
      {"10.5", "90", "98.4", "0", "90.00   98  0.0", "    0.0105"},
  };
  for (const auto& row : cases) {
    form_.local_power = row.power;
    form_.takeoff = row.takeoff;
    form_.availability = row.availability;
    form_.snr = row.snr;
    const std::string deck = ItsDeck(EngineChoice::kVoaCapSnr);
    EXPECT_EQ(Card(deck, "SYSTEM"),
              std::string("SYSTEM     1.00  -3.") + row.system + " 3.00 0.10");
    EXPECT_EQ(Card(deck, "ANTENNA").substr(68), row.kilowatts);
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
    form_.flux = flux;
    form_.sunspot_number = sunspot_number;
    EXPECT_EQ(Card(IonCapDeck(), "SUNSPOT"), card) << flux << "/" << sunspot_number;
  }
}

TEST_F(ScriptsTest, ValueBeyondItsTypeOrFieldFailsWithTheReason) {
  form_.local_power = "99999999999";
  EXPECT_FALSE(Write());
  form_.engine = EngineChoice::kVoaCap;
  EXPECT_FALSE(Write());
  ASSERT_EQ(with_.log.errors.size(), 2U);
  EXPECT_EQ(with_.log.errors[0].find("program error 6 in module IONCAPModule.CreateIONCAPScript"),
            0U);
  EXPECT_EQ(with_.log.errors[1],
            "IONCAPModule.CloseScript: a field of the script could not be written");
  form_.local_power = "1e999";
  EXPECT_THROW(static_cast<void>(with_.Inputs()), Error);
  form_ = skyhop::testing::Transatlantic();
  form_.date = "soon";
  EXPECT_THROW(static_cast<void>(with_.Inputs()), Error);
}

TEST_F(ScriptsTest, ItsDecksAreExactToTheByte) {
  form_.k_index = "4";
  EXPECT_EQ(ItsDeck(EngineChoice::kVoaCap), TestData("decks/transatlantic-voacap26.txt"));
  EXPECT_EQ(ItsDeck(EngineChoice::kVoaCapSnr), TestData("decks/transatlantic-voacap30.txt"));
  // It alone gets the geomagnetic index.
  EXPECT_EQ(ItsDeck(EngineChoice::kIcePac), TestData("decks/transatlantic-icepac26.txt"));
  SetTokyoSaoPaulo();
  EXPECT_EQ(ItsDeck(EngineChoice::kVoaCapSnr), TestData("decks/tokyo-saopaulo-long-voacap30.txt"));
}

TEST_F(ScriptsTest, ItsDecksDifferFromThoseThatAnEngineWasRunWithOnlyInRemarks) {
  const struct {
    const char* ours;
    const char* run;
    std::vector<std::string> cards;
  } cases[] = {
      {"decks/transatlantic-voacap26.txt", "results/newyork-london-method26.deck.txt", {"LABEL"}},
      {"decks/transatlantic-voacap30.txt", "results/newyork-london-method30.deck.txt", {"LABEL"}},
      // Column 49 is a comment for readers.
      {"decks/tokyo-saopaulo-long-voacap30.txt",
       "results/tokyo-saopaulo-long-method30.deck.txt",
       {"LABEL", "CIRCUIT"}},
  };
  for (const auto& [ours, run, cards] : cases) {
    std::istringstream first(TestData(ours));
    std::istringstream second(TestData(run));
    std::vector<std::string> different;
    for (std::string line, other; std::getline(first, line) && std::getline(second, other);) {
      if (line != other) different.push_back(line.substr(0, line.find(' ')));
    }
    EXPECT_EQ(different, cards) << ours;
  }
}

TEST_F(ScriptsTest, EngineTestAsksEachEngineTheKnownQuestion) {
  const struct {
    EngineChoice engine;
    const char* deck;
  } cases[] = {{EngineChoice::kIonCap, "decks/transatlantic-ioncap.txt"},
               {EngineChoice::kVoaCap, "decks/transatlantic-voacap26.txt"},
               {EngineChoice::kVoaCapSnr, "decks/transatlantic-voacap30.txt"},
               {EngineChoice::kIcePac, "decks/transatlantic-icepac26.txt"}};
  for (const auto& [engine, deck] : cases) {
    ASSERT_TRUE(decks_.Write(ProbeQuestion(engine), script_));
    EXPECT_EQ(ReplaceAll(ReadFile(script_, 10000), "\r\n", "\n"),
              ReplaceAll(TestData(deck), "\r\n", "\n"));
  }
}

TEST_F(ScriptsTest, APointDeckHasOneHourAndOneFrequency) {
  EXPECT_TRUE(decks_.WritePoint(with_.Inputs(), {18, 14.074}, script_));
  EXPECT_EQ(ReplaceAll(ReadFile(script_, 10000), "\r\n", "\n"),
            TestData("decks/transatlantic-point.txt"));
}

TEST_F(ScriptsTest, EachEndOfThePathHasItsStationsAntenna) {
  const struct {
    int direction;
    int path;
    Antenna local;
    Antenna dx;
    const char* transmitter;
    const char* receiver;
  } cases[] = {
      {1,
       0,
       {"", "5.5", "45"},
       {"", "-3", ""},
       "     5.500[default/isotrope     ]  0.0",
       "    -3.000[default/isotrope     ]  0.0"},
      {0,
       0,
       {"", "5.5", "45"},
       {"", "-3", ""},
       "    -3.000[default/isotrope     ]  0.0",
       "     5.500[default/isotrope     ]  0.0"},
      // A file contains its own gain; its beam has the direction of the path unless an azimuth is
      // set.
      {1,
       0,
       {"samples/sample.23", "9", ""},
       {"samples/sample.90", "", "12.34"},
       "     0.000[samples/sample.23    ] 51.0",
       "     0.000[samples/sample.90    ] 12.3"},
      {1,
       1,
       {"samples/sample.23", "", ""},
       {"a234567890/1234567890", "", ""},
       "     0.000[samples/sample.23    ]231.0",
       "     0.000[a234567890/1234567890]108.3"},
  };
  for (const auto& row : cases) {
    form_.direction = row.direction;
    form_.path = row.path;
    form_.local_antenna = row.local;
    form_.dx_power = 4;
    form_.dx_antenna = row.dx;
    const std::string deck = ItsDeck(EngineChoice::kVoaCap);
    EXPECT_EQ(Card(deck, "ANTENNA"),
              std::string("ANTENNA       1    1    2   30") + row.transmitter + "    1.5000");
    EXPECT_NE(
        deck.find(std::string("ANTENNA       2    2    2   30") + row.receiver + "    0.0000\n"),
        std::string::npos)
        << deck;
  }
}

TEST_F(ScriptsTest, AnAntennaThatNoCardCanHoldIsRefused) {
  const Antenna cases[] = {{"a234567890/12345678901", "", ""},
                           {"a]b", "", ""},
                           {"a b", "", ""},
                           {"", "61", ""},
                           {"", "x", ""},
                           {"", "", "361"}};
  for (const Antenna& antenna : cases) {
    form_.dx_antenna = antenna;
    with_.log.errors.clear();
    form_.engine = EngineChoice::kVoaCap;
    EXPECT_FALSE(Write());
    ASSERT_FALSE(with_.log.errors.empty());
    EXPECT_NE(with_.log.errors[0].find("the antenna"), std::string::npos);
  }
}

TEST_F(ScriptsTest, StationNamesAreAsciiAndCutToTheirColumns) {
  prefix_ = "PØ/Ä1234";
  EXPECT_EQ(Card(ItsDeck(EngineChoice::kVoaCap), "LABEL"),
            "LABEL     YOUR STATION FN20vm DX P?/?1234 IO91wm  ");
}

TEST(Antennas, AreListedAsTheDeckNamesThem) {
  const skyhop::testing::TemporaryFolder folder;
  for (const char* name : {"default/isotrope", "samples/sample.23", "samples/with blank",
                           "samples/much-too-long-a-name", "empty/deeper/file"}) {
    std::filesystem::create_directories((folder.Path() / name).parent_path());
    WriteFile(folder.Path() / name, "x");
  }
  WriteFile(folder.Path() / "stray", "x");
  EXPECT_EQ(ListAntennas(folder.Path()),
            (std::vector<std::string>{"default/isotrope", "samples/sample.23"}));
  EXPECT_TRUE(ListAntennas(folder.Path() / "absent").empty());
}

}  // namespace
}  // namespace skyhop::IONCAPModule
