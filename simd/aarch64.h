// SSE4.2 on 64-bit ARM: SIMDe's functions under the intrinsics' names, but for those that give other bits than x86 does
// where values leave the range, are NaNs, or are rounded otherwise than to nearest.
#pragma once

#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/sse4.2.h>

#include <array>
#include <bit>
#include <cstdint>

namespace q4::arm {

/// MINPD and MAXPD: b if either is a NaN or both are zeros.
inline __m128d min(__m128d a, __m128d b) { return vbslq_f64(vcltq_f64(a, b), a, b); }
inline __m128d max(__m128d a, __m128d b) { return vbslq_f64(vcgtq_f64(a, b), a, b); }

/// Into the low half, the rest 0. What has no place gives -2147483648; a conversion by itself would saturate.
inline __m128i truncate(__m128d v) {
    const uint64x2_t fits = vandq_u64(vcltq_f64(v, vdupq_n_f64(0x1p31)), vcgeq_f64(v, vdupq_n_f64(-0x1p31)));
    const int64x2_t whole = vbslq_s64(fits, vcvtq_s64_f64(v), vdupq_n_s64(INT32_MIN));
    return vreinterpretq_s64_s32(vcombine_s32(vmovn_s64(whole), vdup_n_s32(0)));
}

/// The mantissas that RCPPS gives on one maker's processors, by the top 11 bits t of the operand's: of the reciprocal of
/// the middle of the interval that t names, to the nearest multiple of 2^-13.
inline constexpr auto reciprocals = [] {
    std::array<uint16_t, 2048> table{};
    for (uint32_t t = 0; t < table.size(); ++t) {
        const uint32_t middle = 4096 + 2 * t + 1;
        table[t] = uint16_t(((1u << 26) + middle) / (2 * middle) - 4096);
    }
    return table;
}();

/// RCPSS. Denormals count as zeros, and what would be one becomes zero.
inline float rcp(float x) {
    const uint32_t bits = std::bit_cast<uint32_t>(x), sign = bits & 0x80000000, exponent = bits >> 23 & 0xFF;
    if (exponent == 0) return std::bit_cast<float>(sign | 0x7F800000);
    if (exponent == 0xFF && bits << 9 != 0) return std::bit_cast<float>(bits | 0x00400000);
    if (exponent > 252) return std::bit_cast<float>(sign);
    return std::bit_cast<float>(sign | (253 - exponent) << 23 | uint32_t(reciprocals[bits >> 12 & 0x7FF]) << 11);
}
inline __m128 rcp(__m128 v) { return __m128{rcp(v[0]), rcp(v[1]), rcp(v[2]), rcp(v[3])}; }

}  // namespace q4::arm

#undef _mm_min_pd
#undef _mm_max_pd
#undef _mm_cvtps_epi32
#undef _mm_cvttpd_epi32
#undef _mm_cvtss_si32
#undef _mm_cvtsd_si32
#undef _mm_cvttss_si32
#undef _mm_cvttsd_si32
#undef _mm_rcp_ps
#undef _mm_rcp_ss
#define _mm_min_pd(a, b)    q4::arm::min(a, b)
#define _mm_max_pd(a, b)    q4::arm::max(a, b)
#define _mm_cvtps_epi32(v)  _mm_cvttps_epi32(vrndiq_f32(v))
#define _mm_cvttpd_epi32(v) q4::arm::truncate(v)
#define _mm_cvtss_si32(v)   _mm_cvtsi128_si32(_mm_cvtps_epi32(v))
#define _mm_cvtsd_si32(v)   _mm_cvtsi128_si32(q4::arm::truncate(vrndiq_f64(v)))
#define _mm_cvttss_si32(v)  _mm_cvtsi128_si32(_mm_cvttps_epi32(v))
#define _mm_cvttsd_si32(v)  _mm_cvtsi128_si32(q4::arm::truncate(v))
#define _mm_rcp_ps(v)       q4::arm::rcp(v)
#define _mm_rcp_ss(v)       q4::arm::rcp(v)
