#include "ui/drawing/surface_views.h"

#include <algorithm>

namespace skyhop {
namespace {

/// The stretch of a line, in parts of its length, that meets all conditions so far.
struct Stretch {
  double begin = 0;
  double end = 1;

  /// Cuts off where `start` + t x `change` is below 0.
  void KeepNonNegative(double start, double change) {
    if (change > 0) {
      begin = std::max(begin, -start / change);
    } else if (change < 0) {
      end = std::min(end, -start / change);
    } else if (start < 0) {
      end = -1;
    }
  }
};

}  // namespace

void ScaledSurface::Line(Point from, Point to, const Pen& pen) {
  target_->Line(Scaled(from), Scaled(to), {pen.color, pen.width * factor_, pen.style});
}

void ScaledSurface::FillRectangle(const Rectangle& area, Color color) {
  target_->FillRectangle(
      {area.left * factor_, area.top * factor_, area.width * factor_, area.height * factor_},
      color);
}

void ScaledSurface::Text(Point position, std::string_view text, const TextStyle& style) {
  TextStyle scaled = style;
  scaled.size *= factor_;
  target_->Text(Scaled(position), text, scaled);
}

double ScaledSurface::TextExtent(std::string_view text, const TextStyle& style) {
  TextStyle scaled = style;
  scaled.size *= factor_;
  return target_->TextExtent(text, scaled) / factor_;
}

void PartSurface::Line(Point from, Point to, const Pen& pen) {
  const Point change{to.x - from.x, to.y - from.y};
  Stretch kept;
  kept.KeepNonNegative(from.x, change.x);
  kept.KeepNonNegative(area_.width - from.x, -change.x);
  kept.KeepNonNegative(from.y, change.y);
  kept.KeepNonNegative(area_.height - from.y, -change.y);
  if (kept.begin > kept.end) return;
  const auto at = [&](double t) { return Moved({from.x + t * change.x, from.y + t * change.y}); };
  target_->Line(at(kept.begin), kept.end < 1 ? at(kept.end) : Moved(to), pen);
}

void PartSurface::FillRectangle(const Rectangle& area, Color color) {
  const double left = std::max(area.left, 0.0);
  const double top = std::max(area.top, 0.0);
  const double right = std::min(area.Right(), area_.width);
  const double bottom = std::min(area.Bottom(), area_.height);
  if (left >= right || top >= bottom) return;
  const Point corner = Moved({left, top});
  target_->FillRectangle({corner.x, corner.y, right - left, bottom - top}, color);
}

void PartSurface::Text(Point position, std::string_view text, const TextStyle& style) {
  target_->Text(Moved(position), text, style);
}

}  // namespace skyhop
