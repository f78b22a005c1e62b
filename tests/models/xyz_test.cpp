// XYZ against plain code, column by column.
#include "moxcc/xyz.h"

#include "models/pixel_forms.h"

using namespace moxtest;

namespace {

int clampTo(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

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
void rule8u(const Mox8u* in, Mox8u* out, bool vectorColumn) {
    const Fixed& f = fixedMatrices[direction][vectorColumn];
    for (int i = 0; i < 3; ++i) {
        const int sum = f.m[3 * i] * in[0] + f.m[3 * i + 1] * in[1] + f.m[3 * i + 2] * in[2];
        out[i] = static_cast<Mox8u>(clampTo(sum >> f.shift, 0, 255));
    }
}

template <int direction, class T, int bias>
void rule16(const T* in, T* out, bool) {
    const float* m = matrices[direction];
    const float a = static_cast<float>(in[0] + bias), b = static_cast<float>(in[1] + bias),
                c = static_cast<float>(in[2] + bias);
    for (int i = 0; i < 3; ++i) {
        const float sum = (m[3 * i] * a + m[3 * i + 1] * b) + m[3 * i + 2] * c;
        out[i] = static_cast<T>(clampTo(static_cast<int>(sum), 0, 65535) - bias);
    }
}

float unit(float v) {
    if (v < 0) v = 0;
    if (v > 1) v = 1;
    return v;
}
void encode32f(const Mox32f* in, Mox32f* out, bool) {
    const float* m = matrices[0];
    for (int i = 0; i < 3; ++i) out[i] = (m[3 * i] * in[0] + m[3 * i + 1] * in[1]) + m[3 * i + 2] * in[2];
    out[2] = unit(out[2]);
}
void decode32f(const Mox32f* in, Mox32f* out, bool) {
    out[0] = unit((3.240479f * in[0] - 1.53715f * in[1]) - 0.498535f * in[2]);
    out[1] = unit((-0.969256f * in[0] + 1.875991f * in[1]) + 0.041556f * in[2]);
    out[2] = unit((0.055648f * in[0] - 0.204043f * in[1]) + 1.057311f * in[2]);
}

TEST(Xyz, EightBit) {
    expectPixelForm<Mox8u>(3, 8, rule8u<0>, MOX_EXPORT(moxiRGBToXYZ_8u_C3R));
    expectPixelForm<Mox8u>(4, 4, rule8u<0>, MOX_EXPORT(moxiRGBToXYZ_8u_AC4R));
    expectPixelForm<Mox8u>(3, 8, rule8u<1>, MOX_EXPORT(moxiXYZToRGB_8u_C3R));
    expectPixelForm<Mox8u>(4, 4, rule8u<1>, MOX_EXPORT(moxiXYZToRGB_8u_AC4R));
}

TEST(Xyz, SixteenBit) {
    expectPixelForm<Mox16u>(3, 1, rule16<0, Mox16u, 0>, MOX_EXPORT(moxiRGBToXYZ_16u_C3R));
    expectPixelForm<Mox16u>(4, 1, rule16<0, Mox16u, 0>, MOX_EXPORT(moxiRGBToXYZ_16u_AC4R));
    expectPixelForm<Mox16s>(3, 1, rule16<0, Mox16s, 32768>, MOX_EXPORT(moxiRGBToXYZ_16s_C3R));
    expectPixelForm<Mox16s>(4, 1, rule16<0, Mox16s, 32768>, MOX_EXPORT(moxiRGBToXYZ_16s_AC4R));
    expectPixelForm<Mox16u>(3, 1, rule16<1, Mox16u, 0>, MOX_EXPORT(moxiXYZToRGB_16u_C3R));
    expectPixelForm<Mox16u>(4, 1, rule16<1, Mox16u, 0>, MOX_EXPORT(moxiXYZToRGB_16u_AC4R));
    expectPixelForm<Mox16s>(3, 1, rule16<1, Mox16s, 32768>, MOX_EXPORT(moxiXYZToRGB_16s_C3R));
    expectPixelForm<Mox16s>(4, 1, rule16<1, Mox16s, 32768>, MOX_EXPORT(moxiXYZToRGB_16s_AC4R));
}

TEST(Xyz, Float) {
    expectPixelForm<Mox32f>(3, 1, encode32f, MOX_EXPORT(moxiRGBToXYZ_32f_C3R));
    expectPixelForm<Mox32f>(4, 1, encode32f, MOX_EXPORT(moxiRGBToXYZ_32f_AC4R));
    expectPixelForm<Mox32f>(3, 1, decode32f, MOX_EXPORT(moxiXYZToRGB_32f_C3R));
    expectPixelForm<Mox32f>(4, 1, decode32f, MOX_EXPORT(moxiXYZToRGB_32f_AC4R));
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
