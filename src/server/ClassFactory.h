// ClassFactory: makes objects of one class for the system.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "automation/ClassInfo.h"
#include "server/ComObject.h"

namespace zelUtilities {

// The published class that clients create under an identifier; nothing when there is none.
const ClassInfo* findCreatableClass(REFCLSID id);

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class ClassFactory final : public ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ClassInfo& info) : info_(info) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;

  // A new object, or of a function class the thread's one instance.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** out) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ~ClassFactory() override = default;

  const ClassInfo& info_;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
