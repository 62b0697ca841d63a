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

/// A calibrated logistic score and the threshold that it must exceed.
struct FamilyModel {
    FigureFamily family;
    bool closed;  ///< only strokes whose ends meet compete
    double bias;
    double threshold;
    std::span<const Term> terms;
};

struct DotModel {
    double extent;  ///< largest longer side of the box, drawing-area units
    double detour;  ///< largest path length over the diagonal of the box
    double logit;   ///< log odds that such a stroke is a dot
};

#include "Beautifier/Model.inc"

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

double scoreOf(const FamilyModel& model, const Features& features) {
    double sum = model.bias;
    for (const Term& term : model.terms) {
        sum += term.weight * valueOf(term, features);
    }
    return sum;
}

}  // namespace

double Verdict::probability() const {
    return 1.0 / (1.0 + std::exp(-logit));
}

std::optional<Verdict> judgeDot(const Frame& frame) {
    for (const DotModel& model : DOT_MODELS) {
        if (frame.extent <= model.extent && frame.length <= model.detour * frame.diagonal) {
            return Verdict{FigureFamily::DOT, model.logit, 0.0};
        }
    }
    return std::nullopt;
}

Verdict judge(const Evidence& evidence) {
    const Features features = featuresOf(evidence);
    Verdict best;
    best.logit = -std::numeric_limits<double>::infinity();
    for (const FamilyModel& model : FAMILY_MODELS) {
        if (model.closed && !evidence.closed) {
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
