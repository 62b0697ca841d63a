#include "Beautifier/Beautifier.h"

#include "Arguments.h"
#include "Beautifier/figures/Families.h"
#include "FigureNumbers.h"
#include "Wrapped.h"
#include "lines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
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
/// tables of the families and figures, and what lines.cc adds. lib/beautifier.js checks the
/// arguments, packs and unpacks them; it is the only user of this part.
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

std::vector<Points> readOthers(const Arguments& arguments) {
    std::span<const double> values = doubles(arguments[4]);
    const auto lengths =
        view<std::uint32_t>(arguments[5], napi_uint32_array, "lengths must be in a Uint32Array");
    std::vector<Points> others;
    others.reserve(lengths.size());
    for (const std::uint32_t length : lengths) {
        const std::size_t count = 2 * static_cast<std::size_t>(length);
        if (count > values.size()) throw std::invalid_argument("lengths exceed the points");
        others.push_back(unpack(values.first(count), 2));
        values = values.subspan(count);
    }
    return others;
}

Scrivo::Wish wishOf(double family, double kind) {
    const auto wished = member<Scrivo::FigureFamily>(family);
    if (kind < 0.0) return wished;
    return {wished, member(kind)};
}

napi_value toArray(Napi::Env env, std::size_t stride, const Scrivo::Beautified& answer) {
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

using WrappedBeautifier = Wrapped<Scrivo::Beautifier>;

}  // namespace

template <>
const napi_type_tag WrappedBeautifier::TAG{0x9f1d40c2e3b84a57, 0xb7a6610d52cf4e38};

namespace {

/// The class "Beautifier": a wrapped `Scrivo::Beautifier`.
namespace beautifier_class {

/// Takes the arguments of `readOptions`.
napi_value construct(napi_env env, napi_callback_info info) {
    return guarded(env, [&] {
        requireNew(env, info, "Beautifier needs new");
        const Arguments arguments(env, info);
        return WrappedBeautifier::wrap(
            arguments, std::make_unique<Scrivo::Beautifier>(readOptions(arguments)));
    });
}

const Scrivo::Beautifier& unwrap(const Arguments& arguments) {
    return WrappedBeautifier::unwrap(arguments, "this is no Beautifier");
}

/// Calls `answer` with (stroke, width, height, others).
template <typename Answer>
napi_value answerWith(const Arguments& arguments, Answer answer) {
    const std::size_t stride = number(arguments[1]) == 2.0 ? 2 : 3;
    const Points stroke = unpack(doubles(arguments[0]), stride);
    const double width = number(arguments[2]);
    const double height = number(arguments[3]);
    return toArray(arguments.env, stride, answer(stroke, width, height, readOthers(arguments)));
}

/// (points: Float64Array, stride, width, height, others: Float64Array,
/// lengths: Uint32Array): `others` holds x and y of all points of the other
/// strokes, `lengths` the number of points of each. Returns
/// [path, type, confidence, reason, index of the figure, subtype, parameters,
/// alternatives], the last one as pairs of family and probability.
napi_value beautify(napi_env env, napi_callback_info info) {
    return guarded(env, [&] {
        const Arguments arguments(env, info);
        const Scrivo::Beautifier& self = unwrap(arguments);
        return answerWith(arguments, [&](const auto&... given) { return self.beautify(given...); });
    });
}

/// The same, followed by (family, kind); -1 for no kind.
napi_value beautifyAs(napi_env env, napi_callback_info info) {
    return guarded(env, [&] {
        const Arguments arguments(env, info);
        const Scrivo::Beautifier& self = unwrap(arguments);
        const Scrivo::Wish wish = wishOf(number(arguments[6]), number(arguments[7]));
        return answerWith(arguments, [&](const Points& stroke, const auto&... given) {
            return self.beautifyAs(stroke, wish, given...);
        });
    });
}

napi_value define(Napi::Env env) {
    return defineClass(env, "Beautifier", construct,
                       std::array{method("beautify", beautify), method("beautifyAs", beautifyAs)});
}

}  // namespace beautifier_class

/// (index of the figure, parameters: Float64Array, width, height): x and y of its
/// outline.
Napi::Value outlineOf(const Napi::CallbackInfo& info) {
    const Napi::Env env = info.Env();
    try {
        const std::size_t index = member(number(info[0]));
        const double width = number(info[2]);
        const double height = number(info[3]);
        const Scrivo::Figure figure = figureOf(index, doubles(info[1]));
        return {env, pack(env, Scrivo::outlineOf(figure, width, height), 2)};
    } catch (const std::exception& error) {
        raise(env, error);
        return env.Undefined();
    }
}

/// (x and y of the points of a stroke: Float64Array, width, height): x and y of those
/// that figures are fitted to.
Napi::Value resample(const Napi::CallbackInfo& info) {
    const Napi::Env env = info.Env();
    try {
        const Points stroke = unpack(doubles(info[0]), 2);
        const double width = number(info[1]);
        const double height = number(info[2]);
        return {env, pack(env, Scrivo::resample(stroke, width, height), 2)};
    } catch (const std::exception& error) {
        raise(env, error);
        return env.Undefined();
    }
}

Napi::Object Init(Napi::Env env, Napi::Object exports) {
    constexpr std::size_t FIGURES = std::variant_size_v<Scrivo::Figure>;
    exports.Set("Beautifier", beautifier_class::define(env));
    exports.Set("outlineOf", Napi::Function::New<outlineOf>(env));
    exports.Set("resample", Napi::Function::New<resample>(env));
    exports.Set("families", describeFamilies(env));
    exports.Set("figures", describeFigures(env, std::make_index_sequence<FIGURES>()));
    addLines(env, exports);
    return exports;
}

}  // namespace

NODE_API_MODULE(beautifier, Init)

}  // namespace binding
