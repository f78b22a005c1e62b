// The power kernel, which no export shows: compiled into this test at each width, against plain code.
#include <gtest/gtest.h>

#include <cfenv>
#include <limits>
#include <vector>

#include "math/powx_reference.h"
#include "moxcc/types.h"
#include "support/support.h"

#define LEVEL(level, ...)                                                            \
    namespace level {                                                                \
    int32_t moxsPowx_32f_A21(const Mox32f* src, Mox32f p, Mox32f* dst, int32_t len); \
    }
#include "levels.inc"
#undef LEVEL

using namespace moxtest;

namespace {

constexpr float inf = INFINITY, largest = std::numeric_limits<float>::max();
constexpr float forwardExponent = 0.45f, inverseExponent = 1 / 0.45f;

using Kernel = int32_t(const Mox32f* src, Mox32f p, Mox32f* dst, int32_t len);

void forEachWidth(const std::function<void(Kernel*)>& body) {
    const struct {
        Kernel* kernel;
        const char* name;
        bool runs;
    } widths[] = {
#define LEVEL(level, name, path, runs) {level::moxsPowx_32f_A21, name, runs},
#include "levels.inc"
    };
    for (const auto& [kernel, name, runs] : widths) {
        if (!runs) continue;
        SCOPED_TRACE(name);
        body(kernel);
    }
}

bool sameBits(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) || std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

/// The kernel on a row, in place in front of a guard page, against the reference sample by sample.
void expectPowers(const std::vector<float>& row, float p, uint32_t control = mxcsr::usual) {
    std::vector<PowxResult> want;
    int code = 0;
    for (const float x : row) {
        want.push_back(powxReference(x, p));
        code |= want.back().code;
    }
    Random random(1);
    Plane<float> samples(static_cast<int>(row.size()), 1, 1, Layout{}, random);
    forEachWidth([&](Kernel* kernel) {
        std::copy(row.begin(), row.end(), samples.data());
        int got = -1;
        underMxcsr(control, [&] { got = kernel(samples.data(), p, samples.data(), static_cast<int>(row.size())); });
        EXPECT_EQ(got, code) << "exponent " << p;
        for (size_t i = 0; i < row.size(); ++i)
            ASSERT_TRUE(sameBits(samples.data()[i], want[i].value))
                << row[i] << " ^ " << p << ": " << samples.data()[i] << ", want " << want[i].value;
    });
}

TEST(Powx, MatchesItsRecipe) {
    const float exponents[] = {forwardExponent, inverseExponent, 1, -1, 0.5f, -7.25f, 1e-3f, 40, 1e30f, largest};
    Random random(1);
    for (const uint32_t control : {mxcsr::usual, mxcsr::down, mxcsr::towardZero | mxcsr::flushToZero})
        for (const float p : exponents)
            for (size_t n = 1; n < 40; ++n) {
                std::vector<float> row(n);
                for (float& x : row) {
                    const bool any = random.oneIn(6);
                    x = any ? random.anyBits<float>()
                            : std::exp2(random.uniform(random.oneIn(3) ? -0.03f : -90.f, 0.03f));
                    if (random.oneIn(50)) x = random.special<float>();
                }
                expectPowers(row, p, control);
                if (HasFailure()) return;
            }
}

// Where the way to sum the logarithm changes, at 0.9921875 and 1.015625.
TEST(Powx, MatchesItsRecipeBesideOne) {
    std::vector<float> row;
    for (const uint32_t middle : {0x3F7E0000u, 0x3F820000u})
        for (uint32_t b = middle - 1500; b <= middle + 1500; ++b) row.push_back(std::bit_cast<float>(b));
    for (const float p : {forwardExponent, inverseExponent, 1.0f, 40.0f, 700.0f}) expectPowers(row, p);
}

// One binade and the neighbourhood of 1 hold all mantissas and both ways to sum the logarithm.
TEST(Powx, IsWithinAFewUnitsInTheLastPlace) {
    for (const float p : {forwardExponent, inverseExponent}) {
        std::vector<float> x, y;
        for (uint32_t b = 0x3F700000; b < 0x3F800000 + 0x800000; b += 61) x.push_back(std::bit_cast<float>(b));
        for (uint32_t b = 0x00800000; b < 0x54000000; b += 12347) x.push_back(std::bit_cast<float>(b));
        y.resize(x.size());
        forEachWidth([&](Kernel* kernel) {
            kernel(x.data(), p, y.data(), static_cast<int>(x.size()));
            for (size_t i = 0; i < x.size(); ++i) {
                const double exact = std::pow(static_cast<double>(x[i]), static_cast<double>(p));
                if (exact < std::numeric_limits<float>::min()) continue;
                const double unit = std::exp2(std::ilogb(exact) - 23);
                ASSERT_LE(std::fabs(y[i] - exact), 8 * unit) << x[i];
            }
        });
    }
}

// The rare path by itself is exact but for the rounding of a double: results that fall on no tie are the nearest.
TEST(Powx, RarePathIsTheNearest) {
    Random random(1);
    for (int i = 0; i < 5000; ++i) {
        const float denormal = std::bit_cast<float>(static_cast<uint32_t>(random.between(1, 0x7FFFFF)));
        const float negative = -random.uniform(0.25f, 4.0f);
        expectPowers({denormal}, random.uniform(0.0f, 3.0f));
        expectPowers({negative}, static_cast<float>(random.between(-60, 60)));
        expectPowers({std::exp2(random.uniform(-120.f, 120.f))}, random.uniform(-100.f, 100.f));
        if (HasFailure()) return;
    }
}

TEST(Powx, SpecialValues) {
    struct {
        float x, p, want;
        int code;
    } const rows[] = {
        {1, NAN, 1, 0},
        {NAN, 0, 1, 0},
        {-inf, -0.0f, 1, 0},
        {NAN, 2, NAN, 0},
        {2, NAN, NAN, 0},
        {0, 0.45f, 0, 0},
        {-0.0f, 0.45f, 0, 0},
        {-0.0f, 3, -0.0f, 0},
        {-0.0f, 2, 0, 0},
        {0, inf, 0, 0},
        {0, -0.5f, inf, 19},
        {-0.0f, -3, -inf, 19},
        {-0.0f, -2, inf, 19},
        {0, -inf, inf, 19},
        {-1, 5, -1, 0},
        {-1, 4, 1, 0},
        {-1, inf, 1, 0},
        {-1, -inf, 1, 0},
        {-1, 0.45f, NAN, 19},
        {inf, 0.45f, inf, 0},
        {inf, -0.45f, 0, 0},
        {-inf, 3, -inf, 0},
        {-inf, 0.5f, inf, 0},
        {-inf, -3, -0.0f, 0},
        {-inf, -0.5f, 0, 0},
        {2, inf, inf, 0},
        {-2, inf, inf, 0},
        {2, -inf, 0, 0},
        {0.5f, inf, 0, 0},
        {-0.5f, -inf, inf, 0},
        {-2, 0.45f, NAN, 19},
        {-2, 3, -8, 0},
        {-2, -2, 0.25f, 0},
        {-3, 16777215, -inf, 0},
        {-3, 16777216, inf, 0},
        {largest, 1 / 0.45f, inf, 0},
        {0x1p-149f, 2, 0, 0},
        {-largest, 3, -inf, 0},
        {-0x1p-140f, 3, -0.0f, 0},
        {0x1p-148f, 0.5f, 0x1p-74f, 0},
        {0x1p-149f, 1, 0x1p-149f, 0},
        {1, 0.45f, 1, 0},
        {1, -1e30f, 1, 0},
    };
    forEachWidth([&](Kernel* kernel) {
        for (const auto& row : rows) {
            float y = 77;
            EXPECT_EQ(kernel(&row.x, row.p, &y, 1), row.code) << row.x << " ^ " << row.p;
            EXPECT_TRUE(sameBits(y, row.want)) << row.x << " ^ " << row.p << ": " << y;
        }
    });
}

TEST(Powx, Arguments) {
    forEachWidth([](Kernel* kernel) {
        float x = 2;
        EXPECT_EQ(kernel(nullptr, 1, nullptr, 0), moxStatusBadSize);
        EXPECT_EQ(kernel(&x, 1, &x, -1), moxStatusBadSize);
        EXPECT_EQ(kernel(nullptr, 1, &x, 1), moxStatusNullPtr);
        EXPECT_EQ(kernel(&x, 1, nullptr, 1), moxStatusNullPtr);
        EXPECT_EQ(x, 2);
    });
}

// Samples of every kind, under every control word: no trap, the words come back, and flags do not stay.
TEST(Powx, KeepsTheFloatingPointEnvironment) {
    const float row[] = {0.3f, 0, -1, NAN, inf, largest, 1e-42f, 1e13f, 2, -0.0f, 7};
    constexpr uint32_t unmasked = 0, inexact = 0x20, invalid = 0x01, divideByZero = 0x04;
    struct {
        uint32_t before, after;
    } const words[] = {
        {mxcsr::usual, mxcsr::usual},
        {mxcsr::usual | invalid | divideByZero, mxcsr::usual},  // no change: all flags but inexact are cleared
        {mxcsr::down | invalid, mxcsr::down | invalid},         // changed: the word comes back, flags too
        {mxcsr::usual | mxcsr::denormalsAreZero, mxcsr::usual | mxcsr::denormalsAreZero},
        {mxcsr::up | mxcsr::flushToZero | divideByZero, mxcsr::up | mxcsr::flushToZero | divideByZero},
        {unmasked, unmasked},
        {mxcsr::usual & ~0x0080u, mxcsr::usual & ~0x0080u},
    };
    forEachWidth([&](Kernel* kernel) {
        for (const auto& word : words) {
            float y[std::size(row)];
            uint32_t after = 0;
            uint16_t x87 = 0;
            std::feclearexcept(FE_ALL_EXCEPT);  // none pending when the x87 unit's are unmasked
            {
                const X87Scope x87Scope(0x0340);  // all unmasked
                const MxcsrScope scope(word.before);
                kernel(row, forwardExponent, y, std::size(row));
                after = readMxcsr();
                x87 = readX87Control();
            }
            EXPECT_EQ(after & ~inexact, word.after) << std::hex << word.before;
            EXPECT_EQ(x87, 0x0340);
            for (size_t i = 0; i < std::size(row); ++i)
                EXPECT_TRUE(sameBits(y[i], powxReference(row[i], forwardExponent).value)) << row[i];
        }
    });
}

}  // namespace
