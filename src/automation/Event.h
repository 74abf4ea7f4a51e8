// Event: listeners called one after another, in the order of subscription.
//
//   Event<const Ref<zelNode>&, bool&> removingNode;
//   Subscription watch = removingNode.subscribe([](const Ref<zelNode>& node, bool& cancel) { ... });
//
// Arguments by reference can be written by a listener and are seen by the later ones. Listeners
// may subscribe and unsubscribe while an event is delivered: a new one is called from the next
// event on, one that left is not called any more. A listener that throws does not keep the
// others from being called.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "automation/Object.h"

namespace zelUtilities {

// Ends a subscription when it ends itself; may outlive the event.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
  Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      cancel_ = std::exchange(other.cancel_, nullptr);
    }
    return *this;
  }
  ~Subscription() { cancel(); }

  void cancel() {
    if (cancel_) std::exchange(cancel_, nullptr)();
  }

 private:
  std::function<void()> cancel_;
};

template <class... Arguments>
class Event {
 public:
  using Listener = std::function<void(Arguments...)>;

  Event() = default;
  ~Event() {
    if (state_) state_->end();
  }
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  bool hasListeners() const { return state_ && !state_->listeners.empty(); }

  [[nodiscard]] Subscription subscribe(Listener listener) {
    if (!state_) state_ = Ref<State>(new State);
    const std::uint64_t id = ++state_->lastId;
    state_->listeners.push_back({id, std::make_unique<Listener>(std::move(listener))});
    return Subscription([state = state_, id] { state->remove(id); });
  }

  // Calls every listener; onFailure is called inside the catch block of each one that throws.
  template <class OnFailure>
  void raise(const OnFailure& onFailure, Arguments... arguments) {
    if (!hasListeners()) return;
    const Delivery delivery(state_);
    State& state = *delivery.state;
    const std::uint64_t newest = state.lastId;
    for (std::size_t i = 0; i < state.listeners.size() && state.listeners[i].id <= newest; ++i) {
      if (state.listeners[i].hasLeft) continue;
      const Listener& listener = *state.listeners[i].listener;
      try {
        listener(arguments...);
      } catch (...) {
        onFailure();
      }
    }
  }

 private:
  // Stays in place while events are delivered, so that a listener may leave in the middle of its own call.
  struct Entry {
    std::uint64_t id;
    std::unique_ptr<Listener> listener;
    bool hasLeft = false;
  };
  // Shared with subscriptions, which may outlive the event; its counts need no locks, unlike a
  // shared_ptr's, which would cost more than the call of a small listener.
  struct State {
    std::vector<Entry> listeners;
    std::uint64_t lastId = 0;
    int deliveries = 0;
    bool hasEnded = false;
    bool isSwept = true;  // nobody in the list has left
    std::uint32_t references = 0;

    void retain() { ++references; }
    void release() {
      if (--references == 0) delete this;
    }
    void remove(std::uint64_t id) {
      for (Entry& entry : listeners) entry.hasLeft |= entry.id == id;
      leave();
    }
    void end() {
      hasEnded = true;
      leave();
    }
    void leave() {
      isSwept = false;
      if (deliveries == 0) sweep();
    }
    // What a listener holds ends when the list is in order again, since that may change it once more.
    void sweep() {
      while (!isSwept && deliveries == 0) {
        const auto left = std::find_if(listeners.begin(), listeners.end(),
                                       [this](const Entry& entry) { return hasEnded || entry.hasLeft; });
        isSwept = left == listeners.end();
        if (isSwept) return;
        const std::unique_ptr<Listener> leaving = std::move(left->listener);
        listeners.erase(left);
      }
    }
  };
  struct Delivery {
    explicit Delivery(const Ref<State>& delivering) : state(delivering) { ++state->deliveries; }
    ~Delivery() {
      if (--state->deliveries == 0) state->sweep();
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    const Ref<State> state;  // the event's owner may end meanwhile
  };

  Ref<State> state_;
};

}  // namespace zelUtilities
