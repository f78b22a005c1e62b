// Gamma: the transfer curve of ITU-R BT.709 and its inverse, sample by sample.
#include "moxcc/gamma.h"

#include <algorithm>

#include "frame/entry.h"
#include "math/gamma_tables.h"
#include "math/powx.h"

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

/// A vector of samples in double precision.
struct F64x2 {
    F64 lo, hi;

    MOX_INLINE friend F64x2 operator+(F64x2 a, F64x2 b) { return {a.lo + b.lo, a.hi + b.hi}; }
    MOX_INLINE friend F64x2 operator*(F64x2 a, F64x2 b) { return {a.lo * b.lo, a.hi * b.hi}; }
    MOX_INLINE friend F64x2 operator/(F64x2 a, F64x2 b) { return {a.lo / b.lo, a.hi / b.hi}; }
    MOX_INLINE friend F32 lt(F64x2 a, F64x2 b) { return narrowMask(lt(a.lo, b.lo), lt(a.hi, b.hi)); }
};

/// A vector of floats in the precision of T, F32 or F64x2, and back.
template <class T>
MOX_INLINE T widened(F32 x) {
    if constexpr (std::is_same_v<T, F32>)
        return x;
    else
        return {widenLo(x), widenHi(x)};
}
MOX_INLINE F32 narrowed(F32 x) { return x; }
MOX_INLINE F32 narrowed(F64x2 x) { return narrowF32(x.lo, x.hi); }

MOX_INLINE F32 constant(Mox32f x) { return splat<F32>(x); }

/// On the scale 0 to 1, a curve is a power of some base for positions t from a threshold on, and a line below it. The
/// results are on the scale of the range: for the line they come from the sample's distance d to the range's start.
struct Forward {
    static constexpr Mox32f exponent = 0.45f, threshold = 0.018f;
    template <class T>
    MOX_INLINE static T base(T t) {
        return t;
    }
    MOX_INLINE static F32 high(F32 power, F32 range) { return (constant(1.099f) * power - constant(0.099f)) * range; }
    MOX_INLINE static F32 low(F32 d) { return constant(4.5f) * d; }
};

struct Inverse {
    static constexpr Mox32f exponent = 0x1.1C71C8p+1f /* 1 / 0.45 */, threshold = 0.0812f;
    template <class T>
    MOX_INLINE static T base(T t) {
        return (t + widened<T>(constant(0.099f))) * widened<T>(constant(0x1.D1E0CAp-1f /* 1 / 1.099 */));
    }
    MOX_INLINE static F32 high(F32 power, F32 range) { return power * range; }
    MOX_INLINE static F32 low(F32 d) { return d * constant(0x1.C71C72p-3f /* 1 / 4.5 */); }
};

/// The start of the data's range. Taking it off and adding it leave the bits alone if it is zero: so -0 stays -0.
struct Start {
    explicit Start(Mox32f vMin) : value(constant(vMin)), isZero(eq(value, zero<F32>())) {}
    MOX_INLINE F32 takenOff(F32 x) const { return select(isZero, x, x - value); }
    MOX_INLINE F32 added(F32 d) const { return select(isZero, d, d + value); }
    F32 value, isZero;
};

/// Samples on the line need no power. They are given a base whose power is below all others, and are known by it.
constexpr Mox32f lineBase = 0x1p-40f, linePower = 0x1p-10f;

/// Before the power: its base. T: the precision of positions, F32 or F64x2.
template <class Curve, class T>
struct ToBase {
    Start start;
    T reciprocal;  // of the range

    ToBase(Start from, F32 range) : start(from), reciprocal(widened<T>(constant(1)) / widened<T>(range)) {}

    template <int C>
    MOX_INLINE Px<F32, C> operator()(Px<F32, C> px) const {
        for (F32& x : px.c) {
            const T t = widened<T>(start.takenOff(x)) * reciprocal;
            const F32 onLine = lt(t, widened<T>(constant(Curve::threshold)));  // a NaN is not
            x = select(onLine, constant(lineBase), narrowed(Curve::base(t)));
        }
        return px;
    }
};

/// Behind it: the results, from the samples and then the powers.
template <class Curve>
struct FromPower {
    Start start;
    F32 range;

    template <int C>
    MOX_INLINE auto operator()(const Px<F32, C>& px) const {
        Px<F32, C / 2> results;
        for (int c = 0; c < C / 2; ++c) {
            const F32 d = start.takenOff(px.c[c]), power = px.c[C / 2 + c];
            const F32 onLine = lt(power, constant(linePower));
            results.c[c] = start.added(select(onLine, Curve::low(d), Curve::high(power, range)));
        }
        return results;
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

/// Two layouts read side by side: the channels of the first, then those of the second.
template <class A, class B>
struct Beside : LayoutOf<A::planes + B::planes> {
    using Sample = typename A::Sample;
    using LayoutOf<A::planes + B::planes>::rowPointers;
    static constexpr int channels = A::channels + B::channels;
    static constexpr ptrdiff_t bytes(int i, ptrdiff_t n) {
        return i < A::planes ? A::bytes(i, n) : B::bytes(i - A::planes, n);
    }

    template <int N>
    MOX_INLINE static auto load(const SrcRows<rowPointers>& rows, ptrdiff_t x) {
        SrcRows<A::rowPointers> aRows;
        SrcRows<B::rowPointers> bRows;
        for (int i = 0; i < rowPointers; ++i) (i < A::planes ? aRows.p[i] : bRows.p[i - A::planes]) = rows.p[i];
        const auto a = A::template load<N>(aRows, x);
        const auto b = B::template load<N>(bRows, x);
        Block<Sample, channels, N> both;
        for (int c = 0; c < channels; ++c) both.c[c] = c < A::channels ? a.c[c] : b.c[c - A::channels];
        return both;
    }
};

/// Float samples in pieces, with their powers on the stack. Precision: that of positions in the range, F32 or F64x2.
template <class Layout, class Curve, class Precision>
struct GammaPieces {
    using Src = Layout;
    using Dst = Layout;
    static constexpr int channels = Layout::channels;
    static constexpr ptrdiff_t samples = 384;
    Mox32f vMin, vMax;

    static MoxStatus check(Mox32f vMin, Mox32f vMax) { return vMax - vMin <= 0 ? moxStatusBadRange : moxStatusOk; }

    MOX_INLINE void row(SrcRows<1> src, DstRows<1> dst, ptrdiff_t width) const {
        using Powers = Planar<Mox32f, channels>;
        alignas(vectorBytes) Mox32f powers[samples];
        const Start start(vMin);
        const F32 range = constant(vMax - vMin);
        const On<F32, ToBase<Curve, Precision>> toBase = {{start, range}};
        const On<F32, FromPower<Curve>> fromPower = {{start, range}};
        while (width > 0) {
            const ptrdiff_t n = std::min(width, samples / channels);
            DstRows<channels> out;
            SrcRows<1 + channels> in = {{src.p[0]}};
            for (int c = 0; c < channels; ++c) in.p[1 + c] = out.p[c] = reinterpret_cast<uint8_t*>(powers + c * n);

            span<Layout, Powers>(src, out, 0, n, toBase);
            moxsPowx_32f_A21(powers, Curve::exponent, powers, int32_t(n * channels));
            span<Beside<Layout, Powers>, Layout>(in, dst, 0, n, fromPower);
            src.p[0] += Layout::bytes(0, n), dst.p[0] += Layout::bytes(0, n), width -= n;
        }
    }
};

template <Table<Mox8u> table>
using Samples8u = AllColumns<C1<Mox8u>, C1<Mox8u>, On<U8, LookUp<table>>>;
template <Table<Mox8u> table>
using P3_8u = EachPlane<3, Samples8u<table>>;
template <Table<Mox8u> table>
using C3_8u = Samples<3, Samples8u<table>>;
template <Table<Mox8u> table>
using AC4_8u = AllColumns<AC4<Mox8u>, AC4<Mox8u>, On<U8, LookUp<table>>>;

template <Table<Mox16u> table>
using P3_16u = EachPlane<3, LookUp16u<table, 4>>;
template <Table<Mox16u> table>
using C3_16u = Samples<3, LookUp16u<table, 4>>;
template <Table<Mox16u> table>
using AC4_16u = Samples<4, LookUp16u<table, 3>>;

template <class Curve, class Precision>
using P3_32f = EachPlane<3, GammaPieces<C1<Mox32f>, Curve, Precision>>;
template <class Curve, class Precision>
using C3_32f = Samples<3, GammaPieces<C1<Mox32f>, Curve, Precision>>;
template <class Curve, class Precision>
using AC4_32f = GammaPieces<AC4<Mox32f>, Curve, Precision>;

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order stepsLast = {{Test::pointers, Test::planes, Test::size, Test::steps}};
constexpr Order rangeFirst = {{Test::values, Test::pointers, Test::planes, Test::size, Test::steps}};

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiGammaFwd_8u_C3R>    = converts<C3_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_8u_C3IR>   = converts<C3_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_8u_AC4R>   = converts<AC4_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_8u_AC4IR>  = converts<AC4_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_8u_P3R>    = converts<P3_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_8u_IP3R>   = converts<P3_8u<tableFwd8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_C3R>    = converts<C3_8u<tableInv8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_C3IR>   = converts<C3_8u<tableInv8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_AC4R>   = converts<AC4_8u<tableInv8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_AC4IR>  = converts<AC4_8u<tableInv8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_P3R>    = converts<P3_8u<tableInv8u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_8u_IP3R>   = converts<P3_8u<tableInv8u>, stepsLast>;

template <> constexpr auto entry<moxiGammaFwd_16u_C3R>   = converts<C3_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_16u_C3IR>  = converts<C3_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_16u_AC4R>  = converts<AC4_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_16u_AC4IR> = converts<AC4_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_16u_P3R>   = converts<P3_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaFwd_16u_IP3R>  = converts<P3_16u<tableFwd16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_C3R>   = converts<C3_16u<tableInv16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_C3IR>  = converts<C3_16u<tableInv16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_AC4R>  = converts<AC4_16u<tableInv16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_AC4IR> = converts<AC4_16u<tableInv16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_P3R>   = converts<P3_16u<tableInv16u>, stepsLast>;
template <> constexpr auto entry<moxiGammaInv_16u_IP3R>  = converts<P3_16u<tableInv16u>, stepsLast>;

template <> constexpr auto entry<moxiGammaFwd_32f_C3R>   = converts<C3_32f<Forward, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaFwd_32f_C3IR>  = converts<C3_32f<Forward, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaFwd_32f_AC4R>  = converts<AC4_32f<Forward, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaFwd_32f_AC4IR> = converts<AC4_32f<Forward, F64x2>, rangeFirst>;
template <> constexpr auto entry<moxiGammaFwd_32f_P3R>   = converts<P3_32f<Forward, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaFwd_32f_IP3R>  = converts<P3_32f<Forward, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_C3R>   = converts<C3_32f<Inverse, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_C3IR>  = converts<C3_32f<Inverse, F32>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_AC4R>  = converts<AC4_32f<Inverse, F64x2>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_AC4IR> = converts<AC4_32f<Inverse, F64x2>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_P3R>   = converts<P3_32f<Inverse, F64x2>, rangeFirst>;
template <> constexpr auto entry<moxiGammaInv_32f_IP3R>  = converts<P3_32f<Inverse, F64x2>, rangeFirst>;
// clang-format on

}  // namespace q4

#include "gamma.inc"
