// SHA-1, the digest that name-based identifiers are made with. Not for secrets.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zelUtilities {

std::array<std::uint8_t, 20> sha1(std::string_view bytes);

}  // namespace zelUtilities
