#include "ui/drawing/svg_surface.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "common/text.h"

namespace skyhop {
namespace {

constexpr std::string_view kFonts =
    "'Segoe UI', 'Helvetica Neue', Arial, 'DejaVu Sans', sans-serif";

/// Height of the font above and below the baseline, in parts of its size: the average of the fonts
/// above. SVG viewers agree on no alignment but the baseline.
constexpr double kAscent = 0.93;
constexpr double kDescent = 0.24;

/// Writes at most two decimals and no trailing zeros.
void AppendNumber(std::string& out, double value) {
  constexpr double limit = 1e9;
  const double clamped = std::isfinite(value) ? std::clamp(value, -limit, limit) : 0;
  // Rounding to hundredths first avoids "-0" and trailing zeros.
  const double rounded = std::round(clamped * 100) / 100 + 0.0;
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded,
                                    std::chars_format::fixed);
  out.append(buffer.data(), result.ptr);
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
  out.append(" ").append(name).append("=\"");
  AppendNumber(out, value);
  out.append("\"");
}

void AppendColor(std::string& out, std::string_view name, Color color) {
  constexpr std::string_view digits = "0123456789abcdef";
  out.append(" ").append(name).append("=\"#");
  for (const unsigned part : {color.red, color.green, color.blue}) {
    out.push_back(digits[part / 16]);
    out.push_back(digits[part % 16]);
  }
  out.append("\"");
}

void AppendPen(std::string& out, const Pen& pen) {
  AppendColor(out, "stroke", pen.color);
  if (pen.width != 1) AppendAttribute(out, "stroke-width", pen.width);
  if (pen.style == LineStyle::kDotted) {
    // A dot is twice as long as the line is wide, a gap three times.
    out.append(" stroke-dasharray=\"");
    AppendNumber(out, 2 * pen.width);
    out.append(" ");
    AppendNumber(out, 3 * pen.width);
    out.append("\"");
  }
}

/// Half a pixel for a line of an odd width in pixels: its edges then fall on the borders of pixels.
double Sharpening(double width) {
  return std::fmod(std::max(1.0, std::round(width)), 2) == 1 ? 0.5 : 0;
}

struct Decoded {
  std::uint32_t character = 0xFFFFFFFF;
  std::size_t length = 1;
};

/// Decodes the UTF-8 character at the start of a text that is not empty. A byte that belongs to no
/// character yields an invalid one.
Decoded DecodeUtf8(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(text[i]) & 0xFFU; };
  const std::size_t length = CharacterSize(text);
  if (length == 1) return byte(0) < 0x80 ? Decoded{byte(0), 1} : Decoded{};
  std::uint32_t character = byte(0) & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) character = (character << 6U) | (byte(i) & 0x3FU);
  // CharacterSize accepts overlong forms and codes beyond Unicode.
  constexpr std::array<std::uint32_t, 5> lowest = {0, 0, 0x80, 0x800, 0x10000};
  if (character < lowest[length] || character > 0x10FFFF) return {};
  return {character, length};
}

bool IsXmlCharacter(std::uint32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace

std::string XmlText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Decoded decoded = DecodeUtf8(text);
    const std::string_view bytes = text.substr(0, decoded.length);
    text.remove_prefix(decoded.length);
    switch (decoded.character) {
      case '&':
        result.append("&amp;");
        break;
      case '<':
        result.append("&lt;");
        break;
      case '>':
        result.append("&gt;");
        break;
      case '"':
        result.append("&quot;");
        break;
      default:
        result.append(IsXmlCharacter(decoded.character) ? bytes : "\uFFFD");
    }
  }
  return result;
}

SvgSurface::SvgSurface(double width, double height, std::string_view title)
    : width_(width), height_(height), title_(title) {}

void SvgSurface::Clear(Color background) {
  lines_.clear();
  body_.clear();
  FillRectangle({0, 0, width_, height_}, background);
}

void SvgSurface::Line(Point from, Point to, const Pen& pen) {
  const auto found = std::find_if(lines_.rbegin(), lines_.rend(), [&](const Polyline& line) {
    return line.points.back() == from && line.pen == pen;
  });
  if (found == lines_.rend()) {
    lines_.push_back({pen, {from, to}});
    return;
  }
  // A longer level line needs no further corner.
  std::vector<Point>& points = found->points;
  const Point& before = points[points.size() - 2];
  if (before.y == to.y && from.y == to.y && (before.x < from.x) == (from.x < to.x)) {
    points.back() = to;
  } else {
    points.push_back(to);
  }
}

void SvgSurface::FillRectangle(const Rectangle& area, Color color) {
  FinishLines();
  body_.append("<rect");
  AppendAttribute(body_, "x", area.left);
  AppendAttribute(body_, "y", area.top);
  AppendAttribute(body_, "width", std::max(area.width, 0.0));
  AppendAttribute(body_, "height", std::max(area.height, 0.0));
  AppendColor(body_, "fill", color);
  body_.append("/>\n");
}

void SvgSurface::Text(Point position, std::string_view text, const TextStyle& style) {
  FinishLines();
  double baseline = position.y;
  if (style.vertical == VerticalAlign::kTop) baseline += kAscent * style.size;
  if (style.vertical == VerticalAlign::kMiddle) baseline += (kAscent - kDescent) / 2 * style.size;
  if (style.vertical == VerticalAlign::kBottom) baseline -= kDescent * style.size;
  body_.append("<text");
  AppendAttribute(body_, "x", position.x);
  AppendAttribute(body_, "y", baseline);
  AppendAttribute(body_, "font-size", style.size);
  if (style.weight == FontWeight::kBold) body_.append(" font-weight=\"bold\"");
  if (style.horizontal == HorizontalAlign::kCenter) body_.append(" text-anchor=\"middle\"");
  if (style.horizontal == HorizontalAlign::kRight) body_.append(" text-anchor=\"end\"");
  AppendColor(body_, "fill", style.color);
  body_.append(">").append(XmlText(text)).append("</text>\n");
}

void SvgSurface::Append(std::string& out, const Polyline& line) {
  const std::vector<Point>& points = line.points;
  // The shift sharpens upright and level lines only; it would misplace a curve.
  bool upright = false;
  bool level = false;
  bool slanted = false;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const bool same_x = points[i - 1].x == points[i].x;
    const bool same_y = points[i - 1].y == points[i].y;
    upright = upright || (same_x && !same_y);
    level = level || (same_y && !same_x);
    slanted = slanted || (!same_x && !same_y);
  }
  const double shift = slanted ? 0 : Sharpening(line.pen.width);
  const double right = upright ? shift : 0;
  const double down = level ? shift : 0;
  if (points.size() == 2) {
    out.append("<line");
    AppendAttribute(out, "x1", points[0].x + right);
    AppendAttribute(out, "y1", points[0].y + down);
    AppendAttribute(out, "x2", points[1].x + right);
    AppendAttribute(out, "y2", points[1].y + down);
  } else {
    out.append("<polyline fill=\"none\" points=\"");
    for (const Point& point : points) {
      if (&point != points.data()) out.append(" ");
      AppendNumber(out, point.x + right);
      out.append(",");
      AppendNumber(out, point.y + down);
    }
    out.append("\"");
  }
  AppendPen(out, line.pen);
  out.append("/>\n");
}

void SvgSurface::FinishLines() {
  for (const Polyline& line : lines_) Append(body_, line);
  lines_.clear();
}

std::string SvgSurface::Document() const {
  std::string out =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"";
  AppendAttribute(out, "width", width_);
  AppendAttribute(out, "height", height_);
  out.append(" viewBox=\"0 0 ");
  AppendNumber(out, width_);
  out.append(" ");
  AppendNumber(out, height_);
  out.append("\">\n");
  if (!title_.empty()) out.append("<title>").append(XmlText(title_)).append("</title>\n");
  // Without this attribute, viewers replace several blanks by one.
  out.append("<g xml:space=\"preserve\" stroke-linejoin=\"round\" font-family=\"")
      .append(kFonts)
      .append("\">\n")
      .append(body_);
  for (const Polyline& line : lines_) Append(out, line);
  return out.append("</g>\n</svg>\n");
}

}  // namespace skyhop
