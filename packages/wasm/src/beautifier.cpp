#include "Beautifier/Beautifier.h"

#include "Exchange.h"
#include "FigureNumbers.h"

#include <cstdint>
#include <set>

/// The beautifier's part of the WebAssembly module. lib/bind-beautifier.js is its
/// only user; lib/define-beautifier.js of the main package has checked the arguments.
namespace binding {
namespace {

/// The members whose bits are set.
template <typename Enumeration>
std::set<Enumeration> members(unsigned bits) {
    std::set<Enumeration> result;
    for (std::uint8_t member = 0; bits >> member != 0; ++member) {
        if ((bits >> member & 1U) != 0) result.insert(static_cast<Enumeration>(member));
    }
    return result;
}

Scrivo::BeautifierOptions readOptions(Reader& in) {
    Scrivo::BeautifierOptions options;
    options.figures = members<Scrivo::FigureFamily>(static_cast<unsigned>(in.size()));
    options.minSize = in.number();
    options.tapSize = in.number();
    options.sensitivity = in.number();
    options.horizontalVertical = in.boolean();
    options.regularFigures = in.boolean();
    options.nearbyStrokes = in.boolean();
    options.insideArea = in.boolean();
    options.anchors = members<Scrivo::AnchorSort>(static_cast<unsigned>(in.size()));
    return options;
}

Scrivo::Wish wishOf(int family, int kind) {
    const auto wished = static_cast<Scrivo::FigureFamily>(family);
    if (kind < 0) return wished;
    return {wished, static_cast<std::uint8_t>(kind)};
}

const double* write(const Scrivo::Beautified& answer, std::size_t stride) {
    const Flat figure(answer.figure);
    Answer out;
    out.add(answer.type);
    out.add(answer.confidence);
    out.add(static_cast<double>(answer.reason));
    out.add(figure.index);
    out.add(figure.subtype);
    out.add(static_cast<double>(figure.parameters.size()));
    out.add(static_cast<double>(2 * answer.alternatives.size()));
    out.add(static_cast<double>(stride * answer.path.size()));
    out.add(figure.parameters);
    for (const Scrivo::Alternative& alternative : answer.alternatives) {
        out.add(static_cast<double>(alternative.family));
        out.add(alternative.probability);
    }
    out.add(answer.path, stride);
    return out.data();
}

const double* write(const std::vector<Scrivo::Point2D>& points) {
    Answer out;
    out.add(static_cast<double>(2 * points.size()));
    out.add(points, 2);
    return out.data();
}

}  // namespace

/// Options; family and kind of the wish, -1 for none; width, height; stride and number
/// of points of the stroke, the other strokes, the stroke. The answer is that of
/// `write`.
SCRIVO_EXPORT(beautify) const double* beautify(const double* arguments) {
    Reader in(arguments);
    const Scrivo::Beautifier beautifier(readOptions(in));
    const int family = in.integer();
    const int kind = in.integer();
    const double width = in.number();
    const double height = in.number();
    const std::size_t stride = in.size();
    const std::size_t count = in.size();
    const auto others = in.strokes();
    const auto stroke = in.points(count, stride);
    return write(family < 0
                     ? beautifier.beautify(stroke, width, height, others)
                     : beautifier.beautifyAs(stroke, wishOf(family, kind), width, height, others),
                 stride);
}

/// Width, height, number of points, points. The answer is that of `outlineOf`.
SCRIVO_EXPORT(resample) const double* resample(const double* arguments) {
    Reader in(arguments);
    const double width = in.number();
    const double height = in.number();
    const auto stroke = in.points(in.size(), 2);
    return write(Scrivo::resample(stroke, width, height));
}

/// Index of the figure, width, height, number of parameters, parameters. The answer is
/// the number of coordinates, then x and y of each point.
SCRIVO_EXPORT(outlineOf) const double* outlineOf(const double* arguments) {
    Reader in(arguments);
    const std::size_t index = in.size();
    const double width = in.number();
    const double height = in.number();
    const std::size_t count = in.size();
    return write(Scrivo::outlineOf(figureOf(index, in.numbers(count)), width, height));
}

}  // namespace binding
