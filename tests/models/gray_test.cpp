// Gray conversions against plain code, column by column.
#include "moxcc/gray.h"

#include <cmath>

#include "models/pixels.h"

using namespace moxtest;

namespace {

template <class W>
const W luma[3] = {0.299f, 0.587f, 0.114f};

/// What a pixel at column x of a row of some width becomes, in a row that starts at a given address.
template <class T, class W>
using Rule = T (*)(const Pixel<T>& p, const W* w, int x, int width, uintptr_t rowStart);

template <int group>
Mox8u gray8u(const Pixel<Mox8u>& p, const Mox32f* weights, int x, int width, uintptr_t) {
    uint32_t w[3];
    for (int c = 0; c < 3; ++c) w[c] = static_cast<uint16_t>(_mm_cvttsd_si32(_mm_set_sd(weights[c] * 32768.0 + 0.5)));
    if (x >= width / group * group) return static_cast<Mox8u>((p[0] * w[0] + p[1] * w[1] + p[2] * w[2] + 16384) >> 15);
    uint32_t sum = 0;
    for (size_t c = 0; c < 3; ++c) sum = std::min(sum + (256 * p[c] * w[c] >> 16), 65535u);
    const int shifted = static_cast<int16_t>(std::min(sum + 64, 65535u)) >> 7;
    return static_cast<Mox8u>(std::clamp(shifted, 0, 255));
}

template <class T, int bias>
T gray16(const Pixel<T>& p, const Mox32f* w, int, int, uintptr_t) {
    const auto f = [&](size_t c) { return static_cast<float>(p[c] + bias); };
    return static_cast<T>(static_cast<uint32_t>(nearest((w[0] * f(0) + w[1] * f(1)) + w[2] * f(2))) - bias);
}

Mox32f gray32f(const Pixel<Mox32f>& p, const Mox32f* w, int, int, uintptr_t) {
    return (w[0] * p[0] + w[1] * p[1]) + w[2] * p[2];
}

Mox64f gray64f(const Pixel<Mox64f>& p, const Mox64f* w, int x, int, uintptr_t rowStart) {
    const int column = x - (rowStart % 16 != 0);  // in pairs from the first column on 16 bytes
    if (column % 2 == 1) return (w[2] * p[2] + w[1] * p[1]) + w[0] * p[0];
    return (w[0] * p[0] + w[1] * p[1]) + w[2] * p[2];
}

/// Weights of one call: none where there may be none, near those of luma, of any sign and size; at halves of the units of 8u and beside them.
template <class W>
Values anyWeights(const catalogue::Export& e, Random& random) {
    static W weights[3];
    const int kind = static_cast<int>(random.between(e.needsWeights, 4));
    const W size = random.oneOf<W>({W(0.5), W(1.99), W(1e5)});
    for (int c = 0; c < 3; ++c) {
        const W half = (static_cast<W>(random.between(-9, 32767)) + W(0.5)) / 32768;
        weights[c] = kind == 1   ? luma<W>[c] * random.uniform<W>(W(0.9), W(1.1))
                     : kind == 2 ? random.uniform(-size, size)
                     : kind == 3 ? half
                                 : std::nextafter(half, random.oneIn(2) ? W(0) : W(1));
    }
    return {.weights = kind == 0 ? nullptr : weights};
}

template <class T, class W>
void expectGray(const char* name, Rule<T, W> rule) {
    const auto reference = [&](const Picture& src, Picture& want, const Values& values) {
        const W* const w = values.weights ? static_cast<const W*>(values.weights) : luma<W>;
        const auto [width, height] = src.size();
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                want.set(x, y, 0,
                         rule({src.get<T>(x, y, 0), src.get<T>(x, y, 1), src.get<T>(x, y, 2)}, w, x, width,
                              reinterpret_cast<uintptr_t>(want[0].rowStart(y))));
    };
    Calls calls = {.roundings = {std::begin(mxcsr::roundings), std::end(mxcsr::roundings)},
                   .fill = [](Picture& src, Random& random) { src.fill<T>([&] { return random.sample<T>(); }); }};
    const catalogue::Export& e = *catalogue::find(name);
    if (e.is("*Color*")) calls.values = [&](Random& random) { return anyWeights<W>(e, random); };
    expect(name, reference, calls);
}

TEST(Gray, EightBit) {
    for (const char* name : named("moxi*ToGray_8u_C3C1R")) expectGray(name, gray8u<4>);
    for (const char* name : named("moxi*ToGray_8u_AC4C1R")) expectGray(name, gray8u<8>);
}

TEST(Gray, OtherDepthsFollowTheRoundingMode) {
    for (const char* name : named("moxi*ToGray_16u_*")) expectGray(name, gray16<Mox16u, 0>);
    for (const char* name : named("moxi*ToGray_16s_*")) expectGray(name, gray16<Mox16s, 32768>);
    for (const char* name : named("moxi*ToGray_32f_*")) expectGray(name, gray32f);
    for (const char* name : named("moxi*ToGray_64f_*")) expectGray(name, gray64f);
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

template <class T>
void expectSpread(const char* name) {
    expect(name,
           [](const Picture& src, Picture& want, const Values& values) {
               for (int y = 0; y < src.size().height; ++y)
                   for (int x = 0; x < src.size().width; ++x)
                       for (int c = 0; c < want.side().channels(); ++c)
                           want.set(x, y, c, c < 3 ? src.get<T>(x, y) : static_cast<T>(values.alpha));
           },
           {.values = [](Random& random) { return Values{.alpha = static_cast<double>(random.sample<T>())}; }});
}

TEST(Gray, SpreadsBitForBit) {
    for (const char* name : named("moxiGrayToRGB_8u_*")) expectSpread<Mox8u>(name);
    for (const char* name : named("moxiGrayToRGB_16u_*")) expectSpread<Mox16u>(name);
    for (const char* name : named("moxiGrayToRGB_32f_*")) expectSpread<Mox32f>(name);
}

}  // namespace
