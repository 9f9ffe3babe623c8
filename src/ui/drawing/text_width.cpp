#include "ui/drawing/text_width.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

constexpr double kBoldFactor = 1.1;

bool IsOneOf(char c, std::string_view characters) {
  return characters.find(c) != std::string_view::npos;
}

/// Advance of the UTF-8 character that begins with `c`, as a part of the font size.
double Advance(char c) {
  if (c == ' ' || IsOneOf(c, "fijlrtI.,:;'|!()[]/-")) return 0.38;
  if (IsOneOf(c, "mwMWQOG@%")) return 0.9;
  if (static_cast<unsigned char>(c) >= 0x80U) return 0.75;
  return c >= 'A' && c <= 'Z' ? 0.7 : 0.62;
}

}  // namespace

double TextWidth(std::string_view text, double size, FontWeight weight) {
  double width = 0;
  for (; !text.empty(); text.remove_prefix(CharacterSize(text))) width += Advance(text.front());
  return width * size * (weight == FontWeight::kBold ? kBoldFactor : 1);
}

double Surface::TextExtent(std::string_view text, const TextStyle& style) {
  return TextWidth(text, style.size, style.weight);
}

std::size_t FittingLength(std::string_view text, double width, double size, FontWeight weight) {
  double used = 0;
  std::size_t fitting = 0;
  std::size_t after_word = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t next = at + CharacterSize(text.substr(at));
    used += TextWidth(text.substr(at, next - at), size, weight);
    if (used > width && at > 0) return after_word > 0 ? after_word : fitting;
    fitting = next;
    if (next == text.size() || text[next] == ' ') after_word = next;
    at = next;
  }
  return text.size();
}

std::string ClockText(double hours) {
  const auto minutes = static_cast<int>(std::lround(hours * 60));
  return PaddedNumber(minutes / 60, 2) + ":" + PaddedNumber(minutes % 60, 2);
}

std::string Shortened(std::string_view text, double width, double size, FontWeight weight) {
  if (TextWidth(text, size, weight) <= width) return std::string(text);
  const std::string_view ellipsis = "\u2026";
  const double left = width - TextWidth(ellipsis, size, weight);
  return std::string(text.substr(0, FittingLength(text, left, size, weight))).append(ellipsis);
}

void SpreadApart(std::span<double> places, double spacing, double low, double high) {
  if (places.empty()) return;
  const auto gaps = static_cast<double>(places.size() - 1);
  if (gaps > 0) spacing = std::min(spacing, (high - low) / gaps);

  // After subtracting the spacing, "far enough apart" means "not descending". Averaging descending
  // neighbours yields the nearest such sequence (isotonic regression).
  struct Block {
    double mean;
    double count;
  };
  std::vector<Block> blocks;
  blocks.reserve(places.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    blocks.push_back({places[i] - static_cast<double>(i) * spacing, 1});
    while (blocks.size() > 1 && blocks[blocks.size() - 2].mean > blocks.back().mean) {
      const Block last = blocks.back();
      blocks.pop_back();
      Block& merged = blocks.back();
      merged.mean =
          (merged.mean * merged.count + last.mean * last.count) / (merged.count + last.count);
      merged.count += last.count;
    }
  }
  std::size_t at = 0;
  for (const Block& block : blocks) {
    const double mean = std::clamp(block.mean, low, std::max(low, high - gaps * spacing));
    for (auto left = static_cast<std::size_t>(block.count); left > 0; --left, ++at) {
      places[at] = mean + static_cast<double>(at) * spacing;
    }
  }
}

}  // namespace skyhop
