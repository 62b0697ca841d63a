#include "Beautifier/judge/Score.h"

#include "Beautifier/figures/Families.h"
#include "Beautifier/judge/Decimal.h"
#include "Beautifier/judge/Features.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <span>

namespace Scrivo::beautifier {

namespace {

/// How a feature enters a score. Most residuals enter twice: the logarithm
/// discriminates among good fits, the share itself rules out bad ones.
enum class Form : std::uint8_t { AS_IS, SHARE, SQUARE };

struct Term {
    std::uint8_t feature;
    Form form;
    Decimal weight;
};

/// A node of a tree: is the feature above `at`?
template <typename Number>
struct CutAt {
    std::uint8_t feature;
    Number at;
};

/// A regression tree of depth two, which models interactions of two features: the
/// root, the nodes below and above its cut, and the leaves.
template <typename Number, typename Leaf>
struct TreeOf {
    std::array<CutAt<Number>, 3> cuts;
    std::array<Leaf, 4> leaves;
};

/// As stored, and as evaluated.
/// @{
using Tree = TreeOf<Decimal, ShortDecimal>;
using UnpackedTree = TreeOf<double, double>;
/// @}

/// A calibrated score, the sum of terms and trees, and the threshold that it must exceed.
struct FamilyModel {
    FigureFamily family;
    double bias;
    double threshold;
    std::span<const Term> terms;
    std::span<const Tree> trees;
    std::span<const Tree> sparseTrees;  ///< more of the sum, for sparse strokes
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

UnpackedTree unpacked(const Tree& tree) {
    UnpackedTree result;
    std::transform(tree.cuts.begin(), tree.cuts.end(), result.cuts.begin(), [](const auto& cut) {
        return CutAt<double>{cut.feature, cut.at};
    });
    std::copy(tree.leaves.begin(), tree.leaves.end(), result.leaves.begin());
    return result;
}

std::vector<UnpackedTree> unpacked(std::span<const Tree> trees) {
    std::vector<UnpackedTree> result;
    result.reserve(trees.size());
    std::transform(trees.begin(), trees.end(), std::back_inserter(result),
                   [](const Tree& tree) { return unpacked(tree); });
    return result;
}

struct Scorer {
    const FamilyModel* model;
    std::vector<UnpackedTree> trees;
    std::vector<UnpackedTree> sparseTrees;

    explicit Scorer(const FamilyModel& packed)
        : model(&packed),
          trees(unpacked(packed.trees)),
          sparseTrees(unpacked(packed.sparseTrees)) {}
};

/// Unpacked on first use, since a division for every number would take longer than
/// the rest of the score.
const std::vector<Scorer>& scorers() {
    static const std::vector<Scorer> all(FAMILY_MODELS.begin(), FAMILY_MODELS.end());
    return all;
}

std::size_t isAbove(const CutAt<double>& cut, const Features& features) {
    return features[cut.feature] > cut.at ? 1 : 0;
}

double leafOf(const UnpackedTree& tree, const Features& features) {
    const std::size_t side = isAbove(tree.cuts[0], features);
    return tree.leaves[2 * side + isAbove(tree.cuts[1 + side], features)];
}

double sumOf(const std::vector<UnpackedTree>& trees, const Features& features) {
    return std::accumulate(
        trees.begin(), trees.end(), 0.0,
        [&](double sum, const UnpackedTree& tree) { return sum + leafOf(tree, features); });
}

double scoreOf(const Scorer& scorer, const Features& features) {
    double sum = scorer.model->bias;
    for (const Term& term : scorer.model->terms) {
        sum += term.weight * valueOf(term, features);
    }
    sum += sumOf(scorer.trees, features);
    return features["SPARSE"_f] > 0.0 ? sum + sumOf(scorer.sparseTrees, features) : sum;
}

}  // namespace

std::vector<Verdict> rank(const Evidence& evidence) {
    const Features features = featuresOf(evidence);
    std::vector<Verdict> verdicts;
    for (const Scorer& scorer : scorers()) {
        const FamilyModel& model = *scorer.model;
        if (competes(model.family, evidence, features)) {
            verdicts.push_back({model.family, scoreOf(scorer, features), model.threshold});
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
