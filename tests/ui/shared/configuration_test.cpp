#include "ui/shared/configuration.h"

#include <gtest/gtest.h>

#include "common/program.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::testing {
namespace {

using Item = Configuration::Item;

class ConfigurationTest : public ::testing::Test {
 protected:
  ConfigurationTest() {
    configuration_.AddListener([this](Item item) { told_.push_back(item); });
  }

  void Store(const std::string& section, const std::string& key, const std::string& value) {
    store_.SaveSetting(kProductName, section, key, value);
  }
  std::string Stored(const std::string& section, const std::string& key) {
    return store_.Read(kProductName, section, key, "(none)");
  }

  LoggedDiagnostics log_;
  MemorySettingsStore store_;
  Common::Settings settings_{store_, log_.diagnostics};
  Configuration configuration_{settings_, log_.diagnostics};
  std::vector<Item> told_;
};

TEST_F(ConfigurationTest, HasDefaultsAfterAFreshInstallation) {
  configuration_.Load();
  EXPECT_EQ(configuration_.Engine(), 0);
  EXPECT_TRUE(configuration_.DistanceMiles());
  EXPECT_FALSE(configuration_.DiagMode());
  EXPECT_FALSE(configuration_.FreqDependentEnabled());
  EXPECT_TRUE(configuration_.ShowToolTips());
  EXPECT_FALSE(configuration_.DualMonitor());
  EXPECT_EQ(configuration_.Band(10), BandSettings{});
  EXPECT_EQ(configuration_.Modes(), DefaultModes());
  EXPECT_EQ(configuration_.Url(Address::kWWVURL), "https://services.swpc.noaa.gov/text/wwv.txt");
  EXPECT_TRUE(store_.values.empty());
  EXPECT_TRUE(told_.empty());
}

TEST_F(ConfigurationTest, UsesTheDefaultEngineUntilOneIsStored) {
  configuration_.SetDefaultEngine(2);
  configuration_.Load();
  EXPECT_EQ(configuration_.Engine(), 2);
  EXPECT_TRUE(store_.values.empty());
  Store("Configuration", "Engine", "0");
  configuration_.Load();
  EXPECT_EQ(configuration_.Engine(), 0);
}

TEST(DefaultModes, RequireTheSnrOfTheirUsualBandwidths) {
  const std::vector<ModeSettings> expected = {
      {"CW", "24"},    {"SSB", "45"},    {"AM", "51"},  {"FM", "56"},  {"RTTY", "36"},
      {"PSK31", "27"}, {"FT8", "13"},    {"FT4", "17"}, {"JT65", "9"}, {"JT9", "7"},
      {"JS8", "10"},   {"OLIVIA", "22"}, {"DV", "33"}};
  EXPECT_EQ(DefaultModes(), expected);
}

TEST_F(ConfigurationTest, SavesEachChangeAtOnceAndCallsListeners) {
  const struct {
    const char* what;
    std::function<bool(Configuration&)> set;
    Item item;
    const char* section;
    const char* key;
    const char* value;
  } cases[] = {
      {"engine", [](Configuration& c) { return c.SetEngine(3); }, Item::kEngine, "Configuration",
       "Engine", "3"},
      {"miles", [](Configuration& c) { return c.SetDistanceMiles(false); }, Item::kDistanceMiles,
       "Configuration", "DistanceMiles", "False"},
      {"antenna",
       [](Configuration& c) {
         return c.SetAntenna(Station::kDX, {"samples/sample.23", "", "45"});
       },
       Item::kAntennas, "Antennas", "DXAntenna", "samples/sample.23"},
      {"log", [](Configuration& c) { return c.SetDiagMode(true); }, Item::kDiagMode,
       "Configuration", "DiagMode", "True"},
      {"per band", [](Configuration& c) { return c.SetFreqDependentEnabled(true); },
       Item::kFreqDependent, "FreqDependentSettings", "FreqDependentEnabled", "True"},
      {"take-off",
       [](Configuration& c) {
         return c.SetBand(5, {"7", ""});
       },
       Item::kFreqDependent, "FreqDependentSettings", "FreqDependentTakeoff20M", "7"},
      {"power",
       [](Configuration& c) {
         return c.SetBand(0, {"", "100"});
       },
       Item::kFreqDependent, "FreqDependentSettings", "FreqDependentPower160M", "100"},
      {"page", [](Configuration& c) { return c.SetUrl(Address::kURL3, "https://a.b/"); },
       Item::kUrls, "Configuration", "URL3", "https://a.b/"},
      {"download", [](Configuration& c) { return c.SetUrl(Address::kSFIURL, ""); }, Item::kUrls,
       "Configuration", "SFIURL", ""},
      {"tool tips", [](Configuration& c) { return c.SetShowToolTips(false); }, Item::kShowToolTips,
       "General", "ShowToolTips", "False"},
      {"start", [](Configuration& c) { return c.SetDownloadSsnAtStart(false); },
       Item::kDownloadSsnAtStart, "Configuration", "DownloadSSNAtStart", "False"},
      {"monitors", [](Configuration& c) { return c.SetDualMonitor(true); }, Item::kDualMonitor,
       "Windows", "DualMonitor", "True"},
      {"modes",
       [](Configuration& c) {
         return c.SetModes({{"Olivia", "20"}, {"CW", "18"}});
       },
       Item::kModes, "ModeDependentSettings", "Modes", "Olivia,CW"},
      {"mode",
       [](Configuration& c) {
         return c.SetModes({{"Olivia", "21"}});
       },
       Item::kModes, "ModeDependentSettings", "SNR Olivia", "21"},
  };
  for (const auto& c : cases) {
    told_.clear();
    EXPECT_TRUE(c.set(configuration_)) << c.what;
    EXPECT_EQ(told_, std::vector{c.item}) << c.what;
    EXPECT_EQ(Stored(c.section, c.key), c.value) << c.what;
    store_.values.clear();
    EXPECT_TRUE(c.set(configuration_)) << c.what;
    EXPECT_EQ(told_.size(), 1U) << c.what << ", unchanged";
    EXPECT_TRUE(store_.values.empty()) << c.what << ", unchanged";
  }
}

TEST_F(ConfigurationTest, IsRestoredInTheNextRun) {
  configuration_.SetEngine(2);
  configuration_.SetDistanceMiles(false);
  configuration_.SetBand(3, {"5.5", "400"});
  const std::vector<ModeSettings> modes = {{"FT8", "14"}, {"Digital voice", "30"}};
  configuration_.SetModes(modes);
  configuration_.SetUrl(Address::kSSNURL, "https://example.org/ssn");
  configuration_.SetShowToolTips(false);
  Configuration next(settings_, log_.diagnostics);
  next.Load();
  EXPECT_EQ(next.Engine(), 2);
  EXPECT_FALSE(next.DistanceMiles());
  EXPECT_EQ(next.Band(3), (BandSettings{"5.5", "400"}));
  EXPECT_EQ(next.Modes(), modes);
  EXPECT_EQ(next.Url(Address::kSSNURL), "https://example.org/ssn");
  EXPECT_FALSE(next.ShowToolTips());
}

TEST_F(ConfigurationTest, IgnoresInvalidStoredValues) {
  Store("Configuration", "Engine", "4");
  Store("Configuration", "DiagMode", "perhaps");
  Store("ModeDependentSettings", "Modes", " ssb ,,Ssb, a=b ,New mode,");
  configuration_.Load();
  EXPECT_EQ(configuration_.Engine(), 0);
  EXPECT_FALSE(configuration_.DiagMode());
  const std::vector<ModeSettings> modes = {{"ssb", "45"}, {"New mode", "24"}};
  EXPECT_EQ(configuration_.Modes(), modes);

  Store("ModeDependentSettings", "Modes", "");
  configuration_.Load();
  EXPECT_TRUE(configuration_.Modes().empty()) << "the user removed them all";
}

TEST_F(ConfigurationTest, RefusesInvalidModesAndEngines) {
  const std::vector<ModeSettings> former = configuration_.Modes();
  const char* const names[] = {"", " \t", "a,b", "CW=", "[x]", "a\\b", "a\nb", "cw"};
  for (const char* name : names) {
    EXPECT_FALSE(configuration_.SetModes({{"CW", "24"}, {name, "1"}})) << name;
  }
  EXPECT_FALSE(configuration_.SetModes({{std::string(300, 'x'), "1"}}));
  EXPECT_FALSE(configuration_.SetEngine(4));
  EXPECT_FALSE(configuration_.SetEngine(-1));
  EXPECT_EQ(configuration_.Modes(), former);
  EXPECT_EQ(configuration_.Engine(), 0);
  EXPECT_TRUE(told_.empty());
  EXPECT_TRUE(store_.values.empty());
}

TEST_F(ConfigurationTest, RefusesAntennasThatNoDeckCanHold) {
  EXPECT_FALSE(configuration_.SetAntenna(Station::kLocal, {"", "high", ""}));
  EXPECT_TRUE(configuration_.SetAntenna(Station::kLocal, {"", "2.15", ""}));
  Store("Antennas", "DXAntenna", "samples/one whose name is too long");
  configuration_.Load();
  EXPECT_EQ(configuration_.AntennaOf(Station::kLocal), (Antenna{"", "2.15", ""}));
  EXPECT_EQ(configuration_.AntennaOf(Station::kDX), Antenna());
}

TEST_F(ConfigurationTest, KeepsAChangeForThisRunWhenSavingFails) {
  store_.save_error = 70;
  EXPECT_FALSE(configuration_.SetEngine(1));
  EXPECT_EQ(configuration_.Engine(), 1);
  EXPECT_EQ(told_, std::vector{Item::kEngine});
  ASSERT_EQ(log_.errors.size(), 1U);
  EXPECT_NE(log_.errors[0].find("70 in module IoncapConfig.Save"), std::string::npos)
      << log_.errors[0];
}

TEST_F(ConfigurationTest, ReplacesTheFormerEnthusiastsPageAtOnce) {
  Store("Configuration", "URL1", "http://www.swpc.noaa.gov/communities/space-weather-enthusiasts");
  Store("Configuration", "URL3", "https://example.org/&?=%20#x");
  configuration_.Load();
  const std::string secure = "https://www.swpc.noaa.gov/communities/space-weather-enthusiasts";
  EXPECT_EQ(configuration_.Url(Address::kURL1), secure);
  EXPECT_EQ(Stored("Configuration", "URL1"), secure);
  EXPECT_EQ(configuration_.Url(Address::kURL3), "https://example.org/&?=%20#x");
  EXPECT_TRUE(told_.empty());
  configuration_.SaveUrls();
  EXPECT_EQ(Stored("Configuration", "URL0"), configuration_.Url(Address::kURL0));
  EXPECT_EQ(Stored("Configuration", "WWVURL"), configuration_.Url(Address::kWWVURL));
}

TEST_F(ConfigurationTest, LetsListenersRegisterOthers) {
  int late = 0;
  configuration_.AddListener([&](Item) {
    for (int count = 0; count < 100; ++count) configuration_.AddListener([&](Item) { ++late; });
  });
  configuration_.SetEngine(1);
  EXPECT_EQ(late, 0);
  configuration_.SetEngine(2);
  EXPECT_EQ(late, 100);
}

}  // namespace
}  // namespace skyhop::testing
