#include "Beautifier/Beautifier.h"

#include "Beautifier/figures/Families.h"
#include "Beautifier/fit/Evidence.h"
#include "Beautifier/ink/Resampling.h"
#include "Beautifier/judge/Score.h"
#include "Common/Failure.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace {

using beautifier::Box;
using beautifier::Evidence;
using beautifier::Family;
using beautifier::Fitted;
using beautifier::Frame;
using beautifier::Ink;
using beautifier::Verdict;

// Below this probability a stroke resembles no figure at all.
constexpr double RESEMBLANCE = 0.1;

// Alternatives below this probability are not worth offering.
constexpr double MIN_PROBABILITY = 0.01;

/// Whether a box in fractions spreads over at most 50 sides of the drawing area. That of a
/// stroke in pixels instead of fractions does not, nor that of a figure in an area of nearly
/// no width.
bool isInProportion(const Box& box) {
    constexpr double MAX_SPREAD = 50.0;
    return box.high.x - box.low.x <= MAX_SPREAD && box.high.y - box.low.y <= MAX_SPREAD;
}

bool isUsable(const Ink& ink, const Frame& frame) {
    return frame.measurable && ink.width > 0.0 && ink.height > 0.0 &&
           isInProportion(beautifier::boxOf(ink.samples));
}

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

struct Ranking {
    std::vector<Verdict> verdicts;  ///< likeliest first
    Evidence evidence;              ///< empty when the verdict needed no fit
};

Ranking rank(const Ink& ink, const Frame& frame, const BeautifierOptions& options) {
    if (const auto verdict = judgeUnfitted(ink, frame, options)) {
        return {{*verdict}, {}};
    }
    Ranking ranking{{}, beautifier::examine(ink, frame)};
    ranking.verdicts = beautifier::rank(ranking.evidence);
    return ranking;
}

/// The evidence that a figure of `family` needs, also when the verdict needed none or
/// the ends do not meet.
Evidence evidenceFor(const Family& family, Evidence evidence, const Ink& ink, const Frame& frame) {
    const bool isUnfitted = evidence.length == 0.0;
    if (isUnfitted && family.needsFit) {
        evidence = beautifier::examine(ink, frame);
    }
    if (family.closed) {
        beautifier::takeAsClosed(evidence);
    }
    return evidence;
}

/// Probabilities of all families: the likeliest has that of its own log odds, the
/// others share the rest with ink that is no figure, as a softmax of theirs.
std::vector<Alternative> probabilitiesOf(std::span<const Verdict> verdicts) {
    // Log odds are calibrated for the likeliest family; those of the others are too high.
    constexpr double FLATNESS = 1.2;
    const auto oddsOf = [](const Verdict& verdict) { return std::exp(verdict.logit / FLATNESS); };
    const double first = verdicts.front().probability();
    double sum = 1.0;
    for (const Verdict& verdict : verdicts.subspan(1)) {
        sum += oddsOf(verdict);
    }
    std::vector<Alternative> result{{verdicts.front().family, first}};
    for (const Verdict& verdict : verdicts.subspan(1)) {
        result.push_back({verdict.family, (1.0 - first) * oddsOf(verdict) / sum});
    }
    return result;
}

/// Those of `all` families that are worth offering besides the answer, likeliest first:
/// the family of the highest log odds need not have the highest probability.
std::vector<Alternative> alternativesTo(std::optional<FigureFamily> answer,
                                        std::vector<Alternative> all) {
    std::erase_if(
        all, [&](const auto& a) { return a.family == answer || a.probability < MIN_PROBABILITY; });
    std::stable_sort(all.begin(), all.end(),
                     [](const auto& a, const auto& b) { return a.probability > b.probability; });
    return all;
}

Beautified asDrawn(std::span<const Point2D> stroke, Reason reason, double confidence) {
    Beautified answer;
    answer.path.assign(stroke.begin(), stroke.end());
    answer.reason = reason;
    answer.confidence = confidence;
    return answer;
}

std::vector<Point2D> fractionsOf(std::vector<Point2D> outline, double width, double height) {
    for (Point2D& p : outline) {
        p = {p.x / width, p.y / height, 0.0};
    }
    return outline;
}

/// Whether all points lie within 2^31 - 1 sides of the drawing area. False for NaN.
bool isPlaceable(const std::vector<Point2D>& path) {
    constexpr double MAX_SIDES = std::numeric_limits<std::int32_t>::max();
    return std::all_of(path.begin(), path.end(), [](const Point2D& p) {
        return std::abs(p.x) <= MAX_SIDES && std::abs(p.y) <= MAX_SIDES;
    });
}

bool isFinite(const std::vector<Point2D>& path) {
    return std::all_of(path.begin(), path.end(),
                       [](const Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

/// Why a stroke with this verdict stays ink; `RECOGNISED` if it does not.
Reason objection(const Verdict& verdict, const BeautifierOptions& options) {
    if (!(verdict.logit + beautifier::thresholdShift(options.sensitivity) > verdict.threshold)) {
        return verdict.probability() < RESEMBLANCE ? Reason::NO_FIGURE : Reason::NOT_SURE;
    }
    const bool wanted = options.figures.count(verdict.family) > 0;
    return wanted ? Reason::RECOGNISED : Reason::NOT_WANTED;
}

Box boxOf(const Ink& ink) {
    const Box box = beautifier::boxOf(ink.samples);
    return {{box.low.x * ink.width, box.low.y * ink.height},
            {box.high.x * ink.width, box.high.y * ink.height}};
}

/// Whether a figure roughly fills the box of its ink: no edge of its own box is off
/// by more than two fifths of the extent. False for NaN.
bool fills(const Figure& figure, const Box& ink, double extent) {
    constexpr double MAX_MISS = 0.4;
    const std::vector<Point2D> outline = beautifier::outlineOf(figure);
    if (outline.empty() || !isFinite(outline)) {
        return false;
    }
    const Box box = beautifier::boxOf(outline);
    const double misses[] = {box.low.x - ink.low.x, box.low.y - ink.low.y, box.high.x - ink.high.x,
                             box.high.y - ink.high.y};
    return std::all_of(std::begin(misses), std::end(misses),
                       [&](double miss) { return std::abs(miss) <= MAX_MISS * extent; });
}

/// The best fit of a wish, or the figure in the box of the ink where the fit does not
/// fill that box, as the triangle closest to a square does not.
Figure wished(const Family& family, const Fitted& fitted, const Ink& ink) {
    const Figure fit = family.idealise(fitted);
    const Box box = boxOf(ink);
    const bool isFilled = fills(fit, box, fitted.frame.extent);
    const Figure boxed = isFilled ? Figure() : family.inBox(box, fitted.kind);
    return isFilled || boxed.index() == 0 ? fit : boxed;
}

Box around(const Box& a, const Box& b) {
    return {{std::min(a.low.x, b.low.x), std::min(a.low.y, b.low.y)},
            {std::max(a.high.x, b.high.x), std::max(a.high.y, b.high.y)}};
}

/// Whether a figure is in proportion to the area together with its ink. In an area of nearly no
/// width, rounding moves a figure far from its ink.
bool isNear(const std::vector<Point2D>& path, const Ink& ink) {
    return isFinite(path) &&
           isInProportion(around(beautifier::boxOf(path), beautifier::boxOf(ink.samples)));
}

/// The answer with a figure of `family`; as drawn when its outline is out of proportion
/// to the area.
Beautified answerWith(Figure figure, const Family& family, bool insideArea, const Ink& ink) {
    std::vector<Point2D> outline = beautifier::outlineOf(figure);
    const bool isUsable = isNear(fractionsOf(outline, ink.width, ink.height), ink);
    if (insideArea && family.staysInside &&
        beautifier::moveInside(figure, outline, ink.width, ink.height)) {
        outline = beautifier::outlineOf(figure);
    }
    Beautified answer;
    answer.path = fractionsOf(std::move(outline), ink.width, ink.height);
    if (!isUsable || !isPlaceable(answer.path) || !isInProportion(beautifier::boxOf(answer.path))) {
        return asDrawn(ink.samples, Reason::INVALID, 1.0);
    }
    answer.figure = figure;
    answer.type = family.code;
    answer.reason = Reason::RECOGNISED;
    return answer;
}

void check(const Wish& wish) {
    const Family* const family = beautifier::findFamily(wish.family());
    if (family == nullptr || (wish.kind() && *wish.kind() >= family->kinds.size())) {
        detail::raise<std::invalid_argument>("there is no such family or kind");
    }
}

void check(const BeautifierOptions& options) {
    if (!(options.minSize >= 0.0) || !std::isfinite(options.minSize)) {
        detail::raise<std::invalid_argument>("minSize must be a finite number of at least 0");
    }
    if (!(options.tapSize >= 0.0) || !std::isfinite(options.tapSize)) {
        detail::raise<std::invalid_argument>("tapSize must be a finite number of at least 0");
    }
    if (!(options.sensitivity >= 0.0 && options.sensitivity <= 1.0)) {
        detail::raise<std::invalid_argument>("sensitivity must be from 0 to 1");
    }
    for (const FigureFamily family : options.figures) {
        if (beautifier::findFamily(family) == nullptr) {
            detail::raise<std::invalid_argument>("figures holds a value that is no FigureFamily");
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

std::vector<Point2D> outlineOf(const Figure& figure, double width, double height) {
    std::vector<Point2D> path = fractionsOf(beautifier::outlineOf(figure), width, height);
    return isPlaceable(path) ? path : std::vector<Point2D>();
}

std::vector<Point2D> resample(std::span<const Point2D> stroke, double width, double height) {
    const Ink ink{stroke, width, height};
    const Frame frame = beautifier::measure(ink);
    if (!isUsable(ink, frame) || !(frame.extent > 0.0)) {
        return {};
    }
    std::vector<Point2D> points;
    for (const beautifier::Vec& p : beautifier::examine(ink, frame).fine) {
        points.push_back(frame.toUnits(p));
    }
    return fractionsOf(std::move(points), width, height);
}

Beautifier::Beautifier(BeautifierOptions options) : m_options(std::move(options)) {
    check(m_options);
}

Beautified Beautifier::beautify(std::span<const Point2D> stroke, double width, double height,
                                std::span<const std::vector<Point2D>> others) const {
    const Ink ink{stroke, width, height};
    const Frame frame = beautifier::measure(ink);
    if (!isUsable(ink, frame)) {
        return asDrawn(stroke, Reason::INVALID, 1.0);
    }
    if (frame.extent < m_options.minSize) {
        return asDrawn(stroke, Reason::TOO_SMALL, 1.0);
    }
    const Ranking ranking = rank(ink, frame, m_options);
    const Verdict& verdict = ranking.verdicts.front();
    const double confidence = verdict.probability();
    const Reason reason = objection(verdict, m_options);
    if (reason != Reason::RECOGNISED) {
        const bool isScored = reason != Reason::NOT_WANTED;
        Beautified answer = asDrawn(stroke, reason, isScored ? 1.0 - confidence : 1.0);
        answer.alternatives = alternativesTo(std::nullopt, probabilitiesOf(ranking.verdicts));
        return answer;
    }
    const Family& family = *beautifier::findFamily(verdict.family);
    const Fitted fitted{frame, ranking.evidence, m_options, {others, width, height}};
    Beautified answer = answerWith(family.idealise(fitted), family, m_options.insideArea, ink);
    if (answer.reason == Reason::RECOGNISED) {
        answer.confidence = confidence;
        answer.alternatives = alternativesTo(verdict.family, probabilitiesOf(ranking.verdicts));
    }
    return answer;
}

Beautified Beautifier::beautifyAs(std::span<const Point2D> stroke, const Wish& wish, double width,
                                  double height,
                                  std::span<const std::vector<Point2D>> others) const {
    check(wish);
    const Family& family = *beautifier::findFamily(wish.family());
    const Ink ink{stroke, width, height};
    const Frame frame = beautifier::measure(ink);
    if (!isUsable(ink, frame)) {
        return asDrawn(stroke, Reason::INVALID, 1.0);
    }
    if (family.needsFit && !(frame.extent > 0.0)) {
        return asDrawn(stroke, Reason::NO_FIGURE, 1.0);
    }
    const Ranking ranking = rank(ink, frame, m_options);
    const Evidence evidence = evidenceFor(family, ranking.evidence, ink, frame);
    const Fitted fitted{frame, evidence, m_options, {others, width, height}, wish.kind()};
    Beautified answer = answerWith(wished(family, fitted, ink), family, m_options.insideArea, ink);
    if (answer.reason != Reason::RECOGNISED) {
        answer.reason = Reason::NO_FIGURE;
    } else {
        const auto all = probabilitiesOf(ranking.verdicts);
        for (const Alternative& one : all) {
            answer.confidence = one.family == wish.family() ? one.probability : answer.confidence;
        }
        answer.alternatives = alternativesTo(wish.family(), all);
    }
    return answer;
}

}  // namespace Scrivo
