#include "ui/spaceweather/forecast_chart.h"

#include <algorithm>
#include <cmath>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"
#include "ui/drawing/text_width.h"

namespace skyhop {
namespace {

using SolarForecastModule::ForecastSlot;
using SolarForecastModule::ForecastTable;
using SolarForecastModule::kAColumns;
using SolarForecastModule::kFirstDaySlot;
using SolarForecastModule::kFluxColumns;
using SolarForecastModule::kKColumns;

constexpr std::size_t kFluxColumn = kFluxColumns[0];
constexpr std::size_t kAColumn = kAColumns[0];
constexpr std::size_t kKColumn = kKColumns[0];

/// Room in multiples of the font's height.
constexpr double kAxisRoom = 3.4;
constexpr double kMargin = 1.0;
constexpr double kTitleRoom = 2.0;
constexpr double kDateRoom = 3.4;
constexpr double kLinesApart = 2.2;  ///< least distance of two labels of an axis
constexpr double kDaysApart = 0.25;  ///< least distance of the labels of two days

constexpr double kBarShare = 0.7;  ///< of a column
constexpr double kCurveWidth = 2;
constexpr double kPointSize = 5;
/// Margin of the axis below the lowest and above the highest flux.
constexpr double kFluxAir = 5;

/// The geomagnetic field is a storm from K 5 or A 30, and unsettled from K 4 or A 16.
Color LevelColor(std::size_t column, int value) {
  const bool is_k = column == kKColumn;
  if (value >= (is_k ? 5 : 30)) return colors::kStorm;
  return value >= (is_k ? 4 : 16) ? colors::kUnsettled : colors::kQuiet;
}

/// The smallest of 1, 2, 5, 10, 20, 50, ... that divides `range` into at most `most` parts.
double RoundStep(double range, double most) {
  double step = 1;
  for (int index = 0; range / step > most; ++index) step *= index % 3 == 1 ? 2.5 : 2;
  return step;
}

std::string ValueText(std::int16_t value) {
  return value < 0 ? "not given" : std::to_string(value);
}

}  // namespace

std::optional<std::chrono::year_month_day> DateOf(const ForecastSlot& slot) {
  constexpr std::size_t length = 7;
  if (slot.date.size() != length) return std::nullopt;
  return ParseDate(slot.date.substr(0, 2) + "-" + slot.date.substr(2, 3) + "-" +
                   slot.date.substr(5));
}

std::string DayText(const ForecastSlot& slot) {
  if (!slot.valid) return {};
  std::string day = slot.date;
  if (const auto date = DateOf(slot)) {
    day = std::to_string(slot.day) + " " + MonthName(date->month()) + " " +
          std::to_string(static_cast<int>(date->year()));
  }
  return day + ": solar flux " + ValueText(slot.columns[kFluxColumn]) + ", A index " +
         ValueText(slot.columns[kAColumn]) + ", estimated K index " +
         (slot.columns[kAColumn] < 0 ? "not given" : ValueText(slot.columns[kKColumn]));
}

ForecastChart::ForecastChart(const ForecastTable& table, ForecastChartOptions options)
    : table_(&table), options_(std::move(options)) {
  AddGraph(options_.flux, "Solar flux", kFluxColumn, 0);
  AddGraph(options_.a_index, "A index", kAColumn, 20);
  AddGraph(options_.k_index, "K index, estimated from A", kKColumn, 9);
  Arrange();
}

/// The axis begins at 0 and ends at `least_high` or higher. If `least_high` is 0, the axis covers
/// the range of the values.
void ForecastChart::AddGraph(bool shown, const char* title, std::size_t column, double least_high) {
  if (!shown) return;
  Graph graph{.title = title, .column = column, .high = least_high};
  bool found = false;
  double least = 0;
  double most = 0;
  for (const ForecastSlot& slot : *table_) {
    const double value = slot.columns[column];
    if (!slot.valid || value < 0) continue;
    least = found ? std::min(least, value) : value;
    most = found ? std::max(most, value) : value;
    found = true;
  }
  graph.high = std::max(least_high, most);
  if (least_high == 0) {
    graph.low = std::max(0.0, least - kFluxAir);
    graph.high = most + kFluxAir;
  }
  graphs_.push_back(graph);
}

/// Divides the height among the graphs and rounds their axes to whole steps.
void ForecastChart::Arrange() {
  const double count = static_cast<double>(graphs_.size());
  const double room = options_.height - Text() * (kMargin + kDateRoom + count * kTitleRoom);
  // Whole pixels for every column make all bars equally wide.
  const double column = std::max(
      1.0, std::floor((options_.width - Text() * (kAxisRoom + kMargin)) / double{kFirstDaySlot}));
  double top = std::round(Text() * kMargin);
  for (Graph& graph : graphs_) {
    top += std::round(Text() * kTitleRoom);
    graph.plot = {std::round(Text() * kAxisRoom), top, column * double{kFirstDaySlot},
                  std::max(1.0, std::floor(room / count))};
    top = graph.plot.Bottom();
    const double lines = std::max(2.0, std::floor(graph.plot.height / (Text() * kLinesApart)));
    graph.step = RoundStep(graph.high - graph.low, lines);
    graph.low = std::floor(graph.low / graph.step) * graph.step;
    graph.high = std::ceil(graph.high / graph.step) * graph.step;
  }
}

bool ForecastChart::HasForecast() const {
  return std::any_of(table_->begin(), table_->end(),
                     [](const ForecastSlot& slot) { return slot.valid; });
}

Rectangle ForecastChart::Column(const Rectangle& plot, std::size_t slot) const {
  const double width = plot.width / double{kFirstDaySlot};
  return {plot.left + static_cast<double>(kFirstDaySlot - slot) * width, plot.top, width,
          plot.height};
}

std::vector<Rectangle> ForecastChart::Plots() const {
  std::vector<Rectangle> plots;
  for (const Graph& graph : graphs_) plots.push_back(graph.plot);
  return plots;
}

std::size_t ForecastChart::SlotAt(Point at) const {
  if (graphs_.empty()) return 0;
  const Rectangle& first = graphs_.front().plot;
  if (at.x < first.left || at.x >= first.Right() || at.y < first.top || at.y > options_.height) {
    return 0;
  }
  const auto column =
      static_cast<std::size_t>((at.x - first.left) / first.width * double{kFirstDaySlot});
  const std::size_t slot = kFirstDaySlot - std::min(column, kFirstDaySlot - 1);
  return table_->at(slot).valid ? slot : 0;
}

void ForecastChart::Paint(Surface& surface) const {
  surface.Clear(options_.palette.background);
  if (graphs_.empty() || !HasForecast()) {
    PaintEmpty(surface);
    return;
  }
  for (const Graph& graph : graphs_) {
    surface.FillRectangle(graph.plot, options_.palette.paper);
    PaintMarks(surface, graph);
    PaintGrid(surface, graph);
    if (graph.column == kFluxColumn) {
      PaintCurve(surface, graph);
    } else {
      PaintBars(surface, graph);
    }
  }
  PaintDates(surface);
  PaintTodayKey(surface);
}

/// Marks today and the day under the pointer.
void ForecastChart::PaintMarks(Surface& surface, const Graph& graph) const {
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    const ForecastSlot& day = table_->at(slot);
    if (!day.valid) continue;
    const Rectangle column = Column(graph.plot, slot);
    if (DateOf(day) == options_.today) {
      surface.FillRectangle(column, options_.palette.old_paper);
    }
    if (slot == options_.pointed_slot) surface.FillRectangle(column, options_.palette.grid);
  }
}

void ForecastChart::PaintGrid(Surface& surface, const Graph& graph) const {
  const Rectangle& plot = graph.plot;
  const ChartPalette& palette = options_.palette;
  surface.Text({plot.left, plot.top - Text() * 0.8}, graph.title,
               {.size = Text(), .color = palette.ink, .weight = FontWeight::kBold});
  const auto lines = std::lround((graph.high - graph.low) / graph.step);
  for (long line = 0; line <= lines; ++line) {
    const double value = graph.low + static_cast<double>(line) * graph.step;
    const double y = std::round(graph.Y(value));
    surface.Line({plot.left, y}, {plot.Right(), y}, {.color = palette.band});
    surface.Text({plot.left - Text() * 0.5, y}, NumberText(value),
                 {.size = Text(), .color = palette.text, .horizontal = HorizontalAlign::kRight});
  }
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    // Draw a line at the start of a month. Bars and points already separate the days.
    if (!table_->at(slot).valid || table_->at(slot).day != 1) continue;
    const double x = Column(plot, slot).left;
    surface.Line({x, plot.top}, {x, plot.Bottom()}, {.color = palette.axis});
  }
  surface.Line({plot.left, plot.top}, {plot.left, plot.Bottom()}, {.color = palette.axis});
  surface.Line({plot.left, plot.Bottom()}, {plot.Right(), plot.Bottom()}, {.color = palette.axis});
}

void ForecastChart::PaintCurve(Surface& surface, const Graph& graph) const {
  std::optional<Point> before;
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    const ForecastSlot& day = table_->at(slot);
    const std::int16_t value = day.columns[graph.column];
    if (!day.valid || value < 0) {
      before.reset();
      continue;
    }
    const Rectangle column = Column(graph.plot, slot);
    const Point at{column.left + column.width / 2, graph.Y(value)};
    if (before) surface.Line(*before, at, {.color = colors::kFlux, .width = kCurveWidth});
    surface.FillRectangle({at.x - kPointSize / 2, at.y - kPointSize / 2, kPointSize, kPointSize},
                          colors::kFlux);
    before = at;
  }
}

void ForecastChart::PaintBars(Surface& surface, const Graph& graph) const {
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    const ForecastSlot& day = table_->at(slot);
    const std::int16_t value = day.columns[graph.column];
    // Without an A index, the K index has no basis.
    if (!day.valid || value < 0 || day.columns[kAColumn] < 0) continue;
    const Rectangle column = Column(graph.plot, slot);
    const double width = std::max(1.0, std::round(column.width * kBarShare));
    const double top = graph.Y(value);
    surface.FillRectangle({column.left + std::floor((column.width - width) / 2), top, width,
                           graph.plot.Bottom() - top},
                          LevelColor(graph.column, value));
  }
}

/// Paints the key of the shaded column.
void ForecastChart::PaintTodayKey(Surface& surface) const {
  const bool has_today = std::any_of(table_->begin(), table_->end(), [&](const ForecastSlot& slot) {
    return slot.valid && DateOf(slot) == options_.today;
  });
  if (!has_today) return;
  const Rectangle& plot = graphs_.front().plot;
  const double y = plot.top - Text() * 0.8;
  surface.Text({plot.Right(), y}, "today",
               {.size = Text(),
                .color = options_.palette.time_text,
                .horizontal = HorizontalAlign::kRight,
                .weight = FontWeight::kBold});
  const double side = std::round(Text());
  const double right = plot.Right() - TextWidth("today ", Text(), FontWeight::kBold);
  surface.FillRectangle({right - side, y - side / 2, side, side}, options_.palette.old_paper);
}

/// Paints the days below the lowest graph, as many as fit, with their months below them.
void ForecastChart::PaintDates(Surface& surface) const {
  const Rectangle& plot = graphs_.back().plot;
  const double room = plot.width / double{kFirstDaySlot};
  const double needed =
      surface.TextExtent("30", {.size = Text(), .weight = FontWeight::kBold}) + Text() * kDaysApart;
  const auto apart = static_cast<std::size_t>(std::max(1.0, std::ceil(needed / room)));
  std::optional<std::chrono::month> month;
  for (std::size_t slot = kFirstDaySlot; slot >= 1; --slot) {
    const ForecastSlot& day = table_->at(slot);
    if (!day.valid) continue;
    const auto date = DateOf(day);
    const bool today = date == options_.today;
    const Rectangle column = Column(plot, slot);
    if (today || (kFirstDaySlot - slot) % apart == 0) {
      surface.Text({column.left + column.width / 2, plot.Bottom() + Text() * 0.9},
                   std::to_string(day.day),
                   {.size = Text(),
                    .color = today ? options_.palette.time_text : options_.palette.text,
                    .horizontal = HorizontalAlign::kCenter,
                    .weight = today ? FontWeight::kBold : FontWeight::kNormal});
    }
    if (date && date->month() != month)
      PaintMonth(surface, slot, plot.Bottom() + Text() * 2.3, room);
    if (date) month = date->month();
  }
}

/// Paints the name of the month that begins at a slot.
void ForecastChart::PaintMonth(Surface& surface, std::size_t slot, double y, double room) const {
  const auto date = DateOf(table_->at(slot));
  if (!date) return;
  const std::string text =
      MonthName(date->month()) + " " + std::to_string(static_cast<int>(date->year()));
  // Move a name at the right edge to the left, so that it stays on the canvas.
  const double left = Column(graphs_.back().plot, slot).left + room * 0.1;
  const double most =
      graphs_.back().plot.Right() + Text() - TextWidth(text, Text(), FontWeight::kNormal);
  surface.Text({std::min(left, most), y}, text, {.size = Text(), .color = options_.palette.text});
}

void ForecastChart::PaintEmpty(Surface& surface) const {
  const std::string text =
      graphs_.empty() ? "Tick a box above to see its graph" : options_.empty_text;
  const double width = options_.width - 2 * Text() * kMargin;
  // A message that contains an address may need several lines.
  std::string_view rest = text;
  double y = options_.height / 2 - Text();
  while (!rest.empty()) {
    const std::size_t length = FittingLength(rest, width, Text(), FontWeight::kNormal);
    surface.Text(
        {options_.width / 2, y}, Trim(rest.substr(0, length)),
        {.size = Text(), .color = options_.palette.text, .horizontal = HorizontalAlign::kCenter});
    rest.remove_prefix(length);
    y += Text() * 1.5;
  }
}

}  // namespace skyhop
