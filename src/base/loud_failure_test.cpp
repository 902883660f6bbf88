#include "base/loud_failure.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(LoudFailureDeathTest, NamesThePlaceAndWhatIsViolatedInEveryKindOfBuild) {
  const int rings = 3;
  VORN_ASSERT(rings == 3);
  EXPECT_DEATH(VORN_ASSERT(rings == 4), "loud_failure_test\\.cpp:[0-9]+: violated: rings == 4");
}

TEST(LoudFailure, ItsConditionIsAskedOnce) {
  int asked = 0;
  VORN_ASSERT(++asked > 0);
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace vorn
