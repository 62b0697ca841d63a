#include "Scrivo/detail/Quadrangle.h"

#include "Scrivo/detail/Edges.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::detail {

namespace {

/// Cosine above which opposite sides count as parallel.
constexpr double PARALLEL_SIDES = 0.95;
/// |cosine| below which adjacent sides count as perpendicular.
constexpr double RIGHT_ANGLE_COSINE = 0.08;
/// Drawing-area units by which an edge may lean and still count as level or
/// upright.
constexpr double LEAN = 1.0;

/// A vector of the same direction and length 1.
Point2D normalised(const Point2D& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y);
    return {v.x / length, v.y / length, 0.0};
}

Point2D moved(const Point2D& p, const Point2D& along, double length) {
    return {p.x + length * along.x, p.y + length * along.y, 0.0};
}

/// The sum of two opposite sides: twice the midline between the other two.
Point2D midline(const Point2D& from, const Point2D& to, const Point2D& from2, const Point2D& to2) {
    return {(to.x - from.x) + (to2.x - from2.x), (to.y - from.y) + (to2.y - from2.y), 0.0};
}

/// Both midlines of a quadrangle: along its sides 0-1 and 3-2, and along 0-3
/// and 1-2. Their cross product is twice the signed double area, so whatever
/// is built along them keeps the orientation of the drawing.
struct Midlines {
    Point2D a;
    Point2D b;

    explicit Midlines(const std::vector<Point2D>& q)
        : a(midline(q[0], q[1], q[3], q[2])), b(midline(q[0], q[3], q[1], q[2])) {}

    /// 1 when b lies counter-clockwise of a, the y axis pointing up; else -1.
    [[nodiscard]] double turn() const { return a.x * b.y - a.y * b.x < 0.0 ? -1.0 : 1.0; }
};

/// Rebuilds a parallelogram from its first corner, with sides of length `dA`
/// along `a` and `dB` along `b`.
void rebuild(std::vector<Point2D>& q, const Point2D& a, double dA, const Point2D& b, double dB) {
    q[1] = moved(q[0], a, dA);
    q[3] = moved(q[0], b, dB);
    q[2] = moved(q[1], b, dB);
}

/// Cosine between the sides of a parallelogram drawn at `cosine`. Up to half of
/// RIGHT_ANGLE_COSINE the angle becomes right, from RIGHT_ANGLE_COSINE on it is
/// kept. In between it changes continuously, so that no corner jumps.
double easedCosine(double cosine) {
    const double lean = std::abs(cosine);
    if (lean >= RIGHT_ANGLE_COSINE) {
        return cosine;
    }
    return std::copysign(std::max(0.0, 2 * lean - RIGHT_ANGLE_COSINE), cosine);
}

/// The sides meet at the angle of the midlines, which depend on all four corners:
/// a single inaccurate corner does not skew the rectangle.
void makeParallelogram(std::vector<Point2D>& q, double dA, double dB) {
    const Midlines midlines(q);
    const Point2D a = normalised(midlines.a);
    const Point2D b = normalised(midlines.b);
    const double turn = midlines.turn();
    // Midway between a and b turned back by a right angle: both sides deviate
    // equally from the right angle.
    const Point2D even = normalised({a.x + turn * b.y, a.y - turn * b.x, 0.0});
    const Point2D across{-turn * even.y, turn * even.x, 0.0};
    const double angle = std::asin(easedCosine(cosine(a, b))) / 2;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    rebuild(q, {c * even.x + s * across.x, c * even.y + s * across.y, 0.0}, dA,
            {c * across.x + s * even.x, c * across.y + s * even.y, 0.0}, dB);
}

/// A level rectangle, each corner on the side of the first on which it was
/// drawn. Moved corners keep their forces.
void makeLevelRectangle(std::vector<Point2D>& q, double dA, double dB) {
    const Point2D origin = q[0];
    q[1].x = q[1].x <= origin.x ? origin.x - dA : origin.x + dA;
    q[1].y = origin.y;
    q[2].x = q[1].x;
    q[2].y = origin.y <= q[2].y ? origin.y + dB : origin.y - dB;
    q[3].x = origin.x;
    q[3].y = q[2].y;
}

/// Direction of the side 0-1 of the rectangle: upright when drawn so, else the
/// mean of all four sides' directions, each counted with its length, the sides
/// 0-3 and 1-2 after a quarter turn. The figure then turns as little as possible,
/// and not at all when its angles are right already.
Point2D rectangleDirection(const std::vector<Point2D>& q, const Midlines& m) {
    if (std::abs(q[1].x - q[0].x) < LEAN) {
        return {0.0, q[1].y < q[0].y ? -1.0 : 1.0, 0.0};
    }
    const double turn = m.turn();
    return normalised({m.a.x + turn * m.b.y, m.a.y - turn * m.b.x, 0.0});
}

void makeTurnedRectangle(std::vector<Point2D>& q, double dA, double dB) {
    const Midlines midlines(q);
    const Point2D a = rectangleDirection(q, midlines);
    const double turn = midlines.turn();
    rebuild(q, a, dA, {-turn * a.y, turn * a.x, 0.0}, dB);
}

void makeFullyParallel(std::vector<Point2D>& q) {
    double dA = singleDistance(q[0], q[1]);
    double dB = singleDistance(q[0], q[3]);
    if (isNearlyOne(dA / dB)) {
        dA = dB = (dA + dB) * 0.5;
    }
    const double lean = cosine(difference(q[1], q[0]), difference(q[3], q[0]));
    if (std::abs(lean) >= RIGHT_ANGLE_COSINE) {
        makeParallelogram(q, dA, dB);
    } else if (std::abs(q[1].y - q[0].y) < LEAN) {
        makeLevelRectangle(q, dA, dB);
    } else {
        makeTurnedRectangle(q, dA, dB);
    }
}

/// The third corner moves onto the parallel to 0-1 through its neighbour 3.
void alignToFirstSide(std::vector<Point2D>& q) {
    const double length = singleDistance(q[3], q[2]);
    if (q[0].x == q[1].x) {
        q[2].x = q[3].x;
        q[2].y = q[0].y <= q[1].y ? q[3].y + length : q[3].y - length;
    } else {
        q[2] = nearer(alongSlope(q[3], slope(q[1], q[0]), length), q[2]);
    }
}

/// The third corner moves onto the parallel to 0-3 through its neighbour 1.
void alignToLastSide(std::vector<Point2D>& q) {
    const double length = singleDistance(q[1], q[2]);
    if (q[0].x == q[3].x) {
        q[2].x = q[1].x;
        q[2].y = q[3].y <= q[0].y ? q[1].y - length : q[1].y + length;
    } else {
        q[2] = nearer(alongSlope(q[1], slope(q[3], q[0]), length), q[2]);
    }
}

}  // namespace

void regulariseQuadrangle(std::vector<Point2D>& corners) {
    auto& q = corners;
    const bool firstPair = cosine(difference(q[1], q[0]), difference(q[2], q[3])) > PARALLEL_SIDES;
    const bool secondPair = cosine(difference(q[2], q[1]), difference(q[3], q[0])) > PARALLEL_SIDES;
    if (firstPair && secondPair) {
        makeFullyParallel(q);
    } else if (firstPair) {
        alignToFirstSide(q);
    } else if (secondPair) {
        alignToLastSide(q);
    }
}

}  // namespace Scrivo::detail
