// The order of elements, and their widening and narrowing, within each lane.
#pragma once

#include "simd/arithmetic.h"
#include "simd/memory.h"

namespace q4 {

// ---- order of elements ----------------------------------------------------------------------------------------------

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
    return as<Vec<T>>(I32{width::shuffle32<(a | b << 2 | c << 4 | d << 6)>(as<I32>(v).r)});
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
MOX_INLINE Vec<T> lanesBefore(Vec<T> v, Vec<T> before) {
    return as<Vec<T>>(I32{width::lanesBefore(as<I32>(v).r, as<I32>(before).r)});
}
/// Groups of n bytes dealt to the lanes in turn: lane l gets the groups whose number is l modulo the number of lanes.
template <int n, class T>
MOX_INLINE Vec<T> deal(Vec<T> v) {
    return as<Vec<T>>(I32{width::deal<n>(as<I32>(v).r)});
}
/// Groups of n bytes of the lanes in turn.
template <int n, class T>
MOX_INLINE Vec<T> undeal(Vec<T> v) {
    return as<Vec<T>>(I32{width::undeal<n>(as<I32>(v).r)});
}
/// The elements of the whole vector moved up by one, across its lanes, behind a new first one.
MOX_INLINE F32 pushFirst(float first, F32 v) { return {width::pushFirst(first, v.r)}; }
/// Each lane moved towards higher or lower addresses by n bytes, filled with 0.
template <int n, class T>
MOX_INLINE Vec<T> bytesUp(Vec<T> v) {
    return as<Vec<T>>(I32{width::bytesUp<n>(as<I32>(v).r)});
}
template <int n, class T>
MOX_INLINE Vec<T> bytesDown(Vec<T> v) {
    return as<Vec<T>>(I32{width::bytesDown<n>(as<I32>(v).r)});
}

// ---- widening and narrowing -----------------------------------------------------------------------------------------

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

// The low or the high pair of each lane.
MOX_INLINE F64 widenLo(F32 v) { return {width::lowPairs(v.r)}; }
MOX_INLINE F64 widenHi(F32 v) { return widenLo(shuffle32<2, 3, 2, 3>(v)); }
/// Rounded to single precision.
MOX_INLINE F32 narrowF32(F64 lo, F64 hi) { return {width::narrow(lo.r, hi.r)}; }
MOX_INLINE I32 truncate(F64 lo, F64 hi) { return {width::truncate(lo.r, hi.r)}; }

/// A mask of floats from those of the doubles that widenLo() and widenHi() give.
MOX_INLINE F32 narrowMask(F64 lo, F64 hi) { return shufflePairs32<0, 2, 0, 2>(as<F32>(lo), as<F32>(hi)); }

}  // namespace q4
