// Memory for large tables.
#pragma once

#include <cstddef>

namespace vorn {

// `size` bytes, all 0 and fit for every number. Where they are many, the system gives its pages when they are
// first written, not before. Throws std::bad_alloc.
void* zero_memory(std::size_t size);
// Gives back what zero_memory(size) gave.
void give_back_memory(void* memory, std::size_t size);

// Tells that all of this memory, of whatever kind, will be written next. The system may then give its pages
// together, which costs less than giving them one by one. What it holds stays as it is.
void expect_use(void* memory, std::size_t size);

}  // namespace vorn
