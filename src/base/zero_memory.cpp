#include "base/zero_memory.h"

#include <cstdlib>
#include <new>

// The address sanitizer watches over the ends of what the library gives.
#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
#define VORN_MAPS_MEMORY
#include <sys/mman.h>
#endif

namespace vorn {
namespace {

// From so many bytes on pages of their own are taken. The library would give fresh ones for the first tables
// of a program alone, and fill those of the next with zeros.
[[maybe_unused]] constexpr std::size_t worth_mapping = std::size_t{1} << 16;

}  // namespace

void* zero_memory(std::size_t size) {
#ifdef VORN_MAPS_MEMORY
  if (size >= worth_mapping) {
    void* const pages = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) throw std::bad_alloc();
    return pages;
  }
#endif
  void* const memory = std::calloc(size, 1);
  if (memory == nullptr && size > 0) throw std::bad_alloc();
  return memory;
}

void give_back_memory(void* memory, [[maybe_unused]] std::size_t size) {
#ifdef VORN_MAPS_MEMORY
  if (size >= worth_mapping) {
    ::munmap(memory, size);
    return;
  }
#endif
  std::free(memory);
}

}  // namespace vorn
