#include "geo/coordinate_text.h"

#include <gtest/gtest.h>

#include <string>

namespace skyhop::LatLonModule {
namespace {

std::string Read(const char* text, Axis axis) {
  const auto angle = ReadCoordinate(text, axis);
  return angle ? CoordinateText(*angle, axis) : "refused";
}

TEST(CoordinateText, ReadsLatitudesAsPeopleWriteThem) {
  const struct {
    const char* text;
    const char* understood;
  } cases[] = {
      {"33 54 S", "33 54' 0\" S"},
      {"33S54", "33 54' 0\" S"},
      {"33 54 0 S", "33 54' 0\" S"},
      {"-33.9", "33 54' 0\" S"},
      {"33.9 S", "33 54' 0\" S"},
      {"33,9s", "33 54' 0\" S"},
      {"S 33 54'", "33 54' 0\" S"},
      {"33\u00B054'S", "33 54' 0\" S"},
      {"\u221233\u00BA 54\u2032 30\u2033", "33 54' 30\" S"},
      {"33 54' 0\" S", "33 54' 0\" S"},
      {"33 54 36.4 S", "33 54' 36\" S"},
      {"33 54 59.6 S", "33 55' 0\" S"},
      {"S33 54,5", "33 54' 30\" S"},
      {"N042 31.000", "42 31' 0\" N"},
      {"54' S", "0 54' 0\" S"},
      {"33 30'' S", "33 0' 30\" S"},
      {"51.5", "51 30' 0\" N"},
      {"+51", "51 0' 0\" N"},
      {"90 N", "90 0' 0\" N"},
      {"-0 0 1", "0 0' 1\" S"},
      // Ambiguous text is refused.
      {"", "refused"},
      {"S", "refused"},
      {"33 54", "refused"},
      {"-33.9 S", "refused"},
      {"33.9 E", "refused"},
      {"33 N 54 S", "refused"},
      {"33.5 54 S", "refused"},
      {"33 60 S", "refused"},
      {"33 54 60 S", "refused"},
      {"90 0 1 N", "refused"},
      {"33 5 S 4", "refused"},
      {"33' 54\u00B0 S", "refused"},
      {"1 2 3 4 S", "refused"},
      {"1e1 S", "refused"},
      {"33-54 S", "refused"},
      {"33.5.4 S", "refused"},
      {"33 54 S x", "refused"},
  };
  for (const auto& [text, understood] : cases) {
    EXPECT_EQ(Read(text, Axis::kLatitude), understood) << text;
  }
}

TEST(CoordinateText, ReadsLongitudesWithTheirOwnLettersAndLimit) {
  EXPECT_EQ(Read("W071 30.0", Axis::kLongitude), "71 30' 0\" W");
  EXPECT_EQ(Read("-74.25", Axis::kLongitude), "74 15' 0\" W");
  EXPECT_EQ(Read("179 59 59.4 E", Axis::kLongitude), "179 59' 59\" E");
  EXPECT_EQ(Read("180 E", Axis::kLongitude), "180 0' 0\" E");
  EXPECT_EQ(Read("180.001 E", Axis::kLongitude), "refused");
  EXPECT_EQ(Read("18 25 S", Axis::kLongitude), "refused");
}

}  // namespace
}  // namespace skyhop::LatLonModule
