// YCoCg: a luma and an orange and a green difference, by additions and shifts alone. The plain transform loses low bits; the
// lifting one (Rev) is undone exactly by its inverse, since both wrap every step alike.
#include "moxcc/ycocg.h"

#include "frame/convert.h"

namespace q4 {
namespace {

// ---- rules, on lanes of 16 or 32 bits that wrap ----------------------------------------------------------------------

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

// Pixels are B, G, R in memory but for the 8u forms.
template <class T>
using Bgr = Reversed<C3<T>>;
template <class T>
using Bgra = Reversed<AC4<T>>;

template <class Src, class D, class V, class Rule>
using Encode = AllColumns<Src, P3<D>, On<V, Rule>>;
template <class S, class D, class V, class Rule>
using DecodeC3 = AllColumns<P3<S>, Bgr<D>, On<V, Rule>>;
template <class S, class D, class V, class Rule>
using DecodeC4 = AllColumns<P3<S>, Reversed<C4<D>>, WithFourth<On<V, Rule>, D>>;

// ---- entries --------------------------------------------------------------------------------------------------------

enum class SizeTested { no, yes };

/// Pointers first, the inner ones too. A form that does not test the size does nothing for one below 1.
template <SizeTested tested, class Kernel, class S, class D>
MoxStatus convertYCoCg(const Kernel& kernel, S* src, int32_t srcStep, D* dst, int32_t dstStep, MoxiSize roiSize) {
    const MoxStatus s =
        checkPicture<PlanesTested::beforeSize, Kernel::Src::planes, Kernel::Dst::planes>(src, dst, roiSize);
    if (s != moxStatusOk) return s == moxStatusBadSize && tested == SizeTested::no ? MoxStatus(moxStatusOk) : s;
    eachRow(kernel, imageOf<typename Kernel::Src>(src, srcStep), imageOf<typename Kernel::Dst>(dst, dstStep), roiSize);
    return moxStatusOk;
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiBGRToYCoCg_8u16s_C3P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                     MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgr<Mox8u>, Mox16s, I16, Forward<I16>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiBGRToYCoCg_8u16s_C4P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                     MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgra<Mox8u>, Mox16s, I16, Forward<I16>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiBGRToYCoCg_Rev_8u16s_C3P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                         MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgr<Mox8u>, Mox16s, I16, ForwardRev<I16>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiBGRToYCoCg_Rev_8u16s_C4P3R(const Mox8u* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                         MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgra<Mox8u>, Mox16s, I16, ForwardRev<I16>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiRGBToYCoCg_8u_C3P3R(const Mox8u* src, int32_t srcStep, Mox8u* const* dstPlanes, int32_t dstStep,
                                  MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<C3<Mox8u>, Mox8u, I16, Forward8u>{}, src, srcStep, dstPlanes, dstStep,
                                         roiSize);
}
MoxStatus moxiSBGRToYCoCg_16s32s_C3P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes, int32_t dstStep,
                                       MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgr<Mox16s>, Mox32s, I32, Forward<I32>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_16s32s_C4P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes, int32_t dstStep,
                                       MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(Encode<Bgra<Mox16s>, Mox32s, I32, Forward<I32>>{}, src, srcStep, dstPlanes,
                                        dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_16s_C3P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                    MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgr<Mox16s>, Mox16s, I32, Forward<I32>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_16s_C4P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                    MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgra<Mox16s>, Mox16s, I32, Forward<I32>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_Rev_16s32s_C3P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                           int32_t dstStep, MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(Encode<Bgr<Mox16s>, Mox32s, I32, ForwardRev<I32>>{}, src, srcStep, dstPlanes,
                                         dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_Rev_16s32s_C4P3R(const Mox16s* src, int32_t srcStep, Mox32s* const* dstPlanes,
                                           int32_t dstStep, MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(Encode<Bgra<Mox16s>, Mox32s, I32, ForwardRev<I32>>{}, src, srcStep, dstPlanes,
                                        dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_Rev_16s_C3P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                        MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(Encode<Bgr<Mox16s>, Mox16s, I16, ForwardRev<I16>>{}, src, srcStep, dstPlanes,
                                        dstStep, roiSize);
}
MoxStatus moxiSBGRToYCoCg_Rev_16s_C4P3R(const Mox16s* src, int32_t srcStep, Mox16s* const* dstPlanes, int32_t dstStep,
                                        MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(Encode<Bgra<Mox16s>, Mox16s, I16, ForwardRev<I16>>{}, src, srcStep, dstPlanes,
                                        dstStep, roiSize);
}
MoxStatus moxiYCoCgToBGR_16s8u_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                     MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(DecodeC3<Mox16s, Mox8u, I16, Inverse<I16>>{}, srcPlanes, srcStep, dst, dstStep,
                                        roiSize);
}
MoxStatus moxiYCoCgToBGR_16s8u_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                     MoxiSize roiSize, Mox8u aval) {
    return convertYCoCg<SizeTested::no>(DecodeC4<Mox16s, Mox8u, I16, Inverse<I16>>{{{}, aval}}, srcPlanes, srcStep, dst,
                                        dstStep, roiSize);
}
MoxStatus moxiYCoCgToBGR_Rev_16s8u_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(DecodeC3<Mox16s, Mox8u, I16, InverseRev<I16>>{}, srcPlanes, srcStep, dst,
                                        dstStep, roiSize);
}
MoxStatus moxiYCoCgToBGR_Rev_16s8u_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                         MoxiSize roiSize, Mox8u aval) {
    return convertYCoCg<SizeTested::no>(DecodeC4<Mox16s, Mox8u, I16, InverseRev<I16>>{{{}, aval}}, srcPlanes, srcStep,
                                        dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToRGB_8u_P3C3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* dst, int32_t dstStep,
                                  MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(AllColumns<P3<Mox8u>, C3<Mox8u>, On<I16, Inverse8u>>{}, srcPlanes, srcStep, dst,
                                        dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_16s_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                    MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(DecodeC3<Mox16s, Mox16s, I16, Inverse<I16>>{}, srcPlanes, srcStep, dst, dstStep,
                                        roiSize);
}
MoxStatus moxiYCoCgToSBGR_16s_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                    MoxiSize roiSize, Mox16s aval) {
    return convertYCoCg<SizeTested::yes>(DecodeC4<Mox16s, Mox16s, I16, Inverse<I16>>{{{}, aval}}, srcPlanes, srcStep,
                                         dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_32s16s_P3C3R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize) {
    return convertYCoCg<SizeTested::yes>(DecodeC3<Mox32s, Mox16s, I32, LowWord<Inverse<I32>>>{}, srcPlanes, srcStep,
                                         dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_32s16s_P3C4R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                       MoxiSize roiSize, Mox16s aval) {
    return convertYCoCg<SizeTested::yes>(DecodeC4<Mox32s, Mox16s, I32, LowWord<Inverse<I32>>>{{{}, aval}}, srcPlanes,
                                         srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_Rev_16s_P3C3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(DecodeC3<Mox16s, Mox16s, I16, InverseRev<I16>>{}, srcPlanes, srcStep, dst,
                                        dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_Rev_16s_P3C4R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* dst, int32_t dstStep,
                                        MoxiSize roiSize, Mox16s aval) {
    return convertYCoCg<SizeTested::no>(DecodeC4<Mox16s, Mox16s, I16, InverseRev<I16>>{{{}, aval}}, srcPlanes, srcStep,
                                        dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_Rev_32s16s_P3C3R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                           int32_t dstStep, MoxiSize roiSize) {
    return convertYCoCg<SizeTested::no>(DecodeC3<Mox32s, Mox16s, I32, LowWord<InverseRev<I32>>>{}, srcPlanes, srcStep,
                                        dst, dstStep, roiSize);
}
MoxStatus moxiYCoCgToSBGR_Rev_32s16s_P3C4R(const Mox32s* const* srcPlanes, int32_t srcStep, Mox16s* dst,
                                           int32_t dstStep, MoxiSize roiSize, Mox16s aval) {
    return convertYCoCg<SizeTested::no>(DecodeC4<Mox32s, Mox16s, I32, LowWord<InverseRev<I32>>>{{{}, aval}}, srcPlanes,
                                        srcStep, dst, dstStep, roiSize);
}
