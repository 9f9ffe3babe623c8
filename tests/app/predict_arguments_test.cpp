// Tests the command-line program's arguments, without an engine.

#include <gtest/gtest.h>

#include <algorithm>

#include "common/files.h"
#include "common/text.h"
#include "support/program_run.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using Arguments = std::vector<std::string>;

class PredictArgumentsTest : public ::testing::Test {
 protected:
  ProgramResult Run(Arguments more, bool with_circuit = true) {
    Arguments arguments;
    if (with_circuit) arguments = {"--from", "FN20", "--to", "IO91wm", "--date", "15-Nov-26"};
    // The machine of the tests may have another engine.
    arguments.insert(arguments.end(), {"--engine", "ioncap"});
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(
        PathFromText(SKYHOP_PREDICT), arguments,
        {{"SKYHOP_HOME", PathText(folder_.Path())}, {"XDG_CONFIG_HOME", PathText(config_.Path())}});
  }

  TemporaryFolder folder_{"program folder"};
  TemporaryFolder config_{"config"};
};

TEST_F(PredictArgumentsTest, TheDeckOfAKnownCircuitIsPrintedExactly) {
  const ProgramResult result =
      Run({"--from", "40 30' 0\" N 74 15' 0\" W", "--to", "51 30' 0\" N 0 7' 0\" W", "--date",
           "15-Nov-26", "--sfi", "150", "--deck"},
          false);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, ReplaceAll(TestData("decks/transatlantic-ioncap.txt"), "\r\n", "\n"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "IonCap")) << "nothing is set up, nothing run";
}

TEST_F(PredictArgumentsTest, BadArgumentsEndWithStatusTwoAndAReason) {
  const struct {
    Arguments arguments;
    const char* reason;
  } cases[] = {
      {{"--sfi", "63"}, "Illegal solar flux\nskyhop-predict: Illegal Solar Flux\n"},
      {{"--sfi", "many"}, "\"many\" is not a number"},
      {{"--sfi", "", "--ssn", ""}, "Illegal Solar Flux and SSN"},
      {{"--date", "31-Feb-26"}, "Illegal Date"},
      {{"--snr", "100"}, "Illegal SNR"},
      {{"--snr", "-31"}, "Illegal SNR"},
      {{"--availability", "100"}, "Illegal Availability"},
      {{"--takeoff", "91"}, "Illegal transmitter takeoff angle"},
      {{"--power", "-1"}, "Illegal Transmitter power"},
      {{"--power", "1e999"}, "--power"},
      {{"--ssn", "-5"}, "--ssn"},
      {{"--k", "21"}, "Illegal geomagnetic K-index"},
      {{"--dx-power", "7"}, "--dx-power"},
      {{"--noise", "loud"}, "--noise"},
      {{"--to", "IO9"}, "--to: \"IO9\" is not a place"},
      {{"--timeout", "0"}, "--timeout"},
      {{"--csv", "--json"}, "--json"},
      {{"--nonsense"}, "--nonsense"},
      {{"stray"}, "stray"},
  };
  for (const auto& [arguments, reason] : cases) {
    Arguments all = {"--from", "FN20"};
    if (arguments[0] != "--to") all.insert(all.end(), {"--to", "IO91"});
    if (arguments[0] != "--date") all.insert(all.end(), {"--date", "15-Nov-26"});
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ProgramResult result = Run(all, false);
    EXPECT_EQ(result.status, 2) << arguments[0];
    EXPECT_TRUE(Holds(result.err, reason)) << result.err;
    EXPECT_EQ(result.out, "");
  }
  EXPECT_TRUE(Holds(Run({"--to", "IO91"}, false).err, "--from is missing"));
}

TEST_F(PredictArgumentsTest, PlacesAreReadInThreeForms) {
  const struct {
    const char* place;
    const char* card;  ///< the receiver's columns; empty: not a place
  } cases[] = {
      {"IO91wm", "05152N    00012W"},
      {" io91 ", "05150N    00100W"},
      {"51.5,-0.1167", "05150N    00012W"},
      {"-33.9, 18.4", "03390S    01840E"},
      {"51 30' 0\" N 0 7' 0\" W", "05150N    00012W"},
      {"33.9S 18.4E", "03390S    01840E"},
      {"S 33 54 E 18 25", "03390S    01842E"},
      {"33\u00B054'S, 18\u00B025'E", "03390S    01842E"},
      {"51,5 N 0,1 W", "05150N    00010W"},
      {"51,5,-0,1", "05150N    00010W"},
      {"S33,9, E18,4", "03390S    01840E"},
      {"-33,9 18,42E", ""},
      {"0,0", "00000N    00000E"},
      {"90,-180", "09000N    18000W"},
      {"91,0", ""},
      {"0,181", ""},
      {"", ""},
      {"51 30' N 0 7' N", ""},
      {"51N", ""},
      {"ZZ99", ""},
  };
  for (const auto& [place, card] : cases) {
    const ProgramResult result =
        Run({"--from", "FN20", "--to", place, "--date", "15-Nov-26", "--deck"}, false);
    EXPECT_EQ(result.status, *card == '\0' ? 2 : 0) << place;
    EXPECT_EQ(result.out.substr(0, 46).substr(std::min<std::size_t>(30, result.out.size())), card)
        << place;
  }
}

TEST_F(PredictArgumentsTest, RolesAndOptionsReachTheDeck) {
  const ProgramResult to = Run(
      {"--deck", "--power", "5", "--dx-noise", "industrial", "--noise", "remote", "--ssn", "0"});
  EXPECT_TRUE(Holds(to.out, "SYSTEM    00001  -1.   3.  10.  24.\n")) << to.out;
  EXPECT_TRUE(Holds(to.out, "SUNSPOT   00000\n")) << "a given 0 is not derived from the flux";
  const ProgramResult from = Run({"--deck", "--direction", "from", "--power", "5", "--dx-power",
                                  "1500", "--noise", "Remote", "--path", "long"});
  EXPECT_TRUE(Holds(from.out, "SYSTEM    00150  -4.   3.  10.  24.\n")) << from.out;
  EXPECT_TRUE(Holds(from.out, "00001\nSYSTEM"));
  EXPECT_EQ(from.out.substr(10, 16), "05152N    00012W");
}

}  // namespace
}  // namespace skyhop::testing
