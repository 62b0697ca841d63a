#pragma once

#include "Attempt.h"
#include "Scrivo/Types.h"

#include <cstdint>
#include <memory>
#include <napi.h>
#include <vector>

/// JavaScript arrays of point objects to strokes and back.
///
/// A failed Node-API call leaves an exception pending and yields a zero value
/// (length 0, number 0.0, no value), and the conversion continues: nothing here
/// stops early or reports a failure. The first exception of a call reaches the
/// JavaScript caller when the native function returns.
namespace binding {

using Stroke = std::vector<Scrivo::Point2D>;

/// The number, or 0.0 with an exception pending.
double toDouble(Napi::Env env, napi_value value);

/// The array's length, or 0 with an exception pending.
std::uint32_t length(Napi::Env env, napi_value array);

/// The array's element, or null with an exception pending.
napi_value element(Napi::Env env, napi_value array, std::uint32_t index);

/// Carries points between JavaScript objects and native memory in blocks, through
/// a Float64Array that both sides share.
///
/// The two functions of point-transfer.js read and write the properties. The
/// JavaScript engine compiles them, so that a point costs about ten nanoseconds;
/// single Node-API calls take hundreds. They access properties in the same order
/// as such calls would, and leave to them any value that is not an object or number.
class PointTransfer {
public:
    /// Leaves an exception pending, and is not ready, when the JavaScript engine
    /// is out of stack or memory.
    explicit PointTransfer(Napi::Env env);

    [[nodiscard]] bool ready() const { return !m_write.IsEmpty(); }

    /// One point per element, in order; the length is read again for each, since a
    /// getter may change it. A malformed element also gives a point, with zeros for
    /// what could not be read.
    [[nodiscard]] Stroke read(napi_value array);

    /// Stores a new object per point, from index 0 on: `x`, `y` and, unless it is
    /// exactly 0, `force`.
    void write(napi_value array, const Stroke& stroke);

private:
    void makeFunctions(napi_value factory, napi_value view);
    void readBlock(Stroke& stroke, napi_value array);

    Napi::Env m_env;
    double* m_shared = nullptr;  // valid while m_read and m_write are
    Napi::FunctionReference m_read;
    Napi::FunctionReference m_write;
};

/// The transfer that one native call uses. An environment keeps an idle one, the
/// compiled script and its buffer, between calls. A getter that calls the module
/// while its caller's stroke is being read gets another one.
class TransferLease {
public:
    explicit TransferLease(Napi::Env env);
    ~TransferLease();
    TransferLease(const TransferLease&) = delete;
    TransferLease& operator=(const TransferLease&) = delete;

    PointTransfer* operator->() const { return m_transfer.get(); }

    /// To be called once per environment, before the first lease.
    static void prepare(Napi::Env env);

private:
    struct Idle {
        std::unique_ptr<PointTransfer> transfer;
    };

    Idle& m_idle;
    std::unique_ptr<PointTransfer> m_transfer;
};

}  // namespace binding
