#include "engine/its_script.h"

#include <string>

#include "common/numbers.h"
#include "geo/path_services.h"

namespace skyhop::IONCAPModule {

bool ItsScript::CreateScript(EngineChoice engine, std::int16_t method,
                             const std::filesystem::path& file) {
  return diagnostics_->Trap("IONCAPModule.CreateITSScript", false, [&] {
    const int script = cards_->InitializeScript(file, false);
    if (script == -1) return false;
    // The file is closed whatever happens to its cards.
    const bool written = diagnostics_->Trap("IONCAPModule.CreateITSScript",
                                            [&] { WriteCards(script, engine, method); });
    return cards_->CloseScript(script) && written;
  });
}

void ItsScript::WriteCards(int file, EngineChoice engine, std::int16_t method) {
  const DeckParameters deck = ReadDeckParameters(*panel_, *parameters_);
  // One page for the whole day: no page heading falls between the hours.
  cards_->PutLine(file, "LINEMAX    9999       number of lines-per-page");
  cards_->PutLine(file, "COEFFS    CCIR");
  SpecifyHours(file, deck);
  SpecifySunspots(file, engine, deck);
  PutName(file, "LABEL");
  const bool to = panel_->Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  cards_->PutString(file, to ? "YOUR STATION" : "DX STATION", 20);
  cards_->PutString(file, to ? "DX STATION" : "YOUR STATION", 20);
  cards_->PutNewLine(file);
  SpecifyCircuit(file, deck);
  SpecifySystem(file, deck);
  cards_->PutLine(file, "FPROB      1.00 1.00 1.00 0.00");
  SpecifyAntenna(file, 1, deck.power / 1000.0);
  SpecifyAntenna(file, 2, 0);
  SpecifyFrequencies(file);
  PutName(file, "METHOD");
  PutNumber(file, method, 0, 5);
  PutNumber(file, 0, 0, 5);
  cards_->PutNewLine(file);
  cards_->PutLine(file, "EXECUTE");
  cards_->PutLine(file, "QUIT");
}

void ItsScript::PutNumber(int file, double value, int decimals, int width) {
  cards_->PutRightString(file, FixedText(value, decimals), width);
}

void ItsScript::SpecifyHours(int file, const DeckParameters& deck) {
  PutName(file, "TIME");
  // First hour, last hour, step, and hours in UTC.
  for (const int value : {1, 24, 1, 1}) PutNumber(file, value, 0, 5);
  cards_->PutNewLine(file);
  PutName(file, "MONTH");
  PutNumber(file, deck.year, 0, 5);
  // Without a day the engine computes the monthly median.
  PutNumber(file, deck.month, 2, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifySunspots(int file, EngineChoice engine, const DeckParameters& deck) {
  PutName(file, "SUNSPOT");
  PutNumber(file, static_cast<double>(deck.sunspot_number), 1, 5);
  if (engine == EngineChoice::kIcePac) {
    const float k_index = StoreSingle(LeadingNumber(panel_->Text(PanelText::kKindex)));
    PutNumber(file, static_cast<double>(ComputeQindex(k_index)), 2, 5);
  }
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
  PutNumber(file, deck.takeoff, 2, 5);
  PutNumber(file, deck.availability, 0, 5);
  PutNumber(file, deck.snr, 1, 5);
  // Multipath power tolerance in dB and delay tolerance in ms.
  PutNumber(file, 3, 2, 5);
  PutNumber(file, 0.1, 2, 5);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyAntenna(int file, int station, double power) {
  PutName(file, "ANTENNA");
  PutNumber(file, station, 0, 5);
  PutNumber(file, station, 0, 5);
  // The antenna holds from 2 to 30 MHz.
  PutNumber(file, 2, 0, 5);
  PutNumber(file, 30, 0, 5);
  PutNumber(file, 0, 3, 10);
  cards_->PutString(file, "[default/isotrope     ]", 23);
  PutNumber(file, 0, 1, 5);
  PutNumber(file, power, 4, 10);
  cards_->PutNewLine(file);
}

void ItsScript::SpecifyFrequencies(int file) {
  PutName(file, "FREQUENCY");
  // A leading 0.00 stands for the FOT of each hour, a trailing one for no further frequency.
  PutNumber(file, 0, 2, 5);
  for (std::size_t band = 1; band < kBandCount; ++band) {
    PutNumber(file, static_cast<double>(kBandLineFrequencies.at(band)), 2, 5);
  }
  PutNumber(file, 0, 2, 5);
  cards_->PutNewLine(file);
}

}  // namespace skyhop::IONCAPModule
