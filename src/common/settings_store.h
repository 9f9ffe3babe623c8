#pragma once

#include <span>
#include <string>
#include <string_view>

namespace skyhop {

/// One value to be saved.
struct SettingEntry {
  std::string section;
  std::string key;
  std::string value;
};

/// The per-user store: application name, section and key address one text each. Sections and keys
/// compare without regard to the case of the letters A to Z; an application's name needs its exact
/// spelling.
///
/// Every failure is thrown as an Error with a positive number.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// The stored text, `default_text` when there is none. Blanks around a stored text are not kept.
  [[nodiscard]] virtual std::string Read(const std::string& application, const std::string& section,
                                         const std::string& key,
                                         const std::string& default_text) = 0;

  /// Saves all entries or, when it throws, none. Nothing else in the store changes.
  /// Throws Error 5 for a name that the store cannot hold: empty, longer than 255 bytes, with
  /// control characters, brackets, "=" or a backslash, or with a blank, ";" or "#" at its start.
  virtual void Save(const std::string& application, std::span<const SettingEntry> entries) = 0;

  void SaveSetting(const std::string& application, const std::string& section,
                   const std::string& key, const std::string& value) {
    const SettingEntry entry{section, key, value};
    Save(application, std::span(&entry, 1));
  }
};

/// True for a section or key that every store can hold, see SettingsStore::Save.
[[nodiscard]] bool IsSettingName(std::string_view name);

}  // namespace skyhop
