#include "Scrivo/detail/TemplateIndex.h"

#include "Scrivo/detail/Float4.h"
#include "Scrivo/detail/PathNormalisation.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace Scrivo::detail {

namespace {

constexpr int POINTS = STANDARD_POINTS;
constexpr int BLOCKS = 8;
constexpr int BLOCK_SIZE = POINTS / BLOCKS;

/// Most outlines of a leaf, and templates of the smallest full tree.
constexpr std::size_t LEAF = 8;

/// Paths whose points lie farther out than this (a square of 250 units about
/// its centroid reaches to 354) have no outline: the margin would not hold.
constexpr double MAX_RADIUS = 400.0;
/// The largest offset of the centroid of a path in normal form from the origin;
/// rounding leaves about 1e-13.
constexpr double MAX_OFFSET = 1e-6;
/// Above the largest error of any bound or estimate in float, about 1/800.
constexpr double MARGIN = 1.0 / 256.0;

/// A path in normal form, prepared for estimates.
struct alignas(16) Outline {
    /// Sums of `radius` over runs of POINTS / BLOCKS points.
    float block[BLOCKS];
    /// Distances of the points from the origin, which no rotation changes.
    float radius[POINTS];
    float x[POINTS];
    float y[POINTS];
};

enum class Suitability {
    NEVER_WINS,  ///< too short or not finite
    OVERSIZED,   ///< beyond MAX_RADIUS: the error bounds do not hold
    SUITABLE,
};

Suitability suitabilityOf(Stroke points) {
    if (points.size() < POINTS) {
        return Suitability::NEVER_WINS;
    }
    const auto used = points.first<POINTS>();
    const auto isFinite = [](const Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    if (!std::all_of(used.begin(), used.end(), isFinite)) {
        return Suitability::NEVER_WINS;
    }
    const auto isNear = [](const Point2D& p) {
        return p.x * p.x + p.y * p.y <= MAX_RADIUS * MAX_RADIUS;
    };
    return std::all_of(used.begin(), used.end(), isNear) ? Suitability::SUITABLE
                                                         : Suitability::OVERSIZED;
}

Outline outlineOf(Stroke points) {
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

/// A box about the block sums of the outlines `first` to `last` - 1.
struct Box {
    alignas(16) float low[BLOCKS];
    alignas(16) float high[BLOCKS];
    std::int32_t first;
    std::int32_t last;
    /// The second half; the first one follows its parent. 0 in a leaf.
    std::int32_t secondHalf;
};

bool isSameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool isSame(const GraphicTemplate& a, const GraphicTemplate& b) {
    const auto isSamePoint = [](const Point2D& p, const Point2D& q) {
        return isSameBits(p.x, q.x) && isSameBits(p.y, q.y);
    };
    return a.id == b.id && a.name == b.name &&
           std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                      isSamePoint);
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

/// The result of the search within MARGIN, or nothing when two distances are too
/// close to decide in which half the search continues.
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

/// Consecutive templates of a list, in boxes within boxes.
class TemplateIndex::Tree {
public:
    /// `first` is the position of the first template in the list.
    Tree(std::size_t first, std::vector<SharedTemplate> templates)
        : m_first(first), m_templates(std::move(templates)) {
        std::vector<Outline> outlines;
        std::vector<std::int32_t> positions;
        for (std::size_t k = 0; k < m_templates.size(); ++k) {
            const auto position = static_cast<std::int32_t>(k);
            const Stroke points = m_templates[k]->points;
            const Suitability suitability = suitabilityOf(points);
            if (suitability == Suitability::OVERSIZED) {
                m_oversized.push_back(position);
            } else if (suitability == Suitability::SUITABLE) {
                outlines.push_back(outlineOf(points));
                positions.push_back(position);
            }
        }
        arrange(outlines, positions);
    }

    [[nodiscard]] std::size_t first() const { return m_first; }
    [[nodiscard]] const std::vector<SharedTemplate>& templates() const { return m_templates; }

    /// Positions, counted from `first`, of the templates that are always
    /// measured.
    [[nodiscard]] const std::vector<std::int32_t>& oversized() const { return m_oversized; }

    /// Empty when there is no outline. The first box contains all others.
    [[nodiscard]] const std::vector<Box>& boxes() const { return m_boxes; }
    [[nodiscard]] const Outline& outline(std::int32_t k) const {
        return m_outlines[static_cast<std::size_t>(k)];
    }
    /// Position of an outline's template, counted from `first`.
    [[nodiscard]] std::int32_t position(std::int32_t outline) const {
        return m_positions[static_cast<std::size_t>(outline)];
    }

private:
    /// Makes the boxes and puts the outlines in their order, so that those of a
    /// leaf lie side by side.
    void arrange(const std::vector<Outline>& outlines, const std::vector<std::int32_t>& positions) {
        if (outlines.empty()) {
            return;
        }
        std::vector<std::int32_t> order(outlines.size());
        std::iota(order.begin(), order.end(), 0);
        addBoxes(outlines, order, 0);
        m_outlines.reserve(order.size());
        m_positions.reserve(order.size());
        for (const std::int32_t k : order) {
            m_outlines.push_back(outlines[static_cast<std::size_t>(k)]);
            m_positions.push_back(positions[static_cast<std::size_t>(k)]);
        }
    }

    /// Sorts the outlines into halves, by their widest block sums, down to the
    /// leaves; they will lie from `first` on.
    void addBoxes(const std::vector<Outline>& outlines, std::span<std::int32_t> order,
                  std::int32_t first) {
        const std::size_t self = m_boxes.size();
        const Box box = boxAbout(outlines, order, first);
        m_boxes.push_back(box);
        if (order.size() <= LEAF) {
            return;
        }
        const int widest = widestBlock(box);
        const auto value = [&](std::int32_t k) {
            return outlines[static_cast<std::size_t>(k)].block[widest];
        };
        const std::size_t half = order.size() / 2;
        std::nth_element(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(half),
                         order.end(),
                         [&](std::int32_t a, std::int32_t b) { return value(a) < value(b); });
        addBoxes(outlines, order.first(half), first);
        m_boxes[self].secondHalf = static_cast<std::int32_t>(m_boxes.size());
        addBoxes(outlines, order.subspan(half), first + static_cast<std::int32_t>(half));
    }

    static Box boxAbout(const std::vector<Outline>& outlines, std::span<const std::int32_t> order,
                        std::int32_t first) {
        Box box{};
        box.first = first;
        box.last = first + static_cast<std::int32_t>(order.size());
        std::fill_n(box.low, BLOCKS, std::numeric_limits<float>::max());
        for (const std::int32_t k : order) {
            const Outline& outline = outlines[static_cast<std::size_t>(k)];
            for (int j = 0; j < BLOCKS; ++j) {
                box.low[j] = std::min(box.low[j], outline.block[j]);
                box.high[j] = std::max(box.high[j], outline.block[j]);
            }
        }
        return box;
    }

    static int widestBlock(const Box& box) {
        int widest = 0;
        for (int j = 1; j < BLOCKS; ++j) {
            if (box.high[j] - box.low[j] > box.high[widest] - box.low[widest]) {
                widest = j;
            }
        }
        return widest;
    }

    std::size_t m_first;
    std::vector<SharedTemplate> m_templates;
    std::vector<std::int32_t> m_oversized;
    std::vector<Outline> m_outlines;
    std::vector<std::int32_t> m_positions;
    std::vector<Box> m_boxes;
};

/// Trees of equal size are merged, as the digits of a counter carry (Bentley,
/// Saxe: Decomposable searching problems, 1980).
void TemplateIndex::append(SharedTemplate added) {
    std::vector<SharedTemplate> run{std::move(added)};
    std::size_t kept = m_trees.size();
    for (; kept > 0; --kept) {
        const auto& before = m_trees[kept - 1]->templates();
        if (before.size() >= LEAF && before.size() != run.size()) {
            break;
        }
        run.insert(run.begin(), before.begin(), before.end());
    }
    const std::size_t first = size() + 1 - run.size();
    auto tree = std::make_shared<const Tree>(first, std::move(run));
    m_trees.reserve(kept + 1);
    // From here on nothing can fail.
    m_trees.erase(m_trees.begin() + static_cast<std::ptrdiff_t>(kept), m_trees.end());
    m_trees.push_back(std::move(tree));
}

std::size_t TemplateIndex::size() const {
    return m_trees.empty() ? 0 : m_trees.back()->first() + m_trees.back()->templates().size();
}

const GraphicTemplate& TemplateIndex::operator[](std::size_t k) const {
    const auto holds = [&](const auto& tree) {
        return k < tree->first() + tree->templates().size();
    };
    const Tree& tree = **std::find_if(m_trees.begin(), m_trees.end(), holds);
    return *tree.templates()[k - tree.first()];
}

bool TemplateIndex::describes(std::span<const GraphicTemplate> templates) const {
    const auto isDescribed = [&](const auto& tree) {
        const auto& own = tree->templates();
        return std::equal(
            own.begin(), own.end(), templates.subspan(tree->first(), own.size()).begin(),
            [](const SharedTemplate& a, const GraphicTemplate& b) { return isSame(*a, b); });
    };
    return templates.size() == size() && std::all_of(m_trees.begin(), m_trees.end(), isDescribed);
}

/// Takes boxes and outlines in the order of their bounds (Hjaltason, Samet:
/// Distance browsing in spatial databases, 1999) until no bound is left below
/// the best distance found.
class TemplateIndex::Query {
public:
    Query(std::span<const std::shared_ptr<const Tree>> trees, Stroke path)
        : m_trees(trees), m_path(path), m_outline(outlineOf(path)), m_turned(m_outline) {
        m_heap.reserve(256);
    }

    Match run() {
        for (const auto& tree : m_trees) {
            for (const std::int32_t position : tree->oversized()) {
                measure(*tree, position);
            }
        }
        for (std::size_t t = 0; t < m_trees.size(); ++t) {
            if (!m_trees[t]->boxes().empty()) {
                pushBox(static_cast<std::int32_t>(t), 0);
            }
        }
        while (!m_heap.empty() && mayWin(m_heap.front().bound)) {
            std::pop_heap(m_heap.begin(), m_heap.end());
            const Entry entry = m_heap.back();
            m_heap.pop_back();
            entry.item < 0 ? open(entry.tree, ~entry.item) : consider(entry);
        }
        for (const Entry& entry : m_shortlist) {
            if (mayWin(entry.bound)) {
                measure(entry);
            }
        }
        return m_best;
    }

private:
    struct Entry {
        float bound;
        std::int32_t tree;
        /// An outline, or the complement of a box.
        std::int32_t item;
        bool operator<(const Entry& other) const { return bound > other.bound; }
    };

    [[nodiscard]] const Tree& treeOf(std::int32_t t) const {
        return *m_trees[static_cast<std::size_t>(t)];
    }

    /// Ties must be kept: the earlier template of the list wins.
    [[nodiscard]] bool mayWin(float bound) const { return bound - MARGIN <= m_limit; }

    void push(const Entry& entry) {
        if (mayWin(entry.bound)) {
            m_heap.push_back(entry);
            std::push_heap(m_heap.begin(), m_heap.end());
        }
    }

    void pushBox(std::int32_t tree, std::int32_t k) {
        const Box& box = treeOf(tree).boxes()[static_cast<std::size_t>(k)];
        Float4 total = Float4::all(0.0F);
        for (int j = 0; j < BLOCKS; j += 4) {
            const Float4 at = Float4::load(m_outline.block + j);
            const Float4 below = Float4::load(box.low + j) - at;
            const Float4 above = at - Float4::load(box.high + j);
            total = total + max(max(below, above), Float4::all(0.0F));
        }
        push({sum(total) / POINTS, tree, ~k});
    }

    void pushOutline(std::int32_t tree, std::int32_t k) {
        const Outline& outline = treeOf(tree).outline(k);
        if (mayWin(blockBound(m_outline, outline))) {
            push({radialBound(m_outline, outline), tree, k});
        }
    }

    void open(std::int32_t tree, std::int32_t k) {
        const Box& box = treeOf(tree).boxes()[static_cast<std::size_t>(k)];
        if (box.secondHalf != 0) {
            pushBox(tree, k + 1);
            pushBox(tree, box.secondHalf);
            return;
        }
        for (std::int32_t outline = box.first; outline < box.last; ++outline) {
            pushOutline(tree, outline);
        }
    }

    void consider(const Entry& entry) {
        const auto distance = estimate(m_turned, treeOf(entry.tree).outline(entry.item));
        if (!distance) {
            measure(entry);
        } else if (mayWin(*distance)) {
            m_shortlist.push_back({*distance, entry.tree, entry.item});
            m_limit = std::min<double>(m_limit, *distance + MARGIN);
        }
    }

    void measure(const Entry& entry) {
        const Tree& tree = treeOf(entry.tree);
        measure(tree, tree.position(entry.item));
    }

    void measure(const Tree& tree, std::int32_t position) {
        const auto k = static_cast<std::size_t>(position);
        const auto index = static_cast<std::int64_t>(tree.first() + k);
        const double distance =
            distanceAtBestAngle(m_path, tree.templates()[k]->points, STANDARD_SEARCH);
        if (distance < m_best.distance || (distance == m_best.distance && index < m_best.index)) {
            m_best = {index, distance};
            m_limit = std::min(m_limit, distance);
        }
    }

    std::span<const std::shared_ptr<const Tree>> m_trees;
    Stroke m_path;
    Outline m_outline;
    TurnedPath m_turned;
    std::vector<Entry> m_heap;
    std::vector<Entry> m_shortlist;
    /// No less than the distance of the winner.
    double m_limit = std::numeric_limits<double>::max();
    Match m_best;
};

Match TemplateIndex::match(Stroke path, const RotationSearch& search) const {
    if (search == STANDARD_SEARCH) {
        if (const auto match = matchQuickly(path)) {
            return *match;
        }
    }
    PlainMatching matching(path, search);
    for (const auto& tree : m_trees) {
        for (const SharedTemplate& t : tree->templates()) {
            matching.consider(t->points);
        }
    }
    return matching.best();
}

std::optional<Match> TemplateIndex::matchQuickly(Stroke path) const {
    if (path.size() != POINTS || suitabilityOf(path) != Suitability::SUITABLE) {
        return std::nullopt;
    }
    const Point2D centre = centroid(path);
    if (std::abs(centre.x) > MAX_OFFSET || std::abs(centre.y) > MAX_OFFSET) {
        return std::nullopt;
    }
    return Query(m_trees, path).run();
}

}  // namespace Scrivo::detail
