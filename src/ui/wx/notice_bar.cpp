#include "ui/wx/notice_bar.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include "ui/wx/canvas_paint.h"
#include "ui/wx/wx_surface.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// A prediction that finishes sooner than this needs no notice.
constexpr int kDelayMilliseconds = 400;

const TextColors& ColorsOf(Notice::Kind kind) {
  const ChartPalette& palette = PaletteOn(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
  if (kind == Notice::Kind::kFailed) return palette.failed;
  return kind == Notice::Kind::kWarning ? palette.warning : palette.running;
}

}  // namespace

NoticeBar::NoticeBar(wxWindow* parent, std::function<void()> on_click)
    : wxPanel(parent),
      text_(new wxStaticText(this, wxID_ANY, wxString())),
      button_(new wxButton(this, wxID_ANY)),
      delay_(this) {
  auto* sizer = new wxBoxSizer(wxHORIZONTAL);
  sizer->Add(text_, wxSizerFlags(1).CenterVertical().Border(wxALL, FromDIP(7)));
  sizer->Add(button_, wxSizerFlags().CenterVertical().Border(wxALL, FromDIP(4)));
  SetSizer(sizer);
  Hide();
  button_->Bind(wxEVT_BUTTON, [click = std::move(on_click)](wxCommandEvent&) { click(); });
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Update_(); });
}

void NoticeBar::Show_(const Notice& notice) {
  notice_ = notice;
  if (notice.kind == Notice::Kind::kRunning && !IsShown()) {
    // A bar that appears only for a moment would just make the chart jump.
    if (!delay_.IsRunning()) delay_.StartOnce(kDelayMilliseconds);
    return;
  }
  delay_.Stop();
  Update_();
}

void NoticeBar::FollowTheme() {
  const TextColors& colors = ColorsOf(notice_.kind);
  SetBackgroundColour(ToWx(colors.fill));
  text_->SetForegroundColour(ToWx(colors.ink));
  Refresh();
}

void NoticeBar::Update_() {
  const bool shown = notice_.kind != Notice::Kind::kNone && notice_.kind != Notice::Kind::kEmpty;
  if (shown) {
    FollowTheme();
    text_->SetLabelText(ToWx(notice_.text));
    int margin = 2 * FromDIP(7);
    const bool has_button = notice_.action != NoticeAction::kNone;
    button_->SetLabel(ToWx(Caption(notice_.action)));
    if (!has_button && button_->HasFocus()) button_->Navigate();
    button_->Show(has_button);
    if (has_button) margin += button_->GetBestSize().x + 2 * FromDIP(4);
    // Long reasons, which contain paths of files, need several lines.
    text_->Wrap(std::max(FromDIP(200), GetParent()->GetClientSize().x - margin));
    Layout();
  }
  if (!shown && button_->HasFocus()) button_->Navigate();
  Show(shown);
  InvalidateBestSize();
  GetParent()->Layout();
}

}  // namespace skyhop
