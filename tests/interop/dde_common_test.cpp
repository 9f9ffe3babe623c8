#include "interop/dde_common.h"

#include <gtest/gtest.h>

#include "support/diagnostics_fixture.h"

namespace skyhop::testing {
namespace {

using DDECommon::Records;
using DDECommon::Token;
using Tokens = std::vector<Token>;

class RecordsTest : public ::testing::Test {
 protected:
  Tokens Parse(const std::string& record) {
    records_.ParseRecord(record);
    Tokens tokens;
    for (std::int16_t position = 1;; ++position) {
      const Token token = records_.GetToken(position);
      if (token == Token()) return tokens;
      tokens.push_back(token);
    }
  }

  LoggedDiagnostics log_;
  Records records_{log_.diagnostics};
};

TEST_F(RecordsTest, CountsFieldLengthsInCharacters) {
  const struct {
    const char* name;
    std::string value;
    std::string field;
  } cases[] = {
      {"freq", "14025.5", "<freq:7>14025.5"},
      {"name", "", "<name:0>"},
      {"", "x", ""},
      {"qth", "Z\xC3\xBCrich \xE2\x82\xAC", "<qth:8>Z\xC3\xBCrich \xE2\x82\xAC"},
      {"bytes", "\xFF\xC3(", "<bytes:3>\xFF\xC3("},
  };
  for (const auto& [name, value, field] : cases) {
    EXPECT_EQ(records_.EncodeField(name, value), field);
  }
  EXPECT_EQ(records_.EncodeField("a", std::string(32767, 'x')).substr(0, 9), "<a:32767>");
  EXPECT_TRUE(log_.errors.empty());
  EXPECT_EQ(records_.EncodeField("a", std::string(32768, 'x')), "");
  EXPECT_EQ(log_.errors,
            std::vector<std::string>{"program error 6 in module DDECommon.EncodeField: the value "
                                     "of the field \"a\" has 32768 characters"});
}

TEST_F(RecordsTest, ReadsRecordsUpToTheFirstError) {
  const struct {
    const char* record;
    Tokens tokens;
  } cases[] = {
      {"<a:3>x>y<b:1>z", {{"a", "x>y"}, {"b", "z"}}},
      {"<a:2>xyz<b:1>q", {{"a", "xy"}, {"b", "q"}}},
      {"before <A:1>1 between <:1>2", {{"A", "1"}, {"", "2"}}},
      {"<a:5><b:1><c:1>x", {{"a", "<b:1>"}, {"c", "x"}}},
      {"<a:99>short", {{"a", "short"}}},
      {"<a:1>1<EOR><b:1>2", {{"a", "1"}}},
      {"<a:1>1<eOr>", {{"a", "1"}}},
      {"<a:1>1<eor", {{"a", "1"}}},
      {"<a:1>1<call><b:1>2", {{"a", "1"}}},
      {"<a:1>1<b:2", {{"a", "1"}}},
      {"", {}},
      {"no field", {}},
      {"<:>", {}},
      {"<a: 2 >xyz", {{"a", "xy"}}},
      {"<a:2.5>xyz", {{"a", "xy"}}},
      {"<a:1.5>xyz", {{"a", "xy"}}},
      {"<a:2e0>xyz", {{"a", "xy"}}},
      {"<a:-0.4>x<b:1>2", {{"a", ""}, {"b", "2"}}},
      // An invalid length ends the record after its field.
      {"<a:x>1<b:1>2", {{"a", ""}}},
      {"<a:-1>1<b:1>2", {{"a", ""}}},
      {"<a:>1<b:1>2", {{"a", ""}}},
      {"<a:1:S>1<b:1>2", {{"a", ""}}},
      {"<a:32768>1<b:1>2", {{"a", ""}}},
      {"<a:40000>1<b:1>2", {{"a", ""}}},
      {"<a:1e999>1<b:1>2", {{"a", ""}}},
      {"<a:nan>1", {{"a", ""}}},
      {"<a:99999999999999999999>1", {{"a", ""}}},
      // Characters, not bytes.
      {"<a:2>\xC3\xBCx<b:1>\xF0\x9F\x93\xA1<c:1>z",
       {{"a", "\xC3\xBCx"}, {"b", "\xF0\x9F\x93\xA1"}, {"c", "z"}}},
      {"<a:2>\xFF\xC3<b:1>z", {{"a", "\xFF\xC3"}, {"b", "z"}}},
      {"<a:9>\xE2\x82", {{"a", "\xE2\x82"}}},
  };
  for (const auto& [record, tokens] : cases) EXPECT_EQ(Parse(record), tokens) << record;
  EXPECT_TRUE(log_.errors.empty());
}

TEST_F(RecordsTest, ParsesEncodedFields) {
  const Tokens fields = {{"a", ""}, {"<b", "<eor>"}, {"c", ">:<c:1>"}, {"d", "\xC3\xA9\n\x01"}};
  std::string record;
  for (const Token& field : fields) record += records_.EncodeField(field.name, field.value);
  EXPECT_EQ(Parse(record + "<eor>"), fields);
}

TEST_F(RecordsTest, AcceptsAHundredFields) {
  std::string record;
  for (int i = 0; i < 100; ++i) record += "<a:1>1";
  EXPECT_EQ(Parse(record).size(), 100U);
  EXPECT_TRUE(log_.errors.empty());
  EXPECT_EQ(Parse(record + "<b:1>2").size(), 100U);
  EXPECT_EQ(log_.errors, std::vector<std::string>{"program error 9 in module DDECommon.ParseRecord:"
                                                  " the record has more than 100 fields"});
  EXPECT_EQ(Parse("<a:1>1").size(), 1U) << "left over from the record before";
}

TEST_F(RecordsTest, PositionsCountFromOne) {
  records_.ParseRecord("<a:1>1");
  EXPECT_EQ(records_.GetToken(1), (Token{"a", "1"}));
  EXPECT_EQ(records_.GetToken(2), Token());
  EXPECT_EQ(records_.GetToken(32767), Token());
  EXPECT_TRUE(log_.errors.empty());
  for (const std::int16_t position : {std::int16_t{0}, std::int16_t{-1}}) {
    EXPECT_EQ(records_.GetToken(position), Token());
    EXPECT_EQ(log_.errors.back(),
              "program error 9 in module DDECommon.GetToken: there is no field " +
                  std::to_string(position));
  }
}

TEST_F(RecordsTest, ParsesAnyBytesWithoutErrors) {
  // A fixed pseudo-random sequence of characters that records use.
  const std::string alphabet = "<<>>::0123456789-.eEoOrRaz \xC3\xBC\xFF";
  std::uint32_t state = 1;
  for (int round = 0; round < 20000; ++round) {
    std::string record;
    for (int i = 0; i < 40; ++i) {
      state = state * 1664525U + 1013904223U;
      record += alphabet[(state >> 16U) % alphabet.size()];
    }
    std::size_t size = 0;
    for (const Token& token : Parse(record)) size += token.name.size() + token.value.size();
    ASSERT_LE(size, record.size()) << record;
  }
  EXPECT_TRUE(log_.errors.empty());
}

TEST(RolesTest, HaveNamesAndNicknames) {
  const char* roles[][2] = {{"XcvrControlServer", "TU"}, {"LogServer", "AV"},
                            {"QSLInfoServer", "QU"},     {"TesseraServer", "TS"},
                            {"SpotServer", "GL"},        {"PropagationServer", "SH"},
                            {"ModeServer", "CH"},        {"", ""}};
  for (std::int16_t role = 0; role < 8; ++role) {
    EXPECT_EQ(DDECommon::ServerName(role), roles[role][0]);
    EXPECT_EQ(DDECommon::ServerNickName(role), roles[role][1]);
  }
  EXPECT_EQ(DDECommon::ServerName(-1), "");
  EXPECT_EQ(DDECommon::OwnCommand("setsplit", "on"), "005setspliton");
}

}  // namespace
}  // namespace skyhop::testing
