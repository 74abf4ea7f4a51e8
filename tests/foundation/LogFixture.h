// A log on its own: a registry in memory, the logger's calls and the message boxes written down.
#pragma once

#include <gmock/gmock.h>

#include "automation/Conversions.h"
#include "foundation/mLog.h"
#include "platform/Dialogs.h"
#include "platform/Objects.h"
#include "support/MemoryRegistry.h"

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
  void setUser(StringView name, std::string_view text) {
    set(RegistryRoot::CurrentUser, u"Software\\VB and VBA Program Settings\\Zelora\\Common", name, text);
  }
  void setMachine(StringView name, std::string_view text) {
    set(RegistryRoot::LocalMachine, u"Software\\Zelora\\Common", name, text);
  }

  std::vector<std::string> calls;  // of loggers
  std::vector<std::string> boxes;  // as "title|text"
  std::function<void()> inLogger;  // what a logger does besides
  MemoryRegistry memory;

 private:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    EXPECT_EQ(style, 48);
    boxes.push_back(toUtf8(String(title) + u"|" + String(text)));
    return MessageBoxAnswer::Ok;
  }
  static void set(RegistryHandle root, StringView path, StringView name, std::string_view text) {
    RegistryKey key;
    bool existed = false;
    key.create(root, path, existed);
    key.open(root, path, RegistryAccess::Write);
    ASSERT_EQ(registry().setValue(key.handle(), name, RegistryType::Text, text), RegistryResult::Success);
  }

  Replaced<Dialogs> dialogsInForce_{*this};
  Replaced<Registry> registryInForce_{memory};
};

}  // namespace zelUtilities
