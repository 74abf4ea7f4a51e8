#include "platform/linux/ChildProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <sstream>

#include "platform/linux/FileErrors.h"

namespace zelUtilities {

namespace {

constexpr int cannotRun = 127;

// As exec takes it.
std::vector<char*> argumentList(const std::vector<std::string>& command) {
  std::vector<char*> list;
  list.reserve(command.size() + 1);
  for (const std::string& argument : command) list.push_back(const_cast<char*>(argument.c_str()));
  list.push_back(nullptr);
  return list;
}

// Below here: in the new process, where only what needs no lock may be called.

void connect(int from, int to) {
  if (from >= 0) dup2(from, to);
}

[[noreturn]] void becomeProgram(char* const* arguments) {
  execv(arguments[0], arguments);
  _exit(cannotRun);
}

[[noreturn]] void detachAndRun(char* const* arguments, int nowhere) {
  setsid();
  const pid_t program = fork();
  if (program != 0) _exit(program < 0 ? cannotRun : 0);  // so that nobody has to wait for the program
  connect(nowhere, STDIN_FILENO);
  connect(nowhere, STDOUT_FILENO);
  connect(nowhere, STDERR_FILENO);
  becomeProgram(arguments);
}

// In the calling process again.

int waitFor(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return -1;  // a host that ignores its children keeps no exit codes
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string readAll(int from) {
  std::string text;
  std::array<char, 4096> block;
  for (;;) {
    const ssize_t count = read(from, block.data(), block.size());
    if (count > 0) text.append(block.data(), static_cast<std::size_t>(count));
    if (count == 0 || (count < 0 && errno != EINTR)) return text;
  }
}

}  // namespace

std::string findProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (!folder.starts_with('/')) continue;  // the current folder may be anybody's
    folder.append("/").append(name);
    if (access(folder.c_str(), X_OK) == 0) return folder;
  }
  return {};
}

void startDetached(const std::vector<std::string>& command) {
  const std::vector<char*> arguments = argumentList(command);
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  const pid_t child = fork();
  if (child == 0) detachAndRun(arguments.data(), nowhere);
  const int failure = child < 0 ? errno : 0;
  if (nowhere >= 0) close(nowhere);
  if (failure != 0) raiseFileError(failure);
  waitFor(child);
}

ProgramOutput outputOf(const std::vector<std::string>& command) {
  const std::vector<char*> arguments = argumentList(command);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) raiseFileError(errno);
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  const pid_t child = fork();
  if (child == 0) {
    connect(ends[1], STDOUT_FILENO);
    connect(nowhere, STDERR_FILENO);
    becomeProgram(arguments.data());
  }
  const int failure = child < 0 ? errno : 0;
  close(ends[1]);
  if (nowhere >= 0) close(nowhere);
  ProgramOutput output;
  if (failure == 0) output = {0, readAll(ends[0])};
  close(ends[0]);
  if (failure != 0) raiseFileError(failure);
  output.exitCode = waitFor(child);
  return output;
}

}  // namespace zelUtilities
