#pragma once

#include <wx/button.h>
#include <wx/dataview.h>

#include <span>

#include "ui/wx/commit_field.h"
#include "ui/wx/config_page.h"
#include "ui/wx/focus.h"

namespace skyhop {

/// The modes and the signal-to-noise ratio that each needs. The fields below the table hold the
/// selected row.
class ConfigModePage : public ConfigPage {
 public:
  ConfigModePage(wxWindow* parent, const ConfigEvents& events);

  void SetModes(std::span<const ModeSettings> modes, int selected);
  void SetMode(std::size_t row, const ModeSettings& settings);
  void EnableRemove(bool enabled) { EnableKeepingFocus(*remove_, enabled); }

 private:
  void AddTable();
  void AddFields();
  void AddButtons();
  wxButton* MakeButton(wxSizer* row, const wxString& caption, const wxString& tip);
  /// Fills the fields from the selected row.
  void ShowSelected();
  void CommitFields();
  void SendFields();

  wxDataViewListCtrl* table_ = nullptr;
  CommitField* mode_ = nullptr;
  CommitField* snr_ = nullptr;
  wxButton* remove_ = nullptr;
  /// The row whose values the fields hold, -1 for none.
  int shown_ = -1;
};

}  // namespace skyhop
