#include "Beautifier/fit/ConstrainedFit.h"

#include "Beautifier/fit/Levelling.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <type_traits>
#include <utility>

namespace Scrivo::beautifier {

namespace {

constexpr double PI = std::numbers::pi;
// Points within this share of an edge from either end are assigned to no edge.
constexpr double MARGIN = 0.12;

// In their place each corner of the free fit has this share of the weight of the
// edge's points.
constexpr double CORNER_WEIGHT = 0.25;

// The edge as first fitted has the weight of this many points, so that an edge
// without ink stays where it is.
constexpr double PRIOR = 0.5;

// Below this sine of the angle between them, edges count as parallel.
constexpr double PARALLEL = 0.1;

constexpr int NEWTON_STEPS = 2;

// A corner that lies further than this from that of the free fit, share of the
// ink's longer side, is drawn back: in the mean square its excess counts so many
// times. The form keeps, of the polygons that fit about equally well, one that
// moves no corner far.
constexpr double MAX_MOVE = 0.065;
constexpr double EXCESS = 3.0;
constexpr int MOVE_STEPS = 4;

constexpr std::size_t MAX_UNKNOWNS = 7;

std::size_t index(int i) {
    return static_cast<std::size_t>(i);
}

Vec unit(double angle) {
    return {std::cos(angle), std::sin(angle)};
}

/// Normal equations; only the lower triangle is kept.
template <std::size_t N>
struct Normal {
    using Row = std::array<double, N>;

    std::array<Row, N> m{};
    Row right{};

    void add(const Row& row, double weight, double value) {
        for (std::size_t a = 0; a < N; ++a) {
            const double w = weight * row[a];
            for (std::size_t b = 0; b <= a; ++b) {
                m[a][b] += w * row[b];
            }
            right[a] += w * value;
        }
    }

    /// By Cholesky decomposition. The lower bound of the pivots leaves unknowns
    /// alone that the ink does not determine.
    Row solve() {
        constexpr double MIN_PIVOT = 1e-9;
        Row x = right;
        for (std::size_t a = 0; a < N; ++a) {
            for (std::size_t b = 0; b < a; ++b) {
                for (std::size_t k = 0; k < b; ++k) {
                    m[a][b] -= m[a][k] * m[b][k];
                }
                m[a][b] *= m[b][b];
                m[a][a] -= m[a][b] * m[a][b];
                x[a] -= m[a][b] * x[b];
            }
            m[a][a] = 1.0 / std::sqrt(std::max(m[a][a], MIN_PIVOT));
            x[a] *= m[a][a];
        }
        for (std::size_t a = N; a-- > 0;) {
            for (std::size_t k = a + 1; k < N; ++k) {
                x[a] -= m[k][a] * x[k];
            }
            x[a] *= m[a][a];
        }
        return x;
    }
};

/// Iterates towards the best polygon of a form. `N` unknowns: the centre, the
/// angles, the distances.
template <std::size_t N>
class Iteration {
public:
    Iteration(const PolygonInk& ink, const PolygonForm& form, int first)
        : m_ink(ink), m_form(form), m_first(first), m_angles(index(form.angles)) {
        start();
        updateNormals();
    }

    /// One Gauss-Newton step on the distances of all points from their edges.
    void improve() {
        Normal<N> normal;
        for (int k = 0; k < m_form.edges; ++k) {
            addInk(normal, k);
            if (m_isLimited) {
                addExcess(normal, k);
            }
        }
        const auto step = normal.solve();
        m_state.centre = m_state.centre + Vec{step[0], step[1]};
        for (std::size_t i = 2; i < N; ++i) {
            m_state.values[i] += step[i];
        }
        updateNormals();
    }

    /// Turns the polygon about the mean of its corners until the first angle is level
    /// or upright, and holds that angle.
    void hold() {
        Vec mean;
        for (int k = 0; k < m_form.edges; ++k) {
            mean = mean + (1.0 / m_form.edges) * corner(k);
        }
        const double angle = -lean(m_state.values[2]);
        m_state.centre = turned(m_state.centre, mean, angle);
        m_state.values[2] += angle;
        m_isHeld = true;
        updateNormals();
    }

    /// Limits how far corners move.
    void limit() {
        m_isLimited = true;
        for (int i = 0; i < MOVE_STEPS && excess() > 0.0; ++i) {
            const State before = m_state;
            const double error = squares() + weighedExcess();
            improve();
            if (!(squares() + weighedExcess() < error)) {
                m_state = before;
                return;
            }
        }
    }

    PolygonFit fit() const {
        PolygonFit fit;
        fit.edges = m_form.edges;
        fit.axis = m_state.values[2];
        fit.squares = squares();
        for (int k = 0; k < m_form.edges; ++k) {
            fit.corners[inkIndex(k)] = corner(k);
            if (!(cross(m_state.normals[before(k)], m_state.normals[index(k)]) > PARALLEL)) {
                fit.squares = INF;
            }
        }
        return fit;
    }

private:
    using Row = typename Normal<N>::Row;

    struct State {
        Vec centre;
        std::array<double, MAX_UNKNOWNS> values{};  ///< elements 0 and 1 are unused
        std::array<Vec, MAX_EDGES> normals;
    };

    /// Of edge or corner `k` of the form, in the ink.
    std::size_t inkIndex(int k) const { return index((m_first + k) % m_form.edges); }
    std::size_t before(int k) const { return index(k == 0 ? m_form.edges - 1 : k - 1); }
    std::size_t distance(std::size_t k) const {
        return 2 + m_angles + index(m_form.edge[k].distance);
    }

    /// The change of angle `a` turns the normal of edge `k` so many times.
    double turns(std::size_t k, std::size_t a) const {
        return m_isHeld && a == 0 ? 0.0 : m_form.edge[k].turns[a];
    }

    /// Where edge `k` meets the one before it, from the distances to the centre.
    Vec corner(int k) const {
        const Vec a = m_state.normals[before(k)];
        const Vec b = m_state.normals[index(k)];
        const double sine = cross(a, b);
        const double c = m_state.values[distance(before(k))] / sine;
        const double d = m_state.values[distance(index(k))] / sine;
        return m_state.centre + Vec{c * b.y - d * a.y, d * a.x - c * b.x};
    }

    Vec moveOf(int k) const { return corner(k) - m_ink.corners[inkIndex(k)]; }

    /// Sum of the squares by which corners move too far.
    double excess() const {
        double sum = 0.0;
        for (int k = 0; k < m_form.edges; ++k) {
            const double over = std::max(norm(moveOf(k)) - MAX_MOVE, 0.0);
            sum += over * over;
        }
        return sum;
    }
    double weighedExcess() const { return EXCESS * m_ink.count * excess(); }

    double squares() const {
        double sum = 0.0;
        for (int k = 0; k < m_form.edges; ++k) {
            const EdgeInk& e = m_ink.edge[inkIndex(k)];
            const Vec n = m_state.normals[index(k)];
            const double off = dot(n, e.mean - m_state.centre) - m_state.values[distance(index(k))];
            sum +=
                e.xx * n.x * n.x + 2.0 * e.xy * n.x * n.y + e.yy * n.y * n.y + e.count * off * off;
        }
        return sum;
    }

    /// How the distance of the place `p` from edge `k` depends on the unknowns.
    Row rowOf(std::size_t k, Vec p) const {
        const Vec n = m_state.normals[k];
        Row row{n.x, n.y};
        const double along = cross(n, p - m_state.centre);
        for (std::size_t a = 0; a < m_angles; ++a) {
            row[2 + a] = -turns(k, a) * along;
        }
        row[distance(k)] = 1.0;
        return row;
    }

    void addInk(Normal<N>& normal, int k) const {
        const EdgeInk& e = m_ink.edge[inkIndex(k)];
        const Vec n = m_state.normals[index(k)];
        const Vec t{-n.y, n.x};
        const double off = dot(n, e.mean - m_state.centre) - m_state.values[distance(index(k))];
        normal.add(rowOf(index(k), e.mean), e.count, off);
        // Every point lies at the mean plus its scatter, whose sum is zero.
        Row scatter{};
        for (std::size_t a = 0; a < m_angles; ++a) {
            scatter[2 + a] = -turns(index(k), a);
        }
        const double tt = e.xx * t.x * t.x + 2.0 * e.xy * t.x * t.y + e.yy * t.y * t.y;
        const double nt = e.xx * n.x * t.x + e.xy * (n.x * t.y + n.y * t.x) + e.yy * n.y * t.y;
        normal.add(scatter, tt, nt / std::max(tt, 1e-12));
    }

    /// Draws corner `k` back to the limit, in the direction in which it has moved.
    void addExcess(Normal<N>& normal, int k) const {
        const Vec move = moveOf(k);
        const double length = norm(move);
        if (!(length > MAX_MOVE)) {
            return;
        }
        const Vec u = (1.0 / length) * move;
        const Vec a = m_state.normals[before(k)];
        const Vec b = m_state.normals[index(k)];
        // The corner shifts with its distances along both normals.
        const double sine = cross(a, b);
        const double ofA = cross(u, b) / sine;
        const double ofB = cross(a, u) / sine;
        const Row rowA = rowOf(before(k), corner(k));
        const Row rowB = rowOf(index(k), corner(k));
        Row row;
        for (std::size_t i = 0; i < N; ++i) {
            row[i] = ofA * rowA[i] + ofB * rowB[i];
        }
        normal.add(row, EXCESS * m_ink.count, MAX_MOVE - length);
    }

    /// Starts from the mean of the corners and the angles that match the normals of
    /// the free edges best.
    void start() {
        Normal<3> normal;
        for (int k = 0; k < m_form.edges; ++k) {
            const EdgeInk& e = m_ink.edge[inkIndex(k)];
            const EdgeRule& rule = m_form.edge[index(k)];
            const double wrap = m_first + k >= m_form.edges ? 2.0 : 0.0;
            Normal<3>::Row row{};
            std::copy(rule.turns.begin(), rule.turns.end(), row.begin());
            normal.add(row, e.xx + e.yy, m_ink.normals[inkIndex(k)] + (wrap - rule.fixed) * PI);
            m_state.centre = m_state.centre + (1.0 / m_form.edges) * m_ink.corners[index(k)];
        }
        const auto angles = normal.solve();
        std::copy(angles.begin(), angles.begin() + m_form.angles, m_state.values.begin() + 2);
    }

    void updateNormals() {
        for (int k = 0; k < m_form.edges; ++k) {
            const EdgeRule& rule = m_form.edge[index(k)];
            double direction = rule.fixed * PI;
            for (std::size_t a = 0; a < m_angles; ++a) {
                direction += rule.turns[a] * m_state.values[2 + a];
            }
            m_state.normals[index(k)] = unit(direction);
        }
    }

    const PolygonInk& m_ink;
    const PolygonForm& m_form;
    int m_first;
    std::size_t m_angles;
    bool m_isHeld = false;
    bool m_isLimited = false;
    State m_state;
};

PolygonFit inDrawingOrder(PolygonFit fit, bool reversed) {
    if (reversed) {
        std::reverse(fit.corners.begin() + 1, fit.corners.begin() + fit.edges);
    }
    return fit;
}

template <std::size_t N>
Iteration<N> improved(const PolygonInk& ink, const PolygonForm& form, int first) {
    Iteration<N> iteration(ink, form, first);
    for (int i = 0; i < NEWTON_STEPS; ++i) {
        iteration.improve();
    }
    return iteration;
}

template <std::size_t N>
PolygonFit placed(Iteration<N> iteration, bool isLevel) {
    if (isLevel) {
        iteration.hold();
    }
    iteration.limit();
    return iteration.fit();
}

/// Calls `fit` with the number of unknowns of the form.
template <typename Fit>
PolygonFit withUnknowns(const PolygonForm& form, Fit fit) {
    switch (2 + form.angles + form.distances) {
        case 4:
            return fit(std::integral_constant<std::size_t, 4>());
        case 5:
            return fit(std::integral_constant<std::size_t, 5>());
        case 6:
            return fit(std::integral_constant<std::size_t, 6>());
        default:
            return fit(std::integral_constant<std::size_t, MAX_UNKNOWNS>());
    }
}

/// Weighted sums of coordinates and their products about some origin.
struct Sums {
    double n = 0.0, x = 0.0, y = 0.0, xx = 0.0, xy = 0.0, yy = 0.0;

    void add(Vec p, double weight) {
        n += weight;
        x += weight * p.x;
        y += weight * p.y;
        xx += weight * p.x * p.x;
        xy += weight * p.x * p.y;
        yy += weight * p.y * p.y;
    }
    EdgeInk about(Vec origin) const {
        const Vec mean{x / n, y / n};
        return {n, origin + mean, xx - x * mean.x, xy - x * mean.y, yy - y * mean.y};
    }
};

void orient(PolygonInk& ink, std::span<const Vec> corners) {
    const std::size_t n = corners.size();
    double area = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        area += cross(corners[i], corners[(i + 1) % n]);
    }
    ink.edges = static_cast<int>(n);
    ink.reversed = area < 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        ink.corners[i] = corners[ink.reversed ? (n - i) % n : i];
    }
}

/// An edge while points are being assigned.
struct Piece {
    Vec from;
    Vec along;
    double perSquare = 0.0;  ///< 1 / squared length
    Sums sums;
};

void assign(Vec p, std::span<Piece> pieces) {
    double nearest = INF;
    double place = 0.0;
    Piece* best = nullptr;
    for (Piece& piece : pieces) {
        const Vec d = p - piece.from;
        const double at = dot(d, piece.along) * piece.perSquare;
        const Vec off = d - std::clamp(at, 0.0, 1.0) * piece.along;
        const double square = dot(off, off);
        if (square < nearest) {
            nearest = square;
            place = at;
            best = &piece;
        }
    }
    if (best != nullptr && place >= MARGIN && place <= 1.0 - MARGIN) {
        best->sums.add(p - best->from, 1.0);
    }
}

/// Where the free edges meet. Where two of them are nearly parallel, their
/// intersection is ill-conditioned and the corner of the first fit stays.
std::array<Vec, MAX_EDGES> freeCorners(const PolygonInk& ink) {
    std::array<Vec, MAX_EDGES> along;
    for (int k = 0; k < ink.edges; ++k) {
        const EdgeInk& e = ink.edge[index(k)];
        along[index(k)] = unit(0.5 * std::atan2(2.0 * e.xy, e.xx - e.yy));
    }
    std::array<Vec, MAX_EDGES> corners = ink.corners;
    for (int k = 0; k < ink.edges; ++k) {
        const int before = k == 0 ? ink.edges - 1 : k - 1;
        const Vec a = along[index(before)];
        const Vec b = along[index(k)];
        if (std::abs(cross(a, b)) > PARALLEL) {
            corners[index(k)] =
                intersection(ink.edge[index(before)].mean, a, ink.edge[index(k)].mean, b);
        }
    }
    return corners;
}

/// Adds the corners of the free fit to the points of the edges. They lie on the
/// free edges, so the free fit does not change.
void addCorners(PolygonInk& ink) {
    ink.corners = freeCorners(ink);
    for (int k = 0; k < ink.edges; ++k) {
        EdgeInk& e = ink.edge[index(k)];
        Sums sums{e.count, 0.0, 0.0, e.xx, e.xy, e.yy};
        for (const int end : {k, (k + 1) % ink.edges}) {
            sums.add(ink.corners[index(end)] - e.mean, CORNER_WEIGHT * e.count);
        }
        e = sums.about(e.mean);
        ink.count += e.count;
    }
}

/// Size of the free fit and directions of its normals.
void describe(PolygonInk& ink) {
    Vec mean;
    double squares = 0.0;
    double before = -INF;
    for (int k = 0; k < ink.edges; ++k) {
        const Vec p = ink.corners[index(k)];
        const Vec d = ink.corners[index((k + 1) % ink.edges)] - p;
        const double angle = std::atan2(-d.x, d.y);
        before = angle < before ? angle + 2.0 * PI : angle;
        ink.normals[index(k)] = before;
        mean = mean + (1.0 / ink.edges) * p;
        squares += dot(p, p) / ink.edges;
    }
    ink.size = 2.0 * std::sqrt(std::max(squares - dot(mean, mean), 0.0));
}

}  // namespace

PolygonInk inkAlong(std::span<const Vec> points, std::span<const Vec> corners) {
    PolygonInk ink;
    orient(ink, corners);
    std::array<Piece, MAX_EDGES> pieces;
    for (int k = 0; k < ink.edges; ++k) {
        const Vec from = ink.corners[index(k)];
        const Vec along = ink.corners[index((k + 1) % ink.edges)] - from;
        pieces[index(k)] = {from, along, 1.0 / std::max(dot(along, along), 1e-12), {}};
        pieces[index(k)].sums.add(MARGIN * along, 0.5 * PRIOR);
        pieces[index(k)].sums.add((1.0 - MARGIN) * along, 0.5 * PRIOR);
    }
    for (const Vec& p : points) {
        assign(p, {pieces.data(), index(ink.edges)});
    }
    for (int k = 0; k < ink.edges; ++k) {
        ink.edge[index(k)] = pieces[index(k)].sums.about(pieces[index(k)].from);
    }
    addCorners(ink);
    describe(ink);
    return ink;
}

PolygonFit fitPolygon(const PolygonInk& ink, const PolygonForm& form, int first) {
    return inDrawingOrder(
        withUnknowns(form, [&](auto n) { return improved<n()>(ink, form, first).fit(); }),
        ink.reversed);
}

PolygonFit placePolygon(const PolygonInk& ink, const PolygonForm& form, int first, bool isLevel) {
    return inDrawingOrder(
        withUnknowns(form,
                     [&](auto n) { return placed(improved<n()>(ink, form, first), isLevel); }),
        ink.reversed);
}

PolygonFit fitFreePolygon(const PolygonInk& ink) {
    PolygonFit fit;
    fit.edges = ink.edges;
    fit.corners = ink.corners;
    for (int k = 0; k < ink.edges; ++k) {
        const EdgeInk& e = ink.edge[index(k)];
        const double half = 0.5 * (e.xx - e.yy);
        fit.squares += std::max(0.5 * (e.xx + e.yy) - std::sqrt(half * half + e.xy * e.xy), 0.0);
    }
    fit.axis = leastLean(std::span(ink.corners).first(index(ink.edges)));
    return inDrawingOrder(fit, ink.reversed);
}

}  // namespace Scrivo::beautifier
