#include "beacon/beacon_schedule.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <unordered_set>

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
      : file_(&file), problems_(&problems) {
    for (const Beacon& beacon : known.beacons) known_.insert(UpperCase(beacon.call));
  }

  std::optional<SlotTable> Read(const std::vector<Record>& records) {
    for (const Record& record : records) ReadLine(record);
    if (unusable_) return std::nullopt;
    if (columns_.empty()) return None("there is no line with frequencies");
    if (slots_.empty()) return None("there is no slot");
    // One line with a mistake must not decide how the others are read.
    const auto lines = [this](auto&& has) {
      return std::count_if(slots_.begin(), slots_.end(), [&](const Record* slot) {
        return !slot->broken && has(slot->fields.size());
      });
    };
    by_frequency_ = lines([](std::size_t fields) { return fields > 1; }) >
                    lines([](std::size_t fields) { return fields == 1; });
    for (const Record* slot : slots_) ReadSlot(*slot);
    return Table();
  }

 private:
  std::optional<SlotTable> None(const char* text) {
    problems_->push_back({*file_, 0, 0, text});
    return std::nullopt;
  }

  void Tell(const Record& record, std::size_t field, const std::string& text) {
    problems_->push_back({*file_, record.line, record.ColumnOf(field), text});
  }

  void ReadLine(const Record& record) {
    const std::string first = record.Text(0);
    if (EqualsIgnoringCase(first, "slot")) {
      ReadSlotLength(record);
    } else if (EqualsIgnoringCase(first, "frequencies")) {
      ReadFrequencies(record);
    } else if (columns_.empty()) {
      Tell(record, 0, "this line stands before the frequencies and is left out");
    } else {
      slots_.push_back(&record);
    }
  }

  void ReadSlotLength(const Record& record) {
    if (slot_) return Tell(record, 0, "there is a slot length before");
    const std::string text = record.fields.size() == 2 ? record.Text(1) : "";
    const std::optional<double> seconds = WholeNumberText(text);
    if (!seconds || *seconds < kShortestSlot || *seconds > kLongestSlot) {
      // Every other time in the file depends on it.
      unusable_ = true;
      if (record.broken) return;
      return Tell(record, 1,
                  "the slot length \"" + text + "\" is not a number of seconds from 0.5 to 3600");
    }
    slot_ = std::chrono::milliseconds(std::llround(*seconds * 1000));
  }

  void ReadFrequencies(const Record& record) {
    if (!columns_.empty()) return Tell(record, 0, "there are frequencies before");
    if (record.broken || record.fields.size() == 1) {
      unusable_ = true;
      if (!record.broken) Tell(record, 1, "there is no frequency");
    }
    std::size_t count = 0;
    for (std::size_t field = 1; field < record.fields.size(); ++field) {
      const std::string& text = record.fields[field].text;
      std::optional<double> frequency = WholeNumberText(text);
      if (!frequency || *frequency < kLowestFrequency || *frequency > kHighestFrequency) {
        Tell(record, field, "\"" + text + "\" is not a frequency from 100 to 500000 kHz");
        frequency.reset();
      } else if (++count > kMostFrequencies) {
        if (count == kMostFrequencies + 1) Tell(record, field, "there are more than ten");
        frequency.reset();
      }
      columns_.push_back(frequency);
    }
  }

  void ReadSlot(const Record& record) {
    std::vector<std::string>& calls = calls_.emplace_back();
    // Already reported.
    if (record.broken) return;
    const std::size_t count = record.fields.size();
    const std::size_t expected = by_frequency_ ? columns_.size() : 1;
    if (count != expected) {
      return Tell(record, std::min(count, expected),
                  std::to_string(count) + " calls instead of " + std::to_string(expected));
    }
    for (std::size_t field = 0; field < count; ++field) calls.push_back(ReadCall(record, field));
  }

  std::string ReadCall(const Record& record, std::size_t field) {
    std::string call = UpperCase(record.Text(field));
    if (call == "-") return {};
    if (!IsCall(call)) {
      Tell(record, field, "\"" + record.Text(field) + "\" is not a callsign");
      return {};
    }
    if (!known_.contains(call)) {
      Tell(record, field, "the location of " + call + " is not known");
    }
    return call;
  }

  std::optional<SlotTable> Table() {
    SlotTable table;
    table.slot = slot_.value_or(SlotTable::kUsualSlot);
    table.slots.resize(calls_.size());
    if (table.Cycle() > std::chrono::days(1)) return None("the cycle is longer than a day");
    bool silent = true;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      if (!columns_[column]) continue;
      table.frequencies.push_back(*columns_[column]);
      for (std::size_t slot = 0; slot < calls_.size(); ++slot) {
        table.slots[slot].push_back(CallAt(slot, column));
        silent = silent && table.slots[slot].back().empty();
      }
    }
    if (table.frequencies.empty()) return None("no frequency can be read");
    if (silent) return None("nobody transmits in any slot");
    return table;
  }

  [[nodiscard]] std::string CallAt(std::size_t slot, std::size_t column) const {
    const std::size_t count = calls_.size();
    // A beacon that is on this frequency now began on the first one that many slots ago.
    const std::size_t line = by_frequency_ ? slot : (slot + count - column % count) % count;
    const std::size_t field = by_frequency_ ? column : 0;
    return field < calls_[line].size() ? calls_[line][field] : std::string();
  }

  const std::string* file_;
  std::unordered_set<std::string> known_;  ///< calls in capitals
  std::vector<FileProblem>* problems_;
  bool unusable_ = false;
  bool by_frequency_ = false;
  std::optional<std::chrono::milliseconds> slot_;
  std::vector<std::optional<double>> columns_;
  std::vector<const Record*> slots_;
  std::vector<std::vector<std::string>> calls_;  ///< by slot
};

}  // namespace

ScheduleFile ReadBeaconSchedule(std::string_view content, const std::string& file,
                                const BeaconLocations& known) {
  ScheduleFile schedule;
  const std::vector<Record> records = SplitRecords(content, file, schedule.problems);
  schedule.table = ScheduleReader(file, known, schedule.problems).Read(records);
  return schedule;
}

}  // namespace skyhop::BeaconModule
