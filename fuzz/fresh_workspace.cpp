#include "fresh_workspace.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <ostream>
#include <vector>

#include "loading/startup.h"
#include "target.h"
#include "toolkit/button_table.h"

#if defined(__SANITIZE_ADDRESS__)
#define VORN_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VORN_ADDRESS_SANITIZER
#endif
#endif
#ifdef VORN_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace vorn::fuzz {
namespace {

constexpr std::size_t reserved = std::size_t{128} << 20;
constexpr std::size_t alignment = 64, red_zone = 256;

// What lies between two allocations: nothing may touch it.
struct Gap {
  std::byte* begin;
  std::size_t size;
};

// The stretch of memory that the Workspace lies in; allocations follow each other and are never given back.
struct Stretch {
  std::byte* begin = nullptr;
  std::size_t used = 0;
  bool taking = false;  // whether allocations are to come from here
  std::vector<Gap> gaps;
} stretch;

void* place_in_memory(std::size_t size, int flags, int file) {
  void* const at = mmap(stretch.begin, size, PROT_READ | PROT_WRITE, flags, file, 0);
  must_hold(at != MAP_FAILED, "memory for a workspace can be had");
  return at;
}

void* take(std::size_t size) {
  std::byte* const at = stretch.begin + stretch.used;
  const std::size_t whole = (size + red_zone + alignment - 1) / alignment * alignment;
  must_hold(stretch.used + whole <= reserved, "a workspace is no larger than was reserved");
  stretch.used += whole;
  stretch.taking = false;  // the list of gaps lies elsewhere
  stretch.gaps.push_back({at + size, whole - size});
  stretch.taking = true;
  return at;
}

// Has the operating system keep the stretch as it is now.
void keep_copy() {
  const int file = memfd_create("vorn-fresh-workspace", 0);
  must_hold(file >= 0, "a file in memory can be made");
  for (std::size_t done = 0; done < stretch.used;) {
    const auto written = write(file, stretch.begin + done, stretch.used - done);
    must_hold(written > 0, "a workspace can be copied");
    done += static_cast<std::size_t>(written);
  }
  place_in_memory(stretch.used, MAP_PRIVATE | MAP_FIXED, file);
  close(file);
#ifdef VORN_ADDRESS_SANITIZER
  for (const Gap& gap : stretch.gaps) ASAN_POISON_MEMORY_REGION(gap.begin, gap.size);
#endif
}

// Takes messages, keeps none.
std::ostream& nobody() {
  static std::ostream none(nullptr);
  return none;
}

// While a workspace is prepared messages are confirmed.
class ReturnScreen : public Screen {
 public:
  void show(const Page&) override {}
  Event next_event() override { return {0, 0, Event::enter}; }
};

}  // namespace

FreshWorkspace::FreshWorkspace(void (*prepare)(Workspace&)) {
  must_hold(stretch.begin == nullptr, "a process has one fresh workspace");
  stretch.begin =
      static_cast<std::byte*>(place_in_memory(reserved, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1));
  ReturnScreen screen;
  plot_.emplace(screen);
  stretch.taking = true;
  w_ = new Workspace(*plot_, port_);
  stretch.taking = false;
  w_->log = &nobody();
  if (prepare) prepare(*w_);
  keep_copy();
}

Workspace& FreshWorkspace::start(Screen& screen, Files& files) {
  must_hold(madvise(stretch.begin, stretch.used, MADV_DONTNEED) == 0, "a workspace can be made fresh");
  plot_.emplace(screen);
  port_.files = &files;
  return *w_;
}

void start_program(Workspace& w) {
  set_up_graph(w);
  init_start(w);
}

}  // namespace vorn::fuzz

// The linker sends every `new` and vorn::zero_memory(size) of the program here (see CMakeLists.txt).
extern "C" {
void* __real__Znwm(std::size_t size);
void* __real__Znam(std::size_t size);
void* __real__ZN4vorn11zero_memoryEm(std::size_t size);
void* __wrap__Znwm(std::size_t size) {
  return vorn::fuzz::stretch.taking ? vorn::fuzz::take(size) : __real__Znwm(size);
}
void* __wrap__Znam(std::size_t size) {
  return vorn::fuzz::stretch.taking ? vorn::fuzz::take(size) : __real__Znam(size);
}
void* __wrap__ZN4vorn11zero_memoryEm(std::size_t size) {  // a new stretch holds zeros
  return vorn::fuzz::stretch.taking ? vorn::fuzz::take(size) : __real__ZN4vorn11zero_memoryEm(size);
}
}
