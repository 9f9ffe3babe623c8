#include "common/settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/diagnostics_fixture.h"

namespace skyhop::Common {
namespace {

using Lines = std::vector<std::string>;

class SettingsTest : public ::testing::Test {
 protected:
  std::int16_t Integer(const std::string& stored, const std::string& default_text) {
    store_.SaveSetting("Skyhop", "Configuration", "SFI", stored);
    return settings_.GetIntegerSetting("Skyhop", "Configuration", "SFI", default_text);
  }
  std::int32_t Long(const std::string& stored, const std::string& default_text) {
    store_.SaveSetting("Skyhop", "Configuration", "SFI", stored);
    return settings_.GetLongSetting("Skyhop", "Configuration", "SFI", default_text);
  }
  bool Boolean(const std::string& stored, const std::string& default_text) {
    store_.SaveSetting("Skyhop", "Configuration", "SFI", stored);
    return settings_.GetBooleanSetting("Skyhop", "Configuration", "SFI", default_text);
  }

  testing::LoggedDiagnostics log_;
  testing::MemorySettingsStore store_;
  Settings settings_{store_, log_.diagnostics};
};

TEST_F(SettingsTest, ConvertStoredTextOrFallBackSilently) {
  EXPECT_EQ(Integer("12.6", "5"), 13);
  EXPECT_EQ(Integer("12.5", "5"), 12);
  EXPECT_EQ(Integer("-32768", "5"), -32768);
  for (const char* bad : {"abc", "40000", "", "12,5", "~uninitialized~"}) {
    EXPECT_EQ(Integer(bad, "5"), 5) << bad;
  }
  EXPECT_EQ(Long("40000", "5"), 40000);
  EXPECT_EQ(Long("3000000000", "-5.5"), -6);
  EXPECT_FALSE(Boolean("0", "True"));
  EXPECT_TRUE(Boolean("-1", "False"));
  EXPECT_TRUE(Boolean("tRUE", "False"));
  EXPECT_TRUE(Boolean("perhaps", "True"));
  EXPECT_FALSE(Boolean("perhaps", "0"));
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(SettingsTest, YieldTheDefaultForAnAbsentKey) {
  EXPECT_EQ(settings_.GetIntegerSetting("Skyhop", "Configuration", "SFI", "100"), 100);
  EXPECT_EQ(settings_.GetLongSetting("Skyhop", "Windows", "IonCapLeft", "70000"), 70000);
  EXPECT_TRUE(settings_.GetBooleanSetting("Skyhop", "General", "ShowToolTips", "True"));
  EXPECT_EQ(settings_.GetStringSetting("Skyhop", "Configuration", "URL", " as it is "),
            " as it is ");
}

TEST_F(SettingsTest, FindNamesInAnyCase) {
  settings_.Store().SaveSetting("Skyhop", "Windows", "IonCapWindowState", "2");
  EXPECT_EQ(settings_.GetIntegerSetting("SKYHOP", "windows", "IonCapWindowstate", "0"), 2);
}

TEST_F(SettingsTest, ReturnTheDefaultWhenTheStoreFails) {
  const struct {
    int error;
    const char* text;
  } cases[] = {{75, "text"}, {5, "text"}, {0, "~uninitialized~"}, {-2147221164, "~uninitialized~"}};
  for (const auto& c : cases) {
    store_.read_error = c.error;
    EXPECT_EQ(settings_.GetStringSetting("Skyhop", "S", "K", "text"), c.text) << c.error;
    EXPECT_EQ(settings_.GetIntegerSetting("Skyhop", "S", "K", "7"), 7) << c.error;
    EXPECT_EQ(settings_.GetLongSetting("Skyhop", "S", "K", "70000"), 70000) << c.error;
    EXPECT_TRUE(settings_.GetBooleanSetting("Skyhop", "S", "K", "True")) << c.error;
  }
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(SettingsTest, LogEachReadUnderItsLabel) {
  store_.SaveSetting("Skyhop", "Configuration", "SFI", "99.6");
  static_cast<void>(settings_.GetIntegerSetting("Skyhop", "Configuration", "SFI", "1"));
  static_cast<void>(settings_.GetLongSetting("Skyhop", "Configuration", "SFI", "1"));
  static_cast<void>(settings_.GetBooleanSetting("Skyhop", "Configuration", "SFI", "False"));
  static_cast<void>(settings_.GetStringSetting("Skyhop", "Configuration", "SFI", ""));
  EXPECT_EQ(log_.debug,
            (Lines{"GetIntegerSetting, Section = Configuration, Key = SFI, Result = 100",
                   "GetLongSetting,    Section = Configuration, Key = SFI, Result = 100",
                   "GetBooleanSetting, Section = Configuration, Key = SFI, Result = True",
                   "GetstringSetting,  Section = Configuration, Key = SFI, Result = 99.6"}));
}

TEST_F(SettingsTest, ReportADefaultThatDoesNotConvert) {
  EXPECT_EQ(Integer("12", "x"), 0);
  EXPECT_EQ(Long("12", ""), 0);
  EXPECT_FALSE(Boolean("True", "maybe"));
  ASSERT_EQ(log_.errors.size(), 3U);
  const char* const starts[] = {
      "program error 13 in module Common.GetIntegerSetting, SectionName = Configuration, Key = "
      "SFI, "
      "theSetting = 12, DefaultValue = x: ",
      "program error 13 in module Common.GetLongSetting, SectionName = Configuration, Key = SFI, "
      "theSetting = 12, DefaultValue = : ",
      "program error 13 in module Common.GetBooleanSetting, SectionName = Configuration, Key = "
      "SFI, "
      "theSetting = True, DefaultValue = maybe: "};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(log_.errors[i].starts_with(starts[i]));
  EXPECT_TRUE(log_.debug.empty());
}

TEST(SettingName, IsInvalidWhenAStoreCannotHoldIt) {
  for (const char* name : {"SFI", "Take off angle", "a;b", "a#b", "R\xC3\xA9glages", "10M"}) {
    EXPECT_TRUE(IsSettingName(name)) << name;
  }
  for (const char* name : {"", " a", "a ", "\ta", "[a", "a]", "a=b", "a\\b", "a\nb", ";a", "#a"}) {
    EXPECT_FALSE(IsSettingName(name)) << name;
  }
  EXPECT_TRUE(IsSettingName(std::string(255, 'a')));
  EXPECT_FALSE(IsSettingName(std::string(256, 'a')));
}

}  // namespace
}  // namespace skyhop::Common
