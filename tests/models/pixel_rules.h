// Conversions between interleaved images that follow one rule in body columns, those of whole groups of four, and
// another in the last columns of a row.
#ifndef MODELS_PIXEL_RULES_H
#define MODELS_PIXEL_RULES_H

#include <array>
#include <vector>

#include "support/support.h"

namespace moxtest {

enum class Columns { body, tail };
enum class Bgr { no, source, destination };

template <class S, class D = S>
struct Form {
    Export<MoxStatus(const S*, int32_t, D*, int32_t, MoxiSize)> function;
    int channels;
    std::array<D, 3> (*rule)(const S* pixel, Columns columns);
    Bgr bgr = Bgr::no;
    bool tailOnly = false;
};

template <class S, class D>
void applyRule(const Form<S, D>& form, const Plane<S>& src, Plane<D>& dst) {
    for (int y = 0; y < dst.rows(); ++y) {
        for (int x = 0; x < dst.columns(); ++x) {
            S pixel[3];
            for (int c = 0; c < 3; ++c) pixel[c] = src.get(x, y, form.bgr == Bgr::source ? 2 - c : c);
            const bool body = !form.tailOnly && x < dst.columns() / 4 * 4;
            const auto out = form.rule(pixel, body ? Columns::body : Columns::tail);
            for (int c = 0; c < 3; ++c) dst.set(x, y, form.bgr == Bgr::destination ? 2 - c : c, out[size_t(c)]);
        }
    }
}

/// In all rounding modes, on images that fill(Plane<S>&, Random&) fills. Fourth samples are to keep what they held.
template <class S, class D, class Fill>
void expectRule(const Form<S, D>& form, const Fill& fill) {
    for (const uint32_t control : mxcsr::roundings) {
        forEachSize(
            [&](MoxiSize roi, Random& random) {
                Plane<S> src(roi.width, roi.height, form.channels, random);
                Plane<D> want(roi.width, roi.height, form.channels, random);
                fill(src, random);
                const Plane<D> before = want;
                underMxcsr(control, [&] { applyRule(form, src, want); });
                src.protect();
                forEachLibrary([&](const Library& lib) {
                    Plane<D> got = before;
                    const MxcsrScope scope(control);
                    ASSERT_EQ(lib(form.function)(src.data(), src.step(), got.data(), got.step(), roi), moxStatusOk);
                    ASSERT_TRUE(same(got, want, Nan::anyNan)) << roundingName(control);
                });
            },
            1, 37);
    }
}

/// Every pixel that three bytes can hold, in body columns.
template <class D>
void expectAllColours(const Form<Mox8u, D>& form) {
    constexpr int width = 4096, colours = 1 << 24;
    std::vector<Mox8u> src(size_t{colours} * 3);
    for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<Mox8u>(i / 3 >> (16 - 8 * (i % 3)));
    forEachLibrary([&](const Library& lib) {
        std::vector<D> got(src.size());
        lib(form.function)(src.data(), 3 * width, got.data(), 3 * width * int(sizeof(D)), {width, colours / width});
        for (size_t i = 0; i < src.size(); i += 3) {
            const auto want = form.rule(&src[i], Columns::body);
            ASSERT_TRUE(std::equal(want.begin(), want.end(), &got[i])) << "colour " << i / 3;
        }
    });
}

// ---- fills ----

/// Integers: black and samples near it as often as others, and pixels without colour.
template <class T>
void fillIntegers(Plane<T>& plane, Random& random) {
    using L = std::numeric_limits<T>;
    const int mode = static_cast<int>(random.between(0, 3));
    const auto sample = [&]() -> T {
        if (mode == 0 || (mode == 1 && random.oneIn(2))) return random.sample<T>();
        return static_cast<T>(L::min() + random.between(0, sizeof(T) == 1 ? 24 : 1500));
    };
    for (int y = 0; y < plane.rows(); ++y) {
        for (int x = 0; x < plane.columns(); ++x) {
            const T gray = random.oneIn(3) ? L::min() : random.sample<T>();
            for (int c = 0; c < 3; ++c) plane.set(x, y, c, mode == 3 ? gray : sample());
        }
    }
}

/// Floats from 0 to 1, or to where colours turn dark.
template <class T>
void fillUnit(Plane<T>& plane, Random& random) {
    const T limit = random.oneIn(3) ? T(0.03) : T(1);
    plane.fill([&] { return random.oneIn(10) ? T(0) : random.uniform(T(0), limit); });
}

template <class T>
void fillWithAnything(Plane<T>& plane, Random& random) {
    plane.fill([&] {
        return random.oneIn(3)   ? random.special<T>()
               : random.oneIn(2) ? random.anyBits<T>()
                                 : random.uniform(T(-2), T(2));
    });
}

}  // namespace moxtest

#endif
