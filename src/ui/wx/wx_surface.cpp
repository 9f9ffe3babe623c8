#include "ui/wx/wx_surface.h"

#include <wx/brush.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// The middle of a horizontal or vertical line, placed so that the line fills whole pixels.
double Sharp(double place, double device_width) {
  const bool odd = std::lround(device_width) % 2 == 1;
  return std::floor(place + 0.5) + (odd ? 0.5 : 0.0);
}

}  // namespace

WxSurface::WxSurface(std::unique_ptr<wxGraphicsContext> context, double width, double height,
                     double scale, const wxFont& font)
    : context_(std::move(context)),
      width_(width),
      height_(height),
      scale_(scale),
      font_(font),
      font_name_(font.GetNativeFontInfoDesc()) {
  context_->SetAntialiasMode(wxANTIALIAS_DEFAULT);
}

WxSurface::~WxSurface() {
  DrawCurves();
}

void WxSurface::Clear(Color background) {
  FillRectangle({0, 0, width_, height_}, background);
}

void WxSurface::Line(Point from, Point to, const Pen& pen) {
  const double device_width = std::max(1.0, pen.width * scale_);
  Point a{from.x * scale_, from.y * scale_};
  Point b{to.x * scale_, to.y * scale_};
  if (Continue(a, b, pen)) return;
  const bool level = a.y == b.y;
  const bool upright = a.x == b.x;
  if (!level && !upright) {
    curves_.push_back({pen, device_width, {{a.x, a.y}, {b.x, b.y}}});
    return;
  }
  DrawCurves();
  const double whole = std::round(device_width);
  if (level) a.y = b.y = Sharp(a.y, device_width);
  if (upright) a.x = b.x = Sharp(a.x, device_width);
  if (pen.style == LineStyle::kDotted) {
    const wxGraphicsPenInfo info(ToWx(pen.color), whole, wxPENSTYLE_DOT);
    context_->SetPen(context_->CreatePen(wxGraphicsPenInfo(info).Cap(wxCAP_BUTT)));
    brush_.reset();
    context_->StrokeLine(a.x, a.y, b.x, b.y);
    return;
  }
  // Filling is far quicker than stroking.
  const double half = whole / 2;
  if (level) {
    FillDevice(std::min(a.x, b.x), a.y - half, std::max(a.x, b.x), a.y + half, pen.color);
  } else {
    FillDevice(a.x - half, std::min(a.y, b.y), a.x + half, std::max(a.y, b.y), pen.color);
  }
}

/// Adds a line to the curve that ends at the line's beginning, if there is one. Drawing a whole
/// curve is faster than drawing its lines one by one, and leaves no gaps or steps.
bool WxSurface::Continue(Point from, Point to, const Pen& pen) {
  for (Curve& curve : curves_) {
    if (!(curve.pen == pen) || curve.points.back() != wxPoint2DDouble(from.x, from.y)) continue;
    curve.points.emplace_back(to.x, to.y);
    return true;
  }
  return false;
}

void WxSurface::DrawCurves() {
  for (const Curve& curve : curves_) {
    const bool dotted = curve.pen.style == LineStyle::kDotted;
    wxGraphicsPenInfo info(ToWx(curve.pen.color), curve.width,
                           dotted ? wxPENSTYLE_DOT : wxPENSTYLE_SOLID);
    context_->SetPen(context_->CreatePen(info.Cap(wxCAP_ROUND).Join(wxJOIN_ROUND)));
    context_->StrokeLines(curve.points.size(), curve.points.data());
    brush_.reset();
  }
  curves_.clear();
}

void WxSurface::FillRectangle(const Rectangle& area, Color color) {
  DrawCurves();
  FillDevice(std::round(area.left * scale_), std::round(area.top * scale_),
             std::round(area.Right() * scale_), std::round(area.Bottom() * scale_), color);
}

void WxSurface::FillDevice(double left, double top, double right, double bottom, Color color) {
  if (brush_ != color) {
    context_->SetPen(wxNullGraphicsPen);
    context_->SetBrush(wxBrush(ToWx(color)));
    brush_ = color;
  }
  context_->DrawRectangle(left, top, right - left, bottom - top);
}

/// Creates each font once, because creating a font searches the system's fonts.
const wxFont& WxSurface::FontOf(const TextStyle& style) {
  using Key = std::tuple<wxString, int, FontWeight>;
  constexpr std::size_t most = 100;
  static std::map<Key, wxFont> known;
  const int height = std::max(1, static_cast<int>(std::lround(style.size * scale_)));
  const Key key{font_name_, height, style.weight};
  const auto found = known.find(key);
  if (found != known.end()) return found->second;
  if (known.size() >= most) known.clear();
  wxFont font = font_;
#ifdef __WXGTK__
  // With a pixel size, the toolkit would try one size after another and search the fonts for each.
  font.Scale(static_cast<float>(height) /
             static_cast<float>(std::max(1, font_.GetPixelSize().GetHeight())));
#else
  font.SetPixelSize(wxSize(0, height));
#endif
  if (style.weight == FontWeight::kBold) font.MakeBold();
  return known.emplace(key, font).first->second;
}

void WxSurface::Text(Point position, std::string_view text, const TextStyle& style) {
  if (text.empty()) return;
  DrawCurves();
  const wxString shown = ToWx(text);
  const auto [width, height, descent] = Measure(shown, style);
  context_->SetFont(FontOf(style), ToWx(style.color));
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
  return Measure(ToWx(text), style).width / scale_;
}

/// Keeps the measured extents: layout of texts takes longer than all other drawing, and a chart has
/// the same texts every time.
WxSurface::Extent WxSurface::Measure(const wxString& text, const TextStyle& style) {
  using Key = std::tuple<wxString, double, FontWeight, wxString>;
  constexpr std::size_t most = 2000;
  static std::map<Key, Extent> known;
  if (known.size() > most) known.clear();
  const auto [place, is_new] =
      known.try_emplace({font_name_, style.size * scale_, style.weight, text});
  Extent& extent = place->second;
  if (is_new) {
    context_->SetFont(FontOf(style), ToWx(style.color));
    context_->GetTextExtent(text, &extent.width, &extent.height, &extent.descent);
  }
  return extent;
}

}  // namespace skyhop
