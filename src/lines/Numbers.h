#pragma once

#include "lines/Text.h"

#include <cstddef>

/// Numbers as JSON.parse and JSON.stringify read and write them, to the last bit and digit.
///
/// What takes more work than is common is declined; JavaScript itself then handles the line. The
/// C++ library would do everything, but not before GCC 11, and in the notation of the locale.
namespace lines {

/// Decimals that `addRounded` accepts.
inline constexpr int MAX_DECIMALS = 15;

/// Bytes that a number takes at most.
inline constexpr std::size_t MAX_NUMBER = 32;

/// Reads a number, and no byte from `end` on but its own and the one after it. Returns its end;
/// null for what is no number in JSON, and for one of more than 19 digits or a large exponent.
const char* readNumber(const char* at, const char* end, double& value);

/// Writes a number with the fewest digits that give it back. Returns false, with nothing written,
/// where an exponent would be needed, and where the choice of digits is a tie.
bool addNumber(Text& out, double value);

/// Writes a number rounded to some decimals, halves upwards. Returns false, with nothing written,
/// where an exponent would be needed or the result has more than 15 digits.
bool addRounded(Text& out, double value, int decimals);

/// The same where there is room for MAX_NUMBER bytes. Returns the end; null for what is declined.
char* writeRounded(char* to, double value, int decimals);

}  // namespace lines
