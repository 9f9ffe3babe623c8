#pragma once

#include <string>

#include "common/settings_store.h"

namespace skyhop::platform {

/// Settings in the user's part of the registry: a key per application and section below `root`, a
/// text value per setting. A number that another program stored is read as its decimal text. Values
/// of other types cannot be read (Error 13); a save replaces them.
class RegistrySettingsStore : public SettingsStore {
 public:
  /// `root` is a key below HKEY_CURRENT_USER, such as "Software\Marlo".
  explicit RegistrySettingsStore(const std::string& root);

  [[nodiscard]] std::string Read(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& default_text) override;
  void Save(const std::string& application, std::span<const SettingEntry> entries) override;

 private:
  [[nodiscard]] std::wstring KeyOf(const std::string& application,
                                   const std::string& section) const;

  std::wstring root_;
};

}  // namespace skyhop::platform
