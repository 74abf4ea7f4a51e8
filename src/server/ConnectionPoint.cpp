#include "server/ConnectionPoint.h"

#include <olectl.h>

#include <memory>
#include <vector>

#include "server/Bridge.h"
#include "server/ErrorInfo.h"
#include "server/EventSinks.h"

namespace zelUtilities {

namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// How a caller gets references of its own.
struct ConnectionCopies {
  static CONNECTDATA copy(const CONNECTDATA& connection) {
    connection.pUnk->AddRef();
    return connection;
  }
  static void end(const CONNECTDATA& connection) { connection.pUnk->Release(); }
};

struct PointCopies {
  static IConnectionPoint* copy(IConnectionPoint* point) {
    point->AddRef();
    return point;
  }
  static void end(IConnectionPoint* point) { point->Release(); }
};

// Walks elements that were there when it was made.
template <class Interface, class Element, class Copies>
class Walk final : public ComObject<Interface> {
 public:
  // Takes the elements' references over.
  explicit Walk(std::vector<Element> elements) : elements_(std::move(elements)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
    if (!out) return E_POINTER;
    const bool known = id == IID_IUnknown || id == __uuidof(Interface);
    return this->answer(known ? static_cast<Interface*>(this) : nullptr, out);
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, Element* out, ULONG* fetched) override {
    if (!out || (count != 1 && !fetched)) return E_POINTER;
    ULONG done = 0;
    while (done < count && at_ < elements_.size()) out[done++] = Copies::copy(elements_[at_++]);
    if (fetched) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = elements_.size() - at_;
    at_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    at_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interface** copy) override {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return guarded({}, [&] {
      std::vector<Element> copies;
      copies.reserve(elements_.size());
      for (const Element& element : elements_) copies.push_back(Copies::copy(element));
      auto* walk = new Walk(std::move(copies));
      walk->at_ = at_;
      *copy = walk;
      return S_OK;
    });
  }

 private:
  ~Walk() override {
    for (const Element& element : elements_) Copies::end(element);
  }

  std::vector<Element> elements_;
  std::size_t at_ = 0;
};

#pragma GCC diagnostic pop

}  // namespace

IEnumConnectionPoints* ConnectionPoint::enumerate(Object& object, const ServedClass& served) {
  std::vector<IConnectionPoint*> points;
  points.reserve(1);
  if (!served.info().events().empty()) points.push_back(new ConnectionPoint(object, served));
  return new Walk<IEnumConnectionPoints, IConnectionPoint*, PointCopies>(std::move(points));
}

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** out) {
  if (!out) return E_POINTER;
  const bool known = id == IID_IUnknown || id == IID_IConnectionPoint;
  return answer(known ? static_cast<IConnectionPoint*>(this) : nullptr, out);
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
  if (!id) return E_POINTER;
  *id = served_.eventInterfaceId();
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = nullptr;
  return guarded({}, [&] {
    *container = Bridge::of(*object_);
    return S_OK;
  });
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  ComRef<IDispatch> events;
  // A sink may answer only to the event interface's own identifier, or only to the general one.
  if (sink->QueryInterface(served_.eventInterfaceId(), events.receiveAny()) < 0 &&
      sink->QueryInterface(IID_IDispatch, events.receiveAny()) < 0)
    return CONNECT_E_CANNOTCONNECT;
  return guarded({}, [&] {
    *cookie = EventSinks::of(*object_, served_)->advise(events);
    return S_OK;
  });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
  return guarded({}, [&] {
    const std::shared_ptr<EventSinks> sinks = EventSinks::find(*object_);
    return sinks && sinks->unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
  });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (!connections) return E_POINTER;
  *connections = nullptr;
  return guarded({}, [&] {
    const std::shared_ptr<EventSinks> sinks = EventSinks::find(*object_);
    *connections = new Walk<IEnumConnections, CONNECTDATA, ConnectionCopies>(
        sinks ? sinks->connections() : std::vector<CONNECTDATA>());
    return S_OK;
  });
}

}  // namespace zelUtilities
