#include "spaceweather/current_conditions.h"

#include <gtest/gtest.h>

#include "support/fake_downloads.h"

namespace skyhop::testing {
namespace {

using CurrentConditionsModule::BulletinText;
using CurrentConditionsModule::Conditions;
using Lines = std::vector<std::string>;

class FakeDisplay : public CurrentConditionsModule::BulletinDisplay {
 public:
  [[nodiscard]] bool Visible() const override { return visible; }
  void SetBulletin(const std::string& bulletin) override { text = bulletin; }

  bool visible = true;
  std::string text = "old";
};

class CurrentConditionsTest : public ::testing::Test {
 protected:
  void Update(const std::string& content) {
    with_.fetcher.content = content;
    with_.host.values[SolarValue::kFlux] = "100";
    with_.host.values[SolarValue::kKindex] = "1";
    with_.host.events.clear();
    conditions_.Update();
  }
  [[nodiscard]] std::string Boxes() {
    return with_.host.values[SolarValue::kFlux] + "/" + with_.host.values[SolarValue::kKindex];
  }

  DownloadFixture with_;
  FakeDisplay display_;
  Conditions conditions_{with_.procedure, with_.host,     display_,
                         with_.origins,   with_.messages, with_.log.diagnostics};
};

TEST_F(CurrentConditionsTest, TakesFluxAndKFromTheBulletin) {
  Update(TestData("spaceweather/wwv.txt"));
  EXPECT_EQ(Boxes(), "152/3");
  EXPECT_EQ(display_.text,
            "Solar-terrestrial indices for 14 November follow.\r\n"
            "Solar flux 152 and estimated planetary A-index 11.\r\n"
            "The estimated planetary K-index at 1200 UTC on 15 November was 3.33.\r\n"
            "\r\n"
            "No space weather storms were observed for the past 24 hours.\r\n"
            "\r\n"
            "No space weather storms are predicted for the next 24 hours.");
  EXPECT_EQ(with_.messages.Texts(), Lines());
  EXPECT_EQ(with_.host.events, (Lines{"disable", "caption downloading SFI", "enable", "caption "}));
  EXPECT_TRUE(std::filesystem::exists(with_.log.folder / "SolarForecast.txt"));
  display_ = {};
  display_.visible = false;
  Update(TestData("spaceweather/wwv.txt"));
  EXPECT_EQ(display_.text, "old");
}

TEST_F(CurrentConditionsTest, EmptiesABoxOnlyWhenTheValueIsNotANumber) {
  // Flux and K index. The boxes hold 100 and 1 before.
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Solar flux 9 and K-index x was 0. ", "9/0"},
      {"Solar flux  118  and\nK-index x was  4 .", "118/4"},
      {"Solar flux 118.6 and K-index was 4.", "118.6/4"},
      {"Solar flux unknown and K-index was unknown.", "/"},
      {"Solar flux  and K-index was .", "/"},
      {"Solar flux -1 and K-index was -1.", "/"},
      {"Solar flux 40000 and K-index was 40000.", "/"},
      {"Flux 118 and planetary K was 4.", "100/1"},
      {"Solar flux 118; K-index is 4.", "100/1"},
      {"Solar flux 118, K-index was 4", "100/1"},
      {" and Solar flux 118", "100/1"},
      // Markers count only after the ones before them.
      {". was K-index 4 and Solar flux 118", "100/1"},
      {"Solar flux 118 and\r\nK-index was 4.\r\n", "118/4"},
  };
  for (const auto& [bulletin, boxes] : cases) {
    Update(bulletin);
    EXPECT_EQ(Boxes(), boxes) << bulletin;
  }
}

TEST(BulletinText, KeepsCompleteLinesWithoutHeadersAndComments) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {":Product: x\n# y\na\nb\n", "a\r\nb"},
      {"a\r\nb\r\n", "a\r\nb"},
      {"a\n\n", "a\r\n"},
      {"a\nb", "a"},
      {" :kept\n", " :kept"},
      {"\n", "\r\n"},
      {"", ""},
  };
  for (const auto& [bulletin, text] : cases) EXPECT_EQ(BulletinText(bulletin), text) << bulletin;
}

TEST_F(CurrentConditionsTest, KeepsTheValuesWhenNothingWasDownloaded) {
  const auto attempt = [&](const std::string& url, std::int32_t code,
                           const std::optional<std::string>& content) {
    std::filesystem::remove(with_.log.folder / "SolarForecast.txt");
    with_.host.urls[DownloadKind::kCurrentConditions] = url;
    with_.fetcher.code = code;
    with_.fetcher.content = content;
    with_.messages.shown.clear();
    conditions_.Update();
    EXPECT_EQ(Boxes(), "100/1");
    EXPECT_EQ(display_.text, "old");
    EXPECT_EQ(with_.messages.shown.size(), 1U);
    return with_.messages.shown.at(0).second + ": " + with_.messages.shown.at(0).first;
  };
  EXPECT_EQ(attempt(" ", 0, "x"),
            "Skyhop: No 'Predicted Solar and Geomagnetic Conditions' URL specified in the "
            "Configuration window's 'Prediction URLs' panel");
  EXPECT_EQ(attempt("u", fetch_codes::kObjectNotFound, std::nullopt),
            "Skyhop Current Conditions: unable to download current conditions from u - object not "
            "found");
  EXPECT_EQ(attempt("u", 0, std::nullopt),
            "Skyhop Current Conditions: CurrentConditionsModule.Update: downloading current "
            "conditions from u failed to create a file");
  EXPECT_EQ(attempt("u", 0, ""),
            "Skyhop Current Conditions: CurrentConditionsModule.Update: downloaded current "
            "conditions from u is empty");
  EXPECT_EQ(with_.log.debug.back(),
            "CurrentConditionsModule.CurrentConditionsError: CurrentConditionsModule.Update: "
            "downloaded current conditions from u is empty");
}

}  // namespace
}  // namespace skyhop::testing
