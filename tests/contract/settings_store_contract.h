#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/errors.h"
#include "common/settings_store.h"

namespace skyhop::testing {

/// Creates a store. All stores of one factory share a place, so that the second one reads the
/// values that the first one saved.
using StoreFactory = std::function<std::unique_ptr<SettingsStore>()>;

struct StoreBackend {
  const char* name;
  /// Prepares an empty place and returns the factory for it.
  std::function<StoreFactory()> prepare;
};

/// Tests for every settings store.
class SettingsStoreContract : public ::testing::TestWithParam<StoreBackend> {
 protected:
  StoreFactory factory_ = GetParam().prepare();
  std::unique_ptr<SettingsStore> store_ = factory_();

  std::string Read(const std::string& key) {
    return store_->Read("App", "Section", key, "(default)");
  }
};

TEST_P(SettingsStoreContract, ReturnsTheDefaultWhenAValueIsAbsent) {
  EXPECT_EQ(Read("Key"), "(default)");
  store_->SaveSetting("App", "Section", "Other", "1");
  EXPECT_EQ(Read("Key"), "(default)");
  EXPECT_EQ(store_->Read("App", "Elsewhere", "Other", "d"), "d");
  EXPECT_EQ(store_->Read("Stranger", "Section", "Other", "d"), "d");
}

TEST_P(SettingsStoreContract, IgnoresTheCaseOfNames) {
  store_->SaveSetting("App", "Windows", "IonCapWindowState", "2");
  EXPECT_EQ(store_->Read("App", "WINDOWS", "IonCapWindowstate", ""), "2");
  store_->SaveSetting("App", "windows", "ioncapwindowstate", "1");
  EXPECT_EQ(store_->Read("App", "Windows", "IonCapWindowState", ""), "1");
}

TEST_P(SettingsStoreContract, KeepsTextsUnchanged) {
  const std::vector<std::string> values = {
      "",
      "=",
      "a=b;c#d",
      ";no comment",
      "#no comment",
      "[no section]",
      "<<<no tag",
      "\"quoted\"",
      "C:\\Program Files\\it's",
      "51 30' 0\" N",
      "100 %s %n",
      "Z\xC3\xBCrich \xE2\x9A\xA1",
      std::string(20000, 'x'),
  };
  for (const std::string& value : values) {
    store_->SaveSetting("App", "Section", "Key", value);
    EXPECT_EQ(Read("Key"), value);
    EXPECT_EQ(factory_()->Read("App", "Section", "Key", "(default)"), value);
  }
}

TEST_P(SettingsStoreContract, RemovesBlanksAroundAValue) {
  store_->SaveSetting("App", "Section", "Key", " \t two words  ");
  EXPECT_EQ(Read("Key"), "two words");
}

TEST_P(SettingsStoreContract, SavesSeveralValuesTogetherOrNotAtAll) {
  const std::vector<SettingEntry> good = {{"Section", "A", "1"}, {"Section", "B", "2"}};
  store_->Save("App", good);
  EXPECT_EQ(Read("A"), "1");
  EXPECT_EQ(Read("B"), "2");
  const std::vector<SettingEntry> bad = {{"Section", "A", "9"}, {"Section", "", "9"}};
  EXPECT_THROW(store_->Save("App", bad), Error);
  EXPECT_EQ(Read("A"), "1");
}

TEST_P(SettingsStoreContract, RefusesInvalidNames) {
  for (const char* name : {"", "a=b", "[a]", "a]", "a\\b", " a", "a ", ";a", "#a", "a\nb"}) {
    try {
      store_->SaveSetting("App", "Section", name, "1");
      ADD_FAILURE() << "took the key \"" << name << "\"";
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), errors::kInvalidCall);
    }
    EXPECT_THROW(store_->SaveSetting("App", name, "Key", "1"), Error) << name;
  }
}

TEST_P(SettingsStoreContract, SeparatesApplications) {
  store_->SaveSetting("App", "Section", "Key", "mine");
  store_->SaveSetting("Tessera", "Section", "Key", "theirs");
  EXPECT_EQ(store_->Read("App", "Section", "Key", ""), "mine");
  EXPECT_EQ(store_->Read("Tessera", "Section", "Key", ""), "theirs");
}

}  // namespace skyhop::testing
