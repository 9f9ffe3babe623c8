#include "estimate/report.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "estimate/circuit.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

std::string RightJustified(std::string text, std::size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

std::string Field(double value, std::size_t width, int decimals) {
  return RightJustified(FixedText(value, decimals), width);
}

std::string Heading() {
  return "  HIGH FREQUENCY PROPAGATION ESTIMATE\n"
         "                     SKYHOP ESTIMATE ENGINE   VERSION " +
         VersionText() + "\n\n\n";
}

/// The deck under a ruler, each line moved one column to the right.
std::string Echo(const std::vector<std::string>& lines) {
  std::string text =
      "          1         2         3         4         5         6         7         8\n"
      " 12345678901234567890123456789012345678901234567890123456789012345678901234567890\n\n";
  for (const std::string& line : lines) {
    text += ' ';
    text += line;
    text.resize(text.find_last_not_of(' ') + 1);
    text += '\n';
  }
  return text;
}

std::string PositionText(const GeoPosition& position) {
  return Field(std::abs(Degrees(position.latitude)), 7, 2) + (position.latitude < 0 ? " S" : " N") +
         Field(std::abs(Degrees(position.longitude)), 8, 2) +
         (position.longitude < 0 ? " W" : " E");
}

std::string RouteText(const CircuitParameters& circuit, const GreatCircle& there) {
  static constexpr double kNauticalMile = 1.852;  // km
  const GreatCircle back(circuit.receiver, circuit.transmitter, circuit.long_way);
  return std::string("  TRANSMITTER         RECEIVER              AZIMUTHS  ") +
         (circuit.long_way ? "<Long>" : "      ") + "  N. MI.      KM\n" +
         PositionText(circuit.transmitter) + " -" + PositionText(circuit.receiver) +
         Field(Degrees(there.Azimuth()), 10, 2) + Field(Degrees(back.Azimuth()), 8, 2) +
         Field(there.Length() / kNauticalMile, 10, 1) + Field(there.Length(), 9, 1) + "\n";
}

std::string ParametersText(const Deck& deck, const GreatCircle& route) {
  const CircuitParameters& circuit = deck.circuit;
  return "     METHOD 26   SKYHOP ESTIMATE " + VersionText() + "  PAGE   1\n\n" + "  " +
         MonthName(std::chrono::month(static_cast<unsigned>(circuit.month))) +
         RightJustified(std::to_string(deck.year), 8) +
         "          SSN = " + NumberText(circuit.sunspot_number) +
         "                Minimum Angle= " + FixedText(Degrees(circuit.min_elevation), 3) +
         " degrees\n" + RouteText(circuit, route) + "  XMTR  isotropic +  0.0 dBi" +
         Field(circuit.power, 12, 3) + "kW\n" + "  RCVR  isotropic +  0.0 dBi\n" +
         "  3 MHz NOISE = " + FixedText(-circuit.man_made_noise, 1) +
         " dBW     REQ. REL = " + FixedText(circuit.required_reliability * 100.0, 0) +
         "%    REQ. SNR = " + FixedText(circuit.required_snr, 1) + " dB\n";
}

/// Local mean time in hours, rounded to the tenths that are printed: 23.97 is the next midnight.
double PrintedLocalTime(int utc_hour, const GeoPosition& position) {
  const double tenths = std::nearbyint(LocalTime(utc_hour, position.longitude) * 10.0);
  return tenths >= 240.0 ? 0.0 : tenths / 10.0;
}

std::string HourLine(int utc_hour, const GeoPosition& transmitter, const CircuitHour& hour) {
  const HourMuf muf = hour.Muf();
  return Field(utc_hour, 9, 1) + Field(PrintedLocalTime(utc_hour, transmitter), 6, 1) +
         Field(muf.fot, 7, 2) + Field(muf.hpf, 7, 2) + Field(0.0, 7, 2) + Field(muf.muf, 7, 2) +
         Field(hour.Luf().value_or(-muf.muf), 7, 2) + "\n";
}

}  // namespace

std::string MufReport(const Deck& deck) {
  const Circuit circuit(deck.circuit);
  std::string text = Heading() + Echo(deck.lines) + ParametersText(deck, circuit.Route()) +
                     "\n\n      GMT   LMT    FOT    HPF  ESMUF    MUF    LUF\n\n";
  for (int hour = deck.hours.first; hour <= deck.hours.last; hour += deck.hours.step) {
    text += HourLine(hour, deck.circuit.transmitter, circuit.At(hour));
  }
  return text + " *****END OF RUN*****     SKYHOP ESTIMATE " + VersionText() + "\n";
}

}  // namespace skyhop::estimate
