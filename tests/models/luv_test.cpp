// LUV against plain code, pixel by pixel.
#include "moxcc/luv.h"

#include <algorithm>
#include <cmath>

#include "models/cube_roots.h"
#include "models/pixels.h"

using namespace moxtest;

namespace {

template <class T>
constexpr bool is8u = std::is_same_v<T, Mox8u>;
template <class T>
constexpr bool isFloat = std::is_same_v<T, Mox32f>;
template <class T>
constexpr bool is16 = sizeof(T) == 2;
template <class T>
constexpr int bias = std::is_same_v<T, Mox16s> ? 32768 : 0;
template <class T>
constexpr float top = is8u<T> ? 255 : 65535;

template <class T>
float real(T sample) {
    if constexpr (isFloat<T>)
        return sample;
    else
        return static_cast<float>(sample + bias<T>);
}
template <class T>
T saturated(int v) {
    return static_cast<T>(std::clamp<int>(v - bias<T>, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

// ---- forward ----

const CubeRoots for8u, forOthers(128);

template <class T>
float lightness(float Y, int (*index)(float)) {
    const float y = is16<T> ? Y * 1.5259022e-05f : Y;
    if (Y <= (is16<T> ? 580.378f : 0.008856f)) return 903.3f * y;
    const int k = std::clamp(is16<T> ? index(Y) >> 9 : index(Y * 127.99805f), 0, 127);
    const float c = (is8u<T> ? for8u : forOthers).c[k], w = (is8u<T> ? for8u : forOthers).w[k];
    const float t = (y - (c * c) * c) * w, t2 = t * t, t3 = t2 * t, t4 = t3 * t;
    float s = 0.33333334f * t + 1;
    s = s + -0.11111111f * t2;
    s = s + 0.061728396f * t3;
    if (is8u<T>) {
        s = s + -0.030178327f * t4;
    } else {
        const float t5 = t4 * t, t6 = t5 * t, t7 = t6 * t, t8 = t7 * t;
        s = s + -0.041152265f * t4;
        s = s + 0.030178327f * t5;
        s = s + -0.023472032f * t6;
        if (isFloat<T>) {
            s = s + 0.01900117f * t7;
            s = s + -0.015834307f * t8;
        }
    }
    return (c * s) * 116 - 16;
}

template <class T, int channels>
Pixel<T> forward(const Pixel<T>& p, bool body) {
    const bool cutTail = !body && std::is_same_v<T, Mox16u> && channels == 4;
    float r = real(p[0]), g = real(p[1]), b = real(p[2]);
    if (is8u<T>) r = r * 0.003921569f, g = g * 0.003921569f, b = b * 0.003921569f;
    const float X = (0.412453f * r + 0.35758f * g) + 0.180423f * b;
    const float Y = (0.212671f * r + 0.71516f * g) + 0.072169f * b;
    const float Z = (0.019334f * r + 0.119193f * g) + 0.950227f * b;
    const float L = lightness<T>(Y, is16<T> && !body && !cutTail ? nearest : truncated);

    float d = (Z * 3 + Y * 15) + X;
    const bool noSum = d == 0;
    if (body && noSum) d = d + 3.0f;
    float u1 = (X * 4) * rcp2(d), v1 = (Y * 9) * rcp2(d);
    if (!body && !is16<T> && Z == 0) u1 = v1 = 0;
    const float c13 = 13 * L;
    const float u = (u1 - 0.197839f) * c13, v = (v1 - 0.468342f) * c13;

    if constexpr (isFloat<T>) {
        return {L, u, v};
    } else if constexpr (is8u<T>) {
        const int out[3] = {nearest(L * 2.55f), nearest((u + 134) * 0.720339f), nearest((v + 140) * 0.97328246f)};
        if (!body) return {static_cast<T>(out[0]), static_cast<T>(out[1]), static_cast<T>(out[2])};
        return {saturated<T>(out[0]), saturated<T>(out[1]), saturated<T>(out[2])};
    } else {
        const auto toL = body || cutTail ? truncated : nearest, toUV = cutTail ? truncated : nearest;
        const T l = saturated<T>(toL(L * 655.35f));
        if (!body && noSum) return {l, saturated<T>(0), saturated<T>(0)};
        return {l, saturated<T>(toUV((u + 134) * 185.12712f)), saturated<T>(toUV((v + 140) * 250.13359f + 0.5f))};
    }
}

// ---- back ----

template <class T, int channels>
Pixel<T> backBody(const Pixel<T>& p) {
    constexpr bool unitRange = is8u<T> && channels == 3;
    const auto rec = is8u<T> ? rcp : rcp2;
    float l = real(p[0]), u = real(p[1]), v = real(p[2]);
    if (l <= 9e-05f) l = l + 9e-05f;
    if (is8u<T>) l = l * 0.39215687f, u = u * 1.3882353f - 134, v = v * 1.027451f - 140;
    if (is16<T>) l = l * 0.0015259022f, u = u * 0.0054016937f - 134, v = v * 0.003997864f - 140;
    const float q = rec(13 * l);
    const float yb = (l + 16) * 0.00862069f;
    float Y = l <= 7.9996247f ? l * 0.001107052f : yb * (yb * yb);
    if (!isFloat<T> && !unitRange) Y = Y * top<T>;
    float vv = v * q + 0.468342f;
    if (std::fabs(vv) <= 1.1920929e-05f) vv = vv + 9e-05f;
    const float kk = rec(vv) * Y;
    const float X = (u * q + 0.197839f) * (2.25f * kk);
    const float Z = (kk * 3 - 5 * Y) - 0.33333334f * X;
    const float rgb[3] = {(3.240479f * X + -1.53715f * Y) + -0.498535f * Z,
                          (-0.969256f * X + 1.875991f * Y) + 0.041556f * Z,
                          (0.055648f * X + -0.204043f * Y) + 1.057311f * Z};
    if constexpr (isFloat<T>) {
        return {rgb[0], rgb[1], rgb[2]};
    } else {
        Pixel<T> out;
        for (size_t i = 0; i < 3; ++i) {
            // Far too large for any sample would not even fit an integer; no sample gets there.
            EXPECT_LT(std::fabs(rgb[i]), 2147483648.0f);
            out[i] = saturated<T>(unitRange ? nearest(rgb[i] * 255) : truncated(rgb[i]));
        }
        return out;
    }
}

template <class T>
Pixel<T> backTail(const Pixel<T>& p) {
    float l = real(p[0]), u = real(p[1]), v = real(p[2]);
    if (!isFloat<T>) {
        l = (l * 100) / top<T>;
        u = (u * 354) / top<T> - 134;
        v = (v * 262) / top<T> - 140;
    }
    if (l < 9e-05f) return {static_cast<T>(-bias<T>), static_cast<T>(-bias<T>), static_cast<T>(-bias<T>)};
    const float yb = (l + 16) / 116;
    float Y = l >= 7.9996247f ? (yb * yb) * yb : l / 903.3f;
    if (!isFloat<T>) Y = Y * top<T>;
    float vv = v / (13 * l) + (isFloat<T> ? 0.468342f : 0.4683422f);
    const float uu = (u / (13 * l) + (isFloat<T> ? 0.197839f : 0.19783941f)) * 2.25f;
    if (is16<T> && std::fabs(vv) < 1.1920929e-05f) vv = vv + 9e-05f;
    if (isFloat<T> && std::fabs(vv) < 1.1920929e-07f) vv = vv + 9e-05f;
    const float kk = Y / vv, X = uu * kk;
    const float Z = is8u<T> ? (kk * 3 - X / 3) - 5 * Y : (kk * 3 - 5 * Y) - X / 3;
    if constexpr (isFloat<T>) {
        return {unit((3.240479f * X - 1.53715f * Y) - 0.498535f * Z),
                unit((1.875991f * Y - 0.969256f * X) + 0.041556f * Z),
                unit((0.055648f * X - 0.204043f * Y) + 1.057311f * Z)};
    } else {
        float r, g;
        if (is8u<T>) {
            r = ((3.240479f * X + 0.5f) - 1.53715f * Y) - 0.498535f * Z;
            g = ((-0.969256f * X + 0.5f) + 1.875991f * Y) + 0.041556f * Z;
        } else {
            r = ((0.5f - 1.53715f * Y) + 3.240479f * X) - 0.498535f * Z;
            g = ((1.875991f * Y + 0.5f) - 0.969256f * X) + 0.041556f * Z;
        }
        const double b = (static_cast<double>(0.055648f * X - 0.204043f * Y) + 0.5) + static_cast<double>(Z) * 1.057311;
        EXPECT_LT(std::max({std::fabs(double{r}), std::fabs(double{g}), std::fabs(b)}), 2147483648.0);
        return {saturated<T>(truncated(r)), saturated<T>(truncated(g)), saturated<T>(static_cast<int>(b))};
    }
}

template <class T, int channels>
Pixel<T> back(const Pixel<T>& p, bool body) {
    return body ? backBody<T, channels>(p) : backTail<T>(p);
}

// ---- pixels that few draws meet ----

/// Integers whose Y lies a little below a multiple of 512, where the place in the table depends on the rounding; and
/// those near the end of the dark.
template <class T>
Pixels<T> edgesOfLightness(Random& random) {
    return [&]() -> Pixel<T> {
        if (random.oneIn(4)) {
            const auto next = [&] { return static_cast<T>(random.between(570, 590) - bias<T>); };
            return {next(), next(), next()};
        }
        for (;;) {
            const double target = 512.0 * static_cast<double>(random.between(2, 127)) - random.uniform(0.05, 0.45);
            const double r = static_cast<double>(random.between(0, 65535));
            const double g =
                std::floor((target - 0.212671 * r) / 0.71516) - static_cast<double>(random.between(0, 999));
            const double b = std::round((target - 0.212671 * r - 0.71516 * g) / 0.072169);
            if (g >= 0 && g <= 65535 && b >= 0 && b <= 65535)
                return {static_cast<T>(r - bias<T>), static_cast<T>(g - bias<T>), static_cast<T>(b - bias<T>)};
        }
    };
}

/// Floats so small that sums of X, Y and Z, or Z alone, are often zero and the others are not.
Pixels<Mox32f> denormals(Random& random) {
    return independent<Mox32f>(
        [&] { return static_cast<float>(random.between(-9, 9)) * std::numeric_limits<float>::denorm_min(); });
}

/// Integers of which v' is zero, or nearly so.
template <class T>
Pixels<T> noV(Random& random) {
    return [&]() -> Pixel<T> {
        const int64_t l = random.between(66, 14000);
        const double v = (140 - 0.468342 * 13 * 100 / 65535 * double(l)) * 65535 / 262 + double(random.between(-1, 1));
        return {static_cast<T>(l - bias<T>), random.sample<T>(), static_cast<T>(std::round(v) - bias<T>)};
    };
}

// ---- tests ----

template <class T, int channels>
const auto toLuv = inGroups(4, forward<T, channels>);
template <class T, int channels>
const auto toRgb = inGroups(4, back<T, channels>);

TEST(Luv, EightBitColumnsFollowTheirRules) {
    expectPixels(MOX_EXPORT(moxiRGBToLUV_8u_C3R), toLuv<Mox8u, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiRGBToLUV_8u_AC4R), inGroups(noGroups, forward<Mox8u, 4>), {darkAndGray});
    expectPixels(MOX_EXPORT(moxiBGRToLUV_8u_C3R), fromBgr(toLuv<Mox8u, 3>), {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_8u_C3R), toRgb<Mox8u, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_8u_AC4R), toRgb<Mox8u, 4>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToBGR_8u_C3R), toBgr(toRgb<Mox8u, 3>), {darkAndGray});
}

TEST(Luv, SixteenBitColumnsFollowTheirRules) {
    expectPixels(MOX_EXPORT(moxiRGBToLUV_16u_C3R), toLuv<Mox16u, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiRGBToLUV_16u_AC4R), toLuv<Mox16u, 4>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_16u_C3R), toRgb<Mox16u, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_16u_AC4R), toRgb<Mox16u, 4>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiRGBToLUV_16s_C3R), toLuv<Mox16s, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiRGBToLUV_16s_AC4R), toLuv<Mox16s, 4>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_16s_C3R), toRgb<Mox16s, 3>, {darkAndGray});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_16s_AC4R), toRgb<Mox16s, 4>, {darkAndGray});
    expectManyPixels(MOX_EXPORT(moxiRGBToLUV_16u_C3R), toLuv<Mox16u, 3>, edgesOfLightness);
    expectManyPixels(MOX_EXPORT(moxiRGBToLUV_16u_AC4R), toLuv<Mox16u, 4>, edgesOfLightness);
    expectManyPixels(MOX_EXPORT(moxiRGBToLUV_16s_C3R), toLuv<Mox16s, 3>, edgesOfLightness);
    expectManyPixels(MOX_EXPORT(moxiLUVToRGB_16u_C3R), toRgb<Mox16u, 3>, noV);
    expectManyPixels(MOX_EXPORT(moxiLUVToRGB_16s_C3R), toRgb<Mox16s, 3>, noV);
}

// LUV with colours near those for which v' is zero, and with L on both sides of where rules change.
Pixels<Mox32f> luvs(Random& random) {
    const float low = random.oneOf({0.0f, 0.0f, 1e-4f, 7.99f}), high = random.oneOf({100.0f, 16.0f, 2e-4f, 8.01f});
    return [&random, low, high]() -> Pixel<Mox32f> {
        const float l = random.oneIn(10) ? 0.0f : random.uniform(low, high);
        return {l, random.uniform(-134.0f, 220.0f),
                random.oneIn(3) ? -0.468342f * (13 * l) * random.uniform(1 - 4e-5f, 1 + 4e-5f)
                                : random.uniform(-140.0f, 122.0f)};
    };
}

// The one form without vector columns drops the low bits of a step.
TEST(Luv, FloatColumnsFollowTheirRules) {
    expectPixels(MOX_EXPORT(moxiRGBToLUV_32f_C3R), toLuv<Mox32f, 3>, {unitRange, denormals, anything});
    expectPixels(MOX_EXPORT(moxiRGBToLUV_32f_AC4R), toLuv<Mox32f, 4>, {unitRange, denormals, anything});
    expectPixels(MOX_EXPORT(moxiBGRToLUV_32f_C3R), fromBgr(toLuv<Mox32f, 3>), {unitRange, denormals, anything});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_32f_C3R), toRgb<Mox32f, 3>, {luvs, anything});
    expectPixels(MOX_EXPORT(moxiLUVToRGB_32f_AC4R), inGroups(noGroups, back<Mox32f, 4>), {luvs, anything});
    expectPixels(MOX_EXPORT(moxiLUVToBGR_32f_C3R), toBgr(toRgb<Mox32f, 3>), {luvs, anything});
}

TEST(Luv, MostEightBitColoursFollowTheirRules) {
    expectMostPixels(MOX_EXPORT(moxiRGBToLUV_8u_C3R), toLuv<Mox8u, 3>);
    expectMostPixels(MOX_EXPORT(moxiLUVToRGB_8u_C3R), toRgb<Mox8u, 3>);
}

// What a user sees: to LUV and back, at most a few steps lie between a colour and what comes of it.
TEST(Luv, ColoursComeBack) {
    Random random(7);
    const MoxiSize roi = {1003, 40};
    Plane<Mox32f> src(roi.width, roi.height, 3, random), luv = src, rgb = src;
    Plane<Mox16u> src16(roi.width, roi.height, 3, random), luv16 = src16, rgb16 = src16;
    forEachLibrary([&](const Library& lib) {
        MOX_CALL(lib, moxiRGBToLUV_32f_C3R)(src.data(), src.step(), luv.data(), luv.step(), roi);
        MOX_CALL(lib, moxiLUVToRGB_32f_C3R)(luv.data(), luv.step(), rgb.data(), rgb.step(), roi);
        MOX_CALL(lib, moxiRGBToLUV_16u_C3R)(src16.data(), src16.step(), luv16.data(), luv16.step(), roi);
        MOX_CALL(lib, moxiLUVToRGB_16u_C3R)(luv16.data(), luv16.step(), rgb16.data(), rgb16.step(), roi);
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x)
                for (int c = 0; c < 3; ++c) {
                    ASSERT_NEAR(rgb.get(x, y, c), src.get(x, y, c), 1e-3);
                    ASSERT_NEAR(rgb16.get(x, y, c), src16.get(x, y, c), 24);
                }
    });
}

TEST(Luv, KnownColours) {
    forEachLibrary([](const Library& lib) {
        const MoxiSize five = {5, 1};  // four body columns and a last one
        const Mox8u black[15] = {};
        Mox8u luv[15];
        MOX_CALL(lib, moxiRGBToLUV_8u_C3R)(black, 15, luv, 15, five);
        for (int x = 0; x < 5; ++x) EXPECT_TRUE(luv[3 * x] == 0 && luv[3 * x + 1] == 97 && luv[3 * x + 2] == 136);
        std::array<Mox8u, 15> white;
        white.fill(255);
        MOX_CALL(lib, moxiRGBToLUV_8u_C3R)(white.data(), 15, luv, 15, five);
        for (int x = 0; x < 5; ++x) EXPECT_EQ(luv[3 * x], 255);

        const Mox16u black16[15] = {};
        Mox16u luv16[15];
        MOX_CALL(lib, moxiRGBToLUV_16u_C3R)(black16, 30, luv16, 30, five);
        EXPECT_TRUE(luv16[9] == 0 && luv16[10] == 24807 && luv16[11] == 35019);
        EXPECT_TRUE(luv16[12] == 0 && luv16[13] == 0 && luv16[14] == 0);
        std::array<Mox16s, 15> black16s;
        black16s.fill(-32768);
        Mox16s luv16s[15];
        MOX_CALL(lib, moxiRGBToLUV_16s_C3R)(black16s.data(), 30, luv16s, 30, five);
        EXPECT_TRUE(luv16s[9] == -32768 && luv16s[10] == -7961 && luv16s[11] == 2251);
        EXPECT_TRUE(luv16s[12] == -32768 && luv16s[13] == -32768 && luv16s[14] == -32768);
    });
}

}  // namespace
