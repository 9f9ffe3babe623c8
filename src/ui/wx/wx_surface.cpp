#include "ui/wx/wx_surface.h"

#include <wx/brush.h>

#include <algorithm>
#include <cmath>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// Where the middle of a level or upright line has to lie so that the line fills whole pixels.
double Sharp(double place, double device_width) {
  const bool odd = std::lround(device_width) % 2 == 1;
  return std::floor(place + 0.5) + (odd ? 0.5 : 0.0);
}

}  // namespace

WxSurface::WxSurface(std::unique_ptr<wxGraphicsContext> context, double width, double height,
                     double scale, const wxFont& font)
    : context_(std::move(context)), width_(width), height_(height), scale_(scale), font_(font) {
  context_->SetAntialiasMode(wxANTIALIAS_DEFAULT);
}

WxSurface::~WxSurface() = default;

void WxSurface::Clear(Color background) {
  FillRectangle({0, 0, width_, height_}, background);
}

void WxSurface::UsePen(const Pen& pen, double device_width, bool slanted) {
  wxGraphicsPenInfo info(ToWx(pen.color), device_width,
                         pen.style == LineStyle::kDotted ? wxPENSTYLE_DOT : wxPENSTYLE_SOLID);
  // The segments of a curve meet at angles: round ends close the gaps there.
  info.Cap(slanted ? wxCAP_ROUND : wxCAP_BUTT);
  context_->SetPen(context_->CreatePen(info));
}

void WxSurface::Line(Point from, Point to, const Pen& pen) {
  const double device_width = std::max(1.0, pen.width * scale_);
  Point a{from.x * scale_, from.y * scale_};
  Point b{to.x * scale_, to.y * scale_};
  const bool level = a.y == b.y;
  const bool upright = a.x == b.x;
  UsePen(pen, level || upright ? std::round(device_width) : device_width, !level && !upright);
  if (level) a.y = b.y = Sharp(a.y, device_width);
  if (upright) a.x = b.x = Sharp(a.x, device_width);
  context_->StrokeLine(a.x, a.y, b.x, b.y);
}

void WxSurface::FillRectangle(const Rectangle& area, Color color) {
  context_->SetPen(wxNullGraphicsPen);
  context_->SetBrush(wxBrush(ToWx(color)));
  const double left = std::round(area.left * scale_);
  const double top = std::round(area.top * scale_);
  context_->DrawRectangle(left, top, std::round(area.Right() * scale_) - left,
                          std::round(area.Bottom() * scale_) - top);
}

const wxFont& WxSurface::FontOf(const TextStyle& style) {
  const double size = style.size * scale_;
  const FontKey key{size, style.weight};
  const auto found = fonts_.find(key);
  if (found != fonts_.end()) return found->second;
  wxFont font = font_;
  font.SetPixelSize(wxSize(0, std::max(1, static_cast<int>(std::lround(size)))));
  if (style.weight == FontWeight::kBold) font.MakeBold();
  return fonts_.emplace(key, font).first->second;
}

void WxSurface::Text(Point position, std::string_view text, const TextStyle& style) {
  if (text.empty()) return;
  context_->SetFont(FontOf(style), ToWx(style.color));
  const wxString shown = ToWx(text);
  double width = 0;
  double height = 0;
  double descent = 0;
  context_->GetTextExtent(shown, &width, &height, &descent);
  double x = position.x * scale_;
  double y = position.y * scale_;
  if (style.horizontal == HorizontalAlign::kCenter) x -= width / 2;
  if (style.horizontal == HorizontalAlign::kRight) x -= width;
  if (style.vertical == VerticalAlign::kMiddle) y -= height / 2;
  if (style.vertical == VerticalAlign::kBaseline) y -= height - descent;
  if (style.vertical == VerticalAlign::kBottom) y -= height;
  context_->DrawText(shown, std::round(x), std::round(y));
}

double WxSurface::TextExtent(std::string_view text, const TextStyle& style) {
  context_->SetFont(FontOf(style), ToWx(style.color));
  double width = 0;
  double height = 0;
  context_->GetTextExtent(ToWx(text), &width, &height);
  return width / scale_;
}

}  // namespace skyhop
