// EventSinks: the clients that follow an object's events.
//
// They belong to the object, not to its bridge: a client that keeps its sink advised goes on hearing of a
// list that only another object still holds. They end with the object, so a sink that holds the list makes no
// more of a cycle than the client itself does.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>
#include <vector>

#include "automation/Event.h"
#include "server/ComObject.h"
#include "server/ServedClass.h"

namespace zelUtilities {

class EventSinks : public std::enable_shared_from_this<EventSinks> {
 public:
  // The object's sinks; the first is nothing while there are none.
  static std::shared_ptr<EventSinks> find(const Object& object);
  static std::shared_ptr<EventSinks> of(Object& object, const ServedClass& served);

  ~EventSinks();

  // Subscribes the sink to every event. Returns its cookie, never 0.
  DWORD advise(const ComRef<IDispatch>& sink);
  // False for a cookie that is not in use.
  bool unadvise(DWORD cookie);

  // Each with a reference for the caller.
  std::vector<CONNECTDATA> connections() const;

 private:
  struct Connection {
    DWORD cookie;
    ComRef<IDispatch> sink;
    std::vector<Subscription> subscriptions;
  };

  EventSinks(Object& object, const ServedClass& served) : object_(object), served_(served) {}

  Object& object_;  // its events keep this
  const ServedClass& served_;
  std::vector<Connection> connections_;
  DWORD lastCookie_ = 0;
};

}  // namespace zelUtilities
