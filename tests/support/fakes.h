#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "common/clock.h"
#include "common/errors.h"
#include "common/machine_facts.h"
#include "common/pause.h"
#include "common/settings_store.h"
#include "common/text.h"
#include "common/user_messages.h"

namespace skyhop::testing {

/// A clock that stops at the time that the test sets.
class FakeClock : public Clock {
 public:
  [[nodiscard]] UtcTime UtcNow() const override { return now; }
  [[nodiscard]] std::chrono::steady_clock::time_point SteadyNow() const override {
    return std::chrono::steady_clock::time_point(now.time_since_epoch());
  }
  [[nodiscard]] std::chrono::seconds LocalOffset(UtcTime) const override { return offset; }

  /// 2026-11-15 13:05:09.042 UTC, in a zone one hour east of Greenwich.
  UtcTime now = std::chrono::sys_days{std::chrono::year{2026} / 11 / 15} + std::chrono::hours{13} +
                std::chrono::minutes{5} + std::chrono::seconds{9} + std::chrono::milliseconds{42};
  std::chrono::seconds offset = std::chrono::hours{1};
};

class FakeMachineFacts : public MachineFacts {
 public:
  [[nodiscard]] MachineDescription Describe() const override { return description; }

  MachineDescription description;
};

/// Keeps the messages that a user would have to acknowledge.
class FakeUserMessages : public UserMessages {
 public:
  void Show(const std::string& text, const std::string& caption) override {
    shown.emplace_back(text, caption);
    if (while_shown) std::exchange(while_shown, {})();
  }

  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& [text, caption] : shown) texts.push_back(text);
    return texts;
  }

  std::vector<std::pair<std::string, std::string>> shown;
  std::function<void()> while_shown;  ///< called while the next message is open
};

/// Records waits instead of waiting, and can call a function during each.
class FakePause : public Pause {
 public:
  void Wait(std::chrono::milliseconds duration) override {
    waits.push_back(duration);
    if (during) during();
  }

  std::vector<std::chrono::milliseconds> waits;
  std::function<void()> during;
};

/// Settings in memory; a test can make them fail with any error number.
class MemorySettingsStore : public SettingsStore {
 public:
  [[nodiscard]] std::string Read(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& default_text) override {
    if (read_error) throw Error(*read_error, "the store fails");
    const auto found = values.find(Address(application, section, key));
    return found == values.end() ? default_text : found->second;
  }

  void Save(const std::string& application, std::span<const SettingEntry> entries) override {
    if (save_error) throw Error(*save_error, "the store fails");
    for (const SettingEntry& entry : entries) {
      if (!IsSettingName(entry.section) || !IsSettingName(entry.key)) {
        throw Error(errors::kInvalidCall, "not a name: " + entry.section + "/" + entry.key);
      }
    }
    for (const SettingEntry& entry : entries) {
      values[Address(application, entry.section, entry.key)] = std::string(Trim(entry.value));
    }
  }

  std::optional<int> read_error;
  std::optional<int> save_error;
  std::map<std::tuple<std::string, std::string, std::string>, std::string> values;

 private:
  static std::tuple<std::string, std::string, std::string> Address(const std::string& application,
                                                                   const std::string& section,
                                                                   const std::string& key) {
    return {UpperCase(application), UpperCase(section), UpperCase(key)};
  }
};

}  // namespace skyhop::testing
