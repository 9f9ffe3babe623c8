#include "engine/point_snr.h"

#include <gtest/gtest.h>

#include <thread>

#include "common/files.h"
#include "common/text.h"
#include "platform/platform.h"
#include "support/fake_engine_host.h"
#include "support/prediction_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::FakeEngineHost;
using skyhop::testing::FakePause;
using skyhop::testing::PredictionFixture;
using std::chrono::milliseconds;
using std::filesystem::perms;
using State = PathReception::State;

/// Point predictions with real processes: the estimate engine, or shell scripts for engines.
class PointSnrTest : public ::testing::Test {
 protected:
  PointSnrTest() { host_.estimate = SKYHOP_ESTIMATE_ENGINE; }

  /// Makes a shell script the engine of the second folder. `$results` is where it has to write,
  /// `$path` is "short" or "long".
  void UseEngine(const std::string& body) {
    const std::filesystem::path engine = folder_ / "ITSHFBC2/bin_win/voacapw.exe";
    std::filesystem::create_directories(engine.parent_path());
    WriteFile(engine,
              "#!/bin/sh\nresults=\"$2/run/$4\"\n"
              "path=long; test \"$4\" = spsnr.txt && path=short\n" +
                  body + "\n");
    std::filesystem::permissions(engine, perms::owner_all);
  }

  /// An engine that answers with the estimate after `before`.
  void UseEngineThatFirst(const std::string& before) {
    UseEngine(before + "\n'" SKYHOP_ESTIMATE_ENGINE "' \"$@\"");
  }

  [[nodiscard]] PointRequest Request(double frequency, const std::string& snr) const {
    PointRequest request{frequency, "FT8", ParametersOf(with_.form)};
    request.circuit.snr = snr;
    return request;
  }
  [[nodiscard]] std::string Predict(double frequency = 14.074, const std::string& snr = "13") {
    return point_.PredictSNR(Request(frequency, snr), begin_);
  }

  /// Polls until all is known, for some seconds at most.
  const PointReception& Await(milliseconds pretended = milliseconds(0)) {
    for (int i = 0; i < 2000 && point_.Running(); ++i) {
      point_.Poll(begin_ + pretended + i * milliseconds(5));
      if (point_.Running()) std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_FALSE(point_.Running());
    return point_.Reception();
  }

  /// Whether the engine that has left its process number in that file has ended.
  [[nodiscard]] bool EngineGone(const char* file) const {
    std::string pid(Trim(File(file)));
    return !std::filesystem::exists("/proc/" + pid);
  }

  const PathReception& Short() { return point_.Reception().paths[path_option::kShort]; }
  const PathReception& Long() { return point_.Reception().paths[path_option::kLong]; }

  [[nodiscard]] std::string File(const char* name) const {
    return ReadFile(folder_ / "ITSHFBC2/run" / name, 100000);
  }

  PredictionFixture with_;
  std::filesystem::path folder_ = with_.log.folder.Path();
  FakePause pause_;
  std::unique_ptr<EngineLauncher> launcher_ = platform::MakeEngineLauncher();
  FakeEngineHost host_;
  PointSnr::Time begin_{std::chrono::hours(5)};
  PointSnr point_{{host_, with_.engine.decks, *launcher_, pause_, with_.log.diagnostics,
                   with_.log.clock, folder_}};
};

TEST_F(PointSnrTest, TheEstimatePredictsBothPathsForTheCurrentHour) {
  EXPECT_EQ(Predict(), "");
  EXPECT_EQ(Short().state, State::kWaiting);
  const PointReception& reception = Await();
  EXPECT_EQ(reception.hour, 13);
  EXPECT_EQ(reception.engine, "SKYHOP ESTIMATE ENGINE");
  // As the results say it: the line of the tag, the column of the one frequency.
  const auto printed = [&](const char* file, const std::string& tag) {
    const std::string text = File(file);
    const std::size_t line = text.rfind('\n', text.find(" " + tag));
    return std::string(Trim(text.substr(line + 17, 5)));
  };
  for (const auto& [path, file] :
       {std::pair(&Short(), "spsnr.txt"), std::pair(&Long(), "lpsnr.txt")}) {
    EXPECT_EQ(path->state, State::kDone) << path->problem;
    EXPECT_EQ(path->snr, std::stof(printed(file, "SNR   ")));
    EXPECT_EQ(path->reliability, std::stof(printed(file, "REL   ")));
    EXPECT_EQ(path->mode, printed(file, "MODE  "));
    EXPECT_EQ(path->signal_power, std::stoi(printed(file, "S DBW ")));
  }
  EXPECT_GT(Short().snr, Long().snr);
  EXPECT_TRUE(with_.log.errors.empty());
}

TEST_F(PointSnrTest, DecksAreForTheHourTheFrequencyTheSnrAndEitherPath) {
  with_.log.clock.now = std::chrono::sys_days{std::chrono::year{2026} / 7 / 1};
  with_.form.local_power = "100";
  with_.form.takeoff = "12";
  EXPECT_EQ(Predict(7.1, "24.4"), "");
  (void)Await();
  EXPECT_EQ(point_.Reception().hour, 0);
  const std::string deck = File("sspscript.txt");
  for (const char* card : {"TIME         24   24    1    1\r\n", "MONTH      2026 7.00\r\n",
                           "FREQUENCY  0.00 7.10 0.00", "SYSTEM     1.00  -3.12.00   10 24.4",
                           "    0.1000\r\n", "  S     0\r\n", "METHOD       30    0\r\n"}) {
    EXPECT_NE(deck.find(card), std::string::npos) << card << deck;
  }
  EXPECT_NE(File("slpscript.txt").find("  L     1\r\n"), std::string::npos);
  EXPECT_EQ(Short().state, State::kDone) << Short().problem;
}

TEST_F(PointSnrTest, TheOtherDirectionTakesTheOthersPowerAndNoise) {
  with_.form.direction = direction_option::kFromTheDXStation;
  with_.form.dx_power = 0;
  with_.form.local_noise = 0;
  EXPECT_EQ(Predict(), "");
  (void)Await();
  const std::string deck = File("sspscript.txt");
  EXPECT_NE(deck.find("CIRCUIT   51.50N     0.12W    40.50N    74.25W"), std::string::npos);
  EXPECT_NE(deck.find("SYSTEM     1.00  -1. 3.00"), std::string::npos) << deck;
  EXPECT_NE(deck.find("    0.0050\r\n"), std::string::npos);
}

TEST_F(PointSnrTest, ValuesThatMakeNoPredictionAreRefusedWithTheReason) {
  EXPECT_EQ(Predict(1.5), "the frequency is not from 1.6 to 60 MHz");
  EXPECT_EQ(Predict(14.1, "100"), "the required SNR is not from -30 to 99 dB");
  EXPECT_EQ(Predict(14.1, "loud"), "the required SNR is not from -30 to 99 dB");
  const struct {
    std::string PredictionForm::*field;
    const char* text;
    const char* reason;
  } cases[] = {
      {&PredictionForm::flux, "", "there is neither a solar flux nor a sunspot number"},
      {&PredictionForm::flux, "63", "the solar flux is not from 64 to 400"},
      {&PredictionForm::availability, "", "the required availability is not from 0 to below 100 %"},
      {&PredictionForm::availability, "100",
       "the required availability is not from 0 to below 100 %"},
      {&PredictionForm::takeoff, "", "the take-off angle is not from 0 to 90 degrees"},
      {&PredictionForm::takeoff, "91", "the take-off angle is not from 0 to 90 degrees"},
      {&PredictionForm::local_power, "0", "the transmitter has no power"},
      {&PredictionForm::dx_latitude, "", "the DX station's coordinates are missing or not valid"},
  };
  for (const auto& [field, text, reason] : cases) {
    with_.form = skyhop::testing::Transatlantic();
    with_.form.*field = text;
    EXPECT_EQ(Predict(), reason) << text;
  }
  EXPECT_FALSE(point_.Running());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "ITSHFBC2/run/spsnr.bat"));
  EXPECT_TRUE(with_.log.errors.empty());
}

TEST_F(PointSnrTest, AnEngineThatFailsOnOnePathLeavesTheOther) {
  const std::pair<const char*, const char*> cases[] = {
      {"test $path = long && { echo 'no coefficients' >&2; exit 1; }",
       "the engine ended without results. "},
      {"test $path = long && { echo letters > \"$results\"; exit 0; }",
       "results missing expected header"},
  };
  for (const auto& [engine, problem] : cases) {
    SCOPED_TRACE(engine);
    UseEngineThatFirst(engine);
    EXPECT_EQ(Predict(), "");
    (void)Await();
    EXPECT_EQ(Short().state, State::kDone) << Short().problem;
    EXPECT_EQ(Long().state, State::kFailed);
    EXPECT_TRUE(Long().problem.starts_with(problem)) << Long().problem;
    ASSERT_EQ(with_.log.errors.size(), 1U);
    EXPECT_NE(with_.log.errors[0].find("lpsnr.txt: "), std::string::npos);
    with_.log.errors.clear();
  }
}

TEST_F(PointSnrTest, EnginesOfTheSystemDoNotMeetInTheirRunFolder) {
  const std::filesystem::path engine = folder_ / "voacapl";
  WriteFile(engine,
            "#!/bin/sh\nmkdir \"${2#--run-dir=}/in use\" || exit 1\n'" SKYHOP_ESTIMATE_ENGINE
            "' \"$@\"\n");
  std::filesystem::permissions(engine, perms::owner_all);
  host_.voacap = engine;
  host_.data = folder_ / "itshfbc";
  std::filesystem::create_directories(host_.data);
  EXPECT_EQ(Predict(), "");
  (void)Await();
  EXPECT_EQ(Short().state, State::kDone) << Short().problem;
  EXPECT_EQ(Long().state, State::kDone) << Long().problem;
  EXPECT_GT(Short().snr, Long().snr);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "ITSHFBC2/run"));
}

TEST_F(PointSnrTest, AnEngineThatTakesTooLongIsEnded) {
  UseEngineThatFirst("test $path = long && { echo $$ > \"$results.pid\"; sleep 30; }");
  EXPECT_EQ(Predict(), "");
  for (int i = 0; i < 1000 && Short().state == State::kWaiting; ++i) {
    point_.Poll(begin_ + std::chrono::seconds(29));
    std::this_thread::sleep_for(milliseconds(5));
  }
  EXPECT_EQ(Short().state, State::kDone) << "it does not wait for the other";
  EXPECT_EQ(Long().state, State::kWaiting);
  (void)Await(std::chrono::seconds(29 + 30));
  EXPECT_EQ(Long().problem, "no answer within 30 s");
  EXPECT_TRUE(EngineGone("lpsnr.txt.pid"));
}

TEST_F(PointSnrTest, ANewRequestReplacesTheOneThatIsRunning) {
  UseEngine("echo $$ > \"$results.pid\"; sleep 30");
  EXPECT_EQ(Predict(), "");
  while (!std::filesystem::exists(folder_ / "ITSHFBC2/run/spsnr.txt.pid")) {
    std::this_thread::sleep_for(milliseconds(5));
  }
  UseEngineThatFirst("");
  EXPECT_EQ(Predict(21.1), "");
  EXPECT_TRUE(EngineGone("spsnr.txt.pid"));
  (void)Await();
  EXPECT_EQ(point_.Reception().request.frequency, 21.1);
  EXPECT_EQ(Short().state, State::kDone) << Short().problem;
  EXPECT_NE(File("spsnr.txt").find(" 21.1 "), std::string::npos);
}

TEST(SignalMeter, ReadsInStepsOfSixDecibelsBelowNine) {
  const struct {
    int power;  // dBm
    double frequency;
    const char* reading;
  } cases[] = {{-73, 14, "S9"},   {-72, 14, "S9+1"}, {-53, 14, "S9+20"}, {-79, 14, "S8"},
               {-74, 14, "S8"},   {-127, 14, "S0"},  {-400, 14, "S0"},   {-121, 14, "S1"},
               {-93, 50.1, "S9"}, {-99, 50.1, "S8"}};
  for (const auto& [power, frequency, reading] : cases) {
    EXPECT_EQ(SUnits(power, frequency), reading) << power;
  }
  EXPECT_EQ(DecibelMilliwatts(-103), -73);
}

}  // namespace
}  // namespace skyhop::IONCAPModule
