// The index and the plain search must agree in the match and the bits of its distance.

#include "MixedTemplates.h"
#include "Scrivo/detail/TemplateIndex.h"

#include <memory>

namespace Scrivo::test {

namespace {

using detail::Match;
using detail::matchPlainly;
using detail::STANDARD_SEARCH;
using detail::TemplateIndex;

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
        index.append(std::make_shared<const GraphicTemplate>(t));
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
        if (const auto match = index.matchQuickly(path)) {
            ++answered;
            EXPECT_TRUE(sameMatch(*match, matchPlainly(path, templates, STANDARD_SEARCH))) << i;
        }
    }
    return answered;
}

TEST(TemplateIndex, FindsTheMatchOfThePlainSearch) {
    ink::Hand hand(21);
    int answered = 0;
    for (int k = 0; k < rounds(240) && !HasFailure(); ++k) {
        answered += compare(hand, mixedTemplates(hand, 1 + hand.below(50)), 50);
    }
    EXPECT_GT(answered, rounds(240) * 40);
    const auto thousands = mixedTemplates(hand, rounds(3000));
    for (auto end = thousands.begin(); thousands.end() - end >= 100 && !HasFailure();) {
        end += 100;
        compare(hand, {thousands.begin(), end}, 1);
    }
}

/// Turned so that the first two distances to `t` are equal up to rounding: the last
/// bits decide in which half the search continues.
Path tiedPath(const Path& path, const Path& t) {
    const TemplatesGraphicsRecognizer recogniser;
    const double angle = (2.0 * STANDARD_SEARCH.goldenRatio - 1.0) * STANDARD_SEARCH.range;
    const auto difference = [&](double turn) {
        const Path turned = recogniser.rotateBy(path, turn);
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
    return recogniser.rotateBy(path, low);
}

TEST(TemplateIndex, LeavesCloseDecisionsToThePlainSearch) {
    ink::Hand hand(32);
    const TemplatesGraphicsRecognizer recogniser;
    const auto shaken = [&](const Path& path) {
        return recogniser.translateToOrigin(mapped(path, [&](const Point2D& p) {
            const double x = p.x + hand.in(-20.0, 20.0);
            return Point2D{x, p.y + hand.in(-20.0, 20.0)};
        }));
    };
    for (int k = 0; k < rounds(400); ++k) {
        const Path outline = recogniser.normalizePath(anyStroke(hand));
        std::vector<GraphicTemplate> templates;
        for (int i = 0; i < 12; ++i) {
            templates.push_back({1, "alike", shaken(outline)});
        }
        Path path = shaken(outline);
        const auto winner = matchPlainly(path, templates, STANDARD_SEARCH).index;
        path = tiedPath(path, templates[static_cast<std::size_t>(winner)].points);
        const auto match = indexOf(templates).matchQuickly(path);
        ASSERT_TRUE(match);
        ASSERT_TRUE(sameMatch(*match, matchPlainly(path, templates, STANDARD_SEARCH))) << k;
    }
}

TEST(TemplateIndex, LetsATemplateWinThatItsBoundsDoNotHoldFor) {
    ink::Hand hand(33);
    const TemplatesGraphicsRecognizer recogniser;
    const Path drawn = recogniser.normalizePath(hand.stroke(ink::Hand::ELLIPSE));
    std::vector<GraphicTemplate> templates{
        {2, "triangle", recogniser.normalizePath(hand.stroke(ink::Hand::TRIANGLE))},
        {3, "far", drawn}};
    templates[1].points[5] = {450.0, 0.0};
    const auto match = indexOf(templates).matchQuickly(drawn);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->index, 1);
}

TEST(TemplateIndex, DeclinesPathsOutsideTheNormalForm) {
    const Path circle =
        TemplatesGraphicsRecognizer().normalizePath(ink::Hand(23).stroke(ink::Hand::ELLIPSE));
    const std::vector<GraphicTemplate> templates{{3, "ellipse", circle}};
    const TemplateIndex index = indexOf(templates);
    EXPECT_TRUE(index.matchQuickly(circle));
    const auto changed = [&](auto change) {
        Path path = circle;
        change(path);
        return index.matchQuickly(path).has_value();
    };
    EXPECT_FALSE(changed([](Path& p) { p.pop_back(); }));
    EXPECT_FALSE(changed([](Path& p) { p.push_back(p.back()); }));
    EXPECT_FALSE(changed([](Path& p) { p[5].x = QUIET_NAN; }));
    EXPECT_FALSE(changed([](Path& p) { p[5].x = 401.0; }));
    EXPECT_FALSE(changed([](Path& p) { p[5].y += 1.0; })) << "off centre";
}

}  // namespace

}  // namespace Scrivo::test
