// Vectors of samples, one to four lanes of 16 bytes wide, from one source.
//
// The lanes of a vector are independent: every operation is lane-local, so that code written for one lane serves all
// widths. A lane of a block holds consecutive pixels; the load and store functions say where each lane lies in memory.
// Unpacking, then packing in the same order, gives the pixels back in their order at any width.
//
// This folder alone spells intrinsics. Every function is one instruction or a short fixed sequence; what depends on the
// width is in namespace width, of the one file for the width that is built.
#pragma once

#if defined(__AVX512BW__) || defined(MOX_EMULATE_AVX512)
#include "simd/avx512.h"
#elif defined(__AVX2__)
#include "simd/avx2.h"
#else
#include "simd/sse42.h"
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace q4 {

inline constexpr int vectorBytes = 16 * lanes;

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

/// A vector of the compiler's own, for operators that the language has.
template <class T>
struct ElementsOf {
    typedef T Type [[gnu::vector_size(vectorBytes)]];
};
template <class T>
using Elements = typename ElementsOf<T>::Type;

template <class T>
MOX_INLINE Elements<T> elements(Vec<T> v) {
    return (Elements<T>)(v.r);
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
        return {width::splat64(x)};
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
    return as<V>(I32{width::splatLane(lane)});
}

/// The vector whose element i is of(i).
template <class V, class Of>
MOX_INLINE V fromElements(const Of& of) {
    using T = typename V::Sample;
    return [&]<int... i>(std::integer_sequence<int, i...>) { return V{(typename V::Reg)(Elements<T>{T(of(i))...})}; }
    (std::make_integer_sequence<int, V::count>());
}

/// A shuffle or mask pattern of 16 bytes, the same in every lane.
template <class V = U8, class... B>
MOX_INLINE V pattern(B... bytes) {
    return splatLane<V>(laneOfBytes(bytes...));
}

}  // namespace q4
