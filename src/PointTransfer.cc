#include "PointTransfer.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <utility>

namespace binding {
namespace {

// The shared array: two slots of bookkeeping, then x, y, force of each point.
constexpr std::size_t BLOCK = 256;
constexpr std::size_t DONE = 0;   // points read completely
constexpr std::size_t STATE = 1;  // how reading the block ended
constexpr std::size_t POINTS = 2;

constexpr double END_OF_BLOCK = 0;
constexpr double NO_OBJECT = 1;  // the element is handed back
constexpr double NO_NUMBER = 2;  // the property is handed back, unless a getter threw

// 256 is BLOCK, and the other literals are the slots and states above.
// `write` is in sloppy mode: an assignment that a prototype forbids is ignored,
// as it is by napi_set_property. `read` is strict, so that a getter does not see
// it as its caller and cannot call it; and the shared array is no parameter, so
// that a getter cannot get hold of it and detach it.
constexpr char FUNCTIONS[] = R"js((function (shared) {
    function read(stroke, from) {
        'use strict';
        for (var n = 0, k = 2; n < 256 && from < stroke.length; n++, k += 3, from++) {
            shared[0] = n;
            shared[k] = shared[k + 1] = shared[k + 2] = 0;
            var point = stroke[from];
            if (typeof point !== 'object' || point === null) {
                shared[1] = 1;
                return point;
            }
            var value = point.x;
            if (typeof value !== 'number') return value;
            shared[k] = value;
            value = point.y;
            if (typeof value !== 'number') return value;
            shared[k + 1] = value;
            if ('force' in point) {
                value = point.force;
                if (typeof value !== 'number') return value;
                shared[k + 2] = value;
            }
        }
        shared[0] = n;
        shared[1] = 0;
    }
    function write(path, from, count) {
        for (var k = 2, end = from + count; from < end; k += 3, from++) {
            var point = {};
            point.x = shared[k];
            point.y = shared[k + 1];
            if (shared[k + 2] !== 0) point.force = shared[k + 2];
            path[from] = point;
        }
    }
    return [read, write];
}))js";

/// A count or index, all of which JavaScript represents exactly.
napi_value number(Napi::Env env, std::size_t value) {
    napi_value result = nullptr;
    attempt(env, napi_create_double, static_cast<double>(value), &result);
    return result;
}

/// Whether the function returned; then `result` is what it returned.
bool call(const Napi::FunctionReference& function, std::initializer_list<napi_value> arguments,
          napi_value* result = nullptr) {
    const Napi::Function callee = function.Value();
    const Napi::Env env = callee.Env();
    return attempt(env, napi_call_function, env.Undefined(), callee, arguments.size(),
                   arguments.begin(), result);
}

double property(Napi::Env env, napi_value object, const char* name) {
    napi_value value = nullptr;
    attempt(env, napi_get_named_property, object, name, &value);
    return toDouble(env, value);
}

/// Any JavaScript value as a point, call by call.
Scrivo::Point2D readPoint(Napi::Env env, napi_value value) {
    Scrivo::Point2D point;
    point.x = property(env, value, "x");
    point.y = property(env, value, "y");
    bool hasForce = false;
    attempt(env, napi_has_named_property, value, "force", &hasForce);
    if (hasForce) point.force = property(env, value, "force");
    return point;
}

}  // namespace

double toDouble(Napi::Env env, napi_value value) {
    double number = 0.0;
    attempt(env, napi_get_value_double, value, &number);
    return number;
}

std::uint32_t length(Napi::Env env, napi_value array) {
    std::uint32_t count = 0;
    attempt(env, napi_get_array_length, array, &count);
    return count;
}

napi_value element(Napi::Env env, napi_value array, std::uint32_t index) {
    napi_value value = nullptr;
    attempt(env, napi_get_element, array, index, &value);
    return value;
}

PointTransfer::PointTransfer(Napi::Env env) : env_(env) {
    const Napi::HandleScope scope(env);
    void* shared = nullptr;
    napi_value buffer = nullptr;
    napi_value view = nullptr;
    napi_value source = nullptr;
    napi_value factory = nullptr;
    napi_value functions = nullptr;
    constexpr std::size_t COUNT = POINTS + 3 * BLOCK;
    if (attempt(env, napi_create_arraybuffer, COUNT * sizeof(double), &shared, &buffer) &&
        attempt(env, napi_create_typedarray, napi_float64_array, COUNT, buffer, std::size_t{0},
                &view) &&
        attempt(env, napi_create_string_latin1, FUNCTIONS, sizeof(FUNCTIONS) - 1, &source) &&
        attempt(env, napi_run_script, source, &factory) &&
        attempt(env, napi_call_function, view, factory, std::size_t{1}, &view, &functions)) {
        shared_ = static_cast<double*>(shared);
        read_ = Napi::Persistent(Napi::Function(env, element(env, functions, 0)));
        write_ = Napi::Persistent(Napi::Function(env, element(env, functions, 1)));
    }
}

Stroke PointTransfer::read(napi_value array) {
    Stroke stroke;
    // Every element gives one point, so the size is the next index.
    while (stroke.size() < length(env_, array) && ready()) {
        const Napi::HandleScope scope(env_);
        readBlock(stroke, array);
    }
    return stroke;
}

void PointTransfer::readBlock(Stroke& stroke, napi_value array) {
    // As if it had ended in the first point: the call itself may overflow the stack.
    std::fill_n(shared_, POINTS + 3, 0.0);
    shared_[STATE] = NO_NUMBER;
    napi_value rest = nullptr;
    const bool returned = call(read_, {array, number(env_, stroke.size())}, &rest);

    const double* next = shared_ + POINTS;
    const auto append = [&stroke, &next] {
        stroke.push_back({next[0], next[1], next[2]});
        next += 3;
    };
    const bool isWhole = returned && shared_[STATE] == END_OF_BLOCK;
    const std::size_t most = isWhole ? BLOCK : BLOCK - 1;
    for (std::size_t done = std::min(static_cast<std::size_t>(shared_[DONE]), most); done > 0;
         --done)
        append();
    if (isWhole) return;
    if (returned && shared_[STATE] == NO_OBJECT) {
        stroke.push_back(readPoint(env_, rest));
        return;
    }
    if (returned) toDouble(env_, rest);
    append();
}

void PointTransfer::write(napi_value array, const Stroke& stroke) {
    for (std::size_t from = 0; from < stroke.size() && ready(); from += BLOCK) {
        const Napi::HandleScope scope(env_);
        const std::span block(stroke.data() + from, std::min(BLOCK, stroke.size() - from));
        double* next = shared_ + POINTS;
        for (const Scrivo::Point2D& point : block) {
            *next++ = point.x;
            *next++ = point.y;
            *next++ = point.force;
        }
        call(write_, {array, number(env_, from), number(env_, block.size())});
    }
}

TransferLease::TransferLease(Napi::Env env)
    : idle_(*env.GetInstanceData<Idle>()), transfer_(std::move(idle_.transfer)) {
    if (!transfer_) transfer_ = std::make_unique<PointTransfer>(env);
}

TransferLease::~TransferLease() {
    if (transfer_->ready()) idle_.transfer = std::move(transfer_);
}

void TransferLease::prepare(Napi::Env env) {
    env.SetInstanceData(new Idle);
}

}  // namespace binding
