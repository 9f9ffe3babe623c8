#include "ui/wx/conditions_frame.h"

#include <wx/panel.h>
#include <wx/sizer.h>

#include "ui/wx/wx_text.h"

namespace skyhop {

ConditionsFrame::ConditionsFrame(wxWindow* parent, const Words& words)
    : ViewFrame(parent, words.title, words.name, words.size), words_(words) {}

void ConditionsFrame::MakeControls() {
  // The panel gives the margin its colour.
  auto* base = new wxPanel(this);
  text_ = new wxTextCtrl(base, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                         wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP);
  text_->SetFont(wxFontInfo(GetFont().GetFractionalPointSize()).Family(wxFONTFAMILY_TELETYPE));
  text_->SetName(words_.text);
  text_->SetMinSize(FromDIP(wxSize(320, 160)));
  auto* margin = new wxBoxSizer(wxVERTICAL);
  margin->Add(text_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(6)));
  base->SetSizer(margin);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(base, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

void ConditionsFrame::SetText(const std::string& text) {
  wxString lines = ToWx(text);
  // The toolkit uses this line end on every system.
  lines.Replace("\r\n", "\n");
  text_->ChangeValue(lines);
  text_->SetInsertionPoint(0);
  text_->ShowPosition(0);
}

void ConditionsFrame::UserCloses() {
  if (controller_ != nullptr) controller_->Form_QueryUnload();
}

}  // namespace skyhop
