#pragma once

#include <cstdint>
#include <string_view>

namespace skyhop {

/// A colour, each part 0 to 255.
struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend constexpr bool operator==(const Color&, const Color&) = default;
};

namespace colors {
inline constexpr Color kBlack{0, 0, 0};
inline constexpr Color kWhite{255, 255, 255};
}  // namespace colors

/// A place in pixels; x grows to the right, y downward.
struct Point {
  double x = 0;
  double y = 0;

  friend constexpr bool operator==(const Point&, const Point&) = default;
};

/// An upright rectangle in pixels.
struct Rectangle {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  [[nodiscard]] constexpr double Right() const { return left + width; }
  [[nodiscard]] constexpr double Bottom() const { return top + height; }

  friend constexpr bool operator==(const Rectangle&, const Rectangle&) = default;
};

enum class LineStyle { kSolid, kDotted };

/// Look of a line.
struct Pen {
  Color color{};
  double width = 1;  ///< pixels
  LineStyle style = LineStyle::kSolid;

  friend constexpr bool operator==(const Pen&, const Pen&) = default;
};

enum class HorizontalAlign { kLeft, kCenter, kRight };
enum class VerticalAlign { kTop, kMiddle, kBaseline, kBottom };
enum class FontWeight { kNormal, kBold };

/// Look of a text. The alignments choose the point of the text that is at the given position.
struct TextStyle {
  double size = 12;  ///< height of the font in pixels
  Color color{};
  HorizontalAlign horizontal = HorizontalAlign::kLeft;
  VerticalAlign vertical = VerticalAlign::kMiddle;
  FontWeight weight = FontWeight::kNormal;

  friend constexpr bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// The target of drawing: a window's canvas, a printer's page, a file.
///
/// Later calls cover earlier ones. A surface keeps upright and level lines sharp: it shifts a line
/// of odd width by half a pixel so that it fills whole pixels. Lines end flush at their end points.
class Surface {
 public:
  virtual ~Surface() = default;

  /// Removes everything drawn and fills the surface.
  virtual void Clear(Color background) = 0;

  virtual void Line(Point from, Point to, const Pen& pen) = 0;

  virtual void FillRectangle(const Rectangle& area, Color color) = 0;

  /// One line of UTF-8 text in the surface's sans-serif font. Every blank counts.
  virtual void Text(Point position, std::string_view text, const TextStyle& style) = 0;

  /// Width in pixels of a text in that style: exact if the surface knows its font, else at least
  /// the width in the usual fonts.
  [[nodiscard]] virtual double TextExtent(std::string_view text, const TextStyle& style);
};

}  // namespace skyhop
