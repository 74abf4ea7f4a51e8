#include "foundation/bas_Main.h"

#include <thread>

#include "foundation/LogFixture.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;

TEST_F(LogTest, AnObjectThatCannotBeCreatedIsNothingAndShownUnderATitleOnly) {
  for (const StringView title : {u"", u"  ", u" Missing Component "})
    EXPECT_FALSE(CreateNamedObject(u"Acme.Missing", title));
  EXPECT_THAT(boxes, ElementsAre(" Missing Component |Object Descriptor: Acme.Missing"));
  EXPECT_TRUE(calls.empty());
}

TEST_F(LogTest, TheFileSystemObjectIsSharedWithinAThreadAndItsLackReported) {
  const Ref<Object> fso = FSO();
  ASSERT_TRUE(fso);
  EXPECT_EQ(fso, FSO());
  set(u"ConDebug", "1");
  std::thread([&] {
    registerObject(u"Scripting.FileSystemObject", []() -> Ref<Object> { throw Error(429); });
    EXPECT_FALSE(FSO());
    registerObject(u"Scripting.FileSystemObject", {});
    EXPECT_TRUE(FSO());
    EXPECT_NE(FSO(), fso);
  }).join();
  EXPECT_THAT(boxes, ElementsAre(HasSubstr("Error:  429\r\nSource: bas_Main.FSO::.")));
}

}  // namespace
}  // namespace zelUtilities
