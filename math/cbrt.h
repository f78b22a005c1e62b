// The cube root of doubles, to within 0.51 units in the last place.
#pragma once

#include <array>

#include "simd/vec.h"

namespace q4 {

/// For tables, at compile time: of y from 0.001 to 10, to a few units in the last place.
constexpr double cubeRootByNewton(double y) {
    double c = 1;
    for (int i = 0; i < 20; ++i) c = (2 * c + y / (c * c)) / 3;
    return c;
}

// For the midpoint c of each of 32 equal parts of 1 to 2: -1/c, and the cube roots of c, 2c and 4c, as the double below
// and the rest.
template <int n>
using DoubleTable = std::array<double, size_t(n)>;
[[gnu::visibility("hidden")]] extern const DoubleTable<32> s_dwRcp;
[[gnu::visibility("hidden")]] extern const DoubleTable<96> s_dwCbrtHi, s_dwCbrtLo;

/// The first terms of ((1 + u)^(1/3) - 1) / u, from the highest power.
inline constexpr double cbrtSeries[] = {-0.01583430710088232, 0.019001168521058782, -0.023472031702484377,
                                        0.03017832647462277,  -0.0411522633744856,  0.06172839506172839,
                                        -0.1111111111111111,  0.3333333333333333};

/// Of normal numbers. Others give some number: no value leads out of the tables.
MOX_INLINE F64 _my_cbrt53_pd(F64 x) {
    constexpr uint64_t sign = uint64_t(1) << 63, one = uint64_t(1023) << 52, fraction = (uint64_t(1) << 52) - 1;
    constexpr uint64_t topFive = fraction & ~(fraction >> 5), sixth = uint64_t(1) << 46;
    const U64 bits = as<U64>(x);

    // The significand against its part's midpoint, both negative.
    const U64 i = shr<47>(bits & splat<U64>(topFive));
    const F64 m = as<F64>((bits & splat<U64>(fraction)) | splat<U64>(sign | one));
    const F64 c = as<F64>((bits & splat<U64>(topFive)) | splat<U64>(sign | one | sixth));
    const F64 u = gather(s_dwRcp.data(), i) * (m - c);
    F64 p = splat<F64>(cbrtSeries[0]);
    for (int term = 1; term < 8; ++term) p = p * u + splat<F64>(cbrtSeries[term]);

    // The exponent is 3 q + r.
    const U64 e = shr<52>(bits & splat<U64>(~sign));
    const U64 q = shr<14>(mulLow(e, splat<U64>(5462)));
    const U64 r = e - (q + q + q);
    const F64 scale = as<F64>((bits & splat<U64>(sign)) | shl<52>(q + splat<U64>(682)));
    const U64 entry = shl<5>(r) + i;
    const F64 hi = gather(s_dwCbrtHi.data(), entry) * scale, lo = gather(s_dwCbrtLo.data(), entry) * scale;
    return hi + (lo + (u * hi) * p);
}

}  // namespace q4
