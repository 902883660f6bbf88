#include "records/status.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace vorn {
namespace {

// A count given for a status, or the other way about, does not compile.
static_assert(!std::is_convertible_v<int, Status>);
static_assert(!std::is_convertible_v<Status, int>);
static_assert(!std::is_convertible_v<Status, bool>);

TEST(Statuses, AreSuccessUnlessSomethingIsSaid) {
  EXPECT_EQ(Status(), status::ok);
  EXPECT_FALSE(status::ok);
  EXPECT_EQ(status::ok.number(), 0);
}

TEST(Statuses, HaveTheNumbersThatMessagesShow) {
  EXPECT_EQ(status::end_of_file.number(), -1);
  EXPECT_EQ(status::format_unusable.number(), 5006);
  EXPECT_EQ(status::not_a_number.number(), 5010);
  EXPECT_EQ(status::number_too_large.number(), 5011);
}

TEST(Statuses, AreOfTheSystemWhereItHasFailed) {
  for (const Status failed : {status::no_such_file, status::a_folder, Status(28), Status(4999)}) {
    EXPECT_TRUE(failed);
    EXPECT_TRUE(status::of_system(failed)) << failed;
  }
  for (const Status other : {status::ok, status::end_of_file, Status(5000), status::not_a_number}) {
    EXPECT_FALSE(status::of_system(other)) << other;
  }
}

}  // namespace
}  // namespace vorn
