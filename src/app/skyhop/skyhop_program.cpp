#include "app/skyhop/skyhop_program.h"

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>
#ifdef __WXMSW__
#include <wx/msw/private.h>
#endif

#include "common/files.h"
#include "common/program.h"
#include "platform/desktop.h"
#include "platform/links.h"
#include "ui/wx/normal_place.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// How often another start may have asked for the window.
constexpr int kShowInterval = 200;  // ms

/// What the platform knows about the machine and the toolkit about its monitors.
class FactsWithMonitors : public MachineFacts {
 public:
  explicit FactsWithMonitors(std::unique_ptr<MachineFacts> facts) : facts_(std::move(facts)) {}

  [[nodiscard]] MachineDescription Describe() const override {
    MachineDescription machine = facts_->Describe();
    machine.monitors = DesktopMonitors();
    return machine;
  }

 private:
  std::unique_ptr<MachineFacts> facts_;
};

wxIconBundle ProgramIcons() {
#ifdef __WXMSW__
  // Drawn for each size, in the executable itself.
  return {"#1", wxGetInstance()};
#else
  const wxBitmapBundle icon = wxBitmapBundle::FromSVGFile(
      ToWx(PathText(platform::DataFile("icons/skyhop.svg"))), wxSize(64, 64));
  return icon.IsOk() ? wxIconBundle(icon.GetIcon(wxSize(64, 64))) : wxIconBundle();
#endif
}

}  // namespace

void DownloadPause::Wait(std::chrono::milliseconds duration) {
  pause_->Wait(duration);
  if (on_escape_ && platform::TakeEscapeKey()) on_escape_();
}

SkyhopProgram::SkyhopProgram()
    : folder_(platform::ProgramFolder()),
      clock_(platform::MakeClock()),
      facts_(std::make_unique<FactsWithMonitors>(platform::MakeMachineFacts())),
      store_(platform::MakeSettingsStore()),
      launcher_(platform::MakeEngineLauncher()),
      host_(platform::MakeEngineHost()),
      instance_(platform::MakeInstanceGuard(folder_)),
      locker_(platform::MakeRunLocker(folder_)),
      diagnostics_(folder_, *clock_, *facts_),
      settings_(*store_, diagnostics_),
      configuration_(settings_, diagnostics_),
      bands_(folder_, diagnostics_, [this] { configuration_window_.BandsMissing(); }),
      engine_({*launcher_, *host_, pause_, *clock_, messages_, settings_, diagnostics_}),
      pane_(engine_.table, diagnostics_, *clock_),
      frame_(new PredictionFrame(pane_, platform::TieLabel)),
      forecast_frame_(new ForecastFrame(nullptr)),
      conditions_frame_(new ConditionsFrame(nullptr, {})),
      space_weather_({frame_->View(), *forecast_frame_, *conditions_frame_, configuration_,
                      messages_, settings_, diagnostics_, *clock_, download_pause_, folder_}),
      files_frame_(new ConditionsFrame(nullptr, {"Skyhop Deck and Results", "DeckAndResults",
                                                 "Deck and results", wxSize(860, 600)})),
      files_window_({*files_frame_, settings_, diagnostics_, "DeckAndResults"}),
      transport_(platform::MakeLinkTransport(kProductName)),
      links_(*transport_, frame_->View(), diagnostics_),
      point_({*host_, engine_.decks, *launcher_, pause_, diagnostics_, *clock_, folder_}),
      answers_(*transport_, diagnostics_),
      point_prediction_({frame_->View(), point_, engine_.parameters, configuration_, bands_,
                         answers_, diagnostics_, *clock_}),
      foreground_locker_(*locker_),
      timekeeping_(platform::MakeTimekeeping()),
      beacon_predictions_({*locker_, *launcher_, *host_, pause_, diagnostics_, *clock_, folder_}),
      beacon_frame_(new BeaconFrame(nullptr)),
      beacons_({*beacon_frame_, beacon_predictions_, links_.BeaconFollowers(),
                [this] { return FormOf(frame_->View(), configuration_); }, messages_, settings_,
                diagnostics_, *clock_, *timekeeping_, folder_}),
      probe_({foreground_locker_, *launcher_, *host_, pause_, diagnostics_, folder_}),
      configuration_frame_(new ConfigurationFrame(nullptr)),
      configuration_window_({*configuration_frame_, configuration_, bands_, probe_, *host_,
                             links_.Overview(), space_weather_.service, *this, messages_, settings_,
                             diagnostics_, folder_}),
      controller_({frame_->View(),
                   pane_,
                   configuration_,
                   configuration_window_,
                   files_window_,
                   bands_,
                   engine_,
                   *launcher_,
                   *instance_,
                   foreground_locker_,
                   links_.Server(),
                   links_.Peers(),
                   space_weather_.service,
                   point_prediction_,
                   beacons_,
                   messages_,
                   settings_,
                   diagnostics_,
                   *clock_,
                   folder_,
                   platform::HelpFile(folder_)}),
      windows_({frame_.get(), configuration_frame_.get(), forecast_frame_.get(),
                conditions_frame_.get(), files_frame_.get(), beacon_frame_.get()}) {
  configuration_.SetDefaultEngine(static_cast<int>(AutomaticEngine(*host_, folder_)));
  foreground_locker_.SetYield([this] { beacon_predictions_.Yield(); });
  links_.Attach(controller_, point_prediction_, windows_, windows_.Main());
  diagnostics_.SetPeerCaption([this] { return links_.InteropCaption(); });
  AttachWindows();
}

SkyhopProgram::~SkyhopProgram() {
  // What ends after them may still write to the log.
  diagnostics_.SetPeerCaption({});
  // A window that is still there would outlive what it shows.
  for (SideFrame* frame : SideFrames()) delete frame;
  if (frame_) frame_->Attach(nullptr);
  delete frame_.get();
}

/// The windows beside the main one that are still there.
std::vector<SideFrame*> SkyhopProgram::SideFrames() const {
  std::vector<SideFrame*> frames;
  for (SideFrame* frame : {static_cast<SideFrame*>(configuration_frame_.get()),
                           static_cast<SideFrame*>(forecast_frame_.get()),
                           static_cast<SideFrame*>(conditions_frame_.get()),
                           static_cast<SideFrame*>(files_frame_.get()),
                           static_cast<SideFrame*>(beacon_frame_.get())}) {
    if (frame != nullptr) frames.push_back(frame);
  }
  return frames;
}

void SkyhopProgram::AttachWindows() {
  const wxIconBundle icons = ProgramIcons();
  if (!icons.IsEmpty()) {
    frame_->SetIcons(icons);
    for (SideFrame* frame : SideFrames()) frame->SetIcons(icons);
  }
  configuration_frame_->Attach(configuration_window_);
  forecast_frame_->Attach(space_weather_.forecast_window);
  conditions_frame_->Attach(space_weather_.conditions_window);
  files_frame_->Attach(files_window_);
  beacon_frame_->Attach(beacons_);
  frame_->Attach(&controller_);
  frame_->SetBusyQuery([this] { return space_weather_.procedure.Busy(); });
  frame_->SetBusyCancel([this] { space_weather_.procedure.Cancel(); });
  download_pause_.SetEscapeListener([this] { space_weather_.procedure.Cancel(); });
  frame_->SetShowPreparation(platform::LayOutHidden);
  frame_->SetClosedListener([this] {
    for (SideFrame* frame : SideFrames()) frame->Destroy();
  });
  configuration_.AddListener([this](Configuration::Item item) {
    if (item != Configuration::Item::kShowToolTips) return;
    ShowToolTips();
  });
}

bool SkyhopProgram::Start() {
  // The folder of an instance that runs is not changed under it.
  if (!instance_->AnotherIsRunning()) {
    diagnostics_.SetFullLogAside();
    for (const std::string& problem : platform::FillProgramFolder(folder_)) {
      diagnostics_.ErrorLog("cannot set up the program folder: " + problem);
    }
    show_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
      instance_->AnswerShow([this] { windows_.Main().Activate(); });
    });
    show_timer_.Start(kShowInterval);
  }
  if (!controller_.Form_Load()) return false;
  ShowToolTips();
  return true;
}

void SkyhopProgram::ShowToolTips() {
  const bool show = configuration_.ShowToolTips();
  for (SideFrame* frame : SideFrames()) frame->ShowToolTips(show);
}

bool SkyhopProgram::CloseWindow() {
  return !frame_ || frame_->Close();
}

void SkyhopProgram::SetEndListener(std::function<void()> listener) {
  frame_->SetEndListener(std::move(listener));
}

void SkyhopProgram::ResetWindows() {
  if (frame_) frame_->PutToDefaultPlace();
  for (SideFrame* frame : SideFrames()) frame->PutToDefaultPlace();
}

}  // namespace skyhop
