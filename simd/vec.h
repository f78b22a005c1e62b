// Vectors of samples, 16 bytes wide at SSE4.2 and 32 at AVX2, from one source.
//
// A 256-bit vector is two independent 128-bit lanes: every operation here is lane-local, so that code written for one
// lane serves both. A lane of a block holds consecutive pixels; the load and store functions say where each lane lies
// in memory. Unpacking, then packing in the same order, gives the pixels back in their order at either width.
//
// This folder alone spells intrinsics. Every function is one instruction or a short fixed sequence.
#pragma once

#include <immintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

namespace q4 {

#if defined(__AVX2__)
#define MOX_MM(op)                          _mm256_##op
#define MOX_SI(op)                          _mm256_##op##_si256
#define MOX_CMP(type, a, b, sse, predicate) _mm256_cmp_##type(a, b, predicate)
using RegI = __m256i;
using RegF = __m256;
using RegD = __m256d;
inline constexpr int lanes = 2;
#else
#define MOX_MM(op)                          _mm_##op
#define MOX_SI(op)                          _mm_##op##_si128
#define MOX_CMP(type, a, b, sse, predicate) _mm_cmp##sse##_##type(a, b)
using RegI = __m128i;
using RegF = __m128;
using RegD = __m128d;
inline constexpr int lanes = 1;
#endif

inline constexpr int vectorBytes = 16 * lanes;

#define MOX_INLINE [[gnu::always_inline]] inline

// ---- types ----------------------------------------------------------------------------------------------------------

template <class T>
struct RegisterOf {
    using Type = RegI;
};
template <>
struct RegisterOf<float> {
    using Type = RegF;
};
template <>
struct RegisterOf<double> {
    using Type = RegD;
};

/// A vector of samples of type T.
template <class T>
struct Vec {
    using Sample = T;
    using Reg = typename RegisterOf<T>::Type;
    static constexpr int count = vectorBytes / int(sizeof(T));
    Reg r;
};

using U8 = Vec<uint8_t>;
using I8 = Vec<int8_t>;
using U16 = Vec<uint16_t>;
using I16 = Vec<int16_t>;
using U32 = Vec<uint32_t>;
using I32 = Vec<int32_t>;
using U64 = Vec<uint64_t>;
using F32 = Vec<float>;
using F64 = Vec<double>;

/// An 8-bit sample with 8 fractional bits, in an unsigned 16-bit element: what mulHi() wants of a sample that is
/// multiplied by a constant and divided by 256.
struct Fixed8p8 {
    uint16_t value;
};
using U8p8 = Vec<Fixed8p8>;

/// The same bits as another vector type.
template <class To, class T>
MOX_INLINE To as(Vec<T> v) {
    return {(typename To::Reg)(v.r)};
}

// ---- constants ------------------------------------------------------------------------------------------------------

template <class V>
MOX_INLINE V splat(typename V::Sample x) {
    if constexpr (std::is_same_v<V, F32>)
        return {MOX_MM(set1_ps)(x)};
    else if constexpr (std::is_same_v<V, F64>)
        return {MOX_MM(set1_pd)(x)};
    else if constexpr (sizeof(x) == 1)
        return {MOX_MM(set1_epi8)(char(x))};
    else if constexpr (sizeof(x) == 2)
        return {MOX_MM(set1_epi16)(short(x))};
    else if constexpr (sizeof(x) == 8)
        return {MOX_MM(set1_epi64x)((long long)(x))};
    else
        return {MOX_MM(set1_epi32)(int(x))};
}

template <class V>
MOX_INLINE V zero() {
    return as<V>(I32{MOX_SI(setzero)()});
}

/// The same 16 bytes in every lane.
template <class V>
MOX_INLINE V splatLane(__m128i lane) {
#if defined(__AVX2__)
    return as<V>(I32{_mm256_broadcastsi128_si256(lane)});
#else
    return as<V>(I32{lane});
#endif
}

/// The vector whose element i is of(i), for 32-bit elements.
template <class V, class Of>
MOX_INLINE V fromElements(const Of& of) {
    const auto bits = [&](int i) { return std::bit_cast<int>(typename V::Sample(of(i))); };
#if defined(__AVX2__)
    return as<V>(I32{_mm256_setr_epi32(bits(0), bits(1), bits(2), bits(3), bits(4), bits(5), bits(6), bits(7))});
#else
    return as<V>(I32{_mm_setr_epi32(bits(0), bits(1), bits(2), bits(3))});
#endif
}

/// A shuffle or mask pattern of 16 bytes, the same in every lane.
template <class V = U8, class... B>
MOX_INLINE V pattern(B... bytes) {
    static_assert(sizeof...(B) == 16);
    return splatLane<V>(_mm_setr_epi8(char(bytes)...));
}

// ---- memory ---------------------------------------------------------------------------------------------------------

MOX_INLINE __m128i load128(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
MOX_INLINE __m128i load64(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
MOX_INLINE __m128i load32(const void* p) {
    int32_t x;
    std::memcpy(&x, p, 4);
    return _mm_cvtsi32_si128(x);
}
MOX_INLINE void store128(void* p, __m128i r) { _mm_storeu_si128(static_cast<__m128i*>(p), r); }
MOX_INLINE void store64(void* p, __m128i r) { _mm_storel_epi64(static_cast<__m128i*>(p), r); }
MOX_INLINE void store32(void* p, __m128i r) {
    const int32_t x = _mm_cvtsi128_si32(r);
    std::memcpy(p, &x, 4);
}

/// One lane of a vector.
template <int lane, class T>
MOX_INLINE __m128i laneOf(Vec<T> v) {
    static_assert(lane < lanes);
#if defined(__AVX2__)
    return _mm256_extracti128_si256(as<I32>(v).r, lane);
#else
    return as<I32>(v).r;
#endif
}

/// The low (0) or the high (1) 8 bytes of a lane.
template <int which>
MOX_INLINE uint64_t half(__m128i lane) {
    return uint64_t(_mm_extract_epi64(lane, which));
}

/// A vector of its lanes, of which it takes the first one or both.
template <class V>
MOX_INLINE V fromLanes(__m128i lane0, [[maybe_unused]] __m128i lane1) {
#if defined(__AVX2__)
    return as<V>(I32{_mm256_inserti128_si256(_mm256_castsi128_si256(lane0), lane1, 1)});
#else
    return as<V>(I32{lane0});
#endif
}

// The lane l of a load or store starts at p + l * laneBytes.

/// 16 bytes a lane.
template <class V, int laneBytes = 16>
MOX_INLINE V load(const void* p) {
    if constexpr (lanes == 1 || laneBytes == 16)
        return as<V>(I32{MOX_SI(loadu)(static_cast<const RegI*>(p))});
    else
        return fromLanes<V>(load128(p), load128(static_cast<const uint8_t*>(p) + laneBytes));
}
/// 8 bytes into the low half of each lane, the rest 0.
template <class V, int laneBytes = 8>
MOX_INLINE V loadHalf(const void* p) {
#if defined(__AVX2__)
    if constexpr (laneBytes == 8)
        return as<V>(I32{_mm256_permute4x64_epi64(_mm256_zextsi128_si256(load128(p)), 0 | 2 << 2 | 1 << 4 | 3 << 6)});
    else
        return fromLanes<V>(load64(p), load64(static_cast<const uint8_t*>(p) + laneBytes));
#else
    return fromLanes<V>(load64(p), __m128i{});
#endif
}
/// 4 bytes into the low quarter of each lane, the rest 0.
template <class V, int laneBytes = 4>
MOX_INLINE V loadQuarter(const void* p) {
    if constexpr (lanes == 1)
        return fromLanes<V>(load32(p), __m128i{});
    else
        return fromLanes<V>(load32(p), load32(static_cast<const uint8_t*>(p) + laneBytes));
}
/// Consecutive bytes, widened.
MOX_INLINE U16 loadWidened(const void* p) {
#if defined(__AVX2__)
    return {_mm256_cvtepu8_epi16(load128(p))};
#else
    return {_mm_cvtepu8_epi16(load64(p))};
#endif
}
/// 16 bytes a lane.
template <int laneBytes = 16, class T>
MOX_INLINE void store(void* p, Vec<T> v) {
    if constexpr (lanes == 1 || laneBytes == 16) {
        MOX_SI(storeu)(static_cast<RegI*>(p), as<I32>(v).r);
    } else {
        store128(p, laneOf<0>(v));
        store128(static_cast<uint8_t*>(p) + laneBytes, laneOf<lanes - 1>(v));
    }
}
/// Two vectors side by side: 16 bytes of a, then 16 of b, for each lane.
template <int laneBytes, class T>
MOX_INLINE void storePair(void* p, Vec<T> a, Vec<T> b) {
    uint8_t* const bytes = static_cast<uint8_t*>(p);
#if defined(__AVX2__)
    const RegI x = as<I32>(a).r, y = as<I32>(b).r;
    store(bytes, I32{_mm256_inserti128_si256(x, _mm256_castsi256_si128(y), 1)});
    store(bytes + laneBytes, I32{_mm256_permute2x128_si256(x, y, 0x31)});
#else
    store(bytes, a);
    store(bytes + 16, b);
#endif
}
/// The low 8 bytes of each lane.
template <int laneBytes = 8, class T>
MOX_INLINE void storeHalf(void* p, Vec<T> v) {
#if defined(__AVX2__)
    if constexpr (laneBytes == 8) {
        store128(p, _mm256_castsi256_si128(_mm256_permute4x64_epi64(as<I32>(v).r, 0 | 2 << 2)));
        return;
    }
#endif
    store64(p, laneOf<0>(v));
    if constexpr (lanes == 2) store64(static_cast<uint8_t*>(p) + laneBytes, laneOf<lanes - 1>(v));
}
/// The low 4 bytes of each lane.
template <int laneBytes = 4, class T>
MOX_INLINE void storeQuarter(void* p, Vec<T> v) {
    store32(p, laneOf<0>(v));
    if constexpr (lanes == 2) store32(static_cast<uint8_t*>(p) + laneBytes, laneOf<lanes - 1>(v));
}
/// A store past the cache; p is aligned to the vector. A run of these ends with storeFence().
template <class T>
MOX_INLINE void stream(void* p, Vec<T> v) {
    MOX_SI(stream)(static_cast<RegI*>(p), as<I32>(v).r);
}
MOX_INLINE void storeFence() { _mm_sfence(); }

/// The table entries that the indices name.
MOX_INLINE F32 gather(const float* table, I32 index) {
#if defined(__AVX2__)
    return {_mm256_i32gather_ps(table, index.r, 4)};
#else
    return {_mm_setr_ps(table[_mm_extract_epi32(index.r, 0)], table[_mm_extract_epi32(index.r, 1)],
                        table[_mm_extract_epi32(index.r, 2)], table[_mm_extract_epi32(index.r, 3)])};
#endif
}

// These by single loads, which on many processors are faster than the instruction.

MOX_INLINE F64 gather(const double* table, U64 index) {
    alignas(vectorBytes) uint64_t at[U64::count];
    MOX_SI(store)(reinterpret_cast<RegI*>(at), index.r);
    const auto two = [&](int i) {
        return _mm_castpd_si128(_mm_loadh_pd(_mm_load_sd(table + at[i]), table + at[i + 1]));
    };
    return fromLanes<F64>(two(0), two(2 * (lanes - 1)));
}

/// The table's pairs that the indices name: their first and their second elements. The indices are not negative.
MOX_INLINE void gatherPairs(const float* table, I32 index, F32& first, F32& second) {
    alignas(vectorBytes) uint32_t at[I32::count];
    MOX_SI(store)(reinterpret_cast<RegI*>(at), index.r);
    const auto two = [&](int i) {
        const __m128 low = _mm_castsi128_ps(load64(table + 2 * size_t(at[i])));
        return _mm_castps_si128(_mm_loadh_pi(low, reinterpret_cast<const __m64*>(table + 2 * size_t(at[i + 1]))));
    };
    const F32 a = fromLanes<F32>(two(0), two(4 * (lanes - 1))), b = fromLanes<F32>(two(2), two(4 * (lanes - 1) + 2));
    first = {MOX_MM(shuffle_ps)(a.r, b.r, 0 | 2 << 2 | 0 << 4 | 2 << 6)};
    second = {MOX_MM(shuffle_ps)(a.r, b.r, 1 | 3 << 2 | 1 << 4 | 3 << 6)};
}

// ---- bits -----------------------------------------------------------------------------------------------------------

template <class T>
MOX_INLINE Vec<T> operator&(Vec<T> a, Vec<T> b) {
    return as<Vec<T>>(I32{MOX_SI(and)(as<I32>(a).r, as<I32>(b).r)});
}
template <class T>
MOX_INLINE Vec<T> operator|(Vec<T> a, Vec<T> b) {
    return as<Vec<T>>(I32{MOX_SI(or)(as<I32>(a).r, as<I32>(b).r)});
}
template <class T>
MOX_INLINE Vec<T> operator^(Vec<T> a, Vec<T> b) {
    return as<Vec<T>>(I32{MOX_SI(xor)(as<I32>(a).r, as<I32>(b).r)});
}
/// The bits of b that the mask does not have.
template <class T>
MOX_INLINE Vec<T> andNot(Vec<T> mask, Vec<T> b) {
    return as<Vec<T>>(I32{MOX_SI(andnot)(as<I32>(mask).r, as<I32>(b).r)});
}
/// yes where the mask is set, no elsewhere: by the top bit of each byte, of each element for floats.
template <class T>
MOX_INLINE Vec<T> select(Vec<T> mask, Vec<T> yes, Vec<T> no) {
    return {MOX_MM(blendv_epi8)(no.r, yes.r, mask.r)};
}
MOX_INLINE F32 select(F32 mask, F32 yes, F32 no) { return {MOX_MM(blendv_ps)(no.r, yes.r, mask.r)}; }
MOX_INLINE F64 select(F64 mask, F64 yes, F64 no) { return {MOX_MM(blendv_pd)(no.r, yes.r, mask.r)}; }

/// In each lane, the 16-bit elements of b where the mask's bit is set, those of a elsewhere.
template <int mask, class T>
MOX_INLINE Vec<T> blend16(Vec<T> a, Vec<T> b) {
    constexpr bool wholeDwords = (mask & 0x55) == ((mask & 0xAA) >> 1);  // blends of these run on more ports
    if constexpr (wholeDwords) {
        constexpr int dwords = (mask & 1) | (mask >> 1 & 2) | (mask >> 2 & 4) | (mask >> 3 & 8);
        return as<Vec<T>>(F32{MOX_MM(blend_ps)(as<F32>(a).r, as<F32>(b).r, lanes == 1 ? dwords : dwords * 0x11)});
    } else {
        return as<Vec<T>>(I32{MOX_MM(blend_epi16)(as<I32>(a).r, as<I32>(b).r, mask)});
    }
}

/// True if any byte's top bit is set; of floats, any element's sign.
template <class T>
MOX_INLINE bool any(Vec<T> mask) {
    return MOX_MM(movemask_epi8)(mask.r) != 0;
}
MOX_INLINE bool any(F32 mask) { return MOX_MM(movemask_ps)(mask.r) != 0; }
MOX_INLINE bool any(F64 mask) { return MOX_MM(movemask_pd)(mask.r) != 0; }

/// Bit i is the top bit of byte i.
template <class T>
MOX_INLINE uint32_t topBits(Vec<T> v) {
    return uint32_t(MOX_MM(movemask_epi8)(as<I32>(v).r));
}
/// A mask of the bytes whose bit is set.
MOX_INLINE U8 byteMask(uint32_t bits) {
    const __m128i low = _mm_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1);
    const U8 order = fromLanes<U8>(low, _mm_add_epi8(low, _mm_set1_epi8(2)));
    const U8 bit = pattern(1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128);
    const U8 spread = {MOX_MM(shuffle_epi8)(MOX_MM(set1_epi32)(int(bits)), order.r)};
    return {MOX_MM(cmpeq_epi8)((spread & bit).r, bit.r)};
}

// ---- order of elements, within each lane ----------------------------------------------------------------------------

/// Byte i of the result is byte order[i] of v, or 0 where the top bit of order[i] is set.
template <class T>
MOX_INLINE Vec<T> shuffle(Vec<T> v, U8 order) {
    return as<Vec<T>>(U8{MOX_MM(shuffle_epi8)(as<U8>(v).r, order.r)});
}
/// The entry of a table of 256 bytes at each index.
MOX_INLINE U8 lookUp(const uint8_t* table, U8 index) {
    // Of four rows of 16 entries, that one answers whose number matches bits 4 and 5; a shuffle gives 0 for the others.
    const U8 in64 = index & splat<U8>(63);
    U8 order[4];
    for (int i = 0; i < 4; ++i)
        order[i] = {MOX_MM(add_epi8)((in64 ^ splat<U8>(uint8_t(16 * i))).r, splat<U8>(0x80 - 16).r)};
    const auto quarter = [&](int q) {
        const auto row = [&](int i) { return shuffle(splatLane<U8>(load128(table + 64 * q + 16 * i)), order[i]); };
        return (row(0) | row(1)) | (row(2) | row(3));
    };
    const U8 bit6 = as<U8>(U16{MOX_MM(slli_epi16)(index.r, 1)});
    return select(index, select(bit6, quarter(3), quarter(2)), select(bit6, quarter(1), quarter(0)));
}
/// The 32-bit elements a, b, c, d of each lane.
template <int a, int b, int c, int d, class T>
MOX_INLINE Vec<T> shuffle32(Vec<T> v) {
    return as<Vec<T>>(I32{MOX_MM(shuffle_epi32)(as<I32>(v).r, a | b << 2 | c << 4 | d << 6)});
}
/// The 32-bit elements i, j of a, then k, l of b, in each lane.
template <int i, int j, int k, int l, class T>
MOX_INLINE Vec<T> shufflePairs32(Vec<T> a, Vec<T> b) {
    return as<Vec<T>>(F32{MOX_MM(shuffle_ps)(as<F32>(a).r, as<F32>(b).r, i | j << 2 | k << 4 | l << 6)});
}
/// Elements of a and b in turn, from the low or the high halves of their lanes.
template <int bits, class T>
MOX_INLINE Vec<T> unpackLo(Vec<T> a, Vec<T> b) {
    const RegI x = as<I32>(a).r, y = as<I32>(b).r;
    if constexpr (bits == 8) return as<Vec<T>>(I32{MOX_MM(unpacklo_epi8)(x, y)});
    if constexpr (bits == 16) return as<Vec<T>>(I32{MOX_MM(unpacklo_epi16)(x, y)});
    if constexpr (bits == 32) return as<Vec<T>>(I32{MOX_MM(unpacklo_epi32)(x, y)});
    if constexpr (bits == 64) return as<Vec<T>>(I32{MOX_MM(unpacklo_epi64)(x, y)});
}
template <int bits, class T>
MOX_INLINE Vec<T> unpackHi(Vec<T> a, Vec<T> b) {
    const RegI x = as<I32>(a).r, y = as<I32>(b).r;
    if constexpr (bits == 8) return as<Vec<T>>(I32{MOX_MM(unpackhi_epi8)(x, y)});
    if constexpr (bits == 16) return as<Vec<T>>(I32{MOX_MM(unpackhi_epi16)(x, y)});
    if constexpr (bits == 32) return as<Vec<T>>(I32{MOX_MM(unpackhi_epi32)(x, y)});
    if constexpr (bits == 64) return as<Vec<T>>(I32{MOX_MM(unpackhi_epi64)(x, y)});
}
/// Bytes n to n + 15 of each lane's 32 bytes low, high.
template <int n, class T>
MOX_INLINE Vec<T> alignBytes(Vec<T> high, Vec<T> low) {
    return as<Vec<T>>(I32{MOX_MM(alignr_epi8)(as<I32>(high).r, as<I32>(low).r, n)});
}
/// The lanes of a block's vector and of the one before it, moved on by one: lane l of the result comes before lane l of
/// v.
template <class T>
MOX_INLINE Vec<T> lanesBefore([[maybe_unused]] Vec<T> v, Vec<T> before) {
#if defined(__AVX2__)
    return as<Vec<T>>(I32{_mm256_permute2x128_si256(as<I32>(before).r, as<I32>(v).r, 0x21)});
#else
    return before;
#endif
}
/// Groups of n bytes dealt to the lanes in turn: the first lane gets those of even number.
template <int n, class T>
MOX_INLINE Vec<T> deal(Vec<T> v) {
#if defined(__AVX2__)
    if constexpr (n == 4)
        return as<Vec<T>>(I32{_mm256_permutevar8x32_epi32(as<I32>(v).r, _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7))});
    if constexpr (n == 8) return as<Vec<T>>(I32{_mm256_permute4x64_epi64(as<I32>(v).r, 0 | 2 << 2 | 1 << 4 | 3 << 6)});
#else
    return v;
#endif
}
/// Groups of n bytes of the lanes in turn.
template <int n, class T>
MOX_INLINE Vec<T> undeal(Vec<T> v) {
#if defined(__AVX2__)
    if constexpr (n == 4)
        return as<Vec<T>>(I32{_mm256_permutevar8x32_epi32(as<I32>(v).r, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))});
    if constexpr (n == 8) return deal<8>(v);
#else
    return v;
#endif
}
/// The elements of the whole vector moved up by one, across its lanes, behind a new first one.
MOX_INLINE F32 pushFirst(float first, F32 v) {
#if defined(__AVX2__)
    const __m256 up = _mm256_permutevar8x32_ps(v.r, _mm256_setr_epi32(0, 0, 1, 2, 3, 4, 5, 6));
    return {_mm256_blend_ps(up, _mm256_castps128_ps256(_mm_set_ss(first)), 1)};
#else
    return {_mm_move_ss(_mm_shuffle_ps(v.r, v.r, 0 | 0 << 2 | 1 << 4 | 2 << 6), _mm_set_ss(first))};
#endif
}
/// Each lane moved towards higher or lower addresses by n bytes, filled with 0.
template <int n, class T>
MOX_INLINE Vec<T> bytesUp(Vec<T> v) {
    return as<Vec<T>>(I32{MOX_SI(slli)(as<I32>(v).r, n)});
}
template <int n, class T>
MOX_INLINE Vec<T> bytesDown(Vec<T> v) {
    return as<Vec<T>>(I32{MOX_SI(srli)(as<I32>(v).r, n)});
}

// ---- widening and narrowing, within each lane -----------------------------------------------------------------------

MOX_INLINE U16 widenLo(U8 v) { return {MOX_MM(unpacklo_epi8)(v.r, MOX_SI(setzero)())}; }
MOX_INLINE U8p8 fixedLo(U8 v) { return {MOX_MM(unpacklo_epi8)(MOX_SI(setzero)(), v.r)}; }
MOX_INLINE U8p8 fixedHi(U8 v) { return {MOX_MM(unpackhi_epi8)(MOX_SI(setzero)(), v.r)}; }
MOX_INLINE U16 widenHi(U8 v) { return {MOX_MM(unpackhi_epi8)(v.r, MOX_SI(setzero)())}; }
MOX_INLINE I32 widenLo(U16 v) { return {MOX_MM(unpacklo_epi16)(v.r, MOX_SI(setzero)())}; }
MOX_INLINE I32 widenHi(U16 v) { return {MOX_MM(unpackhi_epi16)(v.r, MOX_SI(setzero)())}; }
MOX_INLINE I32 widenLo(I16 v) { return {MOX_MM(srai_epi32)(MOX_MM(unpacklo_epi16)(v.r, v.r), 16)}; }
MOX_INLINE I32 widenHi(I16 v) { return {MOX_MM(srai_epi32)(MOX_MM(unpackhi_epi16)(v.r, v.r), 16)}; }
// Saturating.
MOX_INLINE U8 narrowU8(I16 lo, I16 hi) { return {MOX_MM(packus_epi16)(lo.r, hi.r)}; }
MOX_INLINE I8 narrowI8(I16 lo, I16 hi) { return {MOX_MM(packs_epi16)(lo.r, hi.r)}; }
MOX_INLINE I16 narrowI16(I32 lo, I32 hi) { return {MOX_MM(packs_epi32)(lo.r, hi.r)}; }
MOX_INLINE U16 narrowU16(I32 lo, I32 hi) { return {MOX_MM(packus_epi32)(lo.r, hi.r)}; }

// ---- arithmetic -----------------------------------------------------------------------------------------------------

#define MOX_BINARY(V, function, name) \
    MOX_INLINE V function(V a, V b) { return {MOX_MM(name)(a.r, b.r)}; }

// Sums, differences and products of integers wrap; adds and subs saturate; avg is (a + b + 1) >> 1. Comparisons give
// masks of all ones or all zeros.
MOX_BINARY(U8, operator+, add_epi8)
MOX_BINARY(U8, operator-, sub_epi8)
MOX_BINARY(U8, adds, adds_epu8)
MOX_BINARY(U8, subs, subs_epu8)
MOX_BINARY(U8, avg, avg_epu8)
MOX_BINARY(U8, min, min_epu8)
MOX_BINARY(U8, max, max_epu8)
MOX_BINARY(U8, eq, cmpeq_epi8)
MOX_BINARY(I8, operator+, add_epi8)
MOX_BINARY(I8, operator-, sub_epi8)
MOX_BINARY(I8, eq, cmpeq_epi8)
MOX_BINARY(I8, gt, cmpgt_epi8)

MOX_BINARY(U16, operator+, add_epi16)
MOX_BINARY(U16, operator-, sub_epi16)
MOX_BINARY(U16, operator*, mullo_epi16)
MOX_BINARY(U16, adds, adds_epu16)
MOX_BINARY(U16, subs, subs_epu16)
MOX_BINARY(U16, avg, avg_epu16)
MOX_BINARY(U16, min, min_epu16)
MOX_BINARY(U16, max, max_epu16)
MOX_BINARY(U16, eq, cmpeq_epi16)
MOX_BINARY(U16, mulHi, mulhi_epu16)  // (a * b) >> 16, unsigned

MOX_BINARY(I16, operator+, add_epi16)
MOX_BINARY(I16, operator-, sub_epi16)
MOX_BINARY(I16, operator*, mullo_epi16)
MOX_BINARY(I16, adds, adds_epi16)
MOX_BINARY(I16, subs, subs_epi16)
MOX_BINARY(I16, min, min_epi16)
MOX_BINARY(I16, max, max_epi16)
MOX_BINARY(I16, eq, cmpeq_epi16)
MOX_BINARY(I16, gt, cmpgt_epi16)
MOX_BINARY(I16, mulHi, mulhi_epi16)        // (a * b) >> 16, signed
MOX_BINARY(I16, mulHiRound, mulhrs_epi16)  // (a * b + 16384) >> 15, but for -32768 * -32768
MOX_BINARY(I16, pairSums, hadd_epi16)      // sums of neighbours, a's then b's

MOX_BINARY(I32, operator+, add_epi32)
MOX_BINARY(I32, operator-, sub_epi32)
MOX_BINARY(I32, operator*, mullo_epi32)
MOX_BINARY(I32, min, min_epi32)
MOX_BINARY(I32, max, max_epi32)
MOX_BINARY(I32, eq, cmpeq_epi32)
MOX_BINARY(I32, gt, cmpgt_epi32)
MOX_BINARY(I32, pairSums, hadd_epi32)

MOX_BINARY(U64, operator+, add_epi64)
MOX_BINARY(U64, operator-, sub_epi64)
MOX_BINARY(U64, mulLow, mul_epu32)  // of the low 32 bits of each element

/// (a + b) >> 1.
MOX_INLINE U8 avgDown(U8 a, U8 b) { return avg(a, b) - ((a ^ b) & splat<U8>(1)); }
/// a[2i] * b[2i] + a[2i + 1] * b[2i + 1].
MOX_INLINE I32 dotPairs(I16 a, I16 b) { return {MOX_MM(madd_epi16)(a.r, b.r)}; }
/// The same of bytes, saturated.
MOX_INLINE I16 dotPairs(U8 a, I8 b) { return {MOX_MM(maddubs_epi16)(a.r, b.r)}; }

MOX_INLINE U16 abs(I16 v) { return {MOX_MM(abs_epi16)(v.r)}; }
MOX_INLINE I32 abs(I32 v) { return {MOX_MM(abs_epi32)(v.r)}; }
MOX_INLINE U8 absDiff(U8 a, U8 b) { return subs(a, b) | subs(b, a); }
MOX_INLINE U16 absDiff(U16 a, U16 b) { return subs(a, b) | subs(b, a); }

// Shifts; to the right they are arithmetic for signed and logical for unsigned elements.
template <int n, class T>
MOX_INLINE Vec<T> shl(Vec<T> v) {
    if constexpr (sizeof(T) == 2)
        return {MOX_MM(slli_epi16)(v.r, n)};
    else if constexpr (sizeof(T) == 8)
        return {MOX_MM(slli_epi64)(v.r, n)};
    else
        return {MOX_MM(slli_epi32)(v.r, n)};
}
template <int n, class T>
MOX_INLINE Vec<T> shr(Vec<T> v) {
    if constexpr (std::is_same_v<T, uint16_t>) return {MOX_MM(srli_epi16)(v.r, n)};
    if constexpr (std::is_same_v<T, int16_t>) return {MOX_MM(srai_epi16)(v.r, n)};
    if constexpr (std::is_same_v<T, uint32_t>) return {MOX_MM(srli_epi32)(v.r, n)};
    if constexpr (std::is_same_v<T, int32_t>) return {MOX_MM(srai_epi32)(v.r, n)};
    if constexpr (std::is_same_v<T, uint64_t>) return {MOX_MM(srli_epi64)(v.r, n)};
}

// Floats: one rounding an operation, in the mode of the control word.
MOX_BINARY(F32, operator+, add_ps)
MOX_BINARY(F32, operator-, sub_ps)
MOX_BINARY(F32, operator*, mul_ps)
MOX_BINARY(F32, operator/, div_ps)
MOX_BINARY(F32, min, min_ps)  // MINPS and MAXPS: b if either is a NaN or both are zeros
MOX_BINARY(F32, max, max_ps)
MOX_BINARY(F64, operator+, add_pd)
MOX_BINARY(F64, operator-, sub_pd)
MOX_BINARY(F64, operator*, mul_pd)
MOX_BINARY(F64, operator/, div_pd)
MOX_BINARY(F64, min, min_pd)
MOX_BINARY(F64, max, max_pd)
#undef MOX_BINARY

// False for NaNs.
MOX_INLINE F32 lt(F32 a, F32 b) { return {(RegF)(a.r < b.r)}; }
MOX_INLINE F32 le(F32 a, F32 b) { return {(RegF)(a.r <= b.r)}; }
MOX_INLINE F32 eq(F32 a, F32 b) { return {(RegF)(a.r == b.r)}; }
MOX_INLINE F64 lt(F64 a, F64 b) { return {MOX_CMP(pd, a.r, b.r, lt, _CMP_LT_OS)}; }
MOX_INLINE F64 le(F64 a, F64 b) { return {MOX_CMP(pd, a.r, b.r, le, _CMP_LE_OS)}; }

MOX_INLINE F32 abs(F32 v) { return v & as<F32>(splat<I32>(0x7FFFFFFF)); }
/// The processor's approximate reciprocal, RCPPS.
MOX_INLINE F32 rcp(F32 v) { return {MOX_MM(rcp_ps)(v.r)}; }

// ---- conversions: values out of range and NaNs give -2147483648 -----------------------------------------------------

MOX_INLINE F32 toF32(I32 v) { return {MOX_MM(cvtepi32_ps)(v.r)}; }
/// In the rounding mode of the control word.
MOX_INLINE I32 nearest(F32 v) { return {MOX_MM(cvtps_epi32)(v.r)}; }
/// Ties to even, whatever the rounding mode.
MOX_INLINE I32 nearestEven(F32 v) { return nearest(F32{MOX_MM(round_ps)(v.r, _MM_FROUND_TO_NEAREST_INT)}); }
MOX_INLINE I32 truncate(F32 v) { return {MOX_MM(cvttps_epi32)(v.r)}; }

// The low or the high pair of each lane.
MOX_INLINE F64 widenLo(F32 v) {
#if defined(__AVX2__)
    return {_mm256_cvtps_pd(_mm_castpd_ps(_mm256_castpd256_pd128(_mm256_permute4x64_pd(as<F64>(v).r, 0 | 2 << 2))))};
#else
    return {_mm_cvtps_pd(v.r)};
#endif
}
MOX_INLINE F64 widenHi(F32 v) { return widenLo(shuffle32<2, 3, 2, 3>(v)); }
/// Rounded to single precision.
MOX_INLINE F32 narrowF32(F64 lo, F64 hi) {
#if defined(__AVX2__)
    const F32 both = {_mm256_set_m128(_mm256_cvtpd_ps(hi.r), _mm256_cvtpd_ps(lo.r))};  // lo0 lo1, hi0 hi1
    return as<F32>(F64{_mm256_permute4x64_pd(as<F64>(both).r, 0 | 2 << 2 | 1 << 4 | 3 << 6)});
#else
    return {_mm_movelh_ps(_mm_cvtpd_ps(lo.r), _mm_cvtpd_ps(hi.r))};
#endif
}

MOX_INLINE I32 truncate(F64 lo, F64 hi) {
#if defined(__AVX2__)
    const RegI both = _mm256_set_m128i(_mm256_cvttpd_epi32(hi.r), _mm256_cvttpd_epi32(lo.r));  // lo0 lo1, hi0 hi1
    return {_mm256_permute4x64_epi64(both, 0 | 2 << 2 | 1 << 4 | 3 << 6)};
#else
    return {_mm_unpacklo_epi64(_mm_cvttpd_epi32(lo.r), _mm_cvttpd_epi32(hi.r))};
#endif
}

/// A mask of floats from those of the doubles that widenLo() and widenHi() give.
MOX_INLINE F32 narrowMask(F64 lo, F64 hi) {
    return {MOX_MM(shuffle_ps)(as<F32>(lo).r, as<F32>(hi).r, 0 | 2 << 2 | 0 << 4 | 2 << 6)};
}

}  // namespace q4
