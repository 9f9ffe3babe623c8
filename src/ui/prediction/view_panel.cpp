#include "ui/prediction/view_panel.h"

#include <optional>

namespace skyhop {
namespace {

/// The field that holds a text; nothing for texts that have none.
std::optional<TextField> FieldOf(PanelText text) {
  switch (text) {
    case PanelText::kLocalLat:
      return TextField::kLocalLat;
    case PanelText::kLocalLon:
      return TextField::kLocalLon;
    case PanelText::kDXLat:
      return TextField::kDXLat;
    case PanelText::kDXLon:
      return TextField::kDXLon;
    case PanelText::kFlux:
      return TextField::kFlux;
    case PanelText::kSSN:
      return TextField::kSSN;
    case PanelText::kKindex:
      return TextField::kKindex;
    case PanelText::kAvail:
      return TextField::kAvail;
    case PanelText::kSNR:
      return TextField::kSNR;
    case PanelText::kLocalPwr:
      return TextField::kLocalPwr;
    case PanelText::kLocalTakeOff:
      return TextField::kLocalTakeOff;
    default:
      return std::nullopt;
  }
}

/// The view's group for a choice; nothing for the engine, which the configuration holds.
std::optional<OptionGroup> GroupOf(PanelChoice choice) {
  switch (choice) {
    case PanelChoice::kLocalNoiseLevel:
      return OptionGroup::kLocalNoiseLevel;
    case PanelChoice::kDXNoiseLevel:
      return OptionGroup::kDXNoiseLevel;
    case PanelChoice::kDXPwr:
      return OptionGroup::kDXPwr;
    case PanelChoice::kPath:
      return OptionGroup::kPath;
    case PanelChoice::kPredictSignals:
      return OptionGroup::kPredictSignals;
    case PanelChoice::kModeSNRCombo:
      return OptionGroup::kModeSNRCombo;
    case PanelChoice::kEngineButton:
      break;
  }
  return std::nullopt;
}

/// The view's box for a check; nothing for the unit of distance.
std::optional<CheckBox> BoxOf(PanelCheck check) {
  switch (check) {
    case PanelCheck::kOpenBandEnable:
      return CheckBox::kOpenBandEnable;
    case PanelCheck::kPlotEnable:
      return CheckBox::kPlotEnable;
    case PanelCheck::kDXTracksTesseraLocation:
      return CheckBox::kDXTracksTesseraLocation;
    case PanelCheck::kDistanceMiles:
      break;
  }
  return std::nullopt;
}

}  // namespace

std::string ViewPanel::Text(PanelText text) const {
  if (const auto field = FieldOf(text)) return view_->Text(*field);
  if (text == PanelText::kLastPrefix) return last_prefix_;
  if (text == PanelText::kSummary) return summary_;
  return configuration_->Url(text);
}

void ViewPanel::SetText(PanelText text, const std::string& value) {
  if (const auto field = FieldOf(text)) {
    view_->SetText(*field, value);
    if (on_text_) on_text_(*field);
  } else if (text == PanelText::kLastPrefix) {
    last_prefix_ = value;
    view_->SetLabel(Label::kPrefix, value);
  } else if (text == PanelText::kSummary) {
    summary_ = value;
    view_->SetLabel(Label::kSummary, value);
  } else {
    configuration_->RestoreUrl(text, value);
  }
}

int ViewPanel::Choice(PanelChoice choice) const {
  const auto group = GroupOf(choice);
  return group ? view_->Selected(*group) : configuration_->Engine();
}

void ViewPanel::SetChoice(PanelChoice choice, int index) {
  const auto group = GroupOf(choice);
  if (!group) {
    configuration_->SetEngine(index);
    return;
  }
  // The list of modes may have become shorter since its choice was saved.
  const bool beyond = choice == PanelChoice::kModeSNRCombo &&
                      index >= static_cast<int>(configuration_->Modes().size());
  view_->Select(*group, beyond ? -1 : index);
}

bool ViewPanel::Checked(PanelCheck check) const {
  const auto box = BoxOf(check);
  return box ? view_->Checked(*box) : configuration_->DistanceMiles();
}

void ViewPanel::SetChecked(PanelCheck check, bool on) {
  if (const auto box = BoxOf(check)) {
    view_->SetChecked(*box, on);
  } else {
    configuration_->SetDistanceMiles(on);
  }
}

}  // namespace skyhop
