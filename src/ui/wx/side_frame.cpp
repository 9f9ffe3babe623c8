#include "ui/wx/side_frame.h"

#include <wx/math.h>

#include <algorithm>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// Height of a line of text of the usual size, in DIP.
constexpr int kUsualLine = 17;

}  // namespace

SideFrame::SideFrame(wxWindow* parent, const wxString& title, const wxString& name, wxSize size)
    : wxFrame(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE,
              name),
      default_size_(size),
      place_(*this),
      least_size_(*this) {
  PutToDefaultPlace();
  Bind(wxEVT_CLOSE_WINDOW, &SideFrame::OnClose, this);
  Bind(wxEVT_CHAR_HOOK, &SideFrame::OnKey, this);
}

bool SideFrame::Show(bool show) {
  if (!show) place_.Remember();
  return wxFrame::Show(show);
}

void SideFrame::PutToDefaultPlace() {
  if (IsIconized()) Iconize(false);
  if (IsMaximized()) Maximize(false);
  wxSize size = DefaultSize();
  size.IncTo(GetMinSize());
  place_.Put(wxRect(size).CentreIn(MonitorArea(*this)));
}

int SideFrame::TextPixels(int dip) const {
  const double text = std::max(1.0, double{1} * GetCharHeight() / FromDIP(kUsualLine));
  return wxRound(FromDIP(dip) * text);
}

/// Within the monitor.
wxSize SideFrame::DefaultSize() const {
  wxSize size(TextPixels(default_size_.x), TextPixels(default_size_.y));
  size.DecTo(MonitorArea(*this).GetSize() - FromDIP(wxSize(40, 80)));
  return size;
}

void SideFrame::CreateControls() {
  if (has_controls_) return;
  has_controls_ = true;
  MakeControls();
  least_size_.Update();
  // The size of the window does not change, so the toolkit would not lay out the controls.
  SendSizeEvent();
}

void SideFrame::AddToolTip(wxWindow* control, std::string_view text) {
  tool_tips_.emplace_back(control, ToWx(text));
  if (show_tool_tips_) control->SetToolTip(ToWx(text));
}

void SideFrame::ShowToolTips(bool show) {
  show_tool_tips_ = show;
  for (const auto& [control, text] : tool_tips_) {
    if (show) {
      control->SetToolTip(text);
    } else {
      control->UnsetToolTip();
    }
  }
}

void SideFrame::OnClose(wxCloseEvent& event) {
  if (!event.CanVeto()) {
    event.Skip();
    return;
  }
  event.Veto();
  UserCloses();
}

void SideFrame::OnKey(wxKeyEvent& event) {
  const bool escape = event.GetKeyCode() == WXK_ESCAPE && !event.HasAnyModifiers();
  const bool control_w = event.GetKeyCode() == 'W' && event.GetModifiers() == wxMOD_CONTROL;
  if (escape || control_w) {
    Close();
  } else {
    event.Skip();
  }
}

void SideFrame::BringUp() {
  CreateControls();
  if (!IsShown()) {
    // Some window managers move a window that is shown again.
    const bool maximized = IsMaximized();
    if (!maximized) place_.Put(place_.Place());
    Show();
    if (!maximized) Move(place_.Place().GetPosition());
  }
  if (IsIconized()) Iconize(false);
  Raise();
}

}  // namespace skyhop
