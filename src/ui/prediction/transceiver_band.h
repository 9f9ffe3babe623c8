#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bands/bands.h"
#include "ui/shared/configuration.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The transceiver's frequency and its band. While frequency-dependent settings are enabled, the
/// settings of that band take the place of the window's power and take-off angle.
class TransceiverBand {
 public:
  TransceiverBand(const Configuration& configuration, FreqDependentModule::BandTable& bands,
                  PeerLinks& peers)
      : configuration_(&configuration), bands_(&bands), peers_(&peers) {}

  /// The transceiver's frequency in MHz; nothing while it is not known.
  [[nodiscard]] std::optional<double> Frequency() const;
  /// Name of a frequency's band, empty for none, and index of a band, -1 for none.
  [[nodiscard]] std::string NameFor(double megahertz) const;
  [[nodiscard]] std::int16_t IndexOf(const std::string& name) const;
  /// The frequency in MHz to predict a band with: its middle, as the band file has its edges, since
  /// a prediction hardly differs within a band. Without them, the frequency of the chart's line.
  [[nodiscard]] std::string UsualFrequency(std::int16_t band) const;

  /// The index of the band whose settings are in force; nothing when none are.
  [[nodiscard]] std::optional<std::size_t> BandInForce() const;
  [[nodiscard]] const BandSettings& Settings(std::size_t band) const {
    return configuration_->Band(band);
  }

 private:
  const Configuration* configuration_;
  FreqDependentModule::BandTable* bands_;
  PeerLinks* peers_;
};

}  // namespace skyhop
