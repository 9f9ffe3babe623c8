#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/results.h"
#include "engine/results_table.h"
#include "ui/prediction/prediction_chart.h"
#include "ui/prediction/solar_bars.h"
#include "ui/prediction/surface.h"

namespace skyhop {

/// Colours of the pane around the curves, for a light or a dark desktop.
struct ChartPalette {
  Color background{};  ///< of the pane
  Color paper{};       ///< of the plotting surface; light, since the curves' colours are fixed
  Color ink{};         ///< strong texts
  Color text{};        ///< labels
  Color muted{};       ///< what matters less
  Color axis{};
  Color band{};       ///< band lines
  Color grid{};       ///< hour lines
  Color open_text{};  ///< labels of open bands
  Color time{};       ///< time index and band indicator
};
[[nodiscard]] const ChartPalette& LightPalette();
[[nodiscard]] const ChartPalette& DarkPalette();

/// Who shows the pane.
class ChartHost {
 public:
  virtual ~ChartHost() = default;
  /// Everything has to be painted anew.
  virtual void ChartChanged() = 0;
  /// The overlay has changed between these places only.
  virtual void OverlayChanged(const Rectangle& area) = 0;
  /// What the pointer or the time index is at, for the status bar.
  virtual void ShowReadout(const std::string& text) = 0;
};

/// The whole chart of the window: plot, axes, labels, colour keys, solar bars and time index. It
/// decides what is where, what a pointer or a key does there, and draws on a Surface.
class ChartPane : public IONCAPModule::ResultsChart {
 public:
  /// All must outlive this object.
  ChartPane(const ResultsTable& table, Diagnostics& diagnostics, const Clock& clock);

  void SetHost(ChartHost* host) { host_ = host; }
  void SetPalette(const ChartPalette& palette);

  /// Size in pixels, and the height of the labels' font.
  void Resize(double width, double height, double text_size);

  /// Draws everything but the time index; `Overlay` draws that.
  void Paint(Surface& surface);
  void PaintOverlay(Surface& surface) const;

  /// A result is in the table: shows it and puts the time index at the current time.
  void DisplayTable(EngineChoice engine) override;
  [[nodiscard]] bool HasResult() const { return chart_.Plotted(); }
  [[nodiscard]] EngineChoice Engine() const { return engine_; }
  /// Marks the chart as not belonging to the present inputs' run.
  void SetOld(bool old);
  [[nodiscard]] bool Old() const { return old_; }

  void SetOpenBandEnable(bool on);
  void SetPlotEnable(bool on);
  void ShowColorKeys(bool show);
  void SetSolarBars(const SolarBars& bars);
  /// Band index beside which the band indicator stands, -1 for none.
  void SetBandIndicator(std::int16_t band);
  [[nodiscard]] std::int16_t BandIndicator() const { return band_indicator_; }

  void UpdateVerticalTimeBar();
  /// Time of the time index in hours, 0 to 24 UTC.
  [[nodiscard]] double TimeIndex() const;

  // Pointer and keys. Places are on the pane.
  /// Whether the pointer is on the time index, which can be dragged there.
  [[nodiscard]] bool OnTimeLine(Point at) const;
  void Press(Point at);
  void Move(Point at);
  void Release();
  void Leave();
  /// Moves the time index by whole hours.
  void StepTimeIndex(int hours);
  /// Called when the user, not the clock, moved the time index.
  void SetTimeIndexListener(std::function<void()> listener) {
    on_time_index_ = std::move(listener);
  }
  /// Called when a click chose a band.
  void SetBandListener(std::function<void(std::int16_t)> listener) {
    on_band_ = std::move(listener);
  }

  /// Time, frequency, band, LUF and MUFs at a place of the plot; empty elsewhere.
  [[nodiscard]] std::string Readout(Point at) const;
  /// Time, LUF, MUFs and open bands at the time index.
  [[nodiscard]] std::string ReadoutAtTimeIndex() const;
  /// The words for what is under the pointer, empty for none.
  [[nodiscard]] std::string ToolTipAt(Point at) const;

  [[nodiscard]] const IONCAPModule::PredictionChart& Chart() const { return chart_; }
  [[nodiscard]] const ResultsTable& Table() const { return *table_; }
  /// Where the plot lies on the pane.
  [[nodiscard]] const Rectangle& Plot() const { return plot_; }

 private:
  struct Drag {
    bool active = false;
    double grab = 0;
  };

  void Arrange();
  [[nodiscard]] IONCAPModule::ChartOptions Options() const {
    return {open_band_enable_, plot_enable_};
  }
  void Changed();
  void PlaceTimeLine(double x);

  const ResultsTable* table_;
  ChartHost* host_ = nullptr;
  ChartPalette palette_;
  IONCAPModule::PredictionChart chart_;
  EngineChoice engine_ = EngineChoice::kNone;
};

}  // namespace skyhop
