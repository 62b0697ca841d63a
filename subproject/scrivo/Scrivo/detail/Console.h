#pragma once

/// Standard output, which not every system has.
namespace Scrivo::detail {

/// Writes a line and flushes.
void printLine(const char* text);

}  // namespace Scrivo::detail
