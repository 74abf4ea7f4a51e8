#include "server/Bridge.h"

#include <olectl.h>

#include <cstring>
#include <mutex>
#include <unordered_map>

#include "automation/CaseFolding.h"
#include "automation/Enumerator.h"
#include "automation/Error.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"
#include "server/CallArguments.h"
#include "server/ConnectionPoint.h"
#include "server/EnumeratorBridge.h"
#include "server/ErrorInfo.h"
#include "server/PublishedNames.h"
#include "server/TypeLibrary.h"

namespace zelUtilities {

namespace {

// Every bridge there is, by its object. One table for all threads: objects differ in their addresses.
struct Bridges {
  std::mutex guard;
  std::unordered_map<const Object*, Bridge*> byObject;
};

Bridges& bridges() {
  static auto& all = *new Bridges;  // outlives clients that let go late
  return all;
}

constexpr WORD anyCall =
    DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

// Reading a method as if it were a property would carry it out.
bool canAnswer(const Member& member, WORD flags) {
  return member.isProperty || (flags & anyCall) != DISPATCH_PROPERTYGET;
}

// The object if it is an enumerator, else nothing. Those have no description.
Enumerator* enumeratorOf(Object* object) {
  return object && !object->classInfo() ? dynamic_cast<Enumerator*>(object) : nullptr;
}

void giveResult(const Variant& answer, VARIANT* result) {
  if (!result) return;
  VariantInit(result);
  toSystem(answer, *result);
  if (answer.isObject() && enumeratorOf(answer.object())) result->vt = VT_UNKNOWN;  // as clients expect it
}

// The position of a parameter, which is its identifier.
DISPID parameterId(const Member& member, StringView name) {
  for (std::size_t i = 0; i < member.parameters.size(); ++i)
    if (equalFolded(member.parameters[i].name, name)) return static_cast<DISPID>(i);
  return DISPID_UNKNOWN;
}

const Member* findMember(const ServedClass& served, StringView name) {
  if (equalFolded(name, u"_NewEnum")) return served.member(Member::enumeratorId);
  return name.empty() ? nullptr : served.info().find(name);
}

}  // namespace

const GUID& ownObjectId() {
  static const GUID id = [] {
    GUID made = {0x8B1F3D50, 0x6C0E, 0x4B7D, {}};
    static const char here = 0;
    const auto address = reinterpret_cast<std::uintptr_t>(&here);  // no two modules share it
    std::memcpy(made.Data4, &address, sizeof address);
    return made;
  }();
  return id;
}

Bridge* Bridge::of(Object& object) {
  const ClassInfo* info = object.classInfo();
  if (!info) throw Error(ErrorNumber::TypeMismatch);
  Bridges& all = bridges();
  const std::lock_guard lock(all.guard);
  Bridge*& known = all.byObject[&object];
  if (known) {
    known->AddRef();
  } else {
    try {
      known = new Bridge(object, ServedClass::of(*info));
    } catch (...) {
      all.byObject.erase(&object);
      throw;
    }
  }
  return known;
}

// Whoever could be given the bridge meanwhile is on this very thread.
ULONG Bridge::Release() {
  const ULONG left = drop();
  if (left != 0) return left;
  Bridges& all = bridges();
  {
    const std::lock_guard lock(all.guard);
    all.byObject.erase(object_.get());
  }
  delete this;  // the object may end with it, and call back into the library
  return 0;
}

HRESULT Bridge::QueryInterface(REFIID id, void** out) {
  if (!out) return E_POINTER;
  if (id == IID_IDispatch || id == IID_IUnknown || (served_.isPublished() && id == served_.callInterfaceId()))
    return answer(static_cast<IDispatch*>(this), out);
  if (id == ownObjectId()) return answer(static_cast<OwnObject*>(this), out);
  if (id == IID_ISupportErrorInfo) return answer(static_cast<ISupportErrorInfo*>(this), out);
  if (served_.isPublished() && (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2))
    return answer(static_cast<IProvideClassInfo2*>(this), out);
  if (raisesEvents() && id == IID_IConnectionPointContainer)
    return answer(static_cast<IConnectionPointContainer*>(this), out);
  *out = nullptr;
  return E_NOINTERFACE;
}

HRESULT Bridge::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = served_.isPublished() ? 1 : 0;
  return S_OK;
}

HRESULT Bridge::GetTypeInfo(UINT index, LCID, ITypeInfo** information) {
  if (!information) return E_POINTER;
  *information = nullptr;
  if (index != 0 || !served_.isPublished()) return DISP_E_BADINDEX;
  return guarded({}, [&] { return typeInformation(served_.callInterfaceId(), information); });
}

HRESULT Bridge::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (count == 0 || !names || !ids) return E_INVALIDARG;
  return guarded({}, [&] {
    const Member* member = findMember(served_, fromWide(names[0]));
    ids[0] = member ? member->id : DISPID_UNKNOWN;
    HRESULT result = member ? S_OK : DISP_E_UNKNOWNNAME;
    for (UINT i = 1; i < count; ++i) {
      ids[i] = member ? parameterId(*member, fromWide(names[i])) : DISPID_UNKNOWN;
      if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
    }
    return result;
  });
}

HRESULT Bridge::Invoke(DISPID id, REFIID interfaceId, LCID, WORD flags, DISPPARAMS* parameters,
                       VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (interfaceId != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters || (flags & anyCall) == 0) return E_INVALIDARG;
  const Member* member = served_.member(id);
  if (!member || !canAnswer(*member, flags)) return DISP_E_MEMBERNOTFOUND;
  // The call may let go of the bridge.
  const Ref<Object> object = object_;
  const ServedClass& served = served_;
  try {
    CallArguments arguments(*member, *parameters);
    const Variant answer =
        invokeMember(*object, *member, static_cast<InvokeKind>(flags & anyCall), arguments.values());
    arguments.writeBack();
    giveResult(answer, result);
    return S_OK;
  } catch (...) {
    return reportException(exception, fromUtf8(programmaticId(served.info())));
  }
}

HRESULT Bridge::InterfaceSupportsErrorInfo(REFIID id) {
  return id == IID_IDispatch || id == served_.callInterfaceId() ? S_OK : S_FALSE;
}

HRESULT Bridge::GetClassInfo(ITypeInfo** information) {
  if (!information) return E_POINTER;
  *information = nullptr;
  return guarded({}, [&] { return typeInformation(served_.classId(), information); });
}

HRESULT Bridge::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || !raisesEvents()) return E_INVALIDARG;
  *id = served_.eventInterfaceId();
  return S_OK;
}

HRESULT Bridge::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (!points) return E_POINTER;
  *points = nullptr;
  return guarded({}, [&] {
    *points = ConnectionPoint::enumerate(*object_, served_);
    return S_OK;
  });
}

HRESULT Bridge::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (!raisesEvents() || id != served_.eventInterfaceId()) return CONNECT_E_NOCONNECTION;
  return guarded({}, [&] {
    *point = new ConnectionPoint(*object_, served_);
    return S_OK;
  });
}

namespace {

IDispatch* bridgeTo(Object& object) {
  if (Enumerator* items = enumeratorOf(&object)) return EnumeratorBridge::create(*items);
  return Bridge::of(object);
}

Object* behind(IUnknown& object) {
  ComRef<OwnObject> own;
  return object.QueryInterface(ownObjectId(), own.receiveAny()) >= 0 ? &own->core() : nullptr;
}

}  // namespace

void installBridge() {
  static const ObjectBridge bridge = {&bridgeTo, &behind};
  setObjectBridge(&bridge);
}

}  // namespace zelUtilities
