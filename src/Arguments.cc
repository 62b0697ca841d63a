#include "Arguments.h"

#include <set>
#include <stdexcept>

namespace binding {
namespace {

template <typename Enumeration>
std::set<Enumeration> members(const Napi::Value& value) {
    require(value.IsArray(), "expected an array of numbers");
    const auto array = value.As<Napi::Array>();
    std::set<Enumeration> result;
    for (std::uint32_t i = 0; i < array.Length(); ++i) {
        result.insert(member<Enumeration>(number(array.Get(i))));
    }
    return result;
}

}  // namespace

double number(const Napi::Value& value) {
    require(value.IsNumber(), "expected a number");
    return value.As<Napi::Number>().DoubleValue();
}

bool boolean(const Napi::Value& value) {
    require(value.IsBoolean(), "expected a boolean");
    return value.As<Napi::Boolean>().Value();
}

std::span<const double> doubles(const Napi::Value& value) {
    return view<double>(value, napi_float64_array, "points must be in a Float64Array");
}

void raise(Napi::Env env, const std::exception& error) {
    if (!env.IsExceptionPending()) {
        Napi::Error::New(env, error.what()).ThrowAsJavaScriptException();
    }
}

Arguments::Arguments(napi_env callEnv, napi_callback_info info) : env(callEnv) {
    std::size_t count = MAX;
    attempt(env, napi_get_cb_info, info, &count, values.data(), &self,
            static_cast<void**>(nullptr));
}

Scrivo::BeautifierOptions readOptions(const Arguments& arguments, std::size_t first) {
    const auto argument = [&](std::size_t i) { return arguments[first + i]; };
    return {.figures = members<Scrivo::FigureFamily>(argument(0)),
            .minSize = number(argument(1)),
            .tapSize = number(argument(2)),
            .sensitivity = number(argument(3)),
            .horizontalVertical = boolean(argument(4)),
            .regularFigures = boolean(argument(5)),
            .nearbyStrokes = boolean(argument(6)),
            .anchors = members<Scrivo::AnchorSort>(argument(8)),
            .insideArea = boolean(argument(7))};
}

}  // namespace binding
