#include "spaceweather/sunspot_number.h"

#include <gtest/gtest.h>

#include "support/fake_downloads.h"

namespace skyhop::testing {
namespace {

using SolarForecastModule::SunspotNumber;
using Lines = std::vector<std::string>;

class SunspotNumberTest : public ::testing::Test {
 protected:
  void Download(const std::string& content) {
    with_.fetcher.content = content;
    with_.host.values[SolarValue::kSunspotNumber] = "50";
    with_.host.events.clear();
    with_.messages.shown.clear();
    with_.log.debug.clear();
    number_.DownloadSSN();
  }
  [[nodiscard]] const std::string& Box() { return with_.host.values[SolarValue::kSunspotNumber]; }

  DownloadFixture with_;
  SunspotNumber number_{with_.procedure,       with_.host,     with_.origins, with_.messages,
                        with_.log.diagnostics, with_.log.clock};
};

TEST_F(SunspotNumberTest, IsTheOneOfTheMonth) {
  Download(TestData("spaceweather/predicted-solar-cycle.json"));
  EXPECT_EQ(Box(), "96.4");
  EXPECT_EQ(with_.messages.Texts(), Lines());
  EXPECT_EQ(with_.host.events, (Lines{"disable", "caption downloading SSN", "enable", "caption "}));
  const Lines debug = with_.Debug();
  EXPECT_EQ(debug.front(), "SolarForecastModule.DownloadDownloadSSN, theurl = https://host/ssn");
  EXPECT_EQ(debug.back(), "SolarForecastModule.DownloadSSN complete");
  with_.log.clock.now = std::chrono::sys_days{std::chrono::year{2027} / 1 / 31};
  Download(TestData("spaceweather/predicted-solar-cycle.json"));
  EXPECT_EQ(Box(), "93");
}

TEST_F(SunspotNumberTest, KeepsTheTextOfTheFile) {
  const std::string object = R"([{"time-tag": "2026-11", "predicted_ssn":)";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {object + " 115.3, \"low\": 1}]", "115.3"},
      {object + "7,", "7"},
      {object + " 80}, {}]", "80"},
      {object + " 80\n},\n{}]", "80"},
      {object + " -0.4, ", "0"},
      {"[\n" + object.substr(1) + " 3,", "3"},
  };
  for (const auto& [content, ssn] : cases) {
    Download(content);
    EXPECT_EQ(Box(), ssn) << content;
    EXPECT_EQ(with_.messages.Texts(), Lines()) << content;
  }
}

TEST_F(SunspotNumberTest, IsZeroWhenTheFileHasNone) {
  const std::string late =
      "Can't obtain timely Smoothed Sunspot Number (SSN) from \n\nhttps://host/ssn\n\nsetting SSN "
      "to 0";
  const std::string incorrect =
      "Incorrect Smoothed Sunspot Number (SSN) format in \n\nhttps://host/ssn\n\nsetting SSN to 0";
  const std::string month = "   no match on desired month; giving up";
  const std::string open = "   no terminal ,";
  const struct {
    std::string content;
    std::string message;
    std::string logged;
  } cases[] = {
      {R"([{"time-tag":"2026-11", "predicted_ssn": 5, )", late, month},
      {R"([{"a": 1, "time-tag": "2026-11", "predicted_ssn": 5, )", late, month},
      {R"([{"time-tag": "2026-10", "predicted_ssn": 5, )", late, month},
      {"\r"
       R"([{"time-tag": "2026-11", "predicted_ssn": 5, )",
       late, month},
      {"<html>", late, month},
      {R"([{"time-tag": "2026-11", "predicted_ssn": 5)", incorrect, open},
      {R"([{"time-tag": "2026-11", "predicted_ssn": 5}])", incorrect, open},
      {R"([{"time-tag": "2026-11", "predicted_ssn": 1e999, )", incorrect, "   not a number"},
      {R"([{"time-tag": "2026-11", "predicted_ssn" : 5, )", incorrect, open},
      {R"([{"time-tag": "2026-11", "predicted_ssn": null, )", incorrect, "   not a number"},
      {R"([{"time-tag": "2026-11"}])", incorrect, open},
  };
  for (const auto& [content, message, logged] : cases) {
    Download(content);
    EXPECT_EQ(Box(), "0") << content;
    ASSERT_EQ(with_.messages.Texts(), Lines{message}) << content;
    EXPECT_EQ(with_.messages.shown[0].second, "Skyhop SSN download");
    const Lines debug = with_.Debug();
    ASSERT_EQ(debug.size(), 3U);
    EXPECT_EQ(debug[1], logged);
    EXPECT_EQ(with_.host.events.back(), "caption ");
  }
}

TEST_F(SunspotNumberTest, IsKeptWhenNothingWasDownloaded) {
  const auto attempt = [&](const std::string& url, std::int32_t code,
                           const std::optional<std::string>& content) {
    std::filesystem::remove(with_.log.folder / "SSN.txt");
    with_.host.urls[DownloadKind::kSunspotNumber] = url;
    with_.fetcher.code = code;
    with_.fetcher.content = content;
    with_.messages.shown.clear();
    number_.DownloadSSN();
    EXPECT_EQ(Box(), "50");
    EXPECT_EQ(with_.messages.shown.size(), 1U);
    return with_.messages.shown.at(0).second + ": " + with_.messages.shown.at(0).first;
  };
  EXPECT_EQ(attempt("", 0, "x"),
            "Skyhop: No 'Predicted Sunspot Numbers' URL specified in the Configuration window's "
            "'Prediction URLs' panel");
  EXPECT_EQ(attempt("u", fetch_codes::kCannotConnect, std::nullopt),
            "Skyhop Sunspot Number: unable to download sunspot number from u - cannot connect");
  EXPECT_EQ(attempt("u", 0, std::nullopt),
            "Skyhop Sunspot Number: SolarForecastModule.DownloadSSB: downloading sunspot number "
            "from u failed to create a file");
  EXPECT_EQ(attempt("u", 0, ""),
            "Skyhop Sunspot Number: SolarForecastModule.DownloadSSSN: downloaded sunspot number "
            "from u is empty");
  EXPECT_EQ(with_.log.debug.back(),
            "SolarForecastModule.SolarForecastError: SolarForecastModule.DownloadSSSN: downloaded "
            "sunspot number from u is empty");
}

}  // namespace
}  // namespace skyhop::testing
