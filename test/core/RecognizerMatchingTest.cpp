// Which template wins. The index, the library's plain search and the literal
// recogniser must agree in id, name and the bits of the score.

#include "RecognizerTestSupport.h"
#include "Scrivo/detail/RotationSearch.h"
#include "Scrivo/detail/TemplateIndex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <future>
#include <limits>
#include <utility>

namespace Scrivo::test {

namespace {

using detail::Match;
using detail::matchPlainly;
using detail::STANDARD_SEARCH;
using detail::TemplateIndex;

const GraphicTemplate& oneOf(ink::Hand& hand, const std::vector<GraphicTemplate>& templates) {
    return templates[static_cast<std::size_t>(hand.below(static_cast<int>(templates.size())))];
}

/// A template that the loader would not make, or makes of a strange outline.
GraphicTemplate strangeTemplate(ink::Hand& hand, const Path& ordinary) {
    using Change = void (*)(Path&, std::size_t);
    static const Change CHANGES[] = {
        [](Path& path, std::size_t i) { path[i].x = QUIET_NAN; },
        [](Path& path, std::size_t i) { path[i].y = INF; },
        [](Path& path, std::size_t i) { path.resize(i); },
        [](Path& path, std::size_t) {
            path.push_back({1e300, QUIET_NAN});
        },  // not looked at
        [](Path& path, std::size_t i) {
            path[i] = {1e300, -1e300};
        },
        [](Path& path, std::size_t i) { path[i].x += 390.0; },  // close to where bounds fail
        [](Path& path, std::size_t) { path = fractions(path, 0.125, 0.125); },
        [](Path& path, std::size_t i) { path[i].x = above(path[i].x); },
    };
    GraphicTemplate strange{hand.below(4), "strange", ordinary};
    const auto i = static_cast<std::size_t>(hand.below(64));
    CHANGES[hand.below(8)](strange.points, i);
    return strange;
}

/// Templates of which many are alike: copies, copies that differ by a bit,
/// backward forms, strange ones.
std::vector<GraphicTemplate> mixedTemplates(ink::Hand& hand, int count) {
    const TemplatesGraphicsRecognizer recognizer;
    std::vector<GraphicTemplate> templates;
    while (static_cast<int>(templates.size()) < count) {
        Path stroke = anyStroke(hand);
        const Path normal = recognizer.normalizePath(stroke);
        templates.push_back({1, "new", normal});
        GraphicTemplate copy = oneOf(hand, templates);
        const int kind = hand.below(6);
        if (kind == 0) {
            templates.push_back(copy);
        } else if (kind == 1) {
            std::reverse(stroke.begin(), stroke.end());
            templates.push_back({1, "backwards", recognizer.normalizePath(stroke)});
        } else if (kind == 2) {
            templates.push_back(strangeTemplate(hand, normal));
        }
    }
    return templates;
}

/// A stroke of its own, one of the templates, one of them with a slight change,
/// or one for which two templates are at the same distance.
Path queryPath(ink::Hand& hand, const std::vector<GraphicTemplate>& templates) {
    Path path = oneOf(hand, templates).points;
    if (hand.below(3) > 0 || path.size() != 64) {
        return TemplatesGraphicsRecognizer().normalizePath(anyStroke(hand));
    }
    if (hand.below(2) == 0) {
        path[static_cast<std::size_t>(hand.below(64))].x += hand.uniform(-1.0, 1.0);
    }
    return path;
}

::testing::AssertionResult sameMatch(const Match& actual, const Match& expected) {
    if (actual.index == expected.index && sameBits(actual.distance, expected.distance)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << actual.index << " at " << std::hexfloat << actual.distance << " instead of "
           << expected.index << " at " << expected.distance;
}

TemplateIndex indexOf(const std::vector<GraphicTemplate>& templates) {
    TemplateIndex index;
    for (const GraphicTemplate& t : templates) {
        index.append(t.points);
    }
    EXPECT_TRUE(index.describes(templates));
    return index;
}

/// Compares the index with the plain search, and returns how many of the paths
/// it answered.
int compare(ink::Hand& hand, const std::vector<GraphicTemplate>& templates, int paths) {
    const TemplateIndex index = indexOf(templates);
    int answered = 0;
    for (int i = 0; i < paths; ++i) {
        const Path path = queryPath(hand, templates);
        if (const auto match = index.match(path, templates)) {
            ++answered;
            EXPECT_TRUE(sameMatch(*match, matchPlainly(path, templates, STANDARD_SEARCH))) << i;
        }
    }
    return answered;
}

TEST(TemplateIndex, FindsTheMatchOfThePlainSearch) {
    ink::Hand hand(21);
    int answered = 0;
    for (int k = 0; k < rounds(400) && !HasFailure(); ++k) {
        answered += compare(hand, mixedTemplates(hand, 1 + hand.below(50)), 50);
    }
    EXPECT_GT(answered, rounds(400) * 40);
    const auto thousands = mixedTemplates(hand, 3000);
    for (auto end = thousands.begin(); thousands.end() - end >= 100 && !HasFailure();) {
        end += 100;
        compare(hand, {thousands.begin(), end}, 1);
    }
}

/// Turned so that the first two distances to `t` are equal up to rounding: the
/// half that the search goes on with is a matter of the last bits.
Path tiedPath(const Path& path, const Path& t) {
    const TemplatesGraphicsRecognizer recognizer;
    const double angle = (2.0 * STANDARD_SEARCH.goldenRatio - 1.0) * STANDARD_SEARCH.range;
    const auto difference = [&](double turn) {
        const Path turned = recognizer.rotateBy(path, turn);
        return detail::distanceAtAngle(turned, t, -angle) -
               detail::distanceAtAngle(turned, t, angle);
    };
    double low = -0.5;
    double high = 0.5;
    if ((difference(low) < 0.0) == (difference(high) < 0.0)) {
        return path;
    }
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        ((difference(middle) < 0.0) == (difference(low) < 0.0) ? low : high) = middle;
    }
    return recognizer.rotateBy(path, low);
}

TEST(TemplateIndex, LeavesCloseDecisionsToThePlainSearch) {
    ink::Hand hand(32);
    const TemplatesGraphicsRecognizer recognizer;
    const auto shaken = [&](const Path& path) {
        return recognizer.translateToOrigin(mapped(path, [&](const Point2D& p) {
            const double x = p.x + hand.uniform(-20.0, 20.0);
            return Point2D{x, p.y + hand.uniform(-20.0, 20.0)};
        }));
    };
    for (int k = 0; k < rounds(400); ++k) {
        const Path outline = recognizer.normalizePath(anyStroke(hand));
        std::vector<GraphicTemplate> templates;
        for (int i = 0; i < 12; ++i) {
            templates.push_back({1, "alike", shaken(outline)});
        }
        Path path = shaken(outline);
        const auto winner = matchPlainly(path, templates, STANDARD_SEARCH).index;
        path = tiedPath(path, templates[static_cast<std::size_t>(winner)].points);
        const auto match = indexOf(templates).match(path, templates);
        ASSERT_TRUE(match);
        ASSERT_TRUE(sameMatch(*match, matchPlainly(path, templates, STANDARD_SEARCH))) << k;
    }
}

TEST(TemplateIndex, LetsATemplateWinThatItsBoundsDoNotHoldFor) {
    ink::Hand hand(33);
    const TemplatesGraphicsRecognizer recognizer;
    const Path drawn = recognizer.normalizePath(hand.stroke(ink::ELLIPSE));
    std::vector<GraphicTemplate> templates{
        {2, "triangle", recognizer.normalizePath(hand.stroke(ink::TRIANGLE))}, {3, "far", drawn}};
    templates[1].points[5] = {450.0, 0.0};
    const auto match = indexOf(templates).match(drawn, templates);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->index, 1);
}

TEST(TemplateIndex, DeclinesPathsOutsideTheNormalForm) {
    const Path circle =
        TemplatesGraphicsRecognizer().normalizePath(ink::Hand(23).stroke(ink::ELLIPSE));
    const std::vector<GraphicTemplate> templates{{3, "ellipse", circle}};
    const TemplateIndex index = indexOf(templates);
    EXPECT_TRUE(index.match(circle, templates));
    const auto changed = [&](auto change) {
        Path path = circle;
        change(path);
        return index.match(path, templates).has_value();
    };
    EXPECT_FALSE(changed([](Path& p) { p.pop_back(); }));
    EXPECT_FALSE(changed([](Path& p) { p.push_back(p.back()); }));
    EXPECT_FALSE(changed([](Path& p) { p[5].x = QUIET_NAN; }));
    EXPECT_FALSE(changed([](Path& p) { p[5].x = 401.0; }));
    EXPECT_FALSE(changed([](Path& p) { p[5].y += 1.0; })) << "the centroid has moved";
}

TEST(PlainSearch, IsTheLiteralOne) {
    ink::Hand hand(24);
    TemplatesGraphicsRecognizer recognizer;
    const auto templates = mixedTemplates(hand, 60);
    for (int i = 0; i < rounds(160); ++i) {
        const Path path = queryPath(hand, templates);
        for (const GraphicTemplate& t : templates) {
            ASSERT_TRUE(sameBits(recognizer.distanceAtBestAngle(path, t),
                                 literal::distanceAtBestAngle(path, t, recognizer)));
        }
        const double angle = hand.uniform(-50.0, 50.0);
        EXPECT_TRUE(sameBits(recognizer.distanceAtAngle(path, templates[0], angle),
                             literal::distanceAtAngle(path, templates[0], angle)));
    }
}

TEST(Recognize, FollowsChangedSettings) {
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
        auto before = recognizerWith(outlines);
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

TEST(Recognize, FollowsListsChangedByHand) {
    ink::Hand hand(27);
    const auto outlines = hand.strokes(45);
    const Path stroke = hand.stroke(ink::ELLIPSE);
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
        [](auto& list, auto&) { std::reverse(list.begin(), list.end()); },
        [](auto& list, auto&) { list.clear(); },
        [](auto& list, auto& added) { list = std::vector<GraphicTemplate>{added}; },
    };
    for (const Change change : changes) {
        auto recognizer = recognizerWith(outlines);
        change(recognizer.allTemplates, exact);
        change(recognizer.polygonTemplates, exact);
        change(recognizer.ellipseTemplates, exact);
        const auto copy = recognizer;
        for (int i = 0; i < 12; ++i) {
            const Path drawn = i == 0 ? stroke : anyStroke(hand);
            EXPECT_TRUE(answersLiterally(recognizer, drawn)) << i;
            EXPECT_TRUE(answersLiterally(copy, drawn)) << i;
        }
    }
}

TEST(Recognize, KeepsTheFirstOfEqualTemplates) {
    ink::Hand hand(28);
    const Path stroke = hand.stroke(ink::ELLIPSE);
    TemplatesGraphicsRecognizer recognizer;
    for (int k = 0; k < 40; ++k) {
        recognizer.addTemplate(3, "other", hand.stroke(ink::ELLIPSE));
    }
    EXPECT_EQ(recognizer.addTemplate(3, "first", stroke), 1);
    for (int k = 2; k < 30; ++k) {
        EXPECT_EQ(recognizer.addTemplate(3, "second", stroke), k - 1);
    }
    const auto answer = recognizer.recognize(stroke);
    EXPECT_EQ(answer.name, "first");
    EXPECT_TRUE(answersLiterally(recognizer, stroke));
}

const Path SQUARE{{0.0, 0.0}, {100.0, 0.0}, {100.0, 100.0}, {0.0, 100.0}, {0.0, 0.0}};

TEST(Recognize, RejectsBeforeMatching) {
    const auto recognizer = recognizerWith({chain(SQUARE, 20)});
    const auto rejected = [&](const Path& stroke) {
        return sameAnswer(recognizer.recognize(stroke), {0, "Unknown", -1.0});
    };
    EXPECT_TRUE(rejected({}));
    EXPECT_TRUE(rejected({{1.0, 2.0}}));
    EXPECT_TRUE(rejected(Path(20, {1.0, 2.0})));
    EXPECT_TRUE(rejected(chain({{0.0, 0.0}, {100.0, 0.0}, {100.0, 100.0}, {0.0, 60.0}}, 20)));
    EXPECT_TRUE(sameAnswer(TemplatesGraphicsRecognizer().recognize(chain(SQUARE, 20)),
                           {0, "Unknown", -1.0}));
    // A gap of 15 % still closes; the stroke is 100 long, up to the last bit.
    EXPECT_FALSE(rejected({{0.0, 0.0}, {57.5, 0.0}, {15.0, 0.0}}));
    EXPECT_TRUE(rejected({{0.0, 0.0}, {57.5, 0.0}, {std::nextafter(15.0, 16.0), 0.0}}));
}

TEST(Recognize, WeighsFiguresOfTooManyCornersByNothing) {
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
        TemplatesGraphicsRecognizer recognizer;
        recognizer.addTemplate(id, "itself", stroke);
        return recognizer.recognize(stroke).id;
    };
    EXPECT_EQ(idAmongOnlyItself(1, polygon(7)), 1);
    EXPECT_EQ(idAmongOnlyItself(1, polygon(8)), 0);
    EXPECT_EQ(idAmongOnlyItself(3, flower(6)), 3);
    EXPECT_EQ(idAmongOnlyItself(3, flower(7)), 0);
}

TEST(Recognize, AnswersWithTheScoreThatDidNotSuffice) {
    // 0.8 itself suffices: the distance is a fifth of what counts as 1.
    auto close = recognizerWith({chain(SQUARE, 20)});
    const Path flat =
        chain({{0.0, 0.0}, {100.0, 20.0}, {100.0, 50.0}, {0.0, 70.0}, {0.0, 0.0}}, 20);
    const double distance =
        close.distanceAtBestAngle(close.normalizePath(flat), close.allTemplates[0]);
    close.halfDiagonal = 5 * distance;
    EXPECT_EQ(close.recognize(flat).score, 0.8);
    EXPECT_EQ(close.recognize(flat).id, 1);
    close.halfDiagonal = below(5 * distance);
    EXPECT_EQ(close.recognize(flat).id, 0);
    // Only templates that cannot be compared: the largest distance stands.
    TemplatesGraphicsRecognizer hopeless;
    hopeless.addTemplate(1, "flat", {{0.0, 0.0}, {10.0, 0.0}, {0.0, 0.0}});
    hopeless.addTemplate(1, "dot", {{0.0, 0.0}});
    const auto answer = hopeless.recognize({{0.0, 0.0}, {50.0, 0.0}, {50.0, 50.0}, {0.0, 0.0}});
    EXPECT_EQ(answer.id, 0);
    EXPECT_EQ(answer.score, 1.0 - std::numeric_limits<double>::max() / 176.7766952966369);
}

TEST(StrokeCorners, AreThoseOfTheLiteralScan) {
    const auto corners = TemplatesGraphicsRecognizerUtil::getAnglesFromPath;
    EXPECT_EQ(corners({}), (std::vector<int>{0, -1}));
    EXPECT_EQ(corners(Path(9)), (std::vector<int>{0, 8}));
    EXPECT_EQ(corners(Path(10)), (std::vector<int>{0}));
    EXPECT_EQ(corners(Path(11)), (std::vector<int>{0, 10}));
    EXPECT_EQ(corners(chain(SQUARE, 20)), (std::vector<int>{0, 20, 40, 60, 80}));
    // One step back of 0.5 between steps of 39/16: chord / path is 19/20, as a
    // float a little below the threshold.
    Path steps(1);
    for (int i = 1; i < 40; ++i) {
        steps.push_back({steps.back().x + (i == 17 ? -0.5 : 2.4375), 0.0, 0.0});
    }
    EXPECT_EQ(corners(steps), (std::vector<int>{0, 16, 39}));

    ink::Hand hand(30);
    std::vector<std::size_t> lengths(40, 0);
    for (int k = 0; k < rounds(20000); ++k) {
        Path stroke = anyStroke(hand);
        stroke.resize(static_cast<std::size_t>(hand.below(static_cast<int>(stroke.size()) + 1)));
        if (k % 3 == 0) {
            stroke = mapped(stroke, [](const Point2D& p) {
                return Point2D{std::round(p.x / 16.0), std::round(p.y / 16.0)};
            });
        }
        if (k % 50 == 0 && !stroke.empty()) {
            stroke[stroke.size() / 2].x = QUIET_NAN;
        }
        const auto expected = literal::getAnglesFromPath(stroke);
        ASSERT_EQ(corners(stroke), expected);
        ++lengths[expected.size()];
    }
    EXPECT_GT(*std::min_element(lengths.begin() + 2, lengths.begin() + 8), 0U);
}

TEST(Recognizer, MayBeLoadedWhileItRecognises) {
    ink::Hand hand(31);
    TemplatesGraphicsRecognizer recognizer = recognizerWith(hand.strokes(30));
    const auto later = hand.strokes(rounds(400));
    const auto drawn = hand.strokes(40);
    const auto countWorse = [&] {
        int worse = 0;
        std::vector<double> score(drawn.size(), -INF);
        for (int pass = 0; pass < 30; ++pass) {
            for (std::size_t i = 0; i < drawn.size(); ++i) {
                const double before = std::exchange(score[i], recognizer.recognize(drawn[i]).score);
                worse += score[i] < before ? 1 : 0;
            }
        }
        return worse;
    };
    std::array<std::future<int>, 3> readers;
    for (auto& reader : readers) {
        reader = std::async(std::launch::async, countWorse);
    }
    for (const Path& outline : later) {
        recognizer.addTemplate(3, "ellipse", outline);
    }
    for (auto& reader : readers) {
        EXPECT_EQ(reader.get(), 0) << "more templates never lower a score";
    }
    for (const Path& stroke : drawn) {
        EXPECT_TRUE(answersLiterally(recognizer, stroke));
    }
}

}  // namespace

}  // namespace Scrivo::test
