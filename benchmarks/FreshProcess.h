// What a thing costs the first time in a process.
//
//   FreshProcesses fresh;                                             // as main begins
//   const double seconds = fresh.measure(&secondsToLoad<Ini>, path);
//
// In a loop, and in a program that has measured other things before, allocators have kept memory to use
// again, some more than others. So a process forks off that stays as clean as it is then, and each
// measurement is made in a child of its own.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>

#include "Measure.h"

namespace zelBenchmarks {

class FreshProcesses {
 public:
  using Measurement = double (*)(const std::string& argument);

  FreshProcesses() {
    require(pipe(requests_.data()) == 0 && pipe(results_.data()) == 0, "pipe");
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) serve();
    close(requests_[0]);
    close(results_[1]);
  }

  double measure(Measurement measurement, const std::string& argument) const {
    double result = 0;
    const std::size_t length = argument.size();
    require(send(&measurement, sizeof measurement) && send(&length, sizeof length) &&
                send(argument.data(), length) && receive(results_[0], &result, sizeof result),
            "the process that measures");
    return result;
  }

 private:
  // Ends with the program that asks.
  [[noreturn]] void serve() const {
    close(requests_[1]);
    Measurement measurement;
    std::size_t length;
    while (receive(requests_[0], &measurement, sizeof measurement) &&
           receive(requests_[0], &length, sizeof length)) {
      std::string argument(length, '\0');
      if (!receive(requests_[0], argument.data(), length)) break;
      const pid_t child = fork();
      if (child == 0) {
        const double result = measurement(argument);
        _exit(write(results_[1], &result, sizeof result) == sizeof result ? 0 : 1);
      }
      int status = 1;
      if (child < 0 || waitpid(child, &status, 0) != child || status != 0) break;
    }
    _exit(0);
  }

  bool send(const void* bytes, std::size_t size) const {
    return write(requests_[1], bytes, size) == static_cast<ssize_t>(size);
  }
  static bool receive(int end, void* bytes, std::size_t size) {
    return read(end, bytes, size) == static_cast<ssize_t>(size);
  }

  std::array<int, 2> requests_{};
  std::array<int, 2> results_{};
};

}  // namespace zelBenchmarks
