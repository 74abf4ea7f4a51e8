#include "automation/Event.h"

#include <gtest/gtest.h>

#include <string>

namespace zelUtilities {
namespace {

struct EventTest : testing::Test {
  using Listened = Event<int&>;

  // A listener that writes its name and then does something.
  Subscription listen(
      const char* name, std::function<void()> action = [] {}) {
    return event->subscribe([this, name, action](int& value) {
      ++value;
      log += name;
      action();
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
  Subscription a, b;
};

TEST_F(EventTest, OneThatThrowsDoesNotKeepTheOthersFromBeingCalled) {
  a = listen("a", [&] { a.cancel(), throw 1; });
  b = listen("b");
  EXPECT_EQ(raised(), "a!b");
  b = listen("c", [&] { b.cancel(), throw 2; });
  EXPECT_THROW(event->raise([] { throw; }, value), int) << "a handler may raise it again";
  EXPECT_FALSE(event->hasListeners());
}

TEST_F(EventTest, OneThatLeftIsNotCalledAnyMore) {
  a = listen("a", [&] { a.cancel(), b.cancel(); });
  b = listen("b");
  const Subscription c = listen("c");
  EXPECT_EQ(raised(), "ac");
  EXPECT_EQ(raised(), "c");
  EXPECT_EQ(value, 3) << "each wrote to the same argument";
}

TEST_F(EventTest, ANewOneIsCalledFromTheNextEventOn) {
  std::vector<Subscription> late;
  a = listen("a", [&] {
    for (int i = 0; i < 20; ++i) late.push_back(listen("n"));
  });
  b = listen("b");
  EXPECT_EQ(raised(), "ab");
  late.resize(1);
  EXPECT_EQ(raised(), "abn");
}

TEST_F(EventTest, AnEventRaisedByAListenerReachesAll) {
  int depth = 0;
  a = listen("a", [&] {
    if (++depth == 1) event->raise([] {}, value), b.cancel();
  });
  b = listen("b");
  const Subscription c = listen("c");
  EXPECT_EQ(raised(), "aabcc");
}

TEST_F(EventTest, MayEndWhileItIsDeliveredAndBeforeItsSubscriptions) {
  a = listen("a", [this] { event.reset(); });
  b = listen("b");
  EXPECT_EQ(raised(), "ab");
}

TEST_F(EventTest, WhatAListenerHoldsMayUnsubscribeOthersAsItEnds) {
  auto held = std::make_shared<Subscription>(listen("b"));
  a = event->subscribe([held](int&) {});
  held.reset();
  a = listen("c");  // ends the first listener, and with it the subscription it held
  EXPECT_EQ(raised(), "c");
}

}  // namespace
}  // namespace zelUtilities
