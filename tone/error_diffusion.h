// Error diffusion, several rows at a time.
//
// A sample waits for the errors of its left neighbour and of the row above up to two columns to its right. So the rows
// of a picture can be worked on as a wave: each element of a vector does a row of its own, three columns behind the row
// above. A sample's sum has the same terms in the same order as row by row.
#pragma once

#include <algorithm>

#include "simd/control.h"
#include "tone/dither.h"
#include "tone/noise.h"

namespace q4 {

/// The errors around a sample: of columns x - 2 to x + 2 in the two rows above, of x - 2 and x - 1 in its own.
struct ErrorsAround {
    F32 above2[5], above[5], left[2];
};

/// Weights 7 3 5 1 over 16, for one row above.
template <class S, class D>
struct FloydSteinberg {
    using Depth = q4::Depth<S, D>;
    static constexpr bool plusHalf = Depth::addsHalf;
    /// Lower values give the least sample and leave no error.
    static constexpr Mox32f bottom = Depth::real ? 0x1p-23f : 0;

    MOX_INLINE F32 sum(const ErrorsAround& e) const {
        const auto weigh = [](int weight, F32 error) { return splat<F32>(Mox32f(weight)) * error; };
        const F32 right = weigh(3, e.above[3]), centre = weigh(5, e.above[2]), left = e.above[1];
        const F32 above = Depth::addsHalf ? (right + centre) + left : (right + left) + centre;
        return (above + weigh(7, e.left[1])) * splat<F32>(0.0625f);
    }
};

/// Weights over two rows above; they are symmetric, so that each row has three.
template <class S, class D>
struct TwoRowFilter {
    static constexpr bool plusHalf = false;
    static constexpr Mox32f bottom = 0;

    struct Weights {
        Mox32f above2[3], above[3], left[2], factor;
    };
    static constexpr Weights jarvis = {{1, 3, 5}, {3, 5, 7}, {5, 7}, 0.020833334f};
    static constexpr Weights stucki = {{1, 2, 4}, {2, 4, 8}, {4, 8}, 0.023809524f};
    Weights weights;

    MOX_INLINE F32 sum(const ErrorsAround& e) const {
        const auto both = [&](int column, int weight) {
            return splat<F32>(weights.above2[weight]) * e.above2[column] +
                   splat<F32>(weights.above[weight]) * e.above[column];
        };
        const auto left = [&](int column) { return splat<F32>(weights.left[column]) * e.left[column]; };
        const F32 s0 = both(0, 0) + left(0), s1 = both(1, 1) + left(1), s2 = both(2, 2), s3 = both(3, 1);
        const F32 sum = ((s0 + s2) + (s1 + s3)) + splat<F32>(weights.above2[0]) * e.above2[4];
        return (sum + splat<F32>(weights.above[0]) * e.above[4]) * splat<F32>(weights.factor);
    }
};

/// All rows of the first channel, then all of the second, and so on: errors run on from a channel's last rows to the
/// next one's first.
template <class T>
struct ChannelRows {
    T* base;
    ptrdiff_t step;    // samples
    ptrdiff_t height;  // of the picture

    T* row(ptrdiff_t i) const { return base + i / height + i % height * step; }
};

/// The threshold of rounding without noise.
struct HalfStep {
    Mox32f half;
};

template <class S, class D, class Filter, class Threshold>
struct Diffusion {
    using Depth = q4::Depth<S, D>;
    static constexpr int waveRows = F32::count;
    static constexpr int lag = 3;
    static constexpr int span = lag * (waveRows - 1);  // columns from the first row of a wave to the last

    ChannelRows<const S> src;
    ChannelRows<D> dst;
    ptrdiff_t width, rows, stride;  // rows of all channels; samples from pixel to pixel
    Levels levels;
    Threshold threshold;
    Filter filter;
    /// Errors of the last row but one and of the last row of the wave before: width entries each, zeros at first. The
    /// wave writes its own behind those it reads.
    Mox32f* above2;
    Mox32f* above;

    void run() const {
        for (ptrdiff_t top = 0; top < rows; top += waveRows) wave(top);
    }

  private:
    struct Rows {
        const S* src[waveRows];  // a row's sample of step 0 of the wave: columns that may lie before the row
        D* dst[waveRows];
        ptrdiff_t y[waveRows];
        int count;
    };

    void wave(ptrdiff_t top) const {
        Rows rowsOf = {};
        rowsOf.count = int(std::min<ptrdiff_t>(waveRows, rows - top));
        for (int r = 0; r < rowsOf.count; ++r) {
            rowsOf.src[r] = src.row(top + r) - r * lag * stride;
            rowsOf.dst[r] = dst.row(top + r) - r * lag * stride;
            rowsOf.y[r] = (top + r) % src.height;
        }
        ErrorsAround errors = {};
        for (int i = 0; i < 2; ++i) {  // of columns 0 and 1, which step 0 finds one place ahead
            const bool in = i < width;
            errors.above[3 + i] = pushFirst(in ? above[i] : 0, zero<F32>());
            errors.above2[3 + i] = pushFirst(in ? above2[i] : 0, zero<F32>());
        }
        const ptrdiff_t end = width + span;
        const ptrdiff_t inner = rowsOf.count == waveRows && width > span + 2 ? span : end;
        ptrdiff_t s = 0;
        for (; s < inner; ++s) step<true>(s, rowsOf, errors);
        for (; s < width - 2; ++s) step<false>(s, rowsOf, errors);
        for (; s < end; ++s) step<true>(s, rowsOf, errors);
    }

    /// One sample of every row; in `edges` of the picture, of those rows that have one.
    template <bool edges>
    MOX_INLINE void step(ptrdiff_t s, const Rows& rowsOf, ErrorsAround& errors) const {
        const auto inside = [&](int r) {
            const ptrdiff_t x = s - r * lag;
            return !edges || (r < rowsOf.count && x >= 0 && x < width);
        };
        advance(errors.above2, pushFirst(!edges || s + 2 < width ? above2[s + 2] : 0, errors.above[2]));
        advance(errors.above, pushFirst(!edges || s + 2 < width ? above[s + 2] : 0, errors.left[1]));

        const ptrdiff_t at = s * stride;
        using Lane = typename Depth::Lane;
        const Lane samples = fromElements<Lane>([&](int r) { return inside(r) ? rowsOf.src[r][at] : S(0); });
        const F32 value = Depth::value(samples) + filter.sum(errors);

        const F32 high = le(splat<F32>(Depth::full), value), low = lt(value, splat<F32>(filter.bottom));
        const auto rounded = levels.round(value, thresholds(s, rowsOf));
        const I32 least = splat<I32>(-Depth::dstBias), most = splat<I32>(Depth::mostLevels - 1 - Depth::dstBias);
        const I32 level = Depth::template sample<Filter::plusHalf>(rounded.level);
        const I32 result = select(as<I32>(high), most, select(as<I32>(low), least, level));
        F32 error = andNot(high | low, rounded.error);
        if constexpr (edges) error = error & as<F32>(fromElements<I32>([&](int r) { return inside(r) ? -1 : 0; }));
        advance(errors.left, error);

        alignas(vectorBytes) int32_t results[waveRows];
        alignas(vectorBytes) Mox32f lastErrors[waveRows];
        store(results, result);
        store(lastErrors, error);
        for (int r = 0; r < waveRows; ++r)
            if (inside(r)) rowsOf.dst[r][at] = D(results[r]);
        if (inside(waveRows - 2)) above2[s - span + lag] = lastErrors[waveRows - 2];
        if (inside(waveRows - 1)) above[s - span] = lastErrors[waveRows - 1];
    }

    /// Moves on by a column.
    template <int n>
    MOX_INLINE static void advance(F32 (&line)[n], F32 next) {
        for (int i = 0; i + 1 < n; ++i) line[i] = line[i + 1];
        line[n - 1] = next;
    }

    MOX_INLINE F32 thresholds(ptrdiff_t s, const Rows& rowsOf) const {
        if constexpr (std::is_same_v<Threshold, HalfStep>)
            return splat<F32>(threshold.half);
        else
            return fromElements<F32>([&](int r) { return threshold.at(s - r * lag, rowsOf.y[r]); });
    }
};

}  // namespace q4
