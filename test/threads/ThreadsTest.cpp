// Both engines on several threads at once. Most telling in the preset `tsan`, under the
// thread sanitizer.

#include "Beautifier/Beautifier.h"
#include "Ink.h"
#include "Matchers.h"
#include "Scrivo/Scrivo.h"

#include <array>
#include <atomic>
#include <future>
#include <string>

namespace Scrivo::test {

namespace {

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 600.0;
constexpr int ROUNDS = 3;

std::vector<std::string> templateFiles() {
    const std::string folder = SCRIVO_TEMPLATES;
    return {folder + "/rectangle.template", folder + "/triangle.template",
            folder + "/isosceles_triangle.template", folder + "/ellipse.template"};
}

/// Closed figures, a line that may snap, an angle and a dot.
std::vector<Stroke> drawnStrokes() {
    ink::Hand hand(41);
    std::vector<Stroke> strokes = hand.strokes(12);
    strokes.push_back(ink::sample(ink::polyline({{100.0, 100.0}, {500.0, 105.0}}), 40));
    strokes.push_back(ink::sample(ink::polyline({{90.0, 90.0}, {300.0, 90.0}, {90.0, 300.0}}), 60));
    strokes.push_back(ink::sample(ink::polyline({{50.0, 50.0}, {51.0, 51.0}, {50.0, 52.0}}), 6));
    for (Stroke& stroke : strokes) {
        stroke = fractions(stroke, WIDTH, HEIGHT);
    }
    return strokes;
}

struct Answers {
    std::vector<StrokeResult> matched;
    std::vector<Beautified> beautified;
};

Answers answersTo(const std::vector<Stroke>& strokes, const Beautifier& beautifier) {
    Answers answers;
    for (const Stroke& stroke : strokes) {
        answers.matched.push_back(optimizeAStroke(stroke, WIDTH, HEIGHT, strokes));
        answers.beautified.push_back(beautifier.beautify(stroke, WIDTH, HEIGHT, strokes));
    }
    return answers;
}

bool areSame(const Answers& a, const Answers& b) {
    for (std::size_t i = 0; i < a.matched.size(); ++i) {
        const bool isSame = a.matched[i].type == b.matched[i].type &&
                            hasBitsOf(a.matched[i].path, b.matched[i].path) &&
                            a.beautified[i].type == b.beautified[i].type &&
                            sameBits(a.beautified[i].confidence, b.beautified[i].confidence) &&
                            hasBitsOf(a.beautified[i].path, b.beautified[i].path);
        if (!isSame) {
            return false;
        }
    }
    return true;
}

// Templates that are loaded again change no score, so that answers stay the same.
TEST(Threads, AnswerTheSameWhileTemplatesAreLoaded) {
    const std::vector<std::string> files = templateFiles();
    ASSERT_TRUE(initScrivo(files));
    const std::vector<Stroke> strokes = drawnStrokes();
    const Beautifier beautifier;
    const Answers expected = answersTo(strokes, beautifier);
    std::atomic<int> running = 0;
    std::array<std::future<int>, 3> threads;
    for (auto& thread : threads) {
        ++running;
        thread = std::async(std::launch::async, [&] {
            int different = 0;
            for (int round = 0; round < ROUNDS; ++round) {
                different += areSame(answersTo(strokes, beautifier), expected) ? 0 : 1;
            }
            --running;
            return different;
        });
    }
    int loads = 0;
    while (running > 0 && loads < 40) {
        initScrivo(files);
        ++loads;
    }
    for (auto& thread : threads) {
        EXPECT_EQ(thread.get(), 0);
    }
    EXPECT_GT(loads, 0);
}

}  // namespace

}  // namespace Scrivo::test
