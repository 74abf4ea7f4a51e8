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

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

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
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  bool hasListeners() const { return state_ && !state_->listeners.empty(); }

  [[nodiscard]] Subscription subscribe(Listener listener) {
    if (!state_) state_ = std::make_shared<State>();
    const std::uint64_t id = ++state_->lastId;
    state_->listeners.push_back({id, std::make_shared<Listener>(std::move(listener))});
    return Subscription([weak = std::weak_ptr<State>(state_), id] {
      if (const auto state = weak.lock()) state->remove(id);
    });
  }

  // Calls every listener; onFailure is called inside the catch block of each one that throws.
  template <class OnFailure>
  void raise(const OnFailure& onFailure, Arguments... arguments) {
    if (!hasListeners()) return;
    const std::shared_ptr<State> state = state_;  // the event's owner may end meanwhile
    const std::uint64_t newest = state->lastId;
    const Delivery delivery(*state);
    for (std::size_t i = 0; i < state->listeners.size() && state->listeners[i].id <= newest; ++i) {
      const std::shared_ptr<Listener> listener = state->listeners[i].listener;
      if (!listener) continue;
      try {
        (*listener)(arguments...);
      } catch (...) {
        onFailure();
      }
    }
  }

 private:
  struct Entry {
    std::uint64_t id;
    std::shared_ptr<Listener> listener;  // nothing once it has left during a delivery
  };
  struct State {
    std::vector<Entry> listeners;
    std::uint64_t lastId = 0;
    int deliveries = 0;

    void remove(std::uint64_t id) {
      std::shared_ptr<Listener> leaving;  // ends after the list is in order again
      for (Entry& entry : listeners)
        if (entry.id == id) leaving = std::exchange(entry.listener, nullptr);
      if (deliveries == 0) sweep();
    }
    void sweep() {
      std::erase_if(listeners, [](const Entry& entry) { return !entry.listener; });
    }
  };
  struct Delivery {
    explicit Delivery(State& owner) : state(owner) { ++state.deliveries; }
    ~Delivery() {
      if (--state.deliveries == 0) state.sweep();
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    State& state;
  };

  std::shared_ptr<State> state_;
};

}  // namespace zelUtilities
