#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <memory>

#include "common/files.h"
#include "contract/settings_store_contract.h"
#include "platform/linux/ini_settings_store.h"
#include "support/error_number.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {
namespace {

using platform::IniSettingsStore;

/// A store that forwards to another one.
class SharedStore : public SettingsStore {
 public:
  explicit SharedStore(std::shared_ptr<SettingsStore> store) : store_(std::move(store)) {}
  [[nodiscard]] std::string Read(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& default_text) override {
    return store_->Read(application, section, key, default_text);
  }
  void Save(const std::string& application, std::span<const SettingEntry> entries) override {
    store_->Save(application, entries);
  }

 private:
  std::shared_ptr<SettingsStore> store_;
};

StoreFactory MemoryPlace() {
  return [memory = std::make_shared<MemorySettingsStore>()] {
    return std::make_unique<SharedStore>(memory);
  };
}

StoreFactory FilePlace() {
  return [folder = std::make_shared<TemporaryFolder>()] {
    return std::make_unique<IniSettingsStore>(folder->Path() / "marlo");
  };
}

INSTANTIATE_TEST_SUITE_P(Backends, SettingsStoreContract,
                         ::testing::Values(StoreBackend{"memory", MemoryPlace},
                                           StoreBackend{"file", FilePlace}),
                         [](const auto& backend) { return std::string(backend.param.name); });

class IniSettingsStoreTest : public ::testing::Test {
 protected:
  void Put(const std::string& content) { WriteFile(file_, content); }
  std::string Read(const std::string& key) { return store_.Read("App", "Section", key, "?"); }

  TemporaryFolder folder_;
  IniSettingsStore store_{folder_.Path()};
  std::filesystem::path file_ = folder_ / "App.ini";
};

TEST_F(IniSettingsStoreTest, KeepsForeignKeysAndCommentsOnSave) {
  Put("; by hand\n[Other]\n; kept too\nunknown=yes\n\n[Section]\nKey=1\n");
  store_.SaveSetting("App", "section", "KEY", "2");
  const std::string content = ReadFile(file_, 10000);
  for (const char* kept : {"; by hand", "; kept too", "unknown=yes", "Key=2"}) {
    EXPECT_NE(content.find(kept), std::string::npos) << kept << " is missing in\n" << content;
  }
}

TEST_F(IniSettingsStoreTest, WritesTheFileOnlyWhenAValueChanges) {
  // The store writes tidier files, so this text shows whether the file is untouched.
  const std::string untidy = "[Section]\nKey  =  1  \nOther=\n";
  Put(untidy);
  store_.SaveSetting("App", "SECTION", "key", " 1 ");
  store_.SaveSetting("App", "Section", "Other", "");
  EXPECT_EQ(ReadFile(file_, 10000), untidy);
  const SettingEntry entries[] = {{"Section", "Key", "1"}, {"Section", "Missing", ""}};
  store_.Save("App", entries);
  EXPECT_EQ(Read("Missing"), "");
  EXPECT_NE(ReadFile(file_, 10000), untidy);
}

TEST_F(IniSettingsStoreTest, FailsSoonWhenAnotherProgramHoldsTheLock) {
  using std::chrono::steady_clock;
  store_.SaveSetting("App", "Section", "Key", "1");
  const int folder = ::open(folder_.Path().c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(::flock(folder, LOCK_EX), 0);
  const auto save = [&] {
    return ErrorNumber([&] { store_.SaveSetting("App", "Section", "Key", "2"); });
  };
  const auto start = steady_clock::now();
  EXPECT_EQ(save(), errors::kPermissionDenied);
  // A program saves many settings at its end; only the first save may wait.
  for (int i = 0; i < 100; ++i) EXPECT_EQ(save(), errors::kPermissionDenied);
  EXPECT_LT(steady_clock::now() - start, 4 * IniSettingsStore::kLongestWait);
  EXPECT_EQ(Read("Key"), "1");
  ::close(folder);
  EXPECT_EQ(save(), 0);
  EXPECT_EQ(Read("Key"), "2");
}

TEST_F(IniSettingsStoreTest, KeepsTheRestOfACutFile) {
  Put("[Section]\r\nA=1\r\nB=2\r\n[Sec");
  EXPECT_EQ(Read("A"), "1");
  EXPECT_EQ(Read("B"), "2");
  store_.SaveSetting("App", "Section", "C", "3");
  EXPECT_EQ(IniSettingsStore(folder_.Path()).Read("App", "Section", "B", "?"), "2");
}

TEST_F(IniSettingsStoreTest, KeepsACopyOfADamagedFile) {
  const std::string damaged("[Section]\nA=1\n\0\0\0\0[Section]\nB=2\n", 32);
  Put(damaged);
  EXPECT_EQ(Read("A"), "1");
  EXPECT_EQ(Read("B"), "2");
  store_.SaveSetting("App", "Section", "A", "3");
  EXPECT_EQ(ReadFile(folder_ / "App.ini.damaged", 1000), damaged);
  EXPECT_EQ(Read("A"), "3");
  EXPECT_EQ(Read("B"), "2");
}

TEST_F(IniSettingsStoreTest, ReadsChangesByOtherPrograms) {
  Put("[Section]\nKey=old\n");
  EXPECT_EQ(Read("Key"), "old");
  Put("[Section]\nKey=newer\n");
  EXPECT_EQ(Read("Key"), "newer");
  std::filesystem::remove(file_);
  EXPECT_EQ(Read("Key"), "?");
}

TEST_F(IniSettingsStoreTest, HandlesAHundredThousandKeys) {
  std::string content = "[Section]\n";
  for (int i = 0; i < 100000; ++i) {
    content += "key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
  }
  Put(content);
  EXPECT_EQ(Read("key99999"), "99999");
  store_.SaveSetting("App", "Section", "key50000", "changed");
  IniSettingsStore other(folder_.Path());
  EXPECT_EQ(other.Read("App", "Section", "key50000", "?"), "changed");
  EXPECT_EQ(other.Read("App", "Section", "key0", "?"), "0");
}

TEST_F(IniSettingsStoreTest, ChangesNothingWhenASaveFails) {
  std::filesystem::create_directory(file_);
  try {
    store_.SaveSetting("App", "Section", "Key", "1");
    ADD_FAILURE() << "saved over a folder";
  } catch (const Error& error) {
    EXPECT_GT(error.Number(), 0);
    EXPECT_NE(std::string(error.what()).find("App.ini"), std::string::npos);
  }
  EXPECT_THROW((void)Read("Key"), Error);
  std::filesystem::remove(file_);
  EXPECT_EQ(Read("Key"), "?") << "a value that was never saved";
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(IniSettingsStoreTest, SavesPrivatelyAndKeepsLinks) {
  const std::filesystem::path target = folder_ / "elsewhere.ini";
  WriteFile(target, "[Section]\nA=1\n");
  std::filesystem::create_symlink(target, file_);
  store_.SaveSetting("App", "Section", "B", "2");
  EXPECT_TRUE(std::filesystem::is_symlink(file_));
  EXPECT_NE(ReadFile(target, 1000).find("B=2"), std::string::npos);
  EXPECT_EQ(std::filesystem::status(target).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 2);
}

TEST_F(IniSettingsStoreTest, RefusesApplicationsOutsideTheFolder) {
  for (const char* name : {"../App", "..", "/etc/App", ""}) {
    EXPECT_THROW((void)store_.Read(name, "Section", "Key", ""), Error) << name;
  }
}

TEST_F(IniSettingsStoreTest, RefusesLineBreaksInAValue) {
  EXPECT_THROW(store_.SaveSetting("App", "Section", "Key", "1\nOther=2"), Error);
  EXPECT_EQ(Read("Other"), "?");
}

}  // namespace
}  // namespace skyhop::testing
