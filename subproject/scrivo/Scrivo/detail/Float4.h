#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#define SCRIVO_FLOAT4_SSE2
#include <emmintrin.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#else
#include <algorithm>
#include <cmath>
#endif

/// Four floats at a time, inline because the inner loops of the template index
/// consist of them. They serve estimates whose error is bounded whatever the
/// order of operations, so the forms need not agree to the last bit.
namespace Scrivo::detail {

#ifdef SCRIVO_FLOAT4_SSE2

struct Float4 {
    __m128 lanes;

    static Float4 all(float value) { return {_mm_set1_ps(value)}; }
    /// `from` is aligned to 16 bytes, as for `store`.
    static Float4 load(const float* from) { return {_mm_load_ps(from)}; }
    void store(float* to) const { _mm_store_ps(to, lanes); }

    friend Float4 operator+(Float4 a, Float4 b) { return {_mm_add_ps(a.lanes, b.lanes)}; }
    friend Float4 operator-(Float4 a, Float4 b) { return {_mm_sub_ps(a.lanes, b.lanes)}; }
    friend Float4 operator*(Float4 a, Float4 b) { return {_mm_mul_ps(a.lanes, b.lanes)}; }
    friend Float4 max(Float4 a, Float4 b) { return {_mm_max_ps(a.lanes, b.lanes)}; }
    friend Float4 abs(Float4 a) { return {_mm_andnot_ps(_mm_set1_ps(-0.0F), a.lanes)}; }
    friend Float4 sqrt(Float4 a) { return {_mm_sqrt_ps(a.lanes)}; }
};

#elif defined(__wasm_simd128__)

struct Float4 {
    v128_t lanes;

    static Float4 all(float value) { return {wasm_f32x4_splat(value)}; }
    /// `from` is aligned to 16 bytes, as for `store`.
    static Float4 load(const float* from) { return {wasm_v128_load(from)}; }
    void store(float* to) const { wasm_v128_store(to, lanes); }

    friend Float4 operator+(Float4 a, Float4 b) { return {wasm_f32x4_add(a.lanes, b.lanes)}; }
    friend Float4 operator-(Float4 a, Float4 b) { return {wasm_f32x4_sub(a.lanes, b.lanes)}; }
    friend Float4 operator*(Float4 a, Float4 b) { return {wasm_f32x4_mul(a.lanes, b.lanes)}; }
    friend Float4 max(Float4 a, Float4 b) { return {wasm_f32x4_max(a.lanes, b.lanes)}; }
    friend Float4 abs(Float4 a) { return {wasm_f32x4_abs(a.lanes)}; }
    friend Float4 sqrt(Float4 a) { return {wasm_f32x4_sqrt(a.lanes)}; }
};

#else

struct alignas(16) Float4 {
    float lanes[4];

    template <typename Operation>
    static Float4 each(Operation operation) {
        return {{operation(0), operation(1), operation(2), operation(3)}};
    }
    static Float4 all(float value) { return {{value, value, value, value}}; }
    static Float4 load(const float* from) {
        return each([&](int k) { return from[k]; });
    }
    void store(float* to) const { std::copy(lanes, lanes + 4, to); }

    friend Float4 operator+(Float4 a, Float4 b) {
        return each([&](int k) { return a.lanes[k] + b.lanes[k]; });
    }
    friend Float4 operator-(Float4 a, Float4 b) {
        return each([&](int k) { return a.lanes[k] - b.lanes[k]; });
    }
    friend Float4 operator*(Float4 a, Float4 b) {
        return each([&](int k) { return a.lanes[k] * b.lanes[k]; });
    }
    friend Float4 max(Float4 a, Float4 b) {
        return each([&](int k) { return std::max(a.lanes[k], b.lanes[k]); });
    }
    friend Float4 abs(Float4 a) {
        return each([&](int k) { return std::abs(a.lanes[k]); });
    }
    friend Float4 sqrt(Float4 a) {
        return each([&](int k) { return std::sqrt(a.lanes[k]); });
    }
};

#endif

inline float sum(Float4 a) {
    alignas(16) float lanes[4];
    a.store(lanes);
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

}  // namespace Scrivo::detail
