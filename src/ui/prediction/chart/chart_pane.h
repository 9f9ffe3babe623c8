#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/results_table.h"
#include "ui/drawing/chart_palette.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/chart_model.h"
#include "ui/prediction/chart/solar_bars.h"

namespace skyhop {

/// The window that shows a pane.
class ChartHost {
 public:
  virtual ~ChartHost() = default;
  /// The whole pane needs a repaint.
  virtual void ChartChanged() = 0;
  /// Only the time index needs a repaint, and only within this area.
  virtual void OverlayChanged(const Rectangle& area) = 0;
  /// A text for the status bar: the values at the pointer or at the time index.
  virtual void ShowReadout(const std::string& text) = 0;
};

/// The chart of the window: owns model and layout, reacts to pointer and keys, and asks its host
/// for repaints. Places are pixels on the pane.
class ChartPane {
 public:
  /// The parsers fill `table`. The pane shows a copy of it, so unreadable results leave the chart
  /// as it is. The time index starts at the current time.
  ChartPane(const ResultsTable& table, Diagnostics& diagnostics, const Clock& clock);

  void SetHost(ChartHost* host) { host_ = host; }
  void SetPalette(const ChartPalette& palette) { Set(model_.palette, palette); }

  /// Sets size of the pane and height of the labels' font.
  void Resize(double width, double height, double text_size);

  [[nodiscard]] const ChartModel& Model() const { return model_; }
  [[nodiscard]] const ChartLayout& Layout() const { return layout_; }

  /// Paints everything but the time index.
  void Paint(Surface& surface) const;
  /// Paints the time index over the rest.
  void PaintOverlay(Surface& surface) const;

  /// Shows the result in the table and moves the time index to the current time.
  void DisplayTable(EngineChoice engine);
  [[nodiscard]] bool HasResult() const { return model_.plotted; }
  [[nodiscard]] EngineChoice Engine() const { return model_.engine; }
  /// The result that is shown.
  [[nodiscard]] const ResultsTable& Table() const { return model_.table; }

  // Parts of the model; see ChartModel.
  void SetOld(bool old) { Set(model_.old, old); }
  [[nodiscard]] bool Old() const { return model_.old; }
  void SetTitle(const std::string& title) { Set(model_.title, title); }
  void SetEmptyText(const std::string& text) { Set(model_.empty_text, text); }
  void SetOpenBandEnable(bool on) { Set(model_.open_band_enable, on); }
  void SetPlotEnable(bool on) { Set(model_.plot_enable, on); }
  void ShowColorKeys(bool show) { Set(model_.color_keys, show); }
  void SetTableView(bool on) { Set(model_.table_view, on); }
  void SetSolarBars(const SolarBars& bars) { Set(model_.sun, bars); }
  [[nodiscard]] const SolarBars& Sun() const { return model_.sun; }
  void SetBandIndicator(std::int16_t band) { Set(model_.band_indicator, band); }

  /// Moves the time index to the current time, except during a drag.
  void UpdateVerticalTimeBar();
  [[nodiscard]] double TimeIndex() const { return model_.time_index; }
  /// Moves the time index by whole hours within the day.
  void StepTimeIndex(int hours);

  /// The user pressed the pointer: starts a drag of the time index or chooses the band there.
  void Press(Point at);
  /// The pointer moved: drags the time index or shows the values at the pointer.
  void Move(Point at);
  void Release() { Timeline_MouseUp(); }
  /// The pointer left the pane.
  void Leave();
  [[nodiscard]] bool Dragging() const { return dragging_; }

  /// `listener` is called when the user, not the clock, moves the time index.
  void SetTimeIndexListener(std::function<void()> listener) {
    on_time_index_ = std::move(listener);
  }
  /// `listener` is called with the index of the band that a click chose, -1 for none.
  void SetBandListener(std::function<void(std::int16_t)> listener) {
    on_band_ = std::move(listener);
  }

 private:
  /// Sets a part of the model; a change needs a new layout and a repaint.
  template <class Part>
  void Set(Part& part, const Part& value) {
    if (part == value) return;
    part = value;
    Arrange();
  }
  void Arrange();
  void MoveTimeIndex(double hours);

  void Timeline_MouseDown(double x);
  void Timeline_MouseMove(double x);
  void Timeline_MouseUp() { dragging_ = false; }
  void TimelineMove(double x);

  const ResultsTable* table_;
  const Clock* clock_;
  ChartHost* host_ = nullptr;
  ChartModel model_;
  ChartLayout layout_;
  bool dragging_ = false;
  double grab_offset_ = 0;  ///< from the pointer to the time index

  std::function<void()> on_time_index_;
  std::function<void(std::int16_t)> on_band_;
};

}  // namespace skyhop
