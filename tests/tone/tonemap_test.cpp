// Tone mapping against plain code.
#include "moxcc/tonemap.h"

#include <cmath>

#include "support/support.h"

using namespace moxtest;

namespace {

int32_t truncated(float x) { return x > -2147483904.0f && x < 2147483648.0f ? static_cast<int32_t>(x) : INT32_MIN; }

Mox8u wrapped(float x, float scale) { return static_cast<Mox8u>(truncated(x * scale)); }
Mox8u saturated(float x, float scale) { return static_cast<Mox8u>(std::clamp(truncated(x * scale), 0, 255)); }

/// A row's sum in the order that its address decides, added to the total.
void addRow(const std::vector<float>& row, uintptr_t address, long double& total) {
    float A[4] = {}, B[4] = {}, C[4] = {}, D[4] = {};
    const int n = static_cast<int>(row.size());
    int i = 0;
    const auto four = [&](float* to) {
        for (int k = 0; k < 4; ++k) to[k] += row[size_t(i++)];
    };
    const int a = static_cast<int>(address % 16);
    if (a % 4 != 0) {
        while (n - i >= 4) four(A);
    } else {
        const int k = a == 0 ? 0 : 4 - a / 4;
        if (n >= k && k > 0) {
            if (k == 2 || k == 3) A[0] += row[size_t(i++)], A[1] += row[size_t(i++)];
            if (k == 1 || k == 3) B[0] += row[size_t(i++)];
        }
        while (n - i >= 16) four(A), four(B), four(C), four(D);
        if (n - i >= 8) four(A), four(B);
        if (n - i >= 4) four(C);
    }
    if (n - i >= 2) D[0] += row[size_t(i++)], D[1] += row[size_t(i++)];
    if (n - i >= 1) C[0] += row[size_t(i++)];
    float V[4];
    for (int k = 0; k < 4; ++k) V[k] = (A[k] + B[k]) + (C[k] + D[k]);
    total += V[0] + V[2];
    total += V[1] + V[3];
}

struct Expected {
    MoxStatus status;
    float scale;  // 0: the image becomes 0
};

Expected linear(const Plane<Mox32f>& src, MoxiSize roi) {
    float most = -3.4028235e38f;
    for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x) most = src.get(x, y) > most ? src.get(x, y) : most;
    if (most < 0) return {moxStatusNoOperation, 0};
    return {moxStatusOk, most > 1.17549435e-38f ? 255.0f / most : 0};
}

Expected mean(const Plane<Mox32f>& src, MoxiSize roi) {
    long double total = 0;
    for (int y = 0; y < roi.height; ++y) {
        std::vector<float> row;
        for (int x = 0; x < roi.width; ++x) row.push_back(src.get(x, y));
        addRow(row, reinterpret_cast<uintptr_t>(src.row(y)), total);
    }
    const double t = 2 * (static_cast<double>(total) / (roi.width * roi.height));
    if (t < 0) return {moxStatusNoOperation, 0};
    return {moxStatusOk, t > 1.1754943508222875e-38 ? static_cast<float>(255.0 / t) : 0};
}

struct Form {
    Symbol<decltype(moxiToneMapLinear_32f8u_C1R)> function;
    Expected (*measure)(const Plane<Mox32f>&, MoxiSize);
    Mox8u (*map)(float, float);
};
const Form forms[] = {{MOX_EXPORT(moxiToneMapLinear_32f8u_C1R), linear, wrapped},
                      {MOX_EXPORT(moxiToneMapMean_32f8u_C1R), mean, saturated}};

/// Compares both forms on one source with the plain code; the plain code runs under the caller's rounding mode too.
void expectMapped(const Plane<Mox32f>& src, MoxiSize roi, Random& random, uint32_t control = mxcsr::usual) {
    for (const Form& form : forms) {
        Plane<Mox8u> want(roi.width, roi.height, 1, random);
        const Plane<Mox8u> before = want;
        Expected expected;
        underMxcsr(control, [&] {
            expected = form.measure(src, roi);
            for (int y = 0; y < roi.height && expected.status == moxStatusOk; ++y)
                for (int x = 0; x < roi.width; ++x)
                    want.set(x, y, expected.scale == 0 ? Mox8u(0) : form.map(src.get(x, y), expected.scale));
        });
        forEachLibrary([&](const Library& lib) {
            Plane<Mox8u> got = before;
            const MxcsrScope scope(control);
            ASSERT_EQ(lib(form.function)(src.data(), src.step(), got.data(), got.step(), roi), expected.status);
            ASSERT_TRUE(same(got, want));
        });
    }
}

TEST(ToneMap, FollowsItsMeasureAtEveryAlignment) {
    for (const uint32_t control : mxcsr::roundings)
        forEachSize([&](MoxiSize roi, Random& random) {
            Plane<Mox32f> src(roi.width, roi.height, 1, Layout::random(random, 4), random);
            const float low = random.oneIn(2) ? 0.0f : -3.0f;
            src.fill([&] { return random.uniform(low, 7.0f) * (random.oneIn(9) ? 1000.0f : 1.0f); });
            expectMapped(src, roi, random, control);
        });
}

// Rows at every byte address, all with a step of whole samples.
TEST(ToneMap, SumsRowsThatAreOffTheirSampleSize) {
    forEachSize(
        [&](MoxiSize roi, Random& random) {
            for (int offset = 1; offset < 16; ++offset) {
                Plane<Mox32f> src(roi.width, roi.height, 1, Layout{.gap = 4, .guard = Guard::none, .offset = offset},
                                  random);
                src.fill([&] { return random.uniform(0.0f, 1.0f); });
                expectMapped(src, roi, random);
            }
        },
        1, 40);
}

TEST(ToneMap, ValuesAtTheEdges) {
    constexpr float inf = INFINITY, tiny = 1.17549435e-38f;
    Random random(1);
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
         }) {
        const MoxiSize roi = {static_cast<int>(samples.size()), 1};
        Plane<Mox32f> src(roi.width, 1, 1, Layout{}, random);
        for (int x = 0; x < roi.width; ++x) src.set(x, 0, samples[size_t(x)]);
        expectMapped(src, roi, random);
    }
}

// The total holds more digits than a double does.
TEST(ToneMap, TotalIsExtended) {
    Random random(1);
    const MoxiSize roi = {1, 4};
    Plane<Mox32f> src(1, 4, 1, Layout{}, random);
    const float rows[] = {0x1p+54f, 1.0f, 1.0f, -0x1p+54f};  // the ones would be lost in a double
    for (int y = 0; y < 4; ++y) src.set(0, y, rows[y]);
    expectMapped(src, roi, random);
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
