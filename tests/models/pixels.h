// Conversions of pixels one by one against plain code, for the hue models, whose columns follow rules of their own.
#ifndef MODELS_PIXELS_H
#define MODELS_PIXELS_H

#include <immintrin.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "support/support.h"

namespace moxtest {

template <class T>
using Pixel = std::array<T, 3>;

/// What the pixel at column x of a row of some width becomes; samples in the order of memory.
template <class T>
using PixelRule = std::function<Pixel<T>(const Pixel<T>&, int x, int width)>;

// Operations of the definitions, in the rounding mode of the moment.
inline float rcp(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
inline float rcp2(float x) {
    const float r = rcp(x);
    return (r + r) - ((x * r) * r);
}
inline int nearest(float x) { return _mm_cvtss_si32(_mm_set_ss(x)); }
inline int truncate(float x) { return _mm_cvttss_si32(_mm_set_ss(x)); }

/// A sample on or beside the values at which hue models change their ways: the ends, the middle, the sixths.
template <class T>
T hueSample(Random& random) {
    const int sixths = static_cast<int>(random.between(0, 6));
    if constexpr (std::is_floating_point_v<T>) {
        if (random.oneIn(2)) return random.uniform<T>(T(-0.1), T(1.1));
        if (random.oneIn(8)) return random.special<T>();
        return static_cast<T>(sixths) / 6 + random.oneOf<T>({0, -1, 1, 2}) * std::numeric_limits<T>::epsilon();
    } else {
        if (random.oneIn(2)) return static_cast<T>(random.bits());
        const int64_t top = std::numeric_limits<std::make_unsigned_t<T>>::max();
        return static_cast<T>(std::numeric_limits<T>::min() + top * sixths / 6 + random.between(-1, 1));
    }
}

/// One side of a conversion: interleaved samples in one plane, or a plane a channel, all planes with the same step.
template <class T>
class Side {
  public:
    Side(MoxiSize size, int channels, bool planar, bool anyStep, Random& random) {
        Layout layout = Layout::random(random, sizeof(T));
        if (!anyStep) layout.bottomUp = false;
        planes_.reserve(4);
        for (int i = 0; i < (planar ? channels : 1); ++i)
            planes_.emplace_back(size.width, size.height, planar ? 1 : channels, layout, random);
    }

    /// Hues of all kinds, among them grays and pixels of which two channels agree.
    void fill(MoxiSize size, Random& random) {
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                for (int c = 0; c < 3; ++c) {
                    const bool copy = c > 0 && random.oneIn(4);
                    set(x, y, c, copy ? get(x, y, static_cast<int>(random.between(0, c - 1))) : hueSample<T>(random));
                }
            }
        }
    }

    T get(int x, int y, int c) const { return planar() ? planes_[size_t(c)].get(x, y) : planes_[0].get(x, y, c); }
    void set(int x, int y, int c, T value) {
        planar() ? planes_[size_t(c)].set(x, y, value) : planes_[0].set(x, y, c, value);
    }

    std::vector<Plane<T>>& planes() { return planes_; }
    int32_t step() const { return planes_[0].step(); }

    /// The side as an argument: the samples, or the addresses of the planes' samples.
    template <class Argument>
    Argument as() {
        if constexpr (std::is_pointer_v<std::remove_pointer_t<Argument>>) {
            for (size_t i = 0; i < planes_.size(); ++i) addresses_[i] = planes_[i].data();
            return addresses_;
        } else {
            return planes_[0].data();
        }
    }

  private:
    bool planar() const { return planes_.size() > 1; }

    std::vector<Plane<T>> planes_;
    T* addresses_[4] = {};
};

template <class Argument>
inline constexpr bool isPlanar = std::is_pointer_v<std::remove_pointer_t<Argument>>;

struct PixelForm {
    int channels;              // 3, or 4 with alpha
    bool copiesAlpha = false;  // else the destination's alpha stays
    bool anyStep = true;
};

/// Compares an export with a rule, at all widths around the limits and in all rounding modes.
template <class T, class S, class D>
void expectPixels(Export<MoxStatus(S, int32_t, D, int32_t, MoxiSize)> function, PixelForm form,
                  const PixelRule<T>& rule) {
    for (const uint32_t control : mxcsr::roundings) {
        forEachSize(
            [&](MoxiSize roi, Random& random) {
                Side<T> src(roi, form.channels, isPlanar<S>, form.anyStep, random);
                Side<T> want(roi, form.channels, isPlanar<D>, form.anyStep, random);
                src.fill(roi, random);
                Side<T> before = want;
                underMxcsr(control, [&] {
                    for (int y = 0; y < roi.height; ++y) {
                        for (int x = 0; x < roi.width; ++x) {
                            const Pixel<T> out =
                                rule({src.get(x, y, 0), src.get(x, y, 1), src.get(x, y, 2)}, x, roi.width);
                            for (int c = 0; c < 3; ++c) want.set(x, y, c, out[size_t(c)]);
                            if (form.copiesAlpha) want.set(x, y, 3, src.get(x, y, 3));
                        }
                    }
                });
                for (Plane<T>& plane : src.planes()) plane.protect();
                forEachLibrary([&](const Library& lib) {
                    Side<T> got = before;
                    {
                        const MxcsrScope scope(control);
                        ASSERT_EQ(
                            lib(function)(src.template as<S>(), src.step(), got.template as<D>(), got.step(), roi),
                            moxStatusOk);
                    }
                    for (size_t i = 0; i < got.planes().size(); ++i)
                        ASSERT_TRUE(same(got.planes()[i], want.planes()[i], Nan::anyNan))
                            << "plane " << i << ", " << roundingName(control);
                });
            },
            1, 40);
    }
}

/// Compares an export with a rule for all 2^24 pixels of 8u samples, in columns of vector groups.
inline void expectAllPixels(Export<MoxStatus(const Mox8u*, int32_t, Mox8u*, int32_t, MoxiSize)> function,
                            const PixelRule<Mox8u>& rule) {
    constexpr int n = 256;
    std::vector<Mox8u> src(n * n * 3), want(n * n * 3), got(n * n * 3);
    for (int first = 0; first < n && !::testing::Test::HasFailure(); ++first) {
        for (int i = 0; i < n * n; ++i) {
            const Pixel<Mox8u> in = {static_cast<Mox8u>(first), static_cast<Mox8u>(i / n), static_cast<Mox8u>(i % n)};
            const Pixel<Mox8u> out = rule(in, 0, n);
            for (int c = 0; c < 3; ++c)
                src[size_t(3 * i + c)] = in[size_t(c)], want[size_t(3 * i + c)] = out[size_t(c)];
        }
        forEachLibrary([&](const Library& lib) {
            ASSERT_EQ(lib(function)(src.data(), 3 * n, got.data(), 3 * n, {n, n}), moxStatusOk);
            ASSERT_TRUE(got == want) << describe(lastCall()) << ": first sample " << first;
        });
    }
}

}  // namespace moxtest

#endif
