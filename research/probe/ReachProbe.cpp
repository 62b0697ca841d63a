// Which outlines, used as templates, would match a stroke.
//
// Input: {"outlines": [{"id": 1, "points": [[x, y], ...]}, ...], "strokes":
// [[[x, y], ...], ...]}; ids are those of templates, strokes are in drawing-area
// units. Output: an object a stroke,
//
//   group     what it is compared with: none, all, polygons or ellipses
//   reached   indices of the outlines at which it would be recognised
//   left      how much farther away each of them could lie, in units of the
//             reference square
//
// As in a template file, an outline stands for both its directions.

#include "Probe.h"
#include "Scrivo/ScrivoUtil.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"
#include "Scrivo/detail/RotationSearch.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using Scrivo::GraphicTemplate;
using Scrivo::Point2D;
using Scrivo::TemplatesGraphicsRecognizer;
using Stroke = std::vector<Point2D>;

// The limits of the recogniser. A test compares its answers with these reaches.
constexpr double MAX_GAP = 0.15;
constexpr double STRAIGHT_SHARE = 0.5;
constexpr std::size_t MAX_POLYGON_CORNERS = 8;
constexpr std::size_t MAX_ELLIPSE_CORNERS = 7;
constexpr double MIN_SURE_SHARE = 0.66;
constexpr double MIN_SURE_SCORE = 0.83;
constexpr double MIN_SCORE = 0.8;
constexpr int ELLIPSE_ID = 3;

struct Outline {
    int id = 0;
    /// Both directions in normal form; none where there is no such form.
    std::vector<GraphicTemplate> directions;
};

struct Gate {
    std::string group;
    /// Of the straight pieces, or for ellipses of the others.
    double share = 0.0;
};

Stroke readStroke(const json& points) {
    Stroke stroke;
    for (const json& point : points) {
        stroke.push_back({point.at(0).get<double>(), point.at(1).get<double>(), 0.0});
    }
    return stroke;
}

Outline readOutline(const json& outline, const TemplatesGraphicsRecognizer& recogniser) {
    const int id = outline.at("id").get<int>();
    Stroke points = readStroke(outline.at("points"));
    try {
        const Stroke forwards = recogniser.normalizePath(points);
        std::reverse(points.begin(), points.end());
        return {id, {{id, "", forwards}, {id, "", recogniser.normalizePath(points)}}};
    } catch (const std::domain_error&) {
        return {id, {}};
    }
}

bool isClosed(const Stroke& stroke, const TemplatesGraphicsRecognizer& recogniser) {
    if (stroke.size() < 2) {
        return false;
    }
    const double length = recogniser.pathLength(stroke);
    return length > 0.0 &&
           recogniser.getDistance(stroke.back(), stroke.front()) / length <= MAX_GAP;
}

double straightShare(const Stroke& stroke, const std::vector<int>& corners) {
    int straight = 0;
    for (std::size_t k = 0; k + 1 < corners.size(); ++k) {
        const Stroke piece(stroke.begin() + corners[k], stroke.begin() + corners[k + 1] + 1);
        straight += isSimpleLine(piece) ? 1 : 0;
    }
    return static_cast<double>(straight) / static_cast<double>(corners.size() - 1);
}

Gate gateOf(const Stroke& stroke, const TemplatesGraphicsRecognizer& recogniser) {
    if (!isClosed(stroke, recogniser)) {
        return {"none"};
    }
    const auto corners = Scrivo::TemplatesGraphicsRecognizerUtil::getAnglesFromPath(stroke);
    if (corners.size() < 3) {
        return {"all", 1.0};
    }
    const double share = straightShare(stroke, corners);
    const bool isPolygon = share > STRAIGHT_SHARE;
    if (corners.size() > (isPolygon ? MAX_POLYGON_CORNERS : MAX_ELLIPSE_CORNERS)) {
        return {"none"};
    }
    return isPolygon ? Gate{"polygons", share} : Gate{"ellipses", 1.0 - share};
}

/// The largest distance at which the score of a match suffices.
double largestDistance(double share, double halfDiagonal) {
    const double score =
        share < MIN_SURE_SHARE ? MIN_SCORE / share : std::min(MIN_SURE_SCORE, MIN_SCORE / share);
    return std::max(0.0, (1.0 - score) * halfDiagonal);
}

bool isIn(const std::string& group, const Outline& outline) {
    return group == "all" || (group == "ellipses") == (outline.id == ELLIPSE_ID);
}

json coverOf(const Stroke& stroke, const std::vector<Outline>& outlines,
             const TemplatesGraphicsRecognizer& recogniser) {
    const Gate gate = gateOf(stroke, recogniser);
    json cover{{"group", gate.group}, {"reached", json::array()}, {"left", json::array()}};
    const double limit =
        gate.group == "none" ? 0.0 : largestDistance(gate.share, recogniser.halfDiagonal);
    if (limit <= 0.0) {
        return cover;
    }
    const Stroke normal = recogniser.normalizePath(stroke);
    const Scrivo::detail::RotationSearch search{recogniser.angleRange, recogniser.anglePrecision,
                                                recogniser.goldenRatio};
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        if (!isIn(gate.group, outlines[i])) {
            continue;
        }
        const double distance =
            Scrivo::detail::matchPlainly(normal, outlines[i].directions, search).distance;
        if (distance <= limit) {
            cover["reached"].push_back(i);
            cover["left"].push_back(limit - distance);
        }
    }
    return cover;
}

}  // namespace

int probe::reach() {
    const json input = json::parse(std::cin);
    const TemplatesGraphicsRecognizer recogniser;
    std::vector<Outline> outlines;
    for (const json& outline : input.at("outlines")) {
        outlines.push_back(readOutline(outline, recogniser));
    }
    json covers = json::array();
    for (const json& stroke : input.at("strokes")) {
        covers.push_back(coverOf(readStroke(stroke), outlines, recogniser));
    }
    std::cout << covers << '\n';
    return 0;
}
