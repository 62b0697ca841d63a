#include "Scrivo/detail/TemplateIndex.h"

#include "Scrivo/detail/Float4.h"
#include "Scrivo/detail/PathNormalisation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace Scrivo::detail {

namespace {

constexpr int POINTS = Outline::POINTS;
constexpr int BLOCKS = Outline::BLOCKS;
constexpr int BLOCK_SIZE = POINTS / BLOCKS;

/// Outlines of a leaf, and of the smallest tree.
constexpr std::int32_t LEAF = 8;

/// Paths whose points lie farther out than this (a square of 250 units about
/// its centroid reaches to 354) have no outline: the margin would not hold.
constexpr double LARGEST_RADIUS = 400.0;
/// The largest offset of the centroid of a path in normal form from the origin;
/// rounding leaves about 1e-13.
constexpr double LARGEST_OFFSET = 1e-6;
/// More than any bound or estimate in float is off; about 1/800 can occur.
constexpr double MARGIN = 1.0 / 256.0;

// Marks in place of an outline.
constexpr std::int32_t HOPELESS = -1;   ///< too short or not finite: never wins
constexpr std::int32_t OVERSIZED = -2;  ///< beyond LARGEST_RADIUS

std::int32_t kindOf(std::span<const Point2D> points) {
    if (points.size() < POINTS) {
        return HOPELESS;
    }
    const auto used = points.first<POINTS>();
    const auto isFinite = [](const Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    if (!std::all_of(used.begin(), used.end(), isFinite)) {
        return HOPELESS;
    }
    const auto isNear = [](const Point2D& p) {
        return p.x * p.x + p.y * p.y <= LARGEST_RADIUS * LARGEST_RADIUS;
    };
    return std::all_of(used.begin(), used.end(), isNear) ? 0 : OVERSIZED;
}

Outline outlineOf(std::span<const Point2D> points) {
    Outline outline{};
    for (std::size_t i = 0; i < POINTS; ++i) {
        const Point2D& p = points[i];
        outline.x[i] = static_cast<float>(p.x);
        outline.y[i] = static_cast<float>(p.y);
        outline.radius[i] = static_cast<float>(std::sqrt(p.x * p.x + p.y * p.y));
        outline.block[i / BLOCK_SIZE] += outline.radius[i];
    }
    return outline;
}

bool hasCoordinates(const Outline& outline, std::span<const Point2D> points) {
    bool same = true;
    for (std::size_t i = 0; i < POINTS; ++i) {
        same &= outline.x[i] == static_cast<float>(points[i].x);
        same &= outline.y[i] == static_cast<float>(points[i].y);
    }
    return same;
}

/// Sum of the absolute differences of COUNT values, in two independent chains.
template <int COUNT>
float differenceOf(const float* a, const float* b) {
    Float4 even = Float4::all(0.0F);
    Float4 odd = Float4::all(0.0F);
    for (int i = 0; i < COUNT; i += 8) {
        even = even + abs(Float4::load(a + i) - Float4::load(b + i));
        odd = odd + abs(Float4::load(a + i + 4) - Float4::load(b + i + 4));
    }
    return sum(even + odd);
}

/// Mean difference of the radii: no rotation brings the two paths closer.
float radialBound(const Outline& a, const Outline& b) {
    return differenceOf<POINTS>(a.radius, b.radius) / POINTS;
}

/// No larger than the radial bound, and cheaper.
float blockBound(const Outline& a, const Outline& b) {
    return differenceOf<BLOCKS>(a.block, b.block) / POINTS;
}

struct alignas(16) Coordinates {
    float x[POINTS];
    float y[POINTS];
};

float meanDistance(const Coordinates& a, const Outline& b) {
    Float4 total = Float4::all(0.0F);
    for (int i = 0; i < POINTS; i += 4) {
        const Float4 dx = Float4::load(a.x + i) - Float4::load(b.x + i);
        const Float4 dy = Float4::load(a.y + i) - Float4::load(b.y + i);
        total = total + sqrt(dx * dx + dy * dy);
    }
    return sum(total) / POINTS;
}

/// The tree of intervals that the standard search can go through. Interval 0 is
/// the first one, 2k + 1 and 2k + 2 are the left and right one after interval k.
/// Angle 0 is the first interval's x1; angle k + 1 is the one that interval k
/// adds (x2 of the first interval).
struct SearchPlan {
    struct Turn {
        float cosine;
        float sine;
    };
    static constexpr int ROUNDS = 8;
    static constexpr int INTERVALS = (2 << ROUNDS) - 1;
    std::array<Turn, INTERVALS + 1> turns{};

    SearchPlan() {
        const SearchInterval first = SearchInterval::first(STANDARD_SEARCH);
        setTurn(0, first.x1);
        setTurn(1, first.x2);
        addHalves(0, first);
    }

private:
    void setTurn(int angle, double radians) {
        turns[static_cast<std::size_t>(angle)] = {static_cast<float>(std::cos(radians)),
                                                  static_cast<float>(std::sin(radians))};
    }
    void addHalves(int interval, const SearchInterval& current) {
        if (2 * interval + 2 >= INTERVALS) {
            return;
        }
        const SearchInterval left = current.left(STANDARD_SEARCH.goldenRatio);
        const SearchInterval right = current.right(STANDARD_SEARCH.goldenRatio);
        setTurn(2 * interval + 2, left.x1);
        setTurn(2 * interval + 3, right.x2);
        addHalves(2 * interval + 1, left);
        addHalves(2 * interval + 2, right);
    }
};

const SearchPlan& searchPlan() {
    static const SearchPlan plan;
    return plan;
}

/// One path turned by the angles of the plan, each when it is first asked for.
class TurnedPath {
public:
    explicit TurnedPath(const Outline& path) : m_path(path) {
        m_made.fill(-1);
        m_turned.reserve(32);
    }

    const Coordinates& at(int angle) {
        std::int16_t& made = m_made[static_cast<std::size_t>(angle)];
        if (made < 0) {
            made = static_cast<std::int16_t>(m_turned.size());
            turn(m_plan.turns[static_cast<std::size_t>(angle)], m_turned.emplace_back());
        }
        return m_turned[static_cast<std::size_t>(made)];
    }

private:
    void turn(const SearchPlan::Turn& by, Coordinates& out) const {
        const Float4 cosine = Float4::all(by.cosine);
        const Float4 sine = Float4::all(by.sine);
        for (int i = 0; i < POINTS; i += 4) {
            const Float4 x = Float4::load(m_path.x + i);
            const Float4 y = Float4::load(m_path.y + i);
            (x * cosine - y * sine).store(out.x + i);
            (x * sine + y * cosine).store(out.y + i);
        }
    }

    const Outline& m_path;
    const SearchPlan& m_plan = searchPlan();
    std::array<std::int16_t, SearchPlan::INTERVALS + 1> m_made{};
    std::vector<Coordinates> m_turned;
};

/// The search's outcome within MARGIN, or nothing when two distances are too
/// close to tell which half the search goes on with.
std::optional<float> estimate(TurnedPath& path, const Outline& outline) {
    float f1 = meanDistance(path.at(0), outline);
    float f2 = meanDistance(path.at(1), outline);
    int interval = 0;
    for (int round = 0; round < SearchPlan::ROUNDS; ++round) {
        if (std::abs(f1 - f2) <= static_cast<float>(2.0 * MARGIN)) {
            return std::nullopt;
        }
        if (f1 < f2) {
            interval = 2 * interval + 1;
            f2 = f1;
            f1 = meanDistance(path.at(interval + 1), outline);
        } else {
            interval = 2 * interval + 2;
            f1 = f2;
            f2 = meanDistance(path.at(interval + 1), outline);
        }
    }
    return std::min(f1, f2);
}

}  // namespace

void TemplateIndex::append(std::span<const Point2D> points) {
    const auto position = static_cast<std::int32_t>(m_outlineOf.size());
    const std::int32_t kind = kindOf(points);
    if (kind == OVERSIZED) {
        m_oversized.push_back(position);
    }
    if (kind < 0) {
        m_outlineOf.push_back(kind);
        return;
    }
    m_outlineOf.push_back(static_cast<std::int32_t>(m_outlines.size()));
    m_outlines.push_back(detail::outlineOf(points));
    m_positions.push_back(position);
    growForest();
}

/// Trees of LEAF times a power of two, the largest first, no two alike; fewer
/// than LEAF outlines at the end are in none. (Bentley, Saxe: Decomposable
/// searching problems, 1980.)
void TemplateIndex::growForest() {
    const auto size = static_cast<std::int32_t>(m_outlines.size());
    if (size % LEAF != 0) {
        return;
    }
    Tree tree{size - LEAF, LEAF, static_cast<std::int32_t>(m_boxes.size())};
    while (!m_trees.empty() && m_trees.back().count == tree.count) {
        tree = {m_trees.back().first, 2 * tree.count, m_trees.back().root};
        m_trees.pop_back();
    }
    m_boxes.resize(static_cast<std::size_t>(tree.root));
    m_trees.push_back(tree);
    std::vector<std::int32_t> order(static_cast<std::size_t>(tree.count));
    std::iota(order.begin(), order.end(), tree.first);
    build(order, tree.first);
    arrange(order, tree.first);
}

TemplateIndex::Box TemplateIndex::boxAbout(std::span<const std::int32_t> outlines) const {
    Box box{};
    std::fill_n(box.low, BLOCKS, std::numeric_limits<float>::max());
    for (const std::int32_t k : outlines) {
        const Outline& outline = m_outlines[static_cast<std::size_t>(k)];
        for (int j = 0; j < BLOCKS; ++j) {
            box.low[j] = std::min(box.low[j], outline.block[j]);
            box.high[j] = std::max(box.high[j], outline.block[j]);
        }
    }
    return box;
}

/// Sorts the outlines into halves, by their widest block sums, down to the
/// leaves; they will lie from `first` on.
void TemplateIndex::build(std::span<std::int32_t> outlines, std::int32_t first) {
    const auto self = m_boxes.size();
    Box box = boxAbout(outlines);
    box.first = first;
    box.last = first + static_cast<std::int32_t>(outlines.size());
    m_boxes.push_back(box);
    if (outlines.size() <= LEAF) {
        return;
    }
    int widest = 0;
    for (int j = 1; j < BLOCKS; ++j) {
        if (box.high[j] - box.low[j] > box.high[widest] - box.low[widest]) {
            widest = j;
        }
    }
    const auto value = [&](std::int32_t k) {
        return m_outlines[static_cast<std::size_t>(k)].block[widest];
    };
    const std::size_t half = outlines.size() / 2;
    std::nth_element(outlines.begin(), outlines.begin() + static_cast<std::ptrdiff_t>(half),
                     outlines.end(),
                     [&](std::int32_t a, std::int32_t b) { return value(a) < value(b); });
    build(outlines.first(half), first);
    m_boxes[self].secondHalf = static_cast<std::int32_t>(m_boxes.size());
    build(outlines.subspan(half), first + static_cast<std::int32_t>(half));
}

/// Moves the outlines to where the tree has them, `first` and following.
void TemplateIndex::arrange(std::span<const std::int32_t> order, std::int32_t first) {
    std::vector<Outline> outlines;
    std::vector<std::int32_t> positions;
    for (const std::int32_t k : order) {
        outlines.push_back(m_outlines[static_cast<std::size_t>(k)]);
        positions.push_back(m_positions[static_cast<std::size_t>(k)]);
        m_outlineOf[static_cast<std::size_t>(positions.back())] =
            first + static_cast<std::int32_t>(positions.size()) - 1;
    }
    std::copy(outlines.begin(), outlines.end(), m_outlines.begin() + first);
    std::copy(positions.begin(), positions.end(), m_positions.begin() + first);
}

bool TemplateIndex::describes(std::span<const GraphicTemplate> templates) const {
    if (templates.size() != m_outlineOf.size()) {
        return false;
    }
    for (std::size_t k = 0; k < templates.size(); ++k) {
        const std::span<const Point2D> points = templates[k].points;
        const std::int32_t outline = m_outlineOf[k];
        if (outline < 0
                ? kindOf(points) != outline
                : points.size() < POINTS ||
                      !hasCoordinates(m_outlines[static_cast<std::size_t>(outline)], points)) {
            return false;
        }
    }
    return true;
}

/// Takes boxes and outlines in the order of their bounds (Hjaltason, Samet:
/// Distance browsing in spatial databases, 1999) until no bound is left below
/// the best distance found.
class TemplateIndex::Query {
public:
    Query(const TemplateIndex& index, std::span<const Point2D> path,
          std::span<const GraphicTemplate> templates)
        : m_index(index),
          m_path(path),
          m_templates(templates),
          m_outline(detail::outlineOf(path)),
          m_turned(m_outline) {
        m_heap.reserve(256);
    }

    Match run() {
        for (const std::int32_t position : m_index.m_oversized) {
            measure(position);
        }
        for (const Tree& tree : m_index.m_trees) {
            pushBox(tree.root);
        }
        const auto size = static_cast<std::int32_t>(m_index.m_outlines.size());
        for (std::int32_t k = size - size % LEAF; k < size; ++k) {
            pushOutline(k);
        }
        while (!m_heap.empty() && mayWin(m_heap.front().bound)) {
            std::pop_heap(m_heap.begin(), m_heap.end());
            const std::int32_t item = m_heap.back().item;
            m_heap.pop_back();
            item < 0 ? open(~item) : consider(item);
        }
        for (const Entry& entry : m_shortlist) {
            if (mayWin(entry.bound)) {
                measure(m_index.m_positions[static_cast<std::size_t>(entry.item)]);
            }
        }
        return m_best;
    }

private:
    struct Entry {
        float bound;
        /// An outline, or the complement of a box.
        std::int32_t item;
        bool operator<(const Entry& other) const { return bound > other.bound; }
    };

    /// Ties must stay in: the earlier one of the list wins.
    [[nodiscard]] bool mayWin(float bound) const { return bound - MARGIN <= m_limit; }

    void push(float bound, std::int32_t item) {
        if (mayWin(bound)) {
            m_heap.push_back({bound, item});
            std::push_heap(m_heap.begin(), m_heap.end());
        }
    }

    void pushBox(std::int32_t k) {
        const Box& box = m_index.m_boxes[static_cast<std::size_t>(k)];
        Float4 total = Float4::all(0.0F);
        for (int j = 0; j < BLOCKS; j += 4) {
            const Float4 at = Float4::load(m_outline.block + j);
            const Float4 below = Float4::load(box.low + j) - at;
            const Float4 above = at - Float4::load(box.high + j);
            total = total + max(max(below, above), Float4::all(0.0F));
        }
        push(sum(total) / POINTS, ~k);
    }

    void pushOutline(std::int32_t k) {
        const Outline& outline = m_index.m_outlines[static_cast<std::size_t>(k)];
        if (mayWin(blockBound(m_outline, outline))) {
            push(radialBound(m_outline, outline), k);
        }
    }

    void open(std::int32_t k) {
        const Box& box = m_index.m_boxes[static_cast<std::size_t>(k)];
        if (box.secondHalf != 0) {
            pushBox(k + 1);
            pushBox(box.secondHalf);
            return;
        }
        for (std::int32_t outline = box.first; outline < box.last; ++outline) {
            pushOutline(outline);
        }
    }

    void consider(std::int32_t k) {
        const std::optional<float> distance =
            estimate(m_turned, m_index.m_outlines[static_cast<std::size_t>(k)]);
        if (!distance) {
            measure(m_index.m_positions[static_cast<std::size_t>(k)]);
        } else if (mayWin(*distance)) {
            m_shortlist.push_back({*distance, k});
            m_limit = std::min(m_limit, *distance + MARGIN);
        }
    }

    void measure(std::int32_t position) {
        const auto& points = m_templates[static_cast<std::size_t>(position)].points;
        const double distance = distanceAtBestAngle(m_path, points, STANDARD_SEARCH);
        if (distance < m_best.distance ||
            (distance == m_best.distance && position < m_best.index)) {
            m_best = {position, distance};
            m_limit = std::min(m_limit, distance);
        }
    }

    const TemplateIndex& m_index;
    std::span<const Point2D> m_path;
    std::span<const GraphicTemplate> m_templates;
    Outline m_outline;
    TurnedPath m_turned;
    std::vector<Entry> m_heap;
    std::vector<Entry> m_shortlist;
    /// No less than the distance of the winner.
    double m_limit = std::numeric_limits<double>::max();
    Match m_best;
};

std::optional<Match> TemplateIndex::match(std::span<const Point2D> path,
                                          std::span<const GraphicTemplate> templates) const {
    if (path.size() != POINTS || kindOf(path) < 0) {
        return std::nullopt;
    }
    const Point2D centre = centroid(path);
    if (std::abs(centre.x) > LARGEST_OFFSET || std::abs(centre.y) > LARGEST_OFFSET) {
        return std::nullopt;
    }
    return Query(*this, path, templates).run();
}

}  // namespace Scrivo::detail
