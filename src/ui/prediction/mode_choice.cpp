#include "ui/prediction/mode_choice.h"

#include "common/text.h"
#include "ui/shared/mode_names.h"

namespace skyhop {

const ModeSettings* ModeChoice::SelectedMode() const {
  const int selected = with_.view.Selected(OptionGroup::kModeSNRCombo);
  if (selected < 0 || selected >= static_cast<int>(modes_.size())) return nullptr;
  return &modes_[static_cast<std::size_t>(selected)];
}

std::string ModeChoice::Selected() const {
  const ModeSettings* const mode = SelectedMode();
  return mode == nullptr ? "" : mode->mode;
}

void ModeChoice::Show() {
  modes_ = with_.configuration.Modes();
  std::vector<std::string> names;
  names.reserve(modes_.size());
  for (const ModeSettings& mode : modes_) names.push_back(mode.mode);
  with_.view.SetModes(names);
}

void ModeChoice::Use() {
  const ModeSettings* const mode = SelectedMode();
  if (mode == nullptr) return;
  with_.fields.Put(TextField::kSNR, mode->snr);
  with_.parameters.SetPredictionSNR(mode->snr);
  with_.inputs_changed();
}

void ModeChoice::Follow() {
  const bool any = Any();
  const std::string name = Selected();
  Show();
  int index = -1;
  for (std::size_t mode = 0; any && mode < modes_.size(); ++mode) {
    if (EqualsIgnoringCase(modes_[mode].mode, name)) index = static_cast<int>(mode);
  }
  with_.view.Select(OptionGroup::kModeSNRCombo, index);
  Use();
}

bool ModeChoice::SelectNearest(const std::string& mode, const std::function<void()>& changed) {
  const std::optional<std::size_t> nearest = NearestMode(mode, modes_, Selected());
  if (!nearest) return false;
  const auto index = static_cast<int>(*nearest);
  if (with_.view.Selected(OptionGroup::kModeSNRCombo) == index) return true;
  with_.view.Select(OptionGroup::kModeSNRCombo, index);
  Use();
  changed();
  return true;
}

}  // namespace skyhop
