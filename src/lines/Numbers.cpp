#include "lines/Numbers.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace lines {
namespace {

#ifdef __SIZEOF_INT128__
__extension__ using Wide = unsigned __int128;
#endif

/// Powers of ten that are doubles.
constexpr std::array<double, 23> POWERS{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int MAX_POWER = 22;

/// Below it integers are doubles.
constexpr std::uint64_t MAX_MANTISSA = std::uint64_t{1} << 53;

/// Digits that an integer of 64 bits holds, whatever they are.
constexpr int MAX_DIGITS = 19;

/// Decimals of up to this many digits are the shortest for their doubles.
constexpr int SHORT_DIGITS = 15;
constexpr double SHORT_LIMIT = 1e15;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Appends decimal digits to an integer, which wraps around where they are too many.
const char* readDigits(const char* at, std::uint64_t& integer) {
    for (; isDigit(*at); ++at) integer = 10 * integer + static_cast<std::uint64_t>(*at - '0');
    return at;
}

/// Reads what follows the letter of an exponent.
const char* readExponent(const char* at, int& exponent) {
    const bool isNegative = *at == '-';
    if (isNegative || *at == '+') ++at;
    std::uint64_t size = 0;
    const char* const end = readDigits(at, size);
    if (end == at || end - at > 4) return nullptr;
    exponent = isNegative ? -static_cast<int>(size) : static_cast<int>(size);
    return end;
}

#ifdef __SIZEOF_INT128__
constexpr auto WIDE_POWERS = [] {
    std::array<Wide, MAX_POWER + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
    return powers;
}();

/// The double that is nearest to mantissa / 10^decimals; the mantissa is above 0.
double divide(std::uint64_t mantissa, int decimals) {
    const int shift = 64 + std::countl_zero(mantissa);
    const Wide scaled = static_cast<Wide>(mantissa) << shift;
    const Wide power = WIDE_POWERS[static_cast<std::size_t>(decimals)];
    Wide quotient = scaled / power;
    bool isInexact = quotient * power != scaled;
    int exponent = -shift;
    // Keeps 64 bits, the last of which stands for all that is cut off.
    const int excess = 64 - std::countl_zero(static_cast<std::uint64_t>(quotient >> 64));
    if (excess > 0) {
        isInexact = isInexact || (quotient & ((Wide{1} << excess) - 1)) != 0;
        quotient >>= excess;
        exponent += excess;
    }
    const auto bits = static_cast<std::uint64_t>(quotient) | static_cast<std::uint64_t>(isInexact);
    return std::ldexp(static_cast<double>(bits), exponent);
}
#endif

/// mantissa * 10^exponent; false where that takes more than one rounding.
bool scale(std::uint64_t mantissa, int exponent, double& value) {
    if (mantissa < MAX_MANTISSA && std::abs(exponent) <= MAX_POWER) {
        const auto exact = static_cast<double>(mantissa);
        const double power = POWERS[static_cast<std::size_t>(std::abs(exponent))];
        value = exponent < 0 ? exact / power : exact * power;
        return true;
    }
#ifdef __SIZEOF_INT128__
    if (exponent <= 0 && exponent >= -MAX_DIGITS) {
        value = divide(mantissa, -exponent);
        return true;
    }
#endif
    return false;
}

/// Writes `parts` / 10^decimals without zeros at the end.
void addDecimal(Text& out, std::uint64_t parts, int decimals) {
    constexpr std::size_t LONGEST = 32;
    std::array<char, LONGEST> digits;
    char* const end = digits.data() + LONGEST;
    char* first = end;
    for (; parts > 0 || end - first <= decimals; parts /= 10) {
        *--first = static_cast<char>('0' + parts % 10);
    }
    const char* const point = end - decimals;
    const char* last = end;
    while (last > point && last[-1] == '0') --last;
    char* to = out.reserve(LONGEST + 1);
    for (const char* digit = first; digit < last; ++digit) {
        if (digit == point) *to++ = '.';
        *to++ = *digit;
    }
    out.finish(to);
}

#ifdef __SIZEOF_INT128__
/// Finds a decimal of few digits that stands for a double, which is a mantissa of 53 bits times
/// 2^-shift.
struct ShortestDigits {
    std::uint64_t mantissa;
    int shift;

    enum class Outcome { FOUND, TOO_FEW_DECIMALS, UNCLEAR };
    std::uint64_t parts = 0;

    /// Tries the nearest decimal with this many decimals: it reads as the double if the distance
    /// is below half of the distance of doubles.
    Outcome tryDecimals(int decimals) {
        const Wide power = WIDE_POWERS[static_cast<std::size_t>(decimals)];
        const Wide exact = mantissa * power;
        const Wide half = Wide{1} << (shift - 1);
        parts = static_cast<std::uint64_t>((exact + half) >> shift);
        const Wide rounded = static_cast<Wide>(parts) << shift;
        const Wide error = rounded > exact ? rounded - exact : exact - rounded;
        if (error == 0) return Outcome::FOUND;
        // Doubles below a power of two are closer to each other.
        const bool isPowerOfTwo = mantissa == MAX_MANTISSA / 2;
        if (isPowerOfTwo || error == half || 2 * error == power) return Outcome::UNCLEAR;
        return 2 * error < power ? Outcome::FOUND : Outcome::TOO_FEW_DECIMALS;
    }
};

/// Digits before the point of a number above 0; below 0 for zeros after it.
int wholeDigits(double value) {
    int digits = 0;
    for (; value >= POWERS[static_cast<std::size_t>(digits)]; ++digits) {
    }
    for (; digits <= 0 && value < 1 / POWERS[static_cast<std::size_t>(1 - digits)]; --digits) {
    }
    return digits;
}

bool addFraction(Text& out, double value) {
    constexpr int LONGEST = 17;
    int exponent = 0;
    const double fraction = std::frexp(value, &exponent);
    ShortestDigits digits{static_cast<std::uint64_t>(std::ldexp(fraction, 53)), 53 - exponent};
    const int first = SHORT_DIGITS - wholeDigits(value);
    for (int decimals = first; decimals <= first + LONGEST - SHORT_DIGITS; ++decimals) {
        const auto outcome = digits.tryDecimals(decimals);
        if (outcome == ShortestDigits::Outcome::UNCLEAR) return false;
        if (outcome == ShortestDigits::Outcome::FOUND) {
            addDecimal(out, digits.parts, decimals);
            return true;
        }
    }
    return false;
}
#else
bool addFraction(Text& /*out*/, double /*value*/) {
    return false;
}
#endif

/// As Math.round: halves upwards, and no rounding error just below them.
double round(double value) {
    const double above = std::ceil(value);
    return above - 0.5 > value ? above - 1.0 : above;
}

}  // namespace

const char* readNumber(const char* at, double& value) {
    const bool isNegative = *at == '-';
    if (isNegative) ++at;
    std::uint64_t mantissa = 0;
    const char* const first = at;
    at = readDigits(at, mantissa);
    auto digits = at - first;
    if (*first == '0') --digits;
    if (at == first || (*first == '0' && digits > 0)) return nullptr;
    int exponent = 0;
    if (*at == '.') {
        const char* const start = ++at;
        at = readDigits(at, mantissa);
        if (at == start) return nullptr;
        digits += at - start;
        if (digits > MAX_DIGITS) return nullptr;
        exponent = static_cast<int>(start - at);
    }
    if (digits > MAX_DIGITS) return nullptr;
    if (*at == 'e' || *at == 'E') {
        int further = 0;
        at = readExponent(at + 1, further);
        if (at == nullptr) return nullptr;
        exponent += further;
    }
    double size = 0.0;
    if (!scale(mantissa, exponent, size)) return nullptr;
    value = isNegative ? -size : size;
    return at;
}

bool addNumber(Text& out, double value) {
    const double size = std::abs(value);
    const std::size_t before = out.size();
    if (value < 0.0) out.add('-');
    if (size < SHORT_LIMIT && size == std::floor(size)) {
        addDecimal(out, static_cast<std::uint64_t>(size), 0);
        return true;
    }
    // Below, there is an exponent; above, digits may be missing before the point.
    if (size >= 1e-6 && size < SHORT_LIMIT && addFraction(out, size)) return true;
    out.cut(before);
    return false;
}

bool addRounded(Text& out, double value, int decimals) {
    const double parts = round(value * POWERS[static_cast<std::size_t>(decimals)]);
    const double size = std::abs(parts);
    if (!(size < SHORT_LIMIT)) return false;
    constexpr int WITHOUT_EXPONENT = 6;
    if (decimals > WITHOUT_EXPONENT && size != 0.0 &&
        size < POWERS[static_cast<std::size_t>(decimals - WITHOUT_EXPONENT)]) {
        return false;
    }
    if (parts < 0.0) out.add('-');
    addDecimal(out, static_cast<std::uint64_t>(size), decimals);
    return true;
}

}  // namespace lines
