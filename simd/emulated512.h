// AVX-512 on a processor that has AVX2 only, to test the 512-bit source there: SIMDe's functions under the intrinsics'
// names, and what its version lacks or has wrong, half by half.
#pragma once

#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/avx512.h>

#include <cstring>

namespace q4::emulated {

template <class Half, class V>
inline Half half(const V& v, int which) {
    Half h;
    std::memcpy(&h, reinterpret_cast<const char*>(&v) + which * sizeof h, sizeof h);
    return h;
}
/// The vector of what an operation makes of the halves of others.
template <class To, class... Halves, class Operation, class... V>
inline To byHalves(const Operation& operation, const V&... v) {
    const auto low = operation(half<Halves>(v, 0)...), high = operation(half<Halves>(v, 1)...);
    To to;
    static_assert(sizeof low + sizeof high == sizeof to);
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

#define MOX_HALVES(to, half, operation, v) q4::emulated::byHalves<to, half>([](half x) { return operation; }, v)
#define MOX_PAIRED_HALVES(operation, a, b) \
    q4::emulated::byHalves<__m512i, __m256i, __m256i>([](__m256i x, __m256i y) { return operation; }, a, b)

#undef _mm512_madd_epi16
#define _mm512_madd_epi16(a, b)     MOX_PAIRED_HALVES(_mm256_madd_epi16(x, y), a, b)
#define _mm512_mulhi_epu16(a, b)    MOX_PAIRED_HALVES(_mm256_mulhi_epu16(x, y), a, b)
#define _mm512_alignr_epi8(a, b, n) MOX_PAIRED_HALVES(_mm256_alignr_epi8(x, y, n), a, b)
#define _mm512_bslli_epi128(v, n)   MOX_HALVES(__m512i, __m256i, _mm256_bslli_epi128(x, n), v)
#define _mm512_bsrli_epi128(v, n)   MOX_HALVES(__m512i, __m256i, _mm256_bsrli_epi128(x, n), v)
#define _mm512_shuffle_epi32(v, n)  MOX_HALVES(__m512i, __m256i, _mm256_shuffle_epi32(x, n), v)
#define _mm512_srai_epi32(v, n)     MOX_HALVES(__m512i, __m256i, _mm256_srai_epi32(x, n), v)
#define _mm512_cvtepi32_ps(v)       MOX_HALVES(__m512, __m256i, _mm256_cvtepi32_ps(x), v)
#define _mm512_cvtps_epi32(v)       MOX_HALVES(__m512i, __m256, _mm256_cvtps_epi32(x), v)
#define _mm512_cvttps_epi32(v)      MOX_HALVES(__m512i, __m256, _mm256_cvttps_epi32(x), v)
#define _mm512_cvtepu8_epi16(v)     MOX_HALVES(__m512i, __m128i, _mm256_cvtepu8_epi16(x), v)
#define _mm512_cvtps_pd(v)          MOX_HALVES(__m512d, __m128, _mm256_cvtps_pd(x), v)
#define _mm512_cvtpd_ps(v)          MOX_HALVES(__m256, __m256d, _mm256_cvtpd_ps(x), v)
#define _mm512_cvttpd_epi32(v)      MOX_HALVES(__m256i, __m256d, _mm256_cvttpd_epi32(x), v)

#define _mm512_alignr_epi64(a, b, n) q4::emulated::alignQwords(a, b, n)
#define _mm512_i32gather_ps(i, p, n) q4::emulated::gather(i, p)
#define _mm512_stream_si512(p, v)    _mm512_storeu_si512(p, v)
