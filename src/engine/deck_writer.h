#pragma once

#include <filesystem>

#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/ioncap_script.h"
#include "engine/its_script.h"
#include "engine/prediction_inputs.h"
#include "engine/script_cards.h"

namespace skyhop::IONCAPModule {

/// Writes the decks of all engines. A writer must not be used again while one of its calls waits
/// for a file.
class DeckWriter {
 public:
  DeckWriter(Pause& pause, Diagnostics& diagnostics)
      : cards_(pause, diagnostics), ioncap_(cards_, diagnostics), its_(cards_, diagnostics) {}

  /// Writes the deck of a whole day for the engine that `inputs` names: the LUF/MUF table, or SNR
  /// and reliability for kVoaCapSnr. Returns whether a complete deck is on disk; if not, the error
  /// log has the reason.
  [[nodiscard]] bool Write(const PredictionInputs& inputs, const std::filesystem::path& file) {
    if (inputs.engine == EngineChoice::kIonCap) {
      return ioncap_.CreateIONCAPScript(inputs, kLufMufMethod, file);
    }
    const bool snr = inputs.engine == EngineChoice::kVoaCapSnr;
    return its_.CreateScript(inputs, snr ? kSnrMethod : kLufMufMethod, file);
  }

  /// Writes the deck of one frequency at one hour: see ItsScript::CreatePointScript.
  [[nodiscard]] bool WritePoint(const PredictionInputs& inputs, const PointOfDeck& point,
                                const std::filesystem::path& file) {
    return its_.CreatePointScript(inputs, point, file);
  }

 private:
  static constexpr std::int16_t kLufMufMethod = 26;
  static constexpr std::int16_t kSnrMethod = 30;

  ScriptCards cards_;
  IonCapScript ioncap_;
  ItsScript its_;
};

}  // namespace skyhop::IONCAPModule
