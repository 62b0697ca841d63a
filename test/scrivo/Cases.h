#pragma once

#include "Scrivo/Scrivo.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

/// The strokes in test/cases, which the tests of the package read too.
namespace Scrivo::test {

/// A stroke and what it should become; see test/cases/make.js.
struct FigureCase {
    std::string name;
    float width = 0.0F;
    float height = 0.0F;
    std::vector<Point2D> path;
    std::vector<std::vector<Point2D>> others;
    std::int32_t type = FIGURE_NONE;
    /// Nothing: as drawn.
    std::optional<std::vector<Point2D>> points;
    /// In drawing-area units.
    double tolerance = 0.0;
};

inline FigureCase readCase(const std::filesystem::path& file) {
    const auto json = nlohmann::json::parse(std::ifstream(file));
    const auto pointsOf = [](const nlohmann::json& list) {
        std::vector<Point2D> points;
        for (const auto& p : list) {
            points.push_back({p.at(0), p.at(1), p.size() > 2 ? p.at(2).get<double>() : 0.0});
        }
        return points;
    };
    FigureCase c;
    c.name = json.at("name");
    c.width = json.at("width");
    c.height = json.at("height");
    c.path = pointsOf(json.at("path"));
    c.type = json.at("type");
    c.tolerance = json.at("tolerance");
    for (const auto& other : json.at("others")) {
        c.others.push_back(pointsOf(other));
    }
    if (!json.at("points").is_null()) {
        c.points = pointsOf(json.at("points"));
    }
    return c;
}

/// All cases, by name, after loading the templates that they need.
inline std::vector<FigureCase> loadCases() {
    const std::filesystem::path folder(SCRIVO_CASES);
    std::vector<std::string> templates;
    for (const char* figure : {"rectangle", "triangle", "isosceles_triangle", "ellipse"}) {
        templates.push_back(folder / "templates" / (std::string(figure) + ".template"));
    }
    initScrivo(templates);
    std::vector<FigureCase> cases;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".json") {
            cases.push_back(readCase(entry.path()));
        }
    }
    std::sort(cases.begin(), cases.end(),
              [](const FigureCase& a, const FigureCase& b) { return a.name < b.name; });
    return cases;
}

inline StrokeResult answerTo(const FigureCase& c) {
    return optimizeAStroke(c.path, c.width, c.height, c.others);
}

}  // namespace Scrivo::test
