#include "ui/wx/config_program_pages.h"

namespace skyhop {
namespace {

wxCheckBox* MakeCheckBox(wxWindow* parent, const wxString& caption, const wxString& tip,
                         const ConfigEvents& events, void (IoncapConfig::*event)(bool)) {
  auto* box = new wxCheckBox(parent, wxID_ANY, caption);
  box->SetToolTip(tip);
  box->Bind(wxEVT_CHECKBOX,
            [&events, event](wxCommandEvent& click) { events.Send(event, click.IsChecked()); });
  return box;
}

wxButton* MakeButton(wxWindow* parent, const wxString& caption, const wxString& tip,
                     const ConfigEvents& events, void (IoncapConfig::*event)()) {
  auto* button = new wxButton(parent, wxID_ANY, caption);
  button->SetToolTip(tip);
  button->Bind(wxEVT_BUTTON, [&events, event](wxCommandEvent&) { events.Send(event); });
  return button;
}

}  // namespace

ConfigDiagnosticsPage::ConfigDiagnosticsPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Diagnostics", events) {
  diag_mode_ = MakeCheckBox(this, "&Write the debug log", "Log every step of the program", events,
                            &IoncapConfig::DiagMode_Click);
  AddNarrow(diag_mode_);
  AddText(
      "The error log always tells what went wrong. With this box checked it also tells each "
      "step of the program and grows quickly: check it when support asks for it.");
  AddHeading("Error log");
  log_ = AddText("");
  open_log_ =
      MakeButton(this, "Open &log", "Show the error log", events, &IoncapConfig::OpenLogCmd_Click);
  AddNarrow(open_log_);
  AddHeading("Program folder");
  folder_ = AddText("");
  AddNarrow(MakeButton(this, "Open program &folder",
                       "Show the folder with the engines, the bands and the error log", events,
                       &IoncapConfig::OpenFolderCmd_Click));
}

ConfigWindowsPage::ConfigWindowsPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Windows", events) {
  show_tool_tips_ =
      MakeCheckBox(this, "Show &tool tips", "Explain the control that the pointer rests on", events,
                   &IoncapConfig::ShowToolTips_Click);
  AddNarrow(show_tool_tips_);
  dual_monitor_ = MakeCheckBox(this, "Use &more than one monitor",
                               "Let windows come back on the monitor where they were", events,
                               &IoncapConfig::DualMonitor_Click);
  AddNarrow(dual_monitor_);
  AddText(
      "With this box checked, windows come back on the monitor where they were closed, "
      "otherwise on the main one.");
  AddHeading("Places and sizes");
  AddText("Puts all windows of the program back to the places and sizes that they had at first.");
  AddNarrow(MakeButton(this, "&Reset windows", "Put all windows back to their first places", events,
                       &IoncapConfig::ResetWindowsCmd_Click));
}

}  // namespace skyhop
