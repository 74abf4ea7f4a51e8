#include "platform/linux/CodePage.h"

#include <iconv.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "platform/linux/Windows1252.h"

namespace zelUtilities {

namespace {

constexpr std::uint32_t windows1252 = 1252;
constexpr std::uint32_t utf8 = 65001;

// Closes a conversion of the C library.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (*this) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  explicit operator bool() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  // Converts all of the bytes; nothing where they are no text in that character set.
  std::optional<std::string> convert(std::string_view bytes) {
    std::string out(bytes.size() * 4 + 4, '\0');
    char* from = const_cast<char*>(bytes.data());  // read only, whatever the declaration says
    std::size_t left = bytes.size();
    char* to = out.data();
    std::size_t room = out.size();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &left, &to, &room) == static_cast<std::size_t>(-1)) return {};
    out.resize(out.size() - room);
    return out;
  }

 private:
  iconv_t handle_;
};

SingleByteCodePage::Characters charactersOf1252() {
  SingleByteCodePage::Characters characters;
  for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
  for (std::size_t i = 0; i < std::size(windows1252Upper); ++i) characters[0x80 + i] = windows1252Upper[i];
  return characters;
}

// 28591 and the following stand for ISO 8859-1 and the following.
std::string characterSetName(std::uint32_t number) {
  if (number > 28590 && number < 28606) return "ISO-8859-" + std::to_string(number - 28590);
  return "CP" + std::to_string(number);
}

// Nothing where the C library does not know the code page, or it is none of single bytes.
std::optional<SingleByteCodePage::Characters> charactersOf(std::uint32_t number) {
  Converter converter("UTF-8", characterSetName(number).c_str());
  if (!converter) return {};
  SingleByteCodePage::Characters characters;
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    const char single = static_cast<char>(byte);
    const auto text = converter.convert({&single, 1});
    if (!text && errno == EINVAL) return {};  // the first byte of several
    const String unit = text ? fromUtf8(*text) : String();
    characters[byte] = unit.size() == 1 ? unit[0] : static_cast<char16_t>(byte);
  }
  return characters;
}

std::uint32_t numberFromEnvironment() {
  const char* value = std::getenv("ZELORA_CODEPAGE");
  return value ? static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10)) : windows1252;
}

}  // namespace

CodePage::CodePage(std::uint32_t number) : number_(number) {
  if (number == utf8) return;
  const auto characters = number == windows1252 ? std::nullopt : charactersOf(number);
  if (characters) {
    table_.emplace(*characters);
    return;
  }
  number_ = windows1252;
  table_.emplace(charactersOf1252());
  for (const NearestCharacter& nearest : windows1252Nearest) table_->setNearest(nearest.unit, nearest.byte);
}

const CodePage& CodePage::system() {
  static const CodePage codePage(numberFromEnvironment());
  return codePage;
}

std::uint8_t CodePage::narrow(char16_t unit) const {
  if (table_) return table_->narrow(unit);
  return unit < 0x80 ? static_cast<std::uint8_t>(unit) : static_cast<std::uint8_t>('?');
}

String fromCharacterSet(const char* name, std::string_view bytes) {
  Converter converter("UTF-8", name);
  const auto text = converter ? converter.convert(bytes) : std::nullopt;
  return fromUtf8(text ? std::string_view(*text) : bytes);
}

}  // namespace zelUtilities
