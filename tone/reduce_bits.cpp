// Bit-depth reduction: rounding to a few levels, plainly, by ordered dither or by error diffusion.
#include "moxcc/reduce_bits.h"

#include "frame/entry.h"
#include "frame/fpenv.h"
#include "tone/error_diffusion.h"

namespace q4 {
namespace {

/// What a call asks for besides its pictures.
struct Request {
    int32_t noise;
    MoxDitherType type;
    int32_t levels;
    Mox8u* buffer;
};

// ---- rules ----------------------------------------------------------------------------------------------------------

/// Plain rounding, of values from 0 to 1.
template <class S, class D>
struct Nearest {
    static constexpr Mox32f scale = sizeof(S) == 1 ? 0.003921569f : 1.5259022e-5f;  // 1 / 255, 1 / 65535
    Levels levels;
    Mox32f half;

    template <class L, int C>
    MOX_INLINE Px<I32, C> operator()(const Px<L, C>& samples) const {
        Px<I32, C> results;
        for (int c = 0; c < C; ++c) {
            F32 value = Depth<S, D>::value(samples.c[c]);
            if constexpr (!Depth<S, D>::real) value = value * splat<F32>(scale);
            results.c[c] = Depth<Mox32f, D>::sample(levels.round(value, splat<F32>(half)).level);
        }
        return results;
    }
};

/// Ordered dither: all samples of a pixel share the threshold of its column.
template <class S, class D, bool plusHalf, class RowThresholds>
struct Ordered {
    Levels levels;
    RowThresholds thresholds;

    template <class L, int C, int laneStride>
    MOX_INLINE Px<I32, C> operator()(const Px<L, C>& samples, Columns<laneStride> columns) const {
        const F32 threshold = thresholds.at(columns);
        Px<I32, C> results;
        for (int c = 0; c < C; ++c) {
            const F32 value = Depth<S, D>::value(samples.c[c]);
            results.c[c] = Depth<S, D>::template sample<plusHalf>(levels.round(value, threshold).level);
        }
        return results;
    }
};

constexpr Mox32f bayer_thresh[4][4] = {{0 / 15.0f, 8 / 15.0f, 2 / 15.0f, 10 / 15.0f},
                                       {12 / 15.0f, 4 / 15.0f, 14 / 15.0f, 6 / 15.0f},
                                       {3 / 15.0f, 11 / 15.0f, 1 / 15.0f, 9 / 15.0f},
                                       {15 / 15.0f, 7 / 15.0f, 13 / 15.0f, 5 / 15.0f}};

/// The matrix row of a picture row, for the four columns of each lane.
MOX_INLINE F32 matrixRow(ptrdiff_t y) { return splatLane<F32>(load128(bayer_thresh[y % 4])); }

/// The thresholds of a row: the matrix's.
struct MatrixThresholds {
    F32 thresholds;

    template <int laneStride>
    MOX_INLINE F32 at(Columns<laneStride>) const {
        return thresholds;
    }
};

/// The thresholds of a row: the matrix's with noise.
struct NoisyThresholds {
    F32 matrix;
    Mox32f step;
    NoiseTables noise;
    ptrdiff_t y;

    template <int laneStride>
    MOX_INLINE F32 at(Columns<laneStride> columns) const {
        return (noise.at<laneStride>(columns.first, y) + matrix) * splat<F32>(step);
    }
};

// ---- kernels --------------------------------------------------------------------------------------------------------

/// How a form's destination is written: the fourth samples of AC4 may belong to another thread.
template <class Layout>
struct WrittenAs {
    using Type = Layout;
};
template <class T>
struct WrittenAs<AC4<T>> {
    using Type = ColoursOf4<T>;
};

template <class Src, class Dst>
using ownNo_QX = AllColumns<Src, typename WrittenAs<Dst>::Type,
                            On<typename Depth<typename Src::Sample, typename Dst::Sample>::Lane,
                               Nearest<typename Src::Sample, typename Dst::Sample>>>;

template <class Src, class Dst, bool plusHalf, class RowThresholds>
using innerReduceBits_bayer =
    AllColumns<Src, typename WrittenAs<Dst>::Type,
               On<typename Depth<typename Src::Sample, typename Dst::Sample>::Lane,
                  Ordered<typename Src::Sample, typename Dst::Sample, plusHalf, RowThresholds>>>;

// ---- methods --------------------------------------------------------------------------------------------------------

using From = Image<const uint8_t, 1>;
using To = Image<uint8_t, 1>;

template <class Src, class Dst, class S = typename Src::Sample, class D = typename Dst::Sample>
void ownNo(const From& src, const To& dst, MoxiSize size, int32_t levels) {
    const Nearest<S, D> rule = {Levels::over(1, levels), 0.5f / Mox32f(levels - 1)};
    if constexpr (Src::keepsOld) {
        eachRow(ownNo_QX<Src, Dst>{{rule}}, src, dst, size);
    } else {
        eachRow(Samples<Src::channels, ownNo_QX<C1<S>, C1<D>>>{{{rule}}}, src, dst, size);
    }
}

/// Rows by the thresholds that are made for each.
template <class Src, class Dst, bool plusHalf, class ThresholdsOf>
struct OrderedRows {
    Levels levels;
    ThresholdsOf thresholdsOf;

    void run(const From& src, const To& dst, MoxiSize size) const {
        for (ptrdiff_t y = 0; y < size.height; ++y) {
            const innerReduceBits_bayer<Src, Dst, plusHalf, decltype(thresholdsOf(y))> kernel = {
                {levels, thresholdsOf(y)}};
            kernel.row(src.row(y), dst.row(y), size.width);
        }
    }
};

template <class Src, class Dst, class S = typename Src::Sample, class D = typename Dst::Sample>
void ownReduceBits_bayer(const From& src, const To& dst, MoxiSize size, const Request& request) {
    const Levels levels = Levels::over(Depth<S, D>::full, request.levels);
    if (request.noise == 0) {
        const auto thresholdsOf = [&](ptrdiff_t y) { return MatrixThresholds{matrixRow(y) * splat<F32>(levels.step)}; };
        OrderedRows<Src, Dst, false, decltype(thresholdsOf)>{levels, thresholdsOf}.run(src, dst, size);
    } else {
        const Mox32f amplitude = Mox32f(request.noise) / 100;
        const NoiseTables noise = makeNoise(workspace(request.buffer), -amplitude, amplitude);
        const auto thresholdsOf = [&](ptrdiff_t y) { return NoisyThresholds{matrixRow(y), levels.step, noise, y}; };
        constexpr bool plusHalf = Depth<S, D>::addsHalf && Src::channels != 4;
        OrderedRows<Src, Dst, plusHalf, decltype(thresholdsOf)>{levels, thresholdsOf}.run(src, dst, size);
    }
}

/// Picks the threshold and the filter, and runs the rows of all channels.
template <class S, class D>
void ownReduceBits_diffused(const From& src, const To& dst, MoxiSize size, ptrdiff_t channels, ptrdiff_t stride,
                            const Request& request) {
    const Levels levels = Levels::over(Depth<S, D>::full, request.levels);
    const ptrdiff_t width = size.width, height = size.height;
    uint8_t* const space = workspace(request.buffer);
    Mox32f* const errors = reinterpret_cast<Mox32f*>(request.noise ? space + NoiseTables::bytes : space);
    std::fill(errors, errors + 2 * width, 0.0f);

    const auto with = [&]<class Threshold, class Filter>(const Threshold& threshold, const Filter& filter) {
        Diffusion<S, D, Filter, Threshold>{
            {reinterpret_cast<const S*>(src.base[0]), src.step[0] / ptrdiff_t(sizeof(S)), height},
            {reinterpret_cast<D*>(dst.base[0]), dst.step[0] / ptrdiff_t(sizeof(D)), height},
            width,
            channels * height,
            stride,
            levels,
            threshold,
            filter,
            errors,
            errors + width}
            .run();
    };
    const auto withFilter = [&](const auto& threshold) {
        using Filter = TwoRowFilter<S, D>;
        if (request.type == moxDitherFs)
            with(threshold, FloydSteinberg<S, D>{});
        else
            with(threshold, Filter{request.type == moxDitherJj ? Filter::jarvis : Filter::stucki});
    };
    if (request.noise == 0)
        withFilter(HalfStep{0.5f * levels.step});
    else
        withFilter(makeNoise(space, Mox32f(50 - request.noise) * levels.step / 100,
                             Mox32f(50 + request.noise) * levels.step / 100));
}

/// All that is done in floating point, which rounds to nearest and keeps denormals.
template <class Src, class Dst>
[[gnu::noinline]] void reduce(const From& src, const To& dst, MoxiSize size, const Request& request) {
    using S = typename Src::Sample;
    constexpr ptrdiff_t stride = Src::bytes(0, 1) / ptrdiff_t(sizeof(S));
    if (request.type == moxDitherNone)
        ownNo<Src, Dst>(src, dst, size, request.levels);
    else if (request.type == moxDitherBayer)
        ownReduceBits_bayer<Src, Dst>(src, dst, size, request);
    else
        ownReduceBits_diffused<S, typename Dst::Sample>(src, dst, size, Src::channels, stride, request);
}

bool isPercentage(int32_t noise) { return noise >= 0 && noise <= 100; }
bool isDitherType(MoxDitherType type) { return type >= moxDitherNone && type <= moxDitherBayer; }

template <class Src_, class Dst_>
struct Reduce {
    using Src = Src_;
    using Dst = Dst_;
    Request request;

    static Reduce of(int32_t noise, MoxDitherType type, int32_t levels, Mox8u* buffer) {
        return {{noise, type, levels, buffer}};
    }
    static MoxStatus check(int32_t noise, MoxDitherType type, int32_t levels, const Mox8u* buffer) {
        constexpr int32_t mostLevels = Depth<typename Src::Sample, typename Dst::Sample>::mostLevels;
        const bool usesBuffer = type != moxDitherNone && (type != moxDitherBayer || noise > 0);
        return firstOf(require([=] { return isPercentage(noise); }, moxStatusBadNoise),
                       require([=] { return levels >= 2 && levels <= mostLevels; }, moxStatusBadLevels),
                       require([=] { return isDitherType(type); }, moxStatusBadDitherType),
                       require([=] { return buffer || !usesBuffer; }, moxStatusNullPtr));
    }
    void picture(const From& src, const To& dst, MoxiSize size) const {
        const PlainArithmetic scope;
        reduce<Src, Dst>(src, dst, size, request);
    }
};

// ---- entries --------------------------------------------------------------------------------------------------------

constexpr Order valuesLast = {{Test::pointers, Test::size, Test::values}};

MoxStatus bufferSize(int32_t dataType, MoxiSize roiSize, int32_t noise, MoxDitherType ditherType, int32_t* bytes) {
    const auto isKnown = [=] {
        return dataType == moxDataType8u || dataType == moxDataType16u || dataType == moxDataType16s ||
               dataType == moxDataType32f;
    };
    if (MoxStatus s =
            firstOf(notNull(bytes), sizeAtLeast({roiSize.width, 1}, 1, 1), require(isKnown, moxStatusBadDataType),
                    require([=] { return isPercentage(noise); }, moxStatusBadNoise),
                    require([=] { return isDitherType(ditherType); }, moxStatusBadDitherType)))
        return s;
    // Per column and at the ends: rows of errors for one channel, with margins.
    static constexpr int64_t errorRows[][2] = {{0, 0}, {8, 16}, {12, 48}, {12, 48}, {0, 0}};
    // The tables, and two generators' states of 48 and 64 bytes: part of the size that callers were always told.
    constexpr int64_t noiseBytes = NoiseTables::bytes + 48 + 64;
    constexpr int64_t alignment = 64;
    int64_t size = errorRows[ditherType][0] * roiSize.width + errorRows[ditherType][1];
    if (ditherType != moxDitherNone && noise > 0) size += noiseBytes;
    if (size > 0) size += alignment;
    *bytes = int32_t(size);
    return moxStatusOk;
}

}  // namespace

// clang-format off
template <> constexpr auto entry<moxiReduceBitsGetBufferSize> = bufferSize;

template <> constexpr auto entry<moxiReduceBits_8u_C1R>      = converts<Reduce<C1<Mox8u>, C1<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_8u_C3R>      = converts<Reduce<C3<Mox8u>, C3<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_8u_C4R>      = converts<Reduce<C4<Mox8u>, C4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_8u_AC4R>     = converts<Reduce<AC4<Mox8u>, AC4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u_C1R>     = converts<Reduce<C1<Mox16u>, C1<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u_C3R>     = converts<Reduce<C3<Mox16u>, C3<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u_C4R>     = converts<Reduce<C4<Mox16u>, C4<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u_AC4R>    = converts<Reduce<AC4<Mox16u>, AC4<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s_C1R>     = converts<Reduce<C1<Mox16s>, C1<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s_C3R>     = converts<Reduce<C3<Mox16s>, C3<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s_C4R>     = converts<Reduce<C4<Mox16s>, C4<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s_AC4R>    = converts<Reduce<AC4<Mox16s>, AC4<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u8u_C1R>   = converts<Reduce<C1<Mox16u>, C1<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u8u_C3R>   = converts<Reduce<C3<Mox16u>, C3<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u8u_C4R>   = converts<Reduce<C4<Mox16u>, C4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16u8u_AC4R>  = converts<Reduce<AC4<Mox16u>, AC4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s8u_C1R>   = converts<Reduce<C1<Mox16s>, C1<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s8u_C3R>   = converts<Reduce<C3<Mox16s>, C3<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s8u_C4R>   = converts<Reduce<C4<Mox16s>, C4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_16s8u_AC4R>  = converts<Reduce<AC4<Mox16s>, AC4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f8u_C1R>   = converts<Reduce<C1<Mox32f>, C1<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f8u_C3R>   = converts<Reduce<C3<Mox32f>, C3<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f8u_C4R>   = converts<Reduce<C4<Mox32f>, C4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f8u_AC4R>  = converts<Reduce<AC4<Mox32f>, AC4<Mox8u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16u_C1R>  = converts<Reduce<C1<Mox32f>, C1<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16u_C3R>  = converts<Reduce<C3<Mox32f>, C3<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16u_C4R>  = converts<Reduce<C4<Mox32f>, C4<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16u_AC4R> = converts<Reduce<AC4<Mox32f>, AC4<Mox16u>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16s_C1R>  = converts<Reduce<C1<Mox32f>, C1<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16s_C3R>  = converts<Reduce<C3<Mox32f>, C3<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16s_C4R>  = converts<Reduce<C4<Mox32f>, C4<Mox16s>>, valuesLast>;
template <> constexpr auto entry<moxiReduceBits_32f16s_AC4R> = converts<Reduce<AC4<Mox32f>, AC4<Mox16s>>, valuesLast>;
// clang-format on

}  // namespace q4

#include "reduce_bits.inc"
