// Vectors from and to memory. The lane l of a load or store starts at p + l * laneBytes.
#pragma once

#include "simd/types.h"

namespace q4 {

/// One lane of a vector.
template <int lane, class T>
MOX_INLINE __m128i laneOf(Vec<T> v) {
    static_assert(lane < lanes);
    return width::laneOf<lane>(as<I32>(v).r);
}
/// The vector whose lane l is of(l); l is a compile-time constant.
template <class V, class Of>
MOX_INLINE V fromLanes(const Of& of) {
    return as<V>(I32{width::fromLanes(of)});
}
/// Calls to(l, lane l of the vector).
template <class T, class To>
MOX_INLINE void eachLane(Vec<T> v, const To& to) {
    forEach<lanes>([&](auto lane) { to(lane, laneOf<lane>(v)); });
}

/// 16 bytes a lane.
template <class V, int laneBytes = 16>
MOX_INLINE V load(const void* p) {
    if constexpr (lanes == 1 || laneBytes == 16)
        return as<V>(I32{MOX_SI(loadu)(static_cast<const RegI*>(p))});
    else
        return fromLanes<V>([p](int lane) { return load128(static_cast<const uint8_t*>(p) + lane * laneBytes); });
}
/// 8 bytes into the low half of each lane, the rest 0.
template <class V, int laneBytes = 8>
MOX_INLINE V loadHalf(const void* p) {
    if constexpr (laneBytes == 8)
        return as<V>(I32{width::loadHalves(p)});
    else
        return fromLanes<V>([p](int lane) { return load64(static_cast<const uint8_t*>(p) + lane * laneBytes); });
}
/// 4 bytes into the low quarter of each lane, the rest 0.
template <class V, int laneBytes = 4>
MOX_INLINE V loadQuarter(const void* p) {
    return fromLanes<V>([p](int lane) { return load32(static_cast<const uint8_t*>(p) + lane * laneBytes); });
}
/// Consecutive bytes, widened.
MOX_INLINE U16 loadWidened(const void* p) { return {width::loadWidened(p)}; }

/// 16 bytes a lane.
template <int laneBytes = 16, class T>
MOX_INLINE void store(void* p, Vec<T> v) {
    if constexpr (laneBytes == 16)
        width::store(p, as<I32>(v).r);
    else
        eachLane(v, [p](int lane, __m128i r) { store128(static_cast<uint8_t*>(p) + lane * laneBytes, r); });
}
/// Two vectors side by side: 16 bytes of a, then 16 of b, for each lane.
template <int laneBytes, class T>
MOX_INLINE void storePair(void* p, Vec<T> a, Vec<T> b) {
    width::storePair<laneBytes>(static_cast<uint8_t*>(p), as<I32>(a).r, as<I32>(b).r);
}
/// The low 8 bytes of each lane.
template <int laneBytes = 8, class T>
MOX_INLINE void storeHalf(void* p, Vec<T> v) {
    if constexpr (laneBytes == 8)
        width::storeHalves(p, as<I32>(v).r);
    else
        eachLane(v, [p](int lane, __m128i r) { store64(static_cast<uint8_t*>(p) + lane * laneBytes, r); });
}
/// The low 4 bytes of each lane.
template <int laneBytes = 4, class T>
MOX_INLINE void storeQuarter(void* p, Vec<T> v) {
    eachLane(v, [p](int lane, __m128i r) { store32(static_cast<uint8_t*>(p) + lane * laneBytes, r); });
}
/// The low halves of the lanes of a and of b, whose groups of two bytes deal() dealt to the lanes, in their order again.
template <class T>
MOX_INLINE void storeHalvesDealt(void* toA, void* toB, Vec<T> a, Vec<T> b) {
    width::storeHalvesDealt(toA, toB, as<I32>(a).r, as<I32>(b).r);
}
/// A store past the cache; p is aligned to the vector. A run of these ends with storeFence().
template <class T>
MOX_INLINE void stream(void* p, Vec<T> v) {
    MOX_SI(stream)(static_cast<RegI*>(p), as<I32>(v).r);
}
MOX_INLINE void storeFence() { _mm_sfence(); }

/// The table entries that the indices name.
MOX_INLINE F32 gather(const float* table, I32 index) { return {width::gather(table, index.r)}; }

// These by single loads, which on many processors are faster than the instruction.

MOX_INLINE F64 gather(const double* table, U64 index) {
    alignas(vectorBytes) uint64_t at[U64::count];
    store(at, index);
    return fromLanes<F64>([&](int lane) {
        return _mm_castpd_si128(_mm_loadh_pd(_mm_load_sd(table + at[2 * lane]), table + at[2 * lane + 1]));
    });
}

/// The table's pairs that the indices name: their first and their second elements. The indices are not negative.
MOX_INLINE void gatherPairs(const float* table, I32 index, F32& first, F32& second) {
    alignas(vectorBytes) uint32_t at[I32::count];
    store(at, index);
    const auto two = [&](int i) {
        const __m128 low = _mm_castsi128_ps(load64(table + 2 * size_t(at[i])));
        return _mm_castps_si128(_mm_loadh_pi(low, reinterpret_cast<const __m64*>(table + 2 * size_t(at[i + 1]))));
    };
    const F32 a = fromLanes<F32>([&](int lane) { return two(4 * lane); });
    const F32 b = fromLanes<F32>([&](int lane) { return two(4 * lane + 2); });
    first = {MOX_MM(shuffle_ps)(a.r, b.r, 0 | 2 << 2 | 0 << 4 | 2 << 6)};
    second = {MOX_MM(shuffle_ps)(a.r, b.r, 1 | 3 << 2 | 1 << 4 | 3 << 6)};
}

}  // namespace q4
