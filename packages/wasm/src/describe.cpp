#include "Beautifier/figures/Families.h"
#include "Exchange.h"
#include "FigureNumbers.h"

#include <string>

/// The tables of families and figures as JSON, for the build of the package alone: the
/// shipped modules do not contain this file.
namespace binding {
namespace {

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

/// The results for all `items`, as a JSON array.
std::string list(const auto& items, auto toJson) {
    std::string result;
    for (const auto& item : items) {
        result += (result.empty() ? "" : ",") + toJson(item);
    }
    return '[' + result + ']';
}

/// The fields of a figure as [name, places]: the length of an array of places, -1 for a
/// single place and 0 for a number.
struct Fields {
    std::vector<std::string>& all;

    void add(std::string_view name, int places) const {
        all.push_back('[' + quoted(name) + ',' + std::to_string(places) + ']');
    }
    void number(std::string_view name, double /*value*/) const { add(name, 0); }
    void place(std::string_view name, const Scrivo::Point2D& /*p*/) const { add(name, -1); }
    void size(std::string_view name, const Scrivo::Point2D& p) const { place(name, p); }
    void places(std::string_view name, const auto& points) const {
        add(name, static_cast<int>(points.size()));
    }
};

template <std::size_t I>
std::string figureJson() {
    using F = std::variant_alternative_t<I, Scrivo::Figure>;
    if constexpr (std::is_same_v<F, std::monostate>) {
        return "null";
    } else {
        using Traits = Scrivo::beautifier::FigureTraits<F>;
        std::vector<std::string> fields;
        const F figure{};
        Traits::fields(figure, Fields{fields});
        return "{\"kind\":" + quoted(Traits::NAME) +
               ",\"subtypes\":" + list(Traits::KINDS, quoted) +
               ",\"fields\":" + list(fields, [](const std::string& field) { return field; }) + '}';
    }
}

template <std::size_t... I>
std::string figuresJson(std::index_sequence<I...> /*indices*/) {
    return list(std::vector{figureJson<I>()...}, [](const std::string& json) { return json; });
}

std::string familyJson(const Scrivo::beautifier::Family& family) {
    return '[' + quoted(family.name) + ',' + std::to_string(family.code) + ',' +
           list(family.kinds, quoted) + ']';
}

}  // namespace

/// The answer is the number of characters and the characters.
SCRIVO_EXPORT(describe) const double* describe(const double* /*none*/) {
    constexpr auto FIGURES = std::make_index_sequence<std::variant_size_v<Scrivo::Figure>>();
    const std::string json = "{\"families\":" + list(Scrivo::beautifier::families(), familyJson) +
                             ",\"figures\":" + figuresJson(FIGURES) + '}';
    Answer out;
    out.add(static_cast<double>(json.size()));
    for (const char c : json) out.add(c);
    return out.data();
}

}  // namespace binding
