#pragma once

#include <filesystem>

#include "common/diagnostics.h"
#include "engine/deck_parameters.h"
#include "engine/script_cards.h"

namespace skyhop::IONCAPModule {

/// Writes the IONCAP deck.
class IonCapScript {
 public:
  /// All must outlive this object.
  IonCapScript(ScriptCards& cards, const PredictionPanel& panel, const Parameters& parameters,
               Diagnostics& diagnostics)
      : cards_(&cards), panel_(&panel), parameters_(&parameters), diagnostics_(&diagnostics) {}

  /// Writes the whole deck for one method. Returns whether a complete deck is on disk; otherwise
  /// the error log says why not.
  [[nodiscard]] bool CreateIONCAPScript(std::int16_t method, const std::filesystem::path& file);

 private:
  void SpecifyCircuit(int file, const DeckParameters& deck);
  void SpecifySystem(int file, const DeckParameters& deck);
  void SpecifyMonth(int file, const DeckParameters& deck);
  void SpecifySunspots(int file, const DeckParameters& deck);
  void SpecifyTime(int file);
  void SpecifyAntennaSystem(int file);
  void SpecifyAntenna(int file, std::int16_t a, std::int16_t b, std::int16_t c, std::int16_t d,
                      std::int16_t e, std::int16_t f);
  void SpecifyMethod(int file, std::int16_t method);
  void SpecifyExecute(int file);
  void SpecifyQuit(int file);
  void PutCoordinate(int file, const Angle& angle, const char* letter);
  void PutPointed(int file, double value);

  ScriptCards* cards_;
  const PredictionPanel* panel_;
  const Parameters* parameters_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::IONCAPModule
