#include "server/EventSinks.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <unordered_map>

#include "platform/windows/ComErrors.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/VariantConversion.h"

namespace zelUtilities {

namespace {

struct AllSinks {
  std::mutex guard;
  std::unordered_map<const Object*, std::weak_ptr<EventSinks>> byObject;
};

AllSinks& allSinks() {
  static auto& all = *new AllSinks;
  return all;
}

// A sink may leave out the events that it does not care for.
bool isUnheeded(HRESULT result) {
  return result == DISP_E_MEMBERNOTFOUND || result == DISP_E_UNKNOWNNAME || result == E_NOTIMPL;
}

// An event's arguments as a sink takes them: last one first, those by reference with their type.
class EventArguments {
 public:
  EventArguments(const EventInfo& event, std::span<Variant> values)
      : event_(event), values_(values), owned_(values.size()), passed_(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      toSystem(values[i], owned_[i]);
      VARIANT& place = passed_[values.size() - 1 - i];
      place = owned_[i];
      if (!isReference(i)) continue;
      place.vt = static_cast<VARTYPE>(owned_[i].vt | VT_BYREF);
      place.byref = &owned_[i].llVal;
    }
  }

  DISPPARAMS parameters() { return {passed_.data(), nullptr, static_cast<UINT>(passed_.size()), 0}; }

  void writeBack() {
    for (std::size_t i = 0; i < values_.size(); ++i)
      if (isReference(i)) values_[i] = fromSystem(owned_[i]);
  }

 private:
  bool isReference(std::size_t i) const { return event_.parameters[i].type.byReference; }

  const EventInfo& event_;
  std::span<Variant> values_;
  std::vector<OwnedVariant> owned_;
  std::vector<VARIANT> passed_;  // owns nothing
};

void callSink(IDispatch& sink, const EventInfo& event, std::span<Variant> values) {
  EventArguments arguments(event, values);
  DISPPARAMS parameters = arguments.parameters();
  OwnedVariant result;
  EXCEPINFO exception{};
  UINT wrong = 0;
  const HRESULT code = sink.Invoke(event.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                   &result, &exception, &wrong);
  if (isUnheeded(code)) return;
  arguments.writeBack();  // of a sink that fails, too
  if (code < 0) raiseComError(code, &exception);
}

}  // namespace

std::shared_ptr<EventSinks> EventSinks::find(const Object& object) {
  AllSinks& all = allSinks();
  const std::lock_guard lock(all.guard);
  const auto found = all.byObject.find(&object);
  return found == all.byObject.end() ? nullptr : found->second.lock();
}

std::shared_ptr<EventSinks> EventSinks::of(Object& object, const ServedClass& served) {
  if (auto known = find(object)) return known;
  const std::shared_ptr<EventSinks> made(new EventSinks(object, served));
  AllSinks& all = allSinks();
  const std::lock_guard lock(all.guard);
  all.byObject[&object] = made;
  return made;
}

EventSinks::~EventSinks() {
  AllSinks& all = allSinks();
  const std::lock_guard lock(all.guard);
  all.byObject.erase(&object_);
}

DWORD EventSinks::advise(const ComRef<IDispatch>& sink) {
  Connection connection{++lastCookie_, sink, {}};
  for (const EventInfo& event : served_.info().events()) {
    // The subscription keeps the sinks, and they keep it: together they end with the object's event.
    connection.subscriptions.push_back(
        event.subscribe(object_, [keep = shared_from_this(), sink, &event](std::span<Variant> values) {
          callSink(*sink, event, values);
        }));
  }
  connections_.push_back(std::move(connection));
  return lastCookie_;
}

bool EventSinks::unadvise(DWORD cookie) {
  const auto found =
      std::find_if(connections_.begin(), connections_.end(),
                   [cookie](const Connection& connection) { return connection.cookie == cookie; });
  if (found == connections_.end()) return false;
  const auto alive = shared_from_this();
  const Connection leaving = std::move(*found);  // ends after the list is in order again
  connections_.erase(found);
  return true;
}

std::vector<CONNECTDATA> EventSinks::connections() const {
  std::vector<CONNECTDATA> all;
  for (const Connection& connection : connections_)
    all.push_back({ComRef<IDispatch>(connection.sink).detach(), connection.cookie});
  return all;
}

}  // namespace zelUtilities
