#include "platform/Process.h"

#include <windows.h>

#include <optional>

#include "platform/windows/FileErrors.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { CloseHandle(handle_); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

HANDLE start(StringView commandLine) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION started{};
  String line(commandLine);  // the system writes into it
  if (!CreateProcessW(nullptr, wideBuffer(line), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started))
    raiseLastFileError();
  CloseHandle(started.hThread);
  return started.hProcess;
}

// Whether the program has ended, or else a message is waiting.
bool waitForEndOrMessage(const Handle& process) {
  const HANDLE handle = process.get();
  return MsgWaitForMultipleObjectsEx(1, &handle, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
         WAIT_OBJECT_0 + 1;
}

// Handles what waits in the thread's queue, and gives the exit code where it asks the thread to end.
std::optional<int> handleMessages() {
  for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
    if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return {};
}

class WindowsProcess : public Process {
 public:
  void runToEnd(StringView commandLine) override {
    const Handle process(start(commandLine));
    while (!waitForEndOrMessage(process)) {
      const std::optional<int> quitting = handleMessages();
      if (!quitting) continue;
      // The request to end is for the caller's own loop; taken again from here it would never let us wait.
      WaitForSingleObject(process.get(), INFINITE);
      PostQuitMessage(*quitting);
      return;
    }
  }
};

}  // namespace

Process& Process::system() {
  static auto& service = *new WindowsProcess;
  return service;
}

}  // namespace zelUtilities
