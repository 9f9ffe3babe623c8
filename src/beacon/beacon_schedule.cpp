#include "beacon/beacon_schedule.h"

#include <algorithm>
#include <cmath>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop::BeaconModule {
namespace {

constexpr double kShortestSlot = 0.5;  // s
constexpr double kLongestSlot = 3600;  // s
constexpr double kLowestFrequency = 100;
constexpr double kHighestFrequency = 500'000;
constexpr std::size_t kMostFrequencies = 10;

/// Reads the records of one file. The frequencies keep their columns until the end, even those that
/// cannot be read, since the calls' times depend on them.
class ScheduleReader {
 public:
  ScheduleReader(const std::string& file, const BeaconLocations& known,
                 std::vector<FileProblem>& problems)
      : file_(&file), known_(&known), problems_(&problems) {}

  void Read(const Record& record) {
    record_ = &record;
    const std::string& first = record.fields.front().text;
    if (EqualsIgnoringCase(first, "slot")) {
      ReadSlotLength();
    } else if (EqualsIgnoringCase(first, "frequencies")) {
      ReadFrequencies();
    } else {
      ReadSlot();
    }
  }

  std::optional<SlotTable> Table() {
    record_ = nullptr;
    const auto none = [this](const char* text) {
      Tell(0, text);
      return std::nullopt;
    };
    if (unusable_) return std::nullopt;
    if (frequencies_.empty()) return none("there is no line with frequencies");
    if (lines_.empty()) return none("there is no slot");
    SlotTable table;
    table.slot = slot_;
    table.slots.resize(lines_.size());
    if (table.Cycle() > std::chrono::days(1)) return none("the cycle is longer than a day");
    for (std::size_t column = 0; column < frequencies_.size(); ++column) {
      if (!frequencies_[column]) continue;
      table.frequencies.push_back(*frequencies_[column]);
      for (std::size_t slot = 0; slot < lines_.size(); ++slot) {
        table.slots[slot].push_back(CallAt(slot, column));
      }
    }
    if (table.frequencies.empty()) return none("no frequency can be read");
    return table;
  }

 private:
  void Tell(std::size_t field, const std::string& text) {
    const bool somewhere = record_ != nullptr;
    const int column =
        somewhere && field < record_->fields.size() ? record_->fields[field].column : 0;
    problems_->push_back({*file_, somewhere ? record_->line : 0, column, text});
  }

  void ReadSlotLength() {
    const std::string text = record_->fields.size() == 2 ? record_->fields[1].text : "";
    const std::optional<double> seconds = WholeNumberText(text);
    if (!seconds || *seconds < kShortestSlot || *seconds > kLongestSlot) {
      // Every other time in the file depends on it.
      unusable_ = true;
      return Tell(1,
                  "the slot length \"" + text + "\" is not a number of seconds from 0.5 to 3600");
    }
    slot_ = std::chrono::milliseconds(std::llround(*seconds * 1000));
  }

  void ReadFrequencies() {
    if (!frequencies_.empty()) return Tell(0, "there are frequencies before");
    for (std::size_t field = 1; field < record_->fields.size(); ++field) {
      if (frequencies_.size() == kMostFrequencies) return Tell(field, "there are more than ten");
      const std::string& text = record_->fields[field].text;
      std::optional<double> frequency = WholeNumberText(text);
      if (!frequency || *frequency < kLowestFrequency || *frequency > kHighestFrequency) {
        Tell(field, "\"" + text + "\" is not a frequency from 100 to 500000 kHz");
        frequency.reset();
      }
      frequencies_.push_back(frequency);
    }
  }

  void ReadSlot() {
    std::vector<std::string>& calls = lines_.emplace_back();
    const std::size_t count = record_->fields.size();
    if (lines_.size() == 1) by_frequency_ = count > 1;
    const std::size_t expected = by_frequency_ ? frequencies_.size() : 1;
    if (frequencies_.empty()) return Tell(0, "a slot before the frequencies");
    if (count != expected) {
      return Tell(std::min(count, expected),
                  std::to_string(count) + " calls instead of " + std::to_string(expected));
    }
    for (std::size_t field = 0; field < count; ++field) calls.push_back(ReadCall(field));
  }

  std::string ReadCall(std::size_t field) {
    std::string call = UpperCase(record_->fields[field].text);
    if (call == "-") return {};
    if (!IsCall(call)) {
      Tell(field, "\"" + record_->fields[field].text + "\" is not a callsign");
      return {};
    }
    if (known_->Find(call) == nullptr) Tell(field, "the location of " + call + " is not known");
    return call;
  }

  [[nodiscard]] std::string CallAt(std::size_t slot, std::size_t column) const {
    const std::size_t count = lines_.size();
    // A beacon that is on this frequency now began on the first one that many slots ago.
    const std::size_t line = by_frequency_ ? slot : (slot + count - column % count) % count;
    const std::size_t field = by_frequency_ ? column : 0;
    return field < lines_[line].size() ? lines_[line][field] : std::string();
  }

  const std::string* file_;
  const BeaconLocations* known_;
  std::vector<FileProblem>* problems_;
  const Record* record_ = nullptr;
  bool unusable_ = false;
  bool by_frequency_ = false;
  std::chrono::milliseconds slot_{SlotTable::kUsualSlot};
  std::vector<std::optional<double>> frequencies_;
  std::vector<std::vector<std::string>> lines_;
};

}  // namespace

ScheduleFile ReadBeaconSchedule(std::string_view content, const std::string& file,
                                const BeaconLocations& known) {
  ScheduleFile schedule;
  const std::vector<Record> records = SplitRecords(content, file, schedule.problems);
  ScheduleReader reader(file, known, schedule.problems);
  for (const Record& record : records) reader.Read(record);
  schedule.table = reader.Table();
  return schedule;
}

}  // namespace skyhop::BeaconModule
