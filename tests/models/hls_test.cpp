// HLS against plain code: each kernel's reciprocal, conversion and order of operations, column by column.
#include "moxcc/hls.h"

#include <algorithm>
#include <bit>

#include "models/pixels.h"

using namespace moxtest;

namespace {

template <class T>
constexpr bool is8u = sizeof(T) == 1;
template <class T>
constexpr int bias = std::is_signed_v<T> ? 32768 : 0;
template <class T>
constexpr float top = is8u<T> ? 255 : 65535;

float fromBits(uint32_t bits) { return std::bit_cast<float>(bits); }
template <class T>
float hueToSample() {
    return fromBits(is8u<T> ? 0x3F355555 : 0x43360AAB);
}
template <class T>
float sampleToDegrees() {
    return fromBits(is8u<T> ? 0x3FB4B4B5 : 0x3BB400B4);
}
template <class T>
float sampleToFraction() {
    return fromBits(is8u<T> ? 0x3B808081 : 0x37800080);
}
float sixtieth() { return fromBits(0x3C888889); }

/// How a result becomes a sample: converted, then saturated or cut to its low bits.
enum class Store { nearestSaturated, nearestLowBits, truncated };

template <class T>
T stored(float x, Store store) {
    int value = store == Store::truncated ? truncated(x) : nearest(x);
    if (store == Store::nearestSaturated) value = std::clamp(value, 0, static_cast<int>(top<T>));
    return static_cast<T>(value - bias<T>);
}

// ---- RGB to HLS

struct Forward {
    float (*reciprocal)(float);
    Store store;
    bool reciprocalFirst;  // in the hue
};

template <class T>
Pixel<T> rgbToHls(const Pixel<T>& p, const Forward& how) {
    const float r = static_cast<float>(p[0] + bias<T>), g = static_cast<float>(p[1] + bias<T>),
                b = static_cast<float>(p[2] + bias<T>);
    const float mx = std::max({r, g, b}), mn = std::min({r, g, b});
    const float delta = mx - mn, sum = mx + mn;
    const float lf = 0.5f * sum;
    const T l = stored<T>(lf, how.store);
    if (delta == 0) return {stored<T>(0, how.store), l, stored<T>(0, how.store)};

    const float den = lf <= top<T> / 2 ? sum : 2 * top<T> - sum;
    const float s = (delta * how.reciprocal(den)) * top<T>;
    float diff = r - g, base = 240;
    if (r == mx) {
        diff = g - b, base = 0;
    } else if (g == mx) {
        diff = b - r, base = 120;
    }
    const float q = how.reciprocal(delta);
    float h = (how.reciprocalFirst ? diff * (60 * q) : (diff * 60) * q) + base;
    if (h < 0) h = h + 360;
    return {stored<T>(h * hueToSample<T>(), how.store), l, stored<T>(s, how.store)};
}

Pixel<float> rgbToHls32f(const Pixel<float>& p, int, int) {
    const auto [r, g, b] = p;
    float mx = r, mn = r;
    for (const float c : {g, b}) {
        if (c > mx) mx = c;
        if (c < mn) mn = c;
    }
    const float delta = mx - mn, sum = mx + mn;
    const float l = 0.5f * sum;
    if (delta <= 1.1920929e-07f) return {0, l, 0};
    const float s = l <= 0.5f ? delta / sum : delta / (2 - sum);
    float h;
    if (r == mx) {
        h = ((g - b) * 60) / delta;
    } else if (g == mx) {
        h = 120 + ((b - r) * 60) / delta;
    } else {
        h = ((r - g) * 60) / delta + 240;
    }
    if (h < 0) h = h + 360;
    return {h / 360, l, s};
}

// ---- HLS to RGB

enum class Recipe {
    productThenScale,  // the bodies of the integer RGB forms
    scaleThenProduct,  // the tails of their 16-bit forms, the 32f body, and all columns of the BGR forms
    divisions,         // the tails of the 8u and 32f RGB forms
    reciprocals        // divisions, each as a product with rcp2
};

float quotient(float a, float b, Recipe recipe) { return recipe == Recipe::reciprocals ? a * rcp2(b) : a / b; }

float ramp(float t, float d, Recipe recipe) {
    if (recipe == Recipe::productThenScale) return (t * d) * sixtieth();
    if (recipe == Recipe::scaleThenProduct) return (t * sixtieth()) * d;
    return quotient(d * t, 60, recipe);
}

Pixel<float> colours(float hue, float l, float s, Recipe recipe) {
    const bool divides = recipe == Recipe::divisions || recipe == Recipe::reciprocals;
    float m2;
    if (l <= 0.5f) {
        m2 = divides ? (s + 1) * l : (l * s) + l;
    } else {
        m2 = recipe == Recipe::productThenScale ? (s - l * s) + l : (l + s) - s * l;
    }
    const float m1 = 2 * l - m2, d = m2 - m1;
    Pixel<float> degrees = {hue + 120, hue, hue - 120};
    if (degrees[0] > 360) degrees[0] = degrees[0] - 360;
    if (degrees[2] < 0) degrees[2] = degrees[2] + 360;
    Pixel<float> v;
    for (size_t c = 0; c < 3; ++c) {
        const float t = degrees[c];
        if (t < 60) {
            v[c] = ramp(t, d, recipe) + m1;
        } else if (t < 180) {
            v[c] = m2;
        } else if (t < 240) {
            v[c] = ramp(240 - t, d, recipe) + m1;
        } else {
            v[c] = m1;
        }
    }
    return v;
}

struct Inverse {
    Recipe recipe;
    Store store;
    bool testsGray;
};

template <class T>
Pixel<T> hlsToRgb(const Pixel<T>& p, const Inverse& how) {
    const float h = static_cast<float>(p[0] + bias<T>), l = static_cast<float>(p[1] + bias<T>),
                s = static_cast<float>(p[2] + bias<T>);
    if (how.testsGray && s == 0) return {p[1], p[1], p[1]};
    const bool quotients = how.recipe == Recipe::divisions || how.recipe == Recipe::reciprocals;
    const Pixel<float> v =
        quotients ? colours(quotient(h * 360, 255, how.recipe), quotient(l, 255, how.recipe),
                            quotient(s, 255, how.recipe), how.recipe)
                  : colours(h * sampleToDegrees<T>(), l * sampleToFraction<T>(), s * sampleToFraction<T>(), how.recipe);
    return {stored<T>(v[0] * top<T>, how.store), stored<T>(v[1] * top<T>, how.store),
            stored<T>(v[2] * top<T>, how.store)};
}

Pixel<float> hlsToRgb32f(const Pixel<float>& p, int x, int width) {
    if (p[2] == 0) return {p[1], p[1], p[1]};
    return colours(p[0] * 360, p[1], p[2], x < (width & ~3) ? Recipe::scaleThenProduct : Recipe::divisions);
}

// ---- the kernels

/// Bodies of `group` columns, then tails.
template <class T, class How>
PixelRule<T> split(Pixel<T> (*rule)(const Pixel<T>&, const How&), int group, How body, How tail) {
    return inGroups(group, [=](const Pixel<T>& p, bool inBody) { return rule(p, inBody ? body : tail); });
}

template <class T>
PixelRule<T> forward16() {
    return split(rgbToHls<T>, 4, Forward{rcp2, Store::nearestSaturated, true}, Forward{rcp2, Store::truncated, false});
}

template <class T>
PixelRule<T> inverse16() {
    return split(hlsToRgb<T>, 4, Inverse{Recipe::productThenScale, Store::nearestSaturated, false},
                 Inverse{Recipe::scaleThenProduct, Store::nearestLowBits, true});
}

Pixel<Mox8u> inverse8u(const Pixel<Mox8u>& p, int x, int width, bool disjoint) {
    const int limit = width / 8 * 8;
    if (x < limit) return hlsToRgb<Mox8u>(p, {Recipe::productThenScale, Store::nearestSaturated, false});
    const bool grouped = disjoint && width - limit >= 4 && x < limit + 4;
    return hlsToRgb<Mox8u>(p, {grouped ? Recipe::reciprocals : Recipe::divisions, Store::truncated, true});
}

const PixelRule<Mox8u> forward8u =
    split(rgbToHls<Mox8u>, 8, Forward{rcp, Store::nearestSaturated, true}, Forward{rcp2, Store::truncated, false});
const PixelRule<Mox8u> bgrToHls =
    fromBgr(split(rgbToHls<Mox8u>, 4, Forward{rcp, Store::truncated, false}, Forward{rcp2, Store::truncated, false}));
const PixelRule<Mox8u> hlsToBgr =
    toBgr(split(hlsToRgb<Mox8u>, 4, Inverse{Recipe::scaleThenProduct, Store::truncated, false},
                Inverse{Recipe::scaleThenProduct, Store::truncated, true}));

// ---- tests

TEST(Hls, FromRGB) {
    expectPixels(MOX_EXPORT(moxiRGBToHLS_8u_C3R), forward8u, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_8u_AC4R),
                 split(rgbToHls<Mox8u>, 4, Forward{rcp, Store::nearestSaturated, true},
                       Forward{rcp2, Store::nearestLowBits, false}),
                 {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_16u_C3R), forward16<Mox16u>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_16u_AC4R), forward16<Mox16u>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_16s_C3R), forward16<Mox16s>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_16s_AC4R), forward16<Mox16s>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_32f_C3R), rgbToHls32f, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHLS_32f_AC4R), rgbToHls32f, {hues}, 40);
}

TEST(Hls, ToRGB) {
    expectPixels(
        MOX_EXPORT(moxiHLSToRGB_8u_C3R), [](auto& p, int x, int width) { return inverse8u(p, x, width, true); }, {hues},
        40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_8u_AC4R),
                 split(hlsToRgb<Mox8u>, 4, Inverse{Recipe::productThenScale, Store::nearestSaturated, false},
                       Inverse{Recipe::divisions, Store::truncated, true}),
                 {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_16u_C3R), inverse16<Mox16u>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_16u_AC4R), inverse16<Mox16u>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_16s_C3R), inverse16<Mox16s>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_16s_AC4R), inverse16<Mox16s>(), {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_32f_C3R), hlsToRgb32f, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToRGB_32f_AC4R), hlsToRgb32f, {hues}, 40);
}

TEST(Hls, FromBGR) {
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_AC4R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_C3P3R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_P3C3R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_P3R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_AC4P4R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_AP4C4R), bgrToHls, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiBGRToHLS_8u_AP4R), bgrToHls, {hues}, 40);
}

TEST(Hls, ToBGR) {
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_C3P3R), hlsToBgr, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_P3C3R), hlsToBgr, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_P3R), hlsToBgr, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_AC4P4R), hlsToBgr, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_AP4C4R), hlsToBgr, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHLSToBGR_8u_AP4R), hlsToBgr, {hues}, 40);
}

TEST(Hls, ManyColours) {
    expectManyPixels(MOX_EXPORT(moxiRGBToHLS_8u_C3R), forward8u, samples);
    expectManyPixels(
        MOX_EXPORT(moxiHLSToRGB_8u_C3R),
        [](const Pixel<Mox8u>& p, int x, int width) { return inverse8u(p, x, width, true); }, samples);
}

// Tail columns divide truly where a row's source and destination share bytes, and only there.
TEST(Hls, ToRGBOverlapping) {
    Random random(1);
    for (const int width : {4, 5, 7, 8, 12, 15}) {
        const int bytes = 3 * width;
        for (const int distance : {0, bytes - 1, bytes, bytes + 1}) {  // of the source behind the destination
            for (int round = 0; round < 20; ++round) {
                std::vector<Mox8u> before(200);
                for (Mox8u& sample : before) sample = hueSample<Mox8u>(random);
                std::vector<Mox8u> want = before;
                for (int x = 0; x < width; ++x) {
                    const Mox8u* const p = &before[size_t(distance + 3 * x)];
                    const Pixel<Mox8u> out = inverse8u({p[0], p[1], p[2]}, x, width, distance >= bytes);
                    std::copy(out.begin(), out.end(), &want[size_t(3 * x)]);
                }
                forEachLibrary([&](const Library& lib) {
                    std::vector<Mox8u> got = before;
                    ASSERT_EQ(
                        MOX_CALL(lib, moxiHLSToRGB_8u_C3R)(got.data() + distance, 100, got.data(), 100, {width, 1}),
                        moxStatusOk);
                    ASSERT_TRUE(got == want) << describe(lastCall()) << ", distance " << distance;
                });
            }
        }
    }
}

}  // namespace
