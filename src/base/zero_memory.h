// Memory for large tables.
#pragma once

#include <cstddef>

namespace vorn {

// `size` bytes, all 0 and fit for every number. Where they are many, the system gives its pages when they are
// first written, not before. Throws std::bad_alloc.
void* zero_memory(std::size_t size);
// Gives back what zero_memory(size) gave.
void give_back_memory(void* memory, std::size_t size);

// Tells that most of this memory, of whatever kind, will be written soon. Where it is much the system may
// then give it in large pages, of which each costs hardly more than one of the many small ones in its place.
void expect_use(void* memory, std::size_t size);

}  // namespace vorn
