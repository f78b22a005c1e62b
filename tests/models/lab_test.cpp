// Lab against plain code, pixel by pixel.
#include "moxcc/lab.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "models/cube_roots.h"
#include "models/pixels.h"

using namespace moxtest;

namespace {

// ---- forward ----

const CubeRoots cubeRoots;

template <class D>
float f(float t) {
    if (t <= 0.008856f) return 7.787f * t + 0.13793103f;
    const float place = t * 127.99805f;
    const int k = std::clamp(truncated(place), 0, 127);
    const float c = cubeRoots.c[k], u = (t - (c * c) * c) * cubeRoots.w[k];
    const bool half = std::is_same_v<D, Mox16u>;
    const float coefficients[] = {-0.11111111f,
                                  0.061728396f,
                                  -0.041152265f,
                                  0.030178327f,
                                  -0.023472032f,
                                  half ? std::bit_cast<float>(0x3C9BA868) : 0.01900117f,
                                  half ? -std::bit_cast<float>(0x3C81B6EF) : -0.015834307f};
    float sum = 0.33333334f * u + 1, power = u;
    for (int i = 0; i < (std::is_same_v<D, Mox8u> ? 3 : 7); ++i) {
        power = power * u;
        sum = sum + coefficients[i] * power;
    }
    return c * sum;
}

// The cube root of doubles, from tables in quadruple precision.
__extension__ typedef __float128 Quad;

struct DoubleCubeRoots {
    double rcp[32], hi[96], lo[96];
    DoubleCubeRoots() {
        for (int i = 0; i < 96; ++i) {
            const double c = 1 + (2 * (i % 32) + 1) / 64.0;
            if (i < 32) rcp[i] = -1 / c;
            const Quad y = static_cast<Quad>(c) * (1 << i / 32);
            Quad root = std::cbrt(static_cast<double>(y));
            for (int n = 0; n < 3; ++n) root = (2 * root + y / (root * root)) / 3;
            hi[i] = static_cast<double>(root);
            if (hi[i] > root) hi[i] = std::nextafter(hi[i], 0.0);
            lo[i] = static_cast<double>(root - hi[i]);
        }
    }
} const doubleCubeRoots;

double cubeRoot(double x) {
    const uint64_t bits = std::bit_cast<uint64_t>(x), fraction = bits & 0xFFFFFFFFFFFFF;
    const size_t i = fraction >> 47;
    const double m = -std::bit_cast<double>(0x3FF0000000000000 | fraction);
    const double c = -std::bit_cast<double>(0x3FF0000000000000 | i << 47 | uint64_t{1} << 46);
    const double u = doubleCubeRoots.rcp[i] * (m - c);
    constexpr uint64_t series[] = {0xBF9036DE5C9CC8E7, 0x3F93750AD588F115, 0xBF98090D6221A247, 0x3F9EE7113506AC12,
                                   0xBFA511E8D2B3183B, 0x3FAF9ADD3C0CA458, 0xBFBC71C71C71C71C, 0x3FD5555555555555};
    double p = std::bit_cast<double>(series[0]);
    for (int n = 1; n < 8; ++n) {
        p = p * u;
        p = p + std::bit_cast<double>(series[n]);
    }
    const uint64_t e = bits >> 52 & 0x7FF, q = e / 3, r = e % 3;
    const double scale = std::bit_cast<double>((bits >> 63 << 63) | (682 + q) << 52);
    const double hi = doubleCubeRoots.hi[32 * r + i] * scale, lo = doubleCubeRoots.lo[32 * r + i] * scale;
    const double rest = (u * hi) * p;
    return hi + (lo + rest);
}

double f64(double t) {
    constexpr double threshold = 0.008856000378727913;
    if (t <= threshold) return static_cast<double>(7.787f) * t + 0.13793103448275862;
    return cubeRoot(t > threshold ? t : threshold);  // a NaN, too
}

template <class V>
Pixel<V> rows(const float (&m)[3][3], V a, V b, V c) {
    Pixel<V> out;
    for (size_t i = 0; i < 3; ++i) {
        const V first = static_cast<V>(m[i][0]) * a, second = static_cast<V>(m[i][1]) * b;
        const V third = static_cast<V>(m[i][2]) * c;
        out[i] = (first + second) + third;
    }
    return out;
}
const float toXyz[3][3] = {
    {0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}};
const float toRgb[3][3] = {
    {3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}};

template <class D>
Pixel<D> forwardSamples(const Pixel<Mox8u>& p, bool inGroup) {
    constexpr bool wide = sizeof(D) == 2;
    const auto sum = rows<float>(toXyz, p[0], p[1], p[2]);
    const float X = sum[0] * 0.0041259914f, Y = sum[1] * 0.003921569f, Z = sum[2] * 0.0036018905f;
    const float fx = f<D>(X), fy = f<D>(Y), fz = f<D>(Z);
    const float L = Y <= 0.008856f ? 903.3f * Y : 116 * fy - 16;
    float a = (fx - fy) * 500 + 128, b = (fy - fz) * 200 + 128;
    if (wide) a = a * 255, b = b * 255;
    const int out[3] = {nearest(L * (wide ? 655.35f : 2.55f)), nearest(a), nearest(b)};
    Pixel<D> samples;
    for (size_t i = 0; i < 3; ++i)
        samples[i] = static_cast<D>(inGroup ? std::clamp(out[i], 0, wide ? 65535 : 255) : out[i]);
    return samples;
}

Pixel<Mox32f> forward32f(const Pixel<Mox32f>& p, int, int) {
    const auto sum = rows(toXyz, p[0], p[1], p[2]);
    const float X = sum[0] * 1.0521265f, Y = sum[1], Z = sum[2] * 0.9184812f;
    const float fx = f<Mox32f>(X), fy = f<Mox32f>(Y), fz = f<Mox32f>(Z);
    return {Y <= 0.008856f ? 903.3f * Y : 116 * fy - 16, 500 * (fx - fy), 200 * (fy - fz)};
}

Pixel<Mox64f> forward64f(const Pixel<Mox64f>& p, int, int) {
    const auto sum = rows(toXyz, p[0], p[1], p[2]);
    const double X = sum[0] * 1.0521265327391165, Y = sum[1], Z = sum[2] * 0.9184811767477967;
    const double fx = f64(X), fy = f64(Y), fz = f64(Z);
    return {Y <= 0.008856000378727913 ? static_cast<double>(903.3f) * Y : 116 * fy - 16, 500 * (fx - fy),
            200 * (fy - fz)};
}

// ---- back ----

template <class S>
Pixel<Mox8u> backSamples(const Pixel<S>& p, int, int) {
    constexpr bool wide = sizeof(S) == 2;
    const auto chroma = [](S s) { return wide ? s * 0.003921569f - 128 : static_cast<float>(s) - 128; };
    const float L = p[0] * (wide ? 0.0015259022f : 0.39215687f);
    const float P = (L + 16) * 0.00862069f, Q = P + chroma(p[1]) * 0.002f, T = P - chroma(p[2]) * 0.005f;
    const auto rgb = rows(toRgb, ((Q * Q) * Q) * 242.366f, ((P * P) * P) * 255, ((T * T) * T) * 277.632f);
    Pixel<Mox8u> out;
    for (size_t i = 0; i < 3; ++i) out[i] = static_cast<Mox8u>(std::clamp(nearest(rgb[i]), 0, 255));
    return out;
}

template <class V>
Pixel<V> backFloat(const Pixel<V>& p, int, int) {
    constexpr bool single = std::is_same_v<V, float>;
    constexpr V per116 = single ? 0.00862069f : 0.008620689655172414, per500 = single ? 0.002f : 0.002,
                per200 = single ? 0.005f : 0.005;
    const V P = (p[0] + 16) * per116, Q = P + p[1] * per500, T = P - p[2] * per200;
    return rows<V>(toRgb, ((Q * Q) * Q) * 0.950456f, (P * P) * P, ((T * T) * T) * 1.0887539f);
}

// ---- tests ----

template <class D>
const auto forward = inGroups(4, forwardSamples<D>);

TEST(Lab, ColumnsFollowTheirRules) {
    expectPixels(MOX_EXPORT(moxiRGBToLab_8u_C3R), forward<Mox8u>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiBGRToLab_8u_C3R), fromBgr(forward<Mox8u>), {darkAndGray});
    expectPixels(MOX_EXPORT(moxiBGRToLab_8u16u_C3R), fromBgr(forward<Mox16u>), {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLabToRGB_8u_C3R), backSamples<Mox8u>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLabToBGR_8u_C3R), toBgr(backSamples<Mox8u>), {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLabToBGR_16u8u_C3R), toBgr(backSamples<Mox16u>), {darkAndGray});
}

template <class T>
Pixels<T> labs(Random& random) {
    return independent<T>([&] { return random.uniform(T(-128), T(127)); });
}

TEST(Lab, FloatsFollowTheirRules) {
    expectPixels(MOX_EXPORT(moxiRGBToLab_32f_C3R), forward32f, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiBGRToLab_32f_C3R), fromBgr(forward32f), {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToRGB_32f_C3R), backFloat<Mox32f>, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToBGR_32f_C3R), toBgr(backFloat<Mox32f>), {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiRGBToLab_32f_P3R), forward32f, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiRGBToLab_32f_P3R_L), forward32f, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToRGB_32f_P3R), backFloat<Mox32f>, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToRGB_32f_P3R_L), backFloat<Mox32f>, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiRGBToLab_64f_P3R), forward64f, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiRGBToLab_64f_P3R_L), forward64f, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToRGB_64f_P3R), backFloat<Mox64f>, {unitRange, labs, anything});
    expectPixels(MOX_EXPORT(moxiLabToRGB_64f_P3R_L), backFloat<Mox64f>, {unitRange, labs, anything});
}

TEST(Lab, ManyColoursFollowTheirRules) {
    expectManyPixels(MOX_EXPORT(moxiRGBToLab_8u_C3R), forward<Mox8u>, samples);
    expectManyPixels(MOX_EXPORT(moxiBGRToLab_8u16u_C3R), fromBgr(forward<Mox16u>), samples);
    expectManyPixels(MOX_EXPORT(moxiLabToRGB_8u_C3R), backSamples<Mox8u>, samples);
    expectManyPixels(MOX_EXPORT(moxiLabToBGR_16u8u_C3R), toBgr(backSamples<Mox16u>), samples);
}

TEST(Lab, KnownColours) {
    forEachLibrary([](const Library& lib) {
        const Mox8u rgb[] = {0, 0, 0, 255, 255, 255}, lab[] = {0, 128, 128};
        Mox8u out[6];
        MOX_CALL(lib, moxiRGBToLab_8u_C3R)(rgb, 6, out, 6, {2, 1});
        EXPECT_TRUE(out[0] == 0 && out[1] == 128 && out[2] == 128);
        EXPECT_TRUE(out[3] == 255 && std::abs(out[4] - 128) <= 1 && std::abs(out[5] - 128) <= 1);
        MOX_CALL(lib, moxiLabToRGB_8u_C3R)(lab, 3, out, 3, {1, 1});
        EXPECT_TRUE(out[0] == 1 && out[1] == 1 && out[2] == 1);
    });
}

}  // namespace
