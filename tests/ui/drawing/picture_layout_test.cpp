#include <gtest/gtest.h>

#include <vector>

#include "ui/drawing/text_width.h"

namespace skyhop {
namespace {

TEST(SpreadApart, MovesAsLittleAsItCan) {
  const struct {
    std::vector<double> wanted, expected;
  } cases[] = {{{}, {}},
               {{-5}, {0}},
               {{10, 30, 50}, {10, 30, 50}},
               {{20, 24, 60}, {17, 27, 60}},
               {{1, 2, 3}, {0, 10, 20}},
               {{99, 100}, {90, 100}},
               {{40, 41, 48, 70}, {33, 43, 53, 70}}};
  for (const auto& c : cases) {
    std::vector<double> places = c.wanted;
    SpreadApart(places, 10, 0, 100);
    EXPECT_EQ(places, c.expected);
  }
  std::vector<double> crowd = {50, 50, 50};
  SpreadApart(crowd, 10, 45, 55);
  EXPECT_EQ(crowd, (std::vector<double>{45, 50, 55}));
}

TEST(TextWidth, CutsBetweenWordsAndNeverWithinACharacter) {
  const FontWeight normal = FontWeight::kNormal;
  const double three = TextWidth("ab cd ef", 10, normal);
  EXPECT_EQ(FittingLength("ab cd ef", three, 10, normal), 8U);
  EXPECT_EQ(FittingLength("ab cd ef", three - 1, 10, normal), 5U);
  EXPECT_EQ(FittingLength("ööö", TextWidth("öö", 10, normal) + 1, 10, normal), 4U);
  EXPECT_EQ(FittingLength("öö", 0, 10, normal), 2U);
  EXPECT_EQ(Shortened("ab cd ef", three, 10, normal), "ab cd ef");
  EXPECT_EQ(Shortened("ab cd ef", three - 1, 10, normal), "ab cd\u2026");
  EXPECT_GT(TextWidth("ab", 10, FontWeight::kBold), TextWidth("ab", 10, normal));
}

}  // namespace
}  // namespace skyhop
