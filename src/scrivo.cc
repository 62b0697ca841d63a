#include "Scrivo/Scrivo.h"

#include "PointTransfer.h"

#include <cstdint>
#include <napi.h>
#include <string>
#include <utility>
#include <vector>

/// The native module "hello" of the template engine: converts arguments, calls the
/// core and converts its result. PointTransfer.h says what happens when a
/// conversion fails.
namespace binding {
namespace {

/// The value as JavaScript's String() would give it, or "" with an exception
/// pending: for a symbol, or an object that cannot be converted.
std::string toText(Napi::Env env, napi_value value) {
    napi_value text = nullptr;
    if (!attempt(env, napi_coerce_to_string, value, &text)) return {};
    return Napi::String(env, text).Utf8Value();
}

std::vector<std::string> readPaths(Napi::Env env, napi_value array) {
    std::vector<std::string> paths;
    for (std::uint32_t i = 0; i < length(env, array); ++i) {
        const Napi::HandleScope scope(env);
        paths.push_back(toText(env, element(env, array, i)));
    }
    return paths;
}

std::vector<Stroke> readStrokes(Napi::Env env, const TransferLease& transfer, napi_value array) {
    std::vector<Stroke> strokes;
    for (std::uint32_t i = 0; i < length(env, array); ++i) {
        const Napi::HandleScope scope(env);
        strokes.push_back(transfer->read(element(env, array, i)));
    }
    return strokes;
}

/// {path: [{x, y, force?}, ...], type}
Napi::Value makeResult(Napi::Env env, const TransferLease& transfer,
                       const Scrivo::StrokeResult& result) {
    napi_value object = nullptr;
    napi_value path = nullptr;
    napi_value type = nullptr;
    attempt(env, napi_create_object, &object);
    attempt(env, napi_create_array_with_length, result.path.size(), &path);
    transfer->write(path, result.path);
    attempt(env, napi_set_named_property, object, "path", path);
    attempt(env, napi_create_int32, result.type, &type);
    attempt(env, napi_set_named_property, object, "type", type);
    return {env, object};
}

// C++ exceptions are not caught here: running out of memory ends the process.

Napi::Value InitScrivo(const Napi::CallbackInfo& info) {
    const Napi::Env env = info.Env();
    if (info.Length() == 0) {
        Napi::TypeError::New(env, "Wrong number of arguments").ThrowAsJavaScriptException();
        return Napi::Boolean::New(env, false);
    }
    if (!info[0].IsArray()) {
        Napi::TypeError::New(env, "Wrong arguments").ThrowAsJavaScriptException();
        return Napi::Boolean::New(env, false);
    }
    return Napi::Boolean::New(env, Scrivo::initScrivo(readPaths(env, info[0])));
}

Napi::Value OptimizeAStroke(const Napi::CallbackInfo& info) {
    const Napi::Env env = info.Env();
    const TransferLease transfer(env);
    Stroke stroke = transfer->read(info[0]);
    const auto width = static_cast<float>(toDouble(env, info[1]));
    const auto height = static_cast<float>(toDouble(env, info[2]));
    std::vector<Stroke> otherStrokes = readStrokes(env, transfer, info[3]);
    return makeResult(
        env, transfer,
        Scrivo::optimizeAStroke(std::move(stroke), width, height, std::move(otherStrokes)));
}

Napi::Object Init(Napi::Env env, Napi::Object exports) {
    TransferLease::prepare(env);
    exports.Set("initScrivo", Napi::Function::New<InitScrivo>(env));
    exports.Set("optimizeAStroke", Napi::Function::New<OptimizeAStroke>(env));
    return exports;
}

}  // namespace

// Exports the symbols by which current hosts find the module.
NODE_API_MODULE(hello, Init)

// Also registers the module while the library is being loaded, as the first hosts
// with Node-API expect. Both ways are needed: a library that is still mapped when
// the next thread loads it does not run its initialisers again, and some hosts do
// not look for the symbol. Init runs once per load either way.
static napi_module descriptor = {
    NAPI_MODULE_VERSION, 0, "../src/scrivo", __napi_Init, "hello", nullptr, {}};

[[maybe_unused]] static const bool registered = (napi_module_register(&descriptor), true);

}  // namespace binding
