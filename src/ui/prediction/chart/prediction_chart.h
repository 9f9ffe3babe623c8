#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "bands/bands.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/results_table.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"

namespace skyhop::IONCAPModule {

/// The colour of open stretches.
inline constexpr Color kOpenBandColor{255, 0, 255};

/// The check boxes that decide what the chart shows.
struct ChartOptions {
  bool open_band_enable = false;  ///< `OpenBandEnable`, "Show Open Bands"
  bool plot_enable = false;       ///< `PlotEnable`, "Plot Critical Frequencies"
};

/// What a `BandLine` shows: a level line across the plotting surface.
struct BandLine {
  std::int16_t y = 0;  ///< on the plotting surface
  bool visible = false;
};

/// What a `BandLabel` shows.
struct BandLabel {
  double top = 0;  ///< on the form
  bool visible = false;
};

/// The 24-hour chart: time of day (UTC) across, frequency in MHz upward, both linear.
///
/// The curves and the open stretches are painted on a surface; what the controls on the form show
/// is kept here as plain values for whoever draws them. Frequencies are MHz, hours 0 to 24 UTC.
/// Every operation reports its own failures to the error log and then yields the value stated.
///
/// Painting decides which labels are visible, so a window paints when something has changed, into a
/// bitmap of its own, and not on every exposure.
class PredictionChart {
 public:
  /// The table, the diagnostics and the clock must outlive this object. Puts the time index at the
  /// current time; nothing else is shown until a result is displayed.
  PredictionChart(const ResultsTable& table, const ChartLayout& layout, Diagnostics& diagnostics,
                  const Clock& clock);

  /// Takes over a form that has changed its size. The axis is measured again, so that a repaint
  /// shows the same result on the new layout.
  void SetLayout(const ChartLayout& layout);
  [[nodiscard]] const ChartLayout& Layout() const { return layout_; }

  /// The results table has been filled by a run of `engine`: computes the axis, paints everything
  /// and puts the time index at the current time.
  void DisplayResult(EngineChoice engine, ChartOptions options, Surface& ionprop);

  /// Clears the surface and paints the bands, or the open bands, and the curves as `options` says.
  void Repaint(ChartOptions options, Surface& ionprop);

  /// Marks whether the table holds a result. While it does not, nothing is painted.
  void SetPlotted(bool plotted) { plotted_ = plotted; }
  [[nodiscard]] bool Plotted() const { return plotted_; }

  /// Computes range, scale and labels of the frequency axis and moves the band lines to it. For
  /// results of `EngineChoice::kVoaCapSnr` the range is what the table's bounds say, for the others
  /// it is found in the table; either way it is widened to five divisions of a whole number of MHz.
  /// The axis of a table that has no usable range is empty: both ends are 0.
  void ComputeAxis(EngineChoice engine);

  /// Height of a frequency on the plotting surface, rounded toward the higher frequency; 0 when the
  /// axis has no extent or the height does not fit 16 bits.
  [[nodiscard]] std::int16_t YDataScale(float frequency) const;

  /// Height of a frequency on the form, rounded toward the lower end of the axis; 0 as above.
  [[nodiscard]] std::int16_t YLabelScale(float frequency) const;

  /// Distance of an hour mark from the axis; throws std::out_of_range for an hour above 24.
  [[nodiscard]] double XDataScale(std::size_t hour) const {
    return layout_.x_hash.at(hour) - layout_.x_hash[0];
  }

  /// Band index for a height on the plotting surface, heights beyond the axis taken as its ends; -1
  /// when no band is near.
  [[nodiscard]] std::int16_t GetBandForY(float y) const;

  /// Places line and label of every band that the axis covers and hides the others.
  void PaintBandLines();

  /// Paints the four curves, hour by hour; of an engine that predicts reliabilities those parts
  /// that its results tell. Nothing is painted when no value is above 0 or the axis has no extent.
  void PaintPlot(Surface& ionprop);

  /// Paints a bar along each band for the hours in which it is open, the thicker the surer, and
  /// shows the labels of just those bands that are open at some hour.
  void PaintOpenings(Surface& ionprop);

  /// How surely `frequency` is open at `hour`, see IONCAPModule::FreqOpen.
  [[nodiscard]] std::int16_t FreqOpen(float frequency, std::int16_t hour) const {
    return IONCAPModule::FreqOpen(*table_, engine_, frequency, hour, *diagnostics_);
  }

  /// Moves the time index to the current hour and minute.
  void UpdateVerticalTimeBar();

  // Dragging the time index. `x` is the pointer's, measured from the first hour mark.
  /// A press on the index starts a drag and remembers where on the bar it was grabbed.
  void Timeline_MouseDown(double x);
  /// While a drag lasts, moves the index. A place that would let the bar leave the chart is
  /// ignored.
  void Timeline_MouseMove(double x);
  void Timeline_MouseUp() { dragging_ = false; }
  [[nodiscard]] bool Dragging() const { return dragging_; }

  /// Puts the index at a time of day in hours, clamped to 0 to 24.
  void SetTimeIndex(double hours);

  /// Width of the bar `TimeLine` in pixels.
  static constexpr double kTimeLineWidth = 3;

  /// Time of day at a place of the time index: hours from 0 to 24, minutes as their fraction.
  /// Places beyond the axis are taken as its ends.
  [[nodiscard]] double TimeForX(double x) const;

  // The scale, in MHz and form pixels.
  [[nodiscard]] float FMin() const { return f_min_; }
  [[nodiscard]] float FMax() const { return f_max_; }
  [[nodiscard]] float YFMin() const { return y_f_min_; }
  [[nodiscard]] float YFMax() const { return y_f_max_; }
  [[nodiscard]] float FScale() const { return f_scale_; }
  [[nodiscard]] float HourWidth() const { return hour_width_; }

  /// Whether the axis spans any frequencies.
  [[nodiscard]] bool HasAxis() const { return f_max_ > f_min_; }

  // What the controls show.
  [[nodiscard]] const std::array<std::string, kTickCount>& YLabels() const { return y_labels_; }
  [[nodiscard]] const std::array<BandLine, kBandCount>& BandLines() const { return band_lines_; }
  [[nodiscard]] const std::array<BandLabel, kBandCount>& BandLabels() const { return band_labels_; }
  /// Place of `TimeLine`, measured from the first hour mark.
  [[nodiscard]] double TimeLineX() const { return time_line_x_; }

 private:
  [[nodiscard]] bool PredictsReliability() const { return engine_ == EngineChoice::kVoaCapSnr; }
  void RequireAxis() const;
  [[nodiscard]] double UnitsAboveFMin(float frequency) const;
  [[nodiscard]] bool HasCurves() const;
  [[nodiscard]] bool TellsFrequency(std::size_t row, std::size_t hour) const;
  void MeasureAxis();
  void ClearAxis();
  void PlaceBandLines();
  void LogPlotted(std::string_view procedure);
  void TimelineMove(double x);
  void PaintOpenings(std::size_t band, Surface& ionprop);
  [[nodiscard]] bool OpenStretch(float frequency, std::int16_t hour, Pen& pen) const;

  const ResultsTable* table_;
  ChartLayout layout_;
  Diagnostics* diagnostics_;
  const Clock* clock_;

  EngineChoice engine_ = EngineChoice::kNone;
  bool plotted_ = false;
  float f_min_ = 0;
  float f_max_ = 0;
  float y_f_min_ = 0;
  float y_f_max_ = 0;
  float f_scale_ = 0;
  float hour_width_ = 0;

  std::array<std::string, kTickCount> y_labels_;
  std::array<BandLine, kBandCount> band_lines_;
  std::array<BandLabel, kBandCount> band_labels_;
  double time_line_x_ = 0;
  bool dragging_ = false;
  double grab_offset_ = 0;
};

}  // namespace skyhop::IONCAPModule
