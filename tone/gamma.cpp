// Gamma: the transfer curve of ITU-R BT.709 and its inverse, sample by sample.
#include "moxcc/gamma.h"

#include "frame/convert.h"
#include "tone/gamma_tables.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

template <class T>
using Table = const T (&)[size_t(T(-1)) + 1];

/// Each 8-bit sample looked up in a table.
template <Table<Mox8u> table>
struct LookUp {
    template <int C>
    MOX_INLINE Px<U8, C> operator()(Px<U8, C> px) const {
        for (U8& samples : px.c) samples = lookUp(table, samples);
        return px;
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

/// 16-bit samples in groups of four, of which the first `used` are looked up: a table of 65536 entries wants plain
/// loads.
template <Table<Mox16u> table, int used>
struct LookUp16u {
    using Src = C1<Mox16u>;
    using Dst = Src;

    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t samples) const {
        ptrdiff_t i = 0;
        for (; i + 4 <= samples; i += 4) group<used>(src.p[0] + 2 * i, dst.p[0] + 2 * i);
        for (; i < samples; ++i) group<1>(src.p[0] + 2 * i, dst.p[0] + 2 * i);
    }

  private:
    template <int n>
    MOX_INLINE static void group(const uint8_t* src, uint8_t* dst) {
        Mox16u s[n];  // rows start at any byte
        std::memcpy(s, src, sizeof s);
        for (Mox16u& x : s) x = table[x];
        std::memcpy(dst, s, sizeof s);
    }
};

/// A kernel of single samples over pixels of n.
template <int n, class Kernel>
struct Samples : Kernel {
    MOX_INLINE void row(const SrcRows<1>& src, const DstRows<1>& dst, ptrdiff_t width) const {
        Kernel::row(src, dst, n * width);
    }
};

template <Table<Mox8u> table>
using P3_8u = AllColumns<C1<Mox8u>, C1<Mox8u>, On<U8, LookUp<table>>>;
template <Table<Mox8u> table>
using C3_8u = Samples<3, P3_8u<table>>;
template <Table<Mox8u> table>
using AC4_8u = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<U8, LookUp<table>>>;

template <Table<Mox16u> table>
using P3_16u = LookUp16u<table, 4>;
template <Table<Mox16u> table>
using C3_16u = Samples<3, P3_16u<table>>;
template <Table<Mox16u> table>
using AC4_16u = Samples<4, LookUp16u<table, 3>>;

// ---- entries --------------------------------------------------------------------------------------------------------

template <class S, class D>
MoxStatus check(S* src, int32_t srcStep, D* dst, int32_t dstStep, MoxiSize roiSize) {
    return firstOf([=] { return checkPicture<PlanesTested::beforeSize, 3, 3>(src, dst, roiSize); },
                   stepsPositive(srcStep, dstStep));
}

/// One picture of interleaved pixels; in place if source and destination are the same.
template <class Kernel, class T>
MoxStatus run(const Kernel& kernel, const T* src, int32_t srcStep, T* dst, int32_t dstStep, MoxiSize roiSize) {
    if (MoxStatus s = check(src, srcStep, dst, dstStep, roiSize)) return s;
    eachRow(kernel, image(src, srcStep), image(dst, dstStep), roiSize);
    return moxStatusOk;
}

/// Three planes, one after the other.
template <class Kernel, class T>
MoxStatus run(const Kernel& kernel, const T* const* src, int32_t srcStep, T* const* dst, int32_t dstStep,
              MoxiSize roiSize) {
    if (MoxStatus s = check(src, srcStep, dst, dstStep, roiSize)) return s;
    for (int i = 0; i < 3; ++i) eachRow(kernel, image(src[i], srcStep), image(dst[i], dstStep), roiSize);
    return moxStatusOk;
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiGammaFwd_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(C3_8u<tableFwd8u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(C3_8u<tableFwd8u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaFwd_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(AC4_8u<tableFwd8u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(AC4_8u<tableFwd8u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaFwd_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                              int32_t dstStep, MoxiSize roiSize) {
    return run(P3_8u<tableFwd8u>{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize) {
    return run(P3_8u<tableFwd8u>{}, srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(C3_8u<tableInv8u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(C3_8u<tableInv8u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(AC4_8u<tableInv8u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(AC4_8u<tableInv8u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_P3R(const Mox8u* const srcPlanes[3], int32_t srcStep, Mox8u* const dstPlanes[3],
                              int32_t dstStep, MoxiSize roiSize) {
    return run(P3_8u<tableInv8u>{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiGammaInv_8u_IP3R(Mox8u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize) {
    return run(P3_8u<tableInv8u>{}, srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize);
}

MoxStatus moxiGammaFwd_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(C3_16u<tableFwd16u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(C3_16u<tableFwd16u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaFwd_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(AC4_16u<tableFwd16u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(AC4_16u<tableFwd16u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaFwd_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                               int32_t dstStep, MoxiSize roiSize) {
    return run(P3_16u<tableFwd16u>{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiGammaFwd_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize) {
    return run(P3_16u<tableFwd16u>{}, srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(C3_16u<tableInv16u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(C3_16u<tableInv16u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize) {
    return run(AC4_16u<tableInv16u>{}, src, srcStep, dst, dstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize) {
    return run(AC4_16u<tableInv16u>{}, srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_P3R(const Mox16u* const srcPlanes[3], int32_t srcStep, Mox16u* const dstPlanes[3],
                               int32_t dstStep, MoxiSize roiSize) {
    return run(P3_16u<tableInv16u>{}, srcPlanes, srcStep, dstPlanes, dstStep, roiSize);
}
MoxStatus moxiGammaInv_16u_IP3R(Mox16u* const srcDstPlanes[3], int32_t srcDstStep, MoxiSize roiSize) {
    return run(P3_16u<tableInv16u>{}, srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize);
}
