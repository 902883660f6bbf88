#include "base/zero_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#if !defined(_WIN32) && !defined(__EMSCRIPTEN__)
#ifdef __SANITIZE_ADDRESS__
#define VORN_GUARDS_MEMORY
#include <sanitizer/asan_interface.h>
#else
#define VORN_MAPS_MEMORY
#endif
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>
#endif

namespace vorn {
namespace {

void* from_the_library(std::size_t size) {
  void* const memory = std::calloc(size, 1);
  if (memory == nullptr && size > 0) throw std::bad_alloc();
  return memory;
}

}  // namespace

#if defined(VORN_MAPS_MEMORY) || defined(VORN_GUARDS_MEMORY)
namespace {

// From so many bytes on a table has pages of its own. The library would give fresh ones for the first tables
// of a program alone, and fill those of the next with zeros.
constexpr std::size_t worth_pages = std::size_t{1} << 16;

std::size_t page_size() {
  static const auto size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  return size;
}

std::size_t whole_pages(std::size_t size) {
  return (size + page_size() - 1) / page_size() * page_size();
}

}  // namespace
#endif

#ifdef VORN_MAPS_MEMORY
namespace {

// Room for all the tables of one state of the program.
constexpr std::size_t stretch_bytes = std::size_t{1} << 26;
// Larger tables lie outside stretches.
constexpr std::size_t most_in_stretch = stretch_bytes / 4;

std::byte* mapped(std::size_t size) {
  void* const pages = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) throw std::bad_alloc();
  return static_cast<std::byte*>(pages);
}

// The system gives zeros in place of what these pages held. False where it does not.
bool give_back_pages(std::byte* first, std::size_t size) {
  if (size == 0) return true;
#ifdef __linux__
  return ::madvise(first, size, MADV_DONTNEED) == 0;
#else  // elsewhere such pages may keep what they hold
  return ::mmap(first, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) !=
         MAP_FAILED;
#endif
}

// Pages of a stretch one behind the other, in bytes.
struct Pages {
  std::size_t first, size;
};

// The pages that are in memory: none where they are many, or the system does not tell. A page that is not may
// hold something all the same, where the system has put it aside.
std::vector<Pages> few_pages_in_memory([[maybe_unused]] std::byte* first, [[maybe_unused]] std::size_t size) {
#ifdef __linux__
  // As many as some ten thousand rings take.
  constexpr std::ptrdiff_t most = 512;
  std::vector<unsigned char> in_memory(size / page_size());
  if (::mincore(first, size, in_memory.data()) != 0) return {};
  for (unsigned char& page : in_memory) page &= 1;
  if (std::count(in_memory.begin(), in_memory.end(), 1) > most) return {};
  std::vector<Pages> found;
  for (auto to = in_memory.begin();;) {
    const auto from = std::find(to, in_memory.end(), 1);
    if (from == in_memory.end()) return found;
    to = std::find(from, in_memory.end(), 0);
    found.push_back({static_cast<std::size_t>(from - in_memory.begin()) * page_size(),
                     static_cast<std::size_t>(to - from) * page_size()});
  }
#else
  return {};
#endif
}

// Addresses that tables of one thread are taken from, one behind the other. Where many states are made and
// given back, as for the files of an archive, each would otherwise be put together and taken apart by the
// system table by table. It begins at a multiple of its size, so that a table tells where its stretch is.
class Stretch {
 public:
  // Held by whoever made it.
  static Stretch* make() {
    std::byte* const room = mapped(2 * stretch_bytes);
    const std::size_t before = (stretch_bytes - reinterpret_cast<std::uintptr_t>(room)) % stretch_bytes;
    std::byte* const start = room + before;
    if (before > 0) ::munmap(room, before);
    ::munmap(start + stretch_bytes, stretch_bytes - before);
#ifdef MADV_NOHUGEPAGE
    // Most tables are used for a few pages at their start: large pages would be nearly all waste.
    ::madvise(start, stretch_bytes, MADV_NOHUGEPAGE);
#endif
    return new (start) Stretch;
  }
  static Stretch* of(void* table) {
    auto* const at = static_cast<std::byte*>(table);
    return reinterpret_cast<Stretch*>(at - reinterpret_cast<std::uintptr_t>(at) % stretch_bytes);
  }

  // For the thread that made it: a table, or nothing where there is no room.
  void* take(std::size_t size) {
    if (holders_ == 1) clear();
    size = whole_pages(size);
    if (size > stretch_bytes - used_) return nullptr;
    std::byte* const table = reinterpret_cast<std::byte*>(this) + used_;
    used_ += size;
    ++holders_;
    return table;
  }
  // For the thread that made it, when it has given back a table: the pages of the last go back at once.
  void clear_if_empty() {
    if (holders_ == 1) clear();
  }
  // Its maker or a table lets go.
  void let_go() {
    if (--holders_ > 0) return;
    this->~Stretch();
    ::munmap(this, stretch_bytes);
  }

 private:
  Stretch() = default;
  ~Stretch() = default;

  static std::size_t own_room() {
    return whole_pages(sizeof(Stretch));
  }

  void clear() {
    if (used_ == own_room()) return;
    std::byte* const tables = reinterpret_cast<std::byte*>(this) + own_room();
    const std::size_t size = used_ - own_room();
    if (++clears_ % clears_a_look == 2) look(tables, size);
    std::size_t done = 0;
    for (const Pages& kept : kept_) {
      if (kept.first + kept.size > size) break;
      if (!give_back_pages(tables + done, kept.first - done)) return;
      std::memset(tables + kept.first, 0, kept.size);
      done = kept.first + kept.size;
    }
    if (give_back_pages(tables + done, size - done)) used_ = own_room();
  }

  void look(std::byte* tables, std::size_t size) try {
    kept_ = few_pages_in_memory(tables, size);
  } catch (const std::bad_alloc&) {
    kept_.clear();
  }

  // Which pages are in memory is asked so seldom since the answer costs as much as having them anew; of a
  // program that reads one file, never.
  static constexpr std::size_t clears_a_look = 16;

  std::size_t clears_ = 0;
  std::vector<Pages> kept_;  // what tables use time after time: filled with zeros, not given back
  std::size_t used_ = own_room();
  std::atomic<std::size_t> holders_{1};  // its maker, and each table
};

// The stretch that this thread takes tables from. Tables of the main thread may outlive all that it cleans up
// when it ends: this pointer is there as long as the thread is.
thread_local Stretch* own_stretch = nullptr;

struct EndOfThread {
  ~EndOfThread() { leave_stretch(); }
  static void leave_stretch() {
    if (own_stretch != nullptr) std::exchange(own_stretch, nullptr)->let_go();
  }
};

void* take_from_stretch(std::size_t size) {
  thread_local const EndOfThread at_end;
  if (own_stretch != nullptr) {
    if (void* const table = own_stretch->take(size)) return table;
    EndOfThread::leave_stretch();
  }
  own_stretch = Stretch::make();
  return own_stretch->take(size);
}

void give_back_to_stretch(void* table) {
  Stretch* const stretch = Stretch::of(table);
  stretch->let_go();
  if (stretch == own_stretch) stretch->clear_if_empty();
}

}  // namespace

void* zero_memory(std::size_t size) {
  if (size > most_in_stretch) return mapped(size);
  return size >= worth_pages ? take_from_stretch(size) : from_the_library(size);
}

void give_back_memory(void* memory, std::size_t size) {
  if (size > most_in_stretch)
    ::munmap(memory, size);
  else if (size >= worth_pages)
    give_back_to_stretch(memory);
  else
    std::free(memory);
}

void expect_use([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef MADV_POPULATE_WRITE
  // Whole pages alone, and not so few that the call is not worth it. An older system does not know it.
  constexpr std::size_t fewest_pages = 4;
  const std::size_t before =
      (page_size() - reinterpret_cast<std::uintptr_t>(memory) % page_size()) % page_size();
  if (size < before + fewest_pages * page_size()) return;
  ::madvise(static_cast<std::byte*>(memory) + before, (size - before) / page_size() * page_size(),
            MADV_POPULATE_WRITE);
#endif
}

#elif defined(VORN_GUARDS_MEMORY)
namespace {

// The sanitizer's own library marks every byte of a table when it is made and once more when it is given
// back, which takes longer than most of what is done with it. Here a table ends at a page that nobody may
// touch, one lies before it, and all are gone when it is given back.
struct Guarded {
  explicit Guarded(std::size_t size)
      : pages(whole_pages(size)),
        before(pages - (size + alignment - 1) / alignment * alignment),
        behind(pages - before - size) {}

  std::size_t mapped() const { return pages + 2 * page_size(); }

  static constexpr std::size_t alignment = alignof(std::max_align_t);
  std::size_t pages;           // bytes that may be touched, but for those
  std::size_t before, behind;  // the table
};

}  // namespace

void* zero_memory(std::size_t size) {
  if (size < worth_pages) return from_the_library(size);
  const Guarded guarded(size);
  void* const room = ::mmap(nullptr, guarded.mapped(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (room == MAP_FAILED) throw std::bad_alloc();
  std::byte* const first = static_cast<std::byte*>(room) + page_size();
  if (::mprotect(first, guarded.pages, PROT_READ | PROT_WRITE) != 0) {
    ::munmap(room, guarded.mapped());
    throw std::bad_alloc();
  }
  std::byte* const table = first + guarded.before;
  ASAN_POISON_MEMORY_REGION(first, guarded.before);
  ASAN_POISON_MEMORY_REGION(table + size, guarded.behind);
  return table;
}

void give_back_memory(void* memory, std::size_t size) {
  if (size < worth_pages) return std::free(memory);
  const Guarded guarded(size);
  std::byte* const table = static_cast<std::byte*>(memory);
  std::byte* const first = table - guarded.before;
  ASAN_UNPOISON_MEMORY_REGION(first, guarded.before);
  ASAN_UNPOISON_MEMORY_REGION(table + size, guarded.behind);
  ::munmap(first - page_size(), guarded.mapped());
}

void expect_use(void* /*memory*/, std::size_t /*size*/) {}

#else

void* zero_memory(std::size_t size) {
  return from_the_library(size);
}

void give_back_memory(void* memory, std::size_t /*size*/) {
  std::free(memory);
}

void expect_use(void* /*memory*/, std::size_t /*size*/) {}

#endif

}  // namespace vorn
