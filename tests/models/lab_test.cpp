// Lab against plain code, pixel by pixel.
#include "moxcc/lab.h"

#include <immintrin.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "models/pixel_rules.h"

using namespace moxtest;

namespace {

int toNearest(float x) { return _mm_cvtss_si32(_mm_set_ss(x)); }

// ---- forward ----

// With the six decimals that its entries have.
float decimal(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", v);
    return std::strtof(text, nullptr);
}

struct CubeRoots {
    float c[128], w[128];
    CubeRoots() {
        for (int k = 0; k < 128; ++k) {
            const double y = (k + 1.0128) / 127.99805;
            c[k] = decimal(std::cbrt(y)), w[k] = decimal(1 / y);
        }
    }
} const cubeRoots;

template <class D>
float f(float t) {
    if (t <= 0.008856f) return 7.787f * t + 0.13793103f;
    const float place = t * 127.99805f;
    const int k = std::clamp(_mm_cvttss_si32(_mm_set_ss(place)), 0, 127);
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
std::array<V, 3> rows(const float (&m)[3][3], V a, V b, V c) {
    std::array<V, 3> out;
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
std::array<D, 3> forwardSamples(const Mox8u* p, Columns columns) {
    constexpr bool wide = sizeof(D) == 2;
    const auto sum = rows<float>(toXyz, p[0], p[1], p[2]);
    const float X = sum[0] * 0.0041259914f, Y = sum[1] * 0.003921569f, Z = sum[2] * 0.0036018905f;
    const float fx = f<D>(X), fy = f<D>(Y), fz = f<D>(Z);
    const float L = Y <= 0.008856f ? 903.3f * Y : 116 * fy - 16;
    float a = (fx - fy) * 500 + 128, b = (fy - fz) * 200 + 128;
    if (wide) a = a * 255, b = b * 255;
    const int out[3] = {toNearest(L * (wide ? 655.35f : 2.55f)), toNearest(a), toNearest(b)};
    std::array<D, 3> samples;
    for (size_t i = 0; i < 3; ++i)
        samples[i] = static_cast<D>(columns == Columns::tail ? out[i] : std::clamp(out[i], 0, wide ? 65535 : 255));
    return samples;
}

std::array<Mox32f, 3> forward32f(const Mox32f* p, Columns) {
    const auto sum = rows(toXyz, p[0], p[1], p[2]);
    const float X = sum[0] * 1.0521265f, Y = sum[1], Z = sum[2] * 0.9184812f;
    const float fx = f<Mox32f>(X), fy = f<Mox32f>(Y), fz = f<Mox32f>(Z);
    return {Y <= 0.008856f ? 903.3f * Y : 116 * fy - 16, 500 * (fx - fy), 200 * (fy - fz)};
}

std::array<Mox64f, 3> forward64f(const Mox64f* p) {
    const auto sum = rows(toXyz, p[0], p[1], p[2]);
    const double X = sum[0] * 1.0521265327391165, Y = sum[1], Z = sum[2] * 0.9184811767477967;
    const double fx = f64(X), fy = f64(Y), fz = f64(Z);
    return {Y <= 0.008856000378727913 ? static_cast<double>(903.3f) * Y : 116 * fy - 16, 500 * (fx - fy),
            200 * (fy - fz)};
}

// ---- back ----

template <class S>
std::array<Mox8u, 3> backSamples(const S* p, Columns) {
    constexpr bool wide = sizeof(S) == 2;
    const auto chroma = [](S s) { return wide ? s * 0.003921569f - 128 : static_cast<float>(s) - 128; };
    const float L = p[0] * (wide ? 0.0015259022f : 0.39215687f);
    const float P = (L + 16) * 0.00862069f, Q = P + chroma(p[1]) * 0.002f, T = P - chroma(p[2]) * 0.005f;
    const auto rgb = rows(toRgb, ((Q * Q) * Q) * 242.366f, ((P * P) * P) * 255, ((T * T) * T) * 277.632f);
    std::array<Mox8u, 3> out;
    for (size_t i = 0; i < 3; ++i) out[i] = static_cast<Mox8u>(std::clamp(toNearest(rgb[i]), 0, 255));
    return out;
}

template <class V>
std::array<V, 3> backFloat(const V* p) {
    constexpr bool single = std::is_same_v<V, float>;
    constexpr V per116 = single ? 0.00862069f : 0.008620689655172414, per500 = single ? 0.002f : 0.002,
                per200 = single ? 0.005f : 0.005;
    const V P = (p[0] + 16) * per116, Q = P + p[1] * per500, T = P - p[2] * per200;
    return rows<V>(toRgb, ((Q * Q) * Q) * 0.950456f, (P * P) * P, ((T * T) * T) * 1.0887539f);
}
std::array<Mox32f, 3> back32f(const Mox32f* p, Columns) { return backFloat(p); }

// ---- forms ----

const Form<Mox8u> forms8u[] = {
    {MOX_EXPORT(moxiRGBToLab_8u_C3R), 3, forwardSamples<Mox8u>},
    {MOX_EXPORT(moxiBGRToLab_8u_C3R), 3, forwardSamples<Mox8u>, Bgr::source},
    {MOX_EXPORT(moxiLabToRGB_8u_C3R), 3, backSamples<Mox8u>},
    {MOX_EXPORT(moxiLabToBGR_8u_C3R), 3, backSamples<Mox8u>, Bgr::destination},
};
const Form<Mox8u, Mox16u> form8u16u = {MOX_EXPORT(moxiBGRToLab_8u16u_C3R), 3, forwardSamples<Mox16u>, Bgr::source};
const Form<Mox16u, Mox8u> form16u8u = {MOX_EXPORT(moxiLabToBGR_16u8u_C3R), 3, backSamples<Mox16u>, Bgr::destination};
const Form<Mox32f> forms32f[] = {
    {MOX_EXPORT(moxiRGBToLab_32f_C3R), 3, forward32f},
    {MOX_EXPORT(moxiBGRToLab_32f_C3R), 3, forward32f, Bgr::source},
    {MOX_EXPORT(moxiLabToRGB_32f_C3R), 3, back32f},
    {MOX_EXPORT(moxiLabToBGR_32f_C3R), 3, back32f, Bgr::destination},
};

void fillLab(Plane<Mox32f>& plane, Random& random) {
    plane.fill([&] { return random.uniform(-128.0f, 127.0f); });
}

TEST(Lab, ColumnsFollowTheirRules) {
    for (const auto& form : forms8u) expectRule(form, fillIntegers<Mox8u>);
    expectRule(form8u16u, fillIntegers<Mox8u>);
    expectRule(form16u8u, fillIntegers<Mox16u>);
    for (const auto& form : forms32f) {
        expectRule(form, fillUnit<Mox32f>);
        expectRule(form, fillLab);
        expectRule(form, fillWithAnything<Mox32f>);
    }
}

TEST(Lab, EveryEightBitColourFollowsItsRule) {
    expectAllColours(forms8u[0]);
    expectAllColours(forms8u[2]);
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

// ---- planes ----

template <class T>
using PlaneFunction = Export<MoxStatus(const T* const*, const int32_t*, T* const*, const int32_t*, MoxiSize)>;

template <class T>
struct Planes {
    std::vector<Plane<T>> plane;
    T* data[3];
    int32_t step[3];

    Planes(MoxiSize size, Random& random) {
        for (int i = 0; i < 3; ++i) plane.emplace_back(size.width, size.height, 1, random);
        point();
    }
    Planes(const Planes& other) : plane(other.plane) { point(); }

    // Colours and what surrounds them, or anything.
    void fill(Random& random) {
        const int mode = static_cast<int>(random.between(0, 2));
        for (Plane<T>& p : plane) {
            if (mode == 0) fillUnit(p, random);
            if (mode == 1) p.fill([&] { return random.uniform(T(-128), T(127)); });
            if (mode == 2) p.fill([&] { return random.special<T>(); });
        }
    }

  private:
    void point() {
        for (size_t i = 0; i < 3; ++i) data[i] = plane[i].data(), step[i] = plane[i].step();
    }
};

template <class T, class Rule>
void expectPlanes(std::initializer_list<PlaneFunction<T>> functions, const Rule& rule) {
    for (const uint32_t control : mxcsr::roundings) {
        forEachSize(
            [&](MoxiSize roi, Random& random) {
                Planes<T> src(roi, random), want(roi, random);
                src.fill(random);
                const Planes<T> before = want;
                underMxcsr(control, [&] {
                    for (int y = 0; y < roi.height; ++y) {
                        for (int x = 0; x < roi.width; ++x) {
                            const T pixel[3] = {src.plane[0].get(x, y), src.plane[1].get(x, y), src.plane[2].get(x, y)};
                            const auto out = rule(pixel);
                            for (size_t c = 0; c < 3; ++c) want.plane[c].set(x, y, out[c]);
                        }
                    }
                });
                for (const auto& function : functions) {
                    forEachLibrary([&](const Library& lib) {
                        Planes<T> got = before;
                        const MxcsrScope scope(control);
                        ASSERT_EQ(lib(function)(src.data, src.step, got.data, got.step, roi), moxStatusOk);
                        for (size_t c = 0; c < 3; ++c)
                            ASSERT_TRUE(same(got.plane[c], want.plane[c], Nan::anyNan)) << roundingName(control);
                    });
                }
            },
            1, 21);
    }
}

TEST(Lab, PlanesFollowTheSameRules) {
    expectPlanes<Mox32f>({MOX_EXPORT(moxiRGBToLab_32f_P3R), MOX_EXPORT(moxiRGBToLab_32f_P3R_L)},
                         [](const Mox32f* p) { return forward32f(p, Columns::body); });
    expectPlanes<Mox32f>({MOX_EXPORT(moxiLabToRGB_32f_P3R), MOX_EXPORT(moxiLabToRGB_32f_P3R_L)}, backFloat<Mox32f>);
    expectPlanes<Mox64f>({MOX_EXPORT(moxiRGBToLab_64f_P3R), MOX_EXPORT(moxiRGBToLab_64f_P3R_L)}, forward64f);
    expectPlanes<Mox64f>({MOX_EXPORT(moxiLabToRGB_64f_P3R), MOX_EXPORT(moxiLabToRGB_64f_P3R_L)}, backFloat<Mox64f>);
}

// In double precision, RGB comes back as it was from L of 8 and more: the matrices' six decimals are the limit.
TEST(Lab, ColoursComeBack) {
    Random random(7);
    const MoxiSize roi = {301, 9};
    Planes<Mox64f> src(roi, random), lab = src, rgb = src;
    for (Plane<Mox64f>& p : src.plane) p.fill([&] { return random.uniform(0.02, 1.0); });
    forEachLibrary([&](const Library& lib) {
        MOX_CALL(lib, moxiRGBToLab_64f_P3R)(src.data, src.step, lab.data, lab.step, roi);
        MOX_CALL(lib, moxiLabToRGB_64f_P3R)(lab.data, lab.step, rgb.data, rgb.step, roi);
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x)
                for (size_t c = 0; c < 3; ++c) ASSERT_NEAR(rgb.plane[c].get(x, y), src.plane[c].get(x, y), 2e-5);
    });
}

}  // namespace
