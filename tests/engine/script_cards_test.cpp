#include "engine/script_cards.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/files.h"
#include "support/diagnostics_fixture.h"

namespace skyhop::IONCAPModule {
namespace {

using skyhop::testing::FakePause;
using skyhop::testing::LoggedDiagnostics;

constexpr const char* kFormatError = "***Format Error***";

class ScriptCardsTest : public ::testing::Test {
 protected:
  /// The text that `write` adds to a prediction script.
  std::string Written(const std::function<void(int)>& write) {
    const int file = cards_.InitializeScript(script_, false);
    EXPECT_EQ(file, kPredictionScript);
    write(file);
    const bool complete = cards_.CloseScript(file);
    std::string content = ReadFile(script_, 1000);
    EXPECT_EQ(complete, content.find("***") == std::string::npos) << content;
    return content;
  }

  LoggedDiagnostics log_;
  FakePause pause_;
  ScriptCards cards_{pause_, log_.diagnostics};
  std::filesystem::path script_ = log_.folder / "script.txt";
};

TEST_F(ScriptCardsTest, TextsArePaddedCutOrRefused) {
  const struct {
    bool right;
    const char* text;
    int width;
    const char* expected;
  } cases[] = {
      {false, "CIRCUIT", 10, "CIRCUIT   "},
      {false, "TWELVELETTER", 10, "TWELVELETT"},
      {false, "", 5, "     "},
      {false, "A", 0, ""},
      {false, "A", -1, kFormatError},
      {true, "ABC", 5, "  ABC"},
      {true, "ABCDE", 5, "ABCDE"},
      {true, "ABCDEF", 5, "***PutRightString Overflow error***"},
      {true, "", 0, ""},
      {true, "A", -1, kFormatError},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Written([&](int file) {
                if (row.right) return cards_.PutRightString(file, row.text, row.width);
                cards_.PutString(file, row.text, row.width);
              }),
              row.expected)
        << row.text << " in " << row.width;
  }
}

TEST_F(ScriptCardsTest, IntegersAreZeroPadded) {
  const struct {
    int value;
    int width;
    const char* expected;
  } cases[] = {{26, 5, "00026"},      {-26, 5, "-00026"},
               {0, 5, "00000"},       {123456 % 100000, 3, "23456"},
               {-32768, 5, "-32768"}, {7, 0, "7"},
               {7, -1, kFormatError}};
  for (const auto& row : cases) {
    EXPECT_EQ(Written([&](int file) {
                cards_.PutInteger(file, static_cast<std::int16_t>(row.value), row.width);
              }),
              row.expected);
  }
}

TEST_F(ScriptCardsTest, ImpliedDecimalsAreRoundedInSinglePrecision) {
  const struct {
    float value;
    float format;
    const char* expected;
  } cases[] = {
      {40.5F, 5.2F, "04050"},
      {0.1167F, 5.2F, "00012"},
      {180.0F, 5.2F, "18000"},
      // 5 W and 25 W in kilowatts: both are halfway and are rounded away from zero.
      {0.005F, 5.2F, "00001"},
      {0.025F, 5.2F, "00003"},
      {-5.0F, 5.2F, "-00500"},
      {-0.001F, 5.2F, "00000"},
      {1000.0F, 5.2F, "100000"},
      {2.6F, 3.0F, "003"},
      {7.0F, 0.0F, "7"},
      {7.0F, 1.2F, kFormatError},
      {7.0F, -5.2F, kFormatError},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Written([&](int file) { cards_.PutFloat(file, row.value, row.format); }),
              row.expected)
        << row.value << " with " << row.format;
  }
}

TEST_F(ScriptCardsTest, PointedNumbersLeaveTheWidthOneSmaller) {
  const struct {
    int value;
    int width;
    const char* expected;
    int width_after;
  } cases[] = {{24, 5, "  24.", 4},      {-30, 5, " -30.", 4}, {0, 5, "   0.", 4},
               {12345, 5, " 123.", 4},   {5, 1, ".", 0},       {5, 0, kFormatError, 0},
               {5, -3, kFormatError, -3}};
  for (const auto& row : cases) {
    int remaining = row.width;
    EXPECT_EQ(Written([&](int file) {
                cards_.PutSingle(file, static_cast<std::int16_t>(row.value), remaining);
              }),
              row.expected);
    EXPECT_EQ(remaining, row.width_after);
  }
}

TEST_F(ScriptCardsTest, IntegerFormatErrorsGoIntoThePredictionScript) {
  const std::filesystem::path snr_script = log_.folder / "snr.txt";
  ASSERT_EQ(cards_.InitializeScript(script_, false), kPredictionScript);
  ASSERT_EQ(cards_.InitializeScript(snr_script, true), kSnrScript);
  cards_.PutInteger(kSnrScript, 7, -1);
  cards_.PutString(kSnrScript, "A", -1);
  EXPECT_FALSE(cards_.CloseScript(kPredictionScript));
  EXPECT_FALSE(cards_.CloseScript(kSnrScript));
  EXPECT_EQ(ReadFile(script_, 100), kFormatError);
  EXPECT_EQ(ReadFile(snr_script, 100), kFormatError);
}

TEST_F(ScriptCardsTest, AnUnknownFileNumberIsReportedNotFatal) {
  cards_.PutInteger(kSnrScript, 7, -1);
  ASSERT_EQ(log_.errors.size(), 1U);
  EXPECT_EQ(log_.errors[0].find("program error 5 in module IONCAPModule.PutInteger: "), 0U);
  EXPECT_FALSE(cards_.CloseScript(7));
}

TEST_F(ScriptCardsTest, AScriptWithAMissingFieldIsNotComplete) {
  ASSERT_EQ(cards_.InitializeScript(script_, false), kPredictionScript);
  cards_.PutFloat(kPredictionScript, 1e30F, 5.2F);
  EXPECT_FALSE(cards_.CloseScript(kPredictionScript));
  EXPECT_EQ(log_.errors.back(),
            "IONCAPModule.CloseScript: a field of the script could not be written");
  EXPECT_EQ(Written([&](int file) { cards_.PutFloat(file, 1.0F, 5.2F); }), "00100")
      << "the next script starts afresh";
}

TEST_F(ScriptCardsTest, LinesEndInCarriageReturnAndLineFeed) {
  EXPECT_EQ(Written([&](int file) {
              cards_.PutLine(file, "QUIT");
              cards_.PutNewLine(file);
            }),
            "QUIT\r\n\r\n");
}

TEST_F(ScriptCardsTest, AnOldScriptIsReplaced) {
  WriteFile(script_, std::string(5000, 'x'));
  EXPECT_EQ(Written([&](int file) { cards_.PutLine(file, "new"); }), "new\r\n");
  EXPECT_TRUE(pause_.waits.empty());
}

TEST_F(ScriptCardsTest, AFolderInTheWayIsTriedElevenTimesAndKept) {
  std::filesystem::create_directory(script_);
  EXPECT_EQ(cards_.InitializeScript(script_, true), -1);
  EXPECT_EQ(pause_.waits,
            std::vector<std::chrono::milliseconds>(10, std::chrono::milliseconds(50)));
  EXPECT_EQ(log_.errors,
            std::vector<std::string>{"IONCAPModule.InitializeScript: unable to delete existing " +
                                     PathText(script_) + ", SNR = True"});
  EXPECT_TRUE(std::filesystem::is_directory(script_));
}

TEST_F(ScriptCardsTest, AScriptThatAppearsLaterIsStillDeleted) {
  std::filesystem::create_directory(script_);
  pause_.during = [&] { std::filesystem::remove(script_); };
  EXPECT_EQ(cards_.InitializeScript(script_, false), kPredictionScript);
  EXPECT_EQ(pause_.waits.size(), 1U);
}

TEST_F(ScriptCardsTest, AMissingFolderIsToldAfterElevenAttempts) {
  const std::filesystem::path lost = log_.folder.Path() / "nowhere" / "script.txt";
  EXPECT_EQ(cards_.InitializeScript(lost, false), -1);
  EXPECT_EQ(pause_.waits.size(), 10U);
  EXPECT_EQ(log_.errors,
            std::vector<std::string>{"IONCAPModule.InitializeScript: unable to create " +
                                     PathText(lost) + ", SNR = False"});
}

}  // namespace
}  // namespace skyhop::IONCAPModule
