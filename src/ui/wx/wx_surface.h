#pragma once

#include <wx/font.h>
#include <wx/graphics.h>

#include <map>
#include <memory>
#include <utility>

#include "ui/prediction/surface.h"

namespace skyhop {

/// Draws with the toolkit's anti-aliased vector graphics.
class WxSurface : public Surface {
 public:
  /// `scale` device pixels are one pixel of the surface; lines are kept sharp on device pixels.
  /// `width` and `height` are in pixels of the surface. `font` gives the family of all texts.
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
  using FontKey = std::pair<double, FontWeight>;

  [[nodiscard]] const wxFont& FontOf(const TextStyle& style);
  void UsePen(const Pen& pen, double device_width, bool slanted);

  std::unique_ptr<wxGraphicsContext> context_;
  double width_;
  double height_;
  double scale_;
  wxFont font_;
  std::map<FontKey, wxFont> fonts_;
};

[[nodiscard]] inline wxColour ToWx(Color color) {
  return {color.red, color.green, color.blue};
}

}  // namespace skyhop
