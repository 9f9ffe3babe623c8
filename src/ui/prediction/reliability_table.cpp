#include "ui/prediction/reliability_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "common/text.h"
#include "engine/point_snr.h"
#include "ui/prediction/bands.h"

namespace skyhop {
namespace {

constexpr std::size_t kHours = kHourCount - 1;
/// 160 m is not predicted.
constexpr std::size_t kRows = kBandCount - 1;

constexpr const char* kUnknown = "\u2013";

std::size_t BandOf(std::size_t row) {
  return kBandCount - 1 - row;
}

double RowTop(const Rectangle& area, std::size_t row) {
  return std::round(area.top + area.height * static_cast<double>(row) / kRows);
}

double ColumnLeft(const Rectangle& area, std::size_t hour) {
  return std::round(area.left + area.width * static_cast<double>(hour) / kHours);
}

}  // namespace

CellColors ReliabilityColors(int percent) {
  constexpr Color dark{16, 24, 40};
  // Five steps of blue whose lightness falls evenly.
  constexpr std::array<CellColors, 5> steps = {{{{244, 247, 251}, {96, 102, 114}},
                                                {{198, 219, 239}, dark},
                                                {{133, 182, 219}, dark},
                                                {{55, 125, 184}, colors::kWhite},
                                                {{8, 64, 129}, colors::kWhite}}};
  const std::size_t step = percent > 80 ? 4 : percent > 60 ? 3 : percent > 40 ? 2 : percent > 20;
  return steps.at(step);
}

std::optional<int> ReliabilityPercent(const ResultsTable& table, std::size_t band,
                                      std::size_t hour) {
  if (!table.Known(BandQuantity::kReliability, band, hour)) return std::nullopt;
  const double percent = 100.0 * static_cast<double>(table.reliability[band][hour]);
  return static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0)));
}

std::optional<std::size_t> BandOfRow(const Rectangle& area, double y) {
  for (std::size_t row = 0; row < kRows; ++row) {
    if (y >= RowTop(area, row) && y < RowTop(area, row + 1)) return BandOf(row);
  }
  return std::nullopt;
}

void PaintReliabilityTable(Surface& surface, const ResultsTable& table, const Rectangle& area,
                           double text_size, const ChartPalette& palette) {
  const double width = area.width / kHours;
  const double height = area.height / kRows;
  const double size = std::min({text_size, width / 2.1, height / 1.3});
  // Smaller than this nobody reads it.
  const bool numbers = size >= 7;
  for (std::size_t row = 0; row < kRows; ++row) {
    const std::size_t band = BandOf(row);
    const double top = RowTop(area, row);
    const double bottom = RowTop(area, row + 1);
    const double middle = (top + bottom) / 2;
    surface.Text({area.left - 8, middle}, kBandLabelTexts.at(band),
                 {.size = text_size, .color = palette.text, .horizontal = HorizontalAlign::kRight});
    for (std::size_t hour = 0; hour < kHours; ++hour) {
      const std::optional<int> percent = ReliabilityPercent(table, band, hour);
      const double left = ColumnLeft(area, hour);
      const double right = ColumnLeft(area, hour + 1);
      const CellColors cell = ReliabilityColors(percent.value_or(0));
      surface.FillRectangle({left + 1, top + 1, right - left - 1, bottom - top - 1}, cell.fill);
      if (!numbers) continue;
      surface.Text({(left + right) / 2, middle},
                   percent ? std::to_string(*percent) : std::string(kUnknown),
                   {.size = size, .color = cell.ink, .horizontal = HorizontalAlign::kCenter});
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
