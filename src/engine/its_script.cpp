#include "engine/its_script.h"

#include <algorithm>
#include <string>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "geo/dx_grid.h"
#include "geo/great_circle.h"
#include "geo/path_services.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::int16_t kPointMethod = 30;

/// The card has this angle for a take-off angle of 0, which the engines would read as 3 degrees.
constexpr double kHorizon = 0.1;

/// The highest reliability in the two digits of the card.
constexpr double kHighestAvailability = 99;

/// A text as decks can hold it: what is not printable ASCII becomes a question mark.
std::string AsciiText(std::string_view text) {
  std::string ascii;
  for (const char c : text) {
    const bool continues = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    if (!continues) ascii += c >= ' ' && c <= '~' ? c : '?';
  }
  return ascii;
}

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

bool ItsScript::CreateScript(const PredictionInputs& inputs, std::int16_t method,
                             const std::filesystem::path& file) {
  return Create("IONCAPModule.CreateITSScript", file, false, [&](int script) {
    WriteCards(script, {inputs, method, std::nullopt});
  });
}

bool ItsScript::CreatePointScript(const PredictionInputs& inputs, const PointOfDeck& point,
                                  const std::filesystem::path& file) {
  return Create("IONCAPModule.CreateSNRScript", file, true, [&](int script) {
    WriteCards(script, {inputs, kPointMethod, point});
  });
}

void ItsScript::WriteCards(int file, const Contents& contents) {
  const PredictionInputs& inputs = contents.inputs;
  // One page for the whole day: no page heading falls between the hours.
  cards_->PutLine(file, "LINEMAX    9999       number of lines-per-page");
  cards_->PutLine(file, "COEFFS    CCIR");
  SpecifyHours(file, contents);
  SpecifySunspots(file, contents);
  SpecifyLabel(file, inputs);
  SpecifyCircuit(file, inputs);
  SpecifySystem(file, inputs);
  cards_->PutLine(file, "FPROB      1.00 1.00 1.00 0.00");
  SpecifyAntenna(file, 1, inputs);
  SpecifyAntenna(file, 2, inputs);
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
  PutNumber(file, contents.inputs.Year(), 0, 5);
  // Without a day the engine computes the monthly median.
  PutNumber(file, contents.inputs.Month(), 2, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifySunspots(int file, const Contents& contents) {
  PutName(file, "SUNSPOT");
  PutNumber(file, static_cast<double>(contents.inputs.sunspot_number), 1, 5);
  if (contents.inputs.engine == EngineChoice::kIcePac) {
    PutNumber(file, static_cast<double>(ComputeQindex(contents.inputs.k_index)), 2, 5);
  }
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyLabel(int file, const PredictionInputs& inputs) {
  PutName(file, "LABEL");
  const auto put = [&](const std::string& name, const Position& position) {
    cards_->PutString(
        file, AsciiText(name) + " " + DXGridModule::GetGridSquare(position, *diagnostics_), 20);
  };
  const std::string prefix(Trim(inputs.prefix));
  const std::string dx = prefix.empty() ? "DX STATION" : "DX " + prefix;
  put(inputs.to_dx ? "YOUR STATION" : dx, inputs.transmitter);
  put(inputs.to_dx ? dx : "YOUR STATION", inputs.receiver);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyCircuit(int file, const PredictionInputs& inputs) {
  PutName(file, "CIRCUIT");
  const auto coordinate = [&](const Angle& angle, const char* letter, int width) {
    PutNumber(file, static_cast<double>(Magnitude(angle)), 2, width);
    cards_->PutString(file, letter, 1);
  };
  coordinate(inputs.transmitter.latitude, LatitudeLetter(inputs.transmitter.latitude), 5);
  coordinate(inputs.transmitter.longitude, LongitudeLetter(inputs.transmitter.longitude), 9);
  coordinate(inputs.receiver.latitude, LatitudeLetter(inputs.receiver.latitude), 9);
  coordinate(inputs.receiver.longitude, LongitudeLetter(inputs.receiver.longitude), 9);
  cards_->PutString(file, inputs.short_path ? "  S" : "  L", 4);
  PutNumber(file, inputs.short_path ? 0 : 1, 0, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifySystem(int file, const PredictionInputs& inputs) {
  PutName(file, "SYSTEM");
  PutNumber(file, 1, 2, 5);
  cards_->PutString(file, NoiseCode(inputs.noise), 5);
  PutNumber(file, std::max(inputs.takeoff, kHorizon), 2, 5);
  PutNumber(file, std::min(inputs.availability, kHighestAvailability), 0, 5);
  PutNumber(file, inputs.snr, 1, 5);
  // Multipath power tolerance in dB and delay tolerance in ms.
  PutNumber(file, 3, 2, 5);
  PutNumber(file, 0.1, 2, 5);
  cards_->PutNewLine(file);
}

/// The antenna at one end of the path: 1 the transmitter's, 2 the receiver's.
void ItsScript::SpecifyAntenna(int file, int end, const PredictionInputs& inputs) {
  const bool transmits = end == 1;
  const Antenna& antenna = transmits ? inputs.transmitter_antenna : inputs.receiver_antenna;
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
  const Position& here = transmits ? inputs.transmitter : inputs.receiver;
  const Position& there = transmits ? inputs.receiver : inputs.transmitter;
  PutNumber(file, BeamAzimuth(antenna, here, there, inputs.short_path), 1, 5);
  PutPower(file, transmits ? inputs.power : 0);
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
  // The first 0.00 means the FOT of each hour; the others mean that no frequency follows.
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
