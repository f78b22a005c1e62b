// PhotoYCC against plain code, column by column.
#include "moxcc/ycc.h"

#include <algorithm>
#include <cmath>

#include "models/pixels.h"

using namespace moxtest;

namespace {

// ---- 8u: sixteen-bit arithmetic in vector columns, 32-bit in the others ---------------------------------------------

int16_t high(int a, int b) { return static_cast<int16_t>(a * b >> 16); }

Pixel<Mox8u> encode8u(const Pixel<Mox8u>& in, bool vectorColumn) {
    const int r = in[0], g = in[1], b = in[2];
    if (vectorColumn) {
        const int t = high(256 * r, 4898) + high(256 * g, 9617) + high(256 * b, 1867);
        return {static_cast<Mox8u>(std::clamp(high(t, 2921) >> 2, 0, 255)),
                static_cast<Mox8u>(std::clamp((high(64 * b - t, 1789) + 624) >> 2, 0, 255)),
                static_cast<Mox8u>(std::clamp((high(64 * r - t, 2178) + 548) >> 2, 0, 255))};
    } else {
        const int t = 4898 * r + 9617 * g + 1867 * b;
        return {static_cast<Mox8u>(((t >> 10) * 2921) >> 16),
                static_cast<Mox8u>(((((b << 14) - t) >> 10) * 1789 >> 16) + 156),
                static_cast<Mox8u>(((((r << 14) - t) >> 10) * 2178 >> 16) + 137)};
    }
}

Pixel<Mox8u> decode8u(const Pixel<Mox8u>& in, bool vectorColumn) {
    int r, g, b;
    if (vectorColumn) {
        const int y = high(256 * in[0], 5563);
        const int c1 = high(128 * (in[1] - 156), 18168), c2 = high(128 * (in[2] - 137), 14921);
        const int sum = std::clamp((y >> 1) + high(c1, -6357), -32768, 32767);
        r = (y + c2) >> 4, g = std::clamp(sum + high(c2, -16679), -32768, 32767) >> 3, b = (y + c1) >> 4;
    } else {
        const int a = 5564 * in[0], p = 9084 * in[1] - 1417104, q = 7460 * in[2] - 1022020;
        r = (a + q) >> 12, g = (a * 16 + (p >> 8) * -794 + (q >> 8) * -2084) >> 16, b = (a + p) >> 12;
    }
    return {static_cast<Mox8u>(std::clamp(r, 0, 255)), static_cast<Mox8u>(std::clamp(g, 0, 255)),
            static_cast<Mox8u>(std::clamp(b, 0, 255))};
}

// ---- 16u and 16s ----------------------------------------------------------------------------------------------------

constexpr float nearlyHalf = 0.49998999f;

template <class T, int bias>
Pixel<T> encode16(const Pixel<T>& in, bool vectorColumn) {
    using L = std::numeric_limits<T>;
    const float r = static_cast<float>(in[0] + bias), g = static_cast<float>(in[1] + bias),
                b = static_cast<float>(in[2] + bias);
    const float luma = (0.299f * r + 0.587f * g) + 0.114f * b;
    const float y = luma * 0.7132668f, c1 = (b - luma) * 0.4368627f, c2 = (r - luma) * 0.5319216f;
    if (vectorColumn) {
        return {static_cast<T>(std::clamp(nearest(y) - bias, int{L::min()}, int{L::max()})),
                static_cast<T>(std::clamp(nearest(c1 + 40092.0f) - bias, int{L::min()}, int{L::max()})),
                static_cast<T>(std::clamp(nearest(c2 + 35209.0f) - bias, int{L::min()}, int{L::max()}))};
    } else if (bias != 0) {
        return {static_cast<T>(truncated(y + nearlyHalf) - bias), static_cast<T>(truncated(c1 + 40092.5f) - bias),
                static_cast<T>(truncated(c2 + 35209.5f) - bias)};
    } else {
        return {static_cast<T>(truncated(((0.213267f * r + nearlyHalf) + 0.418688f * g) + 0.0813124f * b)),
                static_cast<T>(truncated(((-0.130621f * r + 40092.5f) - 0.256437f * g) + 0.387058f * b)),
                static_cast<T>(truncated(((0.372876f * r + 35209.5f) - 0.312237f * g) - 0.0606389f * b))};
    }
}

Pixel<Mox16u> decode16u(const Pixel<Mox16u>& in, bool vectorColumn) {
    const float u = static_cast<float>(in[1]) - 40092.0f, v = static_cast<float>(in[2]) - 35209.0f;
    float y = static_cast<float>(in[0]) * 1.3584f;
    if (vectorColumn) {
        const float c1 = u * 2.2179f, c2 = v * 1.8215f;
        return {static_cast<Mox16u>(std::clamp(nearest(y + c2), 0, 65535)),
                static_cast<Mox16u>(std::clamp(nearest((y - c1 * 0.194f) - c2 * 0.509f), 0, 65535)),
                static_cast<Mox16u>(std::clamp(nearest(y + c1), 0, 65535))};
    } else {
        y = y + nearlyHalf;
        return {static_cast<Mox16u>(std::clamp(truncated(1.8215f * v + y), 0, 65535)),
                static_cast<Mox16u>(std::clamp(truncated((y - 0.4302726f * u) - 0.92714345f * v), 0, 65535)),
                static_cast<Mox16u>(std::clamp(truncated(y + 2.2179f * u), 0, 65535))};
    }
}

Pixel<Mox16s> decode16s(const Pixel<Mox16s>& in, int, int) {
    const float y = static_cast<float>(in[0] + 32768) * 1.3584f;
    const float c1 = static_cast<float>(in[1] - 7324) * 2.2179f, c2 = static_cast<float>(in[2] - 2441) * 1.8215f;
    return {static_cast<Mox16s>(std::clamp(truncated(y + c2) - 32768, -32768, 32767)),
            static_cast<Mox16s>(std::clamp(truncated((y - c1 * 0.194f) - c2 * 0.509f) - 32768, -32768, 32767)),
            static_cast<Mox16s>(std::clamp(truncated(y + c1) - 32768, -32768, 32767))};
}

// ---- 32f ------------------------------------------------------------------------------------------------------------

Pixel<Mox32f> encode32f(const Pixel<Mox32f>& in, int, int) {
    const float luma = (0.299f * in[0] + 0.587f * in[1]) + 0.114f * in[2];
    return {luma * 0.7132668f, (in[2] - luma) * 0.4368627f + 0.6117647f, (in[0] - luma) * 0.53192f + 0.5372549f};
}

Pixel<Mox32f> decode32f(const Pixel<Mox32f>& in, int, int) {
    const float y = in[0] * 1.3584f, c1 = (in[1] - 0.6117647f) * 2.2179f, c2 = (in[2] - 0.5372549f) * 1.8215f;
    return {unit(y + c2), unit((y - 0.194f * c1) - 0.509f * c2), unit(y + c1)};
}

TEST(Ycc, EightBit) {
    expectPixels(MOX_EXPORT(moxiRGBToYCC_8u_C3R), inGroups(8, encode8u), {samples});
    expectPixels(MOX_EXPORT(moxiRGBToYCC_8u_AC4R), inGroups(4, encode8u), {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_8u_C3R), inGroups(8, decode8u), {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_8u_AC4R), inGroups(4, decode8u), {samples});
}

/// So dark that a float's last bits count, and Y lies near a half: they tell what is added before it is truncated.
template <class T>
Pixels<T> dark(Random& random) {
    return [&]() -> Pixel<T> {
        for (;;) {
            const int64_t r = random.between(0, 300), g = random.between(0, 300);
            for (int64_t b = 0; b <= 300; ++b) {
                const double y = 0.7132668 * (0.299 * double(r) + 0.587 * double(g) + 0.114 * double(b));
                constexpr int64_t least = std::numeric_limits<T>::min();
                if (std::fabs(y - std::floor(y) - 0.5) < 1e-3)
                    return {static_cast<T>(least + r), static_cast<T>(least + g), static_cast<T>(least + b)};
            }
        }
    };
}
Pixels<Mox16u> darkAndNeutral(Random& random) {
    return [&]() -> Pixel<Mox16u> {
        const auto near = [&](int middle, int64_t n) { return static_cast<Mox16u>(middle + random.between(-n, n)); };
        return {near(100, 100), near(40092, 9), near(35209, 9)};
    };
}

TEST(Ycc, SixteenBit) {
    expectManyPixels(MOX_EXPORT(moxiRGBToYCC_16u_C3R), inGroups(4, encode16<Mox16u, 0>), dark);
    expectManyPixels(MOX_EXPORT(moxiRGBToYCC_16s_C3R), inGroups(4, encode16<Mox16s, 32768>), dark);
    expectManyPixels(MOX_EXPORT(moxiYCCToRGB_16u_C3R), inGroups(4, decode16u), darkAndNeutral);
    expectPixels(MOX_EXPORT(moxiRGBToYCC_16u_C3R), inGroups(4, encode16<Mox16u, 0>), {samples});
    expectPixels(MOX_EXPORT(moxiRGBToYCC_16u_AC4R), inGroups(4, encode16<Mox16u, 0>), {samples});
    expectPixels(MOX_EXPORT(moxiRGBToYCC_16s_C3R), inGroups(4, encode16<Mox16s, 32768>), {samples});
    expectPixels(MOX_EXPORT(moxiRGBToYCC_16s_AC4R), inGroups(4, encode16<Mox16s, 32768>), {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_16u_C3R), inGroups(4, decode16u), {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_16u_AC4R), inGroups(4, decode16u), {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_16s_C3R), decode16s, {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_16s_AC4R), decode16s, {samples});
}

TEST(Ycc, Float) {
    expectPixels(MOX_EXPORT(moxiRGBToYCC_32f_C3R), encode32f, {samples});
    expectPixels(MOX_EXPORT(moxiRGBToYCC_32f_AC4R), encode32f, {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_32f_C3R), decode32f, {samples});
    expectPixels(MOX_EXPORT(moxiYCCToRGB_32f_AC4R), decode32f, {samples});
}

TEST(Ycc, KnownColours) {
    const Mox8u colours[][2][3] = {{{0, 0, 0}, {0, 156, 137}},
                                   {{255, 255, 255}, {181, 156, 137}},
                                   {{255, 0, 0}, {54, 122, 232}},
                                   {{0, 255, 0}, {106, 90, 57}},
                                   {{0, 0, 255}, {20, 254, 121}}};
    forEachLibrary([&](const Library& lib) {
        for (const auto& colour : colours)
            for (const int width : {1, 8}) {
                Mox8u src[24], dst[24];
                for (int i = 0; i < 24; ++i) src[i] = colour[0][i % 3];
                MOX_CALL(lib, moxiRGBToYCC_8u_C3R)(src, 24, dst, 24, {width, 1});
                for (int c = 0; c < 3; ++c) EXPECT_EQ(dst[c], colour[1][c]);
            }
    });
}

}  // namespace
