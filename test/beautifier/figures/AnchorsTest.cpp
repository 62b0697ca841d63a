#include "Answers.h"
#include "Beautifier/figures/Anchors.h"

#include <gtest/gtest.h>
#include <set>

namespace Scrivo::test {

namespace {

using namespace beautifier;
using curves::Path;
using curves::polyline;
using curves::sample;

const std::set<AnchorSort> ALL_SORTS{AnchorSort::END, AnchorSort::CORNER, AnchorSort::CENTRE};

/// Marks of `stroke` near a long line that starts at `from`.
std::vector<Vec> marksAt(Vec from, const Path& stroke,
                         const std::set<AnchorSort>& sorts = ALL_SORTS) {
    const std::vector<Path> strokes{stroke};
    return anchorsNear({from, from + Vec{500, 500}}, {strokes, 1, 1}, sorts);
}

void expectMark(Vec at, const Path& stroke, AnchorSort sort) {
    const std::vector<Vec> marks = marksAt(at + Vec{3, 4}, stroke, {sort});
    ASSERT_EQ(marks.size(), 1U) << at.x << ", " << at.y;
    EXPECT_LT(norm(marks[0] - at), 0.5) << marks[0].x << ", " << marks[0].y;
}

TEST(Anchors, AreCornersAndCentreOfClosedStrokes) {
    const Path square =
        sample(polyline({{200, 200}, {300, 200}, {300, 300}, {200, 300}, {200, 200}}), 160);
    for (const Vec corner : {Vec{200, 200}, Vec{300, 200}, Vec{300, 300}, Vec{200, 300}}) {
        expectMark(corner, square, AnchorSort::CORNER);
        EXPECT_TRUE(marksAt(corner, square, {AnchorSort::END, AnchorSort::CENTRE}).empty());
    }
    expectMark({250, 250}, square, AnchorSort::CENTRE);
    EXPECT_TRUE(marksAt({250, 200}, square).empty()) << "the middle of an edge";
}

TEST(Anchors, AreEndsAndBendOfOpenStrokes) {
    const Path angle = sample(polyline({{200, 200}, {300, 200}, {300, 320}}), 111);
    expectMark({200, 200}, angle, AnchorSort::END);
    expectMark({300, 320}, angle, AnchorSort::END);
    expectMark({300, 200}, angle, AnchorSort::CORNER);
    EXPECT_TRUE(marksAt({300, 200}, angle, {AnchorSort::END}).empty());
    EXPECT_TRUE(marksAt({311, 320}, angle).empty()) << "out of reach";
}

TEST(Anchors, OfLettersAreTheirCentresAndOfUnknownInkNone) {
    const Path letter{{200, 200}, {218, 200}};
    EXPECT_TRUE(marksAt({200, 200}, letter, {AnchorSort::END, AnchorSort::CORNER}).empty());
    expectMark({209, 200}, letter, AnchorSort::CENTRE);
    EXPECT_TRUE(marksAt({200, 200}, {{200, 200}, {NAN, 300}}).empty());
    EXPECT_TRUE(marksAt({200, 200}, {}).empty());
}

}  // namespace

}  // namespace Scrivo::test
