#pragma once

#include <wx/checkbox.h>

#include <array>

#include "ui/wx/commit_field.h"
#include "ui/wx/config_page.h"

namespace skyhop {

/// Take-off angle and power by band.
class ConfigBandPage : public ConfigPage {
 public:
  ConfigBandPage(wxWindow* parent, const ConfigEvents& events);

  void SetEnabled(bool on) { enabled_->SetValue(on); }
  void EnableCheckBox(bool enabled) { enabled_->Enable(enabled); }
  void EnableBands(bool enabled);
  void SetBand(std::size_t band, const BandSettings& settings);
  void SetMissing(const std::string& text) { SetText(missing_, text); }

 private:
  struct Row {
    CommitField* takeoff;
    CommitField* power;
  };
  CommitField* AddField(wxSizer* grid, std::size_t band, const wxString& tip);
  void SendRow(std::size_t band);

  wxCheckBox* enabled_;
  wxStaticText* missing_;
  std::array<Row, kBandCount> rows_{};
};

}  // namespace skyhop
