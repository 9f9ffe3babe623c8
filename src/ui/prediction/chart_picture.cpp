#include "ui/prediction/chart_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "ui/prediction/bands.h"
#include "ui/prediction/label_spread.h"
#include "ui/prediction/picture_key.h"
#include "ui/prediction/reliability_table.h"
#include "ui/prediction/surface_views.h"
#include "ui/prediction/svg_surface.h"
#include "ui/prediction/text_width.h"

namespace skyhop {
namespace {

using IONCAPModule::PredictionChart;

constexpr double kMargin = 32;
constexpr double kAxisLabelRoom = 48;  ///< left of the plot, for the frequencies
constexpr double kBandLabelRoom = 52;  ///< right of the plot
constexpr double kHeaderHeight = 80;   ///< title, subtitle and the label of the time index
constexpr double kTitleLineHeight = 22;
constexpr double kHourLabelRoom = 30;  ///< below the plot
constexpr double kKeyDistance = 22;    ///< between hour labels and key
constexpr double kTick = 5;
constexpr double kLabelGap = 5;  ///< between a tick and its label
constexpr double kLabelSize = 12;
constexpr double kBandLabelHeight = 14;
constexpr double kLeader = 12;  ///< from the plot's edge to a band label

/// The title in the largest size in which it fits on one line, else on two lines.
struct Title {
  std::vector<std::string> lines;
  double size = 20;
};

Title FitTitle(std::string_view summary, double width) {
  constexpr double least_size = 15;
  Title title;
  const std::string_view text = Trim(summary);
  if (text.empty()) return title;
  while (title.size > least_size && TextWidth(text, title.size, FontWeight::kBold) > width) {
    title.size -= 1;
  }
  const std::size_t first = FittingLength(text, width, title.size, FontWeight::kBold);
  title.lines.emplace_back(text.substr(0, first));
  if (first < text.size()) {
    title.lines.push_back(
        Shortened(Trim(text.substr(first)), width, title.size, FontWeight::kBold));
  }
  return title;
}

std::string Subtitle(const PictureTexts& texts, bool table) {
  // Captions double an ampersand that is to be seen.
  std::string text = ReplaceAll(texts.engine, "&&", "&");
  if (!texts.engine_version.empty()) {
    text.append(text.empty() ? "version " : " ").append(texts.engine_version);
  }
  if (!texts.sunspot_number.empty()) {
    text.append(text.empty() ? "" : " \u00B7 ").append("sunspot number ");
    text.append(texts.sunspot_number);
  }
  if (table) text.append(text.empty() ? "" : " \u00B7 ").append(kReliabilityCaption);
  return text;
}

/// One picture: where its parts are and the drawing of each.
class Picture {
 public:
  Picture(Surface& surface, const ResultsTable& table, EngineChoice engine,
          const PictureTexts& texts, const PictureOptions& options, Diagnostics& diagnostics,
          const Clock& clock)
      : surface_(&surface),
        table_(&table),
        engine_(engine),
        texts_(&texts),
        options_(&options),
        width_(std::max(options.width, kLeastPictureWidth)),
        height_(std::max(options.height, kLeastPictureHeight)),
        title_(FitTitle(texts.summary, width_ - 2 * kMargin)),
        plot_(PlotArea()),
        chart_(table, EvenLayout(plot_, kBandLabelHeight), diagnostics, clock) {
    chart_.SetPlotted(true);
    chart_.ComputeAxis(engine);
  }

  void Paint() {
    surface_->Clear(colors::kWhite);
    PaintHeader();
    if (IsTable()) {
      PaintReliabilityTable(*surface_, *table_, plot_, kLabelSize, kLightPalette);
      PaintTimeAxis();
      PaintTimeIndex();
    } else if (chart_.HasAxis()) {
      PaintGrid();
      PaintBands();
      PaintCurves();
      PaintTimeAxis();
      PaintFrequencyAxis();
      PaintTimeIndex();
      PaintKeys();
    } else {
      PaintTimeAxis();
      PaintFrequencyAxis();
      surface_->Text(
          {plot_.left + plot_.width / 2, plot_.top + plot_.height / 2},
          "There is no prediction to show",
          {.size = 16, .color = palette::kMuted, .horizontal = HorizontalAlign::kCenter});
    }
  }

 private:
  [[nodiscard]] bool IsTable() const {
    return options_->show_table && engine_ == EngineChoice::kVoaCapSnr;
  }

  [[nodiscard]] bool HasKeys() const {
    return options_->show_color_keys && !IsTable() &&
           (options_->show_curves || options_->show_open_bands);
  }

  /// Whole pixels for every hour and every division of the frequency axis.
  [[nodiscard]] Rectangle PlotArea() const {
    const double left = kMargin + kAxisLabelRoom;
    const double second_line = title_.lines.size() > 1 ? kTitleLineHeight : 0;
    const double top = kMargin + kHeaderHeight + second_line;
    const double width = width_ - left - kBandLabelRoom - kMargin;
    const double below = kHourLabelRoom + (HasKeys() ? kKeyDistance + kKeyHeight : 0);
    const double height = height_ - top - below - kMargin;
    return {left, top, 24 * std::floor(width / 24), 5 * std::floor(height / 5)};
  }

  void PaintHeader() {
    double y = kMargin;
    TextStyle style{.size = title_.size,
                    .color = palette::kInk,
                    .vertical = VerticalAlign::kTop,
                    .weight = FontWeight::kBold};
    for (const std::string& line : title_.lines) {
      surface_->Text({kMargin, y}, line, style);
      y += kTitleLineHeight;
    }
    surface_->Text(
        {kMargin, plot_.top - kHeaderHeight + 30},
        Shortened(Subtitle(*texts_, IsTable()), width_ - 2 * kMargin, 13, FontWeight::kNormal),
        {.size = 13, .color = palette::kText, .vertical = VerticalAlign::kTop});
  }

  void PaintGrid() {
    for (std::size_t hour = 1; hour < kHourCount; ++hour) {
      const double x = plot_.left + chart_.XDataScale(hour);
      surface_->Line({x, plot_.top}, {x, plot_.Bottom()}, {palette::kGrid});
    }
  }

  void PaintBands() {
    chart_.PaintBandLines();
    for (const IONCAPModule::BandLine& line : chart_.BandLines()) {
      if (!line.visible) continue;
      const double y = plot_.top + line.y;
      surface_->Line({plot_.left, y}, {plot_.Right(), y}, {palette::kBand});
    }
    if (options_->show_open_bands) {
      PartSurface plot(*surface_, plot_);
      chart_.PaintOpenings(plot);
    }
    PaintBandLabels();
  }

  /// Beside each band line its name, in a strong colour when the band is open at some hour.
  void PaintBandLabels() {
    std::vector<std::size_t> bands;
    std::vector<double> places;
    for (std::size_t band = kBandCount; band-- > 0;) {
      if (!chart_.BandLines()[band].visible) continue;
      bands.push_back(band);
      places.push_back(plot_.top + chart_.BandLines()[band].y);
    }
    SpreadApart(places, kBandLabelHeight, plot_.top, plot_.Bottom());
    for (std::size_t i = 0; i < bands.size(); ++i) {
      const std::size_t band = bands[i];
      TextStyle style{.size = kLabelSize, .color = palette::kText};
      if (options_->show_open_bands) {
        const bool open = chart_.BandLabels()[band].visible;
        style.color = open ? palette::kOpenText : palette::kMuted;
        style.weight = open ? FontWeight::kBold : FontWeight::kNormal;
      }
      surface_->Line({plot_.Right(), plot_.top + chart_.BandLines()[band].y},
                     {plot_.Right() + kLeader, std::round(places[i])}, {palette::kBand});
      surface_->Text({plot_.Right() + kLeader + 4, places[i]}, kBandLabelTexts[band], style);
    }
  }

  void PaintCurves() {
    if (!options_->show_curves) return;
    PartSurface plot(*surface_, plot_);
    chart_.PaintPlot(plot);
  }

  void PaintTimeAxis() {
    const double y = plot_.Bottom();
    surface_->Line({plot_.left, y}, {plot_.Right(), y}, {palette::kAxis});
    TextStyle style{.size = kLabelSize,
                    .color = palette::kText,
                    .horizontal = HorizontalAlign::kCenter,
                    .vertical = VerticalAlign::kTop};
    const std::array<double, kHourCount>& marks = chart_.Layout().x_hash;
    for (std::size_t hour = 0; hour < kHourCount; ++hour) {
      surface_->Line({marks[hour], y}, {marks[hour], y + kTick}, {palette::kAxis});
    }
    for (std::size_t hour = 0; hour < kHourCount; ++hour) {
      surface_->Text({marks[hour], y + kTick + 4}, std::to_string(hour), style);
    }
    style.horizontal = HorizontalAlign::kRight;
    style.weight = FontWeight::kBold;
    surface_->Text({plot_.left - kTick - kLabelGap, y + kTick + 4}, "UTC", style);
  }

  void PaintFrequencyAxis() {
    const double x = plot_.left;
    surface_->Line({x, plot_.top}, {x, plot_.Bottom()}, {palette::kAxis});
    if (!chart_.HasAxis()) return;
    const std::array<double, kTickCount>& marks = chart_.Layout().y_tick;
    for (const double y : marks) {
      surface_->Line({x - kTick, y}, {x, y}, {palette::kAxis});
    }
    TextStyle style{
        .size = kLabelSize, .color = palette::kText, .horizontal = HorizontalAlign::kRight};
    for (std::size_t tick = 0; tick < kTickCount; ++tick) {
      surface_->Text({x - kTick - kLabelGap, marks[tick]}, chart_.YLabels()[tick], style);
    }
    style.vertical = VerticalAlign::kBottom;
    style.weight = FontWeight::kBold;
    surface_->Text({x - kTick - kLabelGap, plot_.top - 9}, "MHz", style);
  }

  void PaintTimeIndex() {
    if (!options_->time_index) return;
    constexpr double half_label = 24;
    const double time = std::clamp(*options_->time_index, 0.0, 24.0);
    const double x = std::round(plot_.left + plot_.width * time / 24);
    TextStyle style{.size = kLabelSize,
                    .color = palette::kTime,
                    .horizontal = HorizontalAlign::kCenter,
                    .vertical = VerticalAlign::kBottom,
                    .weight = FontWeight::kBold};
    // Beyond the plot's ends are the labels of its upper edge.
    if (x - plot_.left < half_label) style.horizontal = HorizontalAlign::kLeft;
    if (plot_.Right() - x < half_label) style.horizontal = HorizontalAlign::kRight;
    surface_->Line({x, plot_.top - 4}, {x, plot_.Bottom()}, {palette::kTime});
    surface_->Text({x, plot_.top - 5}, ClockText(time), style);
  }

  void PaintKeys() {
    if (!HasKeys()) return;
    const double y = plot_.Bottom() + kHourLabelRoom + kKeyDistance;
    double x = plot_.left;
    if (options_->show_curves) {
      PaintCurveKey(*surface_, {x, y}, *table_);
      x = plot_.left + std::round(plot_.width * 0.58);
    }
    if (options_->show_open_bands) PaintOpenBandKey(*surface_, {x, y}, engine_);
  }

  Surface* surface_;
  const ResultsTable* table_;
  EngineChoice engine_;
  const PictureTexts* texts_;
  const PictureOptions* options_;
  double width_;
  double height_;
  Title title_;
  Rectangle plot_;
  PredictionChart chart_;
};

}  // namespace

double PictureOptions::SurfaceWidth() const {
  return std::max(width, kLeastPictureWidth) * scale;
}

double PictureOptions::SurfaceHeight() const {
  return std::max(height, kLeastPictureHeight) * scale;
}

void PaintPicture(Surface& surface, const ResultsTable& table, EngineChoice engine,
                  const PictureTexts& texts, const PictureOptions& options,
                  Diagnostics& diagnostics, const Clock& clock) {
  ScaledSurface scaled(surface, options.scale);
  Picture(scaled, table, engine, texts, options, diagnostics, clock).Paint();
}

std::string PictureAsSvg(const ResultsTable& table, EngineChoice engine, const PictureTexts& texts,
                         const PictureOptions& options, Diagnostics& diagnostics,
                         const Clock& clock) {
  SvgSurface surface(options.SurfaceWidth(), options.SurfaceHeight(), texts.summary);
  PaintPicture(surface, table, engine, texts, options, diagnostics, clock);
  return surface.Document();
}

}  // namespace skyhop
