#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/Types.h"
#include "Scrivo/detail/RotationSearch.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Finds the match that `matchPlainly` finds, to the last bit, at a fraction of
/// the cost: bounds and estimates in float decide which templates cannot win,
/// the plain search measures the one or two that are left. docs/matching.md
/// derives the bounds.
namespace Scrivo::detail {

/// The search that the index knows: the recogniser's settings as constructed.
inline constexpr RotationSearch STANDARD_SEARCH{45.0, 2.0, 0.6180339887498949};

/// A path in normal form, prepared for estimates.
struct alignas(16) Outline {
    static constexpr int POINTS = 64;
    static constexpr int BLOCKS = 8;

    /// Sums of `radius` over runs of POINTS / BLOCKS points.
    float block[BLOCKS];
    /// Distances of the points from the origin, which no rotation changes.
    float radius[POINTS];
    float x[POINTS];
    float y[POINTS];
};

/// Describes a list of templates that grows at its end. The templates stay with
/// the caller, who passes the list to every query.
class TemplateIndex {
public:
    /// Takes over the next template of the list; amortised O(log^2 n). The index
    /// is void when memory runs out here.
    void append(std::span<const Point2D> points);

    /// Whether the list still holds what was appended.
    [[nodiscard]] bool describes(std::span<const GraphicTemplate> templates) const;

    /// The match of `matchPlainly(path, templates, STANDARD_SEARCH)`, or nothing
    /// when `path` is not in normal form. `templates` is the described list.
    [[nodiscard]] std::optional<Match> match(std::span<const Point2D> path,
                                             std::span<const GraphicTemplate> templates) const;

private:
    /// A box about the block sums of the outlines `first` to `last` - 1.
    struct Box {
        alignas(16) float low[Outline::BLOCKS];
        alignas(16) float high[Outline::BLOCKS];
        std::int32_t first;
        std::int32_t last;
        /// The second half; the first one follows its parent. 0 in a leaf.
        std::int32_t secondHalf;
    };
    struct Tree {
        std::int32_t first;
        std::int32_t count;
        std::int32_t root;
    };
    class Query;

    void growForest();
    void build(std::span<std::int32_t> outlines, std::int32_t first);
    [[nodiscard]] Box boxAbout(std::span<const std::int32_t> outlines) const;
    void arrange(std::span<const std::int32_t> order, std::int32_t first);

    /// The outlines of a leaf lie side by side.
    std::vector<Outline> m_outlines;
    /// Position of each outline in the list.
    std::vector<std::int32_t> m_positions;
    /// Outline of each template of the list, or one of the two marks below.
    std::vector<std::int32_t> m_outlineOf;
    /// Finite templates too large for the error bounds: always measured.
    std::vector<std::int32_t> m_oversized;

    std::vector<Box> m_boxes;
    std::vector<Tree> m_trees;
};

}  // namespace Scrivo::detail
