// CodePage: the ANSI code page of a system that has none: Windows-1252, or what ZELORA_CODEPAGE names (the
// number of a single-byte Windows or ISO code page, or 65001 for UTF-8).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/String.h"
#include "platform/SingleByteCodePage.h"

namespace zelUtilities {

class CodePage {
 public:
  // Windows-1252 for a number that is not supported.
  explicit CodePage(std::uint32_t number);

  static const CodePage& system();

  std::uint32_t number() const { return number_; }
  std::string narrow(StringView text) const { return table_ ? table_->narrow(text) : toUtf8(text); }
  String widen(std::string_view bytes) const { return table_ ? table_->widen(bytes) : fromUtf8(bytes); }
  std::uint8_t narrow(char16_t unit) const;

 private:
  std::uint32_t number_;
  std::optional<SingleByteCodePage> table_;  // none: UTF-8
};

// A text in the character set that a system function speaks, by its name.
String fromCharacterSet(const char* name, std::string_view bytes);

}  // namespace zelUtilities
