#include "ui/wx/chart_canvas.h"

#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>

#include <cmath>

#include "ui/prediction/chart/chart_pointer.h"
#include "ui/wx/canvas_paint.h"
#include "ui/wx/wx_surface.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
ChartCanvas::ChartCanvas(wxWindow* parent, ChartPane& pane,
                         std::function<void(const std::string&)> show_readout)
    : pane_(&pane), show_readout_(std::move(show_readout)) {
  // The style has to be set before the window exists: nothing is erased, everything is painted.
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS, "Ionprop");
  SetMinSize(FromDIP(wxSize(520, 300)));
  FollowTheme();
  pane_->SetHost(this);

  Bind(wxEVT_PAINT, &ChartCanvas::OnPaint, this);
  Bind(wxEVT_SIZE, &ChartCanvas::OnSize, this);
  Bind(wxEVT_MOTION, &ChartCanvas::OnMotion, this);
  Bind(wxEVT_LEFT_DOWN, &ChartCanvas::OnLeftDown, this);
  Bind(wxEVT_LEFT_UP, &ChartCanvas::OnLeftUp, this);
  Bind(wxEVT_KEY_DOWN, &ChartCanvas::OnKeyDown, this);
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { pane_->Leave(); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { pane_->Release(); });
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
    Bind(type, [this](wxFocusEvent& event) {
      Refresh(false);
      event.Skip();
    });
  }
  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    FollowTheme();
    event.Skip();
  });
}

ChartCanvas::~ChartCanvas() {
  pane_->SetHost(nullptr);
}

void ChartCanvas::FollowTheme() {
  pane_->SetPalette(CanvasPalette(*this));
}

void ChartCanvas::ChartChanged() {
  valid_ = false;
  Refresh(false);
}

void ChartCanvas::OverlayChanged(const Rectangle& area) {
  const wxRect rect(static_cast<int>(std::floor(area.left)), static_cast<int>(area.top),
                    static_cast<int>(std::ceil(area.width)) + 1,
                    static_cast<int>(std::ceil(area.height)) + 1);
  RefreshRect(rect, false);
}

void ChartCanvas::PaintBitmap() {
  PaintCanvas(*this, bitmap_, [this](Surface& surface) { pane_->Paint(surface); });
  valid_ = true;
}

void ChartCanvas::OnPaint(wxPaintEvent&) {
  wxPaintDC dc(this);
  if (GetClientSize().x < 1 || GetClientSize().y < 1) return;
  if (!valid_ || (bitmap_.IsOk() && bitmap_.GetScaleFactor() != GetContentScaleFactor())) {
    PaintBitmap();
  }
  dc.DrawBitmap(bitmap_, 0, 0);
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return;
  WxSurface surface(std::move(context), GetClientSize().x, GetClientSize().y, 1, GetFont());
  pane_->PaintOverlay(surface);
  if (HasFocus()) PaintFocus(*this, dc);
}

void ChartCanvas::OnSize(wxSizeEvent& event) {
  const wxSize size = GetClientSize();
  pane_->Resize(size.x, size.y, CanvasTextSize(*this));
  valid_ = false;
  Refresh(false);
  event.Skip();
}

void ChartCanvas::OnMotion(wxMouseEvent& event) {
  const Point at = ToPoint(event.GetPosition());
  pane_->Move(at);
  SetCursor(OnTimeLine(pane_->Model(), pane_->Layout(), at) ? wxCursor(wxCURSOR_SIZEWE)
                                                            : wxNullCursor);
  const std::string tip =
      tool_tips_ ? ToolTipAt(pane_->Model(), pane_->Layout(), at) : std::string();
  if (tip == tool_tip_) return;
  tool_tip_ = tip;
  if (tip.empty()) {
    UnsetToolTip();
  } else {
    SetToolTip(ToWx(tip));
  }
}

void ChartCanvas::ShowToolTips(bool show) {
  tool_tips_ = show;
  if (show) return;
  tool_tip_.clear();
  UnsetToolTip();
}

void ChartCanvas::OnLeftDown(wxMouseEvent& event) {
  SetFocus();
  pane_->Press(ToPoint(event.GetPosition()));
  if (!HasCapture()) CaptureMouse();
}

void ChartCanvas::OnLeftUp(wxMouseEvent&) {
  pane_->Release();
  if (HasCapture()) ReleaseMouse();
}

void ChartCanvas::OnKeyDown(wxKeyEvent& event) {
  switch (event.GetKeyCode()) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
      pane_->StepTimeIndex(-1);
      return;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
      pane_->StepTimeIndex(1);
      return;
    case WXK_HOME:
      pane_->StepTimeIndex(-24);
      return;
    case WXK_END:
      pane_->StepTimeIndex(24);
      return;
    case WXK_TAB:
      Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                 : wxNavigationKeyEvent::IsForward);
      return;
    default:
      event.Skip();
  }
}

wxBitmap ChartCanvas::Picture() {
  const wxSize size = GetClientSize();
  const double scale = GetContentScaleFactor();
  PaintBitmap();
  wxBitmap picture = bitmap_.GetSubBitmap(wxRect(bitmap_.GetSize()));
  wxMemoryDC dc(picture);
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) return picture;
  context->Scale(1 / scale, 1 / scale);
  WxSurface surface(std::move(context), size.x, size.y, scale, GetFont());
  pane_->PaintOverlay(surface);
  return picture;
}

}  // namespace skyhop
