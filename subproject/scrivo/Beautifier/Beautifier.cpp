#include "Beautifier/Beautifier.h"

#include "Beautifier/figures/Families.h"
#include "Beautifier/fit/Evidence.h"
#include "Beautifier/ink/Outline.h"
#include "Beautifier/judge/Score.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace {

using beautifier::Evidence;
using beautifier::Family;
using beautifier::Frame;
using beautifier::Ideal;
using beautifier::Ink;
using beautifier::Verdict;

// Below this probability a stroke resembles no figure at all.
constexpr double RESEMBLANCE = 0.1;

/// A verdict that needs no fit, where a family has one.
std::optional<Verdict> judgeUnfitted(const Ink& ink, const Frame& frame,
                                     const BeautifierOptions& options) {
    for (const Family& family : beautifier::families()) {
        if (auto verdict = family.judgeUnfitted(ink, frame, options)) {
            return verdict;
        }
    }
    return std::nullopt;
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
    if (!(options.tapSize >= 0.0) || !std::isfinite(options.tapSize)) {
        throw std::invalid_argument("tapSize must be a finite number of at least 0");
    }
    if (!(options.sensitivity >= 0.0 && options.sensitivity <= 1.0)) {
        throw std::invalid_argument("sensitivity must be from 0 to 1");
    }
    for (const FigureFamily family : options.figures) {
        if (beautifier::findFamily(family) == nullptr) {
            throw std::invalid_argument("figures holds a value that is no FigureFamily");
        }
    }
}

}  // namespace

std::set<FigureFamily> allFamilies() {
    std::set<FigureFamily> all;
    for (const Family& family : beautifier::families()) {
        all.insert(family.family);
    }
    return all;
}

Beautifier::Beautifier(BeautifierOptions options) : m_options(std::move(options)) {
    check(m_options);
}

Beautified Beautifier::beautify(std::span<const Point2D> stroke, double width, double height,
                                std::span<const std::vector<Point2D>> others) const {
    const Ink ink{stroke, width, height};
    const Frame frame = beautifier::measure(ink);
    if (!frame.measurable || !(width > 0.0) || !(height > 0.0)) {
        return asDrawn(stroke, Reason::INVALID, 1.0);
    }
    if (frame.extent < m_options.minSize) {
        return asDrawn(stroke, Reason::TOO_SMALL, 1.0);
    }
    Evidence evidence;
    std::optional<Verdict> verdict = judgeUnfitted(ink, frame, m_options);
    if (!verdict) {
        evidence = beautifier::examine(beautifier::resample(ink, frame),
                                       frame.length / frame.extent);
        verdict = beautifier::judge(evidence);
    }
    const Reason reason = objection(*verdict, m_options);
    if (reason != Reason::RECOGNISED) {
        const bool isJudged = reason != Reason::NOT_WANTED;
        return asDrawn(stroke, reason, isJudged ? 1.0 - verdict->probability() : 1.0);
    }
    const Family& family = *beautifier::findFamily(verdict->family);
    const bool snaps = family.snaps && m_options.nearbyStrokes;
    const auto anchors = snaps ? anchorsOf(others, width, height) : std::vector<Point2D>();
    Ideal ideal = family.idealise({frame, evidence, m_options, anchors});
    if (m_options.insideArea && family.staysInside) {
        beautifier::moveInside(ideal, width, height);
    }
    // A figure in an area of next to no width may have no finite fractions of it.
    std::vector<Point2D> path = fractionsOf(std::move(ideal.outline), width, height);
    if (!isFinite(path)) {
        return asDrawn(stroke, Reason::INVALID, 1.0);
    }
    return {std::move(path), family.code, verdict->probability(), ideal.figure, Reason::RECOGNISED};
}

}  // namespace Scrivo
