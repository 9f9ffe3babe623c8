#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/results_table.h"
#include "engine/results_table.h"
#include "report/csv_report.h"
#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/prediction_chart.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {

/// Who shows the pane.
class ChartHost {
 public:
  virtual ~ChartHost() = default;
  /// Everything has to be painted anew.
  virtual void ChartChanged() = 0;
  /// Only the overlay has changed, and only within this area.
  virtual void OverlayChanged(const Rectangle& area) = 0;
  /// What the pointer or the time index is at, for the status bar.
  virtual void ShowReadout(const std::string& text) = 0;
};

/// The whole chart of the window: plot, axes, labels, colour keys, solar bars and time index. It
/// decides what is where, what a pointer or a key does there, and draws on a Surface. Places are
/// pixels on the pane.
class ChartPane {
 public:
  /// All must outlive this object. `table` is what the engines' results are read into; the pane
  /// shows a copy of it, so that results which turn out to be unreadable leave the chart alone.
  ChartPane(const ResultsTable& table, Diagnostics& diagnostics, const Clock& clock);

  void SetHost(ChartHost* host) { host_ = host; }
  void SetPalette(const ChartPalette& palette);

  /// Size of the pane and height of the labels' font.
  void Resize(double width, double height, double text_size);

  /// Draws everything but the time index.
  void Paint(Surface& surface);
  /// Draws the time index, over what Paint has drawn.
  void PaintOverlay(Surface& surface) const;

  /// Takes over what another pane shows: result, title, options, time index. Palette and size stay.
  void ShowLike(const ChartPane& other);

  /// A result is in the table: shows it and puts the time index at the current time.
  void DisplayTable(EngineChoice engine);
  [[nodiscard]] bool HasResult() const { return chart_.Plotted(); }
  [[nodiscard]] EngineChoice Engine() const { return engine_; }

  /// Marks the chart as that of an earlier prediction than the one last asked for.
  void SetOld(bool old);
  [[nodiscard]] bool Old() const { return old_; }
  /// The circuit of the result, one line above the chart; empty for none.
  void SetTitle(const std::string& title);
  [[nodiscard]] const std::string& Title() const { return title_; }
  /// Where the result comes from, a line under the title; empty for none. A window shows it in a
  /// label of its own.
  void SetProvenance(const std::string& provenance);
  /// What the pane says while there is no result.
  void SetEmptyText(const std::string& text);

  void SetOpenBandEnable(bool on);
  void SetPlotEnable(bool on);
  void ShowColorKeys(bool show);
  /// Whether results are shown as a table of bands by hours instead of as a chart.
  void SetTableView(bool on);
  [[nodiscard]] bool TableShown() const { return table_view_ && HasResult(); }
  void SetSolarBars(const SolarBars& bars);
  [[nodiscard]] const SolarBars& Sun() const { return sun_; }
  /// Band index beside which the band indicator stands, -1 for none.
  void SetBandIndicator(std::int16_t band);
  [[nodiscard]] std::int16_t BandIndicator() const { return band_indicator_; }

  void UpdateVerticalTimeBar();
  /// Time of the time index in hours, 0 to 24 UTC.
  [[nodiscard]] double TimeIndex() const { return chart_.TimeForX(chart_.TimeLineX()); }

  /// Whether the time index can be grabbed there.
  [[nodiscard]] bool OnTimeLine(Point at) const;
  /// The pointer was pressed: grabs the time index or chooses the band that is there.
  void Press(Point at);
  void Move(Point at);
  void Release();
  /// The pointer has left the pane.
  void Leave();
  /// Moves the time index by whole hours.
  void StepTimeIndex(int hours);

  /// Called when the user, not the clock, moves the time index.
  void SetTimeIndexListener(std::function<void()> listener) {
    on_time_index_ = std::move(listener);
  }
  /// Called with the band index, -1 for none, that a click has chosen.
  void SetBandListener(std::function<void(std::int16_t)> listener) {
    on_band_ = std::move(listener);
  }

  /// Time, frequency, band, LUF and MUFs at a place of the plot; with results that tell it, what is
  /// predicted of the band there. Empty elsewhere.
  [[nodiscard]] std::string Readout(Point at) const;
  /// Time, LUF, MUFs and open bands at the time index; empty without a result.
  [[nodiscard]] std::string ReadoutAtTimeIndex() const;
  /// The words for what is at a place, empty for none.
  [[nodiscard]] std::string ToolTipAt(Point at) const;

  [[nodiscard]] const IONCAPModule::PredictionChart& Chart() const { return chart_; }
  /// The result that is shown.
  [[nodiscard]] const ResultsTable& Table() const { return shown_; }
  /// Where the plot and the two rows of solar bars lie.
  [[nodiscard]] const Rectangle& Plot() const { return plot_; }
  [[nodiscard]] const Rectangle& XmitSun() const { return xmit_sun_; }
  [[nodiscard]] const Rectangle& RcvSun() const { return rcv_sun_; }

 private:
  /// Room for the band labels, in heights of the text.
  static constexpr double kRightMargin = 4.6;

  void Arrange();
  void Changed();
  [[nodiscard]] bool PredictsReliability() const { return engine_ == EngineChoice::kVoaCapSnr; }
  /// The keys explain the chart.
  [[nodiscard]] bool KeysShown() const { return color_keys_ && keys_fit_ && !TableShown(); }
  [[nodiscard]] std::int16_t BandAt(Point at) const;
  /// Does `move`, which may move the time index, and has what changed by it painted.
  template <class MoveIndex>
  void MovingTimeIndex(MoveIndex&& move);
  [[nodiscard]] Rectangle OverlayArea() const;
  [[nodiscard]] double TimeLineX() const { return plot_.left + chart_.TimeLineX(); }
  [[nodiscard]] double RowHeight() const;
  [[nodiscard]] double CaptionHeight() const;
  [[nodiscard]] double HeaderHeight() const;
  [[nodiscard]] PredictedDay Day() const { return {shown_, *diagnostics_, engine_}; }
  /// Whether some hour does not reach the required reliability.
  [[nodiscard]] bool HasUnreachedHours() const;
  [[nodiscard]] double KeyHeight() const;
  [[nodiscard]] double KeyWidth() const;

  void PaintHeader(Surface& surface) const;
  void PaintUnreachedHours(Surface& surface) const;
  void PaintChart(Surface& surface);
  void PaintPlot(Surface& surface);
  void PaintCurvesAndBands(Surface& surface);
  void PaintTable(Surface& surface) const;
  void PaintEmpty(Surface& surface) const;
  void PaintTimeAxis(Surface& surface) const;
  void PaintFrequencyAxis(Surface& surface) const;
  void PaintBandLabels(Surface& surface) const;
  void PaintSunRow(Surface& surface, const Rectangle& area, const SunRow& row,
                   std::string_view caption) const;
  void PaintKeys(Surface& surface) const;
  [[nodiscard]] std::string Values(double time) const;
  [[nodiscard]] std::string CellReadout(std::size_t band, double time) const;

  const ResultsTable* table_;
  ResultsTable shown_;
  ChartHost* host_ = nullptr;
  ChartPalette palette_ = kLightPalette;
  Diagnostics* diagnostics_;
  IONCAPModule::PredictionChart chart_;
  EngineChoice engine_ = EngineChoice::kNone;

  double width_ = 0;
  double height_ = 0;
  double text_size_ = 12;
  Rectangle plot_;
  Rectangle xmit_sun_;
  Rectangle rcv_sun_;

  bool open_band_enable_ = true;
  bool plot_enable_ = true;
  bool color_keys_ = true;
  bool table_view_ = false;
  bool keys_fit_ = true;
  bool keys_beside_ = false;  ///< the keys stand at the right instead of below
  bool old_ = false;
  std::string title_;
  std::string provenance_;
  std::string empty_text_;
  SolarBars sun_;
  std::int16_t band_indicator_ = -1;

  std::function<void()> on_time_index_;
  std::function<void(std::int16_t)> on_band_;
};

}  // namespace skyhop
