#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "common/diagnostics.h"
#include "engine/results_table.h"

namespace skyhop {

/// Names of the bands by index, as in the band file and in messages of peers.
inline constexpr std::array<std::string_view, kBandCount> kBandNames = {
    "160M", "80M", "60M", "40M", "30M", "20M", "17M", "15M", "12M", "10M", "6M"};

/// Labels of the same bands for the chart.
inline constexpr std::array<std::string_view, kBandCount> kBandLabelTexts = {
    "160 m", "80 m", "60 m", "40 m", "30 m", "20 m", "17 m", "15 m", "12 m", "10 m", "6 m"};

namespace FreqDependentModule {

/// The band table that the user can edit: the frequency ranges of the bands.
///
/// The table is read from "Bands.txt" in the program folder or, if that is missing, from
/// "DefaultBands.txt" beside it. The file is a sequence of records of three fields: band name,
/// lower edge and upper edge in MHz with a decimal point. Commas and line ends separate fields; a
/// field in double quotes may contain commas; blank lines and blanks around fields are ignored.
/// There is no header and no comment. Line ends may be CR LF, LF or CR.
class BandTable {
 public:
  /// The most bands that the table holds.
  static constexpr std::size_t kCapacity = 20;

  struct Band {
    std::string name;  ///< as in the file
    double lower = 0;  ///< MHz, belongs to the band
    double upper = 0;  ///< MHz, belongs to the band
  };

  /// Calls `on_missing` if there is no band file at all, so that the caller can disable the control
  /// that needs bands. May be empty.
  BandTable(std::filesystem::path program_folder, Diagnostics& diagnostics,
            std::function<void()> on_missing = {});

  /// Reads the band file again. All problems go to the error log, not to the caller: no file, a
  /// 20th record (the rest is not read), a record that is malformed or cut off. Keeps the records
  /// before the problem.
  void InitializeBandArray();

  /// Name of the first band in file order with lower <= `frequency` <= upper, in MHz; empty when
  /// there is none.
  [[nodiscard]] std::string GetBandNameForFreq(double frequency) const;

  /// Index 0 to 10 of a band name, in any case; -1 for any other text.
  [[nodiscard]] std::int16_t GetbandIndex(std::string_view name) const;

  /// The bands read, in file order.
  [[nodiscard]] std::span<const Band> Bands() const {
    return {bands_.data(), static_cast<std::size_t>(count_)};
  }

 private:
  [[nodiscard]] std::filesystem::path FindFile();
  void ReadRecords(const std::filesystem::path& path);

  std::filesystem::path program_folder_;
  Diagnostics* diagnostics_;
  std::function<void()> on_missing_;
  std::array<Band, kCapacity> bands_;
  std::int16_t count_ = 0;
};

}  // namespace FreqDependentModule

namespace IONCAPModule {

/// Index 0 to 10 of the band that contains `frequency` (MHz), both edges included; -1 for none. The
/// edges are fixed and independent of the band file.
[[nodiscard]] std::int16_t BandForFreq(float frequency) noexcept;

/// The same with wider edges, so that a pointer near a band's line finds the band.
[[nodiscard]] std::int16_t RelaxedBandForFreq(float frequency) noexcept;

/// A reliability above one of these values, in whole percent, has the open level 1, 2, 3 or 4.
inline constexpr std::array<int, 4> kReliabilityLimits = {20, 40, 60, 80};

/// The open level of a reliability in whole percent; 4 for a value below 0.
[[nodiscard]] std::int16_t ReliabilityLevel(int percent) noexcept;

/// The least share of the days, in percent, for the open levels 0 to 3 of LUF/MUF results.
inline constexpr std::array<int, 4> kOpenShares = {0, 10, 50, 90};

/// The open level of `frequency` (MHz) at `hour` in the results of `engine`: 0 (closed) to 4 with
/// reliabilities, to 3 with LUF and MUFs. 0 if the hour is not 0 to 24 or a reliability is out of
/// range; the error log has the reason then.
[[nodiscard]] std::int16_t FreqOpen(const ResultsTable& table, EngineChoice engine, float frequency,
                                    std::int16_t hour, Diagnostics& diagnostics);

}  // namespace IONCAPModule
}  // namespace skyhop
