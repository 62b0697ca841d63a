#pragma once

#include "Ink.h"
#include "LiteralRecogniser.h"
#include "Matchers.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// Recognisers to test, and comparisons of their answers.
namespace Scrivo::test {

using Path = Stroke;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool SANITIZED = true;
#elif defined(__has_feature)
constexpr bool SANITIZED = __has_feature(address_sanitizer);
#else
constexpr bool SANITIZED = false;
#endif

/// Rounds of a random test: fewer where every access is checked.
constexpr int rounds(int count) {
    return SANITIZED ? count / 8 : count;
}

inline ::testing::AssertionResult sameAnswer(const RecognitionResult& actual,
                                             const RecognitionResult& expected) {
    if (actual.id == expected.id && actual.name == expected.name &&
        sameBits(actual.score, expected.score)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << actual.name << " (" << actual.id << ") " << std::hexfloat << actual.score
           << " instead of " << expected.name << " (" << expected.id << ") " << expected.score;
}

inline ::testing::AssertionResult answersLiterally(const TemplatesGraphicsRecognizer& recogniser,
                                                   const Path& stroke) {
    return sameAnswer(recogniser.recognize(stroke), literal::recognize(recogniser, stroke));
}

/// One of the three families or a knot.
inline Path anyStroke(ink::Hand& hand) {
    return hand.stroke(static_cast<ink::Hand::Shape>(1 + hand.below(4)));
}

inline TemplatesGraphicsRecognizer recogniserWith(const std::vector<Path>& outlines) {
    TemplatesGraphicsRecognizer recogniser;
    for (std::size_t k = 0; k < outlines.size(); ++k) {
        static const char* const NAMES[] = {"rectangle", "triangle", "ellipse"};
        recogniser.addTemplate(static_cast<int>(1 + k % 3), NAMES[k % 3], outlines[k]);
    }
    return recogniser;
}

inline const Path SQUARE{{0.0, 0.0}, {100.0, 0.0}, {100.0, 100.0}, {0.0, 100.0}, {0.0, 0.0}};

}  // namespace Scrivo::test
