// A log on its own: a registry in memory, message boxes and reports written down.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "automation/Conversions.h"
#include "foundation/mLog.h"
#include "platform/Dialogs.h"
#include "platform/Objects.h"
#include "platform/Registry.h"
#include "support/MemoryRegistry.h"

namespace zelUtilities {

inline constexpr StringView machineSettings = u"Software\\Zelora\\Common";
inline constexpr StringView userSettings = u"Software\\VB and VBA Program Settings\\Zelora\\Common";

// Each box as "title|text".
struct WrittenDownBoxes : Dialogs {
  std::vector<std::string> boxes;
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    EXPECT_EQ(style, 48);
    boxes.push_back(toUtf8(String(title) + u"|" + String(text)));
    return MessageBoxAnswer::Ok;
  }
};

class LogTest : public ::testing::Test {
 protected:
  // Writes each call down as "method|argument|...".
  class Recorder : public Object {
   public:
    explicit Recorder(LogTest& test) : test_(test) {}
    Variant Invoke(StringView name, InvokeKind, std::span<Variant> arguments) override {
      String line(name);
      for (const Variant& argument : arguments) line += u"|" + toText(argument);
      test_.calls.push_back(toUtf8(line));
      if (test_.inLogger) test_.inLogger();
      return {};
    }

   private:
    LogTest& test_;
  };

  LogTest() {
    registerObject(u"zelLog.zelHandler", [this] { return Ref<Object>(make<Recorder>(*this)); });
    mLog::resetThreadState();
  }
  ~LogTest() override {
    registerObject(u"zelLog.zelHandler", {});
    mLog::resetThreadState();
  }

  void set(RegistryHandle root, StringView name, std::string_view text) {
    RegistryKey key;
    bool existed = false;
    const StringView path = root == RegistryRoot::CurrentUser ? userSettings : machineSettings;
    ASSERT_EQ(key.create(root, path, existed), RegistryResult::Success);
    ASSERT_EQ(key.open(root, path, RegistryAccess::Write), RegistryResult::Success);
    ASSERT_EQ(registry().setValue(key.handle(), name, RegistryType::Text, text), RegistryResult::Success);
  }
  void setUser(StringView name, std::string_view text) { set(RegistryRoot::CurrentUser, name, text); }
  void setMachine(StringView name, std::string_view text) { set(RegistryRoot::LocalMachine, name, text); }

  std::vector<std::string> calls;  // of the logger
  std::function<void()> inLogger;  // what the logger does besides
  WrittenDownBoxes dialogs;
  MemoryRegistry memory;

 private:
  Replaced<Dialogs> dialogsInForce_{dialogs};
  Replaced<Registry> registryInForce_{memory};
};

}  // namespace zelUtilities
