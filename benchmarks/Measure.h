// What the benchmark programs measure with: CPU time per item, bytes of a thing built in a process of
// its own, and a check that ends the program when a result is wrong.
#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

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

struct Footprint {
  double allocated = 0;  // bytes from the allocator, its own headers included; not memory mapped past it
  double touched = 0;    // bytes of the pages written to and not given back
};

inline Footprint footprintNow() {
  const auto used = mallinfo2();
  std::ifstream file("/proc/self/smaps_rollup");
  std::string word;
  double kilobytes = 0;
  while (file >> word && word != "Private_Dirty:") continue;
  file >> kilobytes;
  return {static_cast<double>(used.uordblks + used.hblkhd), kilobytes * 1024};
}

// What the thing that build() returns takes, measured in a child process: there every page is written to
// for the first time, those of memory freed earlier too.
template <class Build>
Footprint footprintOf(const Build& build) {
  malloc_trim(0);
  std::array<int, 2> ends{};
  require(pipe(ends.data()) == 0, "pipe");
  std::fflush(nullptr);
  const pid_t child = fork();
  require(child >= 0, "fork");
  if (child == 0) {
    const Footprint before = footprintNow();
    const auto built = build();
    const Footprint after = footprintNow();
    const Footprint grown{after.allocated - before.allocated, after.touched - before.touched};
    const bool written = write(ends[1], &grown, sizeof grown) == sizeof grown;
    _exit(written ? 0 : 1);
  }
  Footprint grown;
  const bool readWhole = read(ends[0], &grown, sizeof grown) == sizeof grown;
  int status = 0;
  waitpid(child, &status, 0);
  close(ends[0]);
  close(ends[1]);
  require(readWhole && status == 0, "the child process that measures memory");
  return grown;
}

// Adds the counters bytes (what a client's process grows by) and allocated, per item; measured once for
// each name.
template <class Build>
void countBytes(benchmark::State& state, const std::string& name, double items, const Build& build) {
  static std::map<std::string, Footprint> measured;
  auto found = measured.find(name);
  if (found == measured.end()) found = measured.emplace(name, footprintOf(build)).first;
  state.counters["bytes"] = found->second.touched / items;
  state.counters["allocated"] = found->second.allocated / items;
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
