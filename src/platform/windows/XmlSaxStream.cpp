#include "platform/windows/XmlSaxStream.h"

#include <algorithm>
#include <cstring>

#include "automation/Error.h"
#include "platform/windows/ComErrors.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t pieceSize = 65536;  // bytes or units

// Blanks out what the declaration at a document's head says of an encoding, which is not that of a text.
void blankEncoding(String& document) {
  const StringView declaration = StringView(document).substr(0, document.find(u"?>"));
  const std::size_t start = declaration.find(u"encoding");
  const std::size_t quote = declaration.find_first_of(u"\"'", start);
  if (start == StringView::npos || quote == StringView::npos) return;
  const std::size_t end = declaration.find(declaration[quote], quote + 1);
  if (end == StringView::npos) return;
  std::fill(document.begin() + static_cast<std::ptrdiff_t>(start),
            document.begin() + static_cast<std::ptrdiff_t>(end) + 1, u' ');
}

bool mayHoldMoreOfDeclaration(StringView start) {
  constexpr StringView declaration = u"<?xml ";
  constexpr std::size_t longest = 1024;  // units; nobody writes a longer one
  if (start.size() < declaration.size()) return declaration.starts_with(start);
  return start.starts_with(declaration) && start.find(u"?>") == StringView::npos && start.size() < longest;
}

std::string bytesOf(StringView text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

// The bytes of an object that gives bytes, or texts as UTF-16 with a mark.
class Pieces {
 public:
  explicit Pieces(XmlStream source) : source_(std::move(source)) {}

  std::string next() {
    if (!source_.next(pieceSize)) return {};
    if (isFirst_) {
      isFirst_ = false;
      isText_ = source_.isText();
      if (isText_) return firstText();
    }
    if (source_.isText() != isText_) throw Error(ErrorNumber::TypeMismatch);
    if (isText_) return bytesOf(source_.text());
    const auto bytes = source_.bytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }

 private:
  std::string firstText() {
    String start(source_.text());
    while (mayHoldMoreOfDeclaration(start) && source_.next(pieceSize)) {
      if (!source_.isText()) throw Error(ErrorNumber::TypeMismatch);
      start.append(source_.text());
    }
    if (start.starts_with(u"<?xml")) blankEncoding(start);
    if (!start.starts_with(u'\uFEFF')) start.insert(0, 1, u'\uFEFF');
    return bytesOf(start);
  }

  XmlStream source_;
  bool isFirst_ = true;
  bool isText_ = false;
};

std::string readSome(ISequentialStream& source) {
  std::string bytes(pieceSize, '\0');
  ULONG size = 0;
  requireSuccess(source.Read(bytes.data(), pieceSize, &size));
  bytes.resize(size);
  return bytes;
}

}  // namespace

XmlSaxStream::XmlSaxStream(XmlStream source, XmlSaxHandler& handler)
    : next_([pieces = Pieces(std::move(source))]() mutable { return pieces.next(); }), handler_(handler) {}

XmlSaxStream::XmlSaxStream(ISequentialStream& source, XmlSaxHandler& handler)
    : next_([&source] { return readSome(source); }), handler_(handler) {}

HRESULT XmlSaxStream::QueryInterface(REFIID id, void** out) {
  const bool isOurs = id == IID_IUnknown || id == IID_ISequentialStream || id == IID_IStream;
  *out = isOurs ? this : nullptr;
  return isOurs ? S_OK : E_NOINTERFACE;
}

HRESULT XmlSaxStream::Read(void* buffer, ULONG size, ULONG* read) {
  ULONG given = 0;
  try {
    while (given < size && !isAtEnd_) {
      if (done_ == piece_.size()) {
        piece_ = next_();
        done_ = 0;
        isAtEnd_ = piece_.empty();
        handler_.limits().took(piece_.size());
      }
      const auto count = static_cast<ULONG>(std::min<std::size_t>(size - given, piece_.size() - done_));
      std::memcpy(static_cast<char*>(buffer) + given, piece_.data() + done_, count);
      done_ += count;
      given += count;
    }
  } catch (...) {
    return handler_.keepRaised();
  }
  if (read) *read = given;
  return given < size ? S_FALSE : S_OK;
}

}  // namespace zelUtilities
