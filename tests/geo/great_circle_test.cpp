#include "geo/great_circle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <numbers>
#include <ostream>
#include <string>
#include <vector>

#include "common/errors.h"
#include "places.h"
#include "support/diagnostics_fixture.h"

namespace skyhop {

void PrintTo(const Vector& vector, std::ostream* out) {
  *out << "azimuth " << vector.azimuth << " distance " << vector.distance;
}

namespace {

using ::skyhop::testing::At;
using ::skyhop::testing::LoggedDiagnostics;
using Lines = std::vector<std::string>;

constexpr Position kBoston{{42, 21, 30, -1}, {71, 3, 37, -1}};
constexpr Position kTokyo{{35, 41, 22, -1}, {139, 41, 30, 1}};
constexpr Position kParis{{48, 51, 24, -1}, {2, 21, 3, 1}};
constexpr Position kLyon{{45, 45, 0, -1}, {4, 50, 0, 1}};
constexpr Position kSydney{{33, 52, 4, 1}, {151, 12, 26, 1}};
constexpr Position kCapeTown{{33, 55, 31, 1}, {18, 25, 26, 1}};
constexpr Position kHonolulu{{21, 18, 25, -1}, {157, 51, 30, -1}};
constexpr Position kSuva{{18, 8, 0, 1}, {178, 26, 0, 1}};
constexpr Position kMadrid{{40, 25, 0, -1}, {3, 42, 0, -1}};
constexpr Position kWellington{{41, 17, 11, 1}, {174, 46, 34, 1}};
constexpr Position kOrigin{{0, 0, 0, 1}, {0, 0, 0, 1}};

class PositionVector : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_TRUE(log_.errors.empty()); }

  Vector Path(const Position& qth, const Position& dx, const char* path, bool miles = false) {
    return LatLonModule::ComputePositionVector(qth, dx, path, miles, log_.diagnostics);
  }

  LoggedDiagnostics log_;
};

// The expected values come from a separate computation that rounds to single precision at the same
// places. They must be met to the last bit by every compiler and optimisation level.
TEST_F(PositionVector, IsExactToTheLastBit) {
  const struct {
    Position qth;
    Position dx;
    const char* path;
    bool miles;
    Vector vector;
  } cases[] = {
      {kBoston, kTokyo, "S", false, {335.263F, 10791.279F}},
      {kBoston, kTokyo, "L", true, {155.263F, 18168.201F}},
      {kTokyo, kBoston, "S", true, {22.378069F, 6705.388F}},
      {kParis, kLyon, "S", false, {150.62875F, 392.84805F}},
      {kParis, kSydney, "S", false, {68.57475F, 16960.37F}},
      {kParis, kSydney, "L", false, {248.57475F, 23069.805F}},
      {kHonolulu, kSuva, "S", false, {212.2278F, 5089.1724F}},
      {kCapeTown, kBoston, "L", false, {127.29401F, 27604.426F}},
      {kMadrid, kWellington, "S", false, {127.53363F, 19854.535F}},
      {kMadrid, kWellington, "L", true, {307.53363F, 12536.557F}},
      {At(10, 0), At(30, 0), "S", false, {0, 2223.8987F}},
      {At(10, 0), At(30, 0), "L", false, {180, 37806.273F}},
      {At(30, 0), At(10, 0), "S", false, {180, 2223.8987F}},
      {At(30, 0), At(10, 0), "L", false, {360, 37806.273F}},
      {kOrigin, At(0, 90), "S", false, {90, 10007.544F}},
      {kOrigin, At(0, -90), "S", false, {270, 10007.544F}},
      {kOrigin, At(0, -90), "L", false, {90, 30022.629F}},
      {kOrigin, At(0, 50 / 3600.0), "S", false, {0, 0}},
      {kOrigin, At(0, 1 / 60.0), "S", false, {90, 2.1999419F}},
      {kParis, At(90, 0), "S", false, {360, 4574.9297F}},
      {kParis, kTokyo, "", false, {-1, 0}},
      {kParis, kTokyo, "s", false, {-1, 0}},
      {kParis, kTokyo, "SL", false, {-1, 0}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Path(c.qth, c.dx, c.path, c.miles), c.vector)
        << LatLonModule::LatitudeString(c.qth) << " to " << LatLonModule::LatitudeString(c.dx)
        << ' ' << c.path;
  }
}

TEST_F(PositionVector, RecognisesTheSamePlaceAndAntipodesOnEitherPath) {
  for (int latitude = -90; latitude <= 90; latitude += 9) {
    for (int longitude = -180; longitude <= 180; longitude += 15) {
      const Position place = At(latitude, longitude);
      const Position antipode = At(-latitude, longitude > 0 ? longitude - 180 : longitude + 180);
      for (const char* path : {"S", "L"}) {
        ASSERT_EQ(Path(place, place, path), (Vector{0, 0})) << latitude << ' ' << longitude;
        ASSERT_EQ(Path(place, antipode, path), (Vector{0, 20015.0868F}));
        ASSERT_EQ(Path(place, antipode, path, true), (Vector{0, 12436.7945F}));
      }
    }
  }
}

constexpr double kRadian = std::numbers::pi / 180;

struct Reference {
  double azimuth;
  double kilometres;
};

/// Haversine distance and bearing by arc tangent, in double precision, degrees in.
Reference ReferenceVector(double lat1, double lon1, double lat2, double lon2) {
  const double f1 = lat1 * kRadian;
  const double f2 = lat2 * kRadian;
  const double dl = (lon2 - lon1) * kRadian;
  const double a = std::pow(std::sin((f2 - f1) / 2), 2) +
                   std::cos(f1) * std::cos(f2) * std::pow(std::sin(dl / 2), 2);
  const double azimuth =
      std::atan2(std::sin(dl) * std::cos(f2),
                 std::cos(f1) * std::sin(f2) - std::sin(f1) * std::cos(f2) * std::cos(dl));
  return {azimuth / kRadian, 2 * 6371 * std::asin(std::sqrt(std::min(1.0, a)))};
}

TEST_F(PositionVector, AgreesWithHaversineAllOverTheEarth) {
  int compared = 0;
  for (int lat1 = -80; lat1 <= 80; lat1 += 16) {
    for (int lat2 = -84; lat2 <= 84; lat2 += 14) {
      for (int lon2 = -175; lon2 <= 180; lon2 += 13) {
        const Reference reference = ReferenceVector(lat1, 7, lat2, lon2);
        if (reference.kilometres < 500 || reference.kilometres > 19500) continue;
        const Vector shorter = Path(At(lat1, 7), At(lat2, lon2), "S");
        ASSERT_NEAR(shorter.distance, reference.kilometres, 0.01) << lat1 << ' ' << lat2 << lon2;
        const bool meridional = std::abs(std::remainder(reference.azimuth, 180)) < 5;
        ASSERT_NEAR(std::remainder(shorter.azimuth - reference.azimuth, 360), 0,
                    meridional ? 0.2 : 0.01)
            << lat1 << ' ' << lat2 << ' ' << lon2;
        const Vector longer = Path(At(lat1, 7), At(lat2, lon2), "L");
        ASSERT_NEAR(longer.distance + shorter.distance, 40030.17, 0.01);
        ASSERT_NEAR(std::remainder(longer.azimuth - shorter.azimuth - 180, 360), 0, 1e-4);
        ++compared;
      }
    }
  }
  EXPECT_GT(compared, 3500);
}

TEST_F(PositionVector, StaysFiniteForAnyValuesOfAnAngle) {
  for (const std::int16_t extreme :
       std::initializer_list<std::int16_t>{-32768, -360, -1, 0, 90, 360, 32767}) {
    for (const std::int16_t sign : std::initializer_list<std::int16_t>{-32768, -1, 0, 1}) {
      const Angle odd{extreme, extreme, extreme, sign};
      const Vector vector = Path({odd, kParis.longitude}, {kTokyo.latitude, odd}, "L");
      EXPECT_TRUE(vector.azimuth >= 0 && vector.azimuth <= 360) << extreme << ' ' << sign;
      EXPECT_TRUE(vector.distance >= 0 && vector.distance < 40031) << extreme << ' ' << sign;
    }
  }
}

TEST_F(PositionVector, LogsEachBranch) {
  const struct {
    Position dx;
    const char* path;
    Lines lines;
  } cases[] = {
      {kOrigin, "x", {"ComputePositionVector"}},
      {kOrigin,
       "S",
       {"ComputePositionVector", "   Lat = 0 0' 0\" S, Lon = 0 0' 0\" E",
        "ComputePositionVector complete A, .Distance = 0, .Azimuth = 0"}},
      {At(0, -180),
       "L",
       {"ComputePositionVector", "   Lat = 0 0' 0\" N, Lon = 180 0' 0\" W",
        "ComputePositionVector complete B, .Distance = 20015.086, .Azimuth = 0"}},
      {At(0, -90),
       "L",
       {"ComputePositionVector", "   Lat = 0 0' 0\" N, Lon = 90 0' 0\" W",
        "ComputePositionVector complete C, .Distance = 30022.629, .Azimuth = 90"}},
  };
  for (const auto& c : cases) {
    log_.debug.clear();
    static_cast<void>(Path(kOrigin, c.dx, c.path));
    EXPECT_EQ(log_.debug, c.lines);
  }
}

TEST_F(PositionVector, IsComputedFromTypedCoordinates) {
  const Vector expected = Path(kBoston, kTokyo, "L", true);
  log_.debug.clear();
  EXPECT_EQ(LatLonModule::ComputeVector("42 21' 30\" N", "71 3' 37\" W", kTokyo, "L", true,
                                        log_.diagnostics),
            expected);
  ASSERT_EQ(log_.debug.size(), 5U);
  EXPECT_EQ(log_.debug.front(),
            "LatLonModule.ComputeVector, QTHLat = 42 21' 30\" N, QTHLon = 71 3' 37\" W, "
            "AntPath = L, DistanceMiles = True");
  EXPECT_EQ(log_.debug.back(), "LatLonModule.ComputeVector complete");

  const Vector nothing{-1, 0};
  log_.debug.clear();
  EXPECT_EQ(LatLonModule::ComputeVector("42", "71W", kTokyo, "S", false, log_.diagnostics),
            nothing);
  EXPECT_EQ(LatLonModule::ComputeVector("42N", "71", kTokyo, "S", false, log_.diagnostics),
            nothing);
  EXPECT_EQ(log_.debug.size(), 2U);
}

TEST(BeaconVector, IsRoundedDownToWholeDegreesAndUnits) {
  const struct {
    Position qth;
    Position dx;
    bool miles;
    Vector vector;
  } cases[] = {
      {kBoston, kTokyo, false, {335, 10791}},         {kBoston, kTokyo, true, {335, 6705}},
      {kParis, kSydney, false, {68, 16960}},          {kHonolulu, kSuva, true, {212, 3162}},
      {kOrigin, At(0, 0.08), false, {0, 0}},          {kOrigin, At(0, 0.083), false, {90, 9}},
      {kOrigin, At(0.05, 179.95), false, {0, 20015}}, {kOrigin, At(0, 180), true, {0, 12436}},
      {kOrigin, At(10, 0), false, {0, 1111}},         {At(10, 0), kOrigin, false, {180, 1111}},
      {kOrigin, At(10, 180), true, {360, 11745}},
  };
  for (const auto& c : cases) {
    LoggedDiagnostics log;
    EXPECT_EQ(BeaconModule::ComputeVector(c.qth, c.dx, c.miles, log.diagnostics), c.vector)
        << LatLonModule::LongitudeString(c.dx);
    EXPECT_TRUE(log.debug.empty() && log.errors.empty());
  }
}

TEST(ArcFunctions, LimitTheirArgument) {
  EXPECT_EQ(LatLonModule::arcsin(0.5F), 0.5235988F);
  EXPECT_EQ(LatLonModule::arcsin(-0.5F), -0.5235988F);
  for (const float x : {1.0F, 1.5F, std::numeric_limits<float>::infinity()}) {
    EXPECT_EQ(LatLonModule::arcsin(x), 1.5707964F);
    EXPECT_EQ(LatLonModule::arcsin(-x), -1.5707964F);
  }
  // The nearest single below pi is not wrapped, the nearest one above it is.
  const struct {
    float argument;
    float wrapped;
    float result;
  } cases[] = {
      {0.5F, 0.5F, 1.0471976F},     {-2, -2, 3.1415927F},
      {3.1415925F, 3.1415925F, 0},  {3.1415927F, -3.1415927F, 3.1415927F},
      {-3.1415927F, 3.1415927F, 0}, {6, -0.28318531F, 1.85791F},
  };
  for (const auto& c : cases) {
    float x = c.argument;
    EXPECT_NEAR(LatLonModule::arccos(x), c.result, 1e-6) << c.argument;
    EXPECT_FLOAT_EQ(x, c.wrapped) << c.argument;
  }
  float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_THROW(static_cast<void>(LatLonModule::arccos(nan)), Error);
}

}  // namespace
}  // namespace skyhop
