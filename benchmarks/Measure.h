// What the benchmark programs measure with: CPU time per item, bytes of a thing built in a process of
// its own, and a check that ends the program when a result is wrong.
#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

#include "platform/LargeBlocks.h"

namespace zelBenchmarks {

inline void require(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "Wrong result: %s\n", what);
  std::exit(1);
}

// Shown as seconds per item ("1.2u"); the comparison reads it.
inline void countItems(benchmark::State& state, std::int64_t itemsOfAnIteration) {
  state.counters["per_item"] =
      benchmark::Counter(static_cast<double>(itemsOfAnIteration),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Bytes in use: what the allocator has given out, its own headers included, and memory mapped past it, but
// for the blocks that wait for their next use.
inline double bytesInUse() {
  const auto used = mallinfo2();
  std::ifstream file("/proc/self/statm");
  double pages = 0;  // of address space
  file >> pages;
  const double mapped = pages * static_cast<double>(sysconf(_SC_PAGESIZE));
  return static_cast<double>(used.uordblks) + mapped - static_cast<double>(used.arena) -
         static_cast<double>(zelUtilities::LargeBlocks::spareBytes());
}

// What the thing that build() returns takes, measured in a child process, which leaves no traces in ours.
template <class Build>
double bytesOf(const Build& build) {
  malloc_trim(0);
  std::array<int, 2> ends{};
  require(pipe(ends.data()) == 0, "pipe");
  std::fflush(nullptr);
  const pid_t child = fork();
  require(child >= 0, "fork");
  if (child == 0) {
    const double before = bytesInUse();
    const auto built = build();
    const double grown = bytesInUse() - before;
    const bool written = write(ends[1], &grown, sizeof grown) == sizeof grown;
    _exit(written ? 0 : 1);
  }
  double grown = 0;
  const bool readWhole = read(ends[0], &grown, sizeof grown) == sizeof grown;
  int status = 0;
  waitpid(child, &status, 0);
  close(ends[0]);
  close(ends[1]);
  require(readWhole && status == 0, "the child process that measures memory");
  return grown;
}

inline double cpuSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Adds the counter bytes, per item; measured once for each name.
template <class Build>
void countBytes(benchmark::State& state, const std::string& name, double items, const Build& build) {
  static std::map<std::string, double> measured;
  auto found = measured.find(name);
  if (found == measured.end()) found = measured.emplace(name, bytesOf(build)).first;
  state.counters["bytes"] = found->second / items;
}

// Runs the body outside the timing, then gives freed memory back, so that every iteration starts with
// fresh pages, as in a client that builds once.
template <class Body>
void untimed(benchmark::State& state, const Body& body) {
  state.PauseTiming();
  body();
  malloc_trim(0);
  state.ResumeTiming();
}

}  // namespace zelBenchmarks
