#pragma once

#include <optional>
#include <string>

#include "estimate/great_circle.h"
#include "estimate/long_path.h"
#include "estimate/path.h"
#include "estimate/radio_noise.h"
#include "estimate/short_path.h"
#include "estimate/signal.h"

// The estimate of a circuit: what the reports print. Isotropic antennas at both ends.

namespace skyhop::estimate {

/// The parameters of an estimate.
struct CircuitParameters {
  GeoPosition transmitter;
  GeoPosition receiver;
  bool long_way = false;            ///< the long great circle
  int month = 1;                    ///< 1 to 12
  double sunspot_number = 0;        ///< smoothed; counts as 0 to 200
  double power = 1;                 ///< of the transmitter, kW, above 0
  double antenna_gain = 0;          ///< of both antennas together, dB
  double min_elevation = 0;         ///< lowest take-off angle, radians, 0 to pi/2
  double man_made_noise = 150;      ///< at 3 MHz, dB below 1 W in 1 Hz
  double required_snr = 0;          ///< dB in 1 Hz
  double required_reliability = 0;  ///< fraction of the days, 0 to 1
};

/// How a frequency is received.
struct Reception {
  RaySignal ray;            ///< the ray that mode, take-off angle and MUF days are reported of
  double signal_power = 0;  ///< of all rays together, dBW
  double noise_power = 0;   ///< in 1 Hz, dBW
  double snr = 0;           ///< in 1 Hz, dB
  double reliability = 0;   ///< fraction of the days that reach the required SNR, 0 to 1
};

/// "2F2" for two hops by the F2 layer; "EF2" for a path that starts under the E and ends under the
/// F2 layer.
[[nodiscard]] std::string ModeText(const RaySignal& ray);

/// The frequencies of an hour, MHz: carried on 90, 50 and 10 % of the days.
struct HourMuf {
  double fot = 0;
  double muf = 0;
  double hpf = 0;
};

/// A circuit in an hour. It refers to the circuit's parameters and path, which must outlive it.
class CircuitHour {
 public:
  CircuitHour(const CircuitParameters& parameters, const Path& path, const RadioNoise& noise,
              double utc_hour);
  CircuitHour(const CircuitHour&) = delete;
  CircuitHour& operator=(const CircuitHour&) = delete;

  /// The larger of the E and the F2 layer's, each separately.
  [[nodiscard]] HourMuf Muf() const;

  /// The lowest frequency, MHz, from 2 up to the HPF or 40, that reaches the required reliability;
  /// nothing when none does. Found in steps of 0.5 MHz, interpolated between them.
  [[nodiscard]] std::optional<double> Luf() const;

  /// How `frequency`, MHz, above 0, is received.
  [[nodiscard]] Reception At(double frequency) const;

  /// The state of the path that the figures are computed from.
  [[nodiscard]] const PathHour& State() const { return hour_; }

 private:
  [[nodiscard]] double Reliability(double snr, const SignalLevel& signal,
                                   const NoiseLevel& noise) const;
  [[nodiscard]] RaySignal Reported(const std::vector<RaySignal>& rays,
                                   const NoiseLevel& noise) const;
  [[nodiscard]] Reception Receive(const RaySignal& reported, const SignalLevel& signal,
                                  const NoiseLevel& noise) const;

  const CircuitParameters* parameters_;
  double radiated_power_;  // dBW, with the gain of both antennas
  PathHour hour_;
  HourNoise noise_;
  std::optional<ShortPath> short_path_;
  std::optional<LongPath> long_path_;
};

/// A circuit in a month.
class Circuit {
 public:
  explicit Circuit(const CircuitParameters& parameters);
  Circuit(const Circuit&) = delete;
  Circuit& operator=(const Circuit&) = delete;

  /// The estimate for `utc_hour`, 0 to 24; it refers to this object.
  [[nodiscard]] CircuitHour At(double utc_hour) const;

  [[nodiscard]] const GreatCircle& Route() const { return route_; }
  [[nodiscard]] const Path& PathOf() const { return path_; }

 private:
  CircuitParameters parameters_;
  GreatCircle route_;
  Path path_;
  RadioNoise noise_;
};

}  // namespace skyhop::estimate
