#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Draws into an SVG 1.1 document. The same calls yield the same bytes everywhere, in any locale.
///
/// The surface joins a line to an earlier line of the same pen that ends at its start, so a curve
/// becomes one polyline even if its segments alternate with those of other curves. Lines between
/// two texts, rectangles or clearings may therefore change their order among each other.
class SvgSurface : public Surface {
 public:
  /// `width` and `height` are the picture's size in pixels, above 0. A viewer shows `title` as the
  /// document's name; it may be empty.
  SvgSurface(double width, double height, std::string_view title = {});

  void Clear(Color background) override;
  void Line(Point from, Point to, const Pen& pen) override;
  void FillRectangle(const Rectangle& area, Color color) override;
  void Text(Point position, std::string_view text, const TextStyle& style) override;

  /// The document of all drawing so far, in UTF-8 with LF line ends.
  [[nodiscard]] std::string Document() const;

 private:
  struct Polyline {
    Pen pen;
    std::vector<Point> points;
  };

  static void Append(std::string& out, const Polyline& line);
  void FinishLines();

  double width_;
  double height_;
  std::string title_;
  std::string body_;
  std::vector<Polyline> lines_;  ///< since the last other call, not in `body_` yet
};

/// `text` escaped for XML text and attributes. Bytes that are not UTF-8 and characters that XML
/// does not allow become U+FFFD.
[[nodiscard]] std::string XmlText(std::string_view text);

}  // namespace skyhop
