#include "engine/echo_check.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr double kWattsPerKilowatt = 1000;

/// The power, in kW, that engines use if the card shows 0 because the power is less than the card's
/// step.
constexpr double kLeastPower = 0.005;

/// Half of the last digit's value in a number text.
double HalfDigit(const std::string& text) {
  const std::size_t point = text.find('.');
  const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
  return 0.5 * std::pow(10.0, -static_cast<double>(decimals));
}

/// Half of the last digit's value on the deck's cards.
struct CardRounding {
  double sunspot_number;
  double kilowatts;
};

CardRounding RoundingOf(EngineChoice engine) {
  if (engine == EngineChoice::kIonCap) return {0.005, 0.005};
  return {0.05, 0.00005};
}

/// The number in a heading; nothing if it is unreadable, or if rounding explains its difference
/// from `asked`.
std::optional<double> OtherNumber(const std::string& shown, double asked, double card_rounding) {
  const std::string text(Trim(shown));
  const std::optional<double> number = WholeNumberText(text);
  if (!number) return std::nullopt;
  // Single precision and decimal fractions add a small error.
  const double slack = 1e-6 * std::fmax(1.0, std::fabs(asked));
  if (std::fabs(*number - asked) <= HalfDigit(text) + card_rounding + slack) return std::nullopt;
  return number;
}

/// A number of the heading for a message, rounded to single precision.
std::string Shown(double number) {
  return NumberText(static_cast<float>(number));
}

/// The number of the month with this English name of three letters.
std::optional<unsigned> MonthOf(const std::string& name) {
  for (unsigned number = 1; number <= 12; ++number) {
    if (EqualsIgnoringCase(name, MonthName(std::chrono::month(number)))) return number;
  }
  return std::nullopt;
}

/// An angle of the heading such as "40.50 N" in degrees, north and east positive.
std::optional<double> SignedAngle(const std::string& shown) {
  const std::optional<double> magnitude = WholeNumberText(shown.substr(0, shown.find(' ')));
  if (!magnitude) return std::nullopt;
  return shown.ends_with('S') || shown.ends_with('W') ? -*magnitude : *magnitude;
}

/// Converts an angle to degrees as on the CIRCUIT card, north and west positive: both have the same
/// sign in the record.
double NorthOrWestPositive(const Angle& angle) {
  const auto magnitude = static_cast<double>(Magnitude(angle));
  return angle.sign == -1 ? magnitude : -magnitude;
}

bool SamePlace(const HeadingPosition& shown, const Position& asked) {
  constexpr double card_rounding = 0.005;
  constexpr double near_pole = 89;
  const auto differs = [](const std::string& text, double value, double slack) {
    const std::optional<double> angle = SignedAngle(text);
    const double half_digit = HalfDigit(text.substr(0, text.find(' ')));
    return angle && std::fabs(std::remainder(*angle - value, 360.0)) > half_digit + slack;
  };
  const double latitude = NorthOrWestPositive(asked.latitude);
  const double longitude = -NorthOrWestPositive(asked.longitude);
  // Engines move a station away from the pole, where its longitude has no meaning.
  if (std::fabs(latitude) > near_pole) return !differs(shown.latitude, latitude, 1);
  const double slack = card_rounding + 0.005;
  return !differs(shown.latitude, latitude, slack) && !differs(shown.longitude, longitude, slack);
}

std::string PlaceText(const Position& position) {
  return FixedText(static_cast<double>(Magnitude(position.latitude)), 2) + " " +
         LatitudeLetter(position.latitude) + " " +
         FixedText(static_cast<double>(Magnitude(position.longitude)), 2) + " " +
         LongitudeLetter(position.longitude);
}

/// Collects the differences.
class Comparison {
 public:
  Comparison(const ResultsHeading& heading, const PredictionInputs& asked)
      : heading_(heading),
        asked_(asked),
        ioncap_(asked.engine == EngineChoice::kIonCap),
        rounding_(RoundingOf(asked.engine)) {
    CompareDate();
    ComparePositions();
    ComparePath();
    CompareNumbers();
    CompareNoise();
    // An IONCAP deck has no antenna files.
    if (!ioncap_) {
      CompareAntenna("transmitter", heading.transmitter_antenna, asked.transmitter_antenna);
      CompareAntenna("receiver", heading.receiver_antenna, asked.receiver_antenna);
    }
  }

  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  void Add(const std::string& shown, const std::string& wanted) {
    text_ += (text_.empty() ? "Results are for " : "; for ") + shown + ", not " + wanted;
  }

  void CompareDate() {
    const std::optional<unsigned> month = MonthOf(heading_.month);
    const std::optional<double> year = WholeNumberText(heading_.year);
    const bool other_month = month && static_cast<int>(*month) != asked_.Month();
    const bool other_year = year && *year != asked_.Year();
    if (!other_month && !other_year) return;
    std::string shown;
    std::string wanted;
    if (month) {
      shown = MonthName(std::chrono::month(*month));
      wanted = MonthName(std::chrono::month(static_cast<unsigned>(asked_.Month())));
    }
    if (year) {
      shown += (shown.empty() ? "" : " ") + NumberText(*year);
      wanted += (wanted.empty() ? "" : " ") + std::to_string(asked_.Year());
    }
    Add(shown, wanted);
  }

  void ComparePositions() {
    const std::optional<HeadingPosition>& from = heading_.transmitter;
    const std::optional<HeadingPosition>& to = heading_.receiver;
    if (!from || !to) return;
    if (SamePlace(*from, asked_.transmitter) && SamePlace(*to, asked_.receiver)) return;
    Add(from->latitude + " " + from->longitude + " to " + to->latitude + " " + to->longitude,
        PlaceText(asked_.transmitter) + " to " + PlaceText(asked_.receiver));
  }

  void ComparePath() {
    // Half of the earth's circumference plus or minus a quarter of a degree, in km.
    constexpr double longest_short = 20050;
    constexpr double shortest_long = 19980;
    const std::optional<double> distance = WholeNumberText(heading_.kilometers);
    const bool is_long = heading_.long_path || (distance && *distance > longest_short);
    const bool is_short = !heading_.long_path && distance && *distance < shortest_long;
    if (is_long && asked_.short_path) Add("the long path", "the short path");
    if (is_short && !asked_.short_path) Add("the short path", "the long path");
  }

  void CompareNumber(const std::string& what, const std::string& shown, double asked,
                     double card_rounding, const std::string& unit) {
    if (const auto other = OtherNumber(shown, asked, card_rounding)) {
      Add(what + " " + Shown(*other) + unit, Shown(asked) + unit);
    }
  }

  void CompareNumbers() {
    CompareNumber("sunspot number", heading_.sunspot_number,
                  static_cast<double>(asked_.sunspot_number), rounding_.sunspot_number, "");
    ComparePower();
    // IONCAP reads an angle of 0 as 3 degrees. The decks of the other engines never contain 0.
    double takeoff = ioncap_ ? std::nearbyint(asked_.takeoff) : std::max(asked_.takeoff, 0.1);
    if (takeoff == 0) takeoff = 3;
    CompareNumber("a minimum take-off angle of", heading_.takeoff, takeoff, 0.005, " degrees");
    CompareNumber("a required SNR of", heading_.snr,
                  ioncap_ ? std::nearbyint(asked_.snr) : asked_.snr, 0.05, " dB");
    CompareNumber("a required reliability of", heading_.reliability,
                  ioncap_ ? asked_.availability : std::min(asked_.availability, 99.0), 0.5, " %");
  }

  void ComparePower() {
    // The cards of IONCAP show whole watts.
    const double watts = ioncap_ ? std::nearbyint(asked_.power) : asked_.power;
    const double kilowatts = watts / kWattsPerKilowatt;
    const auto other = OtherNumber(heading_.power, kilowatts, rounding_.kilowatts);
    if (!other) return;
    const bool card_shows_none = kilowatts < rounding_.kilowatts;
    if (card_shows_none && *other > 0 && *other <= kLeastPower) return;
    Add(Shown(*other * kWattsPerKilowatt) + " W", NumberText(watts) + " W");
  }

  /// Headings show the noise at 3 MHz for a noise code. A value above -100 dBW is not a noise
  /// level, so ignore it.
  void CompareNoise() {
    constexpr std::array<double, 4> noise_levels = {-140.4, -144.7, -150.0,
                                                    -164.0};  // dBW by index
    constexpr double slack_decibels = 1;  // some engines show -163.6 for the last one
    const std::optional<double> shown = WholeNumberText(heading_.noise);
    const auto index = static_cast<std::size_t>(std::clamp<int>(asked_.noise, 0, 3));
    const double expected = noise_levels.at(index);
    if (!shown || *shown > -100 || std::fabs(*shown - expected) <= slack_decibels) return;
    Add("a noise of " + heading_.noise + " dBW", FixedText(expected, 1) + " dBW");
  }

  void CompareAntenna(const std::string& whose, const std::string& shown, const Antenna& asked) {
    const std::string wanted = asked.file.empty() ? std::string(kIsotropicFile) : asked.file;
    if (shown.empty() || EqualsIgnoringCase(shown, wanted)) return;
    Add("the " + whose + "'s antenna " + shown, wanted);
  }

  const ResultsHeading& heading_;
  const PredictionInputs& asked_;
  bool ioncap_;
  CardRounding rounding_;
  std::string text_;
};

}  // namespace

std::string EchoDifference(const ResultsHeading& heading, const PredictionInputs& asked) {
  return Comparison(heading, asked).Text();
}

}  // namespace skyhop::IONCAPModule
