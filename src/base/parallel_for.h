// Work in pieces that do not touch each other, shared by threads.
#pragma once

#include <cstddef>
#include <functional>

namespace vorn {

// How many threads such work is worth here: one for each processor, on Linux for each that this thread may
// run on, as a cluster's queue gives them out; eight at most; one in a browser.
std::size_t threads_here();

// Runs piece(0) to piece(count - 1), each once, on `threads` threads, the calling one among them, and returns
// when all are done. One thread takes them in their order; with more the order is nobody's. Where the system
// gives fewer threads, the others do the work.
//
// `done`, if any, is called by the calling thread after each piece of its own, with how many are done in all.
//
// What a piece or `done` throws is thrown here, the first of it, when every piece that had begun has ended;
// the others are left out.
void parallel_for(std::size_t count, std::size_t threads, const std::function<void(std::size_t)>& piece,
                  const std::function<void(std::size_t)>& done = {});

}  // namespace vorn
