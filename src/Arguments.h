#pragma once

#include "Attempt.h"
#include "Beautifier/Options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <napi.h>
#include <span>
#include <stdexcept>

/// Arguments of native calls, each checked before it is read: node-addon-api would raise an
/// exception for one of another type and read on, and end the process when it raises the next
/// one. What is wrong throws std::invalid_argument.
namespace binding {

inline void require(bool holds, const char* message) {
    if (!holds) throw std::invalid_argument(message);
}

double number(const Napi::Value& value);
bool boolean(const Napi::Value& value);

/// The member of an enumeration with this number; it need not have such a member.
template <typename Enumeration = std::uint8_t>
Enumeration member(double value) {
    require(value >= 0.0 && value <= 255.0, "expected a number from 0 to 255");
    return static_cast<Enumeration>(static_cast<std::uint8_t>(value));
}

/// The elements of a typed array. Other arrays are rejected: with smaller elements,
/// reading would run past the end.
template <typename T>
std::span<const T> view(const Napi::Value& value, napi_typedarray_type type, const char* message) {
    require(value.IsTypedArray() && value.As<Napi::TypedArray>().TypedArrayType() == type, message);
    const auto array = value.As<Napi::TypedArrayOf<T>>();
    return {array.Data(), array.ElementLength()};
}

std::span<const double> doubles(const Napi::Value& value);

/// Passes an error to JavaScript, unless an exception is already on its way there.
void raise(Napi::Env env, const std::exception& error);

/// The arguments of a call, undefined where there are none. That of node-addon-api
/// allocates for more than six, where a failure would end the process.
struct Arguments {
    static constexpr std::size_t MAX = 10;

    Napi::Env env;
    napi_value self = nullptr;
    std::array<napi_value, MAX> values{};

    Arguments(napi_env callEnv, napi_callback_info info);

    Napi::Value operator[](std::size_t i) const { return {env, values.at(i)}; }
};

/// What `body` returns; an error of C++ as one of JavaScript, since the host must survive.
template <typename Body>
napi_value guarded(Napi::Env env, Body body) {
    try {
        return body();
    } catch (const std::exception& error) {
        raise(env, error);
        return nullptr;
    }
}

/// (families: number[], minSize, tapSize, sensitivity, horizontalVertical,
/// regularFigures, nearbyStrokes, insideArea, anchors: number[]), from an argument on.
Scrivo::BeautifierOptions readOptions(const Arguments& arguments, std::size_t first = 0);

}  // namespace binding
