#include "estimate/deck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "common/errors.h"
#include "estimate/card.h"
#include "estimate/propagation_math.h"

namespace skyhop::estimate {
namespace {

constexpr int kMethod = 26;

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
  circuit.power = power > 0 ? power : kLeastPower;
  circuit.man_made_noise = ReadNoise(card);
  const double angle = card.NumberWithin({21, 25}, 2, "minimum take-off angle", 0, 90);
  circuit.min_elevation = Radians(angle > 0 ? angle : kUsualAngle);
  circuit.required_reliability =
      card.NumberWithin({26, 30}, 0, "required reliability", 0, 100) / 100.0;
  circuit.required_snr = card.NumberWithin({31, 35}, 2, "required SNR", -100, 200);
  // Multipath has no part in MUF and LUF.
  (void)card.Number({36, 40}, 2, "multipath power tolerance");
  (void)card.Number({41, 45}, 2, "multipath delay tolerance");
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
  card.ExpectEndAt(16);
}

void ReadTime(const Card& card, Deck& deck) {
  deck.hours.first = card.IntegerWithin({11, 15}, "first hour", 1, 24);
  deck.hours.last = card.IntegerWithin({16, 20}, "last hour", deck.hours.first, 24);
  deck.hours.step = card.IntegerWithin({21, 25}, "step in hours", 1, 24);
  // 0 and 1 both stand for UTC, depending on the engine that the deck was written for.
  (void)card.IntegerWithin({26, 30}, "kind of time", 0, 1);
  card.ExpectEndAt(31);
}

void ReadAntenna(const Card& card, Deck& /*deck*/) {
  (void)card.Integer({11, 15}, "end of the path");
  (void)card.Integer({16, 20}, "kind of antenna");
  for (int column = 21; column <= 71; column += 5) {
    (void)card.Number({column, column + 4}, 2, "antenna figure");
  }
  (void)card.Integer({76, 80}, "antenna number");
  card.ExpectEndAt(81);
}

void ReadMethod(const Card& card, Deck& /*deck*/) {
  static constexpr Columns kNumber = {11, 15};
  if (card.Integer(kNumber, "method") != kMethod) {
    card.Refuse(kNumber, "method", "is not 26, the only method of this engine");
  }
  (void)card.Integer({16, 20}, "page number");
  card.ExpectEndAt(21);
}

struct CardKind {
  std::string_view name;
  void (*read)(const Card& card, Deck& deck);
  bool required;
  bool repeats;
};

constexpr std::array<CardKind, 7> kKinds = {{{"CIRCUIT", ReadCircuit, true, false},
                                             {"SYSTEM", ReadSystem, true, false},
                                             {"MONTH", ReadMonth, true, false},
                                             {"SUNSPOT", ReadSunspot, true, false},
                                             {"TIME", ReadTime, true, false},
                                             {"ANTENNA", ReadAntenna, false, true},
                                             {"METHOD", ReadMethod, true, false}}};

/// The state of reading a deck card by card.
class DeckReader {
 public:
  /// Takes the next line. Returns whether there may be more.
  bool Take(int number, std::string_view line) {
    const Card card(number, line);
    if (card.IsBlank()) return true;
    deck_.lines.emplace_back(line);
    if (card.Name() == "QUIT") {
      if (!executed_) card.Refuse("which comes before any EXECUTE card");
      return false;
    }
    if (executed_) card.Refuse("which comes after EXECUTE: a deck is for one run");
    if (card.Name() == "EXECUTE") {
      Execute(card);
    } else {
      Read(card);
    }
    return true;
  }

  /// The deck, when it is complete.
  Deck Finish() && {
    if (deck_.lines.empty()) throw Error(errors::kTypeMismatch, "the deck is empty");
    if (!executed_) throw Error(errors::kTypeMismatch, "the deck has no EXECUTE card");
    return std::move(deck_);
  }

 private:
  void Read(const Card& card) {
    const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(),
                                          [&](const CardKind& k) { return k.name == card.Name(); });
    if (kind == kKinds.end()) card.Refuse("which this engine does not know");
    bool& seen = seen_[static_cast<std::size_t>(kind - kKinds.begin())];
    if (seen && !kind->repeats) card.Refuse("which comes a second time");
    seen = true;
    kind->read(card, deck_);
  }

  void Execute(const Card& card) {
    (void)card.Integer({11, 15}, "number of runs");
    card.ExpectEndAt(16);
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
      if (!kKinds[i].required || seen_[i]) continue;
      card.Refuse("before which there is no " + std::string(kKinds[i].name) + " card");
    }
    executed_ = true;
  }

  Deck deck_;
  std::array<bool, kKinds.size()> seen_{};
  bool executed_ = false;
};

}  // namespace

Deck ReadDeck(std::string_view text) {
  DeckReader reader;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!reader.Take(number, line)) break;
  }
  return std::move(reader).Finish();
}

}  // namespace skyhop::estimate
