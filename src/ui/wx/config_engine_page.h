#pragma once

#include <wx/button.h>
#include <wx/radiobut.h>

#include <array>

#include "ui/wx/config_page.h"
#include "ui/wx/focus.h"

namespace skyhop {

/// The choice of the engine, the places of the engines, and the test of an engine.
class ConfigEnginePage : public ConfigPage {
 public:
  ConfigEnginePage(wxWindow* parent, const ConfigEvents& events);

  void Select(int engine);
  void SetFinding(int engine, const std::string& text);
  void SetTestResult(const std::string& text) { SetText(result_, text); }
  void EnableTest(bool enabled) { EnableKeepingFocus(*test_, enabled); }

 private:
  struct Choice {
    wxRadioButton* button;
    wxStaticText* finding;
  };
  std::array<Choice, kEngineCaptions.size()> choices_{};
  wxButton* test_;
  wxStaticText* result_;
};

}  // namespace skyhop
