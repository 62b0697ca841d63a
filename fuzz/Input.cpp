#include "Input.h"

namespace Scrivo::test::fuzz {

Stroke Input::doubles() {
    Stroke stroke(upTo(15));
    for (Point2D& p : stroke) {
        p.x = anyDouble();
        p.y = anyDouble();
        p.force = flag() ? anyDouble() : 0.0;
    }
    return stroke;
}

/// Every point from the bytes, on a lattice, so that coordinates often coincide.
Stroke Input::scribble() {
    const double step = in(0.0, 20.0);
    const Point2D start = place();
    const auto steps = [this] { return static_cast<double>(upTo(31)) - 16.0; };
    Stroke stroke(upTo(120));
    for (Point2D& p : stroke) {
        p = start + step * Point2D{steps(), steps()};
        p.force = 0.75;
    }
    return stroke;
}

/// A curve as a hand draws it: sampled at some rate, with tremor and jitter.
Stroke Input::shape(const ink::Curve& curve) {
    const double tremor = flag() ? in(0.0, 12.0) : 0.0;
    const double size = flag() ? in(0.0, 2.0) : 0.0;
    const int count = 2 + static_cast<int>(upTo(150));
    Random random(byte());
    Stroke stroke = ink::sample(ink::shaky(curve, tremor), count);
    for (Point2D& p : stroke) {
        p = p + random.jitter(size);
    }
    return stroke;
}

Stroke Input::stroke() {
    switch (upTo(3)) {
        case 0:
            return doubles();
        case 1:
            return scribble();
        case 2: {
            Stroke corners(2 + upTo(5));
            for (Point2D& p : corners) {
                p = place();
            }
            if (flag()) {
                corners.push_back(corners.front());
            }
            return shape(ink::polyline(corners));
        }
        default: {
            const double a = in(0.0, 300.0);
            const double b = in(0.0, 300.0);
            return shape(ink::ellipse(a, b, in(-PI, PI)));
        }
    }
}

std::vector<Stroke> Input::others() {
    std::vector<Stroke> all(upTo(3));
    for (Stroke& other : all) {
        other = stroke();
    }
    return all;
}

BeautifierOptions Input::options() {
    BeautifierOptions options;
    const unsigned unwanted = byte();
    std::erase_if(options.figures, [&](FigureFamily family) {
        return ((unwanted >> static_cast<unsigned>(family)) & 1U) != 0;
    });
    options.minSize = flag() ? in(0.0, 100.0) : 0.0;
    options.tapSize = flag() ? in(0.0, 40.0) : 4.0;
    options.sensitivity = in(0.0, 1.0);
    const unsigned off = byte();
    const auto isOn = [off](unsigned bit) { return ((off >> bit) & 1U) == 0; };
    options.horizontalVertical = isOn(0);
    options.regularFigures = isOn(1);
    options.nearbyStrokes = isOn(2);
    options.insideArea = isOn(3);
    std::erase_if(options.anchors,
                  [&](AnchorSort sort) { return !isOn(4 + static_cast<unsigned>(sort)); });
    return options;
}

}  // namespace Scrivo::test::fuzz
