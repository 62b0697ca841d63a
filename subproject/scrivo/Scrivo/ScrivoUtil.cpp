#include "Scrivo/ScrivoUtil.h"

#include "Scrivo/detail/DrawingArea.h"
#include "Scrivo/detail/Geometry.h"

namespace detail = Scrivo::detail;
using Scrivo::Point2D;

double distance(Point2D a, Point2D b) {
    return detail::singleDistance(a, b);
}

double cosine(Point2D u, Point2D v) {
    return detail::cosine(u, v);
}

Point2D projection(Point2D a, Point2D b, Point2D p) {
    return detail::projection(a, b, p);
}

double direction(Point2D a, Point2D b, Point2D c) {
    return detail::direction(a, b, c);
}

double arc_length(std::vector<Point2D> stroke, std::int64_t i, std::int64_t j) {
    return detail::arcLength(stroke, i, j);
}

Point2D rotationLine(Point2D centre, Point2D p, double angle) {
    return detail::rotatedClockwise(p, centre, angle);
}

bool isSimpleLine(std::vector<Point2D> stroke) {
    return detail::isSimpleLine(stroke);
}

Point2D scaleOfGraph(std::vector<Point2D> stroke) {
    return detail::extentOf(stroke);
}

void boundCheck(std::vector<Point2D>& stroke, float width, float height) {
    detail::moveInside(stroke, width, height);
}

void recover(std::vector<Point2D>& stroke, float width, float height) {
    detail::toFractions(stroke, width, height);
}
