// What depends on the width, at AVX2: a vector is two lanes.
#pragma once

#include "simd/lane.h"

#define MOX_MM(op) _mm256_##op
#define MOX_SI(op) _mm256_##op##_si256

namespace q4 {

using RegI = __m256i;
using RegF = __m256;
using RegD = __m256d;
using ByteBits = uint32_t;  // holds a bit for each byte of a vector
inline constexpr int lanes = 2;

namespace width {

MOX_INLINE RegI splatLane(__m128i lane) { return _mm256_broadcastsi128_si256(lane); }
MOX_INLINE RegI splat64(uint64_t x) { return _mm256_set1_epi64x((long long)(x)); }
template <int lane>
MOX_INLINE __m128i laneOf(RegI r) {
    return _mm256_extracti128_si256(r, lane);
}
template <class Of>
MOX_INLINE RegI fromLanes(const Of& of) {
    const __m128i low = of(std::integral_constant<int, 0>{}), high = of(std::integral_constant<int, 1>{});
    return _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
}
/// The four quarters of a vector in another order.
template <int a, int b, int c, int d>
MOX_INLINE RegI quarters(RegI r) {
    return _mm256_permute4x64_epi64(r, a | b << 2 | c << 4 | d << 6);
}

MOX_INLINE void store(void* p, RegI r) { _mm256_storeu_si256(static_cast<RegI*>(p), r); }
MOX_INLINE RegI loadHalves(const void* p) { return quarters<0, 2, 1, 3>(_mm256_zextsi128_si256(load128(p))); }
MOX_INLINE RegI loadWidened(const void* p) { return _mm256_cvtepu8_epi16(load128(p)); }
MOX_INLINE void storeHalves(void* p, RegI r) { store128(p, _mm256_castsi256_si128(quarters<0, 2, 0, 0>(r))); }
template <int laneBytes>
MOX_INLINE void storePair(uint8_t* p, RegI a, RegI b) {
    store(p, _mm256_inserti128_si256(a, _mm256_castsi256_si128(b), 1));
    store(p + laneBytes, _mm256_permute2x128_si256(a, b, 0x31));
}
MOX_INLINE RegF gather(const float* table, RegI index) { return _mm256_i32gather_ps(table, index, 4); }

MOX_INLINE RegI select(RegI mask, RegI yes, RegI no) { return _mm256_blendv_epi8(no, yes, mask); }
MOX_INLINE RegF select(RegF mask, RegF yes, RegF no) { return _mm256_blendv_ps(no, yes, mask); }
MOX_INLINE RegD select(RegD mask, RegD yes, RegD no) { return _mm256_blendv_pd(no, yes, mask); }
template <int mask>
MOX_INLINE RegI blend8(RegI a, RegI b) {
    return select(splatLane(bytesIn<mask>()), b, a);
}
template <int mask>
MOX_INLINE RegI blend16(RegI a, RegI b) {
    return _mm256_blend_epi16(a, b, mask);
}
template <int mask>
MOX_INLINE RegF blend32(RegF a, RegF b) {
    return _mm256_blend_ps(a, b, mask * 0x11);
}
MOX_INLINE ByteBits topBits(RegI r) { return ByteBits(_mm256_movemask_epi8(r)); }
MOX_INLINE bool anySign(RegF r) { return _mm256_movemask_ps(r) != 0; }
MOX_INLINE bool anySign(RegD r) { return _mm256_movemask_pd(r) != 0; }
MOX_INLINE RegI byteMask(ByteBits bits) {
    const RegI order = _mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303);
    const RegI bit = _mm256_set1_epi64x((long long)(0x8040201008040201));
    return _mm256_cmpeq_epi8(_mm256_and_si256(_mm256_shuffle_epi8(_mm256_set1_epi32(int(bits)), order), bit), bit);
}

template <int order>
MOX_INLINE RegI shuffle32(RegI r) {
    return _mm256_shuffle_epi32(r, order);
}
template <int n>
MOX_INLINE RegI bytesUp(RegI r) {
    return _mm256_slli_si256(r, n);
}
template <int n>
MOX_INLINE RegI bytesDown(RegI r) {
    return _mm256_srli_si256(r, n);
}
MOX_INLINE RegI lanesBefore(RegI r, RegI before) { return _mm256_permute2x128_si256(before, r, 0x21); }
template <int n>
MOX_INLINE RegI deal(RegI r) {
    if constexpr (n == 4) return _mm256_permutevar8x32_epi32(r, _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7));
    if constexpr (n == 8) return quarters<0, 2, 1, 3>(r);
}
template <int n>
MOX_INLINE RegI undeal(RegI r) {
    if constexpr (n == 4) return _mm256_permutevar8x32_epi32(r, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    if constexpr (n == 8) return quarters<0, 2, 1, 3>(r);
}
MOX_INLINE void storeHalvesDealt(void* toA, void* toB, RegI a, RegI b) {
    const RegI both = undeal<4>(_mm256_unpacklo_epi64(a, b));  // a in the first lane, b in the second, still in twos
    const __m128i inLine = _mm_setr_epi8(0, 1, 4, 5, 2, 3, 6, 7, 8, 9, 12, 13, 10, 11, 14, 15);
    const RegI sorted = _mm256_shuffle_epi8(both, splatLane(inLine));
    store128(toA, laneOf<0>(sorted)), store128(toB, laneOf<1>(sorted));
}
MOX_INLINE RegF pushFirst(float first, RegF r) {
    const RegF up = _mm256_permutevar8x32_ps(r, _mm256_setr_epi32(0, 0, 1, 2, 3, 4, 5, 6));
    return _mm256_blend_ps(up, _mm256_castps128_ps256(_mm_set_ss(first)), 1);
}

MOX_INLINE RegI pairSums16(RegI a, RegI b) { return _mm256_hadd_epi16(a, b); }
MOX_INLINE RegI pairSums32(RegI a, RegI b) { return _mm256_hadd_epi32(a, b); }
MOX_INLINE RegF rcp(RegF r) { return _mm256_rcp_ps(r); }
MOX_INLINE RegF roundEven(RegF r) { return _mm256_round_ps(r, _MM_FROUND_TO_NEAREST_INT); }
MOX_INLINE RegD lowPairs(RegF r) {
    return _mm256_cvtps_pd(_mm256_castps256_ps128((RegF)quarters<0, 2, 0, 0>((RegI)r)));
}
MOX_INLINE RegF narrow(RegD lo, RegD hi) {
    const RegF both = _mm256_set_m128(_mm256_cvtpd_ps(hi), _mm256_cvtpd_ps(lo));  // lo0 lo1, hi0 hi1
    return (RegF)quarters<0, 2, 1, 3>((RegI)both);
}
MOX_INLINE RegI truncate(RegD lo, RegD hi) {
    const RegI both = _mm256_set_m128i(_mm256_cvttpd_epi32(hi), _mm256_cvttpd_epi32(lo));  // lo0 lo1, hi0 hi1
    return quarters<0, 2, 1, 3>(both);
}

}  // namespace width
}  // namespace q4
