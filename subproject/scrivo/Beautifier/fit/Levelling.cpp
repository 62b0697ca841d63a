#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Scrivo::beautifier {

namespace {

/// Makes coordinates equal that differ by rounding only.
void unify(std::span<Vec> corners, double Vec::*coordinate, double size) {
    constexpr double ROUNDING = 1e-12;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            if (std::abs(corners[i].*coordinate - corners[k].*coordinate) < ROUNDING * size) {
                corners[i].*coordinate = corners[k].*coordinate;
                break;
            }
        }
    }
}

Vec meanOf(std::span<const Vec> points) {
    Vec sum;
    for (const Vec& p : points) {
        sum = sum + p;
    }
    return (1.0 / static_cast<double>(points.size())) * sum;
}

double leanOf(Vec along) {
    return lean(std::atan2(along.y, along.x));
}

/// Makes the end of a leg exactly level with the vertex or exactly above or below it.
void straightenLeg(Vec& end, Vec vertex) {
    const Vec along = end - vertex;
    double Vec::*const across = std::abs(along.x) > std::abs(along.y) ? &Vec::y : &Vec::x;
    end.*across = vertex.*across;
}

}  // namespace

double lean(double direction) {
    constexpr double QUARTER = std::numbers::pi / 2.0;
    return direction - QUARTER * std::round(direction / QUARTER);
}

double leastLean(std::span<const Vec> corners) {
    double least = std::numbers::pi;
    for (std::size_t k = 0; k < corners.size(); ++k) {
        const Vec edge = corners[(k + 1) % corners.size()] - corners[k];
        const double angle = leanOf(edge);
        least = std::abs(angle) < std::abs(least) ? angle : least;
    }
    return least;
}

Vec turned(Vec p, Vec centre, double angle) {
    const Vec d = p - centre;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return centre + Vec{c * d.x - s * d.y, s * d.x + c * d.y};
}

void level(std::span<Vec> corners, double axis) {
    const Vec centre = meanOf(corners);
    const double turn = lean(axis);
    for (Vec& p : corners) {
        p = turned(p, centre, -turn);
    }
    settle(corners);
}

void settle(std::span<Vec> corners) {
    const Vec centre = meanOf(corners);
    double size = 0.0;
    for (const Vec& p : corners) {
        size = std::max(size, norm(p - centre));
    }
    unify(corners, &Vec::x, size);
    unify(corners, &Vec::y, size);
}

void levelLegs(std::span<Vec, 3> points, double maxLean) {
    const std::array leans{leanOf(points[0] - points[1]), leanOf(points[2] - points[1])};
    const bool isFirst = std::abs(leans[0]) <= std::abs(leans[1]);
    const double turn = isFirst ? leans[0] : leans[1];
    if (std::abs(turn) > maxLean) {
        return;
    }
    const Vec centre = meanOf(points);
    for (Vec& p : points) {
        p = turned(p, centre, -turn);
    }
    straightenLeg(points[isFirst ? 0 : 2], points[1]);
    Vec& other = points[isFirst ? 2 : 0];
    const double rest = leanOf(other - points[1]);
    if (std::abs(rest) <= maxLean) {
        other = turned(other, points[1], -rest);
        straightenLeg(other, points[1]);
    }
}

}  // namespace Scrivo::beautifier
