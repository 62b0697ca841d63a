// As if <windows.h> were included before.
#define NEAR near
#define near

#include <Beautifier/Beautifier.h>
#include <Scrivo/Ellipse.h>
#include <Scrivo/Polygon.h>
#include <Scrivo/Scrivo.h>
#include <Scrivo/ScrivoUtil.h>
#include <Scrivo/TemplatesGraphicsRecognizer.h>
#include <scrivo.h>
#include <string>
#include <utility>

int main() {
    std::vector<Scrivo::Point2D> stroke;
    for (int i = 0; i < 50; ++i) {
        stroke.push_back({0.1 + 0.01 * i, 0.5 + 0.001 * (i % 2), 0.0});
    }
    const auto result = Scrivo::optimizeAStroke(stroke, 1000, 1000, {});
    Scrivo::initScrivo({std::string(TEMPLATES) + "/ellipse.template"});
    const auto& loaded = std::as_const(Scrivo::TemplatesGraphicsRecognizer::getInstance());
    const bool isLine = result.type == Scrivo::FIGURE_LINE && result.path.size() == 21;
    const bool isOneVersion = std::string(scrivo_version()) == SCRIVO_VERSION;
    return isLine && !loaded.allTemplates.empty() && Scrivo::NEAR == 10 && isOneVersion ? 0 : 1;
}
