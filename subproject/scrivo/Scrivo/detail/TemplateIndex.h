#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/detail/RotationSearch.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// Finds the match that `matchPlainly` finds, to the last bit, at a fraction of
/// the cost: bounds and estimates in float exclude the templates that cannot win,
/// and the plain search measures the one or two that are left. docs/matching.md
/// derives the bounds.
namespace Scrivo::detail {

/// The search that the index is made for: the recogniser's settings as
/// constructed.
inline constexpr RotationSearch STANDARD_SEARCH{45.0, 2.0, 0.6180339887498949};

/// Points of the paths that the index is made for.
inline constexpr int STANDARD_POINTS = 64;

/// A template that several lists share.
using SharedTemplate = std::shared_ptr<const GraphicTemplate>;

/// A list of templates that grows at its end, prepared for matching. What it
/// holds is in immutable trees that copies share: copying is cheap, and a copy
/// does not see what is appended to the original.
class TemplateIndex {
public:
    /// Amortised O(log^2 n). Changes nothing when memory runs out.
    void append(SharedTemplate added);

    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool empty() const { return m_trees.empty(); }
    const GraphicTemplate& operator[](std::size_t k) const;

    /// Whether the templates are the same, to the last bit.
    [[nodiscard]] bool describes(std::span<const GraphicTemplate> templates) const;

    /// The match of `matchPlainly` among these templates. Quick with the
    /// standard search and a path in the standard normal form.
    [[nodiscard]] Match match(Stroke path, const RotationSearch& search) const;

    /// The quick form for STANDARD_SEARCH, or nothing when `path` is not in the
    /// standard normal form.
    [[nodiscard]] std::optional<Match> matchQuickly(Stroke path) const;

private:
    class Tree;
    class Query;

    /// Of sizes that are LEAF times a power of two, the largest first, no two
    /// alike, and a last one of fewer than LEAF templates.
    std::vector<std::shared_ptr<const Tree>> m_trees;
};

}  // namespace Scrivo::detail
