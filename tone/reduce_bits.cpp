// Bit-depth reduction: rounding to a few levels, plainly, by ordered dither or by error diffusion.
#include "moxcc/reduce_bits.h"

#include "frame/checks.h"
#include "frame/fpenv.h"
#include "tone/error_diffusion.h"

namespace q4 {
namespace {

/// What a call asks for besides its images.
struct Request {
    MoxiSize size;
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

template <class Src, class Dst, class S, class D>
void ownNo(const S* src, int32_t srcStep, D* dst, int32_t dstStep, const Request& request) {
    const Mox32f last = Mox32f(request.levels - 1);
    const Nearest<S, D> rule = {Levels::over(1, request.levels), 0.5f / last};
    MoxiSize size = request.size;
    if constexpr (Src::keepsOld) {
        eachRow(ownNo_QX<Src, Dst>{{rule}}, image(src, srcStep), image(dst, dstStep), size);
    } else {  // a row is one run of samples
        const ptrdiff_t width = ptrdiff_t(size.width) * Src::channels;
        for (ptrdiff_t y = 0; y < size.height; ++y)
            ownNo_QX<C1<S>, C1<D>>{{rule}}.row(image(src, srcStep).row(y), image(dst, dstStep).row(y), width);
    }
}

template <class Src, class Dst, class S, class D>
void ownReduceBits_bayer(const S* src, int32_t srcStep, D* dst, int32_t dstStep, const Request& request) {
    const Levels levels = Levels::over(Depth<S, D>::full, request.levels);
    const auto eachRowWith = [&]<bool plusHalf, class RowThresholds>(const auto& thresholdsOf) {
        for (ptrdiff_t y = 0; y < request.size.height; ++y) {
            const innerReduceBits_bayer<Src, Dst, plusHalf, RowThresholds> kernel = {{levels, thresholdsOf(y)}};
            kernel.row(image(src, srcStep).row(y), image(dst, dstStep).row(y), request.size.width);
        }
    };
    if (request.noise == 0) {
        eachRowWith.template operator()<false, MatrixThresholds>(
            [&](ptrdiff_t y) { return MatrixThresholds{matrixRow(y) * splat<F32>(levels.step)}; });
    } else {
        const Mox32f amplitude = Mox32f(request.noise) / 100;
        const NoiseTables noise = makeNoise(workspace(request.buffer), -amplitude, amplitude);
        eachRowWith.template operator()<Depth<S, D>::addsHalf && Src::channels != 4, NoisyThresholds>([&](ptrdiff_t y) {
            return NoisyThresholds{matrixRow(y), levels.step, noise, y};
        });
    }
}

/// Picks the threshold and the filter, and runs the rows of all channels.
template <class S, class D>
void ownReduceBits_diffused(const S* src, int32_t srcStep, D* dst, int32_t dstStep, ptrdiff_t channels,
                            ptrdiff_t stride, const Request& request) {
    const Levels levels = Levels::over(Depth<S, D>::full, request.levels);
    const ptrdiff_t width = request.size.width, height = request.size.height;
    uint8_t* const space = workspace(request.buffer);
    Mox32f* const errors = reinterpret_cast<Mox32f*>(request.noise ? space + NoiseTables::bytes : space);
    std::fill(errors, errors + 2 * width, 0.0f);

    const auto with = [&](const auto& threshold, const auto& filter) {
        Diffusion<S, D, std::decay_t<decltype(filter)>, std::decay_t<decltype(threshold)>>{
            {src, srcStep / ptrdiff_t(sizeof(S)), height},
            {dst, dstStep / ptrdiff_t(sizeof(D)), height},
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
        using TwoRows = TwoRowFilter<S, D>;
        if (request.type == moxDitherFs)
            with(threshold, FloydSteinberg<S, D>{});
        else
            with(threshold, TwoRows{request.type == moxDitherJj ? TwoRows::jarvis : TwoRows::stucki});
    };
    if (request.noise == 0)
        withFilter(HalfStep{0.5f * levels.step});
    else
        withFilter(makeNoise(space, Mox32f(50 - request.noise) * levels.step / 100,
                             Mox32f(50 + request.noise) * levels.step / 100));
}

/// All that is done in floating point, which rounds to nearest and keeps denormals.
template <class Src, class Dst, class S, class D>
[[gnu::noinline]] void reduce(const S* src, int32_t srcStep, D* dst, int32_t dstStep, const Request& request) {
    constexpr ptrdiff_t stride = Src::bytes(0, 1) / ptrdiff_t(sizeof(S));
    if (request.type == moxDitherNone)
        ownNo<Src, Dst>(src, srcStep, dst, dstStep, request);
    else if (request.type == moxDitherBayer)
        ownReduceBits_bayer<Src, Dst>(src, srcStep, dst, dstStep, request);
    else
        ownReduceBits_diffused(src, srcStep, dst, dstStep, Src::channels, stride, request);
}

// ---- entries --------------------------------------------------------------------------------------------------------

bool percentage(int32_t noise) { return noise >= 0 && noise <= 100; }

template <template <class> class Form, class S, class D>
MoxStatus reduceBits(const S* src, int32_t srcStep, D* dst, int32_t dstStep, const Request& r) {
    const auto usesBuffer = [&] { return r.type != moxDitherNone && (r.type != moxDitherBayer || r.noise > 0); };
    if (MoxStatus s = firstOf(
            notNull(src, dst), sizeAtLeast(r.size, 1, 1),
            require([&] { return percentage(r.noise); }, moxStatusBadNoise),
            require([&] { return r.levels >= 2 && r.levels <= Depth<S, D>::mostLevels; }, moxStatusBadLevels),
            require([&] { return r.type >= moxDitherNone && r.type <= moxDitherBayer; }, moxStatusBadDitherType),
            require([&] { return r.buffer || !usesBuffer(); }, moxStatusNullPtr)))
        return s;
    const PlainArithmetic scope;
    reduce<Form<S>, Form<D>>(src, srcStep, dst, dstStep, r);
    return moxStatusOk;
}

}  // namespace
}  // namespace q4

using namespace q4;

MoxStatus moxiReduceBitsGetBufferSize(int32_t dataType, MoxiSize roiSize, int32_t noise, MoxDitherType ditherType,
                                      int32_t* bufferSize) {
    if (MoxStatus s = firstOf(notNull(bufferSize), sizeAtLeast({roiSize.width, 1}, 1, 1),
                              require([=] { return dataType == 1 || dataType == 3 || dataType == 4 || dataType == 9; },
                                      moxStatusBadDataType),
                              require([=] { return percentage(noise); }, moxStatusBadNoise),
                              require([=] { return ditherType >= moxDitherNone && ditherType <= moxDitherBayer; },
                                      moxStatusBadDitherType)))
        return s;
    // Per column and at the ends: rows of errors for one channel, with margins.
    static constexpr int64_t errorRows[][2] = {{0, 0}, {8, 16}, {12, 48}, {12, 48}, {0, 0}};
    // The tables, and the generators' states in units of 16.
    constexpr int64_t noiseBytes = NoiseTables::bytes + (sizeof(MoxRandUniformState16s) + 15) / 16 * 16 +
                                   (sizeof(MoxRandUniformState32f) + 15) / 16 * 16;
    constexpr int64_t alignment = 64;
    int64_t bytes = errorRows[ditherType][0] * roiSize.width + errorRows[ditherType][1];
    if (ditherType != moxDitherNone && noise > 0) bytes += noiseBytes;
    if (bytes > 0) bytes += alignment;
    *bufferSize = int32_t(bytes);
    return moxStatusOk;
}

MoxStatus moxiReduceBits_8u_C1R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_8u_C3R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_8u_C4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_8u_AC4R(const Mox8u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u_C1R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u_C3R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u_C4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u_AC4R(const Mox16u* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                  int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s_C1R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s_C3R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s_C4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                 int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s_AC4R(const Mox16s* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                  int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u8u_C1R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u8u_C3R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u8u_C4R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16u8u_AC4R(const Mox16u* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s8u_C1R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s8u_C3R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s8u_C4R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_16s8u_AC4R(const Mox16s* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f8u_C1R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f8u_C3R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f8u_C4R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                   int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f8u_AC4R(const Mox32f* src, int32_t srcStep, Mox8u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16u_C1R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16u_C3R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16u_C4R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16u_AC4R(const Mox32f* src, int32_t srcStep, Mox16u* dst, int32_t dstStep, MoxiSize roiSize,
                                     int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16s_C1R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C1>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16s_C3R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C3>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16s_C4R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                    int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<C4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
MoxStatus moxiReduceBits_32f16s_AC4R(const Mox32f* src, int32_t srcStep, Mox16s* dst, int32_t dstStep, MoxiSize roiSize,
                                     int32_t noise, MoxDitherType ditherType, int32_t levels, Mox8u* buffer) {
    return reduceBits<AC4>(src, srcStep, dst, dstStep, {roiSize, noise, ditherType, levels, buffer});
}
