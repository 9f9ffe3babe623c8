#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "common/settings_store.h"
#include "platform/linux/file_descriptor.h"

namespace skyhop::platform {

/// Settings as one INI file per application in a folder of the user. Reads a file again when
/// another program has changed it. Keeps comments and keys that this program does not know.
class IniSettingsStore : public SettingsStore {
 public:
  static constexpr std::chrono::milliseconds kLongestWait{500};

  explicit IniSettingsStore(std::filesystem::path folder);
  ~IniSettingsStore() override;

  [[nodiscard]] std::string Read(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& default_text) override;

  /// Waits at most kLongestWait for another program that saves; then throws Error
  /// kPermissionDenied. While that program still holds the folder, later calls do not wait. If a
  /// file holds bytes that no settings file can hold, keeps a copy beside the new one, with
  /// ".damaged" appended to its name.
  void Save(const std::string& application, std::span<const SettingEntry> entries) override;

  [[nodiscard]] std::filesystem::path FileOf(const std::string& application) const;

 private:
  struct File;

  [[nodiscard]] File& Load(const std::string& application);
  [[nodiscard]] FileDescriptor LockFolder();

  std::filesystem::path folder_;
  std::map<std::string, std::unique_ptr<File>> files_;
  bool held_ = false;  ///< another program held the lock for all of kLongestWait
};

}  // namespace skyhop::platform
