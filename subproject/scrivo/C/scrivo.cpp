#include "scrivo.h"

#include "Beautifier/Beautifier.h"
#include "Scrivo/Scrivo.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

struct scrivo_beautifier {
    Scrivo::Beautifier beautifier;
};

struct scrivo_answer {
    std::vector<scrivo_point> path;
    std::vector<scrivo_alternative> alternatives;
    scrivo_result result{};
};

namespace {

using Scrivo::Point2D;
using Points = std::vector<Point2D>;

/// The last error of a thread. An array: a message about memory must not need any.
thread_local std::array<char, 512> lastError{};

scrivo_status fail(scrivo_status status, const char* message) {
    std::strncpy(lastError.data(), message, lastError.size() - 1);
    return status;
}

/// A template file from which nothing can be loaded.
struct NoTemplates : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Runs `body`; turns what it throws into a status and a message.
template <typename Body>
scrivo_status guarded(Body body) noexcept {
    try {
        body();
        return SCRIVO_OK;
    } catch (const std::bad_alloc&) {
        return fail(SCRIVO_OUT_OF_MEMORY, "out of memory");
    } catch (const std::length_error&) {
        return fail(SCRIVO_OUT_OF_MEMORY, "out of memory");
    } catch (const std::invalid_argument& error) {
        return fail(SCRIVO_INVALID_ARGUMENT, error.what());
    } catch (const NoTemplates& error) {
        return fail(SCRIVO_NO_TEMPLATES, error.what());
    } catch (const std::exception& error) {
        return fail(SCRIVO_FAILURE, error.what());
    } catch (...) {
        return fail(SCRIVO_FAILURE, "unknown failure");
    }
}

void require(bool holds, const char* message) {
    if (!holds) {
        throw std::invalid_argument(message);
    }
}

Points pointsOf(const scrivo_stroke& stroke) {
    require(stroke.points != nullptr || stroke.count == 0, "points of a stroke are null");
    Points points;
    points.reserve(stroke.count);
    for (const scrivo_point& p : std::span(stroke.points, stroke.count)) {
        points.push_back({p.x, p.y, p.force});
    }
    return points;
}

std::vector<Points> strokesOf(const scrivo_stroke* strokes, std::size_t count) {
    require(strokes != nullptr || count == 0, "others is null");
    std::vector<Points> result;
    result.reserve(count);
    for (const scrivo_stroke& stroke : std::span(strokes, count)) {
        result.push_back(pointsOf(stroke));
    }
    return result;
}

scrivo_point pointOf(const Point2D& p) {
    return {p.x, p.y, p.force};
}

/// Writes the parameters of a figure, its family and its kind.
struct FigureWriter {
    scrivo_result& result;

    void operator()(std::monostate /*none*/) const { result.family = SCRIVO_NO_FAMILY; }
    void operator()(const Scrivo::DotFigure& dot) const {
        write(SCRIVO_DOT, 0, std::array{dot.centre});
    }
    void operator()(const Scrivo::LineFigure& line) const {
        write(SCRIVO_LINE, 0, std::array{line.from, line.to});
    }
    void operator()(const Scrivo::AngleFigure& angle) const {
        write(SCRIVO_ANGLE, 0, std::array{angle.from, angle.vertex, angle.to});
        result.opening = angle.opening;
    }
    void operator()(const Scrivo::TriangleFigure& triangle) const {
        write(SCRIVO_TRIANGLE, static_cast<std::int32_t>(triangle.subtype), triangle.corners);
    }
    void operator()(const Scrivo::QuadrangleFigure& quadrangle) const {
        write(SCRIVO_QUADRANGLE, static_cast<std::int32_t>(quadrangle.subtype), quadrangle.corners);
    }
    void operator()(const Scrivo::CircleFigure& circle) const {
        writeEllipse(Scrivo::EllipseKind::CIRCLE, circle.centre, {circle.radius, circle.radius}, 0);
    }
    void operator()(const Scrivo::EllipseFigure& ellipse) const {
        writeEllipse(Scrivo::EllipseKind::ELLIPSE, ellipse.centre, ellipse.radii, ellipse.rotation);
    }

private:
    template <std::size_t N>
    void write(std::int32_t family, std::int32_t kind, const std::array<Point2D, N>& points) const {
        static_assert(N <= std::extent_v<decltype(result.points)>);
        result.family = family;
        result.kind = kind;
        std::transform(points.begin(), points.end(), result.points, pointOf);
        result.point_count = N;
    }
    void writeEllipse(Scrivo::EllipseKind kind, const Point2D& centre, const Point2D& radii,
                      double rotation) const {
        write(SCRIVO_ELLIPSE, static_cast<std::int32_t>(kind), std::array{centre});
        result.radius_x = radii.x;
        result.radius_y = radii.y;
        result.rotation = rotation;
    }
};

void setPath(scrivo_answer& answer, const Points& path) {
    answer.path.resize(path.size());
    std::transform(path.begin(), path.end(), answer.path.begin(), pointOf);
    answer.result.path = answer.path.data();
    answer.result.path_count = answer.path.size();
}

/// A new answer, filled in by `write`.
template <typename Write>
scrivo_answer* makeAnswer(Write write) {
    auto answer = std::make_unique<scrivo_answer>();
    answer->result.size = sizeof(scrivo_result);
    answer->result.family = SCRIVO_NO_FAMILY;
    write(*answer);
    return answer.release();
}

void writeBeautified(scrivo_answer& answer, const Scrivo::Beautified& beautified) {
    setPath(answer, beautified.path);
    for (const Scrivo::Alternative& a : beautified.alternatives) {
        answer.alternatives.push_back({static_cast<std::int32_t>(a.family), a.probability});
    }
    scrivo_result& result = answer.result;
    result.type = beautified.type;
    result.reason = static_cast<std::int32_t>(beautified.reason);
    result.confidence = beautified.confidence;
    result.alternatives = answer.alternatives.data();
    result.alternative_count = answer.alternatives.size();
    std::visit(FigureWriter{result}, beautified.figure);
}

/// The members of an enumeration whose bits are set.
template <typename Enumeration>
std::set<Enumeration> membersOf(std::uint32_t bits, std::uint32_t count, const char* message) {
    require(bits >> count == 0, message);
    std::set<Enumeration> members;
    for (std::uint32_t k = 0; k < count; ++k) {
        if ((bits >> k & 1U) != 0) {
            members.insert(static_cast<Enumeration>(k));
        }
    }
    return members;
}

constexpr std::uint32_t FAMILY_COUNT = SCRIVO_ELLIPSE + 1;
constexpr std::uint32_t ANCHOR_COUNT = 3;

scrivo_options defaults() {
    const Scrivo::BeautifierOptions options;
    return {sizeof(scrivo_options),
            (1U << FAMILY_COUNT) - 1,
            (1U << ANCHOR_COUNT) - 1,
            options.minSize,
            options.tapSize,
            options.sensitivity,
            static_cast<std::uint8_t>(options.horizontalVertical),
            static_cast<std::uint8_t>(options.regularFigures),
            static_cast<std::uint8_t>(options.nearbyStrokes),
            static_cast<std::uint8_t>(options.insideArea)};
}

/// The caller's options. Those that an older caller does not know have their defaults.
scrivo_options complete(const scrivo_options* given) {
    scrivo_options options = defaults();
    if (given != nullptr) {
        require(given->size >= sizeof given->size, "options have no size: scrivo_options_init");
        require(given->size <= sizeof options, "options of a later version");
        std::memcpy(&options, given, given->size);
    }
    return options;
}

Scrivo::BeautifierOptions fromC(const scrivo_options& options) {
    return {.figures = membersOf<Scrivo::FigureFamily>(options.families, FAMILY_COUNT,
                                                       "families has unknown bits"),
            .minSize = options.min_size,
            .tapSize = options.tap_size,
            .sensitivity = options.sensitivity,
            .horizontalVertical = options.horizontal_vertical != 0,
            .regularFigures = options.regular_figures != 0,
            .nearbyStrokes = options.nearby_strokes != 0,
            .anchors = membersOf<Scrivo::AnchorSort>(options.anchors, ANCHOR_COUNT,
                                                     "anchors has unknown bits"),
            .insideArea = options.inside_area != 0};
}

bool isNamed(const std::string& path) {
    // Contained in the name of the isosceles triangles too.
    const auto names = {"rectangle.template", "triangle.template", "ellipse.template"};
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return path.find(name) != std::string::npos; });
}

std::string checkedPath(const char* given) {
    require(given != nullptr, "a path is null");
    std::string path = given;
    if (!isNamed(path)) {
        throw std::invalid_argument("not the name of a template file: " + path);
    }
    const auto outlines = Scrivo::TemplatesGraphicsRecognizerUtil::loadPathes(path);
    if (std::all_of(outlines.begin(), outlines.end(), [](const auto& o) { return o.empty(); })) {
        throw NoTemplates("no outlines in " + path);
    }
    return path;
}

}  // namespace

const char* scrivo_version() {
    return SCRIVO_VERSION;
}

const char* scrivo_error() {
    return lastError.data();
}

scrivo_status scrivo_load_templates(const char* const* paths, size_t count) {
    return guarded([&] {
        require(paths != nullptr || count == 0, "paths is null");
        std::vector<std::string> checked(count);
        std::transform(paths, paths + count, checked.begin(), checkedPath);
        Scrivo::initScrivo(std::move(checked));
    });
}

scrivo_status scrivo_optimize(scrivo_stroke stroke, double width, double height,
                              const scrivo_stroke* others, size_t other_count,
                              scrivo_answer** answer) {
    return guarded([&] {
        require(answer != nullptr, "answer is null");
        const Scrivo::StrokeResult result =
            Scrivo::optimizeAStroke(pointsOf(stroke), static_cast<float>(width),
                                    static_cast<float>(height), strokesOf(others, other_count));
        *answer = makeAnswer([&](scrivo_answer& made) {
            setPath(made, result.path);
            made.result.type = result.type;
        });
    });
}

void scrivo_options_init(scrivo_options* options, size_t size) {
    if (options == nullptr || size < sizeof options->size) {
        return;
    }
    scrivo_options all = defaults();
    all.size = std::min(size, sizeof all);
    std::memcpy(options, &all, all.size);
}

scrivo_status scrivo_beautifier_create(const scrivo_options* options,
                                       scrivo_beautifier** beautifier) {
    return guarded([&] {
        require(beautifier != nullptr, "beautifier is null");
        *beautifier = new scrivo_beautifier{Scrivo::Beautifier(fromC(complete(options)))};
    });
}

scrivo_status scrivo_beautify(const scrivo_beautifier* beautifier, scrivo_stroke stroke,
                              double width, double height, const scrivo_stroke* others,
                              size_t other_count, scrivo_answer** answer) {
    return guarded([&] {
        require(beautifier != nullptr, "beautifier is null");
        require(answer != nullptr, "answer is null");
        const Scrivo::Beautified beautified = beautifier->beautifier.beautify(
            pointsOf(stroke), width, height, strokesOf(others, other_count));
        *answer = makeAnswer([&](scrivo_answer& made) { writeBeautified(made, beautified); });
    });
}

scrivo_status scrivo_answer_read(const scrivo_answer* answer, scrivo_result* result) {
    return guarded([&] {
        require(answer != nullptr, "answer is null");
        require(result != nullptr, "result is null");
        require(result->size >= sizeof result->size, "result has no size");
        require(result->size <= sizeof *result, "result of a later version");
        scrivo_result copy = answer->result;
        copy.size = result->size;
        std::memcpy(result, &copy, copy.size);
    });
}

void scrivo_beautifier_free(scrivo_beautifier* beautifier) {
    delete beautifier;
}

void scrivo_answer_free(scrivo_answer* answer) {
    delete answer;
}
