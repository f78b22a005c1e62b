// XYZ against plain code, column by column.
#include "moxcc/xyz.h"

#include <algorithm>

#include "models/pixels.h"

using namespace moxtest;

namespace {

struct Fixed {
    int m[9], shift;
};
const Fixed fixedMatrices[2][2] = {  // direction, then last columns or vector columns
    {{{27030, 23434, 11824, 13937, 46868, 4729, 1267, 7811, 62274}, 16},
     {{13515, 11717, 5912, 6969, 23434, 2365, 634, 3906, 31137}, 15}},
    {{{212368, -100738, -32671, -63521, 122944, 2723, 3646, -13372, 69291}, 16},
     {{26546, -12591, -4083, -7939, 15368, 340, 456, -1671, 8661}, 13}}};
const float matrices[2][9] = {
    {0.412453f, 0.35758f, 0.180423f, 0.212671f, 0.71516f, 0.072169f, 0.019334f, 0.119193f, 0.950227f},
    {3.240479f, -1.53715f, -0.498535f, -0.969256f, 1.875991f, 0.041556f, 0.055648f, -0.204043f, 1.057311f}};

template <int direction>
Pixel<Mox8u> rule8u(const Pixel<Mox8u>& in, bool vectorColumn) {
    const Fixed& f = fixedMatrices[direction][vectorColumn];
    Pixel<Mox8u> out;
    for (size_t i = 0; i < 3; ++i) {
        const int sum = f.m[3 * i] * in[0] + f.m[3 * i + 1] * in[1] + f.m[3 * i + 2] * in[2];
        out[i] = static_cast<Mox8u>(std::clamp(sum >> f.shift, 0, 255));
    }
    return out;
}

template <int direction, class T, int bias>
Pixel<T> rule16(const Pixel<T>& in, int, int) {
    const float* m = matrices[direction];
    const float a = static_cast<float>(in[0] + bias), b = static_cast<float>(in[1] + bias),
                c = static_cast<float>(in[2] + bias);
    Pixel<T> out;
    for (size_t i = 0; i < 3; ++i) {
        const float sum = (m[3 * i] * a + m[3 * i + 1] * b) + m[3 * i + 2] * c;
        out[i] = static_cast<T>(std::clamp(static_cast<int>(sum), 0, 65535) - bias);
    }
    return out;
}

Pixel<Mox32f> encode32f(const Pixel<Mox32f>& in, int, int) {
    const float* m = matrices[0];
    Pixel<Mox32f> out;
    for (size_t i = 0; i < 3; ++i) out[i] = (m[3 * i] * in[0] + m[3 * i + 1] * in[1]) + m[3 * i + 2] * in[2];
    out[2] = unit(out[2]);
    return out;
}
Pixel<Mox32f> decode32f(const Pixel<Mox32f>& in, int, int) {
    return {unit((3.240479f * in[0] - 1.53715f * in[1]) - 0.498535f * in[2]),
            unit((-0.969256f * in[0] + 1.875991f * in[1]) + 0.041556f * in[2]),
            unit((0.055648f * in[0] - 0.204043f * in[1]) + 1.057311f * in[2])};
}

TEST(Xyz, EightBit) {
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_8u_C3R), inGroups(8, rule8u<0>), {samples});
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_8u_AC4R), inGroups(4, rule8u<0>), {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_8u_C3R), inGroups(8, rule8u<1>), {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_8u_AC4R), inGroups(4, rule8u<1>), {samples});
}

TEST(Xyz, SixteenBit) {
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_16u_C3R), rule16<0, Mox16u, 0>, {samples});
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_16u_AC4R), rule16<0, Mox16u, 0>, {samples});
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_16s_C3R), rule16<0, Mox16s, 32768>, {samples});
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_16s_AC4R), rule16<0, Mox16s, 32768>, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_16u_C3R), rule16<1, Mox16u, 0>, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_16u_AC4R), rule16<1, Mox16u, 0>, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_16s_C3R), rule16<1, Mox16s, 32768>, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_16s_AC4R), rule16<1, Mox16s, 32768>, {samples});
}

TEST(Xyz, Float) {
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_32f_C3R), encode32f, {samples});
    expectPixels(MOX_EXPORT(moxiRGBToXYZ_32f_AC4R), encode32f, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_32f_C3R), decode32f, {samples});
    expectPixels(MOX_EXPORT(moxiXYZToRGB_32f_AC4R), decode32f, {samples});
}

TEST(Xyz, WhiteInEachRule) {
    forEachLibrary([](const Library& lib) {
        const std::vector<Mox8u> white(24, 255);
        Mox8u vector[24], last[3];
        MOX_CALL(lib, moxiRGBToXYZ_8u_C3R)(white.data(), 24, vector, 24, {8, 1});
        MOX_CALL(lib, moxiRGBToXYZ_8u_C3R)(white.data(), 24, last, 3, {1, 1});
        EXPECT_EQ(std::vector<int>({vector[0], vector[1], vector[2]}), std::vector<int>({242, 255, 255}));
        EXPECT_EQ(std::vector<int>({last[0], last[1], last[2]}), std::vector<int>({242, 254, 255}));
    });
}

}  // namespace
