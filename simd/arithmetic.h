// Masks, and arithmetic on the elements.
#pragma once

#include "simd/types.h"

namespace q4 {

// ---- bits and masks -------------------------------------------------------------------------------------------------

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
    return {width::select(mask.r, yes.r, no.r)};
}
/// In each lane, the bytes of b where the mask's bit is set, those of a elsewhere.
template <int mask, class T>
MOX_INLINE Vec<T> blend8(Vec<T> a, Vec<T> b) {
    return as<Vec<T>>(I32{width::blend8<mask>(as<I32>(a).r, as<I32>(b).r)});
}
/// The same of 16-bit elements.
template <int mask, class T>
MOX_INLINE Vec<T> blend16(Vec<T> a, Vec<T> b) {
    constexpr bool wholeDwords = (mask & 0x55) == ((mask & 0xAA) >> 1);  // blends of these run on more ports
    if constexpr (wholeDwords) {
        constexpr int dwords = (mask & 1) | (mask >> 1 & 2) | (mask >> 2 & 4) | (mask >> 3 & 8);
        return as<Vec<T>>(F32{width::blend32<dwords>(as<F32>(a).r, as<F32>(b).r)});
    } else {
        return as<Vec<T>>(I32{width::blend16<mask>(as<I32>(a).r, as<I32>(b).r)});
    }
}

/// Bit i is the top bit of byte i.
template <class T>
MOX_INLINE ByteBits topBits(Vec<T> v) {
    return width::topBits(as<I32>(v).r);
}
/// A mask of the bytes whose bit is set.
MOX_INLINE U8 byteMask(ByteBits bits) { return {width::byteMask(bits)}; }

/// True if any byte's top bit is set; of floats, any element's sign.
template <class T>
MOX_INLINE bool any(Vec<T> mask) {
    if constexpr (std::is_floating_point_v<T>)
        return width::anySign(mask.r);
    else
        return topBits(mask) != 0;
}

// Comparisons give masks of all ones or all zeros. They are spelt as the language's, so that the compiler may keep masks
// in registers of their own, where the processor has such. Those of floats are false for NaNs.

template <class T>
MOX_INLINE Vec<T> eq(Vec<T> a, Vec<T> b) {
    return {(typename Vec<T>::Reg)spelt([](auto x, auto y) { return x == y; }, elements(a), elements(b))};
}
template <class T>
MOX_INLINE Vec<T> gt(Vec<T> a, Vec<T> b) requires std::is_signed_v<T> {
    return {(typename Vec<T>::Reg)spelt([](auto x, auto y) { return x > y; }, elements(a), elements(b))};
}
template <class T>
MOX_INLINE Vec<T> lt(Vec<T> a, Vec<T> b) requires std::is_floating_point_v<T> {
    return {(typename Vec<T>::Reg)spelt([](auto x, auto y) { return x < y; }, elements(a), elements(b))};
}
template <class T>
MOX_INLINE Vec<T> le(Vec<T> a, Vec<T> b) requires std::is_floating_point_v<T> {
    return {(typename Vec<T>::Reg)spelt([](auto x, auto y) { return x <= y; }, elements(a), elements(b))};
}

// ---- arithmetic -----------------------------------------------------------------------------------------------------

#define MOX_BINARY(V, function, name) \
    MOX_INLINE V function(V a, V b) { return {MOX_MM(name)(a.r, b.r)}; }

// Sums, differences and products of integers wrap; adds and subs saturate; avg is (a + b + 1) >> 1.
MOX_BINARY(U8, operator+, add_epi8)
MOX_BINARY(U8, operator-, sub_epi8)
MOX_BINARY(U8, adds, adds_epu8)
MOX_BINARY(U8, subs, subs_epu8)
MOX_BINARY(U8, avg, avg_epu8)
MOX_BINARY(U8, min, min_epu8)
MOX_BINARY(U8, max, max_epu8)
MOX_BINARY(I8, operator+, add_epi8)
MOX_BINARY(I8, operator-, sub_epi8)

MOX_BINARY(U16, operator+, add_epi16)
MOX_BINARY(U16, operator-, sub_epi16)
MOX_BINARY(U16, operator*, mullo_epi16)
MOX_BINARY(U16, adds, adds_epu16)
MOX_BINARY(U16, subs, subs_epu16)
MOX_BINARY(U16, avg, avg_epu16)
MOX_BINARY(U16, min, min_epu16)
MOX_BINARY(U16, max, max_epu16)
MOX_BINARY(U16, mulHi, mulhi_epu16)  // (a * b) >> 16, unsigned

MOX_BINARY(I16, operator+, add_epi16)
MOX_BINARY(I16, operator-, sub_epi16)
MOX_BINARY(I16, operator*, mullo_epi16)
MOX_BINARY(I16, adds, adds_epi16)
MOX_BINARY(I16, subs, subs_epi16)
MOX_BINARY(I16, min, min_epi16)
MOX_BINARY(I16, max, max_epi16)
MOX_BINARY(I16, mulHi, mulhi_epi16)        // (a * b) >> 16, signed
MOX_BINARY(I16, mulHiRound, mulhrs_epi16)  // (a * b + 16384) >> 15, but for -32768 * -32768

MOX_BINARY(I32, operator+, add_epi32)
MOX_BINARY(I32, operator-, sub_epi32)
MOX_BINARY(I32, operator*, mullo_epi32)
MOX_BINARY(I32, min, min_epi32)
MOX_BINARY(I32, max, max_epi32)

MOX_BINARY(U64, operator+, add_epi64)
MOX_BINARY(U64, operator-, sub_epi64)
MOX_BINARY(U64, mulLow, mul_epu32)  // of the low 32 bits of each element

// Sums of neighbours, a's then b's in each lane.
MOX_INLINE I16 pairSums(I16 a, I16 b) { return {width::pairSums16(a.r, b.r)}; }
MOX_INLINE I32 pairSums(I32 a, I32 b) { return {width::pairSums32(a.r, b.r)}; }
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

MOX_INLINE F32 abs(F32 v) { return v & as<F32>(splat<I32>(0x7FFFFFFF)); }
/// The processor's approximate reciprocal, RCPPS.
MOX_INLINE F32 rcp(F32 v) { return {width::rcp(v.r)}; }

// ---- conversions: values out of range and NaNs give -2147483648 -----------------------------------------------------

MOX_INLINE F32 toF32(I32 v) { return {MOX_MM(cvtepi32_ps)(v.r)}; }
/// In the rounding mode of the control word.
MOX_INLINE I32 nearest(F32 v) { return {MOX_MM(cvtps_epi32)(v.r)}; }
/// Ties to even, whatever the rounding mode.
MOX_INLINE I32 nearestEven(F32 v) { return nearest(F32{width::roundEven(v.r)}); }
MOX_INLINE I32 truncate(F32 v) { return {MOX_MM(cvttps_epi32)(v.r)}; }

}  // namespace q4
