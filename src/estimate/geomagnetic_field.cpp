#include "estimate/geomagnetic_field.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

constexpr std::size_t kDegree = 4;
using Triangle = std::array<std::array<double, kDegree + 1>, kDegree + 1>;

// Gauss-normalised coefficients in gauss, [degree][order].
constexpr Triangle kG = {{{},
                          {.304112, .021474},
                          {.024035, -.051253, -.013381},
                          {-.031518, .062130, -.024898, -.006496},
                          {-.041794, -.045298, -.021795, .007008, -.002044}}};
constexpr Triangle kH = {{{},
                          {0, -.057989},
                          {0, .033124, -.001579},
                          {0, .014870, -.004075, .00021},
                          {0, -.011825, .010006, .00043, .001385}}};

/// Associated Legendre functions of the sine of the latitude, Gauss-normalised, and their
/// derivatives, [degree][order].
struct Legendre {
  Triangle value{};
  Triangle derivative{};

  Legendre(double sine, double cosine) {
    value[0][0] = 1.0;
    for (std::size_t n = 1; n <= kDegree; ++n) {
      for (std::size_t m = 0; m < n; ++m) Fill(n, m, sine, cosine);
      value[n][n] = cosine * value[n - 1][n - 1];
      derivative[n][n] = cosine * derivative[n - 1][n - 1] + sine * value[n - 1][n - 1];
    }
  }

 private:
  void Fill(std::size_t n, std::size_t m, double sine, double cosine) {
    value[n][m] = sine * value[n - 1][m];
    derivative[n][m] = sine * derivative[n - 1][m] - cosine * value[n - 1][m];
    if (n < 2) return;
    const auto degree = static_cast<double>(n);
    const auto order = static_cast<double>(m);
    const double k = (Square(degree - 1) - Square(order)) / ((2 * degree - 1) * (2 * degree - 3));
    value[n][m] -= k * value[n - 2][m];
    derivative[n][m] -= k * derivative[n - 2][m];
  }
};

struct FieldVector {
  double up = 0;
  double north = 0;
  double east = 0;
};

FieldVector FieldVectorAt(double latitude, double longitude) {
  static constexpr double kRadiusRatio = 6371.2 / 6671.2;
  const double cosine = std::cos(latitude);
  const Legendre legendre(std::sin(latitude), cosine);
  FieldVector field;
  double attenuation = Square(kRadiusRatio);
  for (std::size_t n = 1; n <= kDegree; ++n) {
    attenuation *= kRadiusRatio;
    FieldVector sum;
    for (std::size_t m = 0; m <= n; ++m) {
      const auto order = static_cast<double>(m);
      const double c = std::cos(order * longitude);
      const double s = std::sin(order * longitude);
      const double term = kG[n][m] * c + kH[n][m] * s;
      sum.up += legendre.value[n][m] * term;
      sum.north += legendre.derivative[n][m] * term;
      sum.east += order * legendre.value[n][m] * (kH[n][m] * c - kG[n][m] * s);
    }
    field.up -= attenuation * static_cast<double>(n + 1) * sum.up;
    field.north -= attenuation * sum.north;
    field.east += attenuation * sum.east / cosine;
  }
  return field;
}

}  // namespace

MagneticField MagneticFieldAt(const GeoPosition& position) {
  static constexpr double kMaxLatitude = Radians(89.9);
  static constexpr double kMegahertzPerGauss = 2.8;
  const double latitude = std::clamp(position.latitude, -kMaxLatitude, kMaxLatitude);
  const FieldVector field = FieldVectorAt(latitude, position.longitude);
  const double dip = std::atan2(-field.up, std::hypot(field.north, field.east));
  return {
      std::atan(dip / std::sqrt(std::cos(latitude))),
      kMegahertzPerGauss * std::sqrt(Square(field.up) + Square(field.north) + Square(field.east))};
}

double GeomagneticLatitude(const GeoPosition& position) {
  static constexpr double kPoleLatitude = Radians(79.5);
  static constexpr double kPoleLongitude = Radians(-69.0);
  const double sine = std::sin(kPoleLatitude) * std::sin(position.latitude) +
                      std::cos(kPoleLatitude) * std::cos(position.latitude) *
                          std::cos(position.longitude - kPoleLongitude);
  return std::asin(std::clamp(sine, -1.0, 1.0));
}

}  // namespace skyhop::estimate
