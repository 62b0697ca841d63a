// What the beautifier sees in strokes and what it answers, for the tools that
// train and measure it.
//
//   beautifier_probe features|answers|paths < strokes > table
//
// Input: one stroke a line, "count x y x y ...", in drawing-area units. Output:
// a line of column names, then one line a stroke; for paths the x and y of all
// points in turn, without names.

#include "Beautifier/Beautifier.h"
#include "Beautifier/judge/Features.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
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
    const Evidence evidence = examine(resample(ink, frame), frame.length / frame.extent);
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
    std::printf("%d %zu %.6f %d\n", answer.type, answer.figure.index(), answer.confidence,
                static_cast<int>(answer.reason));
}

void printPath(const Scrivo::Beautifier& beautifier, const Stroke& stroke) {
    for (const Point2D& p : beautifier.beautify(stroke, WIDTH, HEIGHT).path) {
        std::printf("%.4f %.4f ", p.x * WIDTH, p.y * HEIGHT);
    }
    std::printf("\n");
}

using Print = void (*)(const Scrivo::Beautifier&, const Stroke&);

/// Column names and printer of a mode; no printer for an unknown mode.
std::pair<std::string, Print> modeOf(const std::string& name) {
    if (name == "features") {
        return {featureNames(), printFeatures};
    }
    if (name == "answers") {
        return {"type figure confidence reason\n", printAnswer};
    }
    return {"", name == "paths" ? printPath : nullptr};
}

}  // namespace

int main(int argc, char** argv) {
    const auto [names, print] = modeOf(argc == 2 ? argv[1] : "");
    if (print == nullptr) {
        std::fprintf(stderr, "usage: beautifier_probe features|answers|paths < strokes\n");
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
        std::fprintf(stderr, "beautifier_probe: a stroke ends too early or is no number\n");
        return 1;
    }
    return 0;
}
