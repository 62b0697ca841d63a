// What happens when memory runs out, at each allocation of a call.

#include "Beautifier/Beautifier.h"
#include "Examples.h"
#include "FailingAllocation.h"
#include "Ink.h"
#include "Matchers.h"
#include "Scrivo/Scrivo.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <string>
#include <utility>

namespace Scrivo::test {

namespace {

/// Runs `action` with every one of its allocations failing in turn, and `check`
/// after each failure, until it succeeds. Returns how many allocations failed.
template <typename Action, typename Check>
int failEveryAllocation(Action action, Check check) {
    for (int failures = 0;; ++failures) {
        allocationsBeforeFailure = failures;
        try {
            action();
            allocationsBeforeFailure = -1;
            return failures;
        } catch (const std::bad_alloc&) {
            check();
        }
    }
}

/// A recogniser with templates of each family, its contents and its answers.
struct Loaded {
    TemplatesGraphicsRecognizer recogniser;
    std::vector<Stroke> drawn = ink::Hand(51).strokes(6);
    std::vector<RecognitionResult> answers;

    Loaded() {
        const char* const names[] = {"rectangle", "triangle", "ellipse"};
        const auto outlines = ink::Hand(50).strokes(30);
        for (std::size_t k = 0; k < outlines.size(); ++k) {
            recogniser.addTemplate(static_cast<int>(1 + k % 3), names[k % 3], outlines[k]);
        }
        for (const Stroke& stroke : drawn) {
            answers.push_back(recogniser.recognize(stroke));
        }
    }

    void expectUnchanged() const {
        EXPECT_EQ(recogniser.allTemplates.size(), 30U);
        EXPECT_EQ(recogniser.polygonTemplates.size(), 20U);
        EXPECT_EQ(recogniser.ellipseTemplates.size(), 10U);
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            const auto answer = recogniser.recognize(drawn[i]);
            EXPECT_EQ(answer.id, answers[i].id);
            EXPECT_TRUE(sameBits(answer.score, answers[i].score));
        }
    }

    /// The family lists agree with the list of all templates.
    void expectListsThatAgree() const {
        std::vector<const GraphicTemplate*> polygons;
        std::vector<const GraphicTemplate*> ellipses;
        for (const GraphicTemplate& t : recogniser.allTemplates) {
            (t.id == 3 ? ellipses : polygons).push_back(&t);
        }
        const auto agrees = [](const TemplateList& list,
                               const std::vector<const GraphicTemplate*>& expected) {
            return std::equal(list.begin(), list.end(), expected.begin(), expected.end(),
                              [](const GraphicTemplate& a, const GraphicTemplate* b) {
                                  return a.id == b->id && a.name == b->name &&
                                         hasBitsOf(a.points, b->points);
                              });
        };
        EXPECT_TRUE(agrees(recogniser.polygonTemplates, polygons));
        EXPECT_TRUE(agrees(recogniser.ellipseTemplates, ellipses));
    }
};

TEST(OutOfMemory, AFailedAddChangesNothing) {
    Loaded loaded;
    ink::Hand hand(52);
    for (const auto shape : {ink::Hand::RECTANGLE, ink::Hand::ELLIPSE}) {
        const Stroke outline = hand.stroke(shape);
        // Copied first, so that the call fails and not the construction of its arguments.
        const int failures = failEveryAllocation(
            [&] { loaded.recogniser.addTemplate(shape, "added template", outline); },
            [&] { loaded.expectListsThatAgree(); });
        EXPECT_GT(failures, 10);
    }
    EXPECT_EQ(loaded.recogniser.allTemplates.size(), 32U);
}

TEST(OutOfMemory, AFailedLoadChangesNothing) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) /
                            ("scrivo-allocation-" + std::to_string(std::random_device{}()));
    fs::create_directories(folder);
    ink::Hand hand(53);
    // Long tokens, so that reading them allocates again and again.
    std::ofstream file(folder / "outlines");
    for (const Stroke& stroke : hand.strokes(3)) {
        for (const Point2D& p : stroke) {
            file << p.x << ',' << p.y << ',';
        }
        file << '\n';
    }
    file.close();
    const std::string name = (folder / "outlines").string();
    Loaded loaded;
    const int failures =
        failEveryAllocation([&] { loaded.recogniser.loadTemplatesFromFile(name, "", name, name); },
                            [&] { loaded.expectUnchanged(); });
    EXPECT_GT(failures, 100);
    loaded.expectListsThatAgree();
    EXPECT_EQ(loaded.recogniser.allTemplates.size(), 30U + 3 * 6U) << "no token was lost";
    EXPECT_EQ(loaded.recogniser.ellipseTemplates.size(), 10U + 6U);
    fs::remove_all(folder);
}

TEST(OutOfMemory, AFailedUpdateIsRepeated) {
    Loaded loaded;
    const Stroke outline = ink::Hand(54).stroke(ink::Hand::ELLIPSE);
    GraphicTemplate exact{3, "exact", loaded.recogniser.normalizePath(outline)};
    loaded.recogniser.allTemplates.push_back(exact);
    loaded.recogniser.ellipseTemplates.push_back(exact);
    RecognitionResult answer;
    const int failures =
        failEveryAllocation([&] { answer = loaded.recogniser.recognize(outline); }, [] {});
    EXPECT_GT(failures, 10);
    EXPECT_EQ(answer.name, "exact");
}

TEST(OutOfMemory, TheBeautifierThrowsBadAllocAndAnswersAfterwards) {
    const BeautifierOptions options{.minSize = 1.0};
    const std::vector<Stroke> others{fractions(chain({{390, 200}, {395, 290}}, 20), 800, 600)};
    int failures = 0;
    for (const ink::Example& example : ink::examples()) {
        const Stroke stroke = fractions(ink::sample(example.curve, 40), 800, 600);
        const Beautified expected = Beautifier(options).beautify(stroke, 800, 600, others);
        Beautified answer;
        failures += failEveryAllocation(
            [&] { answer = Beautifier(options).beautify(stroke, 800, 600, others); }, [] {});
        EXPECT_EQ(answer.type, expected.type);
        EXPECT_TRUE(hasBitsOf(answer.path, expected.path));
    }
    EXPECT_GT(failures, 50);
}

TEST(OutOfMemory, TheTemplateEngineAnswersWithTheStrokeAsDrawn) {
    const Stroke stroke =
        fractions(closedChain({{0, 0}, {0, 90}, {90, 90}, {90, 0}}, 20), 800, 600);
    for (int failures = 0;; ++failures) {
        // Arguments are made before an allocation fails.
        Stroke given = stroke;
        std::vector<Stroke> others;
        allocationsBeforeFailure = failures;
        const StrokeResult answer = optimizeAStroke(std::move(given), 800, 600, std::move(others));
        const bool isDone = allocationsBeforeFailure >= 0;
        allocationsBeforeFailure = -1;
        EXPECT_TRUE(hasBitsOf(answer.path, stroke)) << "after " << failures;
        if (isDone) {
            EXPECT_GT(failures, 2);
            break;
        }
    }
}

}  // namespace

}  // namespace Scrivo::test
