// XmlSaxStream: a document on its way to the system's SAX reader, as a stream of the system's.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <functional>
#include <string>

#include "platform/XmlStream.h"
#include "platform/windows/XmlSaxHandler.h"

namespace zelUtilities {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Can be read, once, and nothing else. Lives as long as one parse, whoever holds references.
class XmlSaxStream final : public IStream {
 public:
  // Failures of the source are kept by the handler.
  XmlSaxStream(XmlStream source, XmlSaxHandler& handler);
  XmlSaxStream(ISequentialStream& source, XmlSaxHandler& handler);
  XmlSaxStream(const XmlSaxStream&) = delete;
  XmlSaxStream& operator=(const XmlSaxStream&) = delete;

  HRESULT WINAPI QueryInterface(REFIID id, void** out) override;
  ULONG WINAPI AddRef() override { return 2; }
  ULONG WINAPI Release() override { return 1; }

  HRESULT WINAPI Read(void* buffer, ULONG size, ULONG* read) override;
  HRESULT WINAPI Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  HRESULT WINAPI CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI Commit(DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Revert() override { return E_NOTIMPL; }
  HRESULT WINAPI LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Clone(IStream**) override { return E_NOTIMPL; }

 private:
  std::function<std::string()> next_;  // the next bytes; none at the end
  XmlSaxHandler& handler_;
  std::string piece_;
  std::size_t done_ = 0;  // of the piece
  bool isAtEnd_ = false;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
