// Intermediate results of the template engine, for the pictures in docs/.
//
//   probe pictures TEMPLATE_FILE... < tasks > findings
//
// Input: a JSON array of {"stroke": [[x, y], ...], "others": [stroke, ...]}, in
// drawing-area units. Output: an array of objects with, in the same units,
//
//   type, path   the answer of the pipeline
//   corners      of the corner scan
//   normal       the stroke in the form in which it is compared
//   match        where a template was found: its `points`, the `distance`, and
//                `visited`, the angles of the rotation search with their distances,
//                beside `rotations`, the same on an even grid
//
// A task {"corners": [four of them]} asks for one thing only: the regular
// quadrangle's `corners`.

#include "Probe.h"
#include "Scrivo/Polygon.h"
#include "Scrivo/Scrivo.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"
#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/RotationSearch.h"

#include <cstddef>
#include <iostream>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace {

using nlohmann::json;
using Scrivo::GraphicTemplate;
using Scrivo::Point2D;
using Scrivo::detail::RotationSearch;
using Scrivo::detail::SearchInterval;
using Stroke = std::vector<Point2D>;

// Any area will do: the strokes are in its units. A power of two keeps their bits.
constexpr float SIDE = 8192.0F;
constexpr int GRID = 720;

Stroke readStroke(const json& points, double unit) {
    Stroke stroke;
    for (const json& point : points) {
        stroke.push_back({point.at(0).get<double>() / unit, point.at(1).get<double>() / unit, 0.0});
    }
    return stroke;
}

json written(const Stroke& stroke, double unit = 1.0) {
    json points = json::array();
    for (const Point2D& p : stroke) {
        points.push_back({p.x * unit, p.y * unit});
    }
    return points;
}

/// Every angle that the search meets, in the order in which it meets them.
json visitedAngles(const Stroke& normal, const Stroke& points, const RotationSearch& search) {
    const auto at = [&](double angle) {
        return Scrivo::detail::distanceAtAngle(normal, points, angle);
    };
    json visited = json::array();
    const auto visit = [&](double angle) { visited.push_back({angle, at(angle)}); };
    auto interval = SearchInterval::first(search);
    visit(interval.x1);
    visit(interval.x2);
    while (interval.isOpen(search)) {
        const bool goesLeft = at(interval.x1) < at(interval.x2);
        interval =
            goesLeft ? interval.left(search.goldenRatio) : interval.right(search.goldenRatio);
        visit(goesLeft ? interval.x1 : interval.x2);
    }
    return visited;
}

json describeMatch(const Scrivo::TemplatesGraphicsRecognizer& recogniser, const Stroke& normal,
                   int id) {
    const auto& list = id == 3 ? recogniser.ellipseTemplates : recogniser.polygonTemplates;
    const std::vector<GraphicTemplate> templates(list.begin(), list.end());
    const RotationSearch search{recogniser.angleRange, recogniser.anglePrecision,
                                recogniser.goldenRatio};
    const auto match = Scrivo::detail::matchPlainly(normal, templates, search);
    const Stroke& points = templates.at(static_cast<std::size_t>(match.index)).points;
    json rotations = json::array();
    for (int i = 0; i <= GRID; ++i) {
        const double angle = search.range * (2.0 * i / GRID - 1.0);
        rotations.push_back({angle, Scrivo::detail::distanceAtAngle(normal, points, angle)});
    }
    return {{"points", written(points)},
            {"distance", match.distance},
            {"visited", visitedAngles(normal, points, search)},
            {"rotations", rotations}};
}

json examine(const json& task) {
    if (task.contains("corners")) {
        Stroke corners = readStroke(task.at("corners"), 1.0);
        Scrivo::regularQuadrangle(corners);
        return {{"corners", written(corners)}};
    }
    const Stroke stroke = readStroke(task.at("stroke"), 1.0);
    std::vector<Stroke> others;
    for (const json& other : task.value("others", json::array())) {
        others.push_back(readStroke(other, SIDE));
    }
    const auto answer =
        Scrivo::optimizeAStroke(readStroke(task.at("stroke"), SIDE), SIDE, SIDE, others);
    const auto corners =
        Scrivo::detail::findCorners(stroke, std::numeric_limits<std::size_t>::max());
    const auto& recogniser = Scrivo::TemplatesGraphicsRecognizer::getInstance();
    const Stroke normal = recogniser.normalizePath(stroke);
    const auto found = recogniser.recognize(stroke);
    json result{{"type", answer.type},
                {"path", written(answer.path, SIDE)},
                {"corners", written(corners)},
                {"normal", written(normal)}};
    if (found.id != 0) {
        result["match"] = describeMatch(recogniser, normal, found.id);
        result["match"]["score"] = found.score;
    }
    return result;
}

}  // namespace

int probe::pictures(const std::vector<std::string>& templateFiles) {
    Scrivo::initScrivo(templateFiles);
    json findings = json::array();
    for (const json& task : json::parse(std::cin)) {
        findings.push_back(examine(task));
    }
    std::cout << findings << '\n';
    return 0;
}
