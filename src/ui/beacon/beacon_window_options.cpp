// Options, files and selection of the beacon window.

#include <algorithm>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/beacon/beacon_window.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;
using std::chrono::milliseconds;

constexpr const char* kSection = "Beacon";

constexpr const char* KeyOf(BeaconCheck check) {
  switch (check) {
    case BeaconCheck::kRotate:
      return "Rotate";
    case BeaconCheck::kLookUp:
      return "LookUp";
    case BeaconCheck::kSelectBearing:
      return "SelectBearing";
    case BeaconCheck::kCustomSchedule:
      return "CustomSchedule";
    case BeaconCheck::kFollow:
      break;
  }
  return "";
}

constexpr std::array<BeaconCheck, 4> kKeptChecks = {BeaconCheck::kRotate, BeaconCheck::kLookUp,
                                                    BeaconCheck::kSelectBearing,
                                                    BeaconCheck::kCustomSchedule};

}  // namespace

bool& BeaconWindow::Flag(BeaconCheck check) {
  switch (check) {
    case BeaconCheck::kRotate:
      return options_.rotate;
    case BeaconCheck::kLookUp:
      return options_.look_up;
    case BeaconCheck::kSelectBearing:
      return options_.select_bearing;
    case BeaconCheck::kCustomSchedule:
      return custom_;
    case BeaconCheck::kFollow:
      break;
  }
  return follow_;
}

void BeaconWindow::RestoreOptions() {
  const Common::Settings& settings = with_.settings;
  for (const BeaconCheck check : kKeptChecks) {
    Flag(check) = settings.GetBooleanSetting(kProductName, kSection, KeyOf(check), "False");
    with_.view.SetChecked(check, Flag(check));
  }
  const auto number = [&](const char* key, int count) {
    const int value = settings.GetIntegerSetting(kProductName, kSection, key, "0");
    return value >= 0 && value < count ? value : 0;
  };
  selection_.by = static_cast<Selection::By>(number("SelectBy", int{kSelectByTexts.size()}));
  selection_.octant =
      static_cast<BeaconModule::Octant>(number("Octant", BeaconModule::kOctantCount));
  wanted_call_ = UpperCase(settings.GetStringSetting(kProductName, kSection, "Call", ""));
  wanted_frequency_ =
      LeadingNumber(settings.GetStringSetting(kProductName, kSection, "Frequency", "14100"));
  with_.view.SetSelectBy(static_cast<int>(selection_.by));
}

void BeaconWindow::SaveOption(BeaconCheck check) {
  const std::string key = KeyOf(check);
  if (key.empty()) return;
  with_.diagnostics.Trap("BeaconMonitor.SaveOption", [&] {
    with_.settings.Store().SaveSetting(kProductName, kSection, key, BooleanText(Flag(check)));
  });
}

void BeaconWindow::SaveSelection() {
  with_.diagnostics.Trap("BeaconMonitor.SaveSelection", [&] {
    const std::array<SettingEntry, 4> entries = {{
        {kSection, "SelectBy", std::to_string(static_cast<int>(selection_.by))},
        {kSection, "Frequency", NumberText(wanted_frequency_)},
        {kSection, "Call", wanted_call_},
        {kSection, "Octant", std::to_string(static_cast<int>(selection_.octant))},
    }};
    with_.settings.Store().Save(kProductName, entries);
  });
}

void BeaconWindow::ReadFiles() {
  files_ = BeaconModule::ReadBeaconFiles(with_.program_folder, custom_, with_.diagnostics);
  schedule_.reset();
  slot_target_.reset();
  selection_.frequency = 0;
  if (files_.schedule) {
    schedule_.emplace(*files_.schedule);
    const std::vector<double>& frequencies = schedule_->Table().frequencies;
    const auto found = std::find(frequencies.begin(), frequencies.end(), wanted_frequency_);
    if (found != frequencies.end()) {
      selection_.frequency = static_cast<std::size_t>(found - frequencies.begin());
    }
  }
  LocateStation();
  UpdateChoices();
}

/// Each key that is pressed in the main window changes its fields; only what stands there for a
/// while is meant.
void BeaconWindow::WatchInputs() {
  const milliseconds passed = with_.timekeeping.Passed();
  const PredictionForm form = with_.read_form();
  const Typed typed{BeaconParameters(form), form.local_latitude, form.local_longitude};
  if (typed.inputs == inputs_) {
    typed_.reset();
  } else if (typed_ != typed) {
    typed_ = typed;
    typed_since_ = passed;
  } else if (passed - typed_since_ >= kSettled) {
    TakeInputs();
  }
  if (form.distance_miles != miles_) LocateStation();
}

void BeaconWindow::TakeInputs() {
  typed_.reset();
  const ParameterSet inputs = BeaconParameters(with_.read_form());
  const bool moved = inputs.receiver != inputs_.receiver;
  inputs_ = inputs;
  if (moved) LocateStation();
}

void BeaconWindow::LocateStation() {
  miles_ = with_.read_form().distance_miles;
  slot_target_.reset();
  ways_.clear();
  for (const BeaconModule::Beacon& beacon : files_.locations.beacons) {
    ways_.push_back(
        BeaconModule::WayTo(inputs_.receiver, beacon.position, miles_, with_.diagnostics));
  }
  with_.view.Refresh();
}

std::vector<std::string> BeaconWindow::Calls() const {
  std::vector<std::string> calls;
  if (!schedule_) return calls;
  // Column by column: in the order in which the beacons come onto the first frequency.
  for (std::size_t column = 0; column < schedule_->Table().frequencies.size(); ++column) {
    for (const std::vector<std::string>& slot : schedule_->Table().slots) {
      const std::string& call = slot[column];
      const bool known = std::find(calls.begin(), calls.end(), call) != calls.end();
      if (!call.empty() && !known) calls.push_back(call);
    }
  }
  return calls;
}

void BeaconWindow::UpdateChoices() {
  std::vector<std::string> texts;
  std::size_t index = 0;
  switch (selection_.by) {
    case Selection::By::kBand:
      if (!schedule_) break;
      for (const double frequency : schedule_->Table().frequencies) {
        texts.push_back(NumberText(frequency) + " kHz");
      }
      index = selection_.frequency;
      break;
    case Selection::By::kCall: {
      texts = Calls();
      const auto found = std::find(texts.begin(), texts.end(), wanted_call_);
      index = found == texts.end() ? 0 : static_cast<std::size_t>(found - texts.begin());
      selection_.call = texts.empty() ? std::string() : texts[index];
      break;
    }
    case Selection::By::kOctant:
      texts.assign(BeaconModule::kOctantNames.begin(), BeaconModule::kOctantNames.end());
      index = static_cast<std::size_t>(selection_.octant);
      break;
  }
  with_.view.SetChoices(texts, texts.empty() ? -1 : static_cast<int>(index));
  with_.view.Refresh();
}

}  // namespace skyhop
