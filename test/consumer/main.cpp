#include <Scrivo/Ellipse.h>
#include <Scrivo/Polygon.h>
#include <Scrivo/Scrivo.h>
#include <Scrivo/ScrivoUtil.h>
#include <Scrivo/TemplatesGraphicsRecognizer.h>

int main() {
    std::vector<Scrivo::Point2D> stroke;
    for (int i = 0; i < 50; ++i) {
        stroke.push_back({0.1 + 0.01 * i, 0.5 + 0.001 * (i % 2), 0.0});
    }
    const auto result = Scrivo::optimizeAStroke(stroke, 1000, 1000, {});
    return result.type == Scrivo::FIGURE_LINE && result.path.size() == 21 ? 0 : 1;
}
