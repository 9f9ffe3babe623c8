#include "platform/linux/ini_settings_store.h"

#include <SimpleIni.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <thread>
#include <tuple>

#include "common/errors.h"
#include "common/files.h"
#include "common/text.h"
#include "platform/placed_files.h"

namespace skyhop::platform {
namespace {

constexpr std::size_t kLargestIni = std::size_t{256} << 20U;
constexpr auto kPrivate = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
constexpr std::chrono::milliseconds kLockInterval{10};

/// Identifies a file's content: equal fingerprints mean that the file has not changed.
using Fingerprint = std::tuple<bool, dev_t, ino_t, off_t, std::int64_t, long>;

Fingerprint FingerprintOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return {true,           status.st_dev,         status.st_ino,
          status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void CheckEntry(const SettingEntry& entry) {
  if (!IsSettingName(entry.section) || !IsSettingName(entry.key)) {
    throw Error(errors::kInvalidCall, "not the name of a setting: section \"" + entry.section +
                                          "\", key \"" + entry.key + "\"");
  }
  const bool control = std::any_of(entry.value.begin(), entry.value.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t';
  });
  if (control) {
    throw Error(errors::kInvalidCall,
                "the value of " + entry.section + "/" + entry.key + " holds a control character");
  }
}

}  // namespace

struct IniSettingsStore::File {
  CSimpleIniA ini{/*isUtf8=*/true};
  Fingerprint fingerprint;
  bool damaged = false;
};

IniSettingsStore::IniSettingsStore(std::filesystem::path folder) : folder_(std::move(folder)) {}

IniSettingsStore::~IniSettingsStore() = default;

std::filesystem::path IniSettingsStore::FileOf(const std::string& application) const {
  if (!IsSettingName(application) || application.find('/') != std::string::npos ||
      application.front() == '.') {
    throw Error(errors::kInvalidCall, "not the name of an application: " + application);
  }
  return folder_ / (application + ".ini");
}

IniSettingsStore::File& IniSettingsStore::Load(const std::string& application) {
  const std::filesystem::path path = FileOf(application);
  const Fingerprint fingerprint = FingerprintOf(path);
  std::unique_ptr<File>& known = files_[UpperCase(application)];
  if (known && known->fingerprint == fingerprint) return *known;

  known.reset();
  auto file = std::make_unique<File>();
  file->ini.SetSpaces(false);
  file->fingerprint = fingerprint;
  std::string content;
  try {
    content = ReadFile(path, kLargestIni);
  } catch (const Error& error) {
    // A missing file is an empty store; every other error is a failure.
    if (error.Number() != errors::kFileNotFound) throw;
  }
  file->damaged = content.find('\0') != std::string::npos;
  std::replace(content.begin(), content.end(), '\0', '\n');
  if (file->ini.LoadData(content.data(), content.size()) < 0) {
    throw Error(errors::kOutOfMemory, "cannot take in " + PathText(path));
  }
  known = std::move(file);
  return *known;
}

std::string IniSettingsStore::Read(const std::string& application, const std::string& section,
                                   const std::string& key, const std::string& default_text) {
  const char* value = Load(application).ini.GetValue(section.c_str(), key.c_str(), nullptr);
  return value == nullptr ? default_text : std::string(Trim(value));
}

FileDescriptor IniSettingsStore::LockFolder() {
  FileDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.IsOpen()) return folder;
  const auto until = std::chrono::steady_clock::now() + kLongestWait;
  while (::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0) {
    // Go on without a lock on a file system that has none.
    if (errno != EWOULDBLOCK && errno != EINTR) break;
    if (held_ || std::chrono::steady_clock::now() >= until) {
      held_ = true;
      throw Error(errors::kPermissionDenied,
                  "cannot save settings: another program has locked " + PathText(folder_));
    }
    std::this_thread::sleep_for(kLockInterval);
  }
  held_ = false;
  return folder;
}

void IniSettingsStore::Save(const std::string& application, std::span<const SettingEntry> entries) {
  for (const SettingEntry& entry : entries) CheckEntry(entry);
  CreateFolder(folder_);

  // Without the lock, two programs that save at once would each write the other's old values back.
  const FileDescriptor lock = LockFolder();

  const std::filesystem::path path = FileOf(application);
  File& file = Load(application);
  const auto kept = [&file](const SettingEntry& entry) {
    const char* const value = file.ini.GetValue(entry.section.c_str(), entry.key.c_str(), nullptr);
    return value != nullptr && Trim(entry.value) == value;
  };
  // Writing the same content again would only wait for the disk.
  if (!file.damaged && std::all_of(entries.begin(), entries.end(), kept)) return;
  try {
    for (const SettingEntry& entry : entries) {
      const std::string value(Trim(entry.value));
      if (file.ini.SetValue(entry.section.c_str(), entry.key.c_str(), value.c_str()) < 0) {
        throw Error(errors::kOutOfMemory, "cannot keep " + entry.section + "/" + entry.key);
      }
    }
    std::string content;
    if (file.ini.Save(content) < 0) {
      throw Error(errors::kOutOfMemory, "cannot compose " + PathText(path));
    }
    if (file.damaged) {
      std::filesystem::path copy = path;
      copy += ".damaged";
      std::error_code error;
      std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing,
                                 error);
      if (error) throw FileError(error, "cannot keep a copy of " + PathText(path));
    }
    WriteFileAtOnce(path, content, kPrivate, SyncFile);
    file.damaged = false;
    file.fingerprint = FingerprintOf(path);
  } catch (...) {
    // The values in memory were not saved; the next call reads the file again.
    files_.erase(UpperCase(application));
    throw;
  }
}

}  // namespace skyhop::platform
