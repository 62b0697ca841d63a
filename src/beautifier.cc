#include "Beautifier/Beautifier.h"

#include "Attempt.h"
#include "Beautifier/figures/Families.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <napi.h>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// The native module "beautifier": a class that takes and returns packed numbers,
/// and tables of the families and figures. lib/beautifier.js checks the arguments,
/// packs and unpacks them; it is the only user of this module.
namespace binding {
namespace {

using Points = std::vector<Scrivo::Point2D>;

/// The points of `values`, `stride` numbers each: x, y and, with a stride of 3,
/// force.
Points unpack(std::span<const double> values, std::size_t stride) {
    Points points;
    points.reserve(values.size() / stride);
    for (std::size_t k = 0; k + stride <= values.size(); k += stride) {
        points.push_back({values[k], values[k + 1], stride > 2 ? values[k + 2] : 0.0});
    }
    return points;
}

/// The numbers of a Float64Array. Other arrays are rejected: with smaller elements,
/// reading would run past the end.
std::span<const double> view(const Napi::Value& value) {
    if (!value.IsTypedArray() ||
        value.As<Napi::TypedArray>().TypedArrayType() != napi_float64_array) {
        throw std::invalid_argument("points must be in a Float64Array");
    }
    const auto array = value.As<Napi::Float64Array>();
    return {array.Data(), array.ElementLength()};
}

/// A new Float64Array and its numbers. No numbers, and an exception pending, when
/// memory is short or the thread is being terminated.
struct Packed {
    napi_value array = nullptr;
    double* numbers = nullptr;

    Packed(Napi::Env env, std::size_t count) {
        napi_value buffer = nullptr;
        void* data = nullptr;
        if (attempt(env, napi_create_arraybuffer, count * sizeof(double), &data, &buffer) &&
            attempt(env, napi_create_typedarray, napi_float64_array, count, buffer, std::size_t{0},
                    &array)) {
            numbers = static_cast<double*>(data);
        }
    }
};

napi_value pack(Napi::Env env, const std::vector<double>& values) {
    const Packed packed(env, values.size());
    if (packed.numbers != nullptr) std::copy(values.begin(), values.end(), packed.numbers);
    return packed.array;
}

napi_value pack(Napi::Env env, const Points& points, std::size_t stride) {
    const Packed packed(env, points.size() * stride);
    if (packed.numbers == nullptr) return packed.array;
    double* next = packed.numbers;
    for (const Scrivo::Point2D& p : points) {
        *next++ = p.x;
        *next++ = p.y;
        if (stride > 2) *next++ = p.force;
    }
    return packed.array;
}

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

/// Describes the fields of a figure to JavaScript: an array of [name, places],
/// where `places` is the length of an array of places, -1 for a single place and
/// 0 for a number.
struct Fields {
    Napi::Array& list;

    void add(std::string_view name, int places) const {
        const Napi::Env env = list.Env();
        const Napi::Array field = Napi::Array::New(env, 2);
        field.Set(0U, Napi::String::New(env, std::string(name)));
        field.Set(1U, Napi::Number::New(env, places));
        list.Set(list.Length(), field);
    }
    void number(std::string_view name, double /*value*/) const { add(name, 0); }
    void place(std::string_view name, const Scrivo::Point2D& /*p*/) const { add(name, -1); }
    void size(std::string_view name, const Scrivo::Point2D& p) const { place(name, p); }
    void places(std::string_view name, const auto& points) const {
        add(name, static_cast<int>(points.size()));
    }
};

Napi::Array toArray(Napi::Env env, std::span<const std::string_view> names) {
    Napi::Array result = Napi::Array::New(env);
    for (const std::string_view name : names) {
        result.Set(result.Length(), Napi::String::New(env, std::string(name)));
    }
    return result;
}

/// {kind, subtypes, fields} of an alternative of the variant; null for no figure.
template <std::size_t I>
Napi::Value describeFigure(Napi::Env env) {
    using F = std::variant_alternative_t<I, Scrivo::Figure>;
    if constexpr (std::is_same_v<F, std::monostate>) {
        return env.Null();
    } else {
        using Traits = Scrivo::beautifier::FigureTraits<F>;
        Napi::Array fields = Napi::Array::New(env);
        const F figure{};
        Traits::fields(figure, Fields{fields});
        Napi::Object result = Napi::Object::New(env);
        result.Set("kind", Napi::String::New(env, std::string(Traits::NAME)));
        result.Set("subtypes", toArray(env, Traits::KINDS));
        result.Set("fields", fields);
        return result;
    }
}

/// Every alternative of the variant, by its index.
template <std::size_t... I>
Napi::Array describeFigures(Napi::Env env, std::index_sequence<I...> /*indices*/) {
    Napi::Array result = Napi::Array::New(env, sizeof...(I));
    (result.Set(static_cast<std::uint32_t>(I), describeFigure<I>(env)), ...);
    return result;
}

/// [name, type, kinds] of every family, by its number.
Napi::Array describeFamilies(Napi::Env env) {
    Napi::Array result = Napi::Array::New(env);
    for (const auto& family : Scrivo::beautifier::families()) {
        const Napi::Array entry = Napi::Array::New(env, 3);
        entry.Set(0U, Napi::String::New(env, std::string(family.name)));
        entry.Set(1U, Napi::Number::New(env, family.code));
        entry.Set(2U, toArray(env, family.kinds));
        result.Set(result.Length(), entry);
    }
    return result;
}

class Beautifier : public Napi::ObjectWrap<Beautifier> {
public:
    static Napi::Function define(Napi::Env env) {
        return DefineClass(env, "Beautifier",
                           {InstanceMethod<&Beautifier::beautify>("beautify"),
                            InstanceMethod<&Beautifier::beautifyAs>("beautifyAs")});
    }

    /// (families: number[], minSize, tapSize, sensitivity, horizontalVertical,
    /// regularFigures, nearbyStrokes, insideArea, anchors: number[])
    explicit Beautifier(const Napi::CallbackInfo& info) : Napi::ObjectWrap<Beautifier>(info) {
        try {
            m_beautifier = Scrivo::Beautifier(readOptions(info));
        } catch (const std::exception& error) {
            Napi::Error::New(info.Env(), error.what()).ThrowAsJavaScriptException();
        }
    }

private:
    static Scrivo::BeautifierOptions readOptions(const Napi::CallbackInfo& info) {
        const Napi::Env env = info.Env();
        Scrivo::BeautifierOptions options;
        options.figures.clear();
        const Napi::Array families(env, info[0]);
        for (std::uint32_t i = 0; i < families.Length(); ++i) {
            const std::uint32_t family = Napi::Number(env, families.Get(i)).Uint32Value();
            options.figures.insert(static_cast<Scrivo::FigureFamily>(family));
        }
        options.minSize = Napi::Number(env, info[1]).DoubleValue();
        options.tapSize = Napi::Number(env, info[2]).DoubleValue();
        options.sensitivity = Napi::Number(env, info[3]).DoubleValue();
        options.horizontalVertical = Napi::Boolean(env, info[4]).Value();
        options.regularFigures = Napi::Boolean(env, info[5]).Value();
        options.nearbyStrokes = Napi::Boolean(env, info[6]).Value();
        options.insideArea = Napi::Boolean(env, info[7]).Value();
        options.anchors.clear();
        const Napi::Array anchors(env, info[8]);
        for (std::uint32_t i = 0; i < anchors.Length(); ++i) {
            const std::uint32_t sort = Napi::Number(env, anchors.Get(i)).Uint32Value();
            options.anchors.insert(static_cast<Scrivo::AnchorSort>(sort));
        }
        return options;
    }

    /// (points: Float64Array, stride, width, height, others: Float64Array,
    /// lengths: Uint32Array): `others` holds x and y of all points of the other
    /// strokes, `lengths` the number of points of each. Returns
    /// [path, type, confidence, reason, index of the figure, subtype, parameters,
    /// alternatives], the last one as pairs of family and probability.
    Napi::Value beautify(const Napi::CallbackInfo& info) {
        return answer(info, [this](const Points& stroke, double width, double height,
                                   const std::vector<Points>& others) {
            return m_beautifier.beautify(stroke, width, height, others);
        });
    }

    /// The same, followed by (family, kind); -1 for no kind.
    Napi::Value beautifyAs(const Napi::CallbackInfo& info) {
        const auto family = Napi::Number(info.Env(), info[6]).Uint32Value();
        const auto kind = Napi::Number(info.Env(), info[7]).Int32Value();
        return answer(info, [=, this](const Points& stroke, double width, double height,
                                      const std::vector<Points>& others) {
            return m_beautifier.beautifyAs(stroke, wishOf(family, kind), width, height, others);
        });
    }

    static Scrivo::Wish wishOf(std::uint32_t family, std::int32_t kind) {
        const auto wished = static_cast<Scrivo::FigureFamily>(family);
        if (kind < 0) return wished;
        return {wished, static_cast<std::uint8_t>(kind)};
    }

    template <typename Answer>
    static Napi::Value answer(const Napi::CallbackInfo& info, Answer answerTo) {
        const Napi::Env env = info.Env();
        try {
            const std::size_t stride = Napi::Number(env, info[1]).Uint32Value() == 2 ? 2 : 3;
            const Points stroke = unpack(view(info[0]), stride);
            const double width = Napi::Number(env, info[2]).DoubleValue();
            const double height = Napi::Number(env, info[3]).DoubleValue();
            return toArray(env, stride, answerTo(stroke, width, height, readOthers(info)));
        } catch (const std::exception& error) {
            // Out of memory: the host must survive.
            Napi::Error::New(env, error.what()).ThrowAsJavaScriptException();
            return env.Undefined();
        }
    }

    static std::vector<Points> readOthers(const Napi::CallbackInfo& info) {
        std::span<const double> values = view(info[4]);
        const Napi::Uint32Array lengths(info.Env(), info[5]);
        std::vector<Points> others;
        others.reserve(lengths.ElementLength());
        for (std::size_t i = 0; i < lengths.ElementLength(); ++i) {
            const std::size_t count = 2 * static_cast<std::size_t>(lengths[i]);
            if (count > values.size()) throw std::invalid_argument("lengths exceed the points");
            others.push_back(unpack(values.first(count), 2));
            values = values.subspan(count);
        }
        return others;
    }

    static Napi::Value toArray(Napi::Env env, std::size_t stride,
                               const Scrivo::Beautified& answer) {
        const Flat figure(answer.figure);
        std::vector<double> alternatives;
        for (const Scrivo::Alternative& alternative : answer.alternatives) {
            alternatives.push_back(static_cast<double>(alternative.family));
            alternatives.push_back(alternative.probability);
        }
        const std::array<napi_value, 8> parts{
            pack(env, answer.path, stride),
            Napi::Number::New(env, answer.type),
            Napi::Number::New(env, answer.confidence),
            Napi::Number::New(env, static_cast<double>(answer.reason)),
            Napi::Number::New(env, figure.index),
            Napi::Number::New(env, figure.subtype),
            pack(env, figure.parameters),
            pack(env, alternatives),
        };
        const Napi::Array result = Napi::Array::New(env, parts.size());
        for (std::uint32_t i = 0; i < parts.size(); ++i) {
            if (!attempt(env, napi_set_element, result, i, parts[i])) break;
        }
        return result;
    }

    Scrivo::Beautifier m_beautifier;  // with default options until the constructor has read them
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

/// (index of the figure, parameters: Float64Array, width, height): x and y of its
/// outline.
Napi::Value outlineOf(const Napi::CallbackInfo& info) {
    const Napi::Env env = info.Env();
    try {
        const auto index = Napi::Number(env, info[0]).Uint32Value();
        const double width = Napi::Number(env, info[2]).DoubleValue();
        const double height = Napi::Number(env, info[3]).DoubleValue();
        const Scrivo::Figure figure = figureOf(index, view(info[1]));
        return {env, pack(env, Scrivo::outlineOf(figure, width, height), 2)};
    } catch (const std::exception& error) {
        Napi::Error::New(env, error.what()).ThrowAsJavaScriptException();
        return env.Undefined();
    }
}

Napi::Object Init(Napi::Env env, Napi::Object exports) {
    constexpr std::size_t FIGURES = std::variant_size_v<Scrivo::Figure>;
    exports.Set("Beautifier", Beautifier::define(env));
    exports.Set("outlineOf", Napi::Function::New<outlineOf>(env));
    exports.Set("families", describeFamilies(env));
    exports.Set("figures", describeFigures(env, std::make_index_sequence<FIGURES>()));
    return exports;
}

}  // namespace

NODE_API_MODULE(beautifier, Init)

}  // namespace binding
