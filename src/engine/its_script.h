#pragma once

#include <filesystem>

#include "common/diagnostics.h"
#include "engine/deck_parameters.h"
#include "engine/results_table.h"
#include "engine/script_cards.h"

namespace skyhop::IONCAPModule {

/// Writes the deck that ICEPAC and VOACAP read: fields with written decimal points, isotropic
/// antennas at both ends, and the ten band line frequencies from 80 to 6 m.
class ItsScript {
 public:
  /// All must outlive this object.
  ItsScript(ScriptCards& cards, const PredictionPanel& panel, const Parameters& parameters,
            Diagnostics& diagnostics)
      : cards_(&cards), panel_(&panel), parameters_(&parameters), diagnostics_(&diagnostics) {}

  /// Writes the deck of `engine` for one method: 26 for the LUF/MUF table, 30 for SNR and
  /// reliability. Returns whether a complete deck is on disk; otherwise the error log says why not.
  [[nodiscard]] bool CreateScript(EngineChoice engine, std::int16_t method,
                                  const std::filesystem::path& file);

 private:
  void WriteCards(int file, EngineChoice engine, std::int16_t method);
  void SpecifyHours(int file, const DeckParameters& deck);
  void SpecifySunspots(int file, EngineChoice engine, const DeckParameters& deck);
  void SpecifyCircuit(int file, const DeckParameters& deck);
  void SpecifySystem(int file, const DeckParameters& deck);
  void SpecifyAntenna(int file, int station, double power);
  void SpecifyFrequencies(int file);
  void PutName(int file, const char* name) { cards_->PutString(file, name, 10); }
  void PutNumber(int file, double value, int decimals, int width);

  ScriptCards* cards_;
  const PredictionPanel* panel_;
  const Parameters* parameters_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::IONCAPModule
