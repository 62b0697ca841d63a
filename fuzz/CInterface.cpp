#include "Beautifier/Beautifier.h"
#include "Promises.h"
#include "Scrivo/Scrivo.h"
#include "Targets.h"

#include <cstring>
#include <memory>
#include <scrivo.h>

namespace Scrivo::test::fuzz {

namespace {

using OwnedBeautifier = std::unique_ptr<scrivo_beautifier, decltype(&scrivo_beautifier_free)>;
using OwnedAnswer = std::unique_ptr<scrivo_answer, decltype(&scrivo_answer_free)>;

/// Strokes as C callers keep them.
struct CStrokes {
    std::vector<std::vector<scrivo_point>> points;
    std::vector<scrivo_stroke> views;

    explicit CStrokes(const std::vector<Stroke>& strokes) {
        for (const Stroke& stroke : strokes) {
            auto& own = points.emplace_back();
            for (const Point2D& p : stroke) {
                own.push_back({p.x, p.y, p.force});
            }
        }
        for (const auto& own : points) {
            views.push_back({own.data(), own.size()});
        }
    }
};

scrivo_options toC(const BeautifierOptions& options) {
    scrivo_options result{};
    scrivo_options_init(&result, sizeof result);
    result.families = 0;
    for (const FigureFamily family : options.figures) {
        result.families |= 1U << static_cast<unsigned>(family);
    }
    result.anchors = 0;
    for (const AnchorSort sort : options.anchors) {
        result.anchors |= 1U << static_cast<unsigned>(sort);
    }
    result.min_size = options.minSize;
    result.tap_size = options.tapSize;
    result.sensitivity = options.sensitivity;
    result.horizontal_vertical = options.horizontalVertical ? 1 : 0;
    result.regular_figures = options.regularFigures ? 1 : 0;
    result.nearby_strokes = options.nearbyStrokes ? 1 : 0;
    result.inside_area = options.insideArea ? 1 : 0;
    return result;
}

/// Options of any bytes, of any size that an older or later caller may state.
void tryAnyOptions(Input& input) {
    std::vector<std::uint8_t> bytes(sizeof(scrivo_options) + 8);
    for (std::uint8_t& byte : bytes) {
        byte = input.byte();
    }
    const std::size_t size = sizeof(std::size_t) + input.upTo(bytes.size() - sizeof(std::size_t));
    std::memcpy(bytes.data(), &size, sizeof size);
    bytes.resize(size);
    bytes.shrink_to_fit();  // a read beyond the stated size is one beyond the heap's block
    scrivo_beautifier* made = nullptr;
    const scrivo_status status =
        scrivo_beautifier_create(reinterpret_cast<const scrivo_options*>(bytes.data()), &made);
    const OwnedBeautifier owned(made, scrivo_beautifier_free);
    require((status == SCRIVO_OK) == (made != nullptr), "a failure leaves the result as it was");
    require(status == SCRIVO_OK || status == SCRIVO_INVALID_ARGUMENT, "the status is documented");
    require(status == SCRIVO_OK || *scrivo_error() != '\0', "a failure has a message");
}

scrivo_result readAnswer(scrivo_status status, const scrivo_answer* answer) {
    require(status == SCRIVO_OK && answer != nullptr, "every stroke has an answer");
    scrivo_result result{};
    result.size = sizeof result;
    require(scrivo_answer_read(answer, &result) == SCRIVO_OK, "answers can be read");
    return result;
}

/// The shared library has templates of its own.
bool loadTemplates() {
    const std::vector<std::string> files = templateFiles();
    std::vector<const char*> paths(files.size());
    std::transform(files.begin(), files.end(), paths.begin(),
                   [](const std::string& file) { return file.c_str(); });
    return scrivo_load_templates(paths.data(), paths.size()) == SCRIVO_OK && initScrivo(files);
}

bool isPath(const scrivo_result& result, const Stroke& path) {
    return std::equal(result.path, result.path + result.path_count, path.begin(), path.end(),
                      [](const scrivo_point& p, const Point2D& q) {
                          return sameBits(p.x, q.x) && sameBits(p.y, q.y) &&
                                 sameBits(p.force, q.force);
                      });
}

}  // namespace

void cInterface(Bytes bytes) {
    static const bool IS_LOADED = loadTemplates();
    require(IS_LOADED, "templates can be loaded");
    Input input(bytes);
    const BeautifierOptions options = input.options();
    const Area area(input);
    const Stroke stroke = area.fractionsOf(input.stroke());
    const std::vector<Stroke> others = input.others();
    tryAnyOptions(input);

    const CStrokes drawn({stroke});
    const CStrokes around(others);
    const scrivo_options given = toC(options);
    scrivo_beautifier* made = nullptr;
    require(scrivo_beautifier_create(&given, &made) == SCRIVO_OK, "options are accepted");
    const OwnedBeautifier beautifier(made, scrivo_beautifier_free);

    scrivo_answer* answer = nullptr;
    scrivo_status status = scrivo_beautify(made, drawn.views.front(), area.width, area.height,
                                           around.views.data(), around.views.size(), &answer);
    const OwnedAnswer beautified(answer, scrivo_answer_free);
    const Beautified expected =
        Beautifier(options).beautify(stroke, area.width, area.height, others);
    const scrivo_result result = readAnswer(status, answer);
    require(result.type == expected.type && sameBits(result.confidence, expected.confidence) &&
                result.alternative_count == expected.alternatives.size() &&
                isPath(result, expected.path),
            "both interfaces of the beautifier have the same answer");

    status = scrivo_optimize(drawn.views.front(), area.width, area.height, around.views.data(),
                             around.views.size(), &answer);
    const OwnedAnswer optimized(answer, scrivo_answer_free);
    const StrokeResult matched = Scrivo::optimizeAStroke(stroke, static_cast<float>(area.width),
                                                         static_cast<float>(area.height), others);
    const scrivo_result found = readAnswer(status, answer);
    require(found.type == matched.type && isPath(found, matched.path),
            "both interfaces of the template engine have the same answer");
}

}  // namespace Scrivo::test::fuzz
