#include "lines/Utf8.h"

#include <array>
#include <cstddef>

namespace lines {
namespace {

/// A range of lead bytes and what may follow them first. All further bytes are 0x80 to 0xbf.
struct Form {
    unsigned char low, high;
    std::size_t length;
    unsigned char secondLow, secondHigh;
};

constexpr std::array<Form, 9> FORMS{{
    {0x00, 0x7f, 1, 0, 0},
    {0xc2, 0xdf, 2, 0x80, 0xbf},
    {0xe0, 0xe0, 3, 0xa0, 0xbf},
    {0xe1, 0xec, 3, 0x80, 0xbf},
    {0xed, 0xed, 3, 0x80, 0x9f},
    {0xee, 0xef, 3, 0x80, 0xbf},
    {0xf0, 0xf0, 4, 0x90, 0xbf},
    {0xf1, 0xf3, 4, 0x80, 0xbf},
    {0xf4, 0xf4, 4, 0x80, 0x8f},
}};

bool isBetween(char byte, unsigned char low, unsigned char high) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= low && value <= high;
}

/// Bytes of the first character; 0 if it is none.
std::size_t lengthOfFirst(std::string_view bytes) {
    for (const Form& form : FORMS) {
        if (!isBetween(bytes[0], form.low, form.high)) continue;
        if (bytes.size() < form.length) return 0;
        for (std::size_t i = 1; i < form.length; ++i) {
            const bool isSecond = i == 1;
            if (!isBetween(bytes[i], isSecond ? form.secondLow : 0x80,
                           isSecond ? form.secondHigh : 0xbf)) {
                return 0;
            }
        }
        return form.length;
    }
    return 0;
}

/// A byte of a character: its mark, and the bits from `shift` on that the mark leaves free.
char part(std::uint32_t mark, std::uint32_t code, int shift) {
    const std::uint32_t bits = mark == 0x80 ? (code >> shift) & 0x3f : code >> shift;
    return static_cast<char>(static_cast<unsigned char>(mark | bits));
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = lengthOfFirst(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

void addCharacter(Text& out, std::uint32_t code) {
    if (code < 0x80) {
        out.add(static_cast<char>(code));
        return;
    }
    if (code < 0x800) {
        out.add(part(0xc0, code, 6));
    } else if (code < 0x10000) {
        out.add(part(0xe0, code, 12));
        out.add(part(0x80, code, 6));
    } else {
        out.add(part(0xf0, code, 18));
        out.add(part(0x80, code, 12));
        out.add(part(0x80, code, 6));
    }
    out.add(part(0x80, code, 0));
}

}  // namespace lines
