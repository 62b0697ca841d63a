#include "Beautifier/figures/Families.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

template <typename F>
void measureInto(const Evidence& evidence, std::span<double> own) {
    const auto values = F::measure(evidence);
    std::copy(values.begin(), values.end(), own.begin());
}

template <typename... F>
constexpr std::array<Family, sizeof...(F)> entriesOf(FamilyList<F...> /*list*/) {
    return {Family{F::FAMILY, F::NAME, F::CODE, F::NEEDS_FIT, F::KINDS, F::CLOSED, F::STAYS_INSIDE,
                   F::FEATURES, measureInto<F>, F::competes, F::judgeUnfitted, F::idealise,
                   F::inBox}...};
}

constexpr auto ENTRIES = entriesOf(Families());

/// Shifts the points of a figure; sizes and numbers stay.
struct Shift {
    double dx;
    double dy;

    void place(std::string_view /*name*/, Point2D& p) const {
        p.x += dx;
        p.y += dy;
    }
    void places(std::string_view name, auto& list) const {
        for (Point2D& p : list) {
            place(name, p);
        }
    }
    void size(std::string_view /*name*/, Point2D& /*size*/) const {}
    void number(std::string_view /*name*/, double& /*value*/) const {}
};

/// How far [low, high] has to move to lie in [0, size].
double shiftInto(double low, double high, double size) {
    return low < 0.0 ? -low : std::min(size - high, 0.0);
}

}  // namespace

std::span<const Family> families() {
    return ENTRIES;
}

const Family* findFamily(FigureFamily family) {
    const auto* const entry = std::find_if(ENTRIES.begin(), ENTRIES.end(),
                                           [&](const Family& f) { return f.family == family; });
    return entry != ENTRIES.end() ? entry : nullptr;
}

std::vector<Point2D> outlineOf(const Figure& figure) {
    return std::visit(
        []<typename F>(const F& shape) {
            if constexpr (std::is_same_v<F, std::monostate>) {
                return std::vector<Point2D>();
            } else {
                return outlineOf(shape);
            }
        },
        figure);
}

Box boxOf(std::span<const Point2D> points) {
    const auto [left, right] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [top, bottom] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
    return {{left->x, top->y}, {right->x, bottom->y}};
}

bool moveInside(Figure& figure, std::span<const Point2D> outline, double width, double height) {
    const auto [low, high] = boxOf(outline);
    const bool fits = high.x - low.x <= width && high.y - low.y <= height;
    const Shift shift{shiftInto(low.x, high.x, width), shiftInto(low.y, high.y, height)};
    if (!fits || (shift.dx == 0.0 && shift.dy == 0.0)) {
        return false;
    }
    std::visit(
        [&]<typename F>(F& shape) {
            if constexpr (!std::is_same_v<F, std::monostate>) {
                FigureTraits<F>::fields(shape, shift);
            }
        },
        figure);
    return true;
}

}  // namespace Scrivo::beautifier
