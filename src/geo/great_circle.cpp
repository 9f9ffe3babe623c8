#include "geo/great_circle.h"

#include <cmath>
#include <string>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

// The digits are part of the definition of the results; do not replace them by library constants.
constexpr double kPi = 3.14159265358979;
constexpr double kHalfPi = 1.570796326794895;
constexpr double kTwoPi = 6.28318530717958;
constexpr double kDegreesPerRadian = 57.29577951308238;
constexpr double kEarthRadius = 6371;  // km
constexpr double kMilesPerKilometre = 0.621371;

/// Cosines beyond these count as 1 and -1.
struct Tolerances {
  float upper;
  float lower;
};

enum class Relation { kSamePlace, kAntipodes, kApart };

struct ShortPath {
  Relation relation = Relation::kApart;
  float azimuth = 0;
  float kilometres = 0;
};

float Azimuth(float lat1, float lat2, double longitude_sine, float d,
              const Tolerances& tolerances) {
  const double from = lat1;
  const double to = lat2;
  const double arc = d;
  float ca = StoreSingle((std::sin(to) - std::sin(from) * std::cos(arc)) /
                         (std::cos(from) * std::sin(arc)));
  float azimuth = 0;
  if (ca < tolerances.lower) {
    azimuth = 180;
  } else if (!(ca > tolerances.upper)) {
    azimuth = StoreSingle(LatLonModule::arccos(ca) * kDegreesPerRadian);
  }
  return longitude_sine < 0 ? 360 - azimuth : azimuth;
}

ShortPath ComputeShortPath(const Position& qth, const Position& dx, const Tolerances& tolerances) {
  // ToRadians returns negative latitudes in the north; the formulas need positive ones.
  const float lat1 = -LatLonModule::ToRadians(qth.latitude);
  const float lon1 = LatLonModule::ToRadians(qth.longitude);
  const float lat2 = -LatLonModule::ToRadians(dx.latitude);
  const float lon2 = LatLonModule::ToRadians(dx.longitude);
  const double from = lat1;
  const double to = lat2;
  const double difference = static_cast<double>(lon2) - lon1;
  float c = StoreSingle(std::sin(from) * std::sin(to) +
                        std::cos(from) * std::cos(to) * std::cos(difference));
  if (c > tolerances.upper) return {.relation = Relation::kSamePlace};
  if (c < tolerances.lower) return {.relation = Relation::kAntipodes};
  const float d = LatLonModule::arccos(c);
  return {.relation = Relation::kApart,
          .azimuth = Azimuth(lat1, lat2, std::sin(difference), d, tolerances),
          .kilometres = StoreSingle(d * kEarthRadius)};
}

double InUnit(double kilometres, bool miles) {
  return miles ? kilometres * kMilesPerKilometre : kilometres;
}

std::string Completed(const char* branch, const Vector& vector) {
  return std::string("ComputePositionVector complete ") + branch +
         ", .Distance = " + NumberText(vector.distance) +
         ", .Azimuth = " + NumberText(vector.azimuth);
}

}  // namespace

namespace LatLonModule {
namespace {

constexpr Tolerances kTolerances{0.99999994F, -0.99999997F};

/// Reverses a short path, in place.
void TakeLongPath(ShortPath& path) {
  // Exactly 180 becomes 360, not 0.
  path.azimuth = path.azimuth <= 180 ? path.azimuth + 180 : path.azimuth - 180;
  path.kilometres = StoreSingle(2.0 * kPi * kEarthRadius - path.kilometres);
}

void FillVector(const Position& qth, const Position& dx, bool long_path, bool distance_miles,
                Vector& result, Diagnostics& diagnostics) {
  ShortPath path = ComputeShortPath(qth, dx, kTolerances);
  switch (path.relation) {
    case Relation::kSamePlace:
      result = {0, 0};
      diagnostics.DebugLog(Completed("A", result));
      return;
    case Relation::kAntipodes:
      result = {0, StoreSingle(InUnit(kPi * kEarthRadius, distance_miles))};
      diagnostics.DebugLog(Completed("B", result));
      return;
    case Relation::kApart:
      if (long_path) TakeLongPath(path);
      result = {path.azimuth, StoreSingle(InUnit(path.kilometres, distance_miles))};
      diagnostics.DebugLog(Completed("C", result));
      return;
  }
}

}  // namespace

float ToRadians(const Angle& angle) {
  const double radians = UnsignedDegrees(angle) / kDegreesPerRadian;
  return static_cast<float>(angle.sign < 0 ? -radians : radians);
}

float arcsin(float x) {
  if (std::isnan(x)) throw Error(errors::kInvalidCall, "Invalid argument: the sine is no number");
  const double sine = x;
  if (std::abs(sine) < 1) return static_cast<float>(std::atan(sine / std::sqrt(1 - sine * sine)));
  return x > 0 ? 1.5707964F : static_cast<float>(-kHalfPi);
}

float arccos(float& x) {
  if (x < -kPi) {
    x = static_cast<float>(x + kTwoPi);
  } else if (x > kPi) {
    x = static_cast<float>(x - kTwoPi);
  }
  return static_cast<float>(kHalfPi - arcsin(x));
}

Vector ComputePositionVector(const Position& qth, const Position& dx, std::string_view path,
                             bool distance_miles, Diagnostics& diagnostics) {
  Vector result;
  diagnostics.Trap("LatLonModule.ComputePositionVector", [&] {
    diagnostics.DebugLog("ComputePositionVector");
    if (path != "S" && path != "L") return;
    diagnostics.DebugLog("   Lat = " + LatitudeString(dx) + ", Lon = " + LongitudeString(dx));
    FillVector(qth, dx, path == "L", distance_miles, result, diagnostics);
  });
  return result;
}

Vector ComputeVector(std::string_view qth_latitude, std::string_view qth_longitude,
                     const Position& dx, std::string_view path, bool distance_miles,
                     Diagnostics& diagnostics) {
  Vector result;
  diagnostics.Trap("LatLonModule.ComputeVector", [&] {
    diagnostics.DebugLog("LatLonModule.ComputeVector, QTHLat = " + std::string(qth_latitude) +
                         ", QTHLon = " + std::string(qth_longitude) + ", AntPath = " +
                         std::string(path) + ", DistanceMiles = " + BooleanText(distance_miles));
    const Position qth{ParseAngle(qth_latitude, diagnostics),
                       ParseAngle(qth_longitude, diagnostics)};
    if (IsUndefined(qth)) return;
    result = ComputePositionVector(qth, dx, path, distance_miles, diagnostics);
    diagnostics.DebugLog("LatLonModule.ComputeVector complete");
  });
  return result;
}

}  // namespace LatLonModule

namespace BeaconModule {
namespace {

constexpr Tolerances kTolerances{0.999999F, -0.999999F};

}  // namespace

Vector ComputeVector(const Position& qth, const Position& dx, bool distance_miles,
                     Diagnostics& diagnostics) {
  Vector result;
  diagnostics.Trap("BeaconModule.ComputeVector", [&] {
    const ShortPath path = ComputeShortPath(qth, dx, kTolerances);
    switch (path.relation) {
      case Relation::kSamePlace:
        result = {0, 0};
        return;
      case Relation::kAntipodes:
        result = {0, distance_miles ? 12436.0F : 20015.0F};
        return;
      case Relation::kApart:
        result = {std::floor(path.azimuth),
                  std::floor(StoreSingle(InUnit(path.kilometres, distance_miles)))};
        return;
    }
  });
  return result;
}

}  // namespace BeaconModule
}  // namespace skyhop
