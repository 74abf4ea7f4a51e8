// Sinks of C++ clients: several at once, one that fails, one that keeps what it is given.
#include <gtest/gtest.h>
#include <olectl.h>

#include "platform/windows/ProbeDispatch.h"
#include "platform/windows/VariantConversion.h"
#include "server/windows/ServerUnderTest.h"

namespace zelUtilities {
namespace {

// Hears every event and answers with the same code.
struct Sink {
  explicit Sink(HRESULT code = S_OK) : answer(code) {}

  HRESULT answer;
  std::vector<DISPID> heard;
  bool cancels = false;
  ComRef<IUnknown> kept;  // the first argument, where that is an object
  ProbeDispatch face{[this](const ProbeDispatch::Call& call) {
    heard.push_back(call.id);
    VARIANT& last = call.parameters->rgvarg[0];
    if (cancels && last.vt == (VT_BYREF | VT_BOOL)) *last.pboolVal = VARIANT_TRUE;
    if (call.argument(0).vt == VT_DISPATCH) kept = ComRef<IUnknown>(call.argument(0).punkVal);
    return answer;
  }};
};

constexpr DISPID nodeAdded = 1;
constexpr DISPID nodeRemoved = 2;
constexpr DISPID removingNode = 3;

class EventSink : public testing::Test {
 protected:
  EventSink()
      : list_(LateBound::create(u"zelUtilities.zelNodeList")), point_(eventsOf(dispatchOf(list_).get())) {}

  DWORD advise(Sink& sink) {
    DWORD cookie = 0;
    EXPECT_EQ(point_->Advise(&sink.face, &cookie), S_OK);
    return cookie;
  }
  void end() {
    point_ = {};
    list_ = LateBound();
  }

  ServerUnderTest server_;
  LateBound list_;
  ComRef<IConnectionPoint> point_;
};

TEST_F(EventSink, ThatFailsKeepsNobodyElseFromHearingAndIsListedUntilItLeaves) {
  Sink failing(E_FAIL);
  Sink other;
  const DWORD first = advise(failing);
  const DWORD second = advise(other);
  list_(u"Create", u"", u"k", u"t");
  EXPECT_EQ(failing.heard.back(), nodeAdded);
  EXPECT_EQ(other.heard, failing.heard);
  failing.cancels = true;  // what it writes before it fails counts
  list_(u"Remove", u"k");
  EXPECT_EQ(other.heard.back(), removingNode);
  EXPECT_EQ(point_->Unadvise(first), S_OK);
  EXPECT_EQ(point_->Unadvise(first), CONNECT_E_NOCONNECTION);
  list_(u"Remove", u"k");
  EXPECT_EQ(other.heard.back(), nodeRemoved);
  failing.kept = {};
  EXPECT_EQ(failing.face.references(), 1);

  ComRef<IEnumConnections> connections;
  ASSERT_EQ(point_->EnumConnections(connections.receive()), S_OK);
  CONNECTDATA found[2] = {};
  ULONG count = 0;
  EXPECT_EQ(connections->Next(2, found, &count), S_FALSE);
  ASSERT_EQ(count, 1U);
  EXPECT_TRUE(found[0].dwCookie == second && second != first);
  found[0].pUnk->Release();
  connections = {};
  other.kept = {};
  end();
  EXPECT_EQ(other.face.references(), 1);
}

// The client that forgets to unadvise: its sink ends with the list, though it keeps a node of it.
TEST_F(EventSink, IsLetGoOfWithTheListOfWhichItHearsForAsLongAsAnotherObjectHoldsIt) {
  Sink forgotten;
  advise(forgotten);
  const LateBound owner = LateBound::create(u"zelUtilities.zelNodeList").object(u"Create", u"", u"o", u"");
  owner.put(u"Tag", list_.get());
  end();
  owner.object(u"Tag")(u"Create", u"", u"k", u"t");
  EXPECT_EQ(forgotten.heard.back(), nodeAdded);
  EXPECT_GT(forgotten.face.references(), 1);
  owner.put(u"Tag", {});
  EXPECT_EQ(forgotten.face.references(), 1);
  EXPECT_EQ(LateBound(objectFromSystem(forgotten.kept.get())).text(u"Text"), u"t");
}

TEST_F(EventSink, MustBeAutomationObject) {
  DWORD cookie = 1;
  EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point_->Advise(point_.get(), &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0U);
}

}  // namespace
}  // namespace zelUtilities
