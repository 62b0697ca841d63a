#pragma once

#ifndef __cpp_exceptions
#include <cstdlib>
#endif

/// Failures, for builds with and without exceptions. Without them, as in WebAssembly,
/// the binding checks what callers pass in, and running out of memory ends the
/// instance: neither function is then called with a failure.
namespace Scrivo::detail {

/// Throws an `Error` with this message.
template <typename Error>
[[noreturn]] void raise([[maybe_unused]] const char* message) {
#ifdef __cpp_exceptions
    throw Error(message);
#else
    std::abort();
#endif
}

/// Whether `body` returned rather than threw.
template <typename Body>
bool completes(Body body) {
#ifdef __cpp_exceptions
    try {
        body();
        return true;
    } catch (...) {
        return false;
    }
#else
    body();
    return true;
#endif
}

}  // namespace Scrivo::detail
