#include "Beautifier/Beautifier.h"

#include "Beautifier/Evidence.h"
#include "Beautifier/Idealise.h"
#include "Beautifier/Score.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace {

using beautifier::Frame;
using beautifier::Ideal;
using beautifier::Verdict;

// Below this probability a stroke resembles no figure at all.
constexpr double RESEMBLANCE = 0.1;

std::int32_t codeOf(FigureFamily family) {
    switch (family) {
        case FigureFamily::DOT:
            return FIGURE_POINT;
        case FigureFamily::LINE:
            return FIGURE_LINE;
        case FigureFamily::ANGLE:
            return FIGURE_ANGLE;
        case FigureFamily::TRIANGLE:
        case FigureFamily::QUADRANGLE:
            return FIGURE_POLYGON;
        case FigureFamily::ELLIPSE:
            return FIGURE_ELLIPSE;
    }
    return FIGURE_NONE;
}

Beautified asDrawn(std::span<const Point2D> stroke, Reason reason, double confidence) {
    Beautified answer;
    answer.path.assign(stroke.begin(), stroke.end());
    answer.reason = reason;
    answer.confidence = confidence;
    return answer;
}

/// Centroids of the samples in drawing-area units; empty strokes and those with
/// coordinates that are no finite numbers have none.
std::vector<Point2D> anchorsOf(std::span<const std::vector<Point2D>> strokes, double width,
                               double height) {
    std::vector<Point2D> anchors;
    for (const auto& stroke : strokes) {
        Point2D sum;
        for (const Point2D& p : stroke) {
            sum.x += p.x * width;
            sum.y += p.y * height;
        }
        const auto n = static_cast<double>(stroke.size());
        if (std::isfinite(sum.x / n) && std::isfinite(sum.y / n)) {
            anchors.push_back({sum.x / n, sum.y / n, 0.0});
        }
    }
    return anchors;
}

std::vector<Point2D> fractionsOf(std::vector<Point2D> outline, double width, double height) {
    for (Point2D& p : outline) {
        p = {p.x / width, p.y / height, 0.0};
    }
    return outline;
}

bool isFinite(const std::vector<Point2D>& path) {
    return std::all_of(path.begin(), path.end(),
                       [](const Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

Beautified answerWith(std::vector<Point2D> path, const Figure& figure, const Verdict& verdict) {
    Beautified answer;
    answer.path = std::move(path);
    answer.figure = figure;
    answer.type = codeOf(verdict.family);
    answer.confidence = verdict.probability();
    answer.reason = Reason::RECOGNISED;
    return answer;
}

/// Why a stroke with this verdict stays ink, if it does.
Reason objection(const Verdict& verdict, const BeautifierOptions& options) {
    if (!(verdict.logit + beautifier::thresholdShift(options.sensitivity) > verdict.threshold)) {
        return verdict.probability() < RESEMBLANCE ? Reason::NO_FIGURE : Reason::NOT_SURE;
    }
    const bool wanted = options.figures.count(verdict.family) > 0;
    return wanted ? Reason::RECOGNISED : Reason::NOT_WANTED;
}

void check(const BeautifierOptions& options) {
    if (!(options.minSize >= 0.0) || !std::isfinite(options.minSize)) {
        throw std::invalid_argument("minSize must be a finite number of at least 0");
    }
    if (!(options.sensitivity >= 0.0 && options.sensitivity <= 1.0)) {
        throw std::invalid_argument("sensitivity must be from 0 to 1");
    }
    for (const FigureFamily family : options.figures) {
        if (codeOf(family) == FIGURE_NONE) {
            throw std::invalid_argument("figures holds a value that is no FigureFamily");
        }
    }
}

}  // namespace

Beautifier::Beautifier(BeautifierOptions options) : m_options(std::move(options)) {
    check(m_options);
}

Beautified Beautifier::beautify(std::span<const Point2D> stroke, double width, double height,
                                std::span<const std::vector<Point2D>> others) const {
    const Frame frame = beautifier::measure(stroke, width, height);
    if (!frame.measurable || !(width > 0.0) || !(height > 0.0)) {
        return asDrawn(stroke, Reason::INVALID, 1.0);
    }
    if (frame.extent < m_options.minSize) {
        return asDrawn(stroke, Reason::TOO_SMALL, 1.0);
    }
    const bool wantsDots = m_options.figures.count(FigureFamily::DOT) > 0;
    std::optional<Verdict> verdict = beautifier::judgeDot(stroke, width, height, frame, wantsDots);
    std::optional<beautifier::Evidence> evidence;
    if (!verdict) {
        evidence = beautifier::examine(beautifier::resample(stroke, width, height, frame),
                                       frame.length / frame.extent);
        verdict = beautifier::judge(*evidence);
    }
    const Reason reason = objection(*verdict, m_options);
    if (reason != Reason::RECOGNISED) {
        const bool isJudged = reason != Reason::NOT_WANTED;
        return asDrawn(stroke, reason, isJudged ? 1.0 - verdict->probability() : 1.0);
    }
    const bool snaps = verdict->family == FigureFamily::LINE && m_options.nearbyStrokes;
    const auto anchors = snaps ? anchorsOf(others, width, height) : std::vector<Point2D>();
    Ideal ideal = evidence ? idealFigure(verdict->family, *evidence, frame, m_options, anchors)
                           : beautifier::idealDot({frame.centre.x, frame.centre.y, 0.0});
    if (m_options.insideArea && verdict->family != FigureFamily::LINE) {
        beautifier::moveInside(ideal, width, height);
    }
    // A figure in an area of next to no width may have no finite fractions of it.
    std::vector<Point2D> path = fractionsOf(std::move(ideal.outline), width, height);
    return isFinite(path) ? answerWith(std::move(path), ideal.figure, *verdict)
                          : asDrawn(stroke, Reason::INVALID, 1.0);
}

}  // namespace Scrivo
