// Colour twist against plain code, out of place and in place.
#include "moxcc/twist.h"

#include <cmath>

#include "support/support.h"

using namespace moxtest;

namespace {

/// The result for output channel i; float samples as they come, integers limited and rounded to the even neighbour.
template <class T>
T twisted(const T* c, const Mox32f* twist, int i, bool fourChannels) {
    const Mox32f* t = twist + 4 * i;
    const auto f = [&](int k) { return static_cast<float>(c[k]); };
    float sum;
    if (fourChannels) {
        sum = ((f(0) * t[0] + f(1) * t[1]) + f(2) * t[2]) + f(3) * t[3];
    } else {
        const float a = t[3] + f(0) * t[0], b = f(2) * t[2] + f(1) * t[1];
        sum = a + b;
    }
    if constexpr (std::is_floating_point_v<T>) {
        return sum;
    } else {
        const float top = std::numeric_limits<T>::max(), bottom = std::numeric_limits<T>::min();
        sum = sum < top ? sum : top;
        sum = sum > bottom ? sum : bottom;
        return static_cast<T>(lrintf(sum));
    }
}

const std::vector<std::vector<Mox32f>> matrices = {
    {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1},
    {0.5f, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 0.5f},
    {0.299f, 0.587f, 0.114f, 3.3f, -0.17f, -0.33f, 0.5f, 128, 0.5f, -0.42f, -0.08f, 128, 0.1f, 0.2f, 0.3f, 0.4f},
    {300, -7, 1e5f, 1e9f, -300, 2, 0, -4e4f, NAN, 0, 0, 0, 1, 1, 1, INFINITY},
};

/// A picture as a form takes it: interleaved, or three planes with one step.
template <class T>
struct Picture {
    std::vector<Plane<T>> planes;
    bool planar;

    Picture(MoxiSize roi, int channels, bool isPlanar, Random& random) : planar(isPlanar) {
        Layout layout = Layout::random(random, sizeof(T));
        layout.bottomUp = false;  // steps are at least 1
        planes.reserve(3);
        for (int i = 0; i < (planar ? 3 : 1); ++i)
            planes.emplace_back(roi.width, roi.height, planar ? 1 : channels, layout, random);
        if constexpr (std::is_floating_point_v<T>)
            for (Plane<T>& plane : planes)
                plane.fill([&] { return random.oneIn(9) ? random.special<T>() : random.uniform(T(-2), T(2)); });
    }
    T get(int x, int y, int c) const { return planar ? planes[size_t(c)].get(x, y) : planes[0].get(x, y, c); }
    void set(int x, int y, int c, T v) { planar ? planes[size_t(c)].set(x, y, v) : planes[0].set(x, y, c, v); }
    int32_t step() const { return planes[0].step(); }
    std::vector<T*> pointers() const {
        std::vector<T*> p;
        for (const Plane<T>& plane : planes) p.push_back(plane.data());
        return p;
    }
};

template <class T>
void expectSame(const Picture<T>& got, const Picture<T>& want) {
    for (size_t i = 0; i < got.planes.size(); ++i) ASSERT_TRUE(same(got.planes[i], want.planes[i], Nan::anyNan));
}

/// Integer forms round to nearest in any mode, float forms follow the caller's.
template <class T, class Out, class In>
void expectTwist(int channels, bool planar, int mapped, Symbol<Out> outOfPlace, Symbol<In> inPlace,
                 bool hasInPlace = true) {
    for (const uint32_t control : mxcsr::roundings)
        for (const std::vector<Mox32f>& matrix : matrices)
            forEachSize(
                [&](MoxiSize roi, Random& random) {
                    const Picture<T> src(roi, channels, planar, random);
                    const Picture<T> before(roi, channels, planar, random);
                    Picture<T> want = before, wantInPlace = src;
                    underMxcsr(std::is_floating_point_v<T> ? control : mxcsr::usual, [&] {
                        for (int y = 0; y < roi.height; ++y)
                            for (int x = 0; x < roi.width; ++x) {
                                T in[4] = {};
                                for (int c = 0; c < mapped; ++c) in[c] = src.get(x, y, c);
                                for (int c = 0; c < mapped; ++c) {
                                    const T out = twisted(in, matrix.data(), c, mapped == 4);
                                    want.set(x, y, c, out), wantInPlace.set(x, y, c, out);
                                }
                            }
                    });
                    forEachLibrary([&](const Library& lib) {
                        Picture<T> got = before, gotInPlace = src;
                        const MxcsrScope scope(control);
                        if constexpr (requires(const T* s, T* d) { lib(outOfPlace)(s, 0, d, 0, roi, matrix.data()); }) {
                            ASSERT_EQ(lib(outOfPlace)(src.pointers()[0], src.step(), got.pointers()[0], got.step(), roi,
                                                      matrix.data()),
                                      moxStatusOk);
                            if (hasInPlace) {
                                ASSERT_EQ(lib(inPlace)(gotInPlace.pointers()[0], gotInPlace.step(), roi, matrix.data()),
                                          moxStatusOk);
                            }
                        } else {
                            const auto from = src.pointers(), to = got.pointers(), both = gotInPlace.pointers();
                            ASSERT_EQ(
                                lib(outOfPlace)(from.data(), src.step(), to.data(), got.step(), roi, matrix.data()),
                                moxStatusOk);
                            ASSERT_EQ(lib(inPlace)(both.data(), gotInPlace.step(), roi, matrix.data()), moxStatusOk);
                        }
                        expectSame(got, want);
                        if (hasInPlace) expectSame(gotInPlace, wantInPlace);
                    });
                },
                1, 40);
}

TEST(ColorTwist, EightBit) {
    expectTwist<Mox8u>(3, false, 3, MOX_EXPORT(moxiColorTwist32f_8u_C3R), MOX_EXPORT(moxiColorTwist32f_8u_C3IR));
    expectTwist<Mox8u>(4, false, 3, MOX_EXPORT(moxiColorTwist32f_8u_AC4R), MOX_EXPORT(moxiColorTwist32f_8u_AC4IR));
    expectTwist<Mox8u>(3, true, 3, MOX_EXPORT(moxiColorTwist32f_8u_P3R), MOX_EXPORT(moxiColorTwist32f_8u_IP3R));
}

TEST(ColorTwist, SixteenBit) {
    expectTwist<Mox16u>(3, false, 3, MOX_EXPORT(moxiColorTwist32f_16u_C3R), MOX_EXPORT(moxiColorTwist32f_16u_C3IR));
    expectTwist<Mox16u>(4, false, 3, MOX_EXPORT(moxiColorTwist32f_16u_AC4R), MOX_EXPORT(moxiColorTwist32f_16u_AC4IR));
    expectTwist<Mox16u>(3, true, 3, MOX_EXPORT(moxiColorTwist32f_16u_P3R), MOX_EXPORT(moxiColorTwist32f_16u_IP3R));
    expectTwist<Mox16s>(3, false, 3, MOX_EXPORT(moxiColorTwist32f_16s_C3R), MOX_EXPORT(moxiColorTwist32f_16s_C3IR));
    expectTwist<Mox16s>(4, false, 3, MOX_EXPORT(moxiColorTwist32f_16s_AC4R), MOX_EXPORT(moxiColorTwist32f_16s_AC4IR));
    expectTwist<Mox16s>(3, true, 3, MOX_EXPORT(moxiColorTwist32f_16s_P3R), MOX_EXPORT(moxiColorTwist32f_16s_IP3R));
}

TEST(ColorTwist, Float) {
    expectTwist<Mox32f>(3, false, 3, MOX_EXPORT(moxiColorTwist_32f_C3R), MOX_EXPORT(moxiColorTwist_32f_C3IR));
    expectTwist<Mox32f>(4, false, 3, MOX_EXPORT(moxiColorTwist_32f_AC4R), MOX_EXPORT(moxiColorTwist_32f_AC4IR));
    expectTwist<Mox32f>(3, true, 3, MOX_EXPORT(moxiColorTwist_32f_P3R), MOX_EXPORT(moxiColorTwist_32f_IP3R));
    expectTwist<Mox32f>(4, false, 4, MOX_EXPORT(moxiColorTwist_32f_C4R), MOX_EXPORT(moxiColorTwist_32f_C3IR), false);
}

}  // namespace
