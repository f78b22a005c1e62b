// Tone mapping against plain code.
#include "moxcc/tonemap.h"

#include <algorithm>
#include <cmath>

#include "frame/row_sum.h"
#include "models/pixels.h"

using namespace moxtest;

namespace {

Mox8u wrapped(float x, float scale) { return static_cast<Mox8u>(truncated(x * scale)); }
Mox8u saturated(float x, float scale) { return static_cast<Mox8u>(std::clamp(truncated(x * scale), 0, 255)); }

struct Expected {
    MoxStatus status;
    float scale;  // 0: the image becomes 0
};

Expected linear(const Picture& src) {
    float most = -3.4028235e38f;
    for (int y = 0; y < src.size().height; ++y)
        for (int x = 0; x < src.size().width; ++x) most = std::max(most, src.get<float>(x, y));
    if (most < 0) return {moxStatusNoOperation, 0};
    return {moxStatusOk, most > 1.17549435e-38f ? 255.0f / most : 0};
}

Expected mean(const Picture& src) {
    const auto [width, height] = src.size();
    long double total = 0;
    for (int y = 0; y < height; ++y) {
        std::vector<float> row;
        for (int x = 0; x < width; ++x) row.push_back(src.get<float>(x, y));
        addRow(row, reinterpret_cast<uintptr_t>(src[0].rowStart(y)), total);
    }
    const double t = 2 * (static_cast<double>(total) / (width * height));
    if (t < 0) return {moxStatusNoOperation, 0};
    return {moxStatusOk, t > 1.1754943508222875e-38 ? static_cast<float>(255.0 / t) : 0};
}

/// Runs both forms. The plain code too runs under the caller's rounding mode.
template <class Run>
void bothForms(Calls calls, const Run& run) {
    const struct {
        const char* name;
        Expected (*measure)(const Picture&);
        Mox8u (*map)(float, float);
    } forms[] = {{"moxiToneMapLinear_32f8u_C1R", linear, wrapped}, {"moxiToneMapMean_32f8u_C1R", mean, saturated}};
    for (const auto& form : forms) {
        calls.status = [&](const Picture& src) { return form.measure(src).status; };
        run(
            form.name,
            [&](const Picture& src, Picture& want, const Values&) {
                const auto [status, scale] = form.measure(src);
                for (int y = 0; y < src.size().height && status == moxStatusOk; ++y)
                    for (int x = 0; x < src.size().width; ++x)
                        want.set(x, y, 0, scale == 0 ? Mox8u(0) : form.map(src.get<float>(x, y), scale));
            },
            calls);
    }
}

void expectMapped(const Calls& calls) {
    bothForms(calls, [](const char* name, const Reference& reference, const Calls& c) { expect(name, reference, c); });
}

TEST(ToneMap, FollowsItsMeasureAtEveryAlignment) {
    expectMapped({.roundings = {std::begin(mxcsr::roundings), std::end(mxcsr::roundings)},
                  .fill = [](Picture& src, Random& random) {
                      const float low = random.oneIn(2) ? 0.0f : -3.0f;
                      src.fill<float>([&] { return random.uniform(low, 7.0f) * (random.oneIn(9) ? 1000.0f : 1.0f); });
                  }});
}

// Rows at every byte address, all with a step of whole samples.
TEST(ToneMap, SumsRowsThatAreOffTheirSampleSize) {
    for (int offset = 1; offset < 16; ++offset)
        expectMapped(
            {.toWidth = 40,
             .fill = [](Picture& src, Random& random) { src.fill<float>([&] { return random.uniform(0.0f, 1.0f); }); },
             .source = [&](Random&) { return Layout{.gap = 4, .guard = Guard::none, .offset = offset}; }});
}

/// Maps one row of so many samples.
void expectRow(int width, const std::function<float(int x)>& sample) {
    Random random(1);
    const auto fill = [&](Picture& src, Random&) {
        for (int x = 0; x < width; ++x) src.set(x, 0, 0, sample(x));
    };
    bothForms({.fill = fill}, [&](const char* name, const Reference& reference, const Calls& calls) {
        expectAt(name, {width, 1}, random, reference, calls);
    });
}

// Samples that are mapped to whole numbers tell the last bit of the scale.
TEST(ToneMap, ScaleToTheLastBit) {
    Random random(1);
    for (int i = 0; i < 300; ++i) {
        const float unit = random.uniform(0.001f, 1000.0f);
        expectRow(256, [&](int x) { return static_cast<float>(x) * unit; });
    }
}

TEST(ToneMap, ValuesAtTheEdges) {
    constexpr float inf = INFINITY, tiny = 1.17549435e-38f;
    for (const std::vector<float>& samples : std::vector<std::vector<float>>{
             {-1, -1, -1},
             {0, 0},
             {-0.0f},
             {tiny},
             {tiny * 1.5f},
             {5e-37f, 1e-37f},
             {3, 2, 1},
             {7, -0.1f},
             {10, -0.1f, 5},
             {1, NAN, 2},
             {NAN},
             {1, inf},
             {-inf, -inf},
             {-inf, 4},
             {3e38f, 3e38f, 3e38f, 1e38f},
             {1e-30f, 1, 3e9f, -3e9f},
         })
        expectRow(static_cast<int>(samples.size()), [&](int x) { return samples[size_t(x)]; });
}

// A source row is mapped from its offset with the low two bits cleared, but measured at its step as it is.
TEST(ToneMap, SourceRowsStartOnWholeSamples) {
    constexpr int step = 10, width = 2, height = 3;
    Random random(1);
    Plane<Mox32f> src(16, 1, 1, Layout{}, random);
    src.fill([&] { return random.uniform(1.0f, 9.0f); });
    const auto sample = [&](int offset) {
        float value;
        std::memcpy(&value, src.rowStart(0) + offset, 4);
        return value;
    };
    float most = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) most = std::max(most, sample(step * y + 4 * x));
    forEachLibrary([&](const Library& lib) {
        Mox8u dst[width * height] = {};
        MOX_CALL(lib, moxiToneMapLinear_32f8u_C1R)(src.data(), step, dst, width, {width, height});
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                EXPECT_EQ(dst[width * y + x], wrapped(sample((step * y & ~3) + 4 * x), 255.0f / most));
    });
}

}  // namespace
