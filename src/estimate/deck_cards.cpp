#include "estimate/deck_cards.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "common/text.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

struct PositionColumns {
  Columns latitude;
  Columns north_or_south;
  Columns longitude;
  Columns east_or_west;
};

// Some decks use the columns between a letter and the next number for more digits.
constexpr PositionColumns kTransmitter = {{11, 15}, {16, 16}, {17, 25}, {26, 26}};
constexpr PositionColumns kReceiver = {{27, 35}, {36, 36}, {37, 45}, {46, 46}};

GeoPosition ReadPosition(const Card& card, const PositionColumns& at, const std::string& station) {
  double latitude = card.NumberWithin(at.latitude, 2, station + " latitude", 0, 90);
  if (card.IsSecondLetter(at.north_or_south, station + " hemisphere", 'N', 'S')) {
    latitude = -latitude;
  }
  double longitude = card.NumberWithin(at.longitude, 2, station + " longitude", 0, 180);
  if (card.IsSecondLetter(at.east_or_west, station + " hemisphere", 'E', 'W')) {
    longitude = -longitude;
  }
  return PositionFromDegrees(latitude, longitude);
}

void ReadCircuit(const Card& card, Deck& deck) {
  deck.circuit.transmitter = ReadPosition(card, kTransmitter, "transmitter");
  deck.circuit.receiver = ReadPosition(card, kReceiver, "receiver");
  // Some decks repeat the path there as S or L, for the reader's eye only.
  static constexpr Columns kRemark = {47, 50};
  const std::string_view remark = card.Text(kRemark);
  if (remark.find_first_not_of(" SL") != std::string_view::npos) {
    card.Refuse(kRemark, "remark", "is not blank, S or L");
  }
  deck.circuit.long_way = card.IntegerWithin({51, 55}, "path", 0, 1) == 1;
  card.ExpectEndAt(56);
}

/// Man-made noise at 3 MHz, dB below 1 W in 1 Hz: a code from -1 (industrial) to -4 (remote), or
/// the level itself with any sign.
double ReadNoise(const Card& card) {
  static constexpr Columns kColumns = {16, 20};
  static constexpr std::array<double, 4> kLevels = {140.4, 144.7, 150.0, 164.0};
  const double written = card.Number(kColumns, 0, "man-made noise");
  for (std::size_t i = 0; i < kLevels.size(); ++i) {
    if (written == -static_cast<double>(i + 1)) return kLevels[i];
  }
  const double level = std::abs(written);
  if (level < 100 || level > 200) {
    card.Refuse(kColumns, "man-made noise",
                "is neither a code from -1 to -4 nor a level from 100 to 200 dB below 1 W");
  }
  return level;
}

void ReadSystem(const Card& card, Deck& deck) {
  static constexpr double kUsualAngle = 3;
  CircuitParameters& circuit = deck.circuit;
  const double power = card.NumberWithin({11, 15}, 2, "power in kW", 0, 99999);
  if (!deck.power_from_antenna) circuit.power = power > 0 ? power : kLeastPower;
  circuit.man_made_noise = ReadNoise(card);
  const double angle = card.NumberWithin({21, 25}, 2, "minimum take-off angle", 0, 90);
  circuit.min_elevation = Radians(angle > 0 ? angle : kUsualAngle);
  circuit.required_reliability =
      card.NumberWithin({26, 30}, 0, "required reliability", 0, 100) / 100.0;
  circuit.required_snr = card.NumberWithin({31, 35}, 2, "required SNR", -100, 200);
  // Multipath has no part in the estimate.
  deck.multipath_power = card.Number({36, 40}, 2, "multipath power tolerance");
  deck.multipath_delay = card.Number({41, 45}, 2, "multipath delay tolerance");
  card.ExpectEndAt(46);
}

void ReadMonth(const Card& card, Deck& deck) {
  static constexpr Columns kMonth = {16, 20};
  deck.year = card.IntegerWithin({11, 15}, "year", 0, 9999);
  if (card.Text(kMonth).find('.') == std::string_view::npos) {
    deck.circuit.month = card.IntegerWithin(kMonth, "month", 1, 12);
  } else {
    // With a point it is month.day. The estimate is one of monthly medians, whatever the day.
    const double month = card.Number(kMonth, 2, "month");
    const double day = std::round((month - std::floor(month)) * 100.0);
    if (month < 1 || month >= 13 || day > 31) {
      card.Refuse(kMonth, "month", "is not a month.day from 1.00 to 12.31");
    }
    deck.circuit.month = static_cast<int>(month);
  }
  card.ExpectEndAt(21);
}

void ReadSunspot(const Card& card, Deck& deck) {
  deck.circuit.sunspot_number = card.NumberWithin({11, 15}, 2, "sunspot number", 0, 9999);
  // ICEPAC's index fills no more than four columns. A digit in the first is one of a sunspot number
  // that is too wide.
  const std::string_view before_index = card.Text({16, 16});
  if (!Trim(before_index).empty()) card.ExpectEndAt(16);
  (void)card.NumberWithin({17, 20}, 2, "geomagnetic index", 0, 9);
  card.ExpectEndAt(21);
}

void ReadTime(const Card& card, Deck& deck) {
  deck.hours.first = card.IntegerWithin({11, 15}, "first hour", 1, 24);
  deck.hours.last = card.IntegerWithin({16, 20}, "last hour", deck.hours.first, 24);
  deck.hours.step = card.IntegerWithin({21, 25}, "step in hours", 1, 24);
  // 0 and 1 both stand for UTC, depending on the engine that the deck was written for.
  (void)card.IntegerWithin({26, 30}, "kind of time", 0, 1);
  card.ExpectEndAt(31);
}

/// Checks the ANTENNA card of an IONCAP deck. The estimate does not use its figures.
void ReadAntennaFigures(const Card& card) {
  (void)card.Integer({11, 15}, "end of the path");
  (void)card.Integer({16, 20}, "kind of antenna");
  for (int column = 21; column <= 71; column += 5) {
    (void)card.Number({column, column + 4}, 2, "antenna figure");
  }
  (void)card.Integer({76, 80}, "antenna number");
  card.ExpectEndAt(81);
}

void ReadAntennaFile(const Card& card, Deck& deck) {
  static constexpr int kTransmitterEnd = 1;
  const int end = card.IntegerWithin({11, 15}, "end of the path", 1, 2);
  (void)card.Integer({16, 20}, "antenna number");
  (void)card.Number({21, 25}, 0, "lowest frequency");
  (void)card.Number({26, 30}, 0, "highest frequency");
  const double gain = card.NumberWithin({31, 40}, 3, "gain", -100, 100);
  static constexpr Columns kFile = {42, 62};
  const std::string file = std::string(Trim(card.Text(kFile)));
  if (card.Text({63, 63}) != "]") card.Refuse(kFile, "antenna file", "has no bracket behind it");
  (void)card.NumberWithin({64, 68}, 1, "main beam azimuth", -360, 360);
  const double power = card.NumberWithin({69, 78}, 4, "power in kW", 0, 99999);
  card.ExpectEndAt(79);
  const bool isotropic = EqualsIgnoringCase(file, "default/isotrope");
  const DeckAntenna antenna = {isotropic ? gain : 0, isotropic ? std::string() : file};
  deck.circuit.antenna_gain += antenna.gain;
  if (end == kTransmitterEnd) {
    deck.transmitter_antenna = antenna;
    deck.circuit.power = power > 0 ? power : kLeastPower;
    deck.power_from_antenna = true;
  } else {
    deck.receiver_antenna = antenna;
  }
}

bool NamesFile(const Card& card) {
  return card.Text({41, 41}) == "[";
}

void ReadAntenna(const Card& card, Deck& deck) {
  if (NamesFile(card)) {
    ReadAntennaFile(card, deck);
  } else {
    ReadAntennaFigures(card);
  }
}

void ReadFrequency(const Card& card, Deck& deck) {
  static constexpr int kCount = 11;
  for (int i = 0; i < kCount; ++i) {
    const int first = 11 + 5 * i;
    deck.frequencies.push_back(
        card.NumberWithin({first, first + 4}, 2, "frequency in MHz", 0, 99.99));
  }
  // Some decks have a twelfth, which engines do not read.
  (void)card.Number({66, 70}, 2, "frequency in MHz");
  card.ExpectEndAt(71);
}

void ReadMethod(const Card& card, Deck& deck) {
  static constexpr Columns kNumber = {11, 15};
  const int number = card.Integer(kNumber, "method");
  for (const Method method : {Method::kMuf, Method::kSystem, Method::kSystemByDistance}) {
    if (number == static_cast<int>(method)) deck.method = method;
  }
  if (number != static_cast<int>(deck.method)) {
    card.Refuse(kNumber, "method", "is not 20, 26 or 30, the methods of this engine");
  }
  (void)card.Integer({16, 20}, "page number");
  card.ExpectEndAt(21);
}

void ReadLabel(const Card& card, Deck& deck) {
  deck.transmitter_name = std::string(Trim(card.Text({11, 30})));
  deck.receiver_name = std::string(Trim(card.Text({31, 50})));
}

void ReadLineMax(const Card& card, Deck& /*deck*/) {
  // The report has one page, so this number has no effect. Text behind it is a remark.
  (void)card.Integer({11, 18}, "lines per page");
}

void ReadCoefficients(const Card& card, Deck& /*deck*/) {
  static constexpr Columns kSet = {11, 14};
  const std::string_view name = Trim(card.Text(kSet));
  if (name != "CCIR" && name != "URSI") card.Refuse(kSet, "coefficients", "is not CCIR or URSI");
}

void ReadLayerFactors(const Card& card, Deck& /*deck*/) {
  for (int column = 11; column <= 26; column += 5) {
    (void)card.Number({column, column + 4}, 2, "factor of a layer");
  }
  card.ExpectEndAt(31);
}

constexpr std::array<CardKind, 12> kKinds = {{{"CIRCUIT", ReadCircuit, true, false},
                                              {"SYSTEM", ReadSystem, true, false},
                                              {"MONTH", ReadMonth, true, false},
                                              {"SUNSPOT", ReadSunspot, true, false},
                                              {"TIME", ReadTime, true, false},
                                              {"ANTENNA", ReadAntenna, false, true},
                                              {"METHOD", ReadMethod, true, false},
                                              {"FREQUENCY", ReadFrequency, false, false},
                                              {"LABEL", ReadLabel, false, false},
                                              {"LINEMAX", ReadLineMax, false, false},
                                              {"COEFFS", ReadCoefficients, false, false},
                                              {"FPROB", ReadLayerFactors, false, false}}};

}  // namespace

std::span<const CardKind> CardKinds() {
  return kKinds;
}

}  // namespace skyhop::estimate
