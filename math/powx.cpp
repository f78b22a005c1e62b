// Powers of floats by one exponent: a table-driven logarithm in two pieces, a product in two pieces and a polynomial
// exponential, all in single precision; and a double-precision path for the samples that this does not reach.
#include "math/powx.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <limits>

#include "frame/checks.h"
#include "frame/fpenv.h"
#include "math/powx_data.h"
#include "simd/bundle.h"
#include "simd/interleave.h"

namespace q4 {
namespace {

// ---- rare path: any sample, in double precision ---------------------------------------------------------------------

/// A value as an unevaluated sum, hi the nearest double to it.
struct Sum {
    double hi, lo;
};

/// For |a| >= |b|, or a = 0.
Sum sum(double a, double b) {
    const double s = a + b;
    return {s, b - (s - a)};
}
/// The exact product.
Sum product(double a, double b) {
    const auto split = [](double x) {
        const double c = 0x1.000002p27 * x;  // 2^27 + 1
        const double high = c - (c - x);
        return Sum{high, x - high};
    };
    const Sum x = split(a), y = split(b);
    const double p = a * b;
    return {p, ((x.hi * y.hi - p) + x.hi * y.lo + x.lo * y.hi) + x.lo * y.lo};
}
Sum operator*(Sum a, Sum b) {
    const Sum p = product(a.hi, b.hi);
    return sum(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}
/// For |a| >= |b|.
Sum operator+(Sum a, Sum b) {
    const Sum s = sum(a.hi, b.hi);
    return sum(s.hi, s.lo + (a.lo + b.lo));
}

/// log2(x) for x above 0, to about 2^-70 of its size.
Sum log2(double x) {
    const uint64_t bits = std::bit_cast<uint64_t>(x);
    double exponent = double(int(bits >> 52) - 1023);
    double m = std::bit_cast<double>((bits & 0xFFFFFFFFFFFFF) | 0x3FF0000000000000);
    if (m > 0x1.6Ap0) m /= 2, exponent += 1;

    // ln m = 2 s (1 + z / 3 + z^2 / 5 + ...) with s = (m - 1) / (m + 1) and z = s^2 <= 0.0295; a float's m + 1 is
    // exact.
    const double s = (m - 1) / (m + 1);
    const Sum p = product(s, m + 1);
    const Sum quotient = {s, (((m - 1) - p.hi) - p.lo) / (m + 1)};
    const Sum z = quotient * quotient;
    double tail = 0;
    for (int n = 27; n >= 7; n -= 2) tail = tail * z.hi + 1.0 / n;
    const Sum fifth = {0x1.999999999999ap-3, -0x1.999999999999ap-57};
    const Sum third = {0x1.5555555555555p-2, 0x1.5555555555555p-56};
    const Sum twoLog2e = {0x1.71547652b82fep1, 0x1.777d0ffda0d24p-55};
    const Sum series = Sum{1, 0} + z * (third + z * (fifth + Sum{z.hi * tail, 0}));
    const Sum logM = twoLog2e * (quotient * series);
    return exponent == 0 ? logM : Sum{exponent, 0} + logM;
}

/// 2^t for |t| <= 1000.
double exp2(Sum t) {
    constexpr double shifter = 0x1.8p52;
    const double n = (t.hi + shifter) - shifter;
    const Sum g = Sum{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56} * sum(t.hi - n, t.lo);
    double tail = 0;  // e^g = 1 + g + g^2 (1 / 2! + g / 3! + ...), |g| <= 0.35
    for (int k = 17; k >= 2; --k) tail = (tail * g.hi + 1) / k;
    const Sum r = sum(1, g.hi);
    return (r.hi + (r.lo + (g.lo + g.hi * g.hi * tail))) * std::bit_cast<double>(uint64_t(int64_t(n) + 1023) << 52);
}

/// One sample by the rules of C99's pow(), rounded to a double, then to a float.
int32_t vspowx_cout_rare(const Mox32f* xp, const Mox32f* pp, Mox32f* result) {
    constexpr Mox32f infinity = std::numeric_limits<Mox32f>::infinity();
    const Mox32f x = *xp, p = *pp, size = std::fabs(x);
    const bool integer = std::fabs(p) >= 0x1p24f || Mox32f(truncate(p)) == p;  // and even from 2^24 on; infinities too
    const bool odd = std::fabs(p) < 0x1p24f && integer && (truncate(p) & 1);
    const auto answer = [&](Mox32f value, int32_t code = 0) {
        *result = odd && std::signbit(x) ? -value : value;
        return code;
    };

    if (x == 1 || p == 0) return answer(1);
    if (std::isnan(x) || std::isnan(p)) return *result = x + p, 0;
    if (x == 0) return p > 0 ? answer(0) : answer(infinity, powxDomainCode);
    if (x == -1 && integer) return answer(1);
    if (std::isinf(x) || std::isinf(p)) return answer((size >= 1) == (p > 0) ? infinity : 0);
    if (x < 0 && !integer) return *result = std::bit_cast<Mox32f>(0xFFC00000), powxDomainCode;

    const Sum t = Sum{p, 0} * log2(size);
    if (t.hi > 200) return answer(infinity);
    if (t.hi < -200) return answer(0);
    return answer(Mox32f(exp2(t)));
}

// ---- main path: positive normal samples, in single precision --------------------------------------------------------

/// The exponent, also as the sum of two floats that leave room for exact products.
struct Exponent {
    explicit Exponent(Mox32f p) : value(p) {
        const Mox32f a = 4097 * p, b = a - p;
        hi = a - b;
        lo = p - hi;
    }
    Mox32f value, hi, lo;
};

MOX_INLINE F32 constant(Mox32f x) { return splat<F32>(x); }
/// By way of a float: compilers keep those in memory, and make integers anew in every turn.
MOX_INLINE I32 constant(uint32_t x) { return as<I32>(splat<F32>(std::bit_cast<Mox32f>(x))); }
MOX_INLINE F32s bits(F32s x, uint32_t mask) { return x & as<F32>(constant(mask)); }

struct Power {
    F32s value;
    I32s rare;  // set where the value is none, and the rare path's is wanted
};

MOX_INLINE Power power(F32s x, const Exponent& p) {
    // x = 2^e m, with k the nearest table point to m, in units of 1/64 from 1.
    const I32s b = as<I32>(x);
    const I32s k = shr<17>((b & constant(0x7F0000u)) + constant(0x10000u));
    const F32s e = toF32(shr<23>(b) - constant(127u));
    const F32s m = bits(x, 0x7FFFFF) | constant(1.0f);
    F32s logHi, logLo, rcp;
    for (int i = 0; i < F32s::vectors; ++i) {
        F32 column[4];
        gatherRows(&vspowx_data[0].logHi, shl<2>(k.v[i]), column);
        logHi.v[i] = column[0], logLo.v[i] = column[1], rcp.v[i] = column[2];
    }

    // ln x = H + L, r = m rcp - 1. The product with the upper part of m is exact.
    const F32s mHi = bits(m, 0x7FFFC000), mLo = m - mHi;
    const F32s rHi = mHi * rcp - constant(1.0f), rLo = rcp * mLo, r = rHi + rLo;
    const F32s h = (logHi + rHi) + constant(0x1.62Ep-1f) * e;
    F32s q = ((constant(-0.25f) * r + constant(0x1.555556p-2f)) * r - constant(0.5f)) * (r * r);
    q = q + (logLo + constant(0x1.0BFBE8p-15f) * e);
    // Between 0.9921875 and 1.015625 the logarithm is so small that rLo belongs to its upper part; elsewhere to its
    // lower. Adding the 0 that the mask leaves changes neither: they are never -0.
    const F32s nearOne = as<F32>(gt(b + constant(0x407E0000u), constant(0x7FFC0000u)));
    const F32s H = h + (nearOne & rLo), L = q + andNot(nearOne, rLo);

    // p ln x = Zhi + Zlo.
    const F32s S = H + L, c = constant(4097.0f) * S;
    const F32s sHi = (S + c) - c, sLo = L + (H - sHi);
    const F32s pHi = constant(p.hi), pLo = constant(p.lo);
    const F32s Zhi = pHi * sHi;
    const F32s Zlo = ((pLo * sLo) + (sHi * pLo)) + (sLo * pHi);

    // e^(Zhi + Zlo) = 2^n e^R; the shifter leaves the integer n in the low bits of t.
    const F32s shifter = constant(0x1.8p23f);
    const F32s t = constant(0x1.715476p0f) * Zhi + shifter, n = t - shifter;
    const F32s R = Zlo + ((Zhi - constant(0x1.62E4p-1f) * n) - constant(0x1.7F7D1Cp-20f) * n);
    F32s y = constant(0x1.0FB3FCp-7f);
    for (const Mox32f coefficient : {0x1.570724p-5f, 0x1.555958p-3f, 0x1.FFFE68p-2f, 0x1.FFFFFCp-1f, 1.0f})
        y = y * R + constant(coefficient);

    // The recipe holds from the least normal number up to but not including the greatest, for results whose exponent
    // stays in range. (|Zhi| is compared by its bits, so that a NaN is beyond.)
    const I32s outside = gt(b + constant(0x7F800000u), constant(0xFEFFFFFEu));
    const I32s beyond = gt(as<I32>(bits(Zhi, 0x7FFFFFFF)), constant(0x42819F00u));
    return {as<F32>(as<I32>(y) + shl<23>(as<I32>(t))), outside | beyond};
}

/// The rare path for the samples of one bundle that need it.
[[gnu::noinline, gnu::cold]] int32_t powerRare(const F32s& x, const Exponent& p, Power& result) {
    Mox32f samples[F32s::count], values[F32s::count];
    int32_t rare[F32s::count];
    store(samples, x);
    store(values, result.value);
    store(rare, result.rare);
    int32_t code = 0;
    for (int i = 0; i < F32s::count; ++i)
        if (rare[i]) code |= vspowx_cout_rare(&samples[i], &p.value, &values[i]);
    result.value = loadBundle<F32>(values);
    return code;
}

/// Runs in the usual environment.
[[gnu::noinline]] int32_t own_moxs_sPowx_Q4LAynn(const Mox32f* src, Mox32f p, Mox32f* dst, int32_t len) {
    int32_t code = 0;
    if (!(std::fabs(p) <= FLT_MAX)) {
        for (int32_t i = 0; i < len; ++i) code |= vspowx_cout_rare(&src[i], &p, &dst[i]);
        return code;
    }
    const Exponent exponent(p);
    for (ptrdiff_t i = 0; i < len; i += F32s::count) {
        const ptrdiff_t n = std::min(ptrdiff_t(F32s::count), len - i);
        Mox32f last[F32s::count];
        const bool partial = n < F32s::count;
        if (partial) {
            for (Mox32f& x : last) x = 0.75f;  // any sample that is not rare
            std::memcpy(last, src + i, size_t(n) * sizeof *src);
        }
        const F32s x = loadBundle<F32>(partial ? last : src + i);
        Power result = power(x, exponent);
        if (any(result.rare)) [[unlikely]]
            code |= powerRare(x, exponent, result);
        store(partial ? last : dst + i, result.value);
        if (partial) std::memcpy(dst + i, last, size_t(n) * sizeof *dst);
    }
    return code;
}

}  // namespace

int32_t moxsPowx_32f_A21(const Mox32f* src, Mox32f p, Mox32f* dst, int32_t len) {
    if (MoxStatus s = firstOf(require([=] { return len >= 1; }, moxStatusBadSize), notNull(src, dst))) return s;
    const UsualEnvironment environment;
    return own_moxs_sPowx_Q4LAynn(src, p, dst, len);
}

}  // namespace q4
