#include "estimate/report.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <string_view>
#include <vector>

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

std::string LeftJustified(std::string text) {
  text.resize(20, ' ');
  return text;
}

const std::string& Named(const std::string& name, const std::string& otherwise) {
  return name.empty() ? otherwise : name;
}

/// An antenna as the estimate takes it.
std::string AntennaText(const DeckAntenna& antenna) {
  return "isotropic +" + Field(antenna.gain, 5, 1) + " dBi";
}

std::string ReplacedText(const DeckAntenna& antenna) {
  return antenna.file.empty() ? std::string() : "  in place of " + antenna.file;
}

std::string RouteText(const Deck& deck, const GreatCircle& there) {
  const CircuitParameters& circuit = deck.circuit;
  static constexpr double kNauticalMile = 1.852;  // km
  const GreatCircle back(circuit.receiver, circuit.transmitter, circuit.long_way);
  return "  " + LeftJustified(Named(deck.transmitter_name, "TRANSMITTER")) +
         LeftJustified(Named(deck.receiver_name, "RECEIVER")) + "  AZIMUTHS  " +
         (circuit.long_way ? "<Long>" : "      ") + "  N. MI.      KM\n" +
         PositionText(circuit.transmitter) + " -" + PositionText(circuit.receiver) +
         Field(Degrees(there.Azimuth()), 10, 2) + Field(Degrees(back.Azimuth()), 8, 2) +
         Field(there.Length() / kNauticalMile, 10, 1) + Field(there.Length(), 9, 1) + "\n";
}

std::string ParametersText(const Deck& deck, const GreatCircle& route) {
  const CircuitParameters& circuit = deck.circuit;
  return "     METHOD " + std::to_string(static_cast<int>(deck.method)) + "   SKYHOP ESTIMATE " +
         VersionText() + "  PAGE   1\n\n" + "  " +
         MonthName(std::chrono::month(static_cast<unsigned>(circuit.month))) +
         RightJustified(std::to_string(deck.year), 8) +
         "          SSN = " + NumberText(circuit.sunspot_number) +
         "                Minimum Angle= " + FixedText(Degrees(circuit.min_elevation), 3) +
         " degrees\n" + RouteText(deck, route) + "  XMTR  " +
         AntennaText(deck.transmitter_antenna) + Field(circuit.power, 12, 3) + "kW" +
         ReplacedText(deck.transmitter_antenna) + "\n" + "  RCVR  " +
         AntennaText(deck.receiver_antenna) + ReplacedText(deck.receiver_antenna) + "\n" +
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

std::string MufReport(const Deck& deck, const Circuit& circuit) {
  std::string text = "\n\n      GMT   LMT    FOT    HPF  ESMUF    MUF    LUF\n\n";
  for (int hour = deck.hours.first; hour <= deck.hours.last; hour += deck.hours.step) {
    text += HourLine(hour, deck.circuit.transmitter, circuit.At(hour));
  }
  return text;
}

/// One column of a block: a frequency and how it is received. A frequency of 0 is none.
struct BlockColumn {
  double frequency = 0;
  Reception reception;
};

/// A line of a block: the text before its columns, one cell per column and the tag.
template <class Cell>
std::string BlockLine(const std::string& start, const std::vector<BlockColumn>& columns,
                      std::string_view tag, const Cell& cell) {
  std::string line = RightJustified(start, 6);
  for (const BlockColumn& column : columns) {
    line += RightJustified(column.frequency > 0 ? cell(column) : "-", 5);
  }
  return line + " " + std::string(tag) + "\n";
}

/// A number of dB, limited to the width of a column. No signal is received at such levels.
std::string DecibelText(double value) {
  static constexpr double kLowest = -9999;
  const std::string text = FixedText(std::max(value, kLowest), 0);
  return text == "-0" ? "0" : text;
}

std::string FractionText(double value) {
  return FixedText(value, 2);
}

std::vector<BlockColumn> ColumnsOf(const Deck& deck, const CircuitHour& hour) {
  const HourMuf muf = hour.Muf();
  std::vector<double> frequencies = {muf.muf};
  frequencies.insert(frequencies.end(), deck.frequencies.begin(), deck.frequencies.end());
  if (frequencies[1] == 0) frequencies[1] = muf.fot;
  std::vector<BlockColumn> columns;
  columns.reserve(frequencies.size());
  for (const double frequency : frequencies) {
    columns.push_back({frequency, frequency > 0 ? hour.At(frequency) : Reception()});
  }
  return columns;
}

std::string Block(const Deck& deck, int utc_hour, const CircuitHour& hour) {
  const std::vector<BlockColumn> columns = ColumnsOf(deck, hour);
  const double power = Decibels(1000.0 * deck.circuit.power);
  const auto line = [&](std::string_view tag, const auto& cell) {
    return BlockLine("", columns, tag, cell);
  };
  using Column = const BlockColumn&;
  return BlockLine(FixedText(utc_hour, 1), columns, "FREQ",
                   [](Column c) { return FixedText(c.frequency, 1); }) +
         line("MODE  ", [](Column c) { return ModeText(c.reception.ray); }) +
         line("TANGLE", [](Column c) { return FixedText(Degrees(c.reception.ray.elevation), 1); }) +
         line("MUFday", [](Column c) { return FractionText(c.reception.ray.days); }) +
         line("LOSS  ", [&](Column c) { return DecibelText(power - c.reception.signal_power); }) +
         line("S DBW ", [](Column c) { return DecibelText(c.reception.signal_power); }) +
         line("N DBW ", [](Column c) { return DecibelText(c.reception.noise_power); }) +
         line("SNR   ", [](Column c) { return DecibelText(c.reception.snr); }) +
         line("REL   ", [](Column c) { return FractionText(c.reception.reliability); }) +
         line("TGAIN ", [&](Column) { return FixedText(deck.transmitter_antenna.gain, 1); }) +
         line("RGAIN ", [&](Column) { return FixedText(deck.receiver_antenna.gain, 1); }) + "\n";
}

std::string SystemReport(const Deck& deck, const Circuit& circuit) {
  std::string text = "  MULTIPATH POWER TOLERANCE = " + Field(deck.multipath_power, 4, 1) +
                     " dB   MULTIPATH DELAY TOLERANCE = " + Field(deck.multipath_delay, 6, 3) +
                     " ms\n\n";
  for (int hour = deck.hours.first; hour <= deck.hours.last; hour += deck.hours.step) {
    text += Block(deck, hour, circuit.At(hour));
  }
  return text;
}

}  // namespace

std::string Report(const Deck& deck) {
  const Circuit circuit(deck.circuit);
  return Heading() + Echo(deck.lines) + ParametersText(deck, circuit.Route()) +
         (deck.method == Method::kMuf ? MufReport(deck, circuit) : SystemReport(deck, circuit)) +
         " *****END OF RUN*****     SKYHOP ESTIMATE " + VersionText() + "\n";
}

}  // namespace skyhop::estimate
