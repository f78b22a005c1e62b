// YCoCg: a luma and an orange and a green difference, by additions and shifts alone. The plain transform loses low
// bits; the lifting one (Rev) is undone exactly by its inverse, since both wrap every step alike.
#include "moxcc/ycocg.h"

#include "frame/entry.h"

namespace q4 {
namespace {

// ---- rules, on lanes of 16 or 32 bits that wrap ---------------------------------------------------------------------

template <class V>
MOX_INLINE V plus(V v, int constant) {
    return v + splat<V>(typename V::Sample(constant));
}

template <class V>
struct Forward {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& p) const {
        const V r = p.c[0], g = p.c[1], b = p.c[2];
        return {{shr<2>(plus(r + shl<1>(g) + b, 2)), shr<1>(plus(r - b, 1)), shr<2>(plus(shl<1>(g) - r - b, 2))}};
    }
};

template <class V>
struct Inverse {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& p) const {
        const V y = p.c[0], co = p.c[1], cg = p.c[2];
        return {{y + co - cg, y + cg, y - co - cg}};
    }
};

template <class V>
struct ForwardRev {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& p) const {
        const V r = p.c[0], g = p.c[1], b = p.c[2];
        const V co = r - b, t = b + shr<1>(co), cg = g - t;
        return {{t + shr<1>(cg), co, cg}};
    }
};

template <class V>
struct InverseRev {
    MOX_INLINE Px<V, 3> operator()(const Px<V, 3>& p) const {
        const V y = p.c[0], co = p.c[1], cg = p.c[2];
        const V t = y - shr<1>(cg), b = t - shr<1>(co);
        return {{b + co, cg + t, b}};
    }
};

/// The low 16 bits of 32-bit results.
template <class Rule>
struct LowWord {
    MOX_INLINE Px<I32, 3> operator()(const Px<I32, 3>& p) const {
        const Px<I32, 3> wide = Rule{}(p);
        return {{lowBits<Mox16s>(wide.c[0]), lowBits<Mox16s>(wide.c[1]), lowBits<Mox16s>(wide.c[2])}};
    }
};

/// Chroma bytes have an offset of 128.
struct Forward8u {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        const Px<I16, 3> plain = Forward<I16>{}(p);
        return {{plain.c[0], plus(plain.c[1], 128), plus(plain.c[2], 128)}};
    }
};
struct Inverse8u {
    MOX_INLINE Px<I16, 3> operator()(const Px<I16, 3>& p) const {
        return Inverse<I16>{}({{p.c[0], plus(p.c[1], -128), plus(p.c[2], -128)}});
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

using RGBToYCoCg8u = AllColumns<C3<Mox8u>, P3<Mox8u>, On<I16, Forward8u>>;
using YCoCgToRGB8u = AllColumns<P3<Mox8u>, C3<Mox8u>, On<I16, Inverse8u>>;

// All others have pixels of B, G, R in memory.
template <class S, class D, class Rule>
using C3P3 = AllColumns<Bgr<S>, P3<D>, Rule>;
template <class S, class D, class Rule>
using C4P3 = AllColumns<Reversed<AC4<S>>, P3<D>, Rule>;
template <class S, class D, class Rule>
using P3C3 = AllColumns<P3<S>, Bgr<D>, Rule>;
template <class S, class D, class Rule>
using P3C4 = AllColumns<P3<S>, Reversed<C4<D>>, WithFourth<Rule, D>>;

using Forward16 = On<I16, Forward<I16>>;
using Forward32 = On<I32, Forward<I32>>;
using ForwardRev16 = On<I16, ForwardRev<I16>>;
using ForwardRev32 = On<I32, ForwardRev<I32>>;
using Inverse16 = On<I16, Inverse<I16>>;
using Inverse32 = On<I32, LowWord<Inverse<I32>>>;
using InverseRev16 = On<I16, InverseRev<I16>>;
using InverseRev32 = On<I32, LowWord<InverseRev<I32>>>;

// ---- entries --------------------------------------------------------------------------------------------------------

/// Pointers are tested first, those to planes too; then the size, but in forms that do nothing for one below 1.
template <class Kernel>
constexpr Converts<Kernel, planesFirst> sizeTested{};
template <class Kernel>
constexpr Converts<Kernel, Order{{Test::pointers, Test::planes}}> anySize{};

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiBGRToYCoCg_8u16s_C3P3R>       = sizeTested<C3P3<Mox8u, Mox16s, Forward16>>;
template <> constexpr auto entry<moxiBGRToYCoCg_8u16s_C4P3R>       = sizeTested<C4P3<Mox8u, Mox16s, Forward16>>;
template <> constexpr auto entry<moxiBGRToYCoCg_Rev_8u16s_C3P3R>   = sizeTested<C3P3<Mox8u, Mox16s, ForwardRev16>>;
template <> constexpr auto entry<moxiBGRToYCoCg_Rev_8u16s_C4P3R>   = sizeTested<C4P3<Mox8u, Mox16s, ForwardRev16>>;
template <> constexpr auto entry<moxiRGBToYCoCg_8u_C3P3R>          = sizeTested<RGBToYCoCg8u>;
template <> constexpr auto entry<moxiSBGRToYCoCg_16s32s_C3P3R>     = sizeTested<C3P3<Mox16s, Mox32s, Forward32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_16s32s_C4P3R>     = anySize<C4P3<Mox16s, Mox32s, Forward32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_16s_C3P3R>        = sizeTested<C3P3<Mox16s, Mox16s, Forward32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_16s_C4P3R>        = sizeTested<C4P3<Mox16s, Mox16s, Forward32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_Rev_16s32s_C3P3R> = sizeTested<C3P3<Mox16s, Mox32s, ForwardRev32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_Rev_16s32s_C4P3R> = anySize<C4P3<Mox16s, Mox32s, ForwardRev32>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_Rev_16s_C3P3R>    = anySize<C3P3<Mox16s, Mox16s, ForwardRev16>>;
template <> constexpr auto entry<moxiSBGRToYCoCg_Rev_16s_C4P3R>    = anySize<C4P3<Mox16s, Mox16s, ForwardRev16>>;
template <> constexpr auto entry<moxiYCoCgToBGR_16s8u_P3C3R>       = anySize<P3C3<Mox16s, Mox8u, Inverse16>>;
template <> constexpr auto entry<moxiYCoCgToBGR_16s8u_P3C4R>       = anySize<P3C4<Mox16s, Mox8u, Inverse16>>;
template <> constexpr auto entry<moxiYCoCgToBGR_Rev_16s8u_P3C3R>   = anySize<P3C3<Mox16s, Mox8u, InverseRev16>>;
template <> constexpr auto entry<moxiYCoCgToBGR_Rev_16s8u_P3C4R>   = anySize<P3C4<Mox16s, Mox8u, InverseRev16>>;
template <> constexpr auto entry<moxiYCoCgToRGB_8u_P3C3R>          = anySize<YCoCgToRGB8u>;
template <> constexpr auto entry<moxiYCoCgToSBGR_16s_P3C3R>        = anySize<P3C3<Mox16s, Mox16s, Inverse16>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_16s_P3C4R>        = sizeTested<P3C4<Mox16s, Mox16s, Inverse16>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_32s16s_P3C3R>     = sizeTested<P3C3<Mox32s, Mox16s, Inverse32>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_32s16s_P3C4R>     = sizeTested<P3C4<Mox32s, Mox16s, Inverse32>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_Rev_16s_P3C3R>    = anySize<P3C3<Mox16s, Mox16s, InverseRev16>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_Rev_16s_P3C4R>    = anySize<P3C4<Mox16s, Mox16s, InverseRev16>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_Rev_32s16s_P3C3R> = anySize<P3C3<Mox32s, Mox16s, InverseRev32>>;
template <> constexpr auto entry<moxiYCoCgToSBGR_Rev_32s16s_P3C4R> = anySize<P3C4<Mox32s, Mox16s, InverseRev32>>;
// clang-format on

}  // namespace q4

#include "ycocg.inc"
