#pragma once

#include <wx/font.h>
#include <wx/graphics.h>

#include <memory>
#include <optional>
#include <vector>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Draws with the toolkit's anti-aliased vector graphics.
class WxSurface : public Surface {
 public:
  /// One pixel of the surface is `scale` device pixels; lines are kept sharp on device pixels.
  /// `width` and `height` are in pixels of the surface. All texts use the family of `font`.
  WxSurface(std::unique_ptr<wxGraphicsContext> context, double width, double height, double scale,
            const wxFont& font);
  ~WxSurface() override;
  WxSurface(const WxSurface&) = delete;
  WxSurface& operator=(const WxSurface&) = delete;

  void Clear(Color background) override;
  void Line(Point from, Point to, const Pen& pen) override;
  void FillRectangle(const Rectangle& area, Color color) override;
  void Text(Point position, std::string_view text, const TextStyle& style) override;
  [[nodiscard]] double TextExtent(std::string_view text, const TextStyle& style) override;

 private:
  [[nodiscard]] const wxFont& FontOf(const TextStyle& style);
  /// Lines of one pen that meet, in device pixels.
  struct Curve {
    Pen pen;
    double width;
    std::vector<wxPoint2DDouble> points;
  };
  struct Extent {
    double width = 0;
    double height = 0;
    double descent = 0;
  };

  void FillDevice(double left, double top, double right, double bottom, Color color);
  [[nodiscard]] bool Continue(Point from, Point to, const Pen& pen);
  void DrawCurves();
  [[nodiscard]] Extent Measure(const wxString& text, const TextStyle& style);

  std::unique_ptr<wxGraphicsContext> context_;
  double width_;
  double height_;
  double scale_;
  wxFont font_;
  wxString font_name_;
  /// Curves that are begun but not drawn yet. They are drawn before anything else, so that later
  /// drawing covers them.
  std::vector<Curve> curves_;
  std::optional<Color> brush_;  ///< the context's fill colour, without a pen
};

[[nodiscard]] inline wxColour ToWx(Color color) {
  return {color.red, color.green, color.blue};
}

}  // namespace skyhop
