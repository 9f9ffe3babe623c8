#include "platform/windows/registry_settings_store.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <memory>

#include "common/errors.h"
#include "contract/settings_store_contract.h"
#include "platform/windows/code_page.h"

namespace skyhop::testing {
namespace {

using platform::RegistrySettingsStore;
using platform::Wide;

/// A registry key that exists while this object lives.
class TemporaryKey {
 public:
  TemporaryKey() = default;
  ~TemporaryKey() { ::RegDeleteTreeW(HKEY_CURRENT_USER, Wide(name_).c_str()); }
  TemporaryKey(const TemporaryKey&) = delete;
  TemporaryKey& operator=(const TemporaryKey&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }

  /// Stores a value of any type in a section.
  void Put(const std::string& path, const char* value, DWORD type, const void* bytes,
           std::size_t size) const {
    EXPECT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, Wide(name_ + "\\" + path).c_str(),
                                Wide(value).c_str(), type, bytes, static_cast<DWORD>(size)),
              ERROR_SUCCESS);
  }

 private:
  static std::string Unique() {
    static std::atomic<int> count = 0;
    return "Software\\Skyhop-Test-" + std::to_string(::GetCurrentProcessId()) + "-" +
           std::to_string(++count);
  }
  std::string name_ = Unique();
};

StoreFactory RegistryPlace() {
  return [key = std::make_shared<TemporaryKey>()] {
    return std::make_unique<RegistrySettingsStore>(key->Name());
  };
}

INSTANTIATE_TEST_SUITE_P(Backends, SettingsStoreContract,
                         ::testing::Values(StoreBackend{"registry", RegistryPlace}),
                         [](const auto& backend) { return std::string(backend.param.name); });

class RegistrySettingsStoreTest : public ::testing::Test {
 protected:
  std::string Read(const std::string& key) { return store_.Read("App", "Section", key, "?"); }

  TemporaryKey key_;
  RegistrySettingsStore store_{key_.Name()};
};

TEST_F(RegistrySettingsStoreTest, StoresTextsInAKeyPerSection) {
  store_.SaveSetting("App", "Section", "Key", "Z\xC3\xBCrich");
  wchar_t text[20] = {};
  DWORD size = sizeof text;
  ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER, Wide(key_.Name() + "\\App\\Section").c_str(), L"Key",
                           RRF_RT_REG_SZ, nullptr, text, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(std::wstring(text), L"Z\u00FCrich");
  EXPECT_EQ(size, 7 * sizeof(wchar_t));
}

TEST_F(RegistrySettingsStoreTest, ReadsNumbersAsText) {
  const std::uint32_t word = 0xFFFFFFFF;
  const std::uint64_t long_word = 40000000000;
  key_.Put("App\\Section", "Word", REG_DWORD, &word, sizeof word);
  key_.Put("App\\Section", "Long", REG_QWORD, &long_word, sizeof long_word);
  EXPECT_EQ(Read("Word"), "-1");
  EXPECT_EQ(Read("Long"), "40000000000");
}

TEST_F(RegistrySettingsStoreTest, ReadsTextsWithoutAnEndMark) {
  key_.Put("App\\Section", "Open", REG_SZ, L"abc", 3 * sizeof(wchar_t));
  key_.Put("App\\Section", "Odd", REG_SZ, L"abc", 3 * sizeof(wchar_t) - 1);
  key_.Put("App\\Section", "Empty", REG_SZ, nullptr, 0);
  EXPECT_EQ(Read("Open"), "abc");
  EXPECT_EQ(Read("Odd").substr(0, 2), "ab");
  EXPECT_EQ(Read("Empty"), "");
}

TEST_F(RegistrySettingsStoreTest, ReportsAndReplacesValuesOfOtherTypes) {
  key_.Put("App\\Section", "Key", REG_BINARY, "abc", 3);
  try {
    (void)Read("Key");
    ADD_FAILURE() << "read something that is not a text";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), errors::kTypeMismatch);
    EXPECT_NE(std::string(error.what()).find("Section/Key"), std::string::npos);
  }
  store_.SaveSetting("App", "Section", "Key", "1");
  EXPECT_EQ(Read("Key"), "1");
}

TEST_F(RegistrySettingsStoreTest, ChangesNothingWhenASaveFails) {
  store_.SaveSetting("App", "Section", "A", "before");
  const std::vector<SettingEntry> entries = {
      {"Section", "A", "after"}, {"Section", "New", "1"}, {"Section", "B", std::string("x\0y", 3)}};
  EXPECT_THROW(store_.Save("App", entries), Error);
  EXPECT_EQ(Read("A"), "before");
  EXPECT_EQ(Read("New"), "?");
}

}  // namespace
}  // namespace skyhop::testing
