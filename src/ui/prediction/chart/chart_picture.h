#pragma once

#include <string>

#include "ui/drawing/surface.h"
#include "ui/prediction/chart/chart_pane.h"

namespace skyhop {

/// The smallest picture that has room for everything; smaller ones are made this large.
inline constexpr double kLeastPictureWidth = 760;
inline constexpr double kLeastPictureHeight = 480;

/// The size of a picture and what it shows.
struct PictureOptions {
  double width = 1040;  ///< pixels before scaling
  double height = 720;  ///< pixels before scaling
  /// Enlarges everything, line widths and texts included; above 0. The surface has to be
  /// `SurfaceWidth` x `SurfaceHeight` pixels.
  double scale = 1;
  bool time_index = true;  ///< whether the picture shows the time index

  [[nodiscard]] double SurfaceWidth() const;
  [[nodiscard]] double SurfaceHeight() const;
};

/// Draws the whole pane, time index included, as a picture for files and paper: on a light
/// background and in the picture's own size. `pane` is laid out for that, so it must not be the one
/// that a window shows.
void PaintPicture(Surface& surface, ChartPane& pane, const PictureOptions& options);

/// The same as an SVG document, whose title is the pane's.
[[nodiscard]] std::string PictureAsSvg(ChartPane& pane, const PictureOptions& options);

}  // namespace skyhop
