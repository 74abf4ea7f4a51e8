#include <windows.h>

#include <ocidl.h>

#include "automation/Conversions.h"
#include "platform/Objects.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

// What a description is called; lets go of it.
String nameIn(ITypeInfo* description) {
  BSTR text = nullptr;
  if (description->GetDocumentation(MEMBERID_NIL, &text, nullptr, nullptr, nullptr) < 0) text = nullptr;
  const String name = text ? fromWide(text, SysStringLen(text)) : String();
  SysFreeString(text);
  description->Release();
  return name;
}

// The class that the object says it is of, else the interface by which it is called: "_TextBox" is TextBox's.
String nameOf(IDispatch* dispatch) {
  IProvideClassInfo* provider = nullptr;
  ITypeInfo* description = nullptr;
  if (dispatch->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provider)) >= 0) {
    const HRESULT result = provider->GetClassInfo(&description);
    provider->Release();
    if (result >= 0 && description) return nameIn(description);
  }
  if (dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, &description) < 0 || !description) return {};
  const String name = nameIn(description);
  return name.starts_with(u'_') ? name.substr(1) : name;
}

}  // namespace

String className(Object& object) {
  const auto* foreign = dynamic_cast<ForeignObject*>(&object);
  const String name = foreign ? nameOf(foreign->dispatch()) : String();
  return name.empty() ? typeName(Variant(&object)) : name;
}

}  // namespace zelUtilities
