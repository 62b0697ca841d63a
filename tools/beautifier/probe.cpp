// What the beautifier sees in strokes and what it answers, for the tools that
// train and measure it.
//
//   beautifier_probe features|answers < strokes > table
//
// Input: one stroke a line, "count x y x y ...", in drawing-area units. Output:
// a line of column names, then one line a stroke.

#include "Beautifier/Beautifier.h"
#include "Beautifier/Features.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

using Scrivo::Point2D;
using Stroke = std::vector<Point2D>;

bool readStroke(std::istream& in, Stroke& stroke) {
    std::size_t count = 0;
    if (!(in >> count)) {
        return false;
    }
    stroke.assign(count, {});
    for (Point2D& p : stroke) {
        in >> p.x >> p.y;
    }
    return !in.fail();
}

void printFeatures(const Stroke& stroke) {
    using namespace Scrivo::beautifier;
    const Frame frame = measure(stroke, 1.0, 1.0);
    std::printf("%.9g %.9g %.9g", frame.extent, frame.diagonal,
                frame.length);
    if (!frame.finite || frame.extent <= 0.0) {
        std::printf(" -1\n");
        return;
    }
    const Evidence evidence = examine(resample(stroke, 1.0, 1.0, frame));
    std::printf(" %d", evidence.closed ? 1 : 0);
    for (const double value : featuresOf(evidence)) {
        std::printf(" %.9g", value);
    }
    std::printf("\n");
}

void printFeatureNames() {
    std::printf("extent diagonal length closed");
    for (int i = 0; i < Scrivo::beautifier::FEATURE_COUNT; ++i) {
        std::printf(" %s", Scrivo::beautifier::featureName(i));
    }
    std::printf("\n");
}

void printAnswer(const Scrivo::Beautifier& beautifier, const Stroke& stroke) {
    const Scrivo::Beautified answer = beautifier.beautify(stroke, 1.0, 1.0);
    std::printf("%d %zu %.6f %d\n", answer.type, answer.figure.index(), answer.confidence,
                static_cast<int>(answer.reason));
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc == 2 ? argv[1] : "";
    if (mode != "features" && mode != "answers") {
        std::fprintf(stderr, "usage: beautifier_probe features|answers < strokes\n");
        return 2;
    }
    std::ios::sync_with_stdio(false);
    const Scrivo::Beautifier beautifier;
    if (mode == "features") {
        printFeatureNames();
    } else {
        std::printf("type figure confidence reason\n");
    }
    Stroke stroke;
    while (readStroke(std::cin, stroke)) {
        if (mode == "features") {
            printFeatures(stroke);
        } else {
            printAnswer(beautifier, stroke);
        }
    }
    if (!std::cin.eof()) {
        std::fprintf(stderr, "beautifier_probe: a stroke ends too early or is no number\n");
        return 1;
    }
    return 0;
}
