// HSV against plain code, column by column.
#include "moxcc/hsv.h"

#include <algorithm>
#include <bit>

#include "models/pixels.h"

using namespace moxtest;

namespace {

/// Samples are saturated in vector columns of 8u, and cut to their low bits elsewhere.
Mox8u stored(float x, bool vector) {
    const int value = nearest(x);
    return static_cast<Mox8u>(vector ? std::clamp(value, 0, 255) : value);
}

Pixel<Mox8u> rgbToHsv8u(const Pixel<Mox8u>& p, int x, int width) {
    const bool vector = x < width / 4 * 4;
    const float r = p[0], g = p[1], b = p[2];
    const float mx = std::max({r, g, b}), mn = std::min({r, g, b}), delta = mx - mn;
    const Mox8u v = std::max({p[0], p[1], p[2]});
    if (mx == 0 || delta == 0) return {0, 0, v};

    const Mox8u s = stored((rcp(mx) * delta) * 255, vector);
    const float q = rcp(delta);
    const float cr = (mx - r) * q, cg = (mx - g) * q, cb = (mx - b) * q;
    char sector;
    if (vector) {
        sector = g == mx && r != mx ? 'g' : b == mx ? 'b' : 'r';
    } else {
        sector = b == mx ? 'b' : g == mx ? 'g' : 'r';
    }
    float h = sector == 'r' ? cb - cg : sector == 'g' ? (cr - cb) + 2 : (cg - cr) + 4;
    h = h * 42.5f;
    if (h < 0) h = h + 255;
    return {stored(h, vector), s, v};
}

Pixel<Mox16u> rgbToHsv16u(const Pixel<Mox16u>& p, int, int) {
    const int r = p[0], g = p[1], b = p[2];
    const int mx = std::max({r, g, b}), mn = std::min({r, g, b}), delta = mx - mn;
    const auto v = static_cast<Mox16u>(mx);
    if (mx == 0 || delta == 0) return {0, 0, v};

    const float s = static_cast<float>(delta) / static_cast<float>(mx), q = 1.0f / static_cast<float>(delta);
    const float cr = static_cast<float>(mx - r) * q, cg = static_cast<float>(mx - g) * q,
                cb = static_cast<float>(mx - b) * q;
    float h = b == mx ? (4 - cr) + cg : g == mx ? (cr + 2) - cb : cb - cg;
    if (h + 0x1p-23f < 0) h = h + 6;
    return {static_cast<Mox16u>(truncated((h * 65535) / 6 + 0.5f)), static_cast<Mox16u>(truncated(s * 65535 + 0.5f)),
            v};
}

template <class T>
Pixel<T> hsvToRgb(const Pixel<T>& p, int, int) {
    constexpr T top = std::numeric_limits<T>::max();
    const auto toDegrees = std::bit_cast<float>(sizeof(T) == 1 ? 0x3FB4B4B5 : 0x3BB400B4);
    const auto toFraction = std::bit_cast<float>(sizeof(T) == 1 ? 0x3B808081 : 0x37800080);
    if (p[1] == 0) return {p[2], p[2], p[2]};

    const float h = p[0] == top ? 0 : p[0], s = p[1], v = p[2];
    const float hh = (h * std::bit_cast<float>(0x3C888889)) * toDegrees;
    const float sv = (s * toFraction) * v;
    const float least = v - sv;
    const int i = truncated(hh);
    const float fs = (hh - static_cast<float>(i)) * sv;
    const auto sample = [](float value) { return static_cast<T>(nearest(value)); };
    const T V = p[2], P = sample(least), Q = sample(v - fs), t = sample(fs + least);
    const Pixel<T> rgb[6] = {{V, t, P}, {Q, V, P}, {P, V, t}, {P, Q, V}, {t, P, V}, {V, P, Q}};
    return rgb[i];
}

TEST(Hsv, FromRGB) {
    expectPixels(MOX_EXPORT(moxiRGBToHSV_8u_C3R), rgbToHsv8u, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHSV_8u_AC4R), rgbToHsv8u, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHSV_16u_C3R), rgbToHsv16u, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiRGBToHSV_16u_AC4R), rgbToHsv16u, {hues}, 40);
}

TEST(Hsv, ToRGB) {
    expectPixels(MOX_EXPORT(moxiHSVToRGB_8u_C3R), hsvToRgb<Mox8u>, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHSVToRGB_8u_AC4R), hsvToRgb<Mox8u>, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHSVToRGB_16u_C3R), hsvToRgb<Mox16u>, {hues}, 40);
    expectPixels(MOX_EXPORT(moxiHSVToRGB_16u_AC4R), hsvToRgb<Mox16u>, {hues}, 40);
}

TEST(Hsv, ManyColours) {
    expectManyPixels(MOX_EXPORT(moxiRGBToHSV_8u_C3R), rgbToHsv8u, samples);
    expectManyPixels(MOX_EXPORT(moxiHSVToRGB_8u_C3R), hsvToRgb<Mox8u>, samples);
}

}  // namespace
