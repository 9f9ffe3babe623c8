#pragma once

#include <wx/radiobut.h>

#include "ui/wx/config_page.h"

namespace skyhop {

/// The unit of distance, and the source of your station's location.
class ConfigStationPage : public ConfigPage {
 public:
  ConfigStationPage(wxWindow* parent, const ConfigEvents& events);

  void SelectUnit(int unit);
  void SetSource(const std::string& text) { SetText(source_, text); }

 private:
  wxRadioButton* AddUnit(const wxString& caption, int unit);

  wxRadioButton* miles_;
  wxRadioButton* kilometres_;
  wxStaticText* source_;
};

}  // namespace skyhop
