#include "ui/prediction/transceiver_band.h"

#include <cmath>

#include "common/numbers.h"

namespace skyhop {

std::optional<double> TransceiverBand::Frequency() const {
  const std::optional<double> kilohertz = peers_->TransceiverFrequency();
  if (!kilohertz || !(*kilohertz > 0)) return std::nullopt;
  return *kilohertz / 1000;
}

std::string TransceiverBand::NameFor(double megahertz) const {
  return bands_->GetBandNameForFreq(megahertz);
}

std::int16_t TransceiverBand::IndexOf(const std::string& name) const {
  return bands_->GetbandIndex(name);
}

std::string TransceiverBand::UsualFrequency(std::int16_t band) const {
  for (const FreqDependentModule::BandTable::Band& known : bands_->Bands()) {
    if (IndexOf(known.name) != band) continue;
    return NumberText(std::round((known.lower + known.upper) * 500) / 1000);
  }
  return NumberText(
      std::round(double{kBandLineFrequencies.at(static_cast<std::size_t>(band))} * 1000) / 1000);
}

std::optional<std::size_t> TransceiverBand::BandInForce() const {
  if (!configuration_->FreqDependentEnabled()) return std::nullopt;
  const std::optional<double> frequency = Frequency();
  if (!frequency) return std::nullopt;
  const std::int16_t band = IndexOf(NameFor(*frequency));
  if (band < 0) return std::nullopt;
  return static_cast<std::size_t>(band);
}

}  // namespace skyhop
