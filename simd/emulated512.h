// AVX-512 on a processor that has AVX2 only, to test the 512-bit source there: SIMDe's functions under the intrinsics'
// names, and what its version lacks or has wrong, half by half.
#pragma once

#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/avx512.h>

#include <cstring>
#include <type_traits>

namespace q4::emulated {

template <class V>
struct HalfOf {
    typedef std::remove_cvref_t<decltype(V{}[0])> Type [[gnu::vector_size(sizeof(V) / 2)]];
};
template <class V>
inline typename HalfOf<V>::Type half(const V& v, int which) {
    typename HalfOf<V>::Type h;
    std::memcpy(&h, reinterpret_cast<const char*>(&v) + which * sizeof h, sizeof h);
    return h;
}
/// The vector of what an operation makes of the halves of others.
template <class Operation, class... V>
inline auto byHalves(const Operation& operation, const V&... v) {
    const auto low = operation(half(v, 0)...), high = operation(half(v, 1)...);
    typedef std::remove_cvref_t<decltype(low[0])> To [[gnu::vector_size(2 * sizeof low)]];
    To to;
    std::memcpy(&to, &low, sizeof low);
    std::memcpy(reinterpret_cast<char*>(&to) + sizeof low, &high, sizeof high);
    return to;
}

inline __m512i alignQwords(__m512i high, __m512i low, int n) {
    const __m512i both[2] = {low, high};
    __m512i r;
    std::memcpy(&r, reinterpret_cast<const char*>(both) + 8 * n, sizeof r);
    return r;
}
inline __m512 gather(__m512i index, const float* table) {
    int32_t at[16];
    std::memcpy(at, &index, sizeof at);
    float r[16];
    for (int i = 0; i < 16; ++i) r[i] = table[at[i]];
    return _mm512_loadu_ps(r);
}

}  // namespace q4::emulated

#define MOX_HALVES(operation, v) q4::emulated::byHalves([](auto half_a) { return operation; }, v)
#define MOX_PAIRED_HALVES(operation, a, b) \
    q4::emulated::byHalves([](auto half_a, auto half_b) { return operation; }, a, b)

// What the compiler, where it does not optimise, has as macros too.
#undef _mm512_alignr_epi8
#undef _mm512_alignr_epi64
#undef _mm512_bslli_epi128
#undef _mm512_bsrli_epi128
#undef _mm512_shuffle_epi32
#undef _mm512_srai_epi32
#undef _mm512_i32gather_ps
// What SIMDe takes element by element, or has wrong.
#undef _mm512_madd_epi16
#undef _mm512_mul_epu32
#undef _mm512_unpacklo_epi8
#undef _mm512_unpackhi_epi8
#undef _mm512_unpacklo_epi16
#undef _mm512_unpackhi_epi16
#undef _mm512_unpacklo_epi32
#undef _mm512_unpackhi_epi32
#undef _mm512_unpacklo_epi64
#undef _mm512_unpackhi_epi64
#define _mm512_madd_epi16(a, b)      MOX_PAIRED_HALVES(_mm256_madd_epi16(half_a, half_b), a, b)
#define _mm512_mulhi_epu16(a, b)     MOX_PAIRED_HALVES(_mm256_mulhi_epu16(half_a, half_b), a, b)
#define _mm512_mul_epu32(a, b)       MOX_PAIRED_HALVES(_mm256_mul_epu32(half_a, half_b), a, b)
#define _mm512_unpacklo_epi8(a, b)   MOX_PAIRED_HALVES(_mm256_unpacklo_epi8(half_a, half_b), a, b)
#define _mm512_unpackhi_epi8(a, b)   MOX_PAIRED_HALVES(_mm256_unpackhi_epi8(half_a, half_b), a, b)
#define _mm512_unpacklo_epi16(a, b)  MOX_PAIRED_HALVES(_mm256_unpacklo_epi16(half_a, half_b), a, b)
#define _mm512_unpackhi_epi16(a, b)  MOX_PAIRED_HALVES(_mm256_unpackhi_epi16(half_a, half_b), a, b)
#define _mm512_unpacklo_epi32(a, b)  MOX_PAIRED_HALVES(_mm256_unpacklo_epi32(half_a, half_b), a, b)
#define _mm512_unpackhi_epi32(a, b)  MOX_PAIRED_HALVES(_mm256_unpackhi_epi32(half_a, half_b), a, b)
#define _mm512_unpacklo_epi64(a, b)  MOX_PAIRED_HALVES(_mm256_unpacklo_epi64(half_a, half_b), a, b)
#define _mm512_unpackhi_epi64(a, b)  MOX_PAIRED_HALVES(_mm256_unpackhi_epi64(half_a, half_b), a, b)
#define _mm512_alignr_epi8(a, b, n)  MOX_PAIRED_HALVES(_mm256_alignr_epi8(half_a, half_b, n), a, b)
#define _mm512_bslli_epi128(v, n)    MOX_HALVES(_mm256_bslli_epi128(half_a, n), v)
#define _mm512_bsrli_epi128(v, n)    MOX_HALVES(_mm256_bsrli_epi128(half_a, n), v)
#define _mm512_shuffle_epi32(v, n)   MOX_HALVES(_mm256_shuffle_epi32(half_a, n), v)
#define _mm512_srai_epi32(v, n)      MOX_HALVES(_mm256_srai_epi32(half_a, n), v)
#define _mm512_cvtepi32_ps(v)        MOX_HALVES(_mm256_cvtepi32_ps(half_a), v)
#define _mm512_cvtps_epi32(v)        MOX_HALVES(_mm256_cvtps_epi32(half_a), v)
#define _mm512_cvttps_epi32(v)       MOX_HALVES(_mm256_cvttps_epi32(half_a), v)
#define _mm512_cvtepu8_epi16(v)      MOX_HALVES(_mm256_cvtepu8_epi16(half_a), v)
#define _mm512_cvtps_pd(v)           MOX_HALVES(_mm256_cvtps_pd(half_a), v)
#define _mm512_cvtpd_ps(v)           MOX_HALVES(_mm256_cvtpd_ps(half_a), v)
#define _mm512_cvttpd_epi32(v)       MOX_HALVES(_mm256_cvttpd_epi32(half_a), v)
#define _mm512_alignr_epi64(a, b, n) q4::emulated::alignQwords(a, b, n)
#define _mm512_i32gather_ps(i, p, n) q4::emulated::gather(i, p)
#define _mm512_stream_si512(p, v)    _mm512_storeu_si512(p, v)
