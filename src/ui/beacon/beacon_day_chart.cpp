#include "ui/beacon/beacon_day_chart.h"

#include <algorithm>
#include <cmath>

#include "ui/drawing/text_width.h"

namespace skyhop {
namespace {

constexpr int kHours = 24;
constexpr std::array<const char*, 5> kLevelTexts = {"closed", "poor", "fair", "good", "very good"};

/// The least height of a label. A lower row has a label only while it is the present one.
constexpr double kLeastText = 8;

class DayPainter {
 public:
  DayPainter(const DayChart& day, double width, double height, double text_size, Surface& surface)
      : day_(&day), surface_(&surface), size_(text_size) {
    double label = 0;
    for (const DayRow& row : day.rows) {
      label = std::max(label, TextWidth(row.label, size_, FontWeight::kBold));
    }
    const double left = std::round(std::min(label + size_, width / 2));
    const double top = std::round(size_ * 1.8);
    const double rows = std::max<double>(1, static_cast<double>(day.rows.size()));
    row_height_ = std::clamp((height - top - size_ * 3.6) / rows, 1.0, size_ * 2.2);
    hour_width_ = std::max(1.0, std::floor((width - left - size_) / kHours));
    plot_ = {left, top, hour_width_ * kHours, std::round(row_height_ * rows)};
  }

  void Paint() {
    surface_->Clear(day_->palette.background);
    Write({plot_.left, plot_.top - size_ * 0.9}, day_->title, day_->palette.ink, size_,
          HorizontalAlign::kLeft, FontWeight::kBold);
    if (day_->rows.empty()) {
      Write({plot_.left, plot_.top + size_}, day_->empty_text, day_->palette.muted, size_,
            HorizontalAlign::kLeft);
      return;
    }
    surface_->FillRectangle(plot_, day_->palette.paper);
    for (std::size_t row = 0; row < day_->rows.size(); ++row) PaintRow(row);
    PaintHours();
    for (std::size_t row = 0; row < day_->rows.size(); ++row) PaintMarks(row);
    PaintKey();
  }

 private:
  void Write(Point at, std::string_view text, Color color, double size, HorizontalAlign align,
             FontWeight weight = FontWeight::kNormal) {
    surface_->Text(at, text, {size, color, align, VerticalAlign::kMiddle, weight});
  }

  /// In whole pixels, so that no gap of half a pixel separates rows.
  [[nodiscard]] double Top(std::size_t row) const {
    return plot_.top + std::round(row_height_ * static_cast<double>(row));
  }
  [[nodiscard]] double X(double hour) const { return plot_.left + hour * hour_width_; }

  void PaintRow(std::size_t number) {
    const DayRow& row = day_->rows[number];
    const double top = Top(number);
    const double height = std::max(1.0, Top(number + 1) - top - 1);
    for (int hour = 0; hour < kHours; ++hour) {
      const auto known = row.levels.at(static_cast<std::size_t>(hour));
      if (!known) continue;
      const auto level = std::clamp<std::int16_t>(*known, 0, colors::kOpenLevels.size() - 1);
      surface_->FillRectangle({X(hour), top, hour_width_, height},
                              colors::kOpenLevels.at(static_cast<std::size_t>(level)));
    }
    const double size = std::min(size_, row_height_);
    if (size < kLeastText && !row.now) return;
    Write({plot_.left - size_ * 0.5, top + height / 2}, row.label,
          row.now ? day_->palette.time_text : day_->palette.text, std::max(size, kLeastText),
          HorizontalAlign::kRight, row.now ? FontWeight::kBold : FontWeight::kNormal);
  }

  void PaintHours() {
    constexpr int labelled = 3;
    for (int hour = 0; hour <= kHours; ++hour) {
      const bool label = hour % labelled == 0;
      surface_->Line({X(hour), plot_.top}, {X(hour), plot_.Bottom() + (label ? size_ * 0.4 : 0)},
                     {label ? day_->palette.axis : day_->palette.grid, 1, LineStyle::kSolid});
      if (!label) continue;
      Write({X(hour), plot_.Bottom() + size_}, std::to_string(hour), day_->palette.text, size_,
            HorizontalAlign::kCenter);
    }
    if (!day_->hour) return;
    surface_->Line({X(*day_->hour), plot_.top}, {X(*day_->hour), plot_.Bottom()},
                   {day_->palette.time, 2, LineStyle::kSolid});
  }

  void PaintMark(Point at, bool heard) {
    const double half = std::clamp(row_height_ * 0.3, 2.0, size_ * 0.35);
    if (heard) {
      surface_->FillRectangle({at.x - half, at.y - half, 2 * half, 2 * half}, colors::kHeard);
      return;
    }
    const Pen pen{colors::kNotHeard, 2, LineStyle::kSolid};
    surface_->Line({at.x - half, at.y - half}, {at.x + half, at.y + half}, pen);
    surface_->Line({at.x - half, at.y + half}, {at.x + half, at.y - half}, pen);
  }

  void PaintMarks(std::size_t number) {
    for (const DayMark& mark : day_->rows[number].marks) {
      PaintMark({X(mark.hour), Top(number) + row_height_ / 2}, mark.heard);
    }
  }

  void PaintKey() {
    double x = plot_.left;
    const double y = plot_.Bottom() + size_ * 2.5;
    const auto word = [&](std::string_view text) {
      Write({x + size_ * 1.3, y}, text, day_->palette.text, size_, HorizontalAlign::kLeft);
      x += size_ * 2.4 + TextWidth(text, size_, FontWeight::kNormal);
    };
    for (std::size_t level = 0; level < colors::kOpenLevels.size(); ++level) {
      surface_->FillRectangle({x, y - size_ / 2, size_, size_}, colors::kOpenLevels.at(level));
      word(kLevelTexts.at(level));
    }
    for (const bool heard : {true, false}) {
      PaintMark({x + size_ / 2, y}, heard);
      word(heard ? "heard" : "not heard");
    }
  }

  const DayChart* day_;
  Surface* surface_;
  double size_;
  double row_height_ = 1;
  double hour_width_ = 1;
  Rectangle plot_;
};

}  // namespace

const char* LevelText(std::int16_t level) {
  const int last = static_cast<int>(kLevelTexts.size()) - 1;
  return kLevelTexts.at(static_cast<std::size_t>(std::clamp<int>(level, 0, last)));
}

void PaintDayChart(const DayChart& day, double width, double height, double text_size,
                   Surface& surface) {
  DayPainter(day, width, height, text_size, surface).Paint();
}

}  // namespace skyhop
