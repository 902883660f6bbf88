// process_cost PROGRAM ARGUMENT...: runs it, its own output thrown away, and writes on one line how long that
// took, how much processor time it had (seconds) and how much memory was resident at most (MB).
//
// A program of its own, and small: the system counts what the starter of a program has in memory as the
// memory of the program started.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = -1;
  if (::posix_spawn(&child, argv[1], &files, nullptr, argv + 1, environ) != 0) return 2;
  int status = 0;
  rusage used{};
  if (::wait4(child, &status, 0, &used) != child || status != 0) return 1;
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  std::printf("%.6f %.6f %.3f\n", wall.count(), seconds(used.ru_utime) + seconds(used.ru_stime),
              static_cast<double>(used.ru_maxrss) / 1024);
  return 0;
}
