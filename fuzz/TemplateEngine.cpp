#include "LiteralRecogniser.h"
#include "Promises.h"
#include "Scrivo/Scrivo.h"
#include "Targets.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace Scrivo::test::fuzz {

namespace {

/// A file that lasts as long as the object.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text) {
        std::ofstream(m_path, std::ios::binary) << text;
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path() const { return m_path.string(); }

private:
    const std::filesystem::path m_path = std::filesystem::temp_directory_path() /
                                         ("scrivo-fuzz-" + std::to_string(getpid()) + ".template");
};

bool isBackwards(const Stroke& a, const Stroke& b) {
    return areSame(Stroke(a.rbegin(), a.rend()), b);
}

/// The answer of the literal form. It needs squared time and gives up where
/// resampling would not end: such strokes are not compared.
void requireLiteralAnswer(const TemplatesGraphicsRecognizer& recogniser, const Stroke& stroke) {
    RecognitionResult expected;
    try {
        expected = literal::recognize(recogniser, stroke);
    } catch (const std::length_error&) {
        return;
    }
    const RecognitionResult actual = recogniser.recognize(stroke);
    require(actual.id == expected.id && actual.name == expected.name &&
                sameBits(actual.score, expected.score),
            "the recogniser gives the answer of the literal form");
}

bool isModerate(const Stroke& stroke) {
    return std::all_of(stroke.begin(), stroke.end(),
                       [](const Point2D& p) { return std::abs(p.x) < 1e6 && std::abs(p.y) < 1e6; });
}

}  // namespace

std::vector<std::string> templateFiles() {
    const std::string folder = SCRIVO_TEMPLATES;
    return {folder + "/rectangle.template", folder + "/triangle.template",
            folder + "/isosceles_triangle.template", folder + "/ellipse.template"};
}

void templateText(Bytes bytes) {
    const TemporaryFile temporary(Input(bytes).text());
    const std::string file = temporary.path();
    const auto pathes = TemplatesGraphicsRecognizerUtil::loadPathes(file);
    require(pathes.size() % 2 == 0, "paths come in pairs");
    for (std::size_t k = 0; k < pathes.size(); k += 2) {
        require(isBackwards(pathes[k], pathes[k + 1]), "the second of a pair runs backwards");
    }
    TemplatesGraphicsRecognizer recogniser;
    recogniser.loadTemplatesFromFile(file, "", "", file);
    const TemplatesGraphicsRecognizer& loaded = recogniser;
    require(loaded.polygonTemplates.size() == loaded.ellipseTemplates.size() &&
                loaded.allTemplates.size() == 2 * loaded.ellipseTemplates.size(),
            "the lists agree");
    static const auto STROKES = ink::Hand(5).strokes(3);
    for (const Stroke& stroke : STROKES) {
        requireLiteralAnswer(loaded, stroke);
    }
}

void optimizeAStroke(Bytes bytes) {
    static const bool IS_LOADED = initScrivo(templateFiles());
    require(IS_LOADED, "templates can be loaded");
    Input input(bytes);
    const Area area(input);
    const Stroke units = input.stroke();
    const Stroke stroke = area.fractionsOf(units);
    const auto width = static_cast<float>(area.width);
    const auto height = static_cast<float>(area.height);
    const std::vector<Stroke> others = input.others();
    const StrokeResult answer = Scrivo::optimizeAStroke(stroke, width, height, others);
    if (answer.type == FIGURE_NONE) {
        require(areSame(answer.path, stroke), "ink comes back bit for bit");
    } else {
        require(isDrawn(answer.path, answer.type) || answer.path.size() == stroke.size(),
                "code and path agree");
    }
    const StrokeResult again =
        onAnotherThread([&] { return Scrivo::optimizeAStroke(stroke, width, height, others); });
    require(again.type == answer.type && areSame(again.path, answer.path),
            "every thread has the same answer");
    if (isModerate(units)) {
        require(!area.isOrdinary() || isFinite(answer.path),
                "moderate strokes have finite answers");
        requireLiteralAnswer(TemplatesGraphicsRecognizer::getInstance(), units);
    }
}

}  // namespace Scrivo::test::fuzz
