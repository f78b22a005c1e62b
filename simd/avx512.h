// What depends on the width, at AVX-512 (F, BW, DQ and VL): a vector is four lanes.
#pragma once

#if defined(MOX_EMULATE_AVX512)
#include "simd/emulated512.h"
#endif
#include "simd/lane.h"

#define MOX_MM(op) _mm512_##op
#define MOX_SI(op) _mm512_##op##_si512

namespace q4 {

using RegI = __m512i;
using RegF = __m512;
using RegD = __m512d;
using ByteBits = uint64_t;  // holds a bit for each byte of a vector
inline constexpr int lanes = 4;

namespace width {

typedef int8_t Bytes [[gnu::vector_size(64)]];
typedef int16_t Words [[gnu::vector_size(64)]];
typedef int32_t Dwords [[gnu::vector_size(64)]];
typedef int64_t Qwords [[gnu::vector_size(64)]];

MOX_INLINE RegI splatLane(__m128i lane) { return _mm512_broadcast_i32x4(lane); }
MOX_INLINE RegI splat64(uint64_t x) { return _mm512_set1_epi64((long long)(x)); }
template <int lane>
MOX_INLINE __m128i laneOf(RegI r) {
    if constexpr (lane == 0)
        return _mm512_castsi512_si128(r);
    else
        return _mm512_extracti32x4_epi32(r, lane);
}
MOX_INLINE __m256i lowHalf(RegI r) { return _mm512_castsi512_si256(r); }
MOX_INLINE __m256i highHalf(RegI r) { return _mm512_extracti64x4_epi64(r, 1); }
MOX_INLINE RegI fromHalves(__m256i low, __m256i high) {
    return _mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1);
}
template <class Of>
MOX_INLINE RegI fromLanes(const Of& of) {
    const auto two = [&](auto low, auto high) {
        return _mm256_inserti128_si256(_mm256_castsi128_si256(of(low)), of(high), 1);
    };
    return fromHalves(two(std::integral_constant<int, 0>{}, std::integral_constant<int, 1>{}),
                      two(std::integral_constant<int, 2>{}, std::integral_constant<int, 3>{}));
}
/// The eighths of a vector in another order.
MOX_INLINE RegI eighths(RegI r, Qwords order) { return _mm512_permutexvar_epi64((RegI)order, r); }
/// The low halves of the lanes, then their high halves; and back.
MOX_INLINE RegI lowThenHigh(RegI r) { return eighths(r, Qwords{0, 2, 4, 6, 1, 3, 5, 7}); }
MOX_INLINE RegI lowBesideHigh(RegI r) { return eighths(r, Qwords{0, 4, 1, 5, 2, 6, 3, 7}); }

MOX_INLINE __m256i load256(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }
MOX_INLINE void store256(void* p, __m256i r) { _mm256_storeu_si256(static_cast<__m256i*>(p), r); }
/// In two halves: the blocks of an allocator mostly lie at 16 modulo 64, so that every whole store would cross a line.
MOX_INLINE void store(void* p, RegI r) { store256(p, lowHalf(r)), store256(static_cast<char*>(p) + 32, highHalf(r)); }
MOX_INLINE RegI loadHalves(const void* p) {
    return _mm512_maskz_permutexvar_epi64(0x55, RegI(Qwords{0, 0, 1, 0, 2, 0, 3, 0}),
                                          _mm512_castsi256_si512(load256(p)));
}
MOX_INLINE RegI loadWidened(const void* p) { return _mm512_cvtepu8_epi16(load256(p)); }
MOX_INLINE void storeHalves(void* p, RegI r) { store256(p, lowHalf(lowThenHigh(r))); }
template <int laneBytes>
MOX_INLINE void storePair(uint8_t* p, RegI a, RegI b) {
    const RegI low = _mm512_permutex2var_epi64(a, RegI(Qwords{0, 1, 8, 9, 2, 3, 10, 11}), b);
    const RegI high = _mm512_permutex2var_epi64(a, RegI(Qwords{4, 5, 12, 13, 6, 7, 14, 15}), b);
    store256(p, lowHalf(low)), store256(p + laneBytes, highHalf(low));
    store256(p + 2 * laneBytes, lowHalf(high)), store256(p + 3 * laneBytes, highHalf(high));
}
MOX_INLINE void storeHalvesDealt(void* toA, void* toB, RegI a, RegI b) {
    const Words inLine = {0, 8,  16, 24, 1, 9,  17, 25, 2, 10, 18, 26, 3, 11, 19, 27,
                          4, 12, 20, 28, 5, 13, 21, 29, 6, 14, 22, 30, 7, 15, 23, 31};
    const RegI sorted = _mm512_permutexvar_epi16((RegI)inLine, _mm512_unpacklo_epi64(a, b));
    store256(toA, lowHalf(sorted)), store256(toB, highHalf(sorted));
}
MOX_INLINE RegF gather(const float* table, RegI index) { return _mm512_i32gather_ps(index, table, 4); }

template <class Mask, class V>
MOX_INLINE V chosen(Mask mask, V yes, V no) {
    return (V)spelt([](auto m, auto y, auto n) { return m < 0 ? y : n; }, mask, yes, no);
}
MOX_INLINE RegI select(RegI mask, RegI yes, RegI no) { return (RegI)chosen((Bytes)mask, (Bytes)yes, (Bytes)no); }
MOX_INLINE RegF select(RegF mask, RegF yes, RegF no) { return chosen((Dwords)mask, yes, no); }
MOX_INLINE RegD select(RegD mask, RegD yes, RegD no) { return chosen((Qwords)mask, yes, no); }
// Masks known when this is compiled stand in the instruction: as vectors they would be compared anew in each turn.
template <int mask>
MOX_INLINE RegI blend8(RegI a, RegI b) {
    return _mm512_mask_mov_epi8(a, mask * 0x0001000100010001u, b);
}
template <int mask>
MOX_INLINE RegI blend16(RegI a, RegI b) {
    return _mm512_mask_mov_epi16(a, mask * 0x01010101u, b);
}
template <int mask>
MOX_INLINE RegF blend32(RegF a, RegF b) {
    return _mm512_mask_mov_ps(a, mask * 0x1111u, b);
}
MOX_INLINE ByteBits topBits(RegI r) { return _mm512_movepi8_mask(r); }
MOX_INLINE bool anySign(RegF r) { return _mm512_movepi32_mask((RegI)r) != 0; }
MOX_INLINE bool anySign(RegD r) { return _mm512_movepi64_mask((RegI)r) != 0; }
MOX_INLINE RegI byteMask(ByteBits bits) { return _mm512_movm_epi8(bits); }

template <int order>
MOX_INLINE RegI shuffle32(RegI r) {
    return _mm512_shuffle_epi32(r, _MM_PERM_ENUM(order));
}
template <int n>
MOX_INLINE RegI bytesUp(RegI r) {
    return _mm512_bslli_epi128(r, n);
}
template <int n>
MOX_INLINE RegI bytesDown(RegI r) {
    return _mm512_bsrli_epi128(r, n);
}
MOX_INLINE RegI lanesBefore(RegI r, RegI before) { return _mm512_alignr_epi64(r, before, 6); }
template <int n>
MOX_INLINE RegI deal(RegI r) {
    if constexpr (n == 4)
        return _mm512_permutexvar_epi32(RegI(Dwords{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}), r);
    if constexpr (n == 8) return lowBesideHigh(r);
}
template <int n>
MOX_INLINE RegI undeal(RegI r) {
    if constexpr (n == 4) return deal<4>(r);
    if constexpr (n == 8) return lowThenHigh(r);
}
MOX_INLINE RegF pushFirst(float first, RegF r) {
    const Dwords up = {0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
    return _mm512_mask_mov_ps(_mm512_permutexvar_ps((RegI)up, r), 1, _mm512_set1_ps(first));
}

MOX_INLINE RegI pairSums16(RegI a, RegI b) {
    const RegI apart = splatLane(_mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15));
    const RegI x = _mm512_shuffle_epi8(a, apart), y = _mm512_shuffle_epi8(b, apart);
    return _mm512_add_epi16(_mm512_unpacklo_epi64(x, y), _mm512_unpackhi_epi64(x, y));
}
MOX_INLINE RegI pairSums32(RegI a, RegI b) {
    const RegF x = (RegF)a, y = (RegF)b;
    return _mm512_add_epi32((RegI)_mm512_shuffle_ps(x, y, 0 | 2 << 2 | 0 << 4 | 2 << 6),
                            (RegI)_mm512_shuffle_ps(x, y, 1 | 3 << 2 | 1 << 4 | 3 << 6));
}
/// RCPPS has no form of this width, and the new instructions give other bits.
MOX_INLINE RegF rcp(RegF r) {
    const __m256 low = _mm256_rcp_ps((__m256)lowHalf((RegI)r)), high = _mm256_rcp_ps((__m256)highHalf((RegI)r));
    return (RegF)fromHalves((__m256i)low, (__m256i)high);
}
MOX_INLINE RegF roundEven(RegF r) { return _mm512_roundscale_ps(r, _MM_FROUND_TO_NEAREST_INT); }
MOX_INLINE RegD lowPairs(RegF r) { return _mm512_cvtps_pd((__m256)lowHalf(lowThenHigh((RegI)r))); }
MOX_INLINE RegF narrow(RegD lo, RegD hi) {
    return (RegF)lowBesideHigh(fromHalves((__m256i)_mm512_cvtpd_ps(lo), (__m256i)_mm512_cvtpd_ps(hi)));
}
MOX_INLINE RegI truncate(RegD lo, RegD hi) {
    return lowBesideHigh(fromHalves(_mm512_cvttpd_epi32(lo), _mm512_cvttpd_epi32(hi)));
}

}  // namespace width
}  // namespace q4
