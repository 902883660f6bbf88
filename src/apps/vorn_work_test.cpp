#include "apps/vorn_work.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/raw_text.h"

namespace vorn {
namespace {

// More files than are worked on before the first answer is used, so that threads wait.
struct ManyFiles : testing::Test {
  ManyFiles() {
    files.put("oak.rwl",
              raw_text("OAK1", 1900, {1100, 1200, 1300, 1400, 1500, 1600, 1700, 1800, 1900, 2000}));
    request.verb = verb_named("stats");
    request.files.assign(500, "oak.rwl");
    request.threads = 4;
  }
  MemoryFiles files;
  Request request;
};

TEST_F(ManyFiles, AreAllAnsweredInTheirOrder) {
  request.files[77] = "gone.rwl";
  std::size_t answers = 0;
  Work(request, files).run([&](const Answer& answer) {
    EXPECT_EQ(answer.words.empty(), answers != 77) << answers;
    EXPECT_EQ(answer.rows.size(), answers == 77 ? 0u : 1u) << answers;
    ++answers;
    return true;
  });
  EXPECT_EQ(answers, 500u);
}

TEST_F(ManyFiles, EndWhereNoMoreAnswersAreWanted) {
  for (int wanted = 0; wanted < 40; ++wanted) {
    int answers = 0;
    Work(request, files).run([&](const Answer&) { return ++answers <= wanted; });
    ASSERT_EQ(answers, wanted + 1);
  }
}

TEST_F(ManyFiles, EndWhereAnAnswerCannotBeUsed) {
  for (int wanted = 0; wanted < 40; ++wanted) {
    int answers = 0;
    const auto use = [&](const Answer&) {
      if (++answers > wanted) throw std::runtime_error("no room");
      return true;
    };
    ASSERT_THROW(Work(request, files).run(use), std::runtime_error);
    ASSERT_EQ(answers, wanted + 1);
  }
}

}  // namespace
}  // namespace vorn
