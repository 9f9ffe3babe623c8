#include "ui/prediction/chart/chart_picture.h"

#include <algorithm>

#include "ui/drawing/surface_views.h"
#include "ui/drawing/svg_surface.h"
#include "ui/prediction/chart/chart_layout.h"
#include "ui/prediction/chart/paint_chart.h"

namespace skyhop {
namespace {

constexpr double kPictureTextSize = 12;
constexpr double kPictureMargin = 24;

}  // namespace

double PictureOptions::SurfaceWidth() const {
  return std::max(width, kLeastPictureWidth) * scale;
}

double PictureOptions::SurfaceHeight() const {
  return std::max(height, kLeastPictureHeight) * scale;
}

void PaintPicture(Surface& surface, ChartModel model, const PictureOptions& options) {
  ScaledSurface scaled(surface, options.scale);
  const double width = std::max(options.width, kLeastPictureWidth) - 2 * kPictureMargin;
  const double height = std::max(options.height, kLeastPictureHeight) - 2 * kPictureMargin;
  model.palette = kLightPalette;
  model.palette.background = colors::kWhite;
  // The indicator and the hint for the user belong to the window.
  model.band_indicator = -1;
  model.empty_text.clear();
  scaled.Clear(model.palette.background);
  PartSurface inner(scaled, {kPictureMargin, kPictureMargin, width, height});
  const ChartLayout layout = ArrangeChart(model, width, height, kPictureTextSize);
  PaintChart(model, layout, inner);
  if (options.time_index) PaintTimeIndex(model, layout, inner);
}

std::string PictureAsSvg(const ChartModel& model, const PictureOptions& options) {
  SvgSurface surface(options.SurfaceWidth(), options.SurfaceHeight(), model.title);
  PaintPicture(surface, model, options);
  return surface.Document();
}

}  // namespace skyhop
