#include "common/numbers.h"

#include <gtest/gtest.h>
TEST(Numbers, A) {
  EXPECT_EQ(skyhop::ToInteger("12.5"), 12);
}
