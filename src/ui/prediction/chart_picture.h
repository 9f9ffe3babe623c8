#pragma once

#include <optional>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/results_table.h"
#include "ui/prediction/prediction_chart.h"
#include "ui/prediction/surface.h"

namespace skyhop {

/// The smallest picture that has room for everything; smaller ones are made this large.
inline constexpr double kLeastPictureWidth = 760;
inline constexpr double kLeastPictureHeight = 480;

/// Size and content of a picture.
struct PictureOptions {
  double width = 1040;  ///< pixels before scaling
  double height = 720;  ///< pixels before scaling
  /// Enlarges everything, line widths and texts included; above 0. The surface has to be
  /// `SurfaceWidth` x `SurfaceHeight` pixels.
  double scale = 1;

  bool show_open_bands = true;
  bool show_curves = true;
  bool show_color_keys = true;
  /// A table of bands by hours instead of the chart, where the results tell reliabilities.
  bool show_table = false;
  /// Time of day in hours, 0 to 24, that is marked by a vertical line.
  std::optional<double> time_index{};

  [[nodiscard]] double SurfaceWidth() const;
  [[nodiscard]] double SurfaceHeight() const;
};

/// What the picture says about the prediction. Empty texts are left out.
struct PictureTexts {
  std::string summary;         ///< the one-line summary, the picture's title
  std::string engine;          ///< name of the engine, such as "VOACAP LUF && MUF"
  std::string engine_version;  ///< version that the engine prints into its results
  std::string sunspot_number;  ///< smoothed sunspot number that the prediction was made for
};

/// Draws the finished picture of a result: title, axes, bands, open bands, curves and keys. `table`
/// holds the result of a run of `engine`. A table without a usable axis yields the frame with a
/// note in it. Failures of the chart's own rules go to the error log.
void PaintPicture(Surface& surface, const ResultsTable& table, EngineChoice engine,
                  const PictureTexts& texts, const PictureOptions& options,
                  Diagnostics& diagnostics, const Clock& clock);

/// The same as an SVG document.
[[nodiscard]] std::string PictureAsSvg(const ResultsTable& table, EngineChoice engine,
                                       const PictureTexts& texts, const PictureOptions& options,
                                       Diagnostics& diagnostics, const Clock& clock);

}  // namespace skyhop
