#include "bands/bands.h"

#include <algorithm>
#include <cmath>
#include <system_error>
#include <utility>

#include "common/errors.h"
#include "common/files.h"
#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {
namespace {

/// Larger than any real band file, so that a file of another kind is not read whole.
constexpr std::size_t kFileLimit = 1U << 20U;

/// Splits the content of a band file into fields.
class FieldReader {
 public:
  explicit FieldReader(std::string_view content) : content_(content) {
    // Skip the byte order mark that some editors write at the start of a file.
    if (content_.starts_with("\xEF\xBB\xBF")) at_ = 3;
  }

  /// Skips blanks and line ends. Returns whether the end of the content follows.
  bool AtEnd() {
    while (at_ < content_.size() && (IsBlank(content_[at_]) || IsLineEnd(content_[at_]))) Skip();
    return at_ == content_.size();
  }

  /// The next field. Throws Error 62 (there is none, or its quotes are not closed) or 13 (text
  /// between closing quotes and comma).
  std::string_view Next() {
    const bool past_end = AtEnd();
    field_line_ = line_;
    if (past_end) {
      throw Error(errors::kInputPastEnd, "Input past end of file: the last band is incomplete");
    }
    return content_[at_] == '"' ? Quoted() : Plain();
  }

  /// Line number, from 1, at which the field that Next() returned last begins.
  [[nodiscard]] int FieldLine() const { return field_line_; }

 private:
  static bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

  void Skip() {
    const char c = content_[at_++];
    if (c == '\r' && at_ < content_.size() && content_[at_] == '\n') ++at_;
    if (IsLineEnd(c)) ++line_;
  }

  std::string_view Plain() {
    const std::size_t end = std::min(content_.find_first_of(",\r\n", at_), content_.size());
    const std::string_view field = Trim(content_.substr(at_, end - at_));
    at_ = end;
    SkipComma();
    return field;
  }

  std::string_view Quoted() {
    const std::size_t begin = at_ + 1;
    const std::size_t end = content_.find_first_of("\"\r\n", begin);
    if (end == std::string_view::npos || content_[end] != '"') {
      throw Error(errors::kInputPastEnd, "Input past end of line: quotes are not closed");
    }
    at_ = end + 1;
    while (at_ < content_.size() && IsBlank(content_[at_])) ++at_;
    if (at_ < content_.size() && content_[at_] != ',' && !IsLineEnd(content_[at_])) {
      throw Error(errors::kTypeMismatch, "Type mismatch: a comma is missing after closing quotes");
    }
    SkipComma();
    return content_.substr(begin, end - begin);
  }

  void SkipComma() {
    if (at_ < content_.size() && content_[at_] == ',') ++at_;
  }

  std::string_view content_;
  std::size_t at_ = 0;
  int line_ = 1;
  int field_line_ = 1;
};

bool FileExists(const std::filesystem::path& path) {
  std::error_code ignored;
  const std::filesystem::file_status status = std::filesystem::status(path, ignored);
  return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

struct BandEdges {
  float lower;
  float upper;
};
using EdgeTable = std::array<BandEdges, kBandCount>;

constexpr EdgeTable kStrictEdges = {{{1.8F, 2.0F},
                                     {3.5F, 4.0F},
                                     {5.3F, 5.5F},
                                     {7.0F, 7.3F},
                                     {10.1F, 10.2F},
                                     {14.0F, 14.35F},
                                     {18.0F, 18.2F},
                                     {21.0F, 21.5F},
                                     {24.8F, 25.0F},
                                     {28.0F, 29.7F},
                                     {50.0F, 54.0F}}};

constexpr EdgeTable kRelaxedEdges = {{{1.5F, 2.5F},
                                      {3.0F, 4.5F},
                                      {5.0F, 5.5F},
                                      {6.5F, 8.0F},
                                      {9.5F, 11.0F},
                                      {13.5F, 15.0F},
                                      {17.0F, 19.0F},
                                      {20.0F, 22.0F},
                                      {24.0F, 26.0F},
                                      {27.0F, 30.0F},
                                      {49.0F, 55.0F}}};

std::int16_t FindBand(const EdgeTable& edges, float frequency) noexcept {
  for (std::size_t band = 0; band < edges.size(); ++band) {
    if (edges[band].lower <= frequency && frequency <= edges[band].upper) {
      return static_cast<std::int16_t>(band);
    }
  }
  return -1;
}

}  // namespace

namespace FreqDependentModule {

BandTable::BandTable(std::filesystem::path program_folder, Diagnostics& diagnostics,
                     std::function<void()> on_missing)
    : program_folder_(std::move(program_folder)),
      diagnostics_(&diagnostics),
      on_missing_(std::move(on_missing)) {}

void BandTable::InitializeBandArray() {
  count_ = 0;
  diagnostics_->Trap("FreqDependentModule.InitializeBandArray", [&] {
    const std::filesystem::path path = FindFile();
    if (!path.empty()) ReadRecords(path);
  });
}

std::filesystem::path BandTable::FindFile() {
  std::filesystem::path own = program_folder_ / "Bands.txt";
  if (FileExists(own)) return own;
  std::filesystem::path distributed = program_folder_ / "DefaultBands.txt";
  if (FileExists(distributed)) return distributed;
  diagnostics_->ErrorLog("Missing band definition file in " + PathText(distributed));
  if (on_missing_) on_missing_();
  return {};
}

void BandTable::ReadRecords(const std::filesystem::path& path) {
  const std::string content = ReadFile(path, kFileLimit);
  FieldReader reader(content);
  try {
    while (!reader.AtEnd()) {
      Band band;
      band.name = reader.Next();
      band.lower = ToDouble(reader.Next());
      band.upper = ToDouble(reader.Next());
      bands_.at(static_cast<std::size_t>(count_)) = std::move(band);
      ++count_;
      // Test this before the end of the file, so that an exactly full table is reported too.
      if (count_ == static_cast<std::int16_t>(kCapacity)) {
        diagnostics_->ErrorLog("More than " + std::to_string(kCapacity) +
                               " band definitions found in " + PathText(path));
        return;
      }
    }
  } catch (const Error& error) {
    throw Error(error.Number(), std::string(error.what()) + " (" + PathText(path) + ", line " +
                                    std::to_string(reader.FieldLine()) + ")");
  }
}

std::string BandTable::GetBandNameForFreq(double frequency) const {
  return diagnostics_->Trap("FreqDependentModule.GetBandNameForFreq", std::string(), [&] {
    const std::span<const Band> bands = Bands();
    const auto found = std::find_if(bands.begin(), bands.end(), [&](const Band& band) {
      return band.lower <= frequency && frequency <= band.upper;
    });
    return found == bands.end() ? std::string() : found->name;
  });
}

std::int16_t BandTable::GetbandIndex(std::string_view name) const {
  return diagnostics_->Trap("FreqDependentModule.GetbandIndex", std::int16_t{-1}, [&] {
    const auto* const found =
        std::find_if(kBandNames.begin(), kBandNames.end(),
                     [&](std::string_view known) { return EqualsIgnoringCase(known, name); });
    return static_cast<std::int16_t>(found == kBandNames.end() ? -1 : found - kBandNames.begin());
  });
}

}  // namespace FreqDependentModule

namespace IONCAPModule {
namespace {

std::int16_t LevelOfBand(const ResultsTable& table, float frequency, std::size_t hour) {
  const std::int16_t band = BandForFreq(frequency);
  if (band < 0) return 0;
  // Single precision on purpose: 100 x 0.21 is 20.999999 in double and would be cut to 20.
  const auto percent =
      static_cast<float>(100.0 * table.reliability[static_cast<std::size_t>(band)][hour]);
  return ReliabilityLevel(RoundToInteger(std::floor(percent)));
}

std::int16_t CriticalFrequencyLevel(const ResultsTable& table, float frequency, std::size_t hour) {
  if (frequency < table.Luf(hour)) return 0;
  if (frequency < table.Muf90(hour)) return 3;
  if (frequency < table.Muf50(hour)) return 2;
  return frequency < table.Muf10(hour) ? 1 : 0;
}

}  // namespace

std::int16_t BandForFreq(float frequency) noexcept {
  return FindBand(kStrictEdges, frequency);
}

std::int16_t RelaxedBandForFreq(float frequency) noexcept {
  return FindBand(kRelaxedEdges, frequency);
}

std::int16_t ReliabilityLevel(int percent) noexcept {
  if (percent < 0) return static_cast<std::int16_t>(kReliabilityLimits.size());
  const auto* const above =
      std::lower_bound(kReliabilityLimits.begin(), kReliabilityLimits.end(), percent);
  return static_cast<std::int16_t>(above - kReliabilityLimits.begin());
}

std::int16_t FreqOpen(const ResultsTable& table, EngineChoice engine, float frequency,
                      std::int16_t hour, Diagnostics& diagnostics) {
  return diagnostics.Trap("IONCAPModule.FreqOpen", std::int16_t{0}, [&] {
    if (hour < 0 || hour >= static_cast<std::int16_t>(kHourCount)) {
      throw Error(errors::kSubscript,
                  "Subscript out of range: hour " + std::to_string(hour) + " is not 0 to 24");
    }
    const auto index = static_cast<std::size_t>(hour);
    return engine == EngineChoice::kVoaCapSnr ? LevelOfBand(table, frequency, index)
                                              : CriticalFrequencyLevel(table, frequency, index);
  });
}

}  // namespace IONCAPModule
}  // namespace skyhop
