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

/// A pane of the picture's own that shows what the window's does.
void ChartExport::Fill(ChartPane& picture) const {
  picture.ShowLike(with_.pane);
  picture.SetProvenance(with_.shown.Provenance());
}

void ChartExport::PaintPicture(Surface& surface, double scale) const {
  with_.diagnostics.Trap("IonCap.PaintPicture", [&] {
    ChartPane picture(with_.pane.Table(), with_.diagnostics, with_.clock);
    Fill(picture);
    skyhop::PaintPicture(surface, picture, {.scale = scale});
  });
}

std::string ChartExport::ChartAsSvg() const {
  return with_.diagnostics.Trap("IonCap.ChartAsSvg", std::string(), [&] {
    ChartPane picture(with_.pane.Table(), with_.diagnostics, with_.clock);
    Fill(picture);
    return PictureAsSvg(picture, {});
  });
}

}  // namespace skyhop
