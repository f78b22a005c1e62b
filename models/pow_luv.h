// The cube root of single-precision values from 0 to 1: a table and a short series.
#pragma once

#include <cstddef>
#include <cstdint>

#include "math/cbrt.h"
#include "simd/vec.h"

namespace q4 {

inline constexpr int powLuvRows = 128;

/// Row k serves the values from k to k + 1 in units of 1/128, or nearly that unit, by one of them, y: c is its cube
/// root, w is 1/y.
struct PowLuv {
    struct Row {
        float c, w;
    } row[powLuvRows];
};

/// The entries count with six decimals.
constexpr float sixDecimals(double v) { return float(double(int64_t(v * 1e6 + 0.5)) / 1e6); }

/// lastScale: what the last four rows are scaled by.
constexpr PowLuv makePowLuv(double lastScale) {
    PowLuv table = {};
    for (int k = 0; k < powLuvRows; ++k) {
        const double y = (k + 1.0128) / (k < powLuvRows - 4 ? 127.99805 : lastScale);
        table.row[k] = {sixDecimals(cubeRootByNewton(y)), sixDecimals(1 / y)};
    }
    return table;
}

inline constexpr PowLuv POW_LUV = makePowLuv(127.99805);
inline constexpr PowLuv POW_LUV_128 = makePowLuv(128);

/// From a value to its row.
inline constexpr float powLuvScale = 127.99805f;

/// The cube root of y, by row k: c times the series of (1 + t)^(1/3), t being the relative distance of y from the cube
/// of c. Values from outside 0 to 1, and NaNs, come with any k: they take a row of the table, whatever it gives.
template <size_t terms>
MOX_INLINE F32 cubeRoot(const PowLuv& table, F32 y, I32 k, const float (&series)[terms]) {
    const I32 row = min(max(k, zero<I32>()), splat<I32>(powLuvRows - 1));
    F32 c, w;
    gatherPairs(&table.row[0].c, row, c, w);
    const F32 t = (y - (c * c) * c) * w;
    F32 sum = splat<F32>(series[0]) * t + splat<F32>(1), power = t;
    for (size_t i = 1; i < terms; ++i) {
        power = power * t;
        sum = sum + splat<F32>(series[i]) * power;
    }
    return c * sum;
}

}  // namespace q4
