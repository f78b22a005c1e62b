// What depends on the width, at SSE4.2: a vector is one lane.
#pragma once

#include "simd/lane.h"

#define MOX_MM(op) _mm_##op
#define MOX_SI(op) _mm_##op##_si128

namespace q4 {

using RegI = __m128i;
using RegF = __m128;
using RegD = __m128d;
using ByteBits = uint32_t;  // holds a bit for each byte of a vector
inline constexpr int lanes = 1;

namespace width {

MOX_INLINE RegI splatLane(__m128i lane) { return lane; }
MOX_INLINE RegI splat64(uint64_t x) { return _mm_set1_epi64x((long long)(x)); }
template <int>
MOX_INLINE __m128i laneOf(RegI r) {
    return r;
}
template <class Of>
MOX_INLINE RegI fromLanes(const Of& of) {
    return of(std::integral_constant<int, 0>{});
}

MOX_INLINE void store(void* p, RegI r) { store128(p, r); }
MOX_INLINE RegI loadHalves(const void* p) { return load64(p); }
MOX_INLINE RegI loadWidened(const void* p) { return _mm_cvtepu8_epi16(load64(p)); }
MOX_INLINE void storeHalves(void* p, RegI r) { store64(p, r); }
template <int laneBytes>
MOX_INLINE void storePair(uint8_t* p, RegI a, RegI b) {
    store128(p, a), store128(p + 16, b);
}
MOX_INLINE void storeHalvesDealt(void* toA, void* toB, RegI a, RegI b) { store64(toA, a), store64(toB, b); }
MOX_INLINE RegF gather(const float* table, RegI index) {
    return _mm_setr_ps(table[_mm_extract_epi32(index, 0)], table[_mm_extract_epi32(index, 1)],
                       table[_mm_extract_epi32(index, 2)], table[_mm_extract_epi32(index, 3)]);
}

MOX_INLINE RegI select(RegI mask, RegI yes, RegI no) { return _mm_blendv_epi8(no, yes, mask); }
MOX_INLINE RegF select(RegF mask, RegF yes, RegF no) { return _mm_blendv_ps(no, yes, mask); }
MOX_INLINE RegD select(RegD mask, RegD yes, RegD no) { return _mm_blendv_pd(no, yes, mask); }
template <int mask>
MOX_INLINE RegI blend8(RegI a, RegI b) {
    return select(splatLane(bytesIn<mask>()), b, a);
}
template <int mask>
MOX_INLINE RegI blend16(RegI a, RegI b) {
    return _mm_blend_epi16(a, b, mask);
}
template <int mask>
MOX_INLINE RegF blend32(RegF a, RegF b) {
    return _mm_blend_ps(a, b, mask);
}
MOX_INLINE ByteBits topBits(RegI r) { return ByteBits(_mm_movemask_epi8(r)); }
MOX_INLINE bool anySign(RegF r) { return _mm_movemask_ps(r) != 0; }
MOX_INLINE bool anySign(RegD r) { return _mm_movemask_pd(r) != 0; }
MOX_INLINE RegI byteMask(ByteBits bits) {
    const RegI order = _mm_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1);
    const RegI bit = _mm_set1_epi64x((long long)(0x8040201008040201));
    return _mm_cmpeq_epi8(_mm_and_si128(_mm_shuffle_epi8(_mm_set1_epi32(int(bits)), order), bit), bit);
}

template <int order>
MOX_INLINE RegI shuffle32(RegI r) {
    return _mm_shuffle_epi32(r, order);
}
template <int n>
MOX_INLINE RegI bytesUp(RegI r) {
    return _mm_slli_si128(r, n);
}
template <int n>
MOX_INLINE RegI bytesDown(RegI r) {
    return _mm_srli_si128(r, n);
}
MOX_INLINE RegI lanesBefore(RegI, RegI before) { return before; }
template <int n>
MOX_INLINE RegI deal(RegI r) {
    return r;
}
template <int n>
MOX_INLINE RegI undeal(RegI r) {
    return r;
}
MOX_INLINE RegF pushFirst(float first, RegF r) {
    return _mm_move_ss(_mm_shuffle_ps(r, r, 0 | 0 << 2 | 1 << 4 | 2 << 6), _mm_set_ss(first));
}

MOX_INLINE RegI pairSums16(RegI a, RegI b) { return _mm_hadd_epi16(a, b); }
MOX_INLINE RegI pairSums32(RegI a, RegI b) { return _mm_hadd_epi32(a, b); }
MOX_INLINE RegF rcp(RegF r) { return _mm_rcp_ps(r); }
MOX_INLINE RegF roundEven(RegF r) { return _mm_round_ps(r, _MM_FROUND_TO_NEAREST_INT); }
MOX_INLINE RegD lowPairs(RegF r) { return _mm_cvtps_pd(r); }
MOX_INLINE RegF narrow(RegD lo, RegD hi) { return _mm_movelh_ps(_mm_cvtpd_ps(lo), _mm_cvtpd_ps(hi)); }
MOX_INLINE RegI truncate(RegD lo, RegD hi) { return _mm_unpacklo_epi64(_mm_cvttpd_epi32(lo), _mm_cvttpd_epi32(hi)); }

}  // namespace width
}  // namespace q4
