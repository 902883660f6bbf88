// process_cost PROGRAM ARGUMENT: runs it and writes on one line how long that took, how much processor time
// it had (seconds) and how much memory was resident at most (MB).
//
// A program of its own, and small: the system counts what the starter of a program has in memory as the
// memory of the program started.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::array<char*, 3> arguments = {argv[1], argv[2], nullptr};
  const auto start = std::chrono::steady_clock::now();
  pid_t child = -1;
  if (::posix_spawn(&child, argv[1], nullptr, nullptr, arguments.data(), environ) != 0) return 2;
  int status = 0;
  rusage used{};
  if (::wait4(child, &status, 0, &used) != child || status != 0) return 1;
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  std::printf("%.6f %.6f %.3f\n", wall.count(), seconds(used.ru_utime) + seconds(used.ru_stime),
              static_cast<double>(used.ru_maxrss) / 1024);
  return 0;
}
