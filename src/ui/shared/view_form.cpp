#include "ui/shared/view_form.h"

#include <utility>

namespace skyhop {
namespace {

constexpr std::pair<TextField, std::string PredictionForm::*> kTexts[] = {
    {TextField::kLocalLat, &PredictionForm::local_latitude},
    {TextField::kLocalLon, &PredictionForm::local_longitude},
    {TextField::kDXLat, &PredictionForm::dx_latitude},
    {TextField::kDXLon, &PredictionForm::dx_longitude},
    {TextField::kLocalPwr, &PredictionForm::local_power},
    {TextField::kLocalTakeOff, &PredictionForm::takeoff},
    {TextField::kFlux, &PredictionForm::flux},
    {TextField::kSSN, &PredictionForm::sunspot_number},
    {TextField::kKindex, &PredictionForm::k_index},
    {TextField::kAvail, &PredictionForm::availability},
    {TextField::kSNR, &PredictionForm::snr},
    {TextField::kTheDate, &PredictionForm::date},
};

constexpr std::pair<OptionGroup, int PredictionForm::*> kChoices[] = {
    {OptionGroup::kLocalNoiseLevel, &PredictionForm::local_noise},
    {OptionGroup::kDXNoiseLevel, &PredictionForm::dx_noise},
    {OptionGroup::kDXPwr, &PredictionForm::dx_power},
    {OptionGroup::kPath, &PredictionForm::path},
    {OptionGroup::kPredictSignals, &PredictionForm::direction},
    {OptionGroup::kModeSNRCombo, &PredictionForm::mode},
};

constexpr std::pair<CheckBox, bool PredictionForm::*> kChecks[] = {
    {CheckBox::kOpenBandEnable, &PredictionForm::show_open_bands},
    {CheckBox::kPlotEnable, &PredictionForm::show_critical_frequencies},
    {CheckBox::kDXTracksTesseraLocation, &PredictionForm::dx_tracks_tessera},
};

}  // namespace

PredictionForm FormOf(const PredictionView& view, const Configuration& configuration) {
  PredictionForm form;
  for (const auto& [field, text] : kTexts) form.*text = view.Text(field);
  for (const auto& [group, choice] : kChoices) form.*choice = view.Selected(group);
  for (const auto& [box, checked] : kChecks) form.*checked = view.Checked(box);
  form.local_antenna = configuration.AntennaOf(Station::kLocal);
  form.dx_antenna = configuration.AntennaOf(Station::kDX);
  form.engine = static_cast<EngineChoice>(configuration.Engine());
  form.distance_miles = configuration.DistanceMiles();
  return form;
}

void ShowForm(const PredictionForm& form, PredictionView& view,
              const Configuration& configuration) {
  for (const auto& [field, text] : kTexts) {
    // The date is today's, not a stored one.
    if (field != TextField::kTheDate) view.SetText(field, form.*text);
  }
  for (const auto& [group, choice] : kChoices) view.Select(group, form.*choice);
  if (form.mode >= static_cast<int>(configuration.Modes().size())) {
    view.Select(OptionGroup::kModeSNRCombo, -1);
  }
  for (const auto& [box, checked] : kChecks) view.SetChecked(box, form.*checked);
}

}  // namespace skyhop
