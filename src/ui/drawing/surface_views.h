#pragma once

#include <string_view>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Passes all drawing on to another surface, enlarged by a factor.
class ScaledSurface : public Surface {
 public:
  ScaledSurface(Surface& target, double factor) : target_(&target), factor_(factor) {}

  void Clear(Color background) override { target_->Clear(background); }
  void Line(Point from, Point to, const Pen& pen) override;
  void FillRectangle(const Rectangle& area, Color color) override;
  void Text(Point position, std::string_view text, const TextStyle& style) override;
  [[nodiscard]] double TextExtent(std::string_view text, const TextStyle& style) override;

 private:
  [[nodiscard]] Point Scaled(Point point) const { return {point.x * factor_, point.y * factor_}; }

  Surface* target_;
  double factor_;
};

/// A part of another surface. Its upper left corner is the origin. The part cuts lines and filled
/// rectangles off at its edges, but not texts.
class PartSurface : public Surface {
 public:
  PartSurface(Surface& target, const Rectangle& area) : target_(&target), area_(area) {}

  /// Fills this part only.
  void Clear(Color background) override { target_->FillRectangle(area_, background); }
  void Line(Point from, Point to, const Pen& pen) override;
  void FillRectangle(const Rectangle& area, Color color) override;
  void Text(Point position, std::string_view text, const TextStyle& style) override;
  [[nodiscard]] double TextExtent(std::string_view text, const TextStyle& style) override {
    return target_->TextExtent(text, style);
  }

 private:
  [[nodiscard]] Point Moved(Point point) const {
    return {point.x + area_.left, point.y + area_.top};
  }

  Surface* target_;
  Rectangle area_;
};

}  // namespace skyhop
