#pragma once

#include "lines/Text.h"

/// Numbers as JSON.parse and JSON.stringify read and write them, to the last bit and digit.
///
/// What takes more work than is common is declined; JavaScript itself then handles the line. The
/// C++ library would do everything, but not before GCC 11, and in the notation of the locale.
namespace lines {

/// Decimals that `addRounded` accepts.
inline constexpr int MAX_DECIMALS = 15;

/// Reads a number. It must be followed by a byte that is none of its own. Returns its end; null for
/// what is no number in JSON, and for one of more than 19 digits or a large exponent.
const char* readNumber(const char* at, double& value);

/// Writes a number with the fewest digits that give it back. Returns false, with nothing written,
/// where an exponent would be needed, and where the choice of digits is a tie.
bool addNumber(Text& out, double value);

/// Writes a number rounded to some decimals, halves upwards. Returns false, with nothing written,
/// where an exponent would be needed or the result has more than 15 digits.
bool addRounded(Text& out, double value, int decimals);

}  // namespace lines
