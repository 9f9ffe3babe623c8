#include "ui/wx/window_view.h"

#include <wx/log.h>
#include <wx/utils.h>

#include "ui/wx/prediction_frame.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

void WindowView::SetLabel(Label label, const std::string& text) {
  if (label == Label::kClock) {
    frame_->SetClock(text);
  } else {
    controls_->SetLabel(label, text);
  }
}

void WindowView::StartTimer(WindowTimer timer, std::chrono::milliseconds interval) {
  frame_->TimerOf(timer).Start(static_cast<int>(interval.count()));
}

void WindowView::StopTimer(WindowTimer timer) {
  frame_->TimerOf(timer).Stop();
}

bool WindowView::TimerRunning(WindowTimer timer) const {
  return frame_->TimerOf(timer).IsRunning();
}

void WindowView::ShowSnr(const SnrDisplay& display) {
  frame_->ShowSnr(display);
}

void WindowView::SetCaption(const std::string& caption) {
  frame_->SetTitle(ToWx(caption));
}

void WindowView::ShowNotice(const Notice& notice) {
  frame_->ShowNotice(notice);
}

void WindowView::ShowTab(Tab tab) {
  frame_->ShowTab(tab);
}

void WindowView::SetWebPages(std::span<const WebPage> pages) {
  frame_->SetWebPages(pages);
}

void WindowView::SetStatus(const std::string& text) {
  frame_->SetStatus(text);
}

void WindowView::ShowToolTips(bool show) {
  controls_->ShowToolTips(show);
  frame_->Canvas().ShowToolTips(show);
}

WindowPlacement WindowView::Placement() const {
  return frame_->Place().Placement();
}

void WindowView::SetPlacement(const WindowPlacement& placement) {
  frame_->Place().Put(placement);
}

std::vector<Monitor> WindowView::Monitors() const {
  return DesktopMonitors();
}

void WindowView::ShowWindow() {
  frame_->PrepareToShow();
  frame_->Show();
  // The next steps of the start take time. Paint the window before them.
  frame_->AwaitPaint();
}

void WindowView::RestoreWindow() {
  if (frame_->IsIconized()) frame_->Iconize(false);
  if (frame_->IsMaximized()) frame_->Maximize(false);
}

bool WindowView::OpenInBrowser(const std::string& url) {
  const wxLogNull quiet;  // the controller shows its own message
  return wxLaunchDefaultBrowser(ToWx(url));
}

void WindowView::Close() {
  frame_->RequestEnd();
}

}  // namespace skyhop
