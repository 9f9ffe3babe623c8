#include "ui/drawing/label_spread.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace skyhop {

void SpreadApart(std::span<double> places, double spacing, double low, double high) {
  if (places.empty()) return;
  const auto gaps = static_cast<double>(places.size() - 1);
  if (gaps > 0) spacing = std::min(spacing, (high - low) / gaps);

  // With the spacing taken out, "far enough apart" becomes "not descending", and the nearest such
  // sequence is found by averaging neighbours that descend (isotonic regression).
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
