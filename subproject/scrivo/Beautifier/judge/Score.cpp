#include "Beautifier/judge/Score.h"

#include "Beautifier/figures/Families.h"
#include "Beautifier/judge/Features.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace Scrivo::beautifier {

namespace {

/// How a feature enters a score. Most residuals enter twice: the logarithm
/// discriminates among good fits, the share itself rules out bad ones.
enum class Form { AS_IS, SHARE, SQUARE };

struct Term {
    std::size_t feature;
    Form form;
    double weight;
};

/// A node of a tree: is the feature above `at`?
struct Cut {
    std::size_t feature;
    double at;
};

/// A regression tree of depth two, which models interactions of two features: the
/// root, the nodes below and above its cut, and the leaves.
struct Tree {
    std::array<Cut, 3> cuts;
    std::array<double, 4> leaves;
};

/// A calibrated score, the sum of terms and trees, and the threshold that it must exceed.
struct FamilyModel {
    FigureFamily family;
    double bias;
    double threshold;
    std::span<const Term> terms;
    std::span<const Tree> trees;
};

#include "Beautifier/judge/Model.inc"

double valueOf(const Term& term, const Features& features) {
    const double value = features[term.feature];
    switch (term.form) {
        case Form::SHARE:
            return std::exp(value);
        case Form::SQUARE:
            return value * value;
        default:
            return value;
    }
}

/// Whether a stroke can be of the family at all.
bool competes(FigureFamily family, const Evidence& evidence, const Features& features) {
    const Family* const entry = findFamily(family);
    const bool isOpen = entry->closed && !evidence.closed;
    return !isOpen && entry->competes(ownFeatures(features, family));
}

std::size_t isAbove(const Cut& cut, const Features& features) {
    return features[cut.feature] > cut.at ? 1 : 0;
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

std::vector<Verdict> rank(const Evidence& evidence) {
    const Features features = featuresOf(evidence);
    std::vector<Verdict> verdicts;
    for (const FamilyModel& model : FAMILY_MODELS) {
        if (competes(model.family, evidence, features)) {
            verdicts.push_back({model.family, scoreOf(model, features), model.threshold});
        }
    }
    const auto isLikelier = [](const Verdict& a, const Verdict& b) { return a.logit > b.logit; };
    std::stable_sort(verdicts.begin(), verdicts.end(), isLikelier);
    return verdicts;
}

double thresholdShift(double sensitivity) {
    // From 0 to 1 the odds required fall by a factor of e^8, about 3000.
    constexpr double RANGE = 8.0;
    return RANGE * (sensitivity - 0.5);
}

}  // namespace Scrivo::beautifier
