#include <array>
#include <bitset>
#include <optional>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/results_lines.h"
#include "engine/results_parser.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr std::size_t kTagColumn = 68;
constexpr std::size_t kFirstBandColumn = 17;
constexpr std::size_t kBandWidth = 5;
/// The engine does not predict 160 m in this mode.
constexpr std::size_t kFirstBand = 1;
/// The frequency axis includes a band whose reliability exceeds this value.
constexpr float kOpenReliability = 0.2F;

/// The tags of the lines that are read for an hour, in the order of BandQuantity.
constexpr std::array<const char*, 4> kTags = {"SNR", "REL", "MODE", "S DBW"};

std::optional<BandQuantity> QuantityOf(std::string_view tag) {
  for (std::size_t i = 0; i < kTags.size(); ++i) {
    if (tag == kTags.at(i)) return static_cast<BandQuantity>(i);
  }
  return std::nullopt;
}

/// Converts a number and removes the minus sign of a zero.
float UnsignedZero(std::string_view text) {
  return ToSingle(text) + 0.0F;
}

/// The text of a column that the engine does not use.
bool IsUnused(std::string_view field) {
  return Trim(field) == "-";
}

/// Collects the lines of a METHOD 30 file into the table.
class Method30Reader {
 public:
  Method30Reader(ResultsTable& table, std::vector<std::string>& faults)
      : table_(&table), faults_(&faults) {}

  /// Reads one line that is not blank. Returns false if the line ends the results.
  bool Take(const Place& place) {
    const std::string tag = UpperCase(Trim(Columns(place.line, kTagColumn, place.line.size())));
    if (tag == "FREQ") return TakeFrequencies(place);
    const std::optional<BandQuantity> quantity = QuantityOf(tag);
    if (!in_hour_ || !quantity) return true;
    if (taken_.test(static_cast<std::size_t>(*quantity))) {
      // The line belongs to the next hour, whose own FREQ line is missing.
      EndHour();
      faults_->push_back("hour " + std::to_string(hour_) + ": a second line " + tag +
                         ", of an hour that is not told" + Where(place));
      return true;
    }
    taken_.set(static_cast<std::size_t>(*quantity));
    TakeBands(*quantity, place);
    return true;
  }

  /// Ends the current hour.
  void EndHour() {
    if (!in_hour_) return;
    in_hour_ = false;
    complete_.set(hour_, taken_.all());
    std::string missing;
    for (std::size_t i = 0; i < kTags.size(); ++i) {
      if (!taken_.test(i)) missing += (missing.empty() ? " " : ", ") + std::string(kTags.at(i));
    }
    if (!missing.empty()) {
      faults_->push_back("hour " + std::to_string(hour_) + ": no line" + missing);
    }
  }

  [[nodiscard]] int LastHour() const { return static_cast<int>(hour_); }
  [[nodiscard]] int CompleteHours() const { return static_cast<int>((complete_ >> 1U).count()); }

 private:
  bool TakeFrequencies(const Place& place) {
    EndHour();
    const std::optional<std::int16_t> hour = ReadHour(place);
    if (!hour) return true;
    if (*hour >= static_cast<int>(kHourCount)) return false;
    in_hour_ = true;
    taken_.reset();
    hour_ = static_cast<std::size_t>(*hour);
    auto& rows = table_->frequencies;
    TakeFrequency(place, "MUF", 7, 6, rows::kMuf50);
    // A first frequency of 10 MHz or more begins in the last of six columns.
    const std::size_t width = WholeNumberText(Columns(place.line, 13, 6)) ? 6 : 4;
    TakeFrequency(place, "FOT", 13, width, rows::kMuf90);
    rows[rows::kMuf10][hour_] = 0;
    rows[rows::kLuf][hour_] = 0;
    if (hour_ == kHourCount - 1) {
      for (const std::size_t row : {rows::kMuf50, rows::kMuf90, rows::kMuf10, rows::kLuf}) {
        rows[row][0] = rows[row][hour_];
      }
    }
    return true;
  }

  void TakeBands(BandQuantity quantity, const Place& place) {
    switch (quantity) {
      case BandQuantity::kSnr:
        ForEachBand(quantity, table_->snr, place, UnsignedZero);
        break;
      case BandQuantity::kReliability:
        ForEachBand(quantity, table_->reliability, place, UnsignedZero);
        WidenAxis();
        break;
      case BandQuantity::kMode:
        ForEachBand(quantity, table_->mode, place,
                    [](std::string_view text) { return std::string(text); });
        break;
      case BandQuantity::kSignalPower:
        ForEachBand(quantity, table_->signal_power, place, [](std::string_view text) {
          return RoundToInteger(static_cast<double>(ToSingle(text)));
        });
        break;
    }
  }

  /// Reads the hour of a FREQ line. Returns nothing if the following lines cannot be assigned to an
  /// hour.
  std::optional<std::int16_t> ReadHour(const Place& place) {
    try {
      const std::int16_t hour =
          Field(place, 1, 6, [](std::string_view text) { return ToInteger(text); });
      if (hour >= 0) return hour;
      faults_->push_back("hour " + std::to_string(hour) + " is not 0 to 24" + Where(place));
    } catch (const Error& error) {
      faults_->push_back(std::string("an hour cannot be read: ") + error.what());
    }
    return std::nullopt;
  }

  void TakeFrequency(const Place& place, const char* name, std::size_t first, std::size_t width,
                     std::size_t row) {
    float& value = table_->frequencies[row][hour_];
    value = 0;
    if (IsUnused(Columns(place.line, first, width))) return;
    try {
      value = SingleField(place, first, width);
      Widen(value);
    } catch (const Error& error) {
      Fault(name, error);
    }
  }

  template <class Value, class Convert>
  void ForEachBand(BandQuantity quantity, ResultsTable::PerBand<Value>& values, const Place& place,
                   Convert convert) {
    for (std::size_t band = kFirstBand; band < kBandCount; ++band) {
      const std::size_t first = kFirstBandColumn + (band - kFirstBand) * kBandWidth;
      Value& value = values[band][hour_];
      bool known = !IsUnused(Columns(place.line, first, kBandWidth));
      value = Value();
      try {
        if (known) value = Field(place, first, kBandWidth, convert);
      } catch (const Error& error) {
        known = false;
        Fault(FixedText(static_cast<double>(kBandLineFrequencies.at(band)), 1) + " MHz", error);
      }
      SetKnown(quantity, band, known);
      if (hour_ == kHourCount - 1) {
        values[band][0] = value;
        table_->known[band][0] = table_->known[band][hour_];
      }
    }
  }

  void SetKnown(BandQuantity quantity, std::size_t band, bool known) {
    const auto bit = static_cast<std::uint8_t>(1U << static_cast<unsigned>(quantity));
    std::uint8_t& bits = table_->known[band][hour_];
    bits = static_cast<std::uint8_t>(known ? bits | bit : bits & ~bit);
  }

  static std::string Where(const Place& place) {
    return " (" + *place.file_name + ", line " + std::to_string(place.line_number) + ")";
  }

  void Fault(const std::string& what, const Error& error) {
    faults_->push_back("hour " + std::to_string(hour_) + ", " + what + ": " + error.what());
  }

  void WidenAxis() {
    for (std::size_t band = kFirstBand; band < kBandCount; ++band) {
      if (table_->reliability[band][hour_] > kOpenReliability) Widen(kBandLineFrequencies[band]);
    }
  }

  void Widen(float frequency) {
    if (frequency >= table_->f_max) table_->f_max = frequency;
    if (frequency < table_->f_min) table_->f_min = frequency;
  }

  ResultsTable* table_;
  std::vector<std::string>* faults_;
  std::size_t hour_ = 0;
  bool in_hour_ = false;
  std::bitset<kTags.size()> taken_;  // of the hour
  std::bitset<kHourCount> complete_;
};

void ClearMethod30(ResultsTable& table) {
  for (const std::size_t row : {rows::kMuf90, rows::kMuf10, rows::kMuf50, rows::kLuf}) {
    table.frequencies[row].fill(0);
  }
  table.snr = {};
  table.reliability = {};
  table.mode = {};
  table.signal_power = {};
  table.known = {};
  table.reached.fill(true);
  table.f_min = 10000;
  table.f_max = 0;
}

}  // namespace

Method30Outcome ParseMethod30Results(std::string_view text, const std::string& file_name,
                                     ResultsTable& table) {
  LineReader lines(text);
  Method30Outcome outcome;
  while (const std::optional<std::string_view> line = lines.Next()) {
    if (line->find("MULTIPATH POWER TOLERANCE") != std::string_view::npos) {
      outcome.header_found = true;
      break;
    }
  }
  if (outcome.header_found) {
    ClearMethod30(table);
    Method30Reader reader(table, outcome.faults);
    while (const std::optional<std::string_view> line = lines.Next()) {
      if (line->find("END OF RUN") != std::string_view::npos) break;
      if (Trim(*line).empty()) continue;
      if (!reader.Take({&file_name, lines.Number(), *line})) break;
    }
    reader.EndHour();
    outcome.last_hour = reader.LastHour();
    outcome.complete_hours = reader.CompleteHours();
    RoundAxis(table);
  }
  outcome.lines = lines.Number();
  return outcome;
}

}  // namespace skyhop::IONCAPModule
