#include "simd/extended.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>

#include "support/random.h"

using moxtest::Random;

namespace {

#if LDBL_MANT_DIG == 64

TEST(EmulatedExtended, SumsAsTheUnitDoes) {
    for (uint64_t seed = 0; seed < 3000; ++seed) {
        Random random(seed);
        const bool wild = random.oneIn(4), close = random.oneIn(3);
        long double expected = 0;
        q4::EmulatedExtended sum;
        for (int i = 0; i < 40; ++i) {
            float x =
                wild ? random.special<float>() : std::ldexp(random.uniform(-1.0f, 1.0f), int(random.between(-70, 70)));
            if (close) x = random.uniform(0.0f, 1.0f);
            if (random.oneIn(6)) x = -float(expected);  // most of the sum goes, what lies below a float stays
            expected += x, sum += x;
            const double a = double(sum), b = double(expected);
            ASSERT_TRUE(std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b)))
                << "seed " << seed << ", " << i << ": " << a << " instead of " << b;
        }
    }
}

#endif

// Ties of the 64th bit go to even; what lies below half of it is lost.
TEST(EmulatedExtended, Has64BitsOfMantissa) {
    const auto sumOf = [](std::initializer_list<float> values) {
        q4::EmulatedExtended sum;
        for (const float x : values) sum += x;
        return double(sum);
    };
    EXPECT_EQ(sumOf({1, 0x1p-63f, -1}), 0x1p-63);
    EXPECT_EQ(sumOf({1, 0x1p-64f, -1}), 0);
    EXPECT_EQ(sumOf({1, 0x1.8p-63f, -1}), 0x1p-62);
    EXPECT_EQ(sumOf({1, 0x1.000002p-64f, -1}), 0x1p-63);
    EXPECT_EQ(sumOf({-1, -0x1p-53f}), -1);
    EXPECT_EQ(sumOf({-1, -0x1p-53f, -0x1p-60f}), -1 - 0x1p-52);
    EXPECT_EQ(sumOf({1, INFINITY, -1}), INFINITY);
    EXPECT_TRUE(std::isnan(sumOf({INFINITY, -INFINITY})));
    EXPECT_FALSE(std::signbit(sumOf({-1, 1})));
}

}  // namespace
