#pragma once

#include <filesystem>
#include <optional>

#include "common/diagnostics.h"
#include "engine/prediction_inputs.h"
#include "engine/script_cards.h"

namespace skyhop::IONCAPModule {

/// One frequency at one hour.
struct PointOfDeck {
  int hour = 24;         ///< 1 to 24 UTC
  double frequency = 0;  ///< MHz, up to 99.99; the deck has it in steps of 10 kHz
};

/// Writes the decks that ICEPAC and VOACAP read: fields with written decimal points. A deck for the
/// day has the ten band line frequencies from 80 to 6 m.
class ItsScript {
 public:
  ItsScript(ScriptCards& cards, Diagnostics& diagnostics)
      : cards_(&cards), diagnostics_(&diagnostics) {}

  /// Writes the deck for one method: 26 for the LUF/MUF table, 30 or 20 for SNR and reliability.
  /// Returns whether a complete deck is on disk; if not, the error log has the reason.
  [[nodiscard]] bool CreateScript(const PredictionInputs& inputs, std::int16_t method,
                                  const std::filesystem::path& file);

  /// Writes VOACAP's deck for SNR and reliability (method 30) of one frequency at one hour; an SNR
  /// script, which can be open beside a prediction's. Returns the same.
  [[nodiscard]] bool CreatePointScript(const PredictionInputs& inputs, const PointOfDeck& point,
                                       const std::filesystem::path& file);

 private:
  struct Contents {
    const PredictionInputs& inputs;
    std::int16_t method;
    std::optional<PointOfDeck> point;
  };

  template <class WriteBody>
  [[nodiscard]] bool Create(const char* name, const std::filesystem::path& file, bool snr,
                            WriteBody write);
  void WriteCards(int file, const Contents& contents);
  void SpecifyHours(int file, const Contents& contents);
  void SpecifySunspots(int file, const Contents& contents);
  void SpecifyLabel(int file, const PredictionInputs& inputs);
  void SpecifyCircuit(int file, const PredictionInputs& inputs);
  void SpecifySystem(int file, const PredictionInputs& inputs);
  void SpecifyAntenna(int file, int end, const PredictionInputs& inputs);
  void PutPower(int file, double watts);
  void SpecifyFrequencies(int file, const std::optional<PointOfDeck>& point);
  [[nodiscard]] double BeamAzimuth(const Antenna& antenna, const Position& from, const Position& to,
                                   bool short_path) const;
  void PutName(int file, const char* name) { cards_->PutString(file, name, 10); }
  void PutNumber(int file, double value, int decimals, int width);

  ScriptCards* cards_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::IONCAPModule
