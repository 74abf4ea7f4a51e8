#include "platform/Process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "automation/Error.h"
#include "platform/linux/CommandLine.h"
#include "platform/linux/FileErrors.h"
#include "platform/linux/FilePaths.h"

namespace zelUtilities {

namespace {

// What the system is to start: a path, or a name to be searched for. Nothing for what can be no file.
std::optional<std::string> programPath(StringView name) {
  try {
    std::string path = nativePath(name);
    const bool hasFolder = name.find_first_of(u"/\\:") != StringView::npos;
    return hasFolder ? std::move(path) : toUtf8(name);
  } catch (const Error&) {
    return {};
  }
}

std::vector<std::string> argumentsOf(const ProgramName& program) {
  std::vector<std::string> arguments = {toUtf8(program.name)};
  for (const String& argument : argumentsIn(program.arguments)) arguments.push_back(toUtf8(argument));
  return arguments;
}

// 0 or the system's code for why it did not start.
int start(const ProgramName& program, pid_t& process) {
  const std::optional<std::string> path = programPath(program.name);
  if (!path) return ENOENT;
  std::vector<std::string> arguments = argumentsOf(program);
  std::vector<char*> list;
  list.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) list.push_back(argument.data());
  list.push_back(nullptr);
  return posix_spawnp(&process, path->c_str(), nullptr, nullptr, list.data(), environ);
}

void waitFor(pid_t process) {
  // A host that ignores the ends of its children is told of none when this one is over.
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
}

class LinuxProcess : public Process {
 public:
  void runToEnd(StringView commandLine) override {
    int failure = ENOENT;  // the first that says more than that there is no such file
    for (const ProgramName& program : programNames(commandLine)) {
      pid_t process = 0;
      const int code = start(program, process);
      if (code == 0) return waitFor(process);
      if (failure == ENOENT) failure = code;
    }
    raiseFileError(failure);
  }
};

}  // namespace

Process& Process::system() {
  static auto& service = *new LinuxProcess;
  return service;
}

}  // namespace zelUtilities
