#include "lines/AnswerText.h"

#include "Beautifier/figures/Families.h"
#include "lines/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <variant>

namespace lines {
namespace {

/// Radians are rounded to this many decimals.
constexpr int ANGLE_DECIMALS = 6;

/// What is written before the numbers of a point and after them.
struct PointForm {
    std::string_view x;
    std::string_view y;
    std::string_view force;
    char end;
};
constexpr PointForm ARRAY{"[", ",", ",", ']'};
constexpr PointForm OBJECT{"{\"x\":", ",\"y\":", ",\"force\":", '}'};
constexpr std::size_t MAX_NAMES = 16;

template <const PointForm& FORM>
bool addPointsAs(Text& out, std::span<const Scrivo::Point2D> points, int decimals) {
    char before = '[';
    for (const Scrivo::Point2D& p : points) {
        out.add(before);
        char* to = out.reserve(2 * MAX_NUMBER + MAX_NAMES);
        to = std::copy(FORM.x.begin(), FORM.x.end(), to);
        to = writeRounded(to, p.x, decimals);
        if (to == nullptr) return false;
        to = std::copy(FORM.y.begin(), FORM.y.end(), to);
        to = writeRounded(to, p.y, decimals);
        if (to == nullptr) return false;
        out.finish(to);
        if (p.force != 0.0) {
            out.add(FORM.force);
            if (!addNumber(out, p.force)) return false;
        }
        out.add(FORM.end);
        before = ',';
    }
    out.add(']');
    return true;
}

bool isAngle(std::string_view name) {
    return name == "opening" || name == "rotation";
}

/// Writes the parameters of a figure in units of the input; `isGood` is false afterwards if a
/// number was declined.
struct Parameters {
    Text& out;
    const Units& units;
    bool& isGood;
    char separator = '{';

    void addName(std::string_view name) {
        out.add(separator);
        out.add('"');
        out.add(name);
        out.add("\":");
        separator = ',';
    }
    void add(double value, int decimals) { isGood = addRounded(out, value, decimals) && isGood; }
    void addPair(double x, double y) {
        out.add('[');
        add(x, units.decimals);
        out.add(',');
        add(y, units.decimals);
        out.add(']');
    }
    void addPlace(const Scrivo::Point2D& p) {
        addPair(p.x / units.scale + units.area.x, p.y / units.scale + units.area.y);
    }

    void number(std::string_view name, double value) {
        addName(name);
        if (isAngle(name)) {
            add(value, ANGLE_DECIMALS);
        } else {
            add(value / units.scale, units.decimals);
        }
    }
    void place(std::string_view name, const Scrivo::Point2D& p) {
        addName(name);
        addPlace(p);
    }
    void size(std::string_view name, const Scrivo::Point2D& p) {
        addName(name);
        addPair(p.x / units.scale, p.y / units.scale);
    }
    void places(std::string_view name, const auto& list) {
        addName(name);
        char before = '[';
        for (const Scrivo::Point2D& p : list) {
            out.add(before);
            addPlace(p);
            before = ',';
        }
        out.add(']');
    }
};

bool addParameters(Text& out, const Scrivo::Figure& figure, const Units& units) {
    bool isGood = true;
    std::visit(
        [&]<typename F>(const F& alternative) {
            if constexpr (std::is_same_v<F, std::monostate>) {
                out.add("null");
            } else {
                Parameters parameters{out, units, isGood};
                Scrivo::beautifier::FigureTraits<F>::fields(alternative, parameters);
                out.add('}');
            }
        },
        figure);
    return isGood;
}

void addText(Text& out, std::string_view text) {
    if (text.empty()) {
        out.add("null");
        return;
    }
    out.add('"');
    out.add(text);
    out.add('"');
}

}  // namespace

bool addPoints(Text& out, std::span<const Scrivo::Point2D> points, int decimals, bool asObjects) {
    if (points.empty()) return false;
    return asObjects ? addPointsAs<OBJECT>(out, points, decimals)
                     : addPointsAs<ARRAY>(out, points, decimals);
}

bool addAnswer(Text& out, const Answer& answer, const Units& units) {
    out.add(",\"type\":");
    if (!addNumber(out, answer.type)) return false;
    out.add(",\"figure\":");
    addText(out, answer.family);
    out.add(",\"kind\":");
    addText(out, answer.kind);
    out.add(",\"confidence\":");
    if (!answer.confidence) {
        out.add("null");
    } else if (!addNumber(out, *answer.confidence)) {
        return false;
    }
    out.add(",\"parameters\":");
    return addParameters(out, answer.figure, units);
}

}  // namespace lines
