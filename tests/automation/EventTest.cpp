#include "automation/Event.h"

#include <gtest/gtest.h>

#include <string>

namespace zelUtilities {
namespace {

class EventTest : public testing::Test {
 protected:
  using Listened = Event<int&>;

  // A listener that writes its name and then does something.
  Subscription listen(const char* name, std::function<void()> action = nullptr) {
    return event->subscribe([this, name, action](int& value) {
      ++value;
      log += name;
      if (action) action();
    });
  }
  std::string raised() {
    log.clear();
    Listened& raising = *event;  // which a listener may end
    raising.raise([this] { log += '!'; }, value);
    return log;
  }

  std::unique_ptr<Listened> event = std::make_unique<Listened>();
  std::string log;
  int value = 0;
};

TEST_F(EventTest, OneThatThrowsDoesNotKeepTheOthersFromBeingCalled) {
  Subscription a;
  a = listen("a", [&] { a.cancel(), throw 1; });
  Subscription b = listen("b");
  EXPECT_EQ(raised(), "a!b");
  b = listen("c", [&] { b.cancel(), throw 2; });
  EXPECT_THROW(event->raise([] { throw; }, value), int) << "a handler may raise it again";
  EXPECT_FALSE(event->hasListeners());
}

TEST_F(EventTest, OneThatLeftIsNotCalledAnyMore) {
  Subscription a, b;
  a = listen("a", [&] { a.cancel(), b.cancel(); });
  b = listen("b");
  const Subscription c = listen("c");
  EXPECT_EQ(raised(), "ac");
  EXPECT_EQ(raised(), "c");
  EXPECT_EQ(value, 3) << "each wrote to the same argument";
}

TEST_F(EventTest, ANewOneIsCalledFromTheNextEventOn) {
  std::vector<Subscription> late;
  const Subscription a = listen("a", [&] {
    for (int i = 0; i < 20; ++i) late.push_back(listen("n"));
  });
  const Subscription b = listen("b");
  EXPECT_EQ(raised(), "ab");
  late.resize(1);
  EXPECT_EQ(raised(), "abn");
}

TEST_F(EventTest, AnEventRaisedByAListenerReachesAll) {
  int depth = 0;
  Subscription b;
  const Subscription a = listen("a", [&] {
    if (++depth == 1) event->raise([] {}, value), b.cancel();
  });
  b = listen("b");
  const Subscription c = listen("c");
  EXPECT_EQ(raised(), "aabcc");
}

TEST_F(EventTest, MayEndWhileItIsDeliveredAndBeforeItsSubscriptions) {
  const Subscription a = listen("a", [this] { event.reset(); }), b = listen("b");
  EXPECT_EQ(raised(), "ab");
}

TEST_F(EventTest, WhatAListenerHoldsMayUnsubscribeOthersAsItEnds) {
  auto b = std::make_shared<Subscription>();
  Subscription a = event->subscribe([held = b](int&) {});
  *b = listen("b");
  b.reset();
  a = listen("c");  // ends the first listener, and with it the subscription it held
  EXPECT_EQ(raised(), "c");
}

}  // namespace
}  // namespace zelUtilities
