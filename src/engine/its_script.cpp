#include "engine/its_script.h"

#include <algorithm>
#include <string>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "geo/great_circle.h"
#include "geo/path_services.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::int16_t kPointMethod = 30;

/// Angle that stands for a minimum take-off angle of 0, which the engines take for 3 degrees.
constexpr double kHorizon = 0.1;

/// The most reliable percentage that the card's two digits tell; all of the days is out of reach.
constexpr double kHighestAvailability = 99;

}  // namespace

template <class WriteBody>
bool ItsScript::Create(const char* name, const std::filesystem::path& file, bool snr,
                       WriteBody write) {
  return diagnostics_->Trap(name, false, [&] {
    const int script = cards_->InitializeScript(file, snr);
    if (script == -1) return false;
    // The file is closed whatever happens to its cards.
    const bool written = diagnostics_->Trap(name, [&] { write(script); });
    return cards_->CloseScript(script) && written;
  });
}

bool ItsScript::CreateScript(EngineChoice engine, std::int16_t method,
                             const std::filesystem::path& file) {
  return Create("IONCAPModule.CreateITSScript", file, false, [&](int script) {
    const DeckParameters deck = ReadDeckParameters(*panel_, *parameters_, *diagnostics_);
    WriteCards(script, {deck, engine, method, std::nullopt});
  });
}

bool ItsScript::CreatePointScript(const DeckParameters& deck, const PointOfDeck& point,
                                  const std::filesystem::path& file) {
  return Create("IONCAPModule.CreateSNRScript", file, true, [&](int script) {
    WriteCards(script, {deck, EngineChoice::kVoaCapSnr, kPointMethod, point});
  });
}

void ItsScript::WriteCards(int file, const Contents& contents) {
  const DeckParameters& deck = contents.deck;
  // One page for the whole day: no page heading falls between the hours.
  cards_->PutLine(file, "LINEMAX    9999       number of lines-per-page");
  cards_->PutLine(file, "COEFFS    CCIR");
  SpecifyHours(file, contents);
  SpecifySunspots(file, contents);
  SpecifyLabel(file, deck);
  SpecifyCircuit(file, deck);
  SpecifySystem(file, deck);
  cards_->PutLine(file, "FPROB      1.00 1.00 1.00 0.00");
  SpecifyAntenna(file, 1, deck);
  SpecifyAntenna(file, 2, deck);
  SpecifyFrequencies(file, contents.point);
  PutName(file, "METHOD");
  PutNumber(file, contents.method, 0, 5);
  PutNumber(file, 0, 0, 5);
  cards_->PutNewLine(file);
  cards_->PutLine(file, "EXECUTE");
  cards_->PutLine(file, "QUIT");
}

void ItsScript::PutNumber(int file, double value, int decimals, int width) {
  cards_->PutRightString(file, FixedText(value, decimals), width);
}

void ItsScript::SpecifyHours(int file, const Contents& contents) {
  PutName(file, "TIME");
  const int first = contents.point ? contents.point->hour : 1;
  const int last = contents.point ? contents.point->hour : 24;
  // First hour, last hour, step, and hours in UTC.
  for (const int value : {first, last, 1, 1}) PutNumber(file, value, 0, 5);
  cards_->PutNewLine(file);
  PutName(file, "MONTH");
  PutNumber(file, contents.deck.year, 0, 5);
  // Without a day the engine computes the monthly median.
  PutNumber(file, contents.deck.month, 2, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifySunspots(int file, const Contents& contents) {
  PutName(file, "SUNSPOT");
  PutNumber(file, static_cast<double>(contents.deck.sunspot_number), 1, 5);
  if (contents.engine == EngineChoice::kIcePac) {
    PutNumber(file, static_cast<double>(ComputeQindex(contents.deck.k_index)), 2, 5);
  }
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyLabel(int file, const DeckParameters& deck) {
  PutName(file, "LABEL");
  cards_->PutString(file, deck.transmitter_name, 20);
  cards_->PutString(file, deck.receiver_name, 20);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyCircuit(int file, const DeckParameters& deck) {
  PutName(file, "CIRCUIT");
  const auto coordinate = [&](const Angle& angle, const char* letter, int width) {
    PutNumber(file, static_cast<double>(Magnitude(angle)), 2, width);
    cards_->PutString(file, letter, 1);
  };
  coordinate(deck.transmitter.latitude, LatitudeLetter(deck.transmitter.latitude), 5);
  coordinate(deck.transmitter.longitude, LongitudeLetter(deck.transmitter.longitude), 9);
  coordinate(deck.receiver.latitude, LatitudeLetter(deck.receiver.latitude), 9);
  coordinate(deck.receiver.longitude, LongitudeLetter(deck.receiver.longitude), 9);
  cards_->PutString(file, deck.short_path ? "  S" : "  L", 4);
  PutNumber(file, deck.short_path ? 0 : 1, 0, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifySystem(int file, const DeckParameters& deck) {
  PutName(file, "SYSTEM");
  PutNumber(file, 1, 2, 5);
  cards_->PutString(file, NoiseCode(deck.noise), 5);
  PutNumber(file, std::max(deck.takeoff, kHorizon), 2, 5);
  PutNumber(file, std::min(deck.availability, kHighestAvailability), 0, 5);
  PutNumber(file, deck.snr, 1, 5);
  // Multipath power tolerance in dB and delay tolerance in ms.
  PutNumber(file, 3, 2, 5);
  PutNumber(file, 0.1, 2, 5);
  cards_->PutNewLine(file);
}

/// The antenna at one end of the path: 1 the transmitter's, 2 the receiver's.
void ItsScript::SpecifyAntenna(int file, int end, const DeckParameters& deck) {
  const bool transmits = end == 1;
  const Antenna& antenna = transmits ? deck.transmitter_antenna : deck.receiver_antenna;
  const std::string problem = AntennaProblem(antenna);
  if (!problem.empty()) throw Error(errors::kInvalidCall, problem);
  PutName(file, "ANTENNA");
  PutNumber(file, end, 0, 5);
  PutNumber(file, end, 0, 5);
  // The antenna holds from 2 to 30 MHz.
  PutNumber(file, 2, 0, 5);
  PutNumber(file, 30, 0, 5);
  PutNumber(file, antenna.file.empty() ? LeadingNumber(antenna.gain) : 0, 3, 10);
  cards_->PutString(file, "[", 1);
  cards_->PutString(file, antenna.file.empty() ? kIsotropicFile : antenna.file,
                    static_cast<int>(kLongestAntennaFile));
  cards_->PutString(file, "]", 1);
  const Position& here = transmits ? deck.transmitter : deck.receiver;
  const Position& there = transmits ? deck.receiver : deck.transmitter;
  PutNumber(file, BeamAzimuth(antenna, here, there, deck.short_path), 1, 5);
  PutPower(file, transmits ? deck.power : 0);
  cards_->PutNewLine(file);
}

/// In kilowatts. Engines take a power of 0 for another one, so that little must not be rounded to
/// nothing; the written point overrides the four decimals that the card implies.
void ItsScript::PutPower(int file, double watts) {
  const bool little = watts > 0 && watts < 1;
  PutNumber(file, watts / 1000.0, little ? 7 : 4, 10);
}

double ItsScript::BeamAzimuth(const Antenna& antenna, const Position& from, const Position& to,
                              bool short_path) const {
  // An antenna that radiates alike in all directions points nowhere.
  if (antenna.file.empty()) return 0;
  if (!Trim(antenna.azimuth).empty()) return LeadingNumber(antenna.azimuth);
  const Vector way =
      LatLonModule::ComputePositionVector(from, to, short_path ? "S" : "L", false, *diagnostics_);
  return static_cast<double>(way.azimuth);
}

void ItsScript::SpecifyFrequencies(int file, const std::optional<PointOfDeck>& point) {
  PutName(file, "FREQUENCY");
  // A leading 0.00 stands for the FOT of each hour, the others for no further frequency.
  PutNumber(file, 0, 2, 5);
  for (std::size_t band = 1; band < kBandCount; ++band) {
    const auto line = static_cast<double>(kBandLineFrequencies.at(band));
    const double single = point && band == 1 ? point->frequency : 0;
    PutNumber(file, point ? single : line, 2, 5);
  }
  PutNumber(file, 0, 2, 5);
  cards_->PutNewLine(file);
}

}  // namespace skyhop::IONCAPModule
