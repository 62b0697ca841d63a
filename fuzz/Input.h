#pragma once

#include "Beautifier/Options.h"
#include "Ink.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

/// Decodes the bytes of a fuzzer. Every sequence of bytes has a meaning; missing bytes
/// are 0.
namespace Scrivo::test::fuzz {

using Bytes = std::span<const std::uint8_t>;

class Input {
public:
    explicit Input(Bytes bytes) : m_rest(bytes) {}

    std::uint8_t byte() { return take<std::uint8_t>(); }
    /// From 0 to `most`.
    std::size_t upTo(std::size_t most) { return byte() % (most + 1); }
    bool flag() { return (byte() & 1U) != 0; }
    /// Any double, NaN and infinities too.
    double anyDouble() { return take<double>(); }
    /// In [low, high), in 65536 steps.
    double in(double low, double high) {
        return low + (high - low) * take<std::uint16_t>() / 65536.0;
    }
    std::string text() {
        const std::string all(m_rest.begin(), m_rest.end());
        m_rest = {};
        return all;
    }

    /// In drawing-area units: any doubles, a scribble, a polygonal line or an ellipse.
    Stroke stroke();
    /// Up to three strokes.
    std::vector<Stroke> others();
    BeautifierOptions options();

private:
    template <typename T>
    T take() {
        T value{};
        const std::size_t count = std::min(sizeof value, m_rest.size());
        if (count > 0) {
            std::memcpy(&value, m_rest.data(), count);
        }
        m_rest = m_rest.subspan(count);
        return value;
    }

    Point2D place() {
        const double x = in(-100.0, 900.0);
        return {x, in(-100.0, 700.0)};
    }
    Stroke doubles();
    Stroke scribble();
    Stroke shape(const ink::Curve& curve);

    Bytes m_rest;
};

/// A drawing area, ordinary ones mostly.
struct Area {
    double width = 800.0;
    double height = 600.0;

    explicit Area(Input& input) {
        switch (input.upTo(7)) {
            case 0:
                width = input.anyDouble();
                height = input.anyDouble();
                break;
            case 1:
                width = input.in(1.0, 4000.0);
                height = input.in(1.0, 4000.0);
                break;
            default:
                break;
        }
    }

    [[nodiscard]] bool isOrdinary() const {
        return width >= 1.0 && width <= 4000.0 && height >= 1.0 && height <= 4000.0;
    }
    [[nodiscard]] Stroke fractionsOf(const Stroke& stroke) const {
        return fractions(stroke, width, height);
    }
};

}  // namespace Scrivo::test::fuzz
