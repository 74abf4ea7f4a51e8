// A log on its own: a registry in memory, the logger's calls and the message boxes written down.
#pragma once

#include "automation/Conversions.h"
#include "foundation/mLog.h"
#include "platform/Dialogs.h"
#include "platform/Objects.h"
#include "support/MemoryRegistry.h"
#include "support/Testing.h"

namespace zelUtilities {

class LogTest : public testing::Test, public Dialogs {
 protected:
  // A logger that writes each call down as "method|argument|...".
  struct Recorder : Object {
    explicit Recorder(LogTest& owner) : test(owner) {}
    Variant Invoke(StringView name, InvokeKind, std::span<Variant> arguments) override {
      String line(name);
      for (const Variant& argument : arguments) line += u"|" + toText(argument);
      test.calls.push_back(toUtf8(line));
      if (name == u"errorMessage")
        test.reports += toUtf8(toText(arguments[2]) + u"|" + toText(arguments[3]) + u" ");
      if (test.inLogger) test.inLogger();
      return {};
    }
    LogTest& test;
  };

  LogTest() {
    record(u"zelLog.zelHandler");
    mLog::resetThreadState();
  }
  ~LogTest() override {
    registerObject(u"zelLog.zelHandler", {});
    mLog::resetThreadState();
  }

  // Objects under this name are loggers that write their calls down.
  void record(StringView name) {
    registerObject(name, [this] { return Ref<Object>(make<Recorder>(*this)); });
  }
  // A setting of the user and of the machine; no text is none.
  void set(StringView name, const char* user, const char* machine = nullptr) {
    const StringView userKey = u"Software\\VB and VBA Program Settings\\Zelora\\Common";
    const StringView machineKey = u"Software\\Zelora\\Common";
    if (user) memory.store(RegistryRoot::CurrentUser, userKey, name, RegistryType::Text, user);
    if (machine) memory.store(RegistryRoot::LocalMachine, machineKey, name, RegistryType::Text, machine);
  }

  std::vector<std::string> calls;  // of loggers
  std::string reports;             // of errors to loggers, "source|number " each
  std::vector<std::string> boxes;  // as "title|text"
  std::function<void()> inLogger;  // what a logger does besides
  MemoryRegistry memory;

 private:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    EXPECT_EQ(style, 48);
    boxes.push_back(toUtf8(String(title) + u"|" + String(text)));
    return MessageBoxAnswer::Ok;
  }

  Replaced<Dialogs> dialogsInForce_{*this};
  Replaced<Registry> registryInForce_{memory};
};

}  // namespace zelUtilities
