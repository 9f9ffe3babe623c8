#include "ui/beacon/beacon_choice.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop {
namespace {

using BeaconModule::Selection;

constexpr const char* kSection = "Beacon";

/// The settings of the check boxes, in the order of BeaconCheck; null if it is not saved.
constexpr std::array<const char*, kBeaconCheckWords.size()> kCheckKeys = {
    nullptr, "Rotate", "LookUp", "SelectBearing", "CustomSchedule"};

/// The position of `value`, 0 if it is missing.
template <class Value>
std::size_t IndexOf(const std::vector<Value>& values, const Value& value) {
  const auto found = std::find(values.begin(), values.end(), value);
  return found == values.end() ? 0 : static_cast<std::size_t>(found - values.begin());
}

}  // namespace

void BeaconChoice::Restore() {
  for (std::size_t i = 0; i < kCheckKeys.size(); ++i) {
    const char* const key = kCheckKeys.at(i);
    if (key == nullptr) continue;
    checked_.at(i) = settings_->GetBooleanSetting(kProductName, kSection, key, "False");
    view_->SetChecked(static_cast<BeaconCheck>(i), checked_.at(i));
  }
  const auto number = [&](const char* key, int count) {
    const int value = settings_->GetIntegerSetting(kProductName, kSection, key, "0");
    return value >= 0 && value < count ? value : 0;
  };
  selection_.by = static_cast<Selection::By>(number("SelectBy", int{kSelectByTexts.size()}));
  selection_.octant =
      static_cast<BeaconModule::Octant>(number("Octant", BeaconModule::kOctantCount));
  wanted_call_ = UpperCase(settings_->GetStringSetting(kProductName, kSection, "Call", ""));
  wanted_frequency_ =
      LeadingNumber(settings_->GetStringSetting(kProductName, kSection, "Frequency", "14100"));
  view_->SetSelectBy(static_cast<int>(selection_.by));
}

void BeaconChoice::Offer(const KnownBeacons& known) {
  std::vector<std::string> texts;
  std::size_t index = 0;
  switch (selection_.by) {
    case Selection::By::kBand:
      for (const double frequency : known.Frequencies()) {
        texts.push_back(NumberText(frequency) + " kHz");
      }
      index = selection_.frequency = IndexOf(known.Frequencies(), wanted_frequency_);
      break;
    case Selection::By::kCall:
      texts = known.Calls();
      index = IndexOf(texts, wanted_call_);
      selection_.call = texts.empty() ? std::string() : texts[index];
      break;
    case Selection::By::kOctant:
      texts.assign(BeaconModule::kOctantNames.begin(), BeaconModule::kOctantNames.end());
      index = static_cast<std::size_t>(selection_.octant);
      break;
  }
  view_->SetChoices(texts, texts.empty() ? -1 : static_cast<int>(index));
}

void BeaconChoice::SelectBy(int index, const KnownBeacons& known) {
  selection_.by = static_cast<Selection::By>(index);
  Offer(known);
  SaveSelection();
}

void BeaconChoice::Choose(int index, const KnownBeacons& known) {
  if (index < 0) return;
  const auto entry = static_cast<std::size_t>(index);
  switch (selection_.by) {
    case Selection::By::kBand:
      wanted_frequency_ = known.Frequencies().at(entry);
      selection_.frequency = entry;
      break;
    case Selection::By::kCall:
      selection_.call = wanted_call_ = known.Calls().at(entry);
      break;
    case Selection::By::kOctant:
      selection_.octant = static_cast<BeaconModule::Octant>(index);
      break;
  }
  SaveSelection();
}

void BeaconChoice::Check(BeaconCheck check, bool checked) {
  checked_.at(static_cast<std::size_t>(check)) = checked;
  const char* const key = kCheckKeys.at(static_cast<std::size_t>(check));
  if (key == nullptr) return;
  diagnostics_->Trap("BeaconMonitor.SaveOption", [&] {
    settings_->Store().SaveSetting(kProductName, kSection, key, BooleanText(checked));
  });
}

void BeaconChoice::SaveSelection() {
  diagnostics_->Trap("BeaconMonitor.SaveSelection", [&] {
    const std::array<SettingEntry, 4> entries = {{
        {kSection, "SelectBy", std::to_string(static_cast<int>(selection_.by))},
        {kSection, "Frequency", NumberText(wanted_frequency_)},
        {kSection, "Call", wanted_call_},
        {kSection, "Octant", std::to_string(static_cast<int>(selection_.octant))},
    }};
    settings_->Store().Save(kProductName, entries);
  });
}

const std::optional<BeaconModule::Transmission>& BeaconChoice::Target(const KnownBeacons& known,
                                                                      UtcTime now) {
  const auto& schedule = known.Schedule();
  const BeaconModule::Slot slot = schedule ? schedule->At(now) : BeaconModule::Slot();
  const bool same = slot_target_ && slot_target_->slot == slot &&
                    slot_target_->selection == selection_ &&
                    slot_target_->revision == known.Revision();
  if (!same) {
    slot_target_ = {slot, selection_, known.Revision(), std::nullopt};
    if (schedule) {
      slot_target_->target = TargetAt(*schedule, selection_, now, known.Facts(now));
    }
  }
  return slot_target_->target;
}

BeaconModule::FollowOptions BeaconChoice::Following() const {
  if (!Checked(BeaconCheck::kFollow)) return {};
  return {.retune = true,
          .rotate = Checked(BeaconCheck::kRotate),
          .look_up = Checked(BeaconCheck::kLookUp),
          .select_bearing = Checked(BeaconCheck::kSelectBearing)};
}

}  // namespace skyhop
