#include "ui/wx/conditions_frame.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include "ui/wx/wx_text.h"

namespace skyhop {

ConditionsFrame::ConditionsFrame(wxWindow* parent)
    : SideFrame(parent, "Skyhop Current Conditions", "CurrentConditions", wxSize(680, 440)),
      text_(new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP | wxBORDER_NONE)) {
  wxFont font = wxSystemSettings::GetFont(wxSYS_ANSI_FIXED_FONT);
  font.SetPointSize(GetFont().GetPointSize());
  text_->SetFont(font);
  text_->SetName("Current conditions bulletin");
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(text_, wxSizerFlags(1).Expand());
  SetSizer(whole);
  SetMinSize(FromDIP(wxSize(320, 160)));
}

void ConditionsFrame::SetText(const std::string& text) {
  wxString lines = ToWx(text);
  // The toolkit's own line end, on every system.
  lines.Replace("\r\n", "\n");
  text_->ChangeValue(lines);
  text_->SetInsertionPoint(0);
  text_->ShowPosition(0);
}

void ConditionsFrame::UserCloses() {
  if (controller_ != nullptr) controller_->Form_QueryUnload();
}

}  // namespace skyhop
