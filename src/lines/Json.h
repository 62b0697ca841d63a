#pragma once

#include "lines/Text.h"

#include <array>
#include <cstddef>
#include <string_view>

/// JSON as bytes. Every text ends with a line feed, which JSON has only between its tokens: no
/// function passes it.
namespace lines {

/// Where the next token begins.
inline const char* skipSpace(const char* at) {
    while (*at == ' ' || *at == '\t' || *at == '\r') ++at;
    return at;
}

/// Where what follows `word` begins; null for something else.
inline const char* skipWord(const char* at, std::string_view word) {
    for (const char letter : word) {
        if (*at++ != letter) return nullptr;
    }
    return at;
}

/// Reads a name or other string without escapes, quotes included. Returns its end; null for other
/// strings.
const char* readName(const char* at, std::string_view& name);

/// The names of an object so far.
class Names {
public:
    /// False for a name that JavaScript would move or that replaces an earlier one, and for too
    /// many names.
    bool add(std::string_view name);

private:
    std::array<std::string_view, 32> m_names;
    std::size_t m_count = 0;
};

/// Copies a value as JSON.stringify writes what JSON.parse reads, except that integers keep all
/// their digits: identifiers are often longer than doubles. Returns its end; null for what is no
/// JSON, and for what is left to JavaScript: values nested deeply, objects with odd names, numbers
/// with an exponent, halves of surrogate pairs.
const char* copyValue(const char* at, Text& out, int depth = 0);

}  // namespace lines
