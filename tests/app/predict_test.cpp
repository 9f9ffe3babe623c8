#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "common/files.h"
#include "common/text.h"
#include "support/program_run.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using Arguments = std::vector<std::string>;

long Count(const std::string& text, const std::string& what) {
  long count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
    ++count;
  }
  return count;
}

class PredictTest : public ::testing::Test {
 protected:
  explicit PredictTest(const std::string& folder = "program folder") : folder_(folder) {}

  ProgramResult Run(Arguments more, bool with_circuit = true) {
    Arguments arguments;
    // The inputs of the sample results between New York and London.
    if (with_circuit) {
      arguments = {"--from", "40.5,-74.25", "--to",  "51.5,-0.1167",
                   "--date", "15-Nov-26",   "--sfi", "150"};
      if (std::find(more.begin(), more.end(), "--engine") == more.end()) {
        arguments.insert(arguments.end(), {"--engine", "ioncap"});
      }
    }
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(
        SKYHOP_PREDICT, arguments,
        {{"SKYHOP_HOME", PathText(folder_.Path())}, {"XDG_CONFIG_HOME", PathText(config_.Path())}});
  }

  /// Installs a shell script as the engine. The script gets the two paths of the driver file in
  /// $script and $results.
  void UseEngine(const std::string& body) {
    const std::filesystem::path engine = folder_ / "IonCap/ioncap.exe";
    std::filesystem::create_directories(engine.parent_path());
    WriteFile(engine, "#!/bin/sh\nread -r script\nread -r results\n" + body + "\n");
    std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
  }

  /// Installs an engine that answers with this text.
  void UseAnswer(const std::string& text) {
    WriteFile(folder_ / "answer", text);
    UseEngine("cat \"$(dirname \"$results\")/../answer\" > \"$results\"");
  }

  TemporaryFolder folder_;
  TemporaryFolder config_{"config"};
};

TEST_F(PredictTest, TheEstimateEngineMakesAWholePrediction) {
  const std::string svg = PathText(folder_ / "chart.svg");
  const ProgramResult result = Run({"--svg", svg});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "skyhop-predict: the built-in estimate engine is used. " +
                            PathText(folder_ / "IonCap/ioncap.exe") + " is a copy of it.\n");
  EXPECT_TRUE(Holds(result.out, "SP 24 db ")) << result.out;
  EXPECT_TRUE(Holds(result.out, "\n 00 "));
  EXPECT_TRUE(Holds(result.out, "\n 23 "));
  EXPECT_TRUE(Holds(result.out, "Engine: SKYHOP ESTIMATE ENGINE, version "));
  EXPECT_TRUE(Holds(result.out, "SSN: 105, from a solar flux of 150"));
  const std::string picture = ReadFile(svg, 1 << 20);
  EXPECT_TRUE(Holds(picture, "<svg "));
  EXPECT_TRUE(picture.ends_with("</svg>\n"));
  EXPECT_EQ(Count(picture, "lowest useable frequency"), 1);
}

TEST_F(PredictTest, TableCsvAndJsonTellTheSame) {
  UseAnswer(TestData("results/newyork-london-method26.results.txt"));
  const ProgramResult table = Run({});
  const ProgramResult csv = Run({"--csv"});
  const ProgramResult json = Run({"--json"});
  ASSERT_EQ(table.status, 0) << table.err;
  EXPECT_TRUE(Holds(table.out, " 00   8.09  11.08  12.96   2.23"));
  EXPECT_TRUE(Holds(table.out, " 13  21.58  30.82  38.53   6.96"));
  EXPECT_TRUE(Holds(table.out, "Engine: VOACAP, version 16.1207W"));
  EXPECT_FALSE(Holds(table.out, "\"!\" no frequency reaches"));
  EXPECT_EQ(Count(csv.out, "\n"), 25);
  EXPECT_TRUE(Holds(csv.out, "hour_utc,fot_mhz,muf_mhz,hpf_mhz,luf_mhz,open_160m,open_80m,"));
  EXPECT_TRUE(Holds(csv.out, ",open_6m,reached,engine,engine_version\n"));
  EXPECT_TRUE(
      Holds(csv.out, "\n13,21.58,30.82,38.53,6.96,0,0,0,3,3,3,3,3,2,2,0,1,VOACAP,16.1207W\n"));
  const auto parsed = nlohmann::json::parse(json.out);
  EXPECT_EQ(parsed["engine"]["name"], "VOACAP");
  EXPECT_EQ(parsed["engine"]["fallback"], false);
  EXPECT_EQ(parsed["hours"][13]["reached"], true);
  EXPECT_EQ(parsed["hours"].size(), 24U);
  EXPECT_EQ(parsed["hours"][13]["muf"], 30.82);
  EXPECT_EQ(parsed["hours"][13]["bands"][3]["open"], 3);
  EXPECT_EQ(parsed["hours"][0]["luf"], 2.23);
}

TEST_F(PredictTest, HoursThatReachNoReliabilityShowNoOpenBand) {
  UseAnswer(TestData("results/tokyo-saopaulo-long-method26.results.txt"));
  const auto run = [&](const char* form) {
    return Run({form, "--from", "35.6833,139.7667", "--to", "-23.55,-46.6333", "--path", "long",
                "--date", "15-Mar-26", "--ssn", "140", "--power", "100", "--dx-noise",
                "residential", "--availability", "50", "--engine", "ioncap"},
               false)
        .out;
  };
  const std::string table = run("--timeout=60");
  EXPECT_TRUE(Holds(
      table, " 01  19.37  27.68  34.60  27.68!    x   x   x   x   x   x   x   x   x   x   x\n"))
      << table;
  EXPECT_TRUE(Holds(table, "\"!\" no frequency reaches the required reliability"));
  EXPECT_TRUE(Holds(run("--csv"), ",0,VOACAP,16.1207W\n"));
  const auto json = nlohmann::json::parse(run("--json"));
  EXPECT_EQ(json["hours"][1]["reached"], false);
  EXPECT_EQ(json["hours"][1]["bands"][9]["open"], 0);
}

TEST_F(PredictTest, StoredSettingsAreTheStartOnRequest) {
  std::filesystem::create_directories(config_ / "marlo");
  WriteFile(config_ / "marlo/Skyhop.ini",
            "[Configuration]\nSFI=200\nPower=100\nXLat=40 0' 0\" N\nXlon=75 0' 0\" W\n");
  const Arguments circuit = {"--to", "IO91", "--date", "15-Nov-26", "--deck"};
  EXPECT_EQ(Run(circuit, false).status, 2) << "your station is only in the settings";
  Arguments with_settings = circuit;
  with_settings.emplace_back("--settings");
  const ProgramResult stored = Run(with_settings, false);
  EXPECT_EQ(stored.out.substr(10, 16), "04000N    07500W") << stored.err;
  EXPECT_TRUE(Holds(stored.out, "SYSTEM    00010"));
  EXPECT_TRUE(Holds(stored.out, "SUNSPOT   15700")) << stored.out;

  const struct {
    const char* settings;
    const char* snr;
    const char* remark;
  } modes[] = {
      {"SNRMode=2\n", "51.", ""},
      {"SNRMode=1\n[ModeDependentSettings]\nModes=CW,HELL\nSNR HELL=33\n", "33.", ""},
      {"SNRMode=2\n[ModeDependentSettings]\nModes=CW,HELL\n", "50.",
       "skyhop-predict: the stored mode is none of the modes in the settings; using 50 dB\n"},
  };
  for (const auto& [settings, snr, remark] : modes) {
    WriteFile(config_ / "marlo/Skyhop.ini",
              std::string("[Configuration]\nXLat=1N\nXlon=1E\nSNR=50\n") + settings);
    const ProgramResult mode = Run(with_settings, false);
    EXPECT_TRUE(Holds(mode.out, std::string("  ") + snr + "\nMONTH")) << mode.out;
    EXPECT_EQ(mode.err, remark);
  }
  WriteFile(config_ / "marlo/Skyhop.ini", "[Configuration]\nXLat=1N\nXlon=1E\nEngine=7\n");
  const ProgramResult engine = Run(with_settings, false);
  EXPECT_EQ(engine.status, 2);
  EXPECT_TRUE(Holds(engine.err, "the stored engine 7 does not exist")) << engine.err;
}

TEST_F(PredictTest, AFailingEngineEndsWithStatusThreeAndItsReason) {
  const std::string good = TestData("results/newyork-london-method26.results.txt");
  const std::string results = PathText(folder_ / "IonCap/results.txt");
  const struct {
    const char* what;
    std::string engine;  ///< a script, or the answer if it begins with a blank
    std::string reason;
  } cases[] = {
      {"complains", "echo 'card SYSTEM is bad' >&2; exit 1", "It printed: card SYSTEM is bad."},
      {"writes nothing", ": > \"$results\"", "ended without writing " + results},
      {"stops half way", " " + good.substr(0, 2100), "(" + results + ", line 48, columns 30-36)"},
  };
  for (const auto& [what, engine, reason] : cases) {
    if (engine[0] == ' ') {
      UseAnswer(engine.substr(1));
    } else {
      UseEngine(engine);
    }
    const ProgramResult result = Run({"--svg", PathText(folder_ / "chart.svg")});
    EXPECT_EQ(result.status, 3) << what;
    EXPECT_TRUE(Holds(result.err, reason)) << what << ": " << result.err;
    EXPECT_EQ(result.out, "") << what;
    EXPECT_FALSE(std::filesystem::exists(folder_ / "chart.svg")) << what;
    std::filesystem::remove_all(results);
  }
}

TEST_F(PredictTest, AnOldAnswerIsNeverPassedOffAsNew) {
  UseEngine("exit 1");
  WriteFile(folder_ / "IonCap/results.txt",
            TestData("results/newyork-london-method26.results.txt"));
  EXPECT_EQ(Run({}).status, 3);
  // A folder has the name of a file that the run must write.
  UseAnswer(TestData("results/newyork-london-method26.results.txt"));
  std::filesystem::remove_all(folder_ / "IonCap/script.txt");
  std::filesystem::create_directory(folder_ / "IonCap/script.txt");
  const ProgramResult result = Run({});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(Holds(result.err, "unable to delete existing")) << result.err;
}

TEST_F(PredictTest, ADeadRunsAnswerIsNotTaken) {
  // The engine of the killed first run answers while that of the second run works.
  WriteFile(folder_ / "answer", TestData("results/newyork-london-method26.results.txt"));
  UseEngine(
      "cd \"$(dirname \"$results\")/..\"\n"
      "if mkdir first; then echo > started; while ! test -e second; do sleep 0.02; done\n"
      "cp answer \"$results\"; else mkdir second; sleep 20; fi");
  const std::string first =
      "\"$0\" --from 40.5,-74.25 --to 51.5,-0.1167 --date 15-Nov-26 --sfi 150 --engine ioncap & "
      "program=$!; while ! test -e \"$1/started\"; do sleep 0.02; done; kill -KILL $program";
  const std::map<std::string, std::string> environment = {
      {"SKYHOP_HOME", PathText(folder_.Path())}};
  (void)RunProgram("/bin/sh", {"-c", first, SKYHOP_PREDICT, PathText(folder_.Path())}, environment);
  const ProgramResult second = Run({"--direction", "from", "--dx-power", "1500"});
  EXPECT_EQ(second.status, 3) << second.out;
  EXPECT_TRUE(Holds(second.err, "Results are for 40.50 N 74.25 W to 51.50 N 0.12 W, not "))
      << second.err;
}

TEST_F(PredictTest, AHangingEngineEndsWithStatusFour) {
  UseEngine("sleep 30");
  const auto start = std::chrono::steady_clock::now();
  const ProgramResult result = Run({"--timeout", "0.2"});
  EXPECT_EQ(result.status, 4);
  EXPECT_TRUE(Holds(result.err, "has not finished after 0.2 s")) << result.err;
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(PredictTest, AnInterruptedPredictionEndsItsEngineToo) {
  const std::string pid_file = PathText(folder_ / "IonCap/results.txt.pid");
  for (const char* engine : {"", "trap '' TERM; "}) {
    UseEngine(std::string(engine) + "echo $$ > \"$results.pid\"; sleep 30");
    std::filesystem::remove(pid_file);
    const ProgramResult result =
        RunProgram("/bin/sh",
                   {"-c",
                    "\"$0\" --from FN20 --to IO91 --engine ioncap & program=$!\n"
                    "while ! test -s \"$1\"; do sleep 0.02; done\n"
                    "kill -TERM $program; wait $program; echo $?\n"
                    "n=0; while kill -0 $(cat \"$1\") 2>&-; do n=$((n+1)); test $n -gt 100 && "
                    "exit 9; sleep 0.02; done",
                    SKYHOP_PREDICT, pid_file},
                   {{"SKYHOP_HOME", PathText(folder_.Path())}});
    EXPECT_EQ(result.status, 0) << "the engine is still there: " << engine;
    EXPECT_EQ(result.out, "143\n");
  }
}

TEST_F(PredictTest, CompleteResultsAreTakenAlthoughTheEngineLingers) {
  WriteFile(folder_ / "answer",
            ReplaceAll(TestData("results/newyork-london-method26.results.txt"), "\n", "\r\n"));
  UseEngine("cat \"$(dirname \"$results\")/../answer\" > \"$results\"; sleep 30");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Run({}).status, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(PredictTest, TheUsersOwnEngineIsUsedAndKept) {
  UseAnswer(TestData("results/newyork-london-method26.results.txt"));
  const std::string own = ReadFile(folder_ / "IonCap/ioncap.exe", 10000);
  EXPECT_EQ(Run({}).status, 0);
  EXPECT_EQ(ReadFile(folder_ / "IonCap/ioncap.exe", 10000), own);
}

/// The number of cells in which a band is open.
int OpenCells(const nlohmann::json& hours) {
  int open = 0;
  for (const auto& hour : hours) {
    for (const auto& band : hour["bands"]) open += band["open"] > 0 ? 1 : 0;
  }
  return open;
}

TEST_F(PredictTest, EveryEngineChoiceWorksOnAFreshMachineInEveryForm) {
  for (const char* engine : {"ioncap", "icepac", "voacap", "voacap-snr"}) {
    SCOPED_TRACE(engine);
    const std::string svg = PathText(folder_ / engine);
    const Arguments choice = {"--engine", engine};
    const auto run = [&](const Arguments& more) {
      Arguments all = choice;
      all.insert(all.end(), more.begin(), more.end());
      const ProgramResult result = Run(all);
      EXPECT_EQ(result.status, 0) << result.err;
      EXPECT_TRUE(result.err.starts_with("skyhop-predict: the built-in estimate engine is used. "));
      EXPECT_EQ(Count(result.err, "\n"), 1) << result.err;
      return result.out;
    };
    const bool snr = std::string(engine) == "voacap-snr";
    const std::string table = run({"--svg", svg});
    EXPECT_TRUE(Holds(table, "Engine: SKYHOP ESTIMATE ENGINE, version ")) << table;
    EXPECT_EQ(Holds(table, "4 reliable on more than 80 % of the days"), snr);
    EXPECT_TRUE(Holds(ReadFile(PathFromText(svg), 1 << 20), "</svg>"));
    EXPECT_EQ(Count(run({"--csv"}), "\n"), 25);
    const auto json = nlohmann::json::parse(run({"--json"}));
    EXPECT_EQ(json["engine"]["choice"], engine);
    EXPECT_EQ(json["engine"]["fallback"], true);
    EXPECT_NE(json["engine"]["fallback_reason"], "");
    const ProgramResult refused = Run({"--engine", engine, "--no-fallback"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.out, "");
    EXPECT_TRUE(Holds(refused.err, "the built-in estimate engine would be used. ")) << refused.err;
    EXPECT_GT(OpenCells(json["hours"]), 60);
    EXPECT_EQ(json["hours"][13]["bands"][5].contains("snr"), snr);
    if (snr) {
      EXPECT_EQ(json["hours"][13]["bands"][5]["mode"], "3F2");
      EXPECT_TRUE(json["hours"][13]["luf"].is_null());
    }
  }
}

TEST_F(PredictTest, AntennasReachTheDeckAndAreChecked) {
  const ProgramResult deck = Run({"--engine", "voacap", "--deck", "--antenna", "5.5",
                                  "--dx-antenna", "samples/sample.23", "--dx-azimuth", "45"});
  EXPECT_TRUE(Holds(deck.out, "     5.500[default/isotrope     ]  0.0    1.5000\n")) << deck.out;
  EXPECT_TRUE(Holds(deck.out, "     0.000[samples/sample.23    ] 45.0    0.0000\n"));
  for (const char* engine : {"ioncap", "voacap"}) {
    const ProgramResult unused = Run({"--engine", engine, "--dx-antenna", "samples/sample.23"});
    EXPECT_EQ(unused.status, 0);
    EXPECT_TRUE(Holds(unused.err,
                      "\nskyhop-predict: the DX station's antenna samples/sample.23 has "
                      "no effect: "))
        << unused.err;
  }
  const ProgramResult refused = Run({"--engine", "voacap", "--antenna", "99"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_TRUE(Holds(refused.err, "is no number from -30 to 60 dBi")) << refused.err;
}

TEST_F(PredictTest, EnginesAreListedWithTheAutomaticOne) {
  const auto list = [&] {
    const ProgramResult result = RunProgram(SKYHOP_PREDICT, {"--engines", "--json"},
                                            {{"SKYHOP_HOME", PathText(folder_.Path())},
                                             {"PATH", "/bin"},
                                             {"HOME", PathText(folder_.Path())}});
    EXPECT_EQ(result.status, 0) << result.err;
    return nlohmann::json::parse(result.out);
  };
  const auto fresh = list();
  EXPECT_EQ(fresh["auto"], "ioncap");
  EXPECT_EQ(fresh["engines"][2]["choice"], "voacap");
  EXPECT_EQ(fresh["engines"][2]["kind"], "estimate");
  UseEngine("exit 1");
  const std::filesystem::path voacap = folder_ / "ITSHFBC/bin_win/voacapw.exe";
  std::filesystem::create_directories(voacap.parent_path());
  std::filesystem::copy_file(folder_ / "IonCap/ioncap.exe", voacap);
  const auto installed = list();
  EXPECT_EQ(installed["auto"], "voacap");
  EXPECT_EQ(installed["engines"][0]["kind"], "own");
  EXPECT_EQ(installed["engines"][2]["executable"], PathText(voacap));
  EXPECT_TRUE(Holds(Run({"--engines"}).out, "\nauto        voacap\n"));
  EXPECT_TRUE(Holds(Run({"--engine", "auto", "--deck"}).out, "[default/isotrope     ]"));
}

TEST_F(PredictTest, SnrResultsFillTheTableOfBands) {
  const std::filesystem::path engine = folder_ / "ITSHFBC/bin_win/voacapw.exe";
  std::filesystem::create_directories(engine.parent_path());
  std::filesystem::create_directories(folder_ / "ITSHFBC/run");
  WriteFile(folder_ / "answer", TestData("results/newyork-london-method30.results.txt"));
  WriteFile(engine, "#!/bin/sh\ntest \"$1\" = SILENT && cp \"$2/../answer\" \"$2/run/$4\"\n");
  std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
  const ProgramResult result = Run({"--engine", "voacap-snr", "--json"});
  ASSERT_EQ(result.status, 0) << result.err;
  const auto band = nlohmann::json::parse(result.out)["hours"][1]["bands"][4];
  EXPECT_EQ(band["band"], "30M");
  EXPECT_EQ(band["snr"], 45);
  EXPECT_EQ(band["reliability"], 0.85);
  EXPECT_EQ(band["mode"], "2F2");
  EXPECT_EQ(band["signal_dbw"], -118);
  EXPECT_EQ(band["open"], 4);

  WriteFile(folder_ / "answer", ReplaceAll(TestData("results/newyork-london-method30.results.txt"),
                                           "\n   5.0 10.3", "\n   5.0 **.*"));
  const ProgramResult damaged = Run({"--engine", "voacap-snr", "--json"});
  EXPECT_TRUE(Holds(damaged.err, "hour 5, MUF: ")) << damaged.err;
  const auto hour = nlohmann::json::parse(damaged.out)["hours"][5];
  EXPECT_TRUE(hour["muf"].is_null());
  EXPECT_EQ(hour["fot"], 8.1);
  EXPECT_TRUE(Holds(Run({"--engine", "voacap-snr"}).out, "\n 05   8.10      -      -      -"));
}

TEST_F(PredictTest, ThePictureGoesNowhereHalfway) {
  UseAnswer(TestData("results/newyork-london-method26.results.txt"));
  const ProgramResult result = Run({"--svg", PathText(folder_ / "no/such/folder.svg")});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(Holds(result.err, "folder.svg")) << result.err;
}

TEST_F(PredictTest, TheDebugLogGoesToStandardErrorOnRequest) {
  const ProgramResult result = Run({"--verbose"});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(Holds(result.err, "IONCAPModule.LoadEngineData complete\n"));
  EXPECT_TRUE(Holds(result.err, "TIME      00001000240000100000\n"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "ErrorLog.txt"))
      << "the log file is not asked for";
}

struct OddName {
  const char* description;
  const char* folder;
};
constexpr OddName kOddNames[] = {{"Apostrophe", "it's"},
                                 {"Substitution", "$(touch pwned)"},
                                 {"Separator", "a;touch pwned"},
                                 {"Quote", "a\"b"},
                                 {"Pattern", "-n *?"},
                                 {"Umlaut", "Z\xC3\xBCrich"},
                                 {"Backticks", "`touch pwned` & $HOME"}};

class OddFolderTest : public PredictTest, public ::testing::WithParamInterface<std::size_t> {
 protected:
  OddFolderTest() : PredictTest(kOddNames[GetParam()].folder) {}
};

TEST_P(OddFolderTest, ThePredictionWorksAndNothingIsExecuted) {
  const ProgramResult result = Run({});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_FALSE(std::filesystem::exists(folder_.Path().parent_path() / "pwned"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "IonCap/pwned"));
}

INSTANTIATE_TEST_SUITE_P(Names, OddFolderTest,
                         ::testing::Range<std::size_t>(0, std::size(kOddNames)),
                         [](const auto& name) { return kOddNames[name.param].description; });

}  // namespace
}  // namespace skyhop::testing
