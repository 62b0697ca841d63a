#include "lines/Numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

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

/// Digits that an integer of 64 bits holds, whatever they are.
constexpr int MAX_DIGITS = 19;

/// Powers of ten as integers.
constexpr auto INTEGER_POWERS = [] {
    std::array<std::uint64_t, MAX_DIGITS + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
    return powers;
}();

/// Below it integers are doubles.
constexpr std::uint64_t MAX_MANTISSA = std::uint64_t{1} << 53;

/// Decimals of up to this many digits are the shortest for their doubles.
constexpr int SHORT_DIGITS = 15;
constexpr double SHORT_LIMIT = 1e15;

/// Bytes that are read at a time.
constexpr int WORD = 8;
constexpr std::uint64_t ZEROS = 0x3030303030303030;
constexpr std::uint64_t HIGH_BITS = 0x8080808080808080;

/// Eight bytes as an integer, the first one lowest.
std::uint64_t load(const char* at) {
    std::uint64_t word = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&word, at, sizeof word);
    } else {
        for (int i = WORD - 1; i >= 0; --i) word = word << 8 | static_cast<unsigned char>(at[i]);
    }
    return word;
}

/// The high bits of those bytes of a word, less the character 0 each, that are no digits. A byte
/// that is not ASCII may change the next one.
std::uint64_t otherThanDigits(std::uint64_t word) {
    constexpr std::uint64_t FROM_TEN = 0x7676767676767676;
    return ((word + FROM_TEN) | word) & HIGH_BITS;
}

/// The high bits of those bytes of such a word that are no points.
std::uint64_t otherThanPoints(std::uint64_t word) {
    constexpr std::uint64_t POINTS = 0x1e1e1e1e1e1e1e1e;
    constexpr std::uint64_t LOW_BITS = 0x7f7f7f7f7f7f7f7f;
    word ^= POINTS;
    return (((word & LOW_BITS) + LOW_BITS) | word) & HIGH_BITS;
}

int firstByte(std::uint64_t highBits) {
    return std::countr_zero(highBits) / 8;
}

/// The number that the first bytes of a word spell, one digit in each.
std::uint64_t join(std::uint64_t digits, int count) {
    constexpr std::uint64_t PAIRS = 0x000000ff000000ff;
    digits <<= 64 - 8 * count;
    digits = 10 * digits + (digits >> 8);
    return ((digits & PAIRS) * 0x000f424000000064 +
            ((digits >> 16) & PAIRS) * 0x0000271000000001) >>
           32;
}

/// Appends decimal digits to an integer, which wraps around where they are too many. Numbers are of
/// all lengths: eight digits at a time take no branch that depends on it.
const char* readDigits(const char* at, const char* end, std::uint64_t& integer) {
    while (end - at >= WORD) {
        const std::uint64_t word = load(at) ^ ZEROS;
        const int count = firstByte(otherThanDigits(word));
        if (count == 0) return at;
        integer = integer * INTEGER_POWERS[static_cast<std::size_t>(count)] + join(word, count);
        at += count;
        if (count < WORD) return at;
    }
    for (; *at >= '0' && *at <= '9'; ++at) {
        integer = 10 * integer + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

/// mantissa * 10^exponent
struct Decimal {
    std::uint64_t mantissa = 0;
    int exponent = 0;
};

/// Reads what follows the letter of an exponent, and adds it to one.
const char* readExponent(const char* at, const char* last, int& exponent) {
    const bool isNegative = *at == '-';
    if (isNegative || *at == '+') ++at;
    std::uint64_t size = 0;
    const char* const end = readDigits(at, last, size);
    if (end == at || end - at > 4) return nullptr;
    exponent += isNegative ? -static_cast<int>(size) : static_cast<int>(size);
    return end;
}

/// Reads a number without sign in any notation.
const char* readDecimal(const char* at, const char* end, Decimal& number) {
    const char* const first = at;
    at = readDigits(at, end, number.mantissa);
    auto digits = at - first;
    if (digits == 0 || (digits > 1 && *first == '0')) return nullptr;
    if (*at == '.') {
        const char* const start = ++at;
        at = readDigits(at, end, number.mantissa);
        if (at == start) return nullptr;
        digits = (*first == '0' ? 0 : digits) + (at - start);
        if (digits > MAX_DIGITS) return nullptr;
        number.exponent = static_cast<int>(start - at);
    }
    if (digits > MAX_DIGITS) return nullptr;
    return (*at | 0x20) == 'e' ? readExponent(at + 1, end, number.exponent) : at;
}

#ifdef __SIZEOF_INT128__
/// The double that is nearest to mantissa / 10^decimals; the mantissa is above 0.
double divide(std::uint64_t mantissa, int decimals) {
    const int shift = 64 + std::countl_zero(mantissa);
    const Wide scaled = static_cast<Wide>(mantissa) << shift;
    const Wide power = INTEGER_POWERS[static_cast<std::size_t>(decimals)];
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

/// The nearest double; false where finding it takes more than this.
bool toDouble(const Decimal& number, double& value) {
    const int size = std::abs(number.exponent);
    if (number.mantissa < MAX_MANTISSA && size <= MAX_POWER) {
        const auto exact = static_cast<double>(number.mantissa);
        const double power = POWERS[static_cast<std::size_t>(size)];
        // Integers are divided, too: most numbers are no integers.
        value = number.exponent <= 0 ? exact / power : exact * power;
        return true;
    }
#ifdef __SIZEOF_INT128__
    if (number.exponent <= 0 && size <= MAX_DIGITS) {
        value = divide(number.mantissa, size);
        return true;
    }
#endif
    return false;
}

/// Reads a number in any notation.
const char* readAnyNumber(const char* at, const char* end, double& value) {
    const bool isNegative = *at == '-';
    Decimal number;
    const char* const next = readDecimal(at + static_cast<int>(isNegative), end, number);
    if (next == nullptr || !toDouble(number, value)) return nullptr;
    if (isNegative) value = -value;
    return next;
}

std::uint64_t lowestBit(std::uint64_t bits) {
    return bits & (0 - bits);
}

/// A mask of the bytes before a high bit; all bytes where there is none.
std::uint64_t bytesBefore(std::uint64_t highBit) {
    return (highBit >> 7) - 1;
}

/// Bytes of the longest number that `readUsual` reads, and the one after it.
constexpr std::ptrdiff_t USUAL = 2 * std::ptrdiff_t{WORD};

/// Reads a number without sign of up to seven bytes, or one of up to fifteen with a point within
/// the first seven. Returns its end, null for any other.
///
/// Digits that are missing are read as zeros after the point, up to a fixed number of decimals. So
/// no branch and no shift depends on where the point and the end are, which is hard to predict.
/// Digits and power of ten are exact, hence the quotient is the nearest double.
const char* readUsual(const char* at, double& value) {
    const std::uint64_t word = load(at) ^ ZEROS;
    const std::uint64_t others = otherThanDigits(word);
    const std::uint64_t ends = others & otherThanPoints(word);
    const std::uint64_t first = lowestBit(others);
    const std::uint64_t end = lowestBit(ends);
    const std::uint64_t points = others & (end - 1);
    const int whole = firstByte(first);
    const bool hasZero = (word & 0xff) == 0 && whole > 1;
    if (others == 0 || whole == 0 || hasZero || points != (first & (end - 1))) return nullptr;
    // Closes the gap of the point.
    const std::uint64_t before = bytesBefore(first);
    const std::uint64_t known = word & bytesBefore(end);
    const std::uint64_t digits = (known & before) | ((known >> 8) & ~before);
    if (end != 0) {
        if (points << 8 == end) return nullptr;
        const auto mantissa = static_cast<double>(join(digits, WORD));
        value = mantissa / POWERS[static_cast<std::size_t>(WORD - whole)];
        return at + firstByte(end);
    }
    const std::uint64_t further = load(at + WORD) ^ ZEROS;
    const std::uint64_t after = lowestBit(otherThanDigits(further));
    if (after == 0 || whole == WORD - 1) return nullptr;
    const std::uint64_t mantissa =
        join(digits, WORD - 1) * INTEGER_POWERS[WORD] + join(further & bytesBefore(after), WORD);
    value = static_cast<double>(mantissa) / POWERS[static_cast<std::size_t>(2 * WORD - 1 - whole)];
    return at + WORD + firstByte(after);
}

/// The two digits of each number below 100.
constexpr auto DIGIT_PAIRS = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Digits of an integer, without branches: the length in bits tells them but for one.
int digitsOf(std::uint64_t integer) {
    constexpr int LOG10_OF_2 = 1233;  // times 4096
    const int bits = static_cast<int>(std::bit_width(integer | 1));
    const int fewer = bits * LOG10_OF_2 >> 12;
    return fewer + static_cast<int>(integer >= INTEGER_POWERS[static_cast<std::size_t>(fewer)]);
}

/// Writes an integer with `digits` digits, zeros before it included.
template <typename Integer>
void writeDigits(Integer integer, char* to, int digits) {
    char* end = to + digits;
    for (; end - to >= 2; integer /= 100) {
        end -= 2;
        std::memcpy(end, &DIGIT_PAIRS[static_cast<std::size_t>(2 * (integer % 100))], 2);
    }
    if (end > to) *to = static_cast<char>('0' + integer % 10);
}

/// Writes `parts` / 10^decimals, of less than 20 digits, without zeros at the end.
template <typename Integer>
char* writeParts(char* to, Integer parts, int decimals) {
    const auto power = static_cast<Integer>(INTEGER_POWERS[static_cast<std::size_t>(decimals)]);
    const Integer whole = parts / power;
    const int digits = std::max(1, digitsOf(whole));
    writeDigits(whole, to, digits);
    to += digits;
    const Integer rest = parts - whole * power;
    if (rest == 0) return to;
    *to++ = '.';
    writeDigits(rest, to, decimals);
    to += decimals;
    while (to[-1] == '0') --to;
    return to;
}

/// Up to three digits.
struct ShortText {
    std::array<char, 3> text{};
    std::uint8_t size = 0;
};

/// Numbers of a table.
constexpr std::uint32_t THOUSAND = 1000;

/// Each number below a thousand, as written before the point, and as thousandths after it.
struct ShortTexts {
    std::array<ShortText, THOUSAND> whole;
    std::array<ShortText, THOUSAND> rest;
};

constexpr auto SHORT_TEXTS = [] {
    ShortTexts texts{};
    for (std::uint32_t i = 0; i < THOUSAND; ++i) {
        const std::array<char, 3> digits{static_cast<char>('0' + i / 100),
                                         static_cast<char>('0' + i / 10 % 10),
                                         static_cast<char>('0' + i % 10)};
        const int zeros = i >= 100 ? 0 : (i >= 10 ? 1 : 2);
        ShortText& whole = texts.whole[i];
        for (auto k = static_cast<std::size_t>(zeros); k < 3; ++k) {
            whole.text[whole.size++] = digits[k];
        }
        const int cut = i == 0 ? 3 : (i % 100 == 0 ? 2 : (i % 10 == 0 ? 1 : 0));
        texts.rest[i] = {digits, static_cast<std::uint8_t>(3 - cut)};
    }
    return texts;
}();

/// Writes `parts` / 10^decimals, of at most three digits before and after the point: copies all
/// three and counts those that are meant, without a branch.
char* writeShort(char* to, std::uint32_t parts, int decimals) {
    constexpr std::array<std::uint32_t, 4> POWERS_TO_THREE{1, 10, 100, THOUSAND};
    const auto at = static_cast<std::size_t>(decimals);
    const std::uint32_t thousandths = parts * POWERS_TO_THREE[3 - at];
    const ShortText& whole = SHORT_TEXTS.whole[thousandths / THOUSAND];
    const ShortText& rest = SHORT_TEXTS.rest[thousandths % THOUSAND];
    std::memcpy(to, whole.text.data(), sizeof whole);
    to += whole.size;
    *to = '.';
    std::memcpy(to + 1, rest.text.data(), sizeof rest);
    return to + rest.size + static_cast<int>(rest.size > 0);
}

char* writeDecimal(char* to, std::uint64_t parts, int decimals) {
    constexpr int THOUSANDTHS = 3;
    if (decimals <= THOUSANDTHS &&
        parts < THOUSAND * INTEGER_POWERS[static_cast<std::size_t>(decimals)]) {
        return writeShort(to, static_cast<std::uint32_t>(parts), decimals);
    }
    constexpr int SHORT = 9;
    // Divisions of 32 bits are quicker.
    if (parts <= UINT32_MAX && decimals <= SHORT) {
        return writeParts(to, static_cast<std::uint32_t>(parts), decimals);
    }
    return writeParts(to, parts, decimals);
}

void addDecimal(Text& out, std::uint64_t parts, int decimals) {
    out.finish(writeDecimal(out.reserve(MAX_NUMBER), parts, decimals));
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
        const Wide power = INTEGER_POWERS[static_cast<std::size_t>(decimals)];
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
    const int whole = wholeDigits(value);
    const int last = std::min(LONGEST - whole, MAX_DIGITS);
    for (int decimals = SHORT_DIGITS - whole; decimals <= last; ++decimals) {
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

/// As Math.round, of what an integer of 64 bits holds: halves upwards.
std::int64_t round(double value) {
    const auto whole = static_cast<std::int64_t>(value);
    const double rest = value - static_cast<double>(whole);
    return whole + static_cast<int>(rest >= 0.5) - static_cast<int>(rest < -0.5);
}

}  // namespace

const char* readNumber(const char* at, const char* end, double& value) {
    const auto minus = static_cast<unsigned>(*at == '-');
    double size = 0.0;
    const char* next = nullptr;
    if (end - at > USUAL) next = readUsual(at + minus, size);
    if (next == nullptr || (*next | 0x20) == 'e') return readAnyNumber(at, end, value);
    const auto bits = std::bit_cast<std::uint64_t>(size) | static_cast<std::uint64_t>(minus) << 63;
    value = std::bit_cast<double>(bits);
    return next;
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

char* writeRounded(char* to, double value, int decimals) {
    const double scaled = value * POWERS[static_cast<std::size_t>(decimals)];
    if (!(std::abs(scaled) < SHORT_LIMIT - 1.0)) return nullptr;
    const std::int64_t parts = round(scaled);
    const auto size = static_cast<std::uint64_t>(parts < 0 ? -parts : parts);
    constexpr int WITHOUT_EXPONENT = 6;
    if (decimals > WITHOUT_EXPONENT && size != 0 &&
        static_cast<double>(size) < POWERS[static_cast<std::size_t>(decimals - WITHOUT_EXPONENT)]) {
        return nullptr;
    }
    if (parts < 0) *to++ = '-';
    return writeDecimal(to, size, decimals);
}

bool addRounded(Text& out, double value, int decimals) {
    const char* const end = writeRounded(out.reserve(MAX_NUMBER), value, decimals);
    if (end != nullptr) out.finish(end);
    return end != nullptr;
}

}  // namespace lines
