#include "ui/prediction/chart/chart_picture.h"

#include <algorithm>

#include "ui/drawing/surface_views.h"
#include "ui/drawing/svg_surface.h"

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

void PaintPicture(Surface& surface, ChartPane& pane, const PictureOptions& options) {
  ScaledSurface scaled(surface, options.scale);
  const double width = std::max(options.width, kLeastPictureWidth) - 2 * kPictureMargin;
  const double height = std::max(options.height, kLeastPictureHeight) - 2 * kPictureMargin;
  ChartPalette palette = kLightPalette;
  palette.background = colors::kWhite;
  pane.SetPalette(palette);
  pane.Resize(width, height, kPictureTextSize);
  scaled.Clear(palette.background);
  PartSurface inner(scaled, {kPictureMargin, kPictureMargin, width, height});
  pane.Paint(inner);
  if (options.time_index) pane.PaintOverlay(inner);
}

std::string PictureAsSvg(ChartPane& pane, const PictureOptions& options) {
  SvgSurface surface(options.SurfaceWidth(), options.SurfaceHeight(), pane.Title());
  PaintPicture(surface, pane, options);
  return surface.Document();
}

}  // namespace skyhop
