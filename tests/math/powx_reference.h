// The power kernel in plain code, one sample at a time.
#ifndef MATH_POWX_REFERENCE_H
#define MATH_POWX_REFERENCE_H

#include <bit>
#include <cmath>
#include <optional>

#include "support/float_env.h"

namespace moxtest {

struct PowxResult {
    float value;
    int code;
};

/// The single-precision recipe; nothing for a sample that it leaves to the other.
inline std::optional<float> powxMain(float x, float p) {
    const auto b = std::bit_cast<uint32_t>(x);
    if (b < 0x00800000 || b > 0x7F7FFFFE || !std::isfinite(p)) return {};

    const float a = 4097 * p, pb = a - p, pHi = a - pb, pLo = p - pHi;
    const uint32_t k = ((b & 0x7F0000) + 0x10000) >> 17;
    const float e = static_cast<float>(static_cast<int>(b >> 23) - 127);
    const float m = std::bit_cast<float>((b & 0x007FFFFF) | 0x3F800000);
    const float rcp = static_cast<float>(std::rint(256 / (1 + k / 64.0)) / 256);
    const long double log = -logl(rcp);
    const float logHi = static_cast<float>(floorl(log * 16384) / 16384), logLo = static_cast<float>(log - logHi);

    const float mHi = std::bit_cast<float>(std::bit_cast<uint32_t>(m) & 0x7FFFC000), mLo = m - mHi;
    float rHi = mHi * rcp;
    rHi = rHi - 1;
    const float rLo = rcp * mLo, r = rHi + rLo;
    float h = logHi + rHi;
    h = h + 0.693115234375f * e;
    float q = -0.25f * r;
    q = q + std::bit_cast<float>(0x3EAAAAABu);
    q = q * r;
    q = q - 0.5f;
    q = q * (r * r);
    q = q + (logLo + std::bit_cast<float>(0x3805FDF4u) * e);
    const bool nearOne = static_cast<int32_t>(b + 0x407E0000) > 0x7FFC0000;
    const float H = nearOne ? h + rLo : h, L = nearOne ? q : q + rLo;

    const float S = H + L, c = 4097 * S;
    float sHi = S + c;
    sHi = sHi - c;
    const float sLo = L + (H - sHi);
    const float zHi = pHi * sHi;
    float zLo = pLo * sLo;
    zLo = zLo + sHi * pLo;
    zLo = zLo + sLo * pHi;
    if (!(std::fabs(zHi) <= std::bit_cast<float>(0x42819F00u))) return {};

    float t = std::bit_cast<float>(0x3FB8AA3Bu) * zHi;
    t = t + 12582912;
    const float n = t - 12582912;
    float R = zHi - std::bit_cast<float>(0x3F317200u) * n;
    R = R - std::bit_cast<float>(0x35BFBE8Eu) * n;
    R = zLo + R;
    float y = std::bit_cast<float>(0x3C07D9FEu);
    for (const uint32_t next : {0x3D2B8392u, 0x3E2AACACu, 0x3EFFFF34u, 0x3F7FFFFEu, 0x3F800000u}) {
        y = y * R;
        y = y + std::bit_cast<float>(next);
    }
    return std::bit_cast<float>(std::bit_cast<uint32_t>(y) + (std::bit_cast<uint32_t>(t) << 23));
}

/// C's pow() in extended precision, which has the same special values, and a code of its own.
inline PowxResult powxRare(float x, float p) {
    const bool domain = (x == 0 && p < 0) || (x < 0 && std::isfinite(x) && std::isfinite(p) && std::rint(p) != p);
    return {static_cast<float>(static_cast<double>(powl(x, p))), domain ? 19 : 0};
}

/// In the usual rounding mode, whatever the caller's.
inline PowxResult powxReference(float x, float p) {
    PowxResult result;
    underMxcsr(mxcsr::usual, [&] {
        const std::optional<float> main = powxMain(x, p);
        result = main ? PowxResult{*main, 0} : powxRare(x, p);
    });
    return result;
}

}  // namespace moxtest

#endif
