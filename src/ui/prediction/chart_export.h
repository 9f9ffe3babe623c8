#pragma once

#include <string>

#include "common/diagnostics.h"
#include "engine/results.h"
#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_model.h"
#include "ui/prediction/chart/chart_pane.h"
#include "ui/prediction/shown_chart.h"

namespace skyhop {

/// The chart in the forms in which it leaves the window.
class ChartExport {
 public:
  struct Collaborators {
    const ChartPane& pane;
    const ShownChart& shown;
    const IONCAPModule::Results& results;
    Diagnostics& diagnostics;
  };

  explicit ChartExport(const Collaborators& collaborators) : with_(collaborators) {}

  /// The chart's results as comma-separated values; empty when there are none.
  [[nodiscard]] std::string ResultsAsCsv() const;
  /// Draws the chart as a picture for files and paper, `scale` times as large as its layout.
  void PaintPicture(Surface& surface, double scale) const;
  /// The same as an SVG document.
  [[nodiscard]] std::string ChartAsSvg() const;

 private:
  [[nodiscard]] ChartModel Picture() const;

  Collaborators with_;
};

}  // namespace skyhop
