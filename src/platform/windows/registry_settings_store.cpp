#include "platform/windows/registry_settings_store.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "common/errors.h"
#include "common/text.h"
#include "platform/windows/code_page.h"
#include "platform/windows/system_error.h"

namespace skyhop::platform {
namespace {

/// An open key of the registry.
class RegistryKey {
 public:
  RegistryKey() = default;
  ~RegistryKey() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
  RegistryKey& operator=(RegistryKey&&) = delete;

  [[nodiscard]] HKEY Get() const { return key_; }
  [[nodiscard]] HKEY* Out() { return &key_; }

 private:
  HKEY key_ = nullptr;
};

/// A value as it is stored.
struct StoredValue {
  DWORD type = REG_NONE;
  std::vector<BYTE> bytes;
};

/// Nothing when there is no such value.
std::optional<StoredValue> Fetch(HKEY key, const std::wstring& name, const std::string& what) {
  StoredValue value;
  while (true) {
    auto size = static_cast<DWORD>(value.bytes.size());
    const LSTATUS status =
        ::RegQueryValueExW(key, name.c_str(), nullptr, &value.type, value.bytes.data(), &size);
    if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
    // Without enough room the function returns only the size, which may have grown before the next
    // call.
    if (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && size > value.bytes.size())) {
      value.bytes.resize(size);
      continue;
    }
    if (status != ERROR_SUCCESS) throw SystemError(static_cast<DWORD>(status), what);
    value.bytes.resize(size);
    return value;
  }
}

/// The number in these bytes, lowest byte first.
std::uint64_t Number(const std::vector<BYTE>& bytes) {
  std::uint64_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) number = (number << 8U) | bytes[i - 1];
  return number;
}

std::string TextOf(const StoredValue& value, const std::string& what) {
  switch (value.type) {
    case REG_SZ:
    case REG_EXPAND_SZ: {
      std::wstring text(value.bytes.size() / sizeof(wchar_t), L'\0');
      std::copy_n(value.bytes.data(), text.size() * sizeof(wchar_t),
                  reinterpret_cast<BYTE*>(text.data()));
      // Cut at the end mark, which some programs store with the value.
      return std::string(Trim(Utf8(text.substr(0, text.find(L'\0')))));
    }
    case REG_DWORD:
      return std::to_string(static_cast<std::int32_t>(Number(value.bytes)));
    case REG_QWORD:
      return std::to_string(static_cast<std::int64_t>(Number(value.bytes)));
    default:
      throw Error(errors::kTypeMismatch,
                  what + ": it is not a text (registry type " + std::to_string(value.type) + ")");
  }
}

void Put(HKEY key, const std::wstring& name, DWORD type, const void* bytes, std::size_t size,
         const std::string& what) {
  const LSTATUS status = ::RegSetValueExW(
      key, name.c_str(), 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size));
  if (status != ERROR_SUCCESS) throw SystemError(static_cast<DWORD>(status), what);
}

std::string NameOf(const std::string& section, const std::string& key) {
  return "the setting " + section + "/" + key;
}

/// One value to be written to the registry, with the previous value.
class PendingValue {
 public:
  PendingValue(const std::wstring& key_path, const SettingEntry& entry)
      : name_(Wide(entry.key)),
        text_(Wide(Trim(entry.value))),
        what_("cannot save " + NameOf(entry.section, entry.key)) {
    const LSTATUS status =
        ::RegCreateKeyExW(HKEY_CURRENT_USER, key_path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                          KEY_QUERY_VALUE | KEY_SET_VALUE, nullptr, key_.Out(), nullptr);
    if (status != ERROR_SUCCESS) throw SystemError(static_cast<DWORD>(status), what_);
    before_ = Fetch(key_.Get(), name_, what_);
  }

  void Write() {
    Put(key_.Get(), name_, REG_SZ, text_.c_str(), (text_.size() + 1) * sizeof(wchar_t), what_);
    written_ = true;
  }

  void TakeBack() noexcept {
    if (!written_) return;
    if (before_) {
      ::RegSetValueExW(key_.Get(), name_.c_str(), 0, before_->type, before_->bytes.data(),
                       static_cast<DWORD>(before_->bytes.size()));
    } else {
      ::RegDeleteValueW(key_.Get(), name_.c_str());
    }
  }

 private:
  RegistryKey key_;
  std::wstring name_;
  std::wstring text_;
  std::string what_;
  std::optional<StoredValue> before_;
  bool written_ = false;
};

void CheckEntry(const SettingEntry& entry) {
  if (!IsSettingName(entry.section) || !IsSettingName(entry.key)) {
    throw Error(errors::kInvalidCall, "not the name of a setting: section \"" + entry.section +
                                          "\", key \"" + entry.key + "\"");
  }
  if (entry.value.find('\0') != std::string::npos) {
    throw Error(errors::kInvalidCall,
                "the value of " + entry.section + "/" + entry.key + " holds a control character");
  }
}

}  // namespace

RegistrySettingsStore::RegistrySettingsStore(const std::string& root) : root_(Wide(root)) {}

std::wstring RegistrySettingsStore::KeyOf(const std::string& application,
                                          const std::string& section) const {
  if (!IsSettingName(application)) {
    throw Error(errors::kInvalidCall, "not the name of an application: " + application);
  }
  return root_ + L'\\' + Wide(application) + L'\\' + Wide(section);
}

std::string RegistrySettingsStore::Read(const std::string& application, const std::string& section,
                                        const std::string& key, const std::string& default_text) {
  const std::wstring path = KeyOf(application, section);
  const std::string what = "cannot read " + NameOf(section, key);
  RegistryKey opened;
  const LSTATUS status =
      ::RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_QUERY_VALUE, opened.Out());
  if (status == ERROR_FILE_NOT_FOUND) return default_text;
  if (status != ERROR_SUCCESS) throw SystemError(static_cast<DWORD>(status), what);
  const std::optional<StoredValue> value = Fetch(opened.Get(), Wide(key), what);
  return value ? TextOf(*value, what) : default_text;
}

void RegistrySettingsStore::Save(const std::string& application,
                                 std::span<const SettingEntry> entries) {
  for (const SettingEntry& entry : entries) CheckEntry(entry);
  // Open all keys before changing the first value, so that few failures can occur half-way. A
  // failure restores the previous values.
  std::vector<PendingValue> values;
  values.reserve(entries.size());
  for (const SettingEntry& entry : entries) {
    values.emplace_back(KeyOf(application, entry.section), entry);
  }
  try {
    for (PendingValue& value : values) value.Write();
  } catch (...) {
    for (std::size_t i = values.size(); i > 0; --i) values[i - 1].TakeBack();
    throw;
  }
}

}  // namespace skyhop::platform
