#pragma once

#include "Arguments.h"

#include <array>
#include <cstddef>
#include <memory>
#include <napi.h>

namespace binding {

/// Objects of a class of JavaScript, each of which owns a `T`. Not an `ObjectWrap`, which ends the
/// process when there is no memory for the object. A specialisation of `TAG` tells them from
/// those of other modules.
template <typename T>
struct Wrapped {
    static const napi_type_tag TAG;

    /// What a constructor returns: the new object, which then owns `made`.
    static napi_value wrap(const Arguments& arguments, std::unique_ptr<T> made) {
        if (attempt(arguments.env, napi_type_tag_object, arguments.self, &TAG) &&
            attempt(arguments.env, napi_wrap, arguments.self, static_cast<void*>(made.get()),
                    destroy, static_cast<void*>(nullptr), static_cast<napi_ref*>(nullptr))) {
            static_cast<void>(made.release());  // the object owns it
        }
        return arguments.self;
    }

    /// The object that a method was called on; throws `message` for one of another class.
    static T& unwrap(const Arguments& arguments, const char* message) {
        bool isOurs = false;
        void* data = nullptr;
        require(
            napi_check_object_type_tag(arguments.env, arguments.self, &TAG, &isOurs) == napi_ok &&
                isOurs && napi_unwrap(arguments.env, arguments.self, &data) == napi_ok &&
                data != nullptr,
            message);
        return *static_cast<T*>(data);
    }

private:
    static void destroy(napi_env /*env*/, void* data, void* /*hint*/) {
        delete static_cast<T*>(data);
    }
};

/// Whether the constructor of `info` was called with `new`.
inline void requireNew(napi_env env, napi_callback_info info, const char* message) {
    napi_value target = nullptr;
    attempt(env, napi_get_new_target, info, &target);
    // Without `new` Node.js and Bun give null, Deno gives undefined.
    require(Napi::Value(env, target).IsFunction(), message);
}

inline napi_property_descriptor method(const char* name, napi_callback call) {
    return {name, nullptr, call, nullptr, nullptr, nullptr, napi_default_method, nullptr};
}

/// A class with some methods.
template <std::size_t N>
napi_value defineClass(Napi::Env env, const char* name, napi_callback construct,
                       const std::array<napi_property_descriptor, N>& methods) {
    napi_value result = nullptr;
    attempt(env, napi_define_class, name, std::size_t{NAPI_AUTO_LENGTH}, construct,
            static_cast<void*>(nullptr), methods.size(), methods.data(), &result);
    return result;
}

}  // namespace binding
