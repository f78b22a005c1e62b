// Gamma: the tables made again from the curves, and every form against plain code.
#include "moxcc/gamma.h"

#include <array>
#include <cmath>

#include "math/powx_reference.h"
#include "support/support.h"

using namespace moxtest;

namespace {

/// The forms of one direction and sample type. Extra: the range of the 32f forms.
template <class T, class... Extra>
struct Forms {
    using Packed = Symbol<MoxStatus(const T*, int32_t, T*, int32_t, MoxiSize, Extra...)>;
    using InPlace = Symbol<MoxStatus(T*, int32_t, MoxiSize, Extra...)>;
    using Planar = Symbol<MoxStatus(const T* const*, int32_t, T* const*, int32_t, MoxiSize, Extra...)>;
    using InPlanes = Symbol<MoxStatus(T* const*, int32_t, MoxiSize, Extra...)>;
    using Rule = T (*)(T, Extra...);

    Packed c3, ac4;
    InPlace c3i, ac4i;
    Planar p3;
    InPlanes p3i;
    struct {
        Rule c3, ac4, ac4i, p3;
    } rules;
};

#define FORMS(name)                                                                                     \
    MOX_EXPORT(name##_C3R), MOX_EXPORT(name##_AC4R), MOX_EXPORT(name##_C3IR), MOX_EXPORT(name##_AC4IR), \
        MOX_EXPORT(name##_P3R), MOX_EXPORT(name##_IP3R)

/// A layout as the exports take it: row 0 lowest in memory.
Layout upright(Random& random, size_t unit) {
    Layout layout = Layout::random(random, static_cast<int>(unit));
    layout.bottomUp = false;
    return layout;
}

/// What a rule makes of the three colours of each pixel; a fourth sample is left.
template <class T, class... Extra>
void apply(T (*rule)(T, Extra...), const Plane<T>& from, Plane<T>& to, Extra... extra) {
    for (int y = 0; y < from.rows(); ++y)
        for (int x = 0; x < from.columns(); ++x)
            for (int c = 0; c < std::min(from.channels(), 3); ++c) to.set(x, y, c, rule(from.get(x, y, c), extra...));
}

template <class T>
using Next = std::function<T(Random&)>;

/// Runs all forms over one random image each.
template <class T, class... Extra>
void expectForms(const Forms<T, Extra...>& forms, MoxiSize roi, Random& random, const Next<T>& next, uint32_t control,
                 std::type_identity_t<Extra>... extra) {
    const auto plane = [&](int channels) {
        Plane<T> p(roi.width, roi.height, channels, upright(random, sizeof(T)), random);
        p.fill([&] { return next(random); });
        return p;
    };
    const auto wanted = [&](auto rule, const Plane<T>& from, const Plane<T>& old) {
        Plane<T> want = old;
        underMxcsr(control, [&] { apply(rule, from, want, extra...); });
        return want;
    };
    const auto check = [&](const Plane<T>& got, const Plane<T>& want) { ASSERT_TRUE(same(got, want, Nan::anyNan)); };

    const auto packed = [&](auto function, auto inPlace, auto rule, auto inPlaceRule, int channels) {
        Plane<T> src = plane(channels);
        const Plane<T> old = plane(channels), want = wanted(rule, src, old),
                       wantInPlace = wanted(inPlaceRule, src, src);
        src.protect();
        forEachLibrary([&](const Library& lib) {
            Plane<T> got = old, gotInPlace = src;
            const MxcsrScope scope(control);
            ASSERT_EQ(lib(function)(src.data(), src.step(), got.data(), got.step(), roi, extra...), moxStatusOk);
            check(got, want);
            ASSERT_EQ(lib(inPlace)(gotInPlace.data(), gotInPlace.step(), roi, extra...), moxStatusOk);
            check(gotInPlace, wantInPlace);
        });
    };
    packed(forms.c3, forms.c3i, forms.rules.c3, forms.rules.c3, 3);
    packed(forms.ac4, forms.ac4i, forms.rules.ac4, forms.rules.ac4i, 4);

    // Planes that share a step share a layout; each stands at a guard page of its own.
    const Layout layout = upright(random, sizeof(T)), dstLayout = upright(random, sizeof(T));
    std::vector<Plane<T>> src, old, want;
    for (int i = 0; i < 3; ++i) {
        src.emplace_back(roi.width, roi.height, 1, layout, random).fill([&] { return next(random); });
        old.emplace_back(roi.width, roi.height, 1, dstLayout, random);
        want.push_back(wanted(forms.rules.p3, src.back(), old.back()));
    }
    forEachLibrary([&](const Library& lib) {
        std::vector<Plane<T>> got = old, gotInPlace = src;
        const MxcsrScope scope(control);
        const T* const from[] = {src[0].data(), src[1].data(), src[2].data()};
        T* const to[] = {got[0].data(), got[1].data(), got[2].data()};
        T* const both[] = {gotInPlace[0].data(), gotInPlace[1].data(), gotInPlace[2].data()};
        ASSERT_EQ(lib(forms.p3)(from, src[0].step(), to, got[0].step(), roi, extra...), moxStatusOk);
        ASSERT_EQ(lib(forms.p3i)(both, src[0].step(), roi, extra...), moxStatusOk);
        for (size_t i = 0; i < 3; ++i) {
            check(got[i], want[i]);
            Plane<T> wantInPlace = src[i];
            underMxcsr(control, [&] { apply(forms.rules.p3, src[i], wantInPlace, extra...); });
            check(gotInPlace[i], wantInPlace);
        }
    });
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

#define ALIKE(...) \
    { __VA_ARGS__, __VA_ARGS__, __VA_ARGS__, __VA_ARGS__ }

const Forms<Mox8u> forms8u[] = {{FORMS(moxiGammaFwd_8u), ALIKE(tableRule<Mox8u, forward>)},
                                {FORMS(moxiGammaInv_8u), ALIKE(tableRule<Mox8u, inverse>)}};
const Forms<Mox16u> forms16u[] = {{FORMS(moxiGammaFwd_16u), ALIKE(tableRule<Mox16u, forward>)},
                                  {FORMS(moxiGammaInv_16u), ALIKE(tableRule<Mox16u, inverse>)}};

template <class T>
void expectTableForms(const Forms<T>& forms) {
    forEachSize([&](MoxiSize roi, Random& random) {
        expectForms<T>(
            forms, roi, random, [](Random& r) { return r.sample<T>(); }, mxcsr::usual);
    });
}

TEST(Gamma, LooksBytesUp) {
    for (const auto& forms : forms8u) expectTableForms(forms);
}
TEST(Gamma, LooksWordsUp) {
    for (const auto& forms : forms16u) expectTableForms(forms);
}

/// The whole table, as the library gives it.
template <class T>
std::vector<T> wholeTable(const Library& lib, const Forms<T>& forms) {
    std::vector<T> table(3 * (size_t(T(-1)) / 3 + 1));
    for (size_t i = 0; i < table.size(); ++i) table[i] = static_cast<T>(i);
    const MoxiSize roi = {static_cast<int>(table.size() / 3), 1};
    lib(forms.c3i)(table.data(), 1, roi);
    table.resize(size_t(T(-1)) + 1);
    return table;
}

// Entries where the curve changes segment or where a rounding to single precision decides.
TEST(Gamma, TellingEntries) {
    forEachLibrary([&](const Library& lib) {
        const auto bytes = [&](int i, size_t from, size_t n) {
            const std::vector<Mox8u> table = wholeTable(lib, forms8u[i]);
            return std::vector<int>(table.begin() + ptrdiff_t(from), table.begin() + ptrdiff_t(from + n));
        };
        EXPECT_EQ(bytes(0, 0, 8), (std::vector<int>{0, 4, 9, 14, 18, 23, 27, 30}));
        EXPECT_EQ(bytes(0, 250, 6), (std::vector<int>{253, 253, 254, 254, 255, 255}));
        EXPECT_EQ(bytes(1, 0, 8), (std::vector<int>{0, 0, 0, 1, 1, 1, 1, 2}));
        EXPECT_EQ(bytes(1, 250, 6), (std::vector<int>{245, 247, 249, 251, 253, 255}));
        const std::vector<Mox16u> corrected = wholeTable(lib, forms16u[0]), linear = wholeTable(lib, forms16u[1]);
        EXPECT_EQ(corrected[1], 4);
        EXPECT_EQ(corrected[3], 14);
        EXPECT_EQ(corrected[1179], 5306);
        EXPECT_EQ(corrected[1180], 5326);
        EXPECT_EQ(linear[5321], 1182);
        EXPECT_EQ(linear[5322], 1179);
        for (size_t i = 0; i < 65536; ++i) {
            ASSERT_EQ(corrected[i], (entry<Mox16u, forward>(static_cast<Mox16u>(i)))) << i;
            ASSERT_EQ(linear[i], (entry<Mox16u, inverse>(static_cast<Mox16u>(i)))) << i;
        }
        EXPECT_EQ(corrected[65535], 65535);
        EXPECT_EQ(linear[65535], 65535);
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

using FloatForms = Forms<Mox32f, Mox32f, Mox32f>;
const FloatForms floatForms[] = {
    {FORMS(moxiGammaFwd_32f), {forwardFloat<float>, forwardFloat<float>, forwardFloat<double>, forwardFloat<float>}},
    {FORMS(moxiGammaInv_32f), {inverseFloat<float>, inverseFloat<double>, inverseFloat<double>, inverseFloat<double>}},
};

struct Range {
    float vMin, vMax;
};

/// Samples within the range and around it, many of them within a few units in the last place of a threshold.
Next<float> around(Range range) {
    return [=](Random& random) -> float {
        const float r = range.vMax - range.vMin;
        if (random.oneIn(20)) return random.special<float>();
        if (random.oneIn(40)) return random.anyBits<float>();
        if (!random.oneIn(4)) return random.uniform(range.vMin - 0.1f * r, range.vMax + 0.2f * r);
        float x = range.vMin + random.oneOf({0.0f, 0.018f, 0.0812f, 1.0f}) * r;
        for (int64_t n = random.between(-4, 4); n != 0; n += n < 0 ? 1 : -1)
            x = std::nextafter(x, n < 0 ? -INFINITY : INFINITY);
        return x;
    };
}

TEST(Gamma, Floats) {
    constexpr Range ranges[] = {{0, 1},       {-0.0f, 255},     {16, 235},      {-1, 1},
                                {0.1f, 0.7f}, {1e-41f, 2e-38f}, {-3e38f, 3e37f}};
    constexpr uint32_t controls[] = {mxcsr::usual,
                                     mxcsr::down,
                                     mxcsr::up,
                                     mxcsr::towardZero,
                                     mxcsr::usual | mxcsr::flushToZero | mxcsr::denormalsAreZero,
                                     mxcsr::usual | mxcsr::denormalsAreZero};
    int turn = 0;
    forEachSize([&](MoxiSize roi, Random& random) {
        for (const auto& forms : floatForms) {
            const Range range = ranges[size_t(++turn) % std::size(ranges)];
            const uint32_t control = controls[size_t(turn / 7) % std::size(controls)];
            expectForms<float>(forms, roi, random, around(range), control, range.vMin, range.vMax);
        }
    });
}

// Ranges that pass the test although they are none.
TEST(Gamma, RangesWithoutEnd) {
    Random random(1);
    for (const auto& forms : floatForms)
        for (const Range range : {Range{NAN, 1}, Range{0, NAN}, Range{0, INFINITY}, Range{-INFINITY, 0}})
            expectForms<float>(forms, {9, 2}, random, around({0, 1}), mxcsr::usual, range.vMin, range.vMax);
}

TEST(Gamma, FloatsBetweenZeroAndOne) {
    forEachLibrary([](const Library& lib) {
        for (const auto& forms : floatForms) {
            float x[] = {0, -0.0f, 1};
            EXPECT_EQ(lib(forms.c3i)(x, 12, {1, 1}, 0, 1), moxStatusOk);
            EXPECT_EQ(x[0], 0);
            EXPECT_TRUE(x[1] == 0 && std::signbit(x[1]));
            EXPECT_EQ(x[2], 1);
        }
    });
}

}  // namespace
