#include "lines/Json.h"

#include "lines/Numbers.h"
#include "lines/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace lines {
namespace {

constexpr int MAX_DEPTH = 16;

/// Digits from which on an integer may not be a double.
constexpr std::ptrdiff_t LONG_INTEGER = 16;

/// Digits of an integer that is a finite double, whatever they are.
constexpr std::ptrdiff_t MAX_INTEGER = 308;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// The first byte from `at` on that may not simply be copied: the end of a string, an escape, or
/// what a string cannot hold.
const char* skipPlain(const char* at, bool& isAscii) {
    for (;; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte < 0x20 || byte == '"' || byte == '\\') return at;
        if (byte >= 0x80) isAscii = false;
    }
}

/// Reads the four digits of \uXXXX; null for others.
const char* readHex(const char* at, std::uint32_t& code) {
    code = 0;
    for (const char* const end = at + 4; at != end; ++at) {
        const char lower = static_cast<char>(*at | 0x20);
        const bool isLetter = lower >= 'a' && lower <= 'f';
        if (!isLetter && !isDigit(*at)) return nullptr;
        code = 16 * code + static_cast<std::uint32_t>(isLetter ? lower - 'a' + 10 : *at - '0');
    }
    return at;
}

/// Appends a control character, quote or backslash as an escape.
void addEscaped(Text& out, std::uint32_t code) {
    constexpr std::string_view CODES = "\b\t\n\f\r\"\\";
    constexpr std::string_view LETTERS = "btnfr\"\\";
    constexpr std::string_view HEX = "0123456789abcdef";
    const std::size_t known = CODES.find(static_cast<char>(code));
    out.add('\\');
    if (known != std::string_view::npos) {
        out.add(LETTERS[known]);
        return;
    }
    out.add("u00");
    out.add(HEX[code >> 4]);
    out.add(HEX[code & 0xf]);
}

/// Copies what follows \u. The null character marks integers on their way through JavaScript.
const char* copyCode(const char* at, Text& out) {
    std::uint32_t code = 0;
    at = readHex(at, code);
    if (at == nullptr || code == 0) return nullptr;
    if (code >= 0xd800 && code < 0xdc00 && at[0] == '\\' && at[1] == 'u') {
        std::uint32_t low = 0;
        at = readHex(at + 2, low);
        if (at == nullptr || low < 0xdc00 || low > 0xdfff) return nullptr;
        code = 0x10000 + ((code - 0xd800) << 10) + (low - 0xdc00);
    }
    if (code >= 0xd800 && code < 0xe000) return nullptr;
    if (code < 0x20 || code == '"' || code == '\\') {
        addEscaped(out, code);
    } else {
        addCharacter(out, code);
    }
    return at;
}

/// Copies what follows a backslash.
const char* copyEscape(const char* at, Text& out) {
    constexpr std::string_view KEPT = "\"\\bfnrt";
    if (*at == 'u') return copyCode(at + 1, out);
    if (*at == '/') {
        out.add('/');
    } else if (KEPT.find(*at) != std::string_view::npos) {
        out.add('\\');
        out.add(*at);
    } else {
        return nullptr;
    }
    return at + 1;
}

const char* copyString(const char* at, Text& out) {
    out.add('"');
    ++at;
    for (;;) {
        bool isAscii = true;
        const char* const end = skipPlain(at, isAscii);
        const std::string_view plain(at, static_cast<std::size_t>(end - at));
        if (!isAscii && !isUtf8(plain)) return nullptr;
        out.add(plain);
        if (*end == '"') {
            out.add('"');
            return end + 1;
        }
        if (*end != '\\') return nullptr;
        at = copyEscape(end + 1, out);
        if (at == nullptr) return nullptr;
    }
}

const char* copyNumber(const char* at, Text& out) {
    const char* end = at;
    if (*end == '-') ++end;
    const char* const first = end;
    while (isDigit(*end)) ++end;
    const bool isInteger = *end != '.' && *end != 'e' && *end != 'E';
    if (isInteger && end - first >= LONG_INTEGER && *first != '0') {
        if (end - first > MAX_INTEGER) return nullptr;
        out.add({at, static_cast<std::size_t>(end - at)});
        return end;
    }
    double value = 0.0;
    end = readNumber(at, at, value);
    return end != nullptr && addNumber(out, value) ? end : nullptr;
}

const char* copyWord(const char* at, std::string_view word, Text& out) {
    out.add(word);
    return skipWord(at, word);
}

/// Copies what is between brackets, by `copyItem`.
template <typename CopyItem>
const char* copyList(const char* at, char close, Text& out, CopyItem copyItem) {
    out.add(*at);
    at = skipSpace(at + 1);
    if (*at == close) {
        out.add(close);
        return at + 1;
    }
    for (;;) {
        at = copyItem(at);
        if (at == nullptr) return nullptr;
        at = skipSpace(at);
        if (*at != ',' && *at != close) return nullptr;
        out.add(*at);
        if (*at == close) return at + 1;
        at = skipSpace(at + 1);
    }
}

const char* copyArray(const char* at, Text& out, int depth) {
    return copyList(at, ']', out, [&](const char* item) { return copyValue(item, out, depth); });
}

const char* copyObject(const char* at, Text& out, int depth) {
    Names names;
    return copyList(at, '}', out, [&](const char* item) -> const char* {
        std::string_view name;
        const char* end = readName(item, name);
        if (end == nullptr || !names.add(name)) return nullptr;
        end = skipSpace(end);
        if (*end != ':') return nullptr;
        out.add(name);
        out.add(':');
        return copyValue(skipSpace(end + 1), out, depth);
    });
}

}  // namespace

const char* readName(const char* at, std::string_view& name) {
    if (*at != '"') return nullptr;
    bool isAscii = true;
    const char* const end = skipPlain(at + 1, isAscii);
    if (*end != '"') return nullptr;
    name = {at, static_cast<std::size_t>(end + 1 - at)};
    return isAscii || isUtf8(name) ? end + 1 : nullptr;
}

bool Names::add(std::string_view name) {
    // JavaScript moves integers to the front.
    if (m_count == m_names.size() || isDigit(name[1])) return false;
    const auto earlier = std::span(m_names).first(m_count);
    if (std::find(earlier.begin(), earlier.end(), name) != earlier.end()) return false;
    m_names[m_count++] = name;
    return true;
}

const char* copyValue(const char* at, Text& out, int depth) {
    if (depth == MAX_DEPTH) return nullptr;
    switch (*at) {
        case '"':
            return copyString(at, out);
        case '[':
            return copyArray(at, out, depth + 1);
        case '{':
            return copyObject(at, out, depth + 1);
        case 't':
            return copyWord(at, "true", out);
        case 'f':
            return copyWord(at, "false", out);
        case 'n':
            return copyWord(at, "null", out);
        default:
            return copyNumber(at, out);
    }
}

}  // namespace lines
