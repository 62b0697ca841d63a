#include "Beautifier/Score.h"

#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace Scrivo::beautifier {

namespace {

/// How a feature enters a score. Most residuals do so twice: the logarithm
/// tells good fits apart, the share itself rules out bad ones.
enum class Form { AS_IS, SHARE, SQUARE };

struct Term {
    Feature feature;
    Form form;
    double weight;
};

/// A question of a tree: is the feature above `at`?
struct Cut {
    Feature feature;
    double at;
};

/// Two questions and an answer, so that two features are weighed against each
/// other: the root, those below its lower and higher side, and what they add.
struct Tree {
    std::array<Cut, 3> cuts;
    std::array<double, 4> leaves;
};

/// A calibrated score, terms and trees, and the threshold that it must exceed.
struct FamilyModel {
    FigureFamily family;
    bool closed;  ///< only strokes whose ends meet compete
    double bias;
    double threshold;
    std::span<const Term> terms;
    std::span<const Tree> trees;
};

constexpr double INF = std::numeric_limits<double>::infinity();

/// A kind of stroke that is a dot; the smallest kind comes first.
struct DotModel {
    double extent;  ///< largest longer side of the box, drawing-area units
    double least;   ///< smallest and
    double most;    ///< largest path without the tremor, in diagonals of the box
    bool sure;      ///< has no room for anything else: a dot at any sensitivity
    bool slip;      ///< may be a short dash just as well
    double logit;   ///< log odds that such a stroke is a dot
};

#include "Beautifier/Model.inc"

// As likely as not suffices for a dot: the drawing keeps its mark either way.
constexpr double DOT_THRESHOLD = -0.5;

// Corners that miss one full turn by more belong to sides that cross.
constexpr double CROSSED = 3.0;

double valueOf(const Term& term, const Features& features) {
    const double value = features[static_cast<std::size_t>(term.feature)];
    switch (term.form) {
        case Form::SHARE:
            return std::exp(value);
        case Form::SQUARE:
            return value * value;
        default:
            return value;
    }
}

/// Whether a stroke can be of the model's family at all.
bool competes(const FamilyModel& model, const Evidence& evidence, const Features& features) {
    if (model.family == FigureFamily::QUADRANGLE && features[QUADRANGLE_WINDING] > CROSSED) {
        return false;
    }
    return !model.closed || evidence.closed;
}

std::size_t isAbove(const Cut& cut, const Features& features) {
    return features[static_cast<std::size_t>(cut.feature)] > cut.at ? 1 : 0;
}

double leafOf(const Tree& tree, const Features& features) {
    const std::size_t side = isAbove(tree.cuts[0], features);
    return tree.leaves[2 * side + isAbove(tree.cuts[1 + side], features)];
}

double scoreOf(const FamilyModel& model, const Features& features) {
    double sum = model.bias;
    for (const Term& term : model.terms) {
        sum += term.weight * valueOf(term, features);
    }
    for (const Tree& tree : model.trees) {
        sum += leafOf(tree, features);
    }
    return sum;
}

}  // namespace

double Verdict::probability() const {
    return 1.0 / (1.0 + std::exp(-logit));
}

std::optional<Verdict> judgeDot(std::span<const Point2D> stroke, double width, double height,
                                const Frame& frame, bool slips) {
    if (frame.extent > DOT_MODELS.back().extent) {
        return std::nullopt;
    }
    const double path = travel(stroke, width, height, frame);
    for (const DotModel& model : DOT_MODELS) {
        if (frame.extent <= model.extent && model.least * frame.diagonal <= path &&
            path <= model.most * frame.diagonal && (slips || !model.slip)) {
            return Verdict{FigureFamily::DOT, model.logit, model.sure ? -INF : DOT_THRESHOLD};
        }
    }
    return std::nullopt;
}

Verdict judge(const Evidence& evidence) {
    const Features features = featuresOf(evidence);
    Verdict best;
    best.logit = -INF;
    for (const FamilyModel& model : FAMILY_MODELS) {
        if (!competes(model, evidence, features)) {
            continue;
        }
        const double score = scoreOf(model, features);
        if (score > best.logit) {
            best = {model.family, score, model.threshold};
        }
    }
    return best;
}

double thresholdShift(double sensitivity) {
    // Over the whole range the odds that suffice change by e^8, about 3000.
    constexpr double RANGE = 8.0;
    return RANGE * (sensitivity - 0.5);
}

}  // namespace Scrivo::beautifier
