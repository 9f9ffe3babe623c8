#pragma once

#include <filesystem>

#include "common/diagnostics.h"
#include "engine/prediction_inputs.h"
#include "engine/script_cards.h"

namespace skyhop::IONCAPModule {

/// Writes the IONCAP deck.
class IonCapScript {
 public:
  IonCapScript(ScriptCards& cards, Diagnostics& diagnostics)
      : cards_(&cards), diagnostics_(&diagnostics) {}

  /// Writes the whole deck for one method. Returns whether a complete deck is on disk; if not, the
  /// error log has the reason.
  [[nodiscard]] bool CreateIONCAPScript(const PredictionInputs& inputs, std::int16_t method,
                                        const std::filesystem::path& file);

 private:
  void SpecifyCircuit(int file, const PredictionInputs& inputs);
  void SpecifySystem(int file, const PredictionInputs& inputs);
  void SpecifyMonth(int file, const PredictionInputs& inputs);
  void SpecifySunspots(int file, const PredictionInputs& inputs);
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
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::IONCAPModule
