// Colour twist: every output channel a weighted sum of the input channels and an offset, weights and offset the caller's.
#include "moxcc/twist.h"

#include <bit>
#include <limits>

#include "frame/convert.h"
#include "frame/fpenv.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// Three rows of three weights and an offset, as the caller's array has them.
struct Twist {
    Mox32f row[3][4];

    explicit Twist(const Mox32f* twist) { std::memcpy(row, twist, sizeof row); }

    MOX_INLINE Px<F32, 3> operator()(const Px<F32, 3>& p) const {
        const auto sum = [&](const Mox32f(&t)[4]) {
            const F32 a = splat<F32>(t[3]) + p.c[0] * splat<F32>(t[0]);
            const F32 b = p.c[2] * splat<F32>(t[2]) + p.c[1] * splat<F32>(t[1]);
            return a + b;
        };
        return {{sum(row[0]), sum(row[1]), sum(row[2])}};
    }

    /// Whether the sums of any samples of 16 bits are integers of 32 bits when rounded.
    bool isModerate() const {
        // By bits, which for a NaN says no and raises no exception.
        const auto below = [](Mox32f limit, Mox32f x) {
            return std::bit_cast<uint32_t>(x) << 1 < std::bit_cast<uint32_t>(limit) << 1;
        };
        for (const Mox32f(&r)[4] : row)
            if (!below(4096, r[0]) || !below(4096, r[1]) || !below(4096, r[2]) || !below(1 << 28, r[3])) return false;
        return true;
    }
};

/// Four rows of four weights, no offset.
struct ownSetMatrix {
    Mox32f row[4][4];

    explicit ownSetMatrix(const Mox32f* twist) { std::memcpy(row, twist, sizeof row); }

    MOX_INLINE Px<F32, 4> operator()(const Px<F32, 4>& p) const {
        const auto sum = [&](const Mox32f(&t)[4]) {
            return ((p.c[0] * splat<F32>(t[0]) + p.c[1] * splat<F32>(t[1])) + p.c[2] * splat<F32>(t[2])) +
                   p.c[3] * splat<F32>(t[3]);
        };
        return {{sum(row[0]), sum(row[1]), sum(row[2]), sum(row[3])}};
    }
};

/// Integer samples: the sum limited to the sample's range, then rounded. MINPS makes a NaN the upper limit. Moderate sums
/// have the limits from collect().
template <class T, bool moderate>
struct RoundedTwist {
    Twist twist;

    MOX_INLINE Px<I32, 3> operator()(const Px<F32, 3>& p) const {
        using Limits = std::numeric_limits<T>;
        const Px<F32, 3> sums = twist(p);
        Px<I32, 3> out;
        for (int c = 0; c < 3; ++c) {
            if constexpr (moderate)
                out.c[c] = nearest(sums.c[c]);
            else
                out.c[c] = nearest(max(min(sums.c[c], splat<F32>(Limits::max())), splat<F32>(Limits::min())));
        }
        return out;
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

template <class L>
using owniTwist_32f = AllColumns<L, L, On<F32, Twist>>;
using innerColorTwist_32f_C4R = AllColumns<C4<Mox32f>, C4<Mox32f>, On<F32, ownSetMatrix>>;
template <class L, bool moderate>
using owniTwist32f = AllColumns<L, L, On<F32, RoundedTwist<typename L::Sample, moderate>>>;

// ---- entries --------------------------------------------------------------------------------------------------------

template <int planes, class S, class D>
MoxStatus check(S* src, int32_t srcStep, D* dst, int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    return firstOf(notNull(src, dst, twist), anyPlanesNotNull<planes>(src), anyPlanesNotNull<planes>(dst),
                   sizeAtLeast(roiSize, 1, 1), stepsPositive(srcStep, dstStep));
}

/// Float samples, in the caller's rounding mode.
template <class Kernel, class S, class D>
MoxStatus twistFloats(S* src, int32_t srcStep, D* dst, int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    using Layout = typename Kernel::Src;
    if (MoxStatus s = check<Layout::planes>(src, srcStep, dst, dstStep, roiSize, twist)) return s;
    eachRow(Kernel{{{decltype(Kernel::rule.rule)(twist)}}}, imageOf<Layout>(src, srcStep),
            imageOf<Layout>(dst, dstStep), roiSize);
    return moxStatusOk;
}

/// A call of its own, so that no operation moves out of the scope of the rounding mode.
template <class Kernel, int planes>
[[gnu::noinline]] void roundedRows(const Kernel& kernel, const Image<const uint8_t, planes>& src,
                                   const Image<uint8_t, planes>& dst, MoxiSize roiSize) {
    eachRow(kernel, src, dst, roiSize);
}

/// Integer samples: the result does not depend on the caller's rounding mode.
template <class L, class S, class D>
MoxStatus twistIntegers(S* src, int32_t srcStep, D* dst, int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    if (MoxStatus s = check<L::planes>(src, srcStep, dst, dstStep, roiSize, twist)) return s;
    const Twist rows(twist);
    const auto from = imageOf<L>(src, srcStep);
    const auto to = imageOf<L>(dst, dstStep);
    const RoundToNearest scope;
    if (rows.isModerate())
        roundedRows<owniTwist32f<L, true>, L::planes>({{{rows}}}, from, to, roiSize);
    else
        roundedRows<owniTwist32f<L, false>, L::planes>({{{rows}}}, from, to, roiSize);
    return moxStatusOk;
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiColorTwist32f_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   const Mox32f* twist) {
    return twistIntegers<C3<Mox8u>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_8u_C3IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<C3<Mox8u>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* twist) {
    return twistIntegers<AC4<Mox8u>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_8u_AC4IR(Mox8u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<AC4<Mox8u>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_8u_P3R(const Mox8u* const* srcPlanes, int32_t srcStep, Mox8u* const* dstPlanes,
                                   int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<P3<Mox8u>>(srcPlanes, srcStep, dstPlanes, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_8u_IP3R(Mox8u* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                    const Mox32f* twist) {
    return twistIntegers<P3<Mox8u>>(srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* twist) {
    return twistIntegers<C3<Mox16u>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_C3IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<C3<Mox16u>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox32f* twist) {
    return twistIntegers<AC4<Mox16u>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_AC4IR(Mox16u* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<AC4<Mox16u>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_P3R(const Mox16u* const* srcPlanes, int32_t srcStep, Mox16u* const* dstPlanes,
                                    int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<P3<Mox16u>>(srcPlanes, srcStep, dstPlanes, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16u_IP3R(Mox16u* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                     const Mox32f* twist) {
    return twistIntegers<P3<Mox16u>>(srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                    const Mox32f* twist) {
    return twistIntegers<C3<Mox16s>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_C3IR(Mox16s* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<C3<Mox16s>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                     const Mox32f* twist) {
    return twistIntegers<AC4<Mox16s>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_AC4IR(Mox16s* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<AC4<Mox16s>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_P3R(const Mox16s* const* srcPlanes, int32_t srcStep, Mox16s* const* dstPlanes,
                                    int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistIntegers<P3<Mox16s>>(srcPlanes, srcStep, dstPlanes, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist32f_16s_IP3R(Mox16s* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                     const Mox32f* twist) {
    return twistIntegers<P3<Mox16s>>(srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_C3R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                 const Mox32f* twist) {
    return twistFloats<owniTwist_32f<C3<Mox32f>>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_C3IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistFloats<owniTwist_32f<C3<Mox32f>>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_AC4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                  const Mox32f* twist) {
    return twistFloats<owniTwist_32f<AC4<Mox32f>>>(src, srcStep, dst, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_AC4IR(Mox32f* srcDst, int32_t srcDstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistFloats<owniTwist_32f<AC4<Mox32f>>>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_P3R(const Mox32f* const* srcPlanes, int32_t srcStep, Mox32f* const* dstPlanes,
                                 int32_t dstStep, MoxiSize roiSize, const Mox32f* twist) {
    return twistFloats<owniTwist_32f<P3<Mox32f>>>(srcPlanes, srcStep, dstPlanes, dstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_IP3R(Mox32f* const* srcDstPlanes, int32_t srcDstStep, MoxiSize roiSize,
                                  const Mox32f* twist) {
    return twistFloats<owniTwist_32f<P3<Mox32f>>>(srcDstPlanes, srcDstStep, srcDstPlanes, srcDstStep, roiSize, twist);
}
MoxStatus moxiColorTwist_32f_C4R(const Mox32f* src, int32_t srcStep, Mox32f* dst, int32_t dstStep, MoxiSize roiSize,
                                 const Mox32f* twist) {
    return twistFloats<innerColorTwist_32f_C4R>(src, srcStep, dst, dstStep, roiSize, twist);
}
