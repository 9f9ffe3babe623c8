#pragma once

#include <cstddef>
#include <vector>

#include "estimate/geomagnetic_field.h"
#include "estimate/great_circle.h"
#include "estimate/ground.h"
#include "estimate/ionosphere.h"
#include "estimate/muf.h"
#include "estimate/path_loss.h"
#include "estimate/propagation_math.h"
#include "estimate/reflection_area.h"

namespace skyhop::estimate {

/// A point at which the ionosphere along a path is sampled.
struct ControlPoint {
  ControlPoint(const GeoPosition& at, int month, double sunspot_number)
      : position(at),
        field(MagneticFieldAt(at)),
        ionosphere(position, field, month, sunspot_number) {}

  GeoPosition position;
  MagneticField field;
  Ionosphere ionosphere;
};

/// A path in one month: what does not change with the hour.
class Path {
 public:
  /// `month` and `sunspot_number` as Ionosphere has them; `min_elevation`, 0 to pi/2, is the lowest
  /// angle at which rays leave.
  Path(const GreatCircle& circle, int month, double sunspot_number, const Elevation& min_elevation);

  /// The ground angle from end to end, radians, and the same in km.
  [[nodiscard]] double Angle() const { return angle_; }
  [[nodiscard]] double Length() const { return length_; }

  [[nodiscard]] int Month() const { return month_; }
  [[nodiscard]] const Elevation& MinElevation() const { return min_elevation_; }

  /// From transmitter to receiver: the midpoint when the path is not longer than 2000 km, else the
  /// midpoint and a point 1000 km from each end, above 4000 km also one 2000 km from each end.
  [[nodiscard]] const std::vector<ControlPoint>& Points() const { return points_; }

  /// The losses at the reflections from the ground.
  [[nodiscard]] const GroundReflection& Ground() const { return ground_; }

  [[nodiscard]] const ExcessLoss& Excess() const { return excess_; }

 private:
  double angle_;
  double length_;
  int month_;
  Elevation min_elevation_;
  std::vector<ControlPoint> points_;
  GroundReflection ground_;
  ExcessLoss excess_;
};

/// The state of a path in an hour. It refers to the path, which must outlive it.
class PathHour {
 public:
  PathHour(const Path& path, double utc_hour);

  [[nodiscard]] const Path& Of() const { return *path_; }

  /// By control point.
  [[nodiscard]] const std::vector<IonosphereState>& Points() const { return points_; }

  /// One to three areas, the first at the transmitter's end. Each takes its E layer from the point
  /// 1000 km from its end and its F2 layer from the next one inwards.
  [[nodiscard]] const std::vector<ReflectionArea>& Areas() const { return areas_; }
  [[nodiscard]] const ReflectionArea& Middle() const { return areas_[areas_.size() / 2]; }

  /// The end that limits the MUF, as an index into Areas().
  [[nodiscard]] std::size_t ControllingIndex() const { return controlling_; }
  [[nodiscard]] const ReflectionArea& Controlling() const { return areas_[controlling_]; }

  [[nodiscard]] const F2HopMuf& F2Hops() const { return f2_hops_; }
  [[nodiscard]] const LayerMuf& E() const { return e_; }
  [[nodiscard]] const LayerMuf& F2() const { return f2_; }

  /// The layer with the higher MUF, and its figures.
  [[nodiscard]] Layer MufLayer() const { return e_.muf >= f2_.muf ? Layer::kE : Layer::kF2; }
  [[nodiscard]] const LayerMuf& Muf() const { return MufLayer() == Layer::kE ? e_ : f2_; }

  [[nodiscard]] const SystemLoss& Excess() const { return excess_; }
  [[nodiscard]] const Absorption& Absorbing() const { return absorption_; }

 private:
  const Path* path_;
  std::vector<IonosphereState> points_;
  std::vector<ReflectionArea> areas_;
  std::size_t controlling_;
  F2HopMuf f2_hops_;
  LayerMuf e_;
  LayerMuf f2_;
  SystemLoss excess_;
  Absorption absorption_;
};

}  // namespace skyhop::estimate
