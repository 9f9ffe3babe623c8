#include "ui/wx/side_frame.h"

namespace skyhop {

SideFrame::SideFrame(wxWindow* parent, const wxString& title, const wxString& name, wxSize size)
    : wxFrame(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE,
              name),
      default_size_(size),
      place_(*this) {
  PutToDefaultPlace();
  Bind(wxEVT_CLOSE_WINDOW, &SideFrame::OnClose, this);
  Bind(wxEVT_CHAR_HOOK, &SideFrame::OnKey, this);
}

void SideFrame::PutToDefaultPlace() {
  if (IsIconized()) Iconize(false);
  if (IsMaximized()) Maximize(false);
  SetSize(FromDIP(default_size_));
  CentreOnScreen();
  place_.Put(GetRect());
}

void SideFrame::Furnish() {
  if (furnished_) return;
  furnished_ = true;
  MakeControls();
  for (const auto& change : std::exchange(changes_, {})) change();
  // The window has its size already.
  SendSizeEvent();
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
  Furnish();
  if (!IsShown()) {
    // Some window managers place a window anew when it comes back.
    const bool maximized = IsMaximized();
    if (!maximized) SetSize(place_.Place());
    Show();
    if (!maximized) Move(place_.Place().GetPosition());
  }
  if (IsIconized()) Iconize(false);
  Raise();
}

}  // namespace skyhop
