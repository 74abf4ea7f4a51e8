// ConnectionPoint: where clients connect their sinks to the events of an object.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include "automation/Object.h"
#include "server/ComObject.h"
#include "server/ServedClass.h"

namespace zelUtilities {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class ConnectionPoint final : public ComObject<IConnectionPoint> {
 public:
  ConnectionPoint(Object& object, const ServedClass& served) : object_(&object), served_(served) {}

  // The object's connection points: the one for its events, where it raises any.
  static IEnumConnectionPoints* enumerate(Object& object, const ServedClass& served);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

 private:
  ~ConnectionPoint() override = default;

  const Ref<Object> object_;
  const ServedClass& served_;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
