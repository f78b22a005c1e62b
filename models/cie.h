// What the CIE models share: linear RGB to and from XYZ with the primaries of BT.709 and the D65 white.
#pragma once

#include "frame/block.h"

namespace q4 {

struct CieMatrix {
    float row[3][3];
};

inline constexpr CieMatrix rgbToXyz = {
    {{0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}}};
inline constexpr CieMatrix xyzToRgb = {
    {{3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}}};

/// On doubles, the matrix counts as its floats, widened.
template <class V>
MOX_INLINE Px<V, 3> operator*(const CieMatrix& m, const Px<V, 3>& p) {
    const auto sum = [&](const float(&w)[3]) {
        return (splat<V>(w[0]) * p.c[0] + splat<V>(w[1]) * p.c[1]) + splat<V>(w[2]) * p.c[2];
    };
    return {{sum(m.row[0]), sum(m.row[1]), sum(m.row[2])}};
}

/// Up to this Y, lightness is a straight line: 903.3 Y.
inline constexpr float darkY = 0.008856f;
inline constexpr float darkSlope = 903.3f;

}  // namespace q4
