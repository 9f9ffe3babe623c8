#pragma once

namespace skyhop::estimate {

/// A position on the Earth in radians: latitude positive north, -pi/2 to pi/2; longitude positive
/// east, -pi to pi.
struct GeoPosition {
  double latitude = 0;
  double longitude = 0;
};

/// The same from degrees.
[[nodiscard]] GeoPosition PositionFromDegrees(double latitude, double longitude);

/// The great circle from one position to another, the short way or the long way round.
class GreatCircle {
 public:
  GreatCircle(const GeoPosition& from, const GeoPosition& to, bool long_way);

  /// The angle that the path subtends at the Earth's centre, radians, above 0 and below 2 pi. Two
  /// positions closer than 1e-6 rad (6 m) count as that far apart.
  [[nodiscard]] double Angle() const { return angle_; }

  /// Its length in km.
  [[nodiscard]] double Length() const;

  /// Direction in which the path leaves, radians east of north, 0 to 2 pi.
  [[nodiscard]] double Azimuth() const { return azimuth_; }

  /// The position at the angle `along` from the start.
  [[nodiscard]] GeoPosition At(double along) const;

 private:
  GeoPosition from_;
  double angle_;
  double azimuth_;
};

}  // namespace skyhop::estimate
