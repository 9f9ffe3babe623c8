#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/files.h"
#include "common/program.h"
#include "report/chart_title.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"
#include "support/fake_view.h"
#include "ui/prediction/chart/chart_pointer.h"
#include "ui/prediction/field_rules.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop::testing {

/// The order in which things happened.
using Events = std::vector<std::string>;

// The parts that the window starts and ends. Each tells what was asked of it, and fails when a test
// says so.
class Part {
 public:
  explicit Part(Events& events) : events_(&events) {}

  std::string failing;

 protected:
  void Happened(const std::string& event) {
    events_->push_back(event);
    if (event == failing) throw Error(errors::kInvalidCall, event + " fails");
  }

 private:
  Events* events_;
};

class FakeInstance : public InstanceGuard {
 public:
  [[nodiscard]] bool AnotherIsRunning() override { return another; }
  void ShowOther() override { ++shown; }
  void AnswerShow(const std::function<void()>& /*show*/) override {}
  bool another = false;
  int shown = 0;
};

class FakeServer : public CommandServer, public Part {
 public:
  using Part::Part;
  void Initialize() override { Happened("serve"); }
  void AcknowledgeLauncher() override { Happened("acknowledge"); }
  void Terminate() override { Happened("end serving"); }
};

class FakePeers : public PeerLinks, public Part {
 public:
  using Part::Part;
  void Initialize() override { Happened("link"); }
  void Terminate() override { Happened("end links"); }
  [[nodiscard]] std::optional<double> TransceiverFrequency() override { return kilohertz; }
  [[nodiscard]] bool HasSolarHistory() override { return history; }
  void DisplaySolarHistory() override { Happened("history"); }
  void ServerRetryTimer_Tick() override { Happened("retry"); }
  void PeerValuesTimer_Tick() override {
    Happened("values");
    if (on_values) on_values();
  }

  std::function<void()> on_values;  ///< hands on what a peer has published
  std::optional<double> kilohertz;
  bool history = false;
};

class FakeSpaceWeather : public SpaceWeather, public Part {
 public:
  using Part::Part;
  void Attach(DownloadWindow* attached) override { window = attached; }
  [[nodiscard]] bool Available() const override { return available; }
  void DownloadSSN() override { Happened("download ssn"); }
  [[nodiscard]] bool SunspotNumberFailed() const override { return offline; }
  void ShowForecast() override { Happened("forecast"); }
  void SolarForecastTimer_Tick() override { Happened("forecast tick"); }
  void UpdateCurrentConditions() override { Happened("update"); }
  void ShowCurrentConditions() override { Happened("current"); }

  DownloadWindow* window = nullptr;
  bool available = true;
  bool offline = false;
};

class FakeTextWindow : public TextWindow {
 public:
  void ShowText(const std::string& shown) override { text = shown; }
  std::string text;
};

class FakePointPrediction : public PointPrediction, public Part {
 public:
  using Part::Part;
  void Predict(double frequency, const std::string& mode, const std::string& snr) override {
    Happened("point " + mode + (snr.empty() ? "" : " " + snr));
    predicted = frequency;
  }
  void Follow(double frequency, const std::string& mode) override {
    Happened("follow " + mode);
    predicted = frequency;
  }
  [[nodiscard]] bool InputsChanged() override {
    ++looks;
    return outdated;
  }
  void Terminate() override { Happened("point end"); }
  void SNRExecuteTimer_Tick() override { Happened("point tick"); }

  double predicted = 0;
  int looks = 0;
  bool outdated = false;
};

class FakeBeacons : public BeaconMonitor, public Part {
 public:
  using Part::Part;
  [[nodiscard]] bool Available() const override { return available; }
  void Show() override { Happened("beacons"); }

  bool available = false;
};

class FakeConfigurationWindow : public ConfigurationWindow, public Part {
 public:
  FakeConfigurationWindow(Events& events, Configuration& configuration)
      : Part(events), configuration_(&configuration) {}
  void Form_Load() override {
    configuration_->Load();
    Happened("configure");
  }
  void Show() override { Happened("show configuration"); }
  void Peers_Change() override { Happened("peers change"); }
  void ResetWindows() override { Happened("reset windows"); }
  void Form_Unload() override { Happened("end configuration"); }

 private:
  Configuration* configuration_;
};

/// The controller of the prediction window over real prediction parts and fakes of everything that
/// reaches out of the program.
class IonCapTest : public ::testing::Test {
 protected:
  IonCapTest() {
    for (const char* name : {"IonCap", "~IonCap", "ITSHFBC/run", "~ITSHFBC/run"}) {
      std::filesystem::create_directories(folder_ / name);
    }
    WriteFile(folder_ / "Bands.txt", "40M,7.0,7.3\n20M,14.0,14.35\n");
    bands_.InitializeBandArray();
    chart_.Resize(900, 600, 12);
  }

  /// No handler may fail unless the test makes it.
  void TearDown() override {
    if (errors_expected_) return;
    EXPECT_EQ(log_.errors, std::vector<std::string>());
  }

  void Store(const std::string& key, const std::string& value,
             const std::string& section = "Configuration") {
    store_.SaveSetting(kProductName, section, key, value);
  }
  std::string Stored(const std::string& key, const std::string& section = "Configuration") {
    return store_.Read(kProductName, section, key, "(none)");
  }

  /// Starts the window with your station in New York and the DX station in London.
  void Start() {
    Store("XLat", "40 30' 0\" N");
    Store("Xlon", "74 15' 0\" W");
    Store("SFI", "150");
    ASSERT_TRUE(window_.Form_Load());
    Type(TextField::kDXLat, "51 30' 0\" N");
    Type(TextField::kDXLon, "0 7' 0\" W");
    log_.debug.clear();
    events_.clear();
  }

  /// Puts a text into a field and leaves it. Returns whether it was accepted.
  bool Type(TextField field, const std::string& text) {
    view_.SetText(field, text);
    window_.Field_Change(field);
    return window_.Field_Leave(field);
  }
  void Choose(OptionGroup group, int index) {
    view_.Select(group, index);
    window_.Option_Click(group);
  }
  void Check(CheckBox box, bool checked) {
    view_.SetChecked(box, checked);
    window_.Check_Click(box);
  }
  [[nodiscard]] bool Running() const { return run_.Waiting(); }
  /// Whether a command that reads the fields is executed.
  [[nodiscard]] bool Accepted() {
    events_.clear();
    view_.SetText(TextField::kSNRFrequency, "14.1");
    window_.Button_Click(Button::kSNRPredictCmd);
    return !events_.empty();
  }

  [[nodiscard]] bool Logged(const std::string& line) const {
    return std::find(log_.debug.begin(), log_.debug.end(), line) != log_.debug.end();
  }

  /// The summary of the prediction that was asked for last.
  [[nodiscard]] std::string Summary() {
    return SummaryLine(parameters_.Set(), configuration_.DistanceMiles(), "", log_.diagnostics);
  }

  Events events_;
  LoggedDiagnostics log_;
  std::filesystem::path folder_ = log_.folder.Path();
  FakeClock& clock_ = log_.clock;
  FakeView view_;
  FakeUserMessages messages_;
  MemorySettingsStore store_;
  Common::Settings settings_{store_, log_.diagnostics};
  Configuration configuration_{settings_, log_.diagnostics};
  FreqDependentModule::BandTable bands_{folder_, log_.diagnostics};
  FakePause pause_;
  FakeLauncher launcher_;
  FakeEngineHost host_;
  PredictionEngine engine_{
      {launcher_, host_, pause_, clock_, messages_, settings_, log_.diagnostics}};
  IONCAPModule::Parameters& parameters_ = engine_.parameters;
  IONCAPModule::RunControl& run_ = engine_.run;
  ResultsTable& table_ = engine_.table;
  ChartPane chart_{table_, log_.diagnostics, clock_};
  FakeInstance instance_;
  OneLocker locker_;
  FakeServer server_{events_};
  FakePeers peers_{events_};
  FakeSpaceWeather space_weather_{events_};
  FakePointPrediction point_prediction_{events_};
  FakeBeacons beacons_{events_};
  FakeConfigurationWindow configuration_window_{events_, configuration_};
  FakeTextWindow files_window_;
  IonCap window_{{view_,
                  chart_,
                  configuration_,
                  configuration_window_,
                  files_window_,
                  bands_,
                  engine_,
                  launcher_,
                  instance_,
                  locker_,
                  server_,
                  peers_,
                  space_weather_,
                  point_prediction_,
                  beacons_,
                  messages_,
                  settings_,
                  log_.diagnostics,
                  clock_,
                  folder_,
                  folder_ / "help page" / "index.htm"}};
  bool errors_expected_ = false;
};

}  // namespace skyhop::testing
