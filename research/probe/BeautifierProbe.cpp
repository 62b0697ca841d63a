// Features that the beautifier measures and answers that it gives, for the scripts
// that train and evaluate it.
//
//   probe features|answers|paths|plain|kinds < strokes > table
//
// Input: one stroke a line, "count x y x y ...", in drawing-area units. Output:
// a line of column names, then one line a stroke; for paths the x and y of all
// points in turn, without names. `plain` gives the paths of figures that are
// made neither regular nor level. `kinds` gives, for every form of quadrangle and
// each of its possible first edges, the drawing errors that it implies in edges and
// directions (percent) and the largest distance of a corner from that of the free
// fit (percent of the longer side), then the lean (degrees) and that distance when
// it is placed level, both -1 when it leans too far; a stroke without a loop has -1
// everywhere. Columns are named `edges0:SQUARE` and so on.

#include "Beautifier/Beautifier.h"
#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/QuadrangleKinds.h"
#include "Beautifier/judge/Features.h"
#include "Probe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace {

using Scrivo::Point2D;
using Stroke = std::vector<Point2D>;

// Any area will do: the strokes are in its units.
constexpr double WIDTH = 1e4;
constexpr double HEIGHT = 1e4;

bool readStroke(std::istream& in, Stroke& stroke) {
    std::size_t count = 0;
    if (!(in >> count)) {
        return false;
    }
    stroke.assign(count, {});
    for (Point2D& p : stroke) {
        in >> p.x >> p.y;
        p = {p.x / WIDTH, p.y / HEIGHT, 0.0};
    }
    return !in.fail();
}

void printFeatures(const Scrivo::Beautifier& /*beautifier*/, const Stroke& stroke) {
    using namespace Scrivo::beautifier;
    const Ink ink{stroke, WIDTH, HEIGHT};
    const Frame frame = measure(ink);
    std::printf("%.9g %.9g %.9g", frame.extent, frame.diagonal, travel(ink, frame));
    if (!frame.measurable || frame.extent <= 0.0) {
        std::printf(" -1\n");
        return;
    }
    const Evidence evidence = examine(ink, frame);
    std::printf(" %d", evidence.closed ? 1 : 0);
    for (const double value : featuresOf(evidence)) {
        std::printf(" %.9g", value);
    }
    std::printf("\n");
}

std::string featureNames() {
    std::string names = "extent diagonal travel closed";
    for (const std::string_view name : Scrivo::beautifier::FEATURE_NAMES) {
        names += ' ';
        names += name;
    }
    return names + "\n";
}

void printAnswer(const Scrivo::Beautifier& beautifier, const Stroke& stroke) {
    const Scrivo::Beautified answer = beautifier.beautify(stroke, WIDTH, HEIGHT);
    const int subtype = std::visit(
        [](const auto& figure) {
            if constexpr (requires { figure.subtype; }) {
                return static_cast<int>(figure.subtype);
            } else {
                return 0;
            }
        },
        answer.figure);
    std::printf("%d %zu %.6f %d %d\n", answer.type, answer.figure.index(), answer.confidence,
                static_cast<int>(answer.reason), subtype);
}

void printPath(const Scrivo::Beautifier& beautifier, const Stroke& stroke) {
    for (const Point2D& p : beautifier.beautify(stroke, WIDTH, HEIGHT).path) {
        std::printf("%.4f %.4f ", p.x * WIDTH, p.y * HEIGHT);
    }
    std::printf("\n");
}

void printPlainPath(const Scrivo::Beautifier& /*beautifier*/, const Stroke& stroke) {
    static const Scrivo::Beautifier plain({.horizontalVertical = false, .regularFigures = false});
    printPath(plain, stroke);
}

/// Calls `visit(form, errors, placements)` for every form and first edge, the
/// free one last.
template <typename Visit>
void forEachForm(const Scrivo::beautifier::PolygonInk& ink, Visit visit) {
    using namespace Scrivo::beautifier;
    const double maxLean = quadrangleCosts().maxLean;
    const PolygonFit free = fitFreePolygon(ink);
    for (const Candidate& candidate : quadrangleForms()) {
        for (int first = 0; first < candidate.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, candidate.form, first);
            const PolygonFit wider = widerFit(ink, quadrangleForms(), candidate, fit);
            visit(candidate.id, errorsOf(ink, fit, wider, free),
                  placementsOf(ink, &candidate, first, fit, maxLean));
        }
    }
    visit(ANY_QUADRANGLE, FormErrors{}, placementsOf(ink, nullptr, 0, free, maxLean));
}

/// Four edges without points.
Scrivo::beautifier::PolygonInk noInk() {
    Scrivo::beautifier::PolygonInk ink;
    ink.edges = 4;
    return ink;
}

const char* nameOf(Scrivo::beautifier::QuadrangleForm form) {
    using namespace Scrivo::beautifier;
    switch (form) {
        case SQUARE:
            return "SQUARE";
        case STANDING_SQUARE:
            return "STANDING_SQUARE";
        case RECTANGLE:
            return "RECTANGLE";
        case RHOMBUS:
            return "RHOMBUS";
        case PARALLELOGRAM:
            return "PARALLELOGRAM";
        case KITE:
            return "KITE";
        case ISOSCELES_TRAPEZOID:
            return "ISOSCELES_TRAPEZOID";
        case TRAPEZOID:
            return "TRAPEZOID";
        case ANY_QUADRANGLE:
            return "ANY_QUADRANGLE";
    }
    return "";
}

std::string kindColumns() {
    std::string names;
    int i = 0;
    forEachForm(noInk(), [&](int form, const auto&, const auto&) {
        const std::string candidate =
            std::to_string(i++) + ":" +
            nameOf(static_cast<Scrivo::beautifier::QuadrangleForm>(form)) + " ";
        for (const char* column : {"edges", "directions", "move", "lean", "levelMove"}) {
            names += column + candidate;
        }
    });
    return names + "\n";
}

void printKinds(const Scrivo::Beautifier& /*beautifier*/, const Stroke& stroke) {
    using namespace Scrivo::beautifier;
    constexpr double WORST = 99.0;
    const Ink ink{stroke, WIDTH, HEIGHT};
    const Frame frame = measure(ink);
    std::optional<PolygonInk> edges;
    if (frame.measurable && frame.extent > 0.0) {
        const Evidence evidence = examine(ink, frame);
        edges = evidence.closed ? std::optional(inkOf(evidence, 4)) : std::nullopt;
    }
    const PolygonInk any = edges.value_or(noInk());
    forEachForm(any, [&](int, const FormErrors& errors, const Placements& placements) {
        if (!edges) {
            std::printf("-1 -1 -1 -1 -1 ");
            return;
        }
        const auto percent = [&](double value) { return std::min(100.0 * value, WORST); };
        std::printf("%.6g %.6g %.6g ", percent(errors.edges), percent(errors.directions),
                    percent(placements.asDrawn.move));
        if (placements.level) {
            std::printf("%.6g %.6g ", std::abs(placements.level->lean) * 180.0 / std::numbers::pi,
                        percent(placements.level->move));
        } else {
            std::printf("-1 -1 ");
        }
    });
    std::printf("\n");
}

using Print = void (*)(const Scrivo::Beautifier&, const Stroke&);

/// Column names and printer of a mode; no printer for an unknown mode.
std::pair<std::string, Print> modeOf(const std::string& name) {
    if (name == "features") {
        return {featureNames(), printFeatures};
    }
    if (name == "answers") {
        return {"type figure confidence reason subtype\n", printAnswer};
    }
    if (name == "kinds") {
        return {kindColumns(), printKinds};
    }
    if (name == "plain") {
        return {"", printPlainPath};
    }
    return {"", name == "paths" ? printPath : nullptr};
}

}  // namespace

int probe::beautifier(const std::string& mode) {
    const auto [names, print] = modeOf(mode);
    if (print == nullptr) {
        return 2;
    }
    std::ios::sync_with_stdio(false);
    std::fputs(names.c_str(), stdout);
    const Scrivo::Beautifier beautifier;
    Stroke stroke;
    while (readStroke(std::cin, stroke)) {
        print(beautifier, stroke);
    }
    if (!std::cin.eof()) {
        std::fprintf(stderr, "probe: a stroke ends too early or is no number\n");
        return 1;
    }
    return 0;
}
