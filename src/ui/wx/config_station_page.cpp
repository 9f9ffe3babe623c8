#include "ui/wx/config_station_page.h"

namespace skyhop {

ConfigStationPage::ConfigStationPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Stations and units", events) {
  AddHeading("Distances are shown in");
  miles_ = AddUnit("statute &miles", distance_unit::kMiles);
  kilometres_ = AddUnit("&kilometres", distance_unit::kKilometres);
  AddHeading("Your station");
  source_ = AddText("");
}

wxRadioButton* ConfigStationPage::AddUnit(const wxString& caption, int unit) {
  auto* button = new wxRadioButton(this, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize,
                                   unit == distance_unit::kMiles ? wxRB_GROUP : 0);
  button->SetToolTip("The unit of the distance between the stations");
  button->Bind(wxEVT_RADIOBUTTON, [this, unit](wxCommandEvent&) {
    Events().Send(&IoncapConfig::DistanceUnit_Click, unit);
  });
  AddNarrow(button);
  return button;
}

void ConfigStationPage::SelectUnit(int unit) {
  (unit == distance_unit::kMiles ? miles_ : kilometres_)->SetValue(true);
}

}  // namespace skyhop
