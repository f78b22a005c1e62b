// Gray conversions against plain code, column by column.
#include "moxcc/gray.h"

#include <cmath>
#include <functional>

#include "support/support.h"

using namespace moxtest;

namespace {

/// What an export gives for the pixel at column x of a row of some width, whose destination starts at a given address.
template <class T, class W>
using Rule = std::function<T(const T* pixel, const W* weights, int x, int width, uintptr_t rowStart)>;

const Mox32f luma[3] = {0.299f, 0.587f, 0.114f};
const Mox64f luma64f[3] = {0.29899999499320984, 0.5870000123977661, 0.11400000005960464};

template <int group>
Mox8u gray8u(const Mox8u* p, const Mox32f* weights, int x, int width, uintptr_t) {
    uint32_t w[3];
    for (int c = 0; c < 3; ++c) w[c] = static_cast<uint16_t>(static_cast<int32_t>(weights[c] * 32768.0 + 0.5));
    if (x >= width / group * group) return static_cast<Mox8u>((p[0] * w[0] + p[1] * w[1] + p[2] * w[2] + 16384) >> 15);
    uint32_t sum = 0;
    for (int c = 0; c < 3; ++c) sum = std::min(sum + (256 * p[c] * w[c] >> 16), 65535u);
    const int shifted = static_cast<int16_t>(std::min(sum + 64, 65535u)) >> 7;
    return static_cast<Mox8u>(std::clamp(shifted, 0, 255));
}

template <class T, int bias>
T gray16(const T* p, const Mox32f* w, int, int, uintptr_t) {
    const float a = static_cast<float>(p[0] + bias), b = static_cast<float>(p[1] + bias),
                c = static_cast<float>(p[2] + bias);
    const float sum = (w[0] * a + w[1] * b) + w[2] * c;
    return static_cast<T>(lrintf(sum) - bias);
}

Mox32f gray32f(const Mox32f* p, const Mox32f* w, int, int, uintptr_t) {
    return (w[0] * p[0] + w[1] * p[1]) + w[2] * p[2];
}

Mox64f gray64f(const Mox64f* p, const Mox64f* w, int x, int, uintptr_t rowStart) {
    const int column = x - (rowStart % 16 != 0);  // in pairs from the first column on 16 bytes
    if (column % 2 == 1) return (w[2] * p[2] + w[1] * p[1]) + w[0] * p[0];
    return (w[0] * p[0] + w[1] * p[1]) + w[2] * p[2];
}

template <class T, class W, class Call>
void expectGray(int channels, const W* weights, const Rule<T, W>& rule, const Call& call,
                uint32_t control = mxcsr::usual) {
    forEachSize([&](MoxiSize roi, Random& random) {
        Plane<T> src(roi.width, roi.height, channels, random), want(roi.width, roi.height, 1, random);
        const Plane<T> before = want;
        underMxcsr(control, [&] {
            for (int y = 0; y < roi.height; ++y)
                for (int x = 0; x < roi.width; ++x) {
                    const T pixel[3] = {src.get(x, y, 0), src.get(x, y, 1), src.get(x, y, 2)};
                    want.set(x, y, rule(pixel, weights, x, roi.width, reinterpret_cast<uintptr_t>(want.row(y))));
                }
        });
        src.protect();
        forEachLibrary([&](const Library& lib) {
            Plane<T> got = before;
            const MxcsrScope scope(control);
            ASSERT_EQ(call(lib, src, got, roi), moxStatusOk);
            ASSERT_TRUE(same(got, want));
        });
    });
}

// The default weights, the same weights given, null weights, and others: all must follow one rule.
template <class T, class W, class Color>
void expectColorToGray(int channels, const W* weights, const Rule<T, W>& rule, Symbol<Color> function, const W* given,
                       uint32_t control = mxcsr::usual) {
    expectGray<T, W>(
        channels, weights, rule,
        [&](const Library& lib, const Plane<T>& src, Plane<T>& dst, MoxiSize roi) {
            return lib(function)(src.data(), src.step(), dst.data(), dst.step(), roi, given);
        },
        control);
}

template <class T, class Gray>
void expectRGBToGray(int channels, const Rule<T, Mox32f>& rule, Symbol<Gray> function,
                     uint32_t control = mxcsr::usual) {
    expectGray<T, Mox32f>(
        channels, luma, rule,
        [&](const Library& lib, const Plane<T>& src, Plane<T>& dst, MoxiSize roi) {
            return lib(function)(src.data(), src.step(), dst.data(), dst.step(), roi);
        },
        control);
}

TEST(Gray, EightBitColumnsFollowTheirRule) {
    const Mox32f flat[3] = {0.333f, 0.333f, 0.333f};
    expectRGBToGray<Mox8u>(3, gray8u<4>, MOX_EXPORT(moxiRGBToGray_8u_C3C1R));
    expectRGBToGray<Mox8u>(4, gray8u<8>, MOX_EXPORT(moxiRGBToGray_8u_AC4C1R));
    for (const Mox32f* weights : {luma, flat}) {
        expectColorToGray<Mox8u, Mox32f>(3, weights, gray8u<4>, MOX_EXPORT(moxiColorToGray_8u_C3C1R), weights);
        expectColorToGray<Mox8u, Mox32f>(4, weights, gray8u<8>, MOX_EXPORT(moxiColorToGray_8u_AC4C1R), weights);
    }
    expectColorToGray<Mox8u, Mox32f>(3, luma, gray8u<4>, MOX_EXPORT(moxiColorToGray_8u_C3C1R), nullptr);
    expectColorToGray<Mox8u, Mox32f>(4, luma, gray8u<8>, MOX_EXPORT(moxiColorToGray_8u_AC4C1R), nullptr);
}

TEST(Gray, SixteenBitRoundsInTheCallersMode) {
    const Mox32f flat[3] = {0.25f, 0.25f, 0.25f};
    for (const uint32_t control : mxcsr::roundings) {
        expectRGBToGray<Mox16u>(3, gray16<Mox16u, 0>, MOX_EXPORT(moxiRGBToGray_16u_C3C1R), control);
        expectRGBToGray<Mox16u>(4, gray16<Mox16u, 0>, MOX_EXPORT(moxiRGBToGray_16u_AC4C1R), control);
        expectRGBToGray<Mox16s>(3, gray16<Mox16s, 32768>, MOX_EXPORT(moxiRGBToGray_16s_C3C1R), control);
        expectRGBToGray<Mox16s>(4, gray16<Mox16s, 32768>, MOX_EXPORT(moxiRGBToGray_16s_AC4C1R), control);
        expectColorToGray<Mox16u, Mox32f>(3, flat, gray16<Mox16u, 0>, MOX_EXPORT(moxiColorToGray_16u_C3C1R), flat,
                                          control);
        expectColorToGray<Mox16u, Mox32f>(4, luma, gray16<Mox16u, 0>, MOX_EXPORT(moxiColorToGray_16u_AC4C1R), nullptr,
                                          control);
        expectColorToGray<Mox16s, Mox32f>(3, flat, gray16<Mox16s, 32768>, MOX_EXPORT(moxiColorToGray_16s_C3C1R), flat,
                                          control);
        expectColorToGray<Mox16s, Mox32f>(4, luma, gray16<Mox16s, 32768>, MOX_EXPORT(moxiColorToGray_16s_AC4C1R),
                                          nullptr, control);
    }
}

TEST(Gray, FloatIsThePlainSumInOrder) {
    const Mox32f any[3] = {-1.7f, 2.3e5f, 0.9f};
    const Mox64f any64f[3] = {-1.7, 2.3e5, 0.9};
    for (const uint32_t control : mxcsr::roundings) {
        expectRGBToGray<Mox32f>(3, gray32f, MOX_EXPORT(moxiRGBToGray_32f_C3C1R), control);
        expectRGBToGray<Mox32f>(4, gray32f, MOX_EXPORT(moxiRGBToGray_32f_AC4C1R), control);
        expectColorToGray<Mox32f, Mox32f>(3, any, gray32f, MOX_EXPORT(moxiColorToGray_32f_C3C1R), any, control);
        expectColorToGray<Mox32f, Mox32f>(4, luma, gray32f, MOX_EXPORT(moxiColorToGray_32f_AC4C1R), nullptr, control);
        expectColorToGray<Mox64f, Mox64f>(3, luma64f, gray64f, MOX_EXPORT(moxiColorToGray_64f_C3C1R), nullptr, control);
        expectColorToGray<Mox64f, Mox64f>(4, any64f, gray64f, MOX_EXPORT(moxiColorToGray_64f_AC4C1R), any64f, control);
    }
}

// The two 8-bit rules, over all colours: one row of whole groups, one of three columns.
TEST(Gray, EightBitRulesDifferForAKnownNumberOfColours) {
    forEachLibrary([](const Library& lib) {
        constexpr int colours = 1 << 24;
        std::vector<Mox8u> src(size_t{colours} * 3), vector(colours), scalar(colours);
        for (int i = 0; i < colours; ++i)
            for (int c = 0; c < 3; ++c) src[size_t(i) * 3 + size_t(c)] = static_cast<Mox8u>(i >> (16 - 8 * c));
        MOX_CALL(lib, moxiRGBToGray_8u_C3C1R)(src.data(), 4096 * 3, vector.data(), 4096, {4096, colours / 4096});
        MOX_CALL(lib, moxiRGBToGray_8u_C3C1R)(src.data(), 3, scalar.data(), 1, {1, colours});
        int differ = 0;
        for (int i = 0; i < colours; ++i) {
            differ += vector[size_t(i)] != scalar[size_t(i)];
            ASSERT_LE(std::abs(vector[size_t(i)] - scalar[size_t(i)]), 1);
        }
        EXPECT_EQ(differ, 128509);
        EXPECT_EQ(vector[0x000505], 3);
        EXPECT_EQ(scalar[0x000505], 4);
    });
}

template <class T, class C3, class C4>
void expectSpread(Symbol<C3> toC3, Symbol<C4> toC4) {
    forEachSize([&](MoxiSize roi, Random& random) {
        Plane<T> src(roi.width, roi.height, 1, random);
        src.fill([&] { return random.anyBits<T>(); });
        const T aval = random.sample<T>();
        Plane<T> want3(roi.width, roi.height, 3, random), want4(roi.width, roi.height, 4, random);
        const Plane<T> before3 = want3, before4 = want4;
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x) {
                for (int c = 0; c < 3; ++c) want3.set(x, y, c, src.get(x, y)), want4.set(x, y, c, src.get(x, y));
                want4.set(x, y, 3, aval);
            }
        src.protect();
        forEachLibrary([&](const Library& lib) {
            Plane<T> got3 = before3, got4 = before4;
            ASSERT_EQ(lib(toC3)(src.data(), src.step(), got3.data(), got3.step(), roi), moxStatusOk);
            ASSERT_TRUE(same(got3, want3));
            ASSERT_EQ(lib(toC4)(src.data(), src.step(), got4.data(), got4.step(), roi, aval), moxStatusOk);
            ASSERT_TRUE(same(got4, want4));
        });
    });
}

TEST(Gray, SpreadsBitForBit) {
    expectSpread<Mox8u>(MOX_EXPORT(moxiGrayToRGB_8u_C1C3R), MOX_EXPORT(moxiGrayToRGB_8u_C1C4R));
    expectSpread<Mox16u>(MOX_EXPORT(moxiGrayToRGB_16u_C1C3R), MOX_EXPORT(moxiGrayToRGB_16u_C1C4R));
    expectSpread<Mox32f>(MOX_EXPORT(moxiGrayToRGB_32f_C1C3R), MOX_EXPORT(moxiGrayToRGB_32f_C1C4R));
}

// RGBToGray and ColorToGray round a step down to whole samples; GrayToRGB takes it to the byte.
TEST(Gray, StepsThatAreNoWholeSamples) {
    Random random(1);
    const Plane<Mox16u> src(8, 3, 3, Layout{.gap = 3}, random);
    const MoxiSize roi = {2, 3};
    forEachLibrary([&](const Library& lib) {
        Mox16u rounded[12] = {}, whole[12] = {};
        MOX_CALL(lib, moxiRGBToGray_16u_C3C1R)(src.data(), 51, rounded, 9, roi);
        MOX_CALL(lib, moxiRGBToGray_16u_C3C1R)(src.data(), 50, whole, 8, roi);
        for (int i = 0; i < 12; ++i) EXPECT_EQ(rounded[i], whole[i]);

        Mox8u spread[64] = {};
        MOX_CALL(lib, moxiGrayToRGB_16u_C1C3R)(src.data(), 51, reinterpret_cast<Mox16u*>(spread), 13, roi);
        for (int y = 0; y < 3; ++y) {
            Mox16u sample;
            std::memcpy(&sample, spread + 13 * y, 2);
            EXPECT_EQ(sample, src.get(0, y));
        }
    });
}

}  // namespace
