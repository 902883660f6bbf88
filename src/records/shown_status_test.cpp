#include "records/shown_status.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(ShownStatus, IsTheNumberOfLinux) {
  EXPECT_EQ(shown_number(status::no_such_file), 2);
  EXPECT_EQ(shown_number(status::a_folder), 21);
  EXPECT_EQ(shown_number(status::not_a_number), status::not_a_number.number());
  EXPECT_EQ(shown_number(status::ok), 0);
}

}  // namespace
}  // namespace vorn
