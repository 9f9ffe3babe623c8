#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/drawing/surface.h"

namespace skyhop {

/// Draws into an SVG 1.1 document. The same calls yield the same bytes everywhere, in any locale.
///
/// A line that goes on where an earlier one of the same pen ended is joined to it, so that a curve
/// becomes one polyline even when its segments alternate with those of others. Lines drawn between
/// two texts, rectangles or clearings may therefore change places with each other, never with
/// anything else.
class SvgSurface : public Surface {
 public:
  /// `width` and `height` are the picture's size in pixels, above 0. `title` is what a viewer shows
  /// as the document's name; may be empty.
  SvgSurface(double width, double height, std::string_view title = {});

  void Clear(Color background) override;
  void Line(Point from, Point to, const Pen& pen) override;
  void FillRectangle(const Rectangle& area, Color color) override;
  void Text(Point position, std::string_view text, const TextStyle& style) override;

  /// The document of all that has been drawn so far, in UTF-8 with LF line ends.
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
  std::vector<Polyline> lines_;  ///< drawn since the last other call, still to be written
};

/// `text` with everything escaped that must not stand in XML text or attributes. Bytes that are no
/// UTF-8 and characters that XML does not allow become U+FFFD.
[[nodiscard]] std::string XmlText(std::string_view text);

}  // namespace skyhop
