#pragma once

#include <string>

#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_model.h"

namespace skyhop {

/// The smallest picture with room for everything; a smaller size is raised to this one.
inline constexpr double kLeastPictureWidth = 760;
inline constexpr double kLeastPictureHeight = 480;

/// The size and parts of a picture.
struct PictureOptions {
  double width = 1040;  ///< pixels before scaling
  double height = 720;  ///< pixels before scaling
  /// Enlarges everything, line widths and texts included; above 0. The surface must have
  /// `SurfaceWidth` x `SurfaceHeight` pixels.
  double scale = 1;
  bool time_index = true;  ///< whether the picture shows the time index

  [[nodiscard]] double SurfaceWidth() const;
  [[nodiscard]] double SurfaceHeight() const;
};

/// Paints a chart as a picture for files and print: on a light background, in the size of the
/// picture, without the band indicator.
void PaintPicture(Surface& surface, ChartModel model, const PictureOptions& options);

/// The same picture as an SVG document with the title of the chart.
[[nodiscard]] std::string PictureAsSvg(const ChartModel& model, const PictureOptions& options);

}  // namespace skyhop
