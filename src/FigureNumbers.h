#pragma once

#include "Beautifier/Figure.h"
#include "Beautifier/figures/Families.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

/// Figures as numbers, the form in which they cross into JavaScript and back.
namespace binding {

/// The numbers of a figure, field by field.
struct Numbers {
    std::vector<double>& values;

    void number(std::string_view /*name*/, double value) const { values.push_back(value); }
    void place(std::string_view /*name*/, const Scrivo::Point2D& p) const {
        values.push_back(p.x);
        values.push_back(p.y);
    }
    void size(std::string_view name, const Scrivo::Point2D& p) const { place(name, p); }
    void places(std::string_view name, const auto& list) const {
        for (const Scrivo::Point2D& p : list) place(name, p);
    }
};

/// A figure as numbers: its index in the variant, its subtype, its parameters.
struct Flat {
    std::uint32_t index = 0;
    std::uint32_t subtype = 0;
    std::vector<double> parameters;

    explicit Flat(const Scrivo::Figure& figure)
        : index(static_cast<std::uint32_t>(figure.index())) {
        std::visit([this](const auto& f) { read(f); }, figure);
    }

private:
    void read(std::monostate /*none*/) {}
    template <typename F>
    void read(const F& figure) {
        Scrivo::beautifier::FigureTraits<F>::fields(figure, Numbers{parameters});
        if constexpr (requires { figure.subtype; }) {
            subtype = static_cast<std::uint32_t>(figure.subtype);
        }
    }
};

/// A figure from its numbers; the inverse of `Numbers`.
struct Assign {
    std::span<const double> values;
    std::size_t& next;

    void number(std::string_view /*name*/, double& value) const { value = values[next++]; }
    void place(std::string_view name, Scrivo::Point2D& p) const {
        number(name, p.x);
        number(name, p.y);
    }
    void size(std::string_view name, Scrivo::Point2D& p) const { place(name, p); }
    void places(std::string_view name, auto& list) const {
        for (Scrivo::Point2D& p : list) place(name, p);
    }
};

/// The alternative of this index with these numbers; none when their count is wrong.
template <std::size_t I = 0>
Scrivo::Figure figureOf(std::size_t index, std::span<const double> values) {
    if constexpr (I < std::variant_size_v<Scrivo::Figure>) {
        using F = std::variant_alternative_t<I, Scrivo::Figure>;
        if (index != I) return figureOf<I + 1>(index, values);
        F figure{};
        if constexpr (!std::is_same_v<F, std::monostate>) {
            using Traits = Scrivo::beautifier::FigureTraits<F>;
            std::vector<double> count;
            Traits::fields(figure, Numbers{count});
            if (count.size() != values.size()) return {};
            std::size_t next = 0;
            Traits::fields(figure, Assign{values, next});
        }
        return figure;
    }
    return {};
}

}  // namespace binding
