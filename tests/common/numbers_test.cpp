#include "common/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "common/errors.h"
#include "support/error_number.h"

namespace skyhop {
namespace {

using ::skyhop::testing::ErrorNumber;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberInText, IsReadLeadingOrWhole) {
  const struct {
    std::string text;
    double leading;
    std::optional<double> whole;
  } cases[] = {
      {"12.5", 12.5, 12.5},
      {" \t-12.5 ", -12.5, -12.5},
      {"+7", 7, 7},
      {".5", 0.5, 0.5},
      {"-.5", -0.5, -0.5},
      {"5.", 5, 5},
      {"1e3", 1000, 1000},
      {"1E-2", 0.01, 0.01},
      {"2.5e+1", 25, 25},
      {"007", 7, 7},
      {"9007199254740993", 9007199254740992, 9007199254740992},
      {"12 dB", 12, std::nullopt},
      {"1e", 1, std::nullopt},
      {"1e+", 1, std::nullopt},
      {"1.2.3", 1.2, std::nullopt},
      {"1,000", 1, std::nullopt},
      {"0x10", 0, std::nullopt},
      {"12\xC2\xB0", 12, std::nullopt},
      {"- 5", 0, std::nullopt},
      {"+-5", 0, std::nullopt},
      {"--5", 0, std::nullopt},
      {".", 0, std::nullopt},
      {"-", 0, std::nullopt},
      {"e5", 0, std::nullopt},
      {"inf", 0, std::nullopt},
      {"nan", 0, std::nullopt},
      {"", 0, std::nullopt},
      {"  ", 0, std::nullopt},
      {std::string("1\0"
                   "2",
                   3),
       1, std::nullopt},
      {"1e400", kInfinity, kInfinity},
      {"-1e400", -kInfinity, -kInfinity},
      {"1e99999999999999999999", kInfinity, kInfinity},
      {"1e-99999999999999999999", 0, 0},
      {"0.0001e-400", 0, 0},
      {"-1e-400", 0, 0},
      {"0e99999999999999999999", 0, 0},
      {std::string(65536, '9'), kInfinity, kInfinity},
      {"0." + std::string(65536, '0') + "1", 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text.substr(0, 40);
    EXPECT_EQ(WholeNumberText(c.text), c.whole) << c.text.substr(0, 40);
  }
}

TEST(NumberConversion, RoundsHalvesToTheEvenNeighbour) {
  const struct {
    const char* text;
    int value;
  } cases[] = {{"12.5", 12}, {"13.5", 14},       {"-0.5", 0},          {"-1.5", -2},
               {"12.6", 13}, {"32767.4", 32767}, {"-32768.5", -32768}, {"0.49999999999999994", 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(ToInteger(c.text), c.value) << c.text;
    EXPECT_EQ(ToLong(c.text), c.value) << c.text;
  }
  EXPECT_EQ(ToLong("2147483647.4"), 2147483647);
  EXPECT_EQ(ToLong("-2147483648.5"), -2147483647 - 1);
  EXPECT_EQ(ToSingle("0.1"), 0.1F);
  EXPECT_EQ(ToDouble("0.1"), 0.1);
}

TEST(NumberConversion, ThrowsTheErrorNumberOfTheFailure) {
  EXPECT_EQ(ErrorNumber([] { return ToInteger("32767.5"); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return ToInteger("-32769"); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return ToLong("2147483647.5"); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return ToDouble("1e400"); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return ToSingle("1e39"); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return StoreSingle(std::nan("")); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return RoundToInteger(std::nan("")); }), errors::kOverflow);
  EXPECT_EQ(ErrorNumber([] { return RoundToLong(-kInfinity); }), errors::kOverflow);
  for (const char* text : {"", " ", "abc", "1 2", "12x", "True"}) {
    EXPECT_EQ(ErrorNumber([&] { return ToDouble(text); }), errors::kTypeMismatch) << text;
    EXPECT_EQ(ErrorNumber([&] { return ToInteger(text); }), errors::kTypeMismatch) << text;
  }
}

TEST(NumberConversion, ReadsFlagsFromWordsAndNumbers) {
  for (const char* text : {"True", "TRUE", " true ", "-1", "1", "0.1", "1e5"}) {
    EXPECT_TRUE(ToBoolean(text)) << text;
  }
  for (const char* text : {"False", "fALSE", "0", "-0.0", "0e5"}) EXPECT_FALSE(ToBoolean(text));
  for (const char* text : {"", "yes", "T", "1x"}) {
    EXPECT_EQ(ErrorNumber([&] { return ToBoolean(text); }), errors::kTypeMismatch) << text;
  }
}

TEST(NumberText, IsPlainAndReadsBack) {
  EXPECT_EQ(NumberText(0.25), "0.25");
  EXPECT_EQ(NumberText(-3.0), "-3");
  EXPECT_EQ(NumberText(100000.0), "100000");
  EXPECT_EQ(NumberText(0.1F), "0.1");
  EXPECT_EQ(NumberText(1e23), "99999999999999991611392");
  EXPECT_EQ(NumberText(-2.5e-7F), "-0.00000025");
  for (const double value : {std::numeric_limits<double>::max(), -5e-324, 2.2250738585072014e-308,
                             1.0 / 3, 6.02214076e23}) {
    EXPECT_EQ(ToDouble(NumberText(value)), value);
  }
}

TEST(NumberText, HasFixedDecimalsOrWidth) {
  const struct {
    double value;
    int decimals;
    const char* text;
  } cases[] = {{2.5, 0, "2"},      {3.5, 0, "4"},
               {-2.5, 0, "-2"},    {0.125, 2, "0.12"},
               {1.005, 2, "1.00"}, {9.995, 1, "10.0"},
               {7, 3, "7.000"},    {1e22, 1, "10000000000000000000000.0"},
               {1e-9, 2, "0.00"}};
  for (const auto& c : cases) EXPECT_EQ(FixedText(c.value, c.decimals), c.text);
  EXPECT_EQ(PaddedNumber(7, 2), "07");
  EXPECT_EQ(PaddedNumber(123, 2), "123");
  EXPECT_EQ(PaddedNumber(-5, 3), "-005");
  EXPECT_EQ(PaddedNumber(std::numeric_limits<int>::min(), 2), "-2147483648");
}

TEST(Numbers, AreDetectedAtTheStartOfAText) {
  for (const char* text : {"0", " 12w", "-3", "+.5", "7e"})
    EXPECT_TRUE(BeginsWithNumber(text)) << text;
  for (const char* text : {"", " ", "-", ".", "w12", "nan"}) {
    EXPECT_FALSE(BeginsWithNumber(text)) << text;
  }
}

}  // namespace
}  // namespace skyhop
