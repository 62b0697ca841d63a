// Compares the template engine with its literal form, bit for bit: strokes of all
// figures, as drawn by hand, and degenerate ones of any numbers.
//
//   compare COUNT [SEED]

#include "Promises.h"
#include "Recogniser.h"
#include "Scrivo/detail/CornerScan.h"

#include <iostream>

namespace Scrivo::test::fuzz {

namespace {

Stroke anyInput(ink::Hand& hand) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(hand.below(400)));
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(hand.below(256));
    }
    return Input(bytes).stroke();
}

/// Thinned, repeated, flattened or scaled: what the arithmetic may divide by becomes
/// small.
Stroke degenerate(ink::Hand& hand) {
    Stroke stroke = anyStroke(hand);
    const double scale = hand.oneOf({1e-160, 1e-9, 1.0, 1e9});
    const double flatness = hand.oneOf({0.0, 1e-12, 1.0});
    const auto count = static_cast<std::size_t>(hand.below(20));
    stroke.resize(std::min(stroke.size(), hand.below(2) == 0 ? count : stroke.size()));
    for (Point2D& p : stroke) {
        p = {scale * p.x, scale * flatness * p.y, p.force};
    }
    stroke.insert(stroke.end(), count, stroke.empty() ? Point2D{} : stroke.back());
    return stroke;
}

Stroke nextStroke(ink::Hand& hand, int k) {
    switch (k % 4) {
        case 0:
            return anyInput(hand);
        case 1:
            return degenerate(hand);
        default:
            return anyStroke(hand);
    }
}

struct Counts {
    int same = 0;
    int matched = 0;
    int endless = 0;  ///< resampling would not end
    int different = 0;
};

void compare(const TemplatesGraphicsRecognizer& recogniser, const Stroke& stroke, Counts& counts) {
    RecognitionResult expected;
    try {
        expected = literal::recognize(recogniser, stroke);
    } catch (const std::length_error&) {
        ++counts.endless;
        return;
    }
    const bool haveSameCorners =
        stroke.empty() || detail::strokeCorners(stroke) == literal::getAnglesFromPath(stroke);
    const bool isSame =
        haveSameCorners && static_cast<bool>(sameAnswer(recogniser.recognize(stroke), expected));
    ++(isSame ? counts.same : counts.different);
    counts.matched += expected.id == 0 ? 0 : 1;
    if (!isSame) {
        std::cout << "different:";
        for (const Point2D& p : stroke) {
            std::cout << ' ' << toText(p);
        }
        std::cout << '\n';
    }
}

int run(int count, std::uint64_t seed) {
    ink::Hand hand(seed);
    const TemplatesGraphicsRecognizer recogniser = recogniserWith(hand.strokes(60));
    Counts counts;
    for (int k = 0; k < count; ++k) {
        compare(recogniser, nextStroke(hand, k), counts);
    }
    std::cout << counts.same << " strokes with the same bits, " << counts.matched
              << " of them matched a template; " << counts.endless << " not compared; "
              << counts.different << " different\n";
    return counts.different == 0 && counts.matched > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

}  // namespace Scrivo::test::fuzz

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 1000;
    return Scrivo::test::fuzz::run(count, argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1);
}
