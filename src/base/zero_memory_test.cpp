#include "base/zero_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <thread>
#include <vector>

namespace vorn {
namespace {

TEST(ZeroMemory, IsZeroAlsoWhereOthersHaveWritten) {
  for (const std::size_t size : {1u, 1000u, 65535u, 65536u, 1000000u}) {
    for (int time = 0; time < 3; ++time) {
      auto* const bytes = static_cast<unsigned char*>(zero_memory(size));
      EXPECT_EQ(std::count(bytes, bytes + size, 0), static_cast<std::ptrdiff_t>(size));
      std::fill_n(bytes, size, 0xff);
      give_back_memory(bytes, size);
    }
  }
}

// More than one stretch of addresses has room for, in tables of the sizes that a state of the program has.
TEST(ZeroMemory, IsZeroTimeAfterTimeWhateverElseIsHeld) {
  constexpr std::size_t sizes[] = {9'800'000, 1'224'100, 65'536, 70'001, 9'600'000, 20'000'000};
  struct Held {
    unsigned char* bytes;
    std::size_t size;
  };
  std::vector<Held> held;
  for (int time = 0; time < 60; ++time) {
    const std::size_t size = sizes[static_cast<std::size_t>(time) % std::size(sizes)];
    auto* const bytes = static_cast<unsigned char*>(zero_memory(size));
    for (std::size_t k = 0; k < size; k += 512) ASSERT_EQ(bytes[k], 0) << time << ": " << k;
    ASSERT_EQ(bytes[size - 1], 0);
    for (std::size_t k = 0; k < size; k += 512) bytes[k] = 0xff;
    bytes[size - 1] = 0xff;
    held.push_back({bytes, size});
    if (time % 7 < 4) continue;  // some are given back at once, some later, all now and then
    const std::size_t fewest = time % 21 == 20 ? 0 : 3;
    while (held.size() > fewest) {
      give_back_memory(held.front().bytes, held.front().size);
      held.erase(held.begin());
    }
  }
  for (const Held& one : held) give_back_memory(one.bytes, one.size);
}

// As the tables of an archive are, file by file: mostly the same few pages, now and then others or all. A
// page that is looked at counts as used: so not all are, each time.
void use_tables_time_after_time() {
  const auto all_zero = [](const unsigned char* bytes, std::size_t size) {
    return bytes[0] == 0 && std::memcmp(bytes, bytes + 1, size - 1) == 0;
  };
  for (std::size_t time = 0; time < 90; ++time) {
    const std::size_t sizes[] = {time % 7 == 3 ? 70'000u : 1'000'000u, time % 11 == 5 ? 0u : 3'000'000u};
    unsigned char* tables[2];
    for (std::size_t t = 0; t < 2; ++t) {
      tables[t] = static_cast<unsigned char*>(zero_memory(sizes[t]));
      if (sizes[t] == 0) continue;
      EXPECT_TRUE(time % 4 != 3 || all_zero(tables[t], sizes[t])) << time << ": " << t;
      for (std::size_t k = 0; k < std::min<std::size_t>(sizes[t], 30'000); k += 100) tables[t][k] = 0xff;
      for (std::size_t k = 0; k < 5; ++k) tables[t][(time * 7919 + k * 104'729) % sizes[t]] = 0xff;
      if (time % 20 == 19) std::fill_n(tables[t], sizes[t], 0xff);
    }
    for (std::size_t t = 0; t < 2; ++t) give_back_memory(tables[t], sizes[t]);
  }
}

TEST(ZeroMemory, IsZeroAlsoOnPagesThatAreKept) {
  std::thread(use_tables_time_after_time).join();  // whose tables start anew
}

// As tables are that one thread makes and another one takes over.
TEST(ZeroMemory, IsGivenBackByAnyThread) {
  constexpr std::size_t size = 300'000;
  for (int time = 0; time < 20; ++time) {
    std::vector<unsigned char*> taken(8);
    std::thread([&] {
      for (unsigned char*& bytes : taken) {
        bytes = static_cast<unsigned char*>(zero_memory(size));
        std::fill_n(bytes, size, 0xff);
      }
    }).join();
    std::thread other([&] {
      for (std::size_t k = 0; k < taken.size(); k += 2) give_back_memory(taken[k], size);
    });
    for (std::size_t k = 1; k < taken.size(); k += 2) {
      EXPECT_EQ(taken[k][size - 1], 0xff);
      give_back_memory(taken[k], size);
      auto* const own = static_cast<unsigned char*>(zero_memory(size));
      EXPECT_EQ(std::count(own, own + size, 0), static_cast<std::ptrdiff_t>(size));
      std::fill_n(own, size, 0xff);
      give_back_memory(own, size);
    }
    other.join();
  }
}

// A table that is given back when all that threads keep is gone.
struct LateTable {
  ~LateTable() {
    bytes[0] = 1;
    give_back_memory(bytes, 200'000);
    auto* const later = static_cast<unsigned char*>(zero_memory(200'000));
    if (later[0] != 0) std::abort();
    give_back_memory(later, 200'000);
  }
  unsigned char* bytes = nullptr;
};

TEST(ZeroMemory, IsGivenBackAfterTheEndOfThreadsAsWell) {
  static LateTable late;  // goes when the program does
  EXPECT_EXIT(
      {
        late.bytes = static_cast<unsigned char*>(zero_memory(200'000));
        std::exit(7);
      },
      testing::ExitedWithCode(7), "");
  late.bytes = static_cast<unsigned char*>(zero_memory(200'000));
}

// Pages of any size hold the same, and go back like others.
TEST(ZeroMemory, HoldsWhatIsWrittenWhereMuchUseIsExpected) {
  constexpr std::size_t sizes[] = {100'000, 9'600'000, 20'000'000};
  for (int time = 0; time < 3; ++time) {
    for (const std::size_t size : sizes) {
      auto* const bytes = static_cast<unsigned char*>(zero_memory(size));
      auto* const beside = static_cast<unsigned char*>(zero_memory(70'000));
      expect_use(bytes, size);
      EXPECT_EQ(std::count(bytes, bytes + size, 0), static_cast<std::ptrdiff_t>(size));
      EXPECT_EQ(std::count(beside, beside + 70'000, 0), 70'000);
      std::fill_n(bytes, size, 0xff);
      std::fill_n(beside, 70'000, 0xfe);
      EXPECT_EQ(std::count(bytes, bytes + size, 0xff), static_cast<std::ptrdiff_t>(size));
      give_back_memory(bytes, size);
      give_back_memory(beside, 70'000);
    }
  }
  std::vector<unsigned char> of_the_library(5'000'000, 7);
  expect_use(of_the_library.data(), of_the_library.size());
  EXPECT_EQ(std::ranges::count(of_the_library, 7), 5'000'000);
  expect_use(of_the_library.data(), 0);
}

#ifdef __SANITIZE_ADDRESS__
TEST(ZeroMemory, TouchingWhatIsNotOfTheTableEndsTheProgram) {
  constexpr std::size_t sizes[] = {1'000, 65'535, 65'536, 70'001, 9'600'000, 20'000'000};
  for (const std::size_t size : sizes) {
    auto* const bytes = static_cast<unsigned char*>(zero_memory(size));
    volatile unsigned char* const touched = bytes;
    EXPECT_DEATH(touched[size] = 1, "AddressSanitizer") << size;
    EXPECT_DEATH(touched[-1] = 1, "AddressSanitizer") << size;
    touched[0] = 1;
    touched[size - 1] = 1;
    give_back_memory(bytes, size);
    EXPECT_DEATH(touched[0] = 1, "AddressSanitizer") << size;
    EXPECT_DEATH(touched[size - 1] = 1, "AddressSanitizer") << size;
  }
}
#endif

TEST(ZeroMemory, NothingIsGivenForNothing) {
  give_back_memory(zero_memory(0), 0);
}

}  // namespace
}  // namespace vorn
