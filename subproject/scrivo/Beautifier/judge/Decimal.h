#pragma once

#include "Common/Failure.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace Scrivo::beautifier {

/// A number of few decimal digits in four bytes. As a double it has the bits of the
/// literal that it was made from. Tables of such numbers take half the space, and
/// compressed a quarter: the bits of a double in decimal notation hardly repeat.
class Decimal {
public:
    /// Does not compile for a literal of more than seven digits, below 1e-22 or, with
    /// other digits than a leading one, above 6e7.
    constexpr Decimal(double value) : m_packed(pack(value)) {}  // implicit: for tables of literals

    constexpr operator double() const {
        const std::int32_t code = m_packed & (CODES - 1);
        const std::int32_t digits = (m_packed - code) / CODES;
        // Digits and powers are exact: one rounding, as of the literal.
        return code < LARGE ? digits / POWERS[static_cast<std::size_t>(code)]
                            : digits * POWERS[static_cast<std::size_t>(code - LARGE)];
    }

private:
    /// Powers of ten that are doubles.
    static constexpr std::array<double, 23> POWERS{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    /// Codes below this divide by a power, those from it on multiply.
    static constexpr std::int32_t LARGE = POWERS.size();
    static constexpr std::int32_t CODES = 32;
    static constexpr double LIMIT = 1 << 26;

    static constexpr std::int32_t pack(double value) {
        for (std::int32_t code = 0; code < CODES; ++code) {
            const double power =
                POWERS[static_cast<std::size_t>(code < LARGE ? code : code - LARGE)];
            const double scaled = code < LARGE ? value * power : value / power;
            if (!(scaled < LIMIT && scaled > -LIMIT)) {
                continue;
            }
            const Decimal candidate(static_cast<std::int32_t>(scaled + (value < 0.0 ? -0.5 : 0.5)),
                                    code);
            if (candidate == value) {
                return candidate.m_packed;
            }
        }
        Scrivo::detail::raise<std::invalid_argument>("a decimal of too many digits");
    }

    constexpr Decimal(std::int32_t digits, std::int32_t code) : m_packed(digits * CODES + code) {}

    std::int32_t m_packed;
};

/// A multiple of 0.0001 of at most 3.2767 in two bytes, with the bits of the literal as above.
class ShortDecimal {
public:
    /// Does not compile for other numbers.
    constexpr ShortDecimal(double value) : m_digits(pack(value)) {}  // implicit: for tables

    constexpr operator double() const { return m_digits / UNIT; }

private:
    static constexpr double UNIT = 1e4;

    static constexpr std::int16_t pack(double value) {
        const double scaled = value * UNIT + (value < 0.0 ? -0.5 : 0.5);
        if (scaled > -32768.0 && scaled < 32768.0) {
            const auto digits = static_cast<std::int16_t>(scaled);
            if (digits / UNIT == value) {
                return digits;
            }
        }
        Scrivo::detail::raise<std::invalid_argument>("no short decimal");
    }

    std::int16_t m_digits;
};

}  // namespace Scrivo::beautifier
