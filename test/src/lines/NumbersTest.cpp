#include "lines/Numbers.h"
#include "lines/Text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace {

/// What is read of a text that another one follows, in memory of its own.
std::optional<double> readBefore(std::string_view text, std::string_view next) {
    const std::string followed = std::string(text) + std::string(next);
    double value = 0.0;
    const char* const end =
        lines::readNumber(followed.data(), followed.data() + followed.size(), value);
    if (end == nullptr || end != followed.data() + text.size()) return std::nullopt;
    return value;
}

/// The same at the end of a block and before it, where numbers are read in words of eight bytes.
std::optional<double> read(std::string_view text) {
    const auto last = readBefore(text, ",");
    for (const std::string_view next :
         {",-12.5,0.25],[1", "]               ", ",999999999999999"}) {
        const auto value = readBefore(text, next);
        EXPECT_EQ(value.has_value(), last.has_value()) << text << next;
        if (value && last) {
            EXPECT_EQ(std::bit_cast<std::uint64_t>(*value), std::bit_cast<std::uint64_t>(*last))
                << text << next;
        }
    }
    return last;
}

double expected(std::string_view text) {
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::uint64_t bitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

std::optional<std::string> written(double value) {
    lines::Text out;
    out.add("x");
    const bool isWritten = lines::addNumber(out, value);
    if (isWritten) return std::string(out.view().substr(1));
    EXPECT_EQ(out.view(), "x");
    return std::nullopt;
}

std::string shortest(double value) {
    std::string text(64, ' ');
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    EXPECT_EQ(error, std::errc());
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

TEST(Numbers, AreReadToTheNearestDouble) {
    for (const std::string_view text : {"0",
                                        "-0",
                                        "7",
                                        "-1",
                                        "0.1",
                                        "1.5e3",
                                        "1E-7",
                                        "1e+22",
                                        "123456789012345678",
                                        "9007199254740991",
                                        "9007199254740993",
                                        "9007199254740993.0",
                                        "0.30000000000000004",
                                        "2.2250738585072014",
                                        "9999999999999999999",
                                        "1234567890.123456789",
                                        "0.000001",
                                        "179769313486231570",
                                        "5e-22",
                                        "12345678",
                                        "1234567.8",
                                        "0.0000000000000000001"}) {
        const auto value = read(text);
        ASSERT_TRUE(value) << text;
        EXPECT_EQ(bitsOf(*value), bitsOf(expected(text))) << text;
    }
}

TEST(Numbers, OfOtherNotationsAreDeclined) {
    for (const std::string_view text : {"",         "-",
                                        "+1",       "1.",
                                        ".5",       "01",
                                        "-00",      "00.5",
                                        "1e",       "1e+",
                                        "e5",       "1.e5",
                                        "0x10",     "NaN",
                                        "Infinity", "--1",
                                        "1e999",    "1e99999999999",
                                        "5e-324",   "12345678901234567890",
                                        "1 ",       "1.5.5",
                                        "\xb1",     "1\xb1"}) {
        EXPECT_FALSE(read(text)) << text;
    }
}

TEST(Numbers, OfAnyDigitsAreReadAsTheLibraryReadsThem) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 50000; ++i) {
        std::string text = std::to_string(random() >> (random() % 64));
        text.resize(std::min<std::size_t>(text.size(), 19));
        const std::size_t point = random() % (text.size() + 1);
        if (point == 0) {
            text = "0." + text;
        } else if (point < text.size()) {
            text.insert(point, ".");
        }
        const bool isLong = text.size() > 20;  // 19 digits, a point and perhaps a zero
        const auto value = read(text);
        ASSERT_TRUE(value || isLong) << text;
        if (value) {
            ASSERT_EQ(bitsOf(*value), bitsOf(expected(text))) << text;
        }
    }
}

TEST(Numbers, AreWrittenWithTheFewestDigits) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-2.9, 11.9);
    int declined = 0;
    for (int i = 0; i < 50000; ++i) {
        // Every other one is a decimal of a few digits.
        const double any = std::pow(10.0, exponent(random));
        const double value = i % 2 == 0 ? any : std::ceil(any * 1e4) / 1e4;
        const auto text = written(-value);
        ASSERT_EQ(text.value_or(shortest(-value)), shortest(-value));
        if (!text) ++declined;
    }
    EXPECT_LT(declined, 100);
    EXPECT_EQ(written(-0.0), "0");
    EXPECT_EQ(written(0.5), "0.5");
    EXPECT_EQ(written(1e14), "100000000000000");
    for (const double value :
         {1e21, 1e-7, 5e-324, std::nextafter(1.0, 0.0) * 1e16,
          std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(written(value)) << value;
    }
}

TEST(Numbers, OfFewDecimalsAreWrittenWithoutZerosAtTheEnd) {
    for (int decimals = 0; decimals <= 4; ++decimals) {
        const double power = std::pow(10.0, decimals);
        for (int i = 0; i <= 1'020'000; i += i < 2000 ? 1 : 37) {
            lines::Text out;
            ASSERT_TRUE(lines::addRounded(out, i / power, decimals));
            ASSERT_EQ(out.view(), shortest(i / power)) << decimals;
        }
    }
}

TEST(Numbers, AreRoundedWithHalvesUpwards) {
    const auto rounded = [](double value, int decimals) -> std::string {
        lines::Text out;
        return lines::addRounded(out, value, decimals) ? std::string(out.view()) : "declined";
    };
    EXPECT_EQ(rounded(2.5, 0), "3");
    EXPECT_EQ(rounded(-2.5, 0), "-2");
    EXPECT_EQ(rounded(0.49999999999999994, 0), "0");
    EXPECT_EQ(rounded(-0.2, 0), "0");
    EXPECT_EQ(rounded(-0.0004, 3), "0");
    EXPECT_EQ(rounded(1.0005, 3), "1.001");
    EXPECT_EQ(rounded(-12.3456, 3), "-12.346");
    EXPECT_EQ(rounded(100.05, 2), "100.05");
    EXPECT_EQ(rounded(4294967.296, 3), "4294967.296");
    EXPECT_EQ(rounded(0.000001, 6), "0.000001");
    EXPECT_EQ(rounded(0.0000001, 7), "declined");
    EXPECT_EQ(rounded(1e15, 0), "declined");
    EXPECT_EQ(rounded(std::numeric_limits<double>::infinity(), 3), "declined");
}

}  // namespace
