#include "platform/linux/XmlDocumentEncoding.h"

#include <iconv.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace zelUtilities {

namespace {

constexpr std::int32_t invalidCharacter = static_cast<std::int32_t>(0xC00CE508);
constexpr std::int32_t unknownEncoding = static_cast<std::int32_t>(0xC00CE56E);
constexpr std::int32_t contradictoryEncoding = static_cast<std::int32_t>(0xC00CE56F);

struct Range {
  std::size_t start = 0;
  std::size_t length = 0;
};

// Where a declaration says encoding="...", from the blank before it.
Range encodingClause(std::string_view document) {
  if (!document.starts_with("<?xml") || document.find_first_of(" \t\r\n") != 5) return {};
  document = document.substr(0, document.find("?>"));
  const std::size_t word = document.find("encoding");
  const std::size_t quote = document.find_first_of("\"'", word);
  if (word == std::string_view::npos || quote == std::string_view::npos) return {};
  const std::size_t end = document.find(document[quote], quote + 1);
  const std::size_t start = document.find_last_not_of(" \t\r\n", word - 1) + 1;
  return end == std::string_view::npos ? Range() : Range{start, end + 1 - start};
}

// The encoding that the first bytes show: with a mark or in pairs.
std::string encodingOfBytes(std::string_view bytes) {
  using namespace std::string_view_literals;
  if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv)) return "UTF-16LE";
  if (bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv)) return "UTF-16BE";
  if (bytes.starts_with("\xEF\xBB\xBF"sv)) return "UTF-8";
  return {};
}

bool isOfSeveralBytes(const std::string& encoding) {
  const auto startsWith = [&](std::string_view start) {
    return strncasecmp(encoding.c_str(), start.data(), start.size()) == 0;
  };
  return startsWith("UTF-16") || startsWith("UTF-32") || startsWith("UCS") || startsWith("ISO-10646");
}

// A name that has a meaning beyond the encoding's is none of ours.
bool isPlainName(std::string_view encoding) {
  return std::all_of(encoding.begin(), encoding.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
  });
}

// Closes a conversion of the C library.
class Conversion {
 public:
  explicit Conversion(const std::string& encoding) : handle_(iconv_open("UTF-8", encoding.c_str())) {}
  ~Conversion() {
    if (isKnown()) iconv_close(handle_);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  bool isKnown() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  // False where the bytes are none of the encoding's.
  bool convert(std::string& bytes, std::string& out) {
    char* from = bytes.data();
    std::size_t left = bytes.size();
    std::array<char, 16384> piece;
    while (left > 0) {
      char* to = piece.data();
      std::size_t room = piece.size();
      const std::size_t result = iconv(handle_, &from, &left, &to, &room);
      out.append(piece.data(), piece.size() - room);
      if (result == static_cast<std::size_t>(-1) && errno != E2BIG) return false;
    }
    return true;
  }

 private:
  iconv_t handle_;
};

DecodedXml refused(std::int32_t code, String sentence) {
  return {{}, XmlFault::of(code, std::move(sentence))};
}

}  // namespace

std::string encodingInDeclaration(std::string_view document) {
  const Range clause = encodingClause(document);
  if (clause.length == 0) return {};
  const std::string_view text = document.substr(clause.start, clause.length);
  const std::size_t quote = text.find(text.back());
  return std::string(text.substr(quote + 1, text.size() - quote - 2));
}

std::string withoutEncoding(std::string document) {
  const Range clause = encodingClause(document);
  return document.erase(clause.start, clause.length);
}

bool isUtf8(const std::string& encoding) { return strcasecmp(encoding.c_str(), "UTF-8") == 0; }

DecodedXml decodeXml(std::string bytes) {
  std::string encoding = encodingOfBytes(bytes);
  if (encoding.empty()) {
    encoding = encodingInDeclaration(bytes);
    if (isOfSeveralBytes(encoding))
      return refused(contradictoryEncoding, u"The document is not in the encoding that it declares.");
  }
  if (encoding.empty() || isUtf8(encoding)) return {std::move(bytes), {}};
  Conversion conversion(encoding);
  if (!isPlainName(encoding) || !conversion.isKnown())
    return refused(unknownEncoding, u"The declared encoding is not known.");
  DecodedXml decoded;
  if (!conversion.convert(bytes, decoded.utf8))
    return refused(invalidCharacter, u"The document holds bytes that its encoding does not know.");
  return decoded;
}

}  // namespace zelUtilities
