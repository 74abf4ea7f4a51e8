#include "foundation/bas_Main.h"

#include <gmock/gmock.h>

#include <thread>

#include "automation/Binder.h"
#include "foundation/ClassRegistry.h"
#include "foundation/LogFixture.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Lamp : public Object {};

// The library's own classes as a test wants them.
class OwnClasses {
 public:
  explicit OwnClasses(const ClassRegistry& classes) { setCurrentClassRegistry(classes); }
  ~OwnClasses() { setCurrentClassRegistry(before_); }

 private:
  const ClassRegistry& before_ = currentClassRegistry();
};

TEST_F(LogTest, AnObjectOfTheLibraryComesBeforeOneOfTheProgram) {
  static const ClassInfo lampInfo = describe<Lamp>("testLamp", "A lamp.").creatable();
  ClassRegistry classes;
  classes.add(lampInfo);
  const OwnClasses own(classes);
  registerObject(u"zelUtilities.testLamp", [this] { return Ref<Object>(make<Recorder>(*this)); });
  registerObject(u"Acme.Lamp", [this] { return Ref<Object>(make<Recorder>(*this)); });
  EXPECT_TRUE(objectCast<Lamp>(CreateNamedObject(u"zelUtilities.TestLamp", u"").get()));
  EXPECT_TRUE(objectCast<Recorder>(CreateNamedObject(u"acme.lamp", u"").get()));
  registerObject(u"zelUtilities.testLamp", {});
  registerObject(u"Acme.Lamp", {});
}

TEST_F(LogTest, AnObjectThatCannotBeCreatedIsNothingAndShownUnderATitleOnly) {
  EXPECT_FALSE(CreateNamedObject(u"Acme.Missing", u""));
  EXPECT_FALSE(CreateNamedObject(u"Acme.Missing", u"  "));
  EXPECT_THAT(dialogs.boxes, IsEmpty());
  EXPECT_FALSE(CreateNamedObject(u"Acme.Missing", u" Missing Component "));
  EXPECT_THAT(dialogs.boxes, ElementsAre(" Missing Component |Object Descriptor: Acme.Missing"));
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(LogTest, TheFileSystemObjectIsSharedWithinAThread) {
  const Ref<Object> fso = FSO();
  ASSERT_TRUE(fso);
  EXPECT_EQ(fso, FSO());
  std::thread([&] {
    const Ref<Object> another = FSO();
    EXPECT_TRUE(another);
    EXPECT_FALSE(another == fso);
  }).join();
}

struct NoObjects : Objects {
  Ref<Object> create(StringView) override { throw Error(429, u"", u"cannot"); }
};

TEST_F(LogTest, WithoutAFileSystemObjectThereIsNothingAndAReport) {
  setUser(u"ConDebug", "1");
  std::thread([this] {
    NoObjects none;
    const Replaced<Objects> replaced(none);
    EXPECT_FALSE(FSO());
    EXPECT_FALSE(FSO());
  }).join();
  EXPECT_THAT(dialogs.boxes, SizeIs(2));
  EXPECT_THAT(dialogs.boxes[0], HasSubstr("Error:  429\r\nSource: bas_Main.FSO::."));
}

}  // namespace
}  // namespace zelUtilities
