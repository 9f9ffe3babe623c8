#include "ui/prediction/chart_export.h"

#include "report/csv_report.h"
#include "ui/prediction/chart/chart_picture.h"

namespace skyhop {

std::string ChartExport::ResultsAsCsv() const {
  return with_.diagnostics.Trap("IonCap.ResultsAsCsv", std::string(), [&] {
    if (!with_.pane.HasResult()) return std::string();
    return CsvReport({with_.pane.Table(), with_.diagnostics, with_.pane.Engine()},
                     with_.results.Heading());
  });
}

/// The window's chart with its source, which the window shows in a label of its own.
ChartModel ChartExport::Picture() const {
  ChartModel picture = with_.pane.Model();
  picture.provenance = with_.shown.Provenance();
  return picture;
}

void ChartExport::PaintPicture(Surface& surface, double scale) const {
  with_.diagnostics.Trap("IonCap.PaintPicture",
                         [&] { skyhop::PaintPicture(surface, Picture(), {.scale = scale}); });
}

std::string ChartExport::ChartAsSvg() const {
  return with_.diagnostics.Trap("IonCap.ChartAsSvg", std::string(),
                                [&] { return PictureAsSvg(Picture(), {}); });
}

}  // namespace skyhop
