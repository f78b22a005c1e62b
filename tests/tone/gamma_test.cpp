// Gamma: the tables made again from the curves, and every form against plain code.
#include "moxcc/gamma.h"

#include <array>
#include <cmath>
#include <numeric>

#include "math/powx_reference.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;

namespace {

/// Writes the three colours of each pixel by a rule; a fourth sample is left.
template <class T, class Rule>
Reference byRule(const Rule& rule) {
    return [=](const Picture& src, Picture& want, const Values& values) {
        for (int y = 0; y < src.size().height; ++y)
            for (int x = 0; x < src.size().width; ++x)
                for (int c = 0; c < 3; ++c) want.set<T>(x, y, c, rule(src.get<T>(x, y, c), values));
    };
}

// ---- tables ---------------------------------------------------------------------------------------------------------

long double forward(double x) { return x < 0.018 ? 4.5L * x : 1.099 * powl(x, 0.45) - 0.099; }
long double inverse(double y) { return y < 0.0812 ? y / 4.5L : powl((y + 0.099) / 1.099, 1 / 0.45); }

/// Rounded to a float, then to an integer: ties of the float go to the even neighbour.
template <class T, long double curve(double)>
T entry(T i) {
    constexpr double top = T(-1);
    return static_cast<T>(lrintf(static_cast<float>(static_cast<double>(curve(i / top) * top))));
}

template <class T, long double curve(double)>
T tableRule(T i) {
    static const auto table = [] {
        std::array<T, size_t(T(-1)) + 1> t;
        for (size_t k = 0; k < t.size(); ++k) t[k] = entry<T, curve>(static_cast<T>(k));
        return t;
    }();
    return table[i];
}

/// The whole table in one row, and all sizes.
template <class T, long double curve(double)>
void expectTable(const char* name) {
    const Reference reference = byRule<T>([](T x, const Values&) { return tableRule<T, curve>(x); });
    expect(name, reference);
    const auto allSamples = [](Picture& src, Random&) {
        src.fill<T>([i = 0]() mutable { return static_cast<T>(i++); });
    };
    Random random(1);
    expectAt(name, {(T(-1) + 1) / 3 + 1, 1}, random, reference, {.fill = allSamples});
}

TEST(Gamma, LooksIntegersUp) {
    for (const char* name : named("moxiGammaFwd_8u_*")) expectTable<Mox8u, forward>(name);
    for (const char* name : named("moxiGammaInv_8u_*")) expectTable<Mox8u, inverse>(name);
    for (const char* name : named("moxiGammaFwd_16u_*")) expectTable<Mox16u, forward>(name);
    for (const char* name : named("moxiGammaInv_16u_*")) expectTable<Mox16u, inverse>(name);
}

// Entries where the curve changes segment or where a rounding to single precision decides.
TEST(Gamma, TellingEntries) {
    EXPECT_EQ((entry<Mox16u, forward>(1179)), 5306);
    EXPECT_EQ((entry<Mox16u, forward>(1180)), 5326);
    EXPECT_EQ((entry<Mox16u, inverse>(5321)), 1182);
    EXPECT_EQ((entry<Mox16u, inverse>(5322)), 1179);
    forEachLibrary([&](const Library& lib) {
        Mox8u corrected[258], linear[258];
        std::iota(corrected, std::end(corrected), Mox8u(0));
        std::iota(linear, std::end(linear), Mox8u(0));
        MOX_CALL(lib, moxiGammaFwd_8u_C3IR)(corrected, 258, {86, 1});
        MOX_CALL(lib, moxiGammaInv_8u_C3IR)(linear, 258, {86, 1});
        const Mox8u first[][8] = {{0, 4, 9, 14, 18, 23, 27, 30}, {0, 0, 0, 1, 1, 1, 1, 2}};
        const Mox8u last[][6] = {{253, 253, 254, 254, 255, 255}, {245, 247, 249, 251, 253, 255}};
        for (int i = 0; i < 8; ++i) EXPECT_TRUE(corrected[i] == first[0][i] && linear[i] == first[1][i]) << i;
        for (int i = 0; i < 6; ++i) EXPECT_TRUE(corrected[250 + i] == last[0][i] && linear[250 + i] == last[1][i]) << i;
    });
}

// ---- floats ---------------------------------------------------------------------------------------------------------

/// Real: the precision of t.
template <class Real>
float forwardFloat(float x, float vMin, float vMax) {
    const float r = vMax - vMin;
    const float d = vMin == 0 ? x : x - vMin;
    const Real reciprocal = Real(1) / Real(r);
    const Real t = Real(d) * reciprocal;
    const float p = powxReference(static_cast<float>(t), 0.45f).value;
    float h = 1.099f * p;
    h = h - 0.099f;
    h = h * r;
    const float l = 4.5f * d;
    const float y = t < Real(0.018f) ? l : h;
    return vMin == 0 ? y : y + vMin;
}

template <class Real>
float inverseFloat(float x, float vMin, float vMax) {
    const float r = vMax - vMin;
    const float d = vMin == 0 ? x : x - vMin;
    const Real reciprocal = Real(1) / Real(r);
    const Real t = Real(d) * reciprocal;
    Real u = t + Real(0.099f);
    u = u * Real(std::bit_cast<float>(0x3F68F065u));  // 1 / 1.099
    const float p = powxReference(static_cast<float>(u), std::bit_cast<float>(0x400E38E4u)).value;
    const float h = p * r;
    const float l = d * std::bit_cast<float>(0x3E638E39u);  // 1 / 4.5
    const float y = t < Real(0.0812f) ? l : h;
    return vMin == 0 ? y : y + vMin;
}

struct Range {
    float vMin, vMax;
};

/// Samples within the range and around it, many of them within a few units in the last place of a threshold.
float around(Range range, Random& random) {
    const float r = range.vMax - range.vMin;
    if (random.oneIn(20)) return random.special<float>();
    if (random.oneIn(40)) return random.anyBits<float>();
    if (!random.oneIn(4)) return random.uniform(range.vMin - 0.1f * r, range.vMax + 0.2f * r);
    float x = range.vMin + random.oneOf({0.0f, 0.018f, 0.0812f, 1.0f}) * r;
    for (int64_t n = random.between(-4, 4); n != 0; n += n < 0 ? 1 : -1)
        x = std::nextafter(x, n < 0 ? -INFINITY : INFINITY);
    return x;
}

/// Among the ranges are some that pass the test although they are none.
void expectCurve(const char* name, float (*curve)(float, float, float)) {
    constexpr uint32_t keepNone = mxcsr::usual | mxcsr::flushToZero | mxcsr::denormalsAreZero;
    Range range = {0, 1};
    const Calls calls = {.roundings = {mxcsr::usual, mxcsr::down, mxcsr::up, mxcsr::towardZero, keepNone,
                                       mxcsr::usual | mxcsr::denormalsAreZero},
                         .fill =
                             [&](Picture& src, Random& random) {
                                 const Range sound = std::isfinite(range.vMax - range.vMin) ? range : Range{0, 1};
                                 src.fill<Mox32f>([&] { return around(sound, random); });
                             },
                         .values =
                             [&](Random& random) {
                                 range = random.oneOf<Range>({{0, 1},
                                                              {0, 1},
                                                              {-0.0f, 255},
                                                              {16, 235},
                                                              {-1, 1},
                                                              {0.1f, 0.7f},
                                                              {1e-41f, 2e-38f},
                                                              {-3e38f, 3e37f},
                                                              {NAN, 1},
                                                              {0, NAN},
                                                              {0, INFINITY},
                                                              {-INFINITY, 0}});
                                 return Values{.lowerLimit = range.vMin, .upperLimit = range.vMax};
                             },
                         .nan = Nan::anyNan};
    expect(name, byRule<Mox32f>([=](float x, const Values& v) { return curve(x, v.lowerLimit, v.upperLimit); }), calls);
}

// Positions in the range are in double precision in one form, and in all of the inverse but those of three channels.
TEST(Gamma, Floats) {
    for (const char* name : named("moxiGammaFwd_32f_*"))
        expectCurve(name, catalogue::find(name)->is("*_AC4IR") ? forwardFloat<double> : forwardFloat<float>);
    for (const char* name : named("moxiGammaInv_32f_*"))
        expectCurve(name, catalogue::find(name)->is("*_C3*R") ? inverseFloat<float> : inverseFloat<double>);
}

TEST(Gamma, FloatsBetweenZeroAndOne) {
    forEachLibrary([](const Library& lib) {
        for (const auto function : {MOX_EXPORT(moxiGammaFwd_32f_C3IR), MOX_EXPORT(moxiGammaInv_32f_C3IR)}) {
            float x[] = {0, -0.0f, 1};
            EXPECT_EQ(lib(function)(x, 12, {1, 1}, 0, 1), moxStatusOk);
            EXPECT_EQ(x[0], 0);
            EXPECT_TRUE(x[1] == 0 && std::signbit(x[1]));
            EXPECT_EQ(x[2], 1);
        }
    });
}

}  // namespace
