#include "estimate/path.h"

#include <cmath>
#include <span>

#include "estimate/muf_spread.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

std::vector<ControlPoint> ControlPoints(const GreatCircle& circle, int month,
                                        double sunspot_number) {
  const double length = circle.Length();
  std::vector<double> distances = {length / 2.0};
  if (length > 4000.0)
    distances = {1000.0, 2000.0, length / 2.0, length - 2000.0, length - 1000.0};
  else if (length > 2000.0)
    distances = {1000.0, length / 2.0, length - 1000.0};
  std::vector<ControlPoint> points;
  points.reserve(distances.size());
  for (const double distance : distances) {
    points.emplace_back(circle.At(distance / kEarthRadius), month, sunspot_number);
  }
  return points;
}

std::vector<GeoPosition> Positions(std::span<const ControlPoint> points) {
  std::vector<GeoPosition> positions;
  positions.reserve(points.size());
  for (const ControlPoint& point : points) positions.push_back(point.position);
  return positions;
}

/// The points up to the middle of the path.
std::span<const ControlPoint> FirstHalf(const std::vector<ControlPoint>& points) {
  return std::span(points).first(points.size() / 2 + 1);
}

std::vector<IonosphereState> States(const std::vector<ControlPoint>& points, double utc_hour) {
  std::vector<IonosphereState> states;
  states.reserve(points.size());
  for (const ControlPoint& point : points) states.push_back(point.ionosphere.At(utc_hour));
  return states;
}

std::vector<ReflectionArea> ReflectionAreas(const std::vector<ControlPoint>& points,
                                            const std::vector<IonosphereState>& states) {
  std::vector<ReflectionArea> areas;
  const auto add = [&](std::size_t e, std::size_t f2) {
    areas.emplace_back(states[e], points[e].field.gyrofrequency, states[f2]);
  };
  switch (points.size()) {
    case 1:
      add(0, 0);
      break;
    case 3:
      add(0, 1);
      add(2, 1);
      break;
    default:
      add(0, 1);
      add(2, 2);
      add(4, 3);
  }
  return areas;
}

std::size_t ControllingArea(const std::vector<ReflectionArea>& areas) {
  const ReflectionArea& first = areas.front();
  const ReflectionArea& last = areas.back();
  const bool alike = std::abs(first.F2() - last.F2()) < 0.01;
  const bool last_controls = alike ? last.FoE() < first.FoE() : last.F2() < first.F2();
  return last_controls ? areas.size() - 1 : 0;
}

/// Uses the spread of the first point for the transmitter's end, and that of the middle of the path
/// for the receiver's end, like the engines that use the same decile tables.
MufSpread ControllingSpread(const Path& path, const std::vector<IonosphereState>& states,
                            std::size_t controlling) {
  const std::size_t point = controlling == 0 ? 0 : states.size() / 2;
  return F2MufSpread(path.Points()[point].position, path.Month(), states[point].local_time);
}

}  // namespace

Path::Path(const GreatCircle& circle, int month, double sunspot_number,
           const Elevation& min_elevation)
    : angle_(circle.Angle()),
      length_(circle.Length()),
      month_(month),
      min_elevation_(min_elevation),
      points_(ControlPoints(circle, month, sunspot_number)),
      ground_(Positions(points_)),
      excess_(ExcessLossOf(Positions(FirstHalf(points_)), length_)) {}

PathHour::PathHour(const Path& path, double utc_hour)
    : path_(&path),
      points_(States(path.Points(), utc_hour)),
      areas_(ReflectionAreas(path.Points(), points_)),
      controlling_(ControllingArea(areas_)),
      f2_hops_(areas_[controlling_], path.Length()),
      e_(EPathMuf(areas_[controlling_], path.Angle(), path.MinElevation())),
      f2_(F2PathMuf(f2_hops_, ControllingSpread(path, points_, controlling_), path.Angle(),
                    path.MinElevation())),
      excess_(SystemLossOf(path.Excess(), f2_)),
      absorption_(areas_) {}

}  // namespace skyhop::estimate
