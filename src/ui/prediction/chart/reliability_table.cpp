#include "ui/prediction/chart/reliability_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "bands/bands.h"
#include "common/text.h"
#include "engine/point_snr.h"
#include "ui/drawing/surface_views.h"

namespace skyhop {
namespace {

constexpr std::size_t kHours = kHourCount - 1;

constexpr const char* kUnknown = "\u2013";

/// Results with reliabilities do not contain 160 m.
std::size_t RowsOf(const PredictedDay& day) {
  return day.HasSnr() ? kBandCount - 1 : kBandCount;
}

std::size_t BandOf(std::size_t row) {
  return kBandCount - 1 - row;
}

double RowTop(const Rectangle& area, std::size_t row, std::size_t rows) {
  return std::round(area.top + area.height * static_cast<double>(row) / static_cast<double>(rows));
}

double ColumnLeft(const Rectangle& area, std::size_t hour) {
  return std::round(area.left + area.width * static_cast<double>(hour) / kHours);
}

struct Cell {
  std::string text;
  TextColors colors;
};

Cell ReliabilityCell(const ResultsTable& table, std::size_t band, std::size_t hour) {
  const std::optional<int> percent = ReliabilityPercent(table, band, hour);
  return {percent ? std::to_string(*percent) : kUnknown, ReliabilityColors(percent.value_or(0))};
}

std::size_t LevelOf(const PredictedDay& day, std::size_t band, std::size_t hour) {
  return static_cast<std::size_t>(OpenLevel(day, band, hour).value_or(0));
}

Cell LevelCell(const PredictedDay& day, std::size_t band, std::size_t hour) {
  if (!day.table.reached.at(hour)) return {"\u00D7", colors::kReliability[0]};
  // LUF/MUF results have one level less than reliabilities.
  constexpr std::array<std::size_t, 4> steps = {0, 1, 3, 4};
  const std::size_t level = LevelOf(day, band, hour);
  return {level > 0 ? std::to_string(level) : "", colors::kReliability.at(steps.at(level))};
}

std::string ShareText(std::size_t level) {
  return std::to_string(IONCAPModule::kOpenShares.at(level)) + " %";
}

}  // namespace

TextColors ReliabilityColors(int percent) {
  return colors::kReliability.at(static_cast<std::size_t>(IONCAPModule::ReliabilityLevel(percent)));
}

std::optional<int> ReliabilityPercent(const ResultsTable& table, std::size_t band,
                                      std::size_t hour) {
  if (!table.Known(BandQuantity::kReliability, band, hour)) return std::nullopt;
  const double percent = 100.0 * static_cast<double>(table.reliability[band][hour]);
  return static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0)));
}

std::optional<std::size_t> BandOfRow(const PredictedDay& day, const Rectangle& area, double y) {
  const std::size_t rows = RowsOf(day);
  for (std::size_t row = 0; row < rows; ++row) {
    if (y >= RowTop(area, row, rows) && y < RowTop(area, row + 1, rows)) return BandOf(row);
  }
  return std::nullopt;
}

std::string TableCaption(const PredictedDay& day) {
  if (day.HasSnr()) return "Reliability: percent of the days that reach the required SNR";
  return "Open bands: 3 on " + ShareText(3) + " of the days or more, 2 on " + ShareText(2) +
         ", 1 on " + ShareText(1) + "; \u00D7 required reliability not reached";
}

std::string CellWords(const PredictedDay& day, std::size_t band, std::size_t hour) {
  if (!day.table.reached.at(hour)) return "required reliability not reached";
  const std::size_t level = LevelOf(day, band, hour);
  return level == 0 ? "closed" : "open on " + ShareText(level) + " of the days or more";
}

void PaintHatching(Surface& surface, const Rectangle& area, const ChartPalette& palette,
                   double text_size) {
  surface.FillRectangle(area, palette.shade);
  PartSurface part(surface, area);
  // The lines continue in neighbouring areas.
  const double step = std::max(4.0, std::round(text_size * 0.6));
  const double first = std::ceil((area.left + area.top) / step) * step - area.left - area.top;
  for (double x = first; x < area.width + area.height; x += step) {
    part.Line({x, 0}, {x - area.height, area.height}, {palette.hatch});
  }
}

void PaintBandTable(Surface& surface, const PredictedDay& day, const Rectangle& area,
                    double text_size, const ChartPalette& palette) {
  const std::size_t rows = RowsOf(day);
  const double width = area.width / kHours;
  const double height = area.height / static_cast<double>(rows);
  const double size = std::min({text_size, width / 2.1, height / 1.3});
  // Smaller numbers are unreadable.
  const bool numbers = size >= 7;
  for (std::size_t row = 0; row < rows; ++row) {
    const std::size_t band = BandOf(row);
    const double top = RowTop(area, row, rows);
    const double bottom = RowTop(area, row + 1, rows);
    const double middle = (top + bottom) / 2;
    surface.Text({area.left - 8, middle}, kBandLabelTexts.at(band),
                 {.size = text_size, .color = palette.text, .horizontal = HorizontalAlign::kRight});
    for (std::size_t hour = 0; hour < kHours; ++hour) {
      const Cell cell =
          day.HasSnr() ? ReliabilityCell(day.table, band, hour) : LevelCell(day, band, hour);
      const double left = ColumnLeft(area, hour);
      const Rectangle inside{left + 1, top + 1, ColumnLeft(area, hour + 1) - left - 1,
                             bottom - top - 1};
      if (day.table.reached.at(hour)) {
        surface.FillRectangle(inside, cell.colors.fill);
      } else {
        PaintHatching(surface, inside, palette, text_size);
      }
      if (!numbers || cell.text.empty()) continue;
      surface.Text(
          {(inside.left + inside.Right() - 1) / 2, middle}, cell.text,
          {.size = size, .color = cell.colors.ink, .horizontal = HorizontalAlign::kCenter});
    }
  }
}

std::string BandReadout(const ResultsTable& table, std::size_t band, std::size_t hour) {
  const auto value = [&](BandQuantity quantity, const std::string& text) {
    return table.Known(quantity, band, hour) ? text : std::string(kUnknown);
  };
  const int power = IONCAPModule::DecibelMilliwatts(table.signal_power[band][hour]);
  const auto frequency = static_cast<double>(kBandLineFrequencies.at(band));
  const auto percent = ReliabilityPercent(table, band, hour);
  std::string text(kBandLabelTexts.at(band));
  text += "   " + (percent ? std::to_string(*percent) + " %" : std::string(kUnknown)) + " of days";
  text += "   SNR " +
          value(BandQuantity::kSnr, std::to_string(std::lround(table.snr[band][hour])) + " dB");
  text += "   " + value(BandQuantity::kMode, std::string(Trim(table.mode[band][hour])));
  return text + "   " +
         value(BandQuantity::kSignalPower,
               std::to_string(power) + " dBm, " + IONCAPModule::SUnits(power, frequency));
}

}  // namespace skyhop
