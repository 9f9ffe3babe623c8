#pragma once

#include <cstdint>
#include <string>

#include "common/diagnostics.h"
#include "common/settings_store.h"

namespace skyhop::Common {

/// Typed reading of the settings. The default is always given as text. For a value that is absent,
/// that the store fails to deliver or that does not convert, the getters return the converted
/// default and report nothing. A default that does not convert is an error in the program and is
/// reported.
class Settings {
 public:
  /// Both must outlive this object.
  Settings(SettingsStore& store, Diagnostics& diagnostics)
      : store_(&store), diagnostics_(&diagnostics) {}

  [[nodiscard]] std::int16_t GetIntegerSetting(const std::string& application,
                                               const std::string& section, const std::string& key,
                                               const std::string& default_text) const;
  [[nodiscard]] std::int32_t GetLongSetting(const std::string& application,
                                            const std::string& section, const std::string& key,
                                            const std::string& default_text) const;
  [[nodiscard]] bool GetBooleanSetting(const std::string& application, const std::string& section,
                                       const std::string& key,
                                       const std::string& default_text) const;
  [[nodiscard]] std::string GetStringSetting(const std::string& application,
                                             const std::string& section, const std::string& key,
                                             const std::string& default_text) const;

  /// The store itself, for saving.
  [[nodiscard]] SettingsStore& Store() const { return *store_; }

 private:
  [[nodiscard]] std::string WorkingText(const std::string& application, const std::string& section,
                                        const std::string& key,
                                        const std::string& default_text) const;
  template <class Value, class Convert, class Format>
  [[nodiscard]] Value Get(const std::string& name, const std::string& label,
                          const std::string& application, const std::string& section,
                          const std::string& key, const std::string& default_text, Convert convert,
                          Format format) const;

  SettingsStore* store_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::Common
