// What the beautifier sees in strokes and what it answers, for the tools that
// train and measure it.
//
//   probe features|answers|paths|plain|kinds < strokes > table
//
// Input: one stroke a line, "count x y x y ...", in drawing-area units. Output:
// a line of column names, then one line a stroke; for paths the x and y of all
// points in turn, without names. `plain` gives the paths of figures that are
// made neither regular nor level. `kinds` gives of every kind of quadrangle, by
// each of its possible first edges, what hands would have to err in edges and
// directions (percent), how far it leans (degrees) and how far its worst corner
// lies from that of the free fit once it is level (percent of the longer side);
// a stroke without a loop has -1 everywhere.

#include "Beautifier/Beautifier.h"
#include "Beautifier/figures/PolygonFit.h"
#include "Beautifier/figures/QuadrangleKinds.h"
#include "Beautifier/fit/Levelling.h"
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

// Any area does: the strokes come in its units.
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

using Quadrangle = std::array<Scrivo::beautifier::Vec, 4>;

/// Calls `visit(kind, fit, errors)` for every kind and first edge, the free one
/// last.
template <typename Visit>
void forEachKind(const Scrivo::beautifier::PolygonInk& ink, Visit visit) {
    using namespace Scrivo::beautifier;
    const PolygonFit free = fitFreePolygon(ink);
    for (const Kind& kind : quadrangleKinds()) {
        for (int first = 0; first < kind.firsts; ++first) {
            const PolygonFit fit = fitPolygon(ink, kind.rule, first);
            const PolygonFit wider = widerFit(ink, quadrangleKinds(), kind, fit);
            visit(kind.name, fit, errorsOf(ink, fit, wider, free));
        }
    }
    visit(ANY_QUADRANGLE, free, KindErrors{});
}

/// Four edges without ink.
Scrivo::beautifier::PolygonInk noInk() {
    Scrivo::beautifier::PolygonInk ink;
    ink.edges = 4;
    return ink;
}

std::string kindNames() {
    std::string names;
    int i = 0;
    forEachKind(noInk(), [&](int kind, const auto&, const auto&) {
        const std::string number = std::to_string(i++) + ":" + std::to_string(kind);
        for (const char* name : {"edges", "directions", "lean", "moved"}) {
            names += name + number + " ";
        }
    });
    return names + "\n";
}

double worstMove(const Quadrangle& from, Scrivo::beautifier::PolygonFit to) {
    using namespace Scrivo::beautifier;
    constexpr double ANY_LEAN = 0.15;
    double worst = 0.0;
    level(to.corners, to.axis, ANY_LEAN);
    for (std::size_t i = 0; i < from.size(); ++i) {
        worst = std::max(worst, norm(to.corners[i] - from[i]));
    }
    return worst;
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
    const PolygonFit free = fitFreePolygon(any);
    forEachKind(any, [&](int, const PolygonFit& fit, const KindErrors& errors) {
        const auto percent = [&](double value) { return std::min(100.0 * value, WORST); };
        if (!edges) {
            std::printf("-1 -1 -1 -1 ");
            return;
        }
        std::printf("%.6g %.6g %.6g %.6g ", percent(errors.edges), percent(errors.directions),
                    std::abs(lean(fit.axis)) * 180.0 / std::numbers::pi,
                    percent(worstMove(free.corners, fit)));
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
        return {kindNames(), printKinds};
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
