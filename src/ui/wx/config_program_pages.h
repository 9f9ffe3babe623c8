#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>

#include "ui/wx/config_page.h"
#include "ui/wx/focus.h"

namespace skyhop {

/// The debug log, and where the program keeps its files.
class ConfigDiagnosticsPage : public ConfigPage {
 public:
  ConfigDiagnosticsPage(wxWindow* parent, const ConfigEvents& events);

  void SetDiagMode(bool on) { diag_mode_->SetValue(on); }
  void SetErrorLog(const std::string& text) { SetText(log_, text); }
  void SetProgramFolder(const std::string& text) { SetText(folder_, text); }
  void EnableOpenLog(bool enabled) { EnableKeepingFocus(*open_log_, enabled); }

 private:
  wxCheckBox* diag_mode_;
  wxStaticText* log_;
  wxButton* open_log_;
  wxStaticText* folder_;
};

/// How the program's windows behave.
class ConfigWindowsPage : public ConfigPage {
 public:
  ConfigWindowsPage(wxWindow* parent, const ConfigEvents& events);

  void SetShowToolTips(bool on) { show_tool_tips_->SetValue(on); }
  void SetDualMonitor(bool on) { dual_monitor_->SetValue(on); }

 private:
  wxCheckBox* show_tool_tips_;
  wxCheckBox* dual_monitor_;
};

}  // namespace skyhop
