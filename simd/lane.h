// One lane, 16 bytes: what is the same at every width.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "simd/intrinsics.h"

#define MOX_INLINE [[gnu::always_inline]] inline

namespace q4 {

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

/// The low (0) or the high (1) 8 bytes of a lane.
template <int which>
MOX_INLINE uint64_t half(__m128i lane) {
    return uint64_t(_mm_extract_epi64(lane, which));
}

/// What the language's operators make of vectors of the compiler's own.
template <class Operation, class... V>
MOX_INLINE auto spelt(const Operation& operation, const V&... v) {
#if defined(MOX_EMULATE_AVX512)
    return emulated::byHalves(operation, v...);  // else the compiler takes them element by element
#else
    return operation(v...);
#endif
}

/// Calls a function of each number below n, as a compile-time constant.
template <int n, class Function>
MOX_INLINE void forEach(const Function& function) {
    [&]<int... i>(std::integer_sequence<int, i...>) { (function(std::integral_constant<int, i>{}), ...); }
    (std::make_integer_sequence<int, n>());
}

typedef int8_t LaneBytes [[gnu::vector_size(16)]];

/// A lane of 16 bytes.
template <class... B>
MOX_INLINE __m128i laneOfBytes(B... bytes) {
    static_assert(sizeof...(B) == 16);
    return (__m128i)LaneBytes{int8_t(bytes)...};
}
/// A mask of the bytes whose bit is set.
template <int bits>
MOX_INLINE __m128i bytesIn() {
    return [&]<int... i>(std::integer_sequence<int, i...>) { return laneOfBytes((bits >> i & 1 ? 0xFF : 0)...); }
    (std::make_integer_sequence<int, 16>());
}

}  // namespace q4
