#include "ui/prediction/chart/color_keys.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "bands/bands.h"
#include "ui/prediction/chart/reliability_table.h"

namespace skyhop {
namespace {

constexpr double kSampleLength = 30;

/// A sample of the bars of open bands and its meaning; width 0 for the hatching of hours.
struct BarMeaning {
  Pen pen;
  std::string text;
};

std::string PercentText(int percent) {
  return std::to_string(percent) + "%";
}

/// The keys of the open levels, the highest first, and of the other bars in the chart.
std::vector<BarMeaning> BarMeanings(const ChartModel& model) {
  using IONCAPModule::kOpenShares;
  using IONCAPModule::kReliabilityLimits;
  std::vector<BarMeaning> bars;
  bars.reserve(5);
  const auto add = [&](std::size_t level, std::string text) {
    bars.push_back({{colors::kOpenBand, static_cast<double>(level)}, std::move(text)});
  };
  if (model.Day().HasSnr()) {
    std::size_t level = kReliabilityLimits.size();
    add(level, "reliability above " + PercentText(kReliabilityLimits.back()));
    while (--level > 0) {
      add(level, "reliability " + PercentText(kReliabilityLimits[level - 1] + 1) + " to " +
                     PercentText(kReliabilityLimits[level]));
    }
  } else {
    for (std::size_t level = kOpenShares.size() - 1; level > 0; --level) {
      add(level, "open with at least " + PercentText(kOpenShares[level]) + " confidence");
    }
    bars.push_back({{colors::kOpenBand, 1, LineStyle::kDotted}, "opens or closes in this hour"});
  }
  if (model.HasUnreachedHours()) bars.push_back({{.width = 0}, "required reliability not reached"});
  return bars;
}

/// Paints framed groups of lines, each with a sample, side by side or one below the other.
class KeyPainter {
 public:
  KeyPainter(const ChartModel& model, const ChartLayout& layout, Surface& surface)
      : surface_(&surface),
        palette_(&model.palette),
        room_(layout.keys),
        at_{room_.left, room_.top},
        size_(layout.text_size),
        row_(layout.RowHeight()),
        rows_(layout.key_rows),
        downward_(layout.keys_beside) {}

  void Swatches(std::string_view caption, std::span<const ColorKey> lines) {
    const double side = std::round(size_ * 0.85);
    Frame(caption, lines, side, [&](const ColorKey& key, Point at) {
      const Rectangle swatch{at.x, at.y - std::floor(side / 2), side, side};
      surface_->FillRectangle(swatch, key.color);
      PaintFrame(*surface_, swatch, palette_->axis);
    });
  }

  void Bars(std::string_view caption, std::span<const BarMeaning> lines) {
    const double height = std::round(row_ * 0.8);
    Frame(caption, lines, kSampleLength, [&](const BarMeaning& bar, Point at) {
      const Rectangle sample{at.x, std::round(at.y - height / 2), kSampleLength, height};
      // Thin bars are visible on the paper only, which is light on a dark desktop too.
      surface_->FillRectangle(sample, palette_->paper);
      if (bar.pen.width > 0) {
        surface_->Line(at, {at.x + kSampleLength, at.y}, bar.pen);
      } else {
        PaintHatching(*surface_, sample, *palette_, size_);
      }
    });
  }

 private:
  /// Paints a frame; `paint_sample` paints the sample of a line at its start.
  template <class Lines, class PaintSample>
  void Frame(std::string_view caption, const Lines& lines, double sample_width,
             PaintSample paint_sample) {
    double text_width = surface_->TextExtent(caption, {.size = size_, .weight = FontWeight::kBold});
    for (const auto& line : lines) {
      text_width = std::max(
          text_width, sample_width + size_ / 2 + surface_->TextExtent(line.text, {.size = size_}));
    }
    const double padding = std::round(size_ * 0.7);
    const auto rows = downward_ ? static_cast<double>(lines.size() + 1) : rows_;
    const Rectangle area{at_.x, at_.y, std::ceil(text_width) + 2 * padding,
                         rows * row_ + std::round(size_ / 2)};
    if (area.Right() > room_.Right() || area.Bottom() > room_.Bottom()) return;
    PaintFrame(*surface_, area, palette_->band);
    Point line_start{area.left + padding, area.top + std::round(row_ * 0.5 + size_ / 4)};
    surface_->Text(line_start, caption,
                   {.size = size_, .color = palette_->ink, .weight = FontWeight::kBold});
    for (const auto& line : lines) {
      line_start.y += row_;
      paint_sample(line, line_start);
      surface_->Text({line_start.x + sample_width + size_ / 2, line_start.y}, line.text,
                     {.size = size_, .color = palette_->text});
    }
    if (downward_) {
      at_.y = area.Bottom() + std::round(size_ * 0.7);
    } else {
      at_.x = area.Right() + std::round(size_);
    }
  }

  Surface* surface_;
  const ChartPalette* palette_;
  Rectangle room_;
  Point at_;  ///< corner of the next frame
  double size_;
  double row_;
  double rows_;  ///< of each frame that is beside others
  bool downward_;
};

}  // namespace

void PaintFrame(Surface& surface, const Rectangle& area, Color color) {
  const Pen pen{color};
  const Point corners[] = {{area.left, area.top},
                           {area.Right(), area.top},
                           {area.Right(), area.Bottom()},
                           {area.left, area.Bottom()}};
  for (std::size_t i = 0; i < 4; ++i) surface.Line(corners[i], corners[(i + 1) % 4], pen);
}

void PaintColorKeys(const ChartModel& model, const ChartLayout& layout, Surface& surface) {
  KeyPainter keys(model, layout, surface);
  keys.Swatches(kCurveKeyCaption, kCurveKeys);
  keys.Swatches(kSolarKeyCaption, kSolarKeys);
  keys.Bars("Open Bands", BarMeanings(model));
}

}  // namespace skyhop
