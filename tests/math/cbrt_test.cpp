// The cube root of doubles: its tables to the last bit, its accuracy. The Lab tests follow it operation by operation.
#include "math/cbrt.h"

#include <bit>
#include <cmath>
#include <vector>

#include "support/support.h"

using namespace moxtest;

namespace {

__extension__ typedef unsigned __int128 Wide;
__extension__ typedef __float128 Quad;

double cubeRoot(double x) {
    double lanes[q4::F64::count];
    q4::store(lanes, q4::_my_cbrt53_pd(q4::splat<q4::F64>(x)));
    return lanes[0];
}

/// A whole number of any length, its lowest 32 bits first.
using Whole = std::vector<uint32_t>;

Whole whole(Wide v) {
    return {static_cast<uint32_t>(v), static_cast<uint32_t>(v >> 32), static_cast<uint32_t>(v >> 64),
            static_cast<uint32_t>(v >> 96)};
}
Whole add(const Whole& a, const Whole& b) {
    Whole sum;
    uint64_t carry = 0;
    for (size_t i = 0; i < std::max(a.size(), b.size()) + 1; ++i) {
        carry += (i < a.size() ? a[i] : 0) + uint64_t{i < b.size() ? b[i] : 0};
        sum.push_back(static_cast<uint32_t>(carry));
        carry >>= 32;
    }
    return sum;
}
Whole multiply(const Whole& a, const Whole& b) {
    Whole product(a.size() + b.size());
    for (size_t i = 0; i < a.size(); ++i) {
        uint64_t carry = 0;
        for (size_t j = 0; j < b.size(); ++j) {
            carry += product[i + j] + uint64_t{a[i]} * b[j];
            product[i + j] = static_cast<uint32_t>(carry);
            carry >>= 32;
        }
        product[i + b.size()] = static_cast<uint32_t>(carry);
    }
    return product;
}
Whole powerOf2(int n) {
    Whole power(static_cast<size_t>(n / 32) + 1);
    power.back() = uint32_t{1} << n % 32;
    return power;
}
bool atMost(Whole a, Whole b) {
    const size_t size = std::max(a.size(), b.size());
    a.resize(size), b.resize(size);
    return !std::lexicographical_compare(b.rbegin(), b.rend(), a.rbegin(), a.rend());
}

// Cubes of whole numbers in units of 2^-162 tell on which side of the root each entry lies.
TEST(Cbrt, TablesAreExact) {
    const auto cube = [](const Whole& v) { return multiply(v, multiply(v, v)); };
    const auto units = [](double v) { return static_cast<Wide>(v * 0x1p162); };
    const auto scaled = [](double v) { return multiply(whole(static_cast<Wide>(v * 0x1p52)), powerOf2(110)); };
    for (int entry = 0; entry < 96; ++entry) {
        const int part = entry % 32, n = 65 + 2 * part;
        const Whole value = multiply(whole(static_cast<Wide>(n)), powerOf2(480 + entry / 32));
        const double hi = q4::s_dwCbrtHi[static_cast<size_t>(entry)], lo = q4::s_dwCbrtLo[static_cast<size_t>(entry)];
        const Whole H = scaled(hi);
        EXPECT_TRUE(atMost(cube(H), value)) << entry;
        EXPECT_FALSE(atMost(cube(add(H, powerOf2(110))), value)) << entry;
        EXPECT_TRUE(lo >= 0 && lo < 0x1p-52) << entry;
        if (lo > 0) {  // half a unit in the last place up and down brings both sides
            const Wide half = units(std::ldexp(1.0, std::ilogb(lo) - 53));
            EXPECT_TRUE(atMost(cube(add(H, whole(units(lo) - half))), value)) << entry;
            EXPECT_TRUE(atMost(value, cube(add(H, whole(units(lo) + half))))) << entry;
        } else {
            EXPECT_TRUE(atMost(value, cube(H))) << entry;
        }
        EXPECT_EQ(q4::s_dwRcp[static_cast<size_t>(part)], -64.0 / n);
    }
}

TEST(Cbrt, CubesAreExact) {
    for (int i = 1; i <= 1000; ++i) {
        EXPECT_EQ(cubeRoot(1.0 * i * i * i), i);
        EXPECT_EQ(cubeRoot(-1.0 * i * i * i), -i);
    }
}

TEST(Cbrt, StaysWithinHalfAUnitAndALittle) {
    Random random(1);
    Quad worst = 0;
    for (int i = 0; i < 300000; ++i) {
        const double x = std::exp2(random.uniform(-30.0, 30.0)), root = cubeRoot(x);
        const Quad r = root, step = std::ldexp(1.0, std::ilogb(root) - 52);
        const Quad error = (r * r * r - x) / (3 * r * r) / step;  // to first order, which is plenty
        worst = std::max({worst, error, -error});
    }
    EXPECT_LT(static_cast<double>(worst), 0.512);
}

}  // namespace
