#include "Recogniser.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <future>
#include <limits>
#include <numeric>
#include <utility>

namespace Scrivo::test {

namespace {

TEST(Recogniser, FollowsChangedSettings) {
    ink::Hand hand(26);
    const auto outlines = hand.strokes(30);
    using Change = void (*)(TemplatesGraphicsRecognizer&);
    const Change changes[] = {
        [](auto&) {},
        [](auto& r) { r.setRotationInvariance(false); },
        [](auto& r) { r.numPoints = 32; },
        [](auto& r) { r.numPoints = 80; },
        [](auto& r) { r.squareSize = 1000; },
        [](auto& r) { r.angleRange = 1.0; },
        [](auto& r) { r.anglePrecision = 0.25; },
        [](auto& r) { r.goldenRatio = 0.7; },
        [](auto& r) { r.halfDiagonal = 60.0; },
        [](auto& r) { r.halfDiagonal = 0.0; },
    };
    for (const Change change : changes) {
        auto before = recogniserWith(outlines);
        change(before);
        TemplatesGraphicsRecognizer after;
        change(after);
        for (const Path& outline : outlines) {
            after.addTemplate(3, "ellipse", outline);
        }
        for (int i = 0; i < rounds(24); ++i) {
            const Path stroke = anyStroke(hand);
            EXPECT_TRUE(answersLiterally(before, stroke));
            EXPECT_TRUE(answersLiterally(after, stroke));
        }
    }
}

TEST(Recogniser, FollowsListsChangedByTheCaller) {
    ink::Hand hand(27);
    const auto outlines = hand.strokes(45);
    const Path stroke = hand.stroke(ink::Hand::ELLIPSE);
    const GraphicTemplate exact{9, "exact", TemplatesGraphicsRecognizer().normalizePath(stroke)};
    using Change = void (*)(TemplateList&, const GraphicTemplate&);
    const Change changes[] = {
        [](auto& list, auto& added) { list.push_back(added); },
        [](auto& list, auto& added) { list.insert(list.begin(), added); },
        [](auto& list, auto& added) { list[7].points = added.points; },
        [](auto& list, auto& added) {
            std::copy(added.points.begin(), added.points.end(), list.back().points.begin());
        },
        [](auto& list, auto&) { list.erase(list.begin(), list.begin() + 5); },
        [](auto& list, auto&) { list[2].points.clear(); },
        [](auto& list, auto&) { list[2].points[63].y = QUIET_NAN; },
        [](auto& list, auto&) {
            for (auto& t : list) {
                t = {t.id + 10, "renamed", t.points};
            }
        },
        [](auto& list, auto&) { std::reverse(list.begin(), list.end()); },
        [](auto& list, auto&) { list.clear(); },
        [](auto& list, auto& added) { list = std::vector<GraphicTemplate>{added}; },
    };
    for (const Change change : changes) {
        auto recogniser = recogniserWith(outlines);
        change(recogniser.allTemplates, exact);
        change(recogniser.polygonTemplates, exact);
        change(recogniser.ellipseTemplates, exact);
        const auto copy = recogniser;
        for (int i = 0; i < 2 + rounds(10); ++i) {
            const Path drawn = i == 0 ? stroke : anyStroke(hand);
            EXPECT_TRUE(answersLiterally(recogniser, drawn)) << i;
            EXPECT_TRUE(answersLiterally(copy, drawn)) << i;
        }
    }
}

TEST(Recogniser, KeepsTheFirstOfEqualTemplates) {
    ink::Hand hand(28);
    const Path stroke = hand.stroke(ink::Hand::ELLIPSE);
    TemplatesGraphicsRecognizer recogniser;
    for (int k = 0; k < 40; ++k) {
        recogniser.addTemplate(3, "other", hand.stroke(ink::Hand::ELLIPSE));
    }
    EXPECT_EQ(recogniser.addTemplate(3, "first", stroke), 1);
    for (int k = 2; k < 30; ++k) {
        EXPECT_EQ(recogniser.addTemplate(3, "second", stroke), k - 1);
    }
    const auto answer = recogniser.recognize(stroke);
    EXPECT_EQ(answer.name, "first");
    EXPECT_TRUE(answersLiterally(recogniser, stroke));
}

TEST(Recogniser, RejectsBeforeMatching) {
    const auto recogniser = recogniserWith({chain(SQUARE, 20)});
    const auto rejected = [&](const Path& stroke) {
        return sameAnswer(recogniser.recognize(stroke), {0, "Unknown", -1.0});
    };
    EXPECT_TRUE(rejected({}));
    EXPECT_TRUE(rejected({{1.0, 2.0}}));
    EXPECT_TRUE(rejected(Path(20, {1.0, 2.0})));
    EXPECT_TRUE(rejected(chain({{0.0, 0.0}, {100.0, 0.0}, {100.0, 100.0}, {0.0, 60.0}}, 20)));
    EXPECT_TRUE(sameAnswer(TemplatesGraphicsRecognizer().recognize(chain(SQUARE, 20)),
                           {0, "Unknown", -1.0}));
    // A gap of exactly 15 % still counts as closed; the stroke is exactly 100 long.
    EXPECT_FALSE(rejected({{0.0, 0.0}, {57.5, 0.0}, {15.0, 0.0}}));
    EXPECT_TRUE(rejected({{0.0, 0.0}, {57.5, 0.0}, {std::nextafter(15.0, 16.0), 0.0}}));
}

TEST(Recogniser, RejectsFiguresOfTooManyCorners) {
    const auto polygon = [](int edges) {
        Path corners;
        for (int k = 0; k <= edges; ++k) {
            corners.push_back(polar(200, 2 * PI * k / edges));
        }
        return chain(corners, 20);
    };
    const auto flower = [](int petals) {
        Path path;
        for (int k = 0; k <= 60 * petals; ++k) {
            const double angle = PI * k / 30 / petals;
            path.push_back(polar(200 + 100 * std::abs(std::sin(PI * k / 60)), angle));
        }
        return path;
    };
    const auto idAmongOnlyItself = [](int id, const Path& stroke) {
        TemplatesGraphicsRecognizer recogniser;
        recogniser.addTemplate(id, "itself", stroke);
        return recogniser.recognize(stroke).id;
    };
    EXPECT_EQ(idAmongOnlyItself(1, polygon(7)), 1);
    EXPECT_EQ(idAmongOnlyItself(1, polygon(8)), 0);
    EXPECT_EQ(idAmongOnlyItself(3, flower(6)), 3);
    EXPECT_EQ(idAmongOnlyItself(3, flower(7)), 0);
}

TEST(Recogniser, ReportsAScoreThatIsTooLow) {
    // A score of exactly 0.8 suffices: the distance is a fifth of `halfDiagonal`.
    auto close = recogniserWith({chain(SQUARE, 20)});
    const Path flat =
        chain({{0.0, 0.0}, {100.0, 20.0}, {100.0, 50.0}, {0.0, 70.0}, {0.0, 0.0}}, 20);
    const double distance =
        close.distanceAtBestAngle(close.normalizePath(flat), close.allTemplates[0]);
    close.halfDiagonal = 5 * distance;
    EXPECT_EQ(close.recognize(flat).score, 0.8);
    EXPECT_EQ(close.recognize(flat).id, 1);
    close.halfDiagonal = below(5 * distance);
    EXPECT_EQ(close.recognize(flat).id, 0);
    // No template can be compared: the distance stays at its initial value.
    TemplatesGraphicsRecognizer hopeless;
    hopeless.addTemplate(1, "flat", {{0.0, 0.0}, {10.0, 0.0}, {0.0, 0.0}});
    hopeless.addTemplate(1, "dot", {{0.0, 0.0}});
    const auto answer = hopeless.recognize({{0.0, 0.0}, {50.0, 0.0}, {50.0, 50.0}, {0.0, 0.0}});
    EXPECT_EQ(answer.id, 0);
    EXPECT_EQ(answer.score, 1.0 - std::numeric_limits<double>::max() / 176.7766952966369);
}

/// Runs `read` on three threads, over and over, while `load` runs on this one;
/// returns the sum of what the readers return.
template <typename Read, typename Load>
int readWhile(Read read, Load load) {
    std::atomic<bool> isLoaded{false};
    std::array<std::future<int>, 3> readers;
    for (auto& reader : readers) {
        reader = std::async(std::launch::async, [&] {
            int sum = 0;
            do {
                sum += read();
            } while (!isLoaded);
            return sum;
        });
    }
    load();
    isLoaded = true;
    return std::accumulate(readers.begin(), readers.end(), 0,
                           [](int sum, auto& reader) { return sum + reader.get(); });
}

TEST(Recogniser, LoadsUnderEndlessRecognition) {
    ink::Hand hand(31);
    TemplatesGraphicsRecognizer recogniser = recogniserWith(hand.strokes(30));
    const auto later = hand.strokes(rounds(400));
    const auto drawn = hand.strokes(40);
    const auto countWorse = [&] {
        int worse = 0;
        std::vector<double> score(drawn.size(), -INF);
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = 0; i < drawn.size(); ++i) {
                const double before = std::exchange(score[i], recogniser.recognize(drawn[i]).score);
                worse += score[i] < before ? 1 : 0;
            }
        }
        return worse;
    };
    const int worse = readWhile(countWorse, [&] {
        for (const Path& outline : later) {
            recogniser.addTemplate(3, "ellipse", outline);
        }
    });
    EXPECT_EQ(worse, 0) << "more templates never lower a score";
    for (const Path& stroke : drawn) {
        EXPECT_TRUE(answersLiterally(recogniser, stroke));
    }
}

TEST(Recogniser, LoadsUnderRecognitionOfExposedLists) {
    ink::Hand hand(34);
    TemplatesGraphicsRecognizer recogniser = recogniserWith(hand.strokes(30));
    const auto drawn = hand.strokes(12);
    ASSERT_NE(recogniser.ellipseTemplates[0].points.size(), 0U);
    ASSERT_TRUE(std::as_const(recogniser).ellipseTemplates.isExposed());
    const auto recogniseAll = [&] {
        int known = 0;
        for (const Path& stroke : drawn) {
            known += recogniser.recognize(stroke).id != 0 ? 1 : 0;
        }
        return known;
    };
    const int known = readWhile(recogniseAll, [&] {
        for (const Path& outline : hand.strokes(rounds(160))) {
            recogniser.addTemplate(3, "ellipse", outline);
        }
    });
    EXPECT_GT(known, 0);
    for (const Path& stroke : drawn) {
        EXPECT_TRUE(answersLiterally(recogniser, stroke));
    }
}

TEST(Recogniser, CopiesAreIndependent) {
    ink::Hand hand(35);
    const Path stroke = hand.stroke(ink::Hand::ELLIPSE);
    TemplatesGraphicsRecognizer original = recogniserWith(hand.strokes(30));
    TemplatesGraphicsRecognizer copy = original;
    copy.addTemplate(3, "only in the copy", stroke);
    EXPECT_EQ(copy.recognize(stroke).name, "only in the copy");
    EXPECT_NE(original.recognize(stroke).name, "only in the copy");
    const TemplatesGraphicsRecognizer moved = std::move(copy);
    EXPECT_EQ(moved.recognize(stroke).name, "only in the copy");
    // A moved-from recogniser has no templates and may be filled again.
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_EQ(copy.recognize(stroke).score, -1.0);
    copy.addTemplate(3, "added later", stroke);
    EXPECT_EQ(copy.recognize(stroke).name, "added later");
    original = moved;
    EXPECT_EQ(original.recognize(stroke).name, "only in the copy");
    EXPECT_TRUE(answersLiterally(original, hand.stroke(ink::Hand::TRIANGLE)));
    original.ellipseTemplates = TemplateList();
    EXPECT_TRUE(answersLiterally(original, stroke));
}

}  // namespace

}  // namespace Scrivo::test
