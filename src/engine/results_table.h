#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace skyhop {

/// Bands 0 to 10: 160, 80, 60, 40, 30, 20, 17, 15, 12, 10 and 6 m.
inline constexpr std::size_t kBandCount = 11;

/// Hours 0 to 24 UTC; 0 and 24 are the same midnight.
inline constexpr std::size_t kHourCount = 25;

/// The frequency, in MHz, at which each band is drawn and tested. Some are 0.1 or 0.2 MHz above the
/// band's lower edge, like the frequencies in the engines' decks.
inline constexpr std::array<float, kBandCount> kBandLineFrequencies = {
    1.8F, 3.5F, 5.3F, 7.1F, 10.1F, 14.1F, 18.1F, 21.1F, 24.9F, 28.2F, 50.1F};

/// The four engine choices of the configuration window, by their index.
enum class EngineChoice : int {
  kNone = -1,
  kIonCap = 0,     ///< "IONCAP LUF && MUF"
  kIcePac = 1,     ///< "ICEPAC LUF && MUF"
  kVoaCap = 2,     ///< "VOACAP LUF && MUF"
  kVoaCapSnr = 3,  ///< "VOACAP SNR && Prob"
};

/// Rows of the results table with a fixed meaning.
namespace rows {
inline constexpr std::size_t kMuf90 = 3;  ///< MUF at 90 % confidence (FOT), the lowest MUF
inline constexpr std::size_t kMuf10 = 4;  ///< MUF at 10 % confidence (HPF), the highest MUF
inline constexpr std::size_t kMuf50 = 6;  ///< median MUF
inline constexpr std::size_t kLuf = 7;    ///< lowest useable frequency
inline constexpr std::size_t kCount = 8;  ///< rows are numbered from 1; row 0 is never used
}  // namespace rows

/// The predicted quantities of a band and hour.
enum class BandQuantity : std::uint8_t { kSnr, kReliability, kMode, kSignalPower };

/// The contents of the engines' results files, hour by hour. Every parse overwrites it.
struct ResultsTable {
  ResultsTable();

  /// Values in MHz by row 1 to 7 and hour 0 to 24. Results with SNR and reliability have 0 for a
  /// missing value.
  std::array<std::array<float, kHourCount>, rows::kCount> frequencies{};

  /// Whether a frequency reaches the required reliability, by hour 0 to 24. Only LUF/MUF results
  /// with a LUF column can set this to false: their engine then prints a negative LUF, whose amount
  /// is the MUF or another frequency, not a LUF.
  std::array<bool, kHourCount> reached{};

  template <class Value>
  using PerBand = std::array<std::array<Value, kHourCount>, kBandCount>;

  PerBand<float> snr{};                  ///< dB, by band and hour
  PerBand<float> reliability{};          ///< fraction of days, 0 to 1
  PerBand<std::string> mode{};           ///< five characters as the engine prints them
  PerBand<std::int16_t> signal_power{};  ///< dBW at the receiver

  /// Whether the file contained this value. If not, the value above is 0 or empty.
  [[nodiscard]] bool Known(BandQuantity quantity, std::size_t band, std::size_t hour) const {
    return (known[band][hour] >> static_cast<unsigned>(quantity) & 1U) != 0;
  }
  /// A bit by BandQuantity.
  PerBand<std::uint8_t> known{};

  /// The number of hours of the day, 0 to 24, that reach the required reliability.
  [[nodiscard]] std::ptrdiff_t ReachedHours() const {
    return std::count(reached.begin() + 1, reached.end(), true);
  }

  /// Range of the frequency axis in MHz.
  float f_min = 10000;
  float f_max = 0;

  [[nodiscard]] float Luf(std::size_t hour) const { return frequencies[rows::kLuf][hour]; }
  [[nodiscard]] float Muf90(std::size_t hour) const { return frequencies[rows::kMuf90][hour]; }
  [[nodiscard]] float Muf50(std::size_t hour) const { return frequencies[rows::kMuf50][hour]; }
  [[nodiscard]] float Muf10(std::size_t hour) const { return frequencies[rows::kMuf10][hour]; }
};

}  // namespace skyhop
