#include "lines.h"

#include "Arguments.h"
#include "Scrivo/Scrivo.h"
#include "Wrapped.h"
#include "lines/Idealiser.h"
#include "lines/Numbers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <napi.h>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace binding {
namespace {

using WrappedIdealiser = Wrapped<lines::Idealiser>;

}  // namespace

template <>
const napi_type_tag WrappedIdealiser::TAG{0x3c5e0f9a71d2486b, 0xa1f8c7450b9d263e};

namespace {

std::string text(const Napi::Value& value) {
    require(value.IsString(), "expected a string");
    return value.As<Napi::String>().Utf8Value();
}

/// A block of bytes. Shared memory is rejected: it may change while it is read.
std::span<const char> bytes(const Napi::Value& value) {
    const auto found = view<std::uint8_t>(value, napi_uint8_array, "lines must be a Uint8Array");
    const Napi::ArrayBuffer buffer = value.As<Napi::TypedArray>().ArrayBuffer();
    require(buffer.IsArrayBuffer(), "lines must not be in shared memory");
    require(!buffer.IsDetached(), "lines are detached, their buffer was transferred");
    return {reinterpret_cast<const char*>(found.data()), found.size()};
}

/// scale, decimals and, unless each line has its own, x, y, width and height of the area.
lines::Settings readSettings(std::span<const double> values) {
    require(values.size() == 2 || values.size() == 6, "expected two or six numbers");
    require(values[1] >= 0.0 && values[1] <= lines::MAX_DECIMALS, "decimals out of range");
    lines::Settings settings;
    settings.scale = values[0];
    settings.decimals = static_cast<int>(values[1]);
    if (values.size() == 6) settings.area = {values[2], values[3], values[4], values[5]};
    return settings;
}

/// (settings: Float64Array, then the arguments of `readOptions` for the beautifier and none for
/// the template engine)
napi_value construct(napi_env env, napi_callback_info info) {
    return guarded(env, [&] {
        requireNew(env, info, "LineIdealiser needs new");
        const Arguments arguments(env, info);
        const lines::Settings settings = readSettings(doubles(arguments[0]));
        std::unique_ptr<const lines::Engine> engine;
        if (arguments[1].IsUndefined()) {
            engine = std::make_unique<lines::TemplateEngine>();
        } else {
            engine = std::make_unique<lines::BeautifierEngine>(readOptions(arguments, 1));
        }
        return WrappedIdealiser::wrap(
            arguments, std::make_unique<lines::Idealiser>(std::move(engine), settings));
    });
}

/// [number, start, end, place in the output] of each line.
napi_value makeOthers(Napi::Env env, const std::vector<lines::OtherLine>& others) {
    napi_value result = nullptr;
    attempt(env, napi_create_array_with_length, others.size(), &result);
    for (std::size_t i = 0; i < others.size(); ++i) {
        const Napi::HandleScope scope(env);
        const lines::OtherLine& line = others[i];
        const std::array numbers{line.number, line.start, line.end, line.at};
        napi_value entry = nullptr;
        attempt(env, napi_create_array_with_length, numbers.size(), &entry);
        for (std::size_t k = 0; k < numbers.size(); ++k) {
            const Napi::Value value = Napi::Number::New(env, static_cast<double>(numbers[k]));
            attempt(env, napi_set_element, entry, static_cast<std::uint32_t>(k),
                    static_cast<napi_value>(value));
        }
        if (!attempt(env, napi_set_element, result, static_cast<std::uint32_t>(i), entry)) break;
    }
    return result;
}

napi_value makeFamilies(Napi::Env env, const lines::Answers& answers) {
    napi_value result = nullptr;
    attempt(env, napi_create_object, &result);
    for (const auto& [family, count] : answers.families) {
        const Napi::Value value = Napi::Number::New(env, count);
        if (!attempt(env, napi_set_named_property, result, std::string(family).c_str(),
                     static_cast<napi_value>(value))) {
            break;
        }
    }
    return result;
}

/// (lines: Uint8Array, source: string): [bytes of the answers, which `copy` gives, lines that are
/// left to the caller, number of answers by family, number of lines]. `source` is a member of
/// JSON, with a comma before it, or empty.
napi_value idealise(napi_env callEnv, napi_callback_info info) {
    return guarded(callEnv, [&]() -> napi_value {
        const Arguments arguments(callEnv, info);
        const Napi::Env env = arguments.env;
        lines::Idealiser& self = WrappedIdealiser::unwrap(arguments, "this is no LineIdealiser");
        const lines::Answers& answers = self.answer(bytes(arguments[0]), text(arguments[1]));
        const std::array<napi_value, 4> parts{
            Napi::Number::New(env, static_cast<double>(answers.text.size())),
            makeOthers(env, answers.others),
            makeFamilies(env, answers),
            Napi::Number::New(env, static_cast<double>(answers.lines)),
        };
        napi_value result = nullptr;
        attempt(env, napi_create_array_with_length, parts.size(), &result);
        for (std::uint32_t i = 0; i < parts.size(); ++i) {
            if (!attempt(env, napi_set_element, result, i, parts[i])) break;
        }
        return result;
    });
}

/// (target: Uint8Array): copies the text of the last answers into memory of the caller, which
/// unlike that of Node-API is not cleared before.
napi_value copy(napi_env env, napi_callback_info info) {
    return guarded(env, [&]() -> napi_value {
        const Arguments arguments(env, info);
        const lines::Idealiser& self =
            WrappedIdealiser::unwrap(arguments, "this is no LineIdealiser");
        const auto target = arguments[0];
        const std::size_t size = bytes(target).size();
        const std::string_view text = self.text();
        require(size == text.size(), "expected as many bytes as the answers have");
        if (size > 0) std::memcpy(target.As<Napi::Uint8Array>().Data(), text.data(), size);
        return nullptr;
    });
}

/// (paths: string[]): loads templates for all threads.
napi_value loadTemplates(napi_env env, napi_callback_info info) {
    return guarded(env, [&]() -> napi_value {
        const Arguments arguments(env, info);
        require(arguments[0].IsArray(), "expected an array of strings");
        const auto array = arguments[0].As<Napi::Array>();
        std::vector<std::string> paths;
        for (std::uint32_t i = 0; i < array.Length(); ++i) paths.push_back(text(array.Get(i)));
        Scrivo::initScrivo(std::move(paths));
        return nullptr;
    });
}

}  // namespace

void addLines(Napi::Env env, Napi::Object exports) {
    const std::array properties{method("loadTemplates", loadTemplates)};
    attempt(env, napi_define_properties, static_cast<napi_value>(exports), properties.size(),
            properties.data());
    exports.Set("LineIdealiser",
                defineClass(env, "LineIdealiser", construct,
                            std::array{method("idealise", idealise), method("copy", copy)}));
}

}  // namespace binding
