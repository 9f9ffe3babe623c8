#include "ui/wx/config_band_page.h"

#include "bands/bands.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

ConfigBandPage::ConfigBandPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Frequency-dependent settings", events) {
  AddText(
      "Your take-off angle and power by band. The prediction of a day takes those of the "
      "transceiver's band, while the transceiver application is connected; SNR at a Frequency "
      "takes those of its frequency's band, for signals to the DX station. Where a field is "
      "empty, the value of the prediction window counts.");
  enabled_ = new wxCheckBox(this, wxID_ANY, "&Use these settings");
  enabled_->SetToolTip("Let take-off angle and power depend on the band");
  enabled_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    Events().Send(&IoncapConfig::FreqDependentEnabled_Click, event.IsChecked());
  });
  AddNarrow(enabled_);
  missing_ = AddText("");

  auto* grid = new wxFlexGridSizer(3, wxSize(FromDIP(16), FromDIP(2)));
  for (const char* heading : {"Band", "Take-off angle (degrees)", "Power (watts)"}) {
    grid->Add(new wxStaticText(this, wxID_ANY, heading), wxSizerFlags().CenterVertical());
  }
  for (std::size_t band = 0; band < rows_.size(); ++band) {
    const wxString name = ToWx(kBandLabelTexts.at(band));
    grid->Add(new wxStaticText(this, wxID_ANY, name), wxSizerFlags().CenterVertical());
    rows_.at(band).takeoff =
        AddField(grid, band, "Take-off angle on " + name + ", 0 to 90 degrees");
    rows_.at(band).power = AddField(grid, band, "Transmitter power on " + name + ", watts");
  }
  Add(grid);
}

CommitField* ConfigBandPage::AddField(wxSizer* grid, std::size_t band, const wxString& tip) {
  auto* field = new CommitField(this, [this, band] { SendRow(band); });
  field->SetToolTip(tip);
  grid->Add(field, wxSizerFlags().CenterVertical().Expand());
  return field;
}

void ConfigBandPage::SendRow(std::size_t band) {
  const Row& row = rows_.at(band);
  Events().Send(&IoncapConfig::Band_Change, band,
                BandSettings{row.takeoff->Text(), row.power->Text()});
}

void ConfigBandPage::EnableBands(bool enabled) {
  for (const Row& row : rows_) {
    row.takeoff->Enable(enabled);
    row.power->Enable(enabled);
  }
}

void ConfigBandPage::SetBand(std::size_t band, const BandSettings& settings) {
  rows_.at(band).takeoff->SetText(settings.takeoff);
  rows_.at(band).power->SetText(settings.power);
}

}  // namespace skyhop
