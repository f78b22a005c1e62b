// Colour twist: every output channel a weighted sum of the input channels and an offset, weights and offset the
// caller's.
#include "moxcc/twist.h"

#include <bit>
#include <limits>

#include "frame/entry.h"
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

/// Integer samples: the sum limited to the sample's range, then rounded. MINPS makes a NaN the upper limit. Moderate
/// sums have the limits from collect().
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

/// A call of its own, so that no operation moves out of the scope of the rounding mode.
template <class Kernel, class Src, class Dst>
[[gnu::noinline]] void roundedRows(const Kernel& kernel, const Src& src, const Dst& dst, MoxiSize size) {
    eachRow(kernel, src, dst, size);
}

/// Integer samples: the result does not depend on the caller's rounding mode.
template <class L>
struct RoundedRows {
    using Src = L;
    using Dst = L;
    Twist twist;

    static RoundedRows of(const Mox32f* twist) { return {Twist(twist)}; }
    void picture(const Image<const uint8_t, L::planes>& src, const Image<uint8_t, L::planes>& dst,
                 MoxiSize size) const {
        const RoundToNearest scope;
        if (twist.isModerate())
            roundedRows(owniTwist32f<L, true>{{{twist}}}, src, dst, size);
        else
            roundedRows(owniTwist32f<L, false>{{{twist}}}, src, dst, size);
    }
};

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order twistOrder = {{Test::pointers, Test::weights, Test::planes, Test::size, Test::steps}};

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiColorTwist32f_8u_C3R>    = converts<RoundedRows<C3<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_8u_C3IR>   = converts<RoundedRows<C3<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_8u_AC4R>   = converts<RoundedRows<AC4<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_8u_AC4IR>  = converts<RoundedRows<AC4<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_8u_P3R>    = converts<RoundedRows<P3<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_8u_IP3R>   = converts<RoundedRows<P3<Mox8u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_C3R>   = converts<RoundedRows<C3<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_C3IR>  = converts<RoundedRows<C3<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_AC4R>  = converts<RoundedRows<AC4<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_AC4IR> = converts<RoundedRows<AC4<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_P3R>   = converts<RoundedRows<P3<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16u_IP3R>  = converts<RoundedRows<P3<Mox16u>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_C3R>   = converts<RoundedRows<C3<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_C3IR>  = converts<RoundedRows<C3<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_AC4R>  = converts<RoundedRows<AC4<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_AC4IR> = converts<RoundedRows<AC4<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_P3R>   = converts<RoundedRows<P3<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist32f_16s_IP3R>  = converts<RoundedRows<P3<Mox16s>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_C3R>      = converts<owniTwist_32f<C3<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_C3IR>     = converts<owniTwist_32f<C3<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_AC4R>     = converts<owniTwist_32f<AC4<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_AC4IR>    = converts<owniTwist_32f<AC4<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_P3R>      = converts<owniTwist_32f<P3<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_IP3R>     = converts<owniTwist_32f<P3<Mox32f>>, twistOrder>;
template <> constexpr auto entry<moxiColorTwist_32f_C4R>      = converts<innerColorTwist_32f_C4R, twistOrder>;
// clang-format on

}  // namespace q4

#include "twist.inc"
