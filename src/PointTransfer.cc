#include "PointTransfer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>

namespace binding {
namespace {

// The shared array: two slots of bookkeeping, then x, y, force of each point.
constexpr std::size_t BLOCK = 256;  // points a call carries at most
constexpr std::size_t DONE = 0;     // slot: points read completely
constexpr std::size_t STATE = 1;    // slot: how reading the block ended
constexpr std::size_t POINTS = 2;   // slot of the first point

// States.
constexpr std::size_t END_OF_BLOCK = 0;
constexpr std::size_t NO_OBJECT = 1;  // the element is handed back
constexpr std::size_t NO_NUMBER = 2;  // the property is handed back, unless a getter threw

constexpr std::string_view SCRIPT =
#include "point-transfer.inc"
    ;

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

/// Any JavaScript value as a point, by single Node-API calls.
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

PointTransfer::PointTransfer(Napi::Env env) : m_env(env) {
    const Napi::HandleScope scope(env);
    void* shared = nullptr;
    napi_value buffer = nullptr;
    napi_value view = nullptr;
    napi_value script = nullptr;
    napi_value factory = nullptr;
    constexpr std::size_t COUNT = POINTS + 3 * BLOCK;
    if (attempt(env, napi_create_arraybuffer, COUNT * sizeof(double), &shared, &buffer) &&
        attempt(env, napi_create_typedarray, napi_float64_array, COUNT, buffer, std::size_t{0},
                &view) &&
        attempt(env, napi_create_string_utf8, SCRIPT.data(), SCRIPT.size(), &script) &&
        attempt(env, napi_run_script, script, &factory)) {
        m_shared = static_cast<double*>(shared);
        makeFunctions(factory, view);
    }
}

void PointTransfer::makeFunctions(napi_value factory, napi_value view) {
    const auto constant = [this](std::size_t value) { return number(m_env, value); };
    // In the order of the script's parameters.
    const std::array<napi_value, 7> arguments{
        view,
        constant(BLOCK),
        constant(DONE),
        constant(STATE),
        constant(POINTS),
        constant(END_OF_BLOCK),
        constant(NO_OBJECT),
    };
    napi_value functions = nullptr;
    if (attempt(m_env, napi_call_function, view, factory, arguments.size(), arguments.data(),
                &functions)) {
        m_read = Napi::Persistent(Napi::Function(m_env, element(m_env, functions, 0)));
        m_write = Napi::Persistent(Napi::Function(m_env, element(m_env, functions, 1)));
    }
}

Stroke PointTransfer::read(napi_value array) {
    Stroke stroke;
    // Every element gives one point, so the size is the next index.
    while (stroke.size() < length(m_env, array) && ready()) {
        const Napi::HandleScope scope(m_env);
        readBlock(stroke, array);
    }
    return stroke;
}

void PointTransfer::readBlock(Stroke& stroke, napi_value array) {
    // The state of a block that ended in its first point: the call itself may
    // overflow the stack.
    std::fill_n(m_shared, POINTS + 3, 0.0);
    m_shared[STATE] = NO_NUMBER;
    napi_value rest = nullptr;
    const bool returned = call(m_read, {array, number(m_env, stroke.size())}, &rest);

    const double* next = m_shared + POINTS;
    const auto append = [&stroke, &next] {
        stroke.push_back({next[0], next[1], next[2]});
        next += 3;
    };
    const bool isWhole = returned && m_shared[STATE] == END_OF_BLOCK;
    const std::size_t most = isWhole ? BLOCK : BLOCK - 1;
    for (std::size_t done = std::min(static_cast<std::size_t>(m_shared[DONE]), most); done > 0;
         --done)
        append();
    if (isWhole) return;
    if (returned && m_shared[STATE] == NO_OBJECT) {
        stroke.push_back(readPoint(m_env, rest));
        return;
    }
    if (returned) toDouble(m_env, rest);
    append();
}

void PointTransfer::write(napi_value array, const Stroke& stroke) {
    for (std::size_t from = 0; from < stroke.size() && ready(); from += BLOCK) {
        const Napi::HandleScope scope(m_env);
        const std::span block(stroke.data() + from, std::min(BLOCK, stroke.size() - from));
        double* next = m_shared + POINTS;
        for (const Scrivo::Point2D& point : block) {
            *next++ = point.x;
            *next++ = point.y;
            *next++ = point.force;
        }
        call(m_write, {array, number(m_env, from), number(m_env, block.size())});
    }
}

TransferLease::TransferLease(Napi::Env env)
    : m_idle(*env.GetInstanceData<Idle>()), m_transfer(std::move(m_idle.transfer)) {
    if (!m_transfer) m_transfer = std::make_unique<PointTransfer>(env);
}

TransferLease::~TransferLease() {
    if (m_transfer->ready()) m_idle.transfer = std::move(m_transfer);
}

void TransferLease::prepare(Napi::Env env) {
    env.SetInstanceData(new Idle);
}

}  // namespace binding
