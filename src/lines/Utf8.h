#pragma once

#include "lines/Text.h"

#include <cstdint>
#include <string_view>

namespace lines {

/// Whether bytes are UTF-8: no overlong form, no surrogate, nothing beyond U+10FFFF.
bool isUtf8(std::string_view bytes);

/// Appends a character other than a surrogate.
void addCharacter(Text& out, std::uint32_t code);

}  // namespace lines
