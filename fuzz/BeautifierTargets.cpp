#include "Beautifier/Beautifier.h"
#include "Beautifier/figures/Families.h"
#include "Promises.h"
#include "Targets.h"

#include <optional>

namespace Scrivo::test::fuzz {

namespace {

std::optional<FigureFamily> familyOf(const Figure& figure) {
    struct Visitor {
        using Family = std::optional<FigureFamily>;
        Family operator()(const std::monostate&) const { return std::nullopt; }
        Family operator()(const DotFigure&) const { return FigureFamily::DOT; }
        Family operator()(const LineFigure&) const { return FigureFamily::LINE; }
        Family operator()(const AngleFigure&) const { return FigureFamily::ANGLE; }
        Family operator()(const TriangleFigure&) const { return FigureFamily::TRIANGLE; }
        Family operator()(const QuadrangleFigure&) const { return FigureFamily::QUADRANGLE; }
        Family operator()(const CircleFigure&) const { return FigureFamily::ELLIPSE; }
        Family operator()(const EllipseFigure&) const { return FigureFamily::ELLIPSE; }
    };
    return std::visit(Visitor(), figure);
}

std::uint8_t kindOf(const Figure& figure) {
    return std::visit(
        []<typename F>(const F& shape) -> std::uint8_t {
            if constexpr (requires { shape.subtype; }) {
                return static_cast<std::uint8_t>(shape.subtype);
            }
            return std::is_same_v<F, CircleFigure> ? 1 : 0;
        },
        figure);
}

bool isShare(double value) {
    return value >= 0.0 && value <= 1.0;
}

/// A stroke and where it was drawn.
struct Drawn {
    Stroke stroke;
    Area area;
    std::vector<Stroke> others;

    explicit Drawn(Input& input) : area(input) {
        stroke = area.fractionsOf(input.stroke());
        others = input.others();
        for (Stroke& other : others) {
            other = area.fractionsOf(other);
        }
    }
    [[nodiscard]] Beautified answer(const BeautifierOptions& options) const {
        return Beautifier(options).beautify(stroke, area.width, area.height, others);
    }
};

void requireOrderedAlternatives(const Beautified& answer) {
    double sum = answer.type == FIGURE_NONE ? 0.0 : answer.confidence;
    double previous = 1.0;
    for (const Alternative& alternative : answer.alternatives) {
        require(alternative.probability >= 0.01 && alternative.probability <= previous,
                "alternatives fall to 1 %");
        require(alternative.family != familyOf(answer.figure), "alternatives are other families");
        previous = alternative.probability;
        sum += alternative.probability;
    }
    require(sum <= 1.0 + 1e-9, "probabilities add up to at most 1");
}

bool fits(const Stroke& path) {
    const beautifier::Box box = beautifier::boxOf(path);
    return box.high.x - box.low.x <= 1.0 && box.high.y - box.low.y <= 1.0;
}

/// A stroke far away is moved by numbers whose rounding is as large as theirs.
double roundingOf(const Drawn& drawn) {
    double largest = 1.0;
    for (const Point2D& p : drawn.stroke) {
        largest = std::max({largest, std::abs(p.x), std::abs(p.y)});
    }
    return 1e-9 * largest;
}

void requireInside(const Beautified& answer, double rounding) {
    for (const Point2D& p : answer.path) {
        require(
            p.x >= -rounding && p.x <= 1.0 + rounding && p.y >= -rounding && p.y <= 1.0 + rounding,
            "figures that fit are inside the area");
    }
}

void requireFigure(const Beautified& answer, const Drawn& drawn, const BeautifierOptions& options) {
    require(isFinite(answer.path), "figures have finite points");
    require(isDrawn(answer.path, answer.type), "code and path agree");
    require(beautifier::findFamily(*familyOf(answer.figure))->code == answer.type,
            "code and figure agree");
    require(
        areSame(Scrivo::outlineOf(answer.figure, drawn.area.width, drawn.area.height), answer.path),
        "the path is the figure's outline");
    if (options.insideArea && answer.type != FIGURE_LINE && fits(answer.path)) {
        requireInside(answer, roundingOf(drawn));
    }
}

void requireAgreement(const Beautified& answer, const Drawn& drawn,
                      const BeautifierOptions& options) {
    require(isShare(answer.confidence), "confidence is from 0 to 1");
    const bool isFigure = answer.reason == Reason::RECOGNISED;
    require(
        isFigure == (answer.type != FIGURE_NONE) && isFigure == familyOf(answer.figure).has_value(),
        "code, figure and reason agree");
    requireOrderedAlternatives(answer);
    if (isFigure) {
        requireFigure(answer, drawn, options);
    } else {
        require(areSame(answer.path, drawn.stroke), "ink comes back bit for bit");
    }
}

bool isSame(const Beautified& a, const Beautified& b) {
    return a.type == b.type && familyOf(a.figure) == familyOf(b.figure) && areSame(a.path, b.path);
}

void requireSameOnAnotherThread(const Beautified& answer, const Drawn& drawn,
                                const BeautifierOptions& options) {
    const Beautified again = onAnotherThread([&] { return drawn.answer(options); });
    require(isSame(again, answer) && again.figure.index() == answer.figure.index() &&
                sameBits(again.confidence, answer.confidence),
            "every thread has the same answer");
}

/// A stroke that is valid has points to fit figures to, unless it is a point itself.
void requireResampled(const Beautified& answer, const Drawn& drawn) {
    constexpr std::size_t COUNT = 97;
    const Stroke points = resample(drawn.stroke, drawn.area.width, drawn.area.height);
    require(points.empty() || (points.size() == COUNT && isFinite(points)),
            "strokes are resampled to finite points");
    const bool isFitted = answer.type != FIGURE_NONE && answer.type != FIGURE_POINT;
    require(!points.empty() || !isFitted, "figures are fitted to points");
}

/// Raising the sensitivity keeps every figure.
void requireMonotony(const Beautified& answer, const Drawn& drawn, BeautifierOptions options) {
    options.sensitivity = 0.5 * (1.0 + options.sensitivity);
    const Beautified eager = drawn.answer(options);
    require(answer.type == FIGURE_NONE || isSame(eager, answer),
            "more sensitivity keeps the figure");
}

}  // namespace

void beautify(Bytes bytes) {
    Input input(bytes);
    const BeautifierOptions options = input.options();
    const Drawn drawn(input);
    const Beautified answer = drawn.answer(options);
    requireAgreement(answer, drawn, options);
    const auto family = familyOf(answer.figure);
    require(!family || options.figures.count(*family) > 0, "only wanted families are drawn");
    const bool isPolygon = family == FigureFamily::TRIANGLE || family == FigureFamily::QUADRANGLE;
    require(options.regularFigures || !isPolygon || kindOf(answer.figure) == 0,
            "irregular figures are general");
    requireMonotony(answer, drawn, options);
    requireResampled(answer, drawn);
    requireSameOnAnotherThread(answer, drawn, options);
}

void beautifyAs(Bytes bytes) {
    Input input(bytes);
    const BeautifierOptions options = input.options();
    const auto& family = beautifier::families()[input.upTo(beautifier::families().size() - 1)];
    const auto kind = static_cast<std::uint8_t>(input.upTo(7));
    const bool hasKind = kind < family.kinds.size();
    const Wish wish = hasKind ? Wish(family.family, kind) : Wish(family.family);
    const Drawn drawn(input);
    const Beautified answer = Beautifier(options).beautifyAs(drawn.stroke, wish, drawn.area.width,
                                                             drawn.area.height, drawn.others);
    requireAgreement(answer, drawn, options);
    if (answer.type != FIGURE_NONE) {
        require(familyOf(answer.figure) == family.family, "the figure is of the wished family");
        require(!hasKind || kindOf(answer.figure) == kind, "the figure is of the wished kind");
    }
}

namespace {

/// Sets every number of a figure.
struct Fill {
    Input& input;
    bool isOrdinary;

    void number(std::string_view /*name*/, double& value) const {
        value = isOrdinary ? input.in(-1000.0, 1000.0) : input.anyDouble();
    }
    void place(std::string_view name, Point2D& p) const {
        number(name, p.x);
        number(name, p.y);
    }
    void size(std::string_view name, Point2D& p) const { place(name, p); }
    void places(std::string_view name, auto& list) const {
        for (Point2D& p : list) {
            place(name, p);
        }
    }
};

template <typename F>
Figure filled(Input& input, bool isOrdinary) {
    F figure{};
    if constexpr (!std::is_same_v<F, std::monostate>) {
        beautifier::FigureTraits<F>::fields(figure, Fill{input, isOrdinary});
    }
    return figure;
}

template <std::size_t... I>
Figure anyFigure(Input& input, bool isOrdinary, std::index_sequence<I...> /*indices*/) {
    using Make = Figure (*)(Input&, bool);
    constexpr Make MAKE[] = {filled<std::variant_alternative_t<I, Figure>>...};
    return MAKE[input.upTo(sizeof...(I) - 1)](input, isOrdinary);
}

}  // namespace

void outlineOf(Bytes bytes) {
    Input input(bytes);
    const bool isOrdinary = input.flag();
    constexpr auto INDICES = std::make_index_sequence<std::variant_size_v<Figure>>();
    const Figure figure = anyFigure(input, isOrdinary, INDICES);
    const Area area(input);
    const Stroke outline = Scrivo::outlineOf(figure, area.width, area.height);
    const auto family = familyOf(figure);
    const auto isOfFigure = [&](const Stroke& points) {
        return family && isDrawn(points, beautifier::findFamily(*family)->code);
    };
    require(outline.empty() || isOfFigure(outline), "figure and outline agree");
    require(isFinite(outline), "outlines are finite");
    const bool hasPlace = isOrdinary && area.width >= 1.0 && area.height >= 1.0;
    require(!hasPlace || !family || !outline.empty(), "ordinary areas have room for a figure");
    const Stroke inUnits = Scrivo::outlineOf(figure, 1.0, 1.0);
    require(!isOrdinary || (family ? isOfFigure(inUnits) : inUnits.empty()),
            "ordinary figures have outlines");
}

}  // namespace Scrivo::test::fuzz
