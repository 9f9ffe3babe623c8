#include "ui/wx/forecast_frame.h"

#include <wx/panel.h>
#include <wx/sizer.h>

#include "ui/wx/wx_text.h"

namespace skyhop {

ForecastFrame::ForecastFrame(wxWindow* parent)
    : ViewFrame(parent, ToWx(SolarForecastModule::kForecastCaption), "SolarForecast",
                wxSize(900, 620)) {
  Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    if (event.GetActive() && controller_ != nullptr) controller_->Form_Activate();
    event.Skip();
  });
}

void ForecastFrame::MakeControls() {
  auto* base = new wxPanel(this);
  const int gap = FromDIP(6);
  canvas_ = new ForecastCanvas(base);
  canvas_->Attach(*controller_);
  status_ = new wxStaticText(base, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE);
  auto* content = new wxBoxSizer(wxVERTICAL);
  content->Add(MakeChecks(base), wxSizerFlags().Expand());
  content->Add(canvas_, wxSizerFlags(1).Expand().Border(wxTOP | wxBOTTOM, gap));
  content->Add(status_, wxSizerFlags().Expand());
  auto* margin = new wxBoxSizer(wxVERTICAL);
  margin->Add(content, wxSizerFlags(1).Expand().Border(wxALL, gap));
  base->SetSizer(margin);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(base, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

wxSizer* ForecastFrame::MakeChecks(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  for (int i = 0; i < kForecastCheckCount; ++i) {
    const auto check = static_cast<ForecastCheck>(i);
    auto* box = new wxCheckBox(parent, wxID_ANY, ToWx(Caption(check)));
    box->Bind(wxEVT_CHECKBOX, [this, check](wxCommandEvent& event) {
      if (controller_ != nullptr) controller_->Check_Click(check, event.IsChecked());
    });
    AddToolTip(box, ToolTip(check));
    checks_.at(static_cast<std::size_t>(i)) = box;
    row->Add(box, wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(16)));
  }
  return row;
}

void ForecastFrame::SetCaption(const std::string& caption) {
  SetTitle(ToWx(caption));
}

void ForecastFrame::SetChecked(ForecastCheck check, bool checked) {
  checks_.at(static_cast<std::size_t>(check))->SetValue(checked);
}

void ForecastFrame::SetStatus(const std::string& text) {
  status_->SetLabelText(ToWx(text));
  // The line may be too narrow for the text.
  if (text.empty()) {
    status_->UnsetToolTip();
  } else {
    status_->SetToolTip(ToWx(text));
  }
}

void ForecastFrame::UserCloses() {
  if (controller_ != nullptr) controller_->Form_QueryUnload();
}

}  // namespace skyhop
