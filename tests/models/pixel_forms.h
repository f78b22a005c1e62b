// Conversions of pixels one by one, from C3R to C3R or from AC4R to AC4R, against a plain rule.
#pragma once

#include "support/support.h"

namespace moxtest {

/// What a form makes of the colour samples of one pixel, in a vector column of the row or in one of the last.
template <class T>
using PixelRule = void (*)(const T* in, T* out, bool vectorColumn);

/// Compares a form with its rule in all rounding modes. Vector columns are those below the width
/// rounded down to a multiple of `group`; a fourth channel must stay as it was. Floats are mostly -0.5 to 1.5.
template <class T, class Function>
void expectPixelForm(int channels, int group, PixelRule<T> rule, Export<Function> function) {
    for (const uint32_t control : mxcsr::roundings)
        forEachSize([&](MoxiSize roi, Random& random) {
            Plane<T> src(roi.width, roi.height, channels, random), want(roi.width, roi.height, channels, random);
            if constexpr (std::is_floating_point_v<T>)
                src.fill([&] { return random.oneIn(9) ? random.special<T>() : random.uniform(T(-0.5), T(1.5)); });
            const Plane<T> before = want;
            underMxcsr(control, [&] {
                for (int y = 0; y < roi.height; ++y)
                    for (int x = 0; x < roi.width; ++x) {
                        const T in[3] = {src.get(x, y, 0), src.get(x, y, 1), src.get(x, y, 2)};
                        T out[3];
                        rule(in, out, x < roi.width / group * group);
                        for (int c = 0; c < 3; ++c) want.set(x, y, c, out[c]);
                    }
            });
            src.protect();
            forEachLibrary([&](const Library& lib) {
                Plane<T> got = before;
                const MxcsrScope scope(control);
                ASSERT_EQ(lib(function)(src.data(), src.step(), got.data(), got.step(), roi), moxStatusOk);
                ASSERT_TRUE(same(got, want, Nan::anyNan));
            });
        });
}

}  // namespace moxtest
