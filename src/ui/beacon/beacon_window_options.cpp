// Options, files and selection of the beacon window.

#include <algorithm>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "ui/beacon/beacon_window.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;

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
  selection_.call = UpperCase(settings.GetStringSetting(kProductName, kSection, "Call", ""));
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
  if (schedule_) wanted_frequency_ = schedule_->Table().frequencies.at(selection_.frequency);
  with_.diagnostics.Trap("BeaconMonitor.SaveSelection", [&] {
    const std::array<SettingEntry, 4> entries = {{
        {kSection, "SelectBy", std::to_string(static_cast<int>(selection_.by))},
        {kSection, "Frequency", NumberText(wanted_frequency_)},
        {kSection, "Call", selection_.call},
        {kSection, "Octant", std::to_string(static_cast<int>(selection_.octant))},
    }};
    with_.settings.Store().Save(kProductName, entries);
  });
}

void BeaconWindow::ReadFiles() {
  files_ = BeaconModule::ReadBeaconFiles(with_.program_folder, custom_, with_.diagnostics);
  schedule_.reset();
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

void BeaconWindow::LocateStation() {
  inputs_ = ReadBeaconInputs(with_.panel, with_.parameters);
  miles_ = with_.panel.Checked(PanelCheck::kDistanceMiles);
  Diagnostics& log = with_.diagnostics;
  const bool valid = LatLonModule::ValidLatitude(inputs_.latitude, log) &&
                     LatLonModule::ValidLongitude(inputs_.longitude, log);
  station_ = {LatLonModule::UndefinedAngle(), LatLonModule::UndefinedAngle()};
  if (valid) {
    station_ = {LatLonModule::ParseAngle(inputs_.latitude, log),
                LatLonModule::ParseAngle(inputs_.longitude, log)};
  }
  ways_.clear();
  for (const BeaconModule::Beacon& beacon : files_.locations.beacons) {
    ways_.push_back(BeaconModule::WayTo(station_, beacon.position, miles_, log));
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
      const auto found = std::find(texts.begin(), texts.end(), selection_.call);
      index = found == texts.end() ? 0 : static_cast<std::size_t>(found - texts.begin());
      if (!texts.empty()) selection_.call = texts[index];
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
