// The tables of the cube root, made at compile time by exact integers.
#include "math/cbrt.h"

namespace q4 {
namespace {

__extension__ typedef unsigned __int128 Wide;
__extension__ typedef __int128 SignedWide;

constexpr double timesPowerOf2(double v, int exponent) {
    for (; exponent > 0; --exponent) v *= 2;
    for (; exponent < 0; ++exponent) v /= 2;
    return v;
}

/// n times 2^exponent, rounded to nearest.
constexpr double toDouble(Wide n, int exponent) {
    int excess = 0;
    while (n >> excess >> 53) ++excess;
    if (excess > 0) n = (n + (Wide(1) << (excess - 1))) >> excess;
    return timesPowerOf2(double(uint64_t(n)), exponent + excess);
}

struct CubeRoot {
    double hi, lo;
};

/// Of n * 2^r / 64, where n is from 65 to 127.
constexpr CubeRoot cubeRootOf(int n, int r) {
    // hi: the largest H whose cube is not above n * 2^(150 + r), in units of 2^-52. The difference of the two is small
    // beside 2^128, of which the larger one is a multiple: modulo 2^128 it is what the cube lacks.
    const auto rest = [](Wide h) { return SignedWide(0 - h * h * h); };
    Wide H = Wide(cubeRootByNewton(timesPowerOf2(n, r - 6)) * 0x1p52) - 16;
    while (rest(H + 1) >= 0) ++H;

    // lo: the l below 1 with 3 H^2 l + 3 H l^2 = rest, but for terms too small to count; from the quotient of the rest
    // and 3 H^2 in units of 2^-110, less its square over H.
    const Wide divisor = 3 * H * H;
    Wide remainder = Wide(rest(H)), quotient = 0;
    for (int bit = 0; bit < 110; ++bit) {
        remainder <<= 1, quotient <<= 1;
        if (remainder >= divisor) remainder -= divisor, quotient |= 1;
    }
    const Wide upper = quotient >> 60;
    return {toDouble(H, -52), toDouble(quotient - (upper * upper << 10) / H, -162)};
}

template <int n, class Entry>
constexpr DoubleTable<n> makeTable(Entry entry) {
    DoubleTable<n> table = {};
    for (int i = 0; i < n; ++i) table[size_t(i)] = entry(i);
    return table;
}

/// 64 times the midpoint of part i.
constexpr int midpoint(int i) { return 65 + 2 * i; }
constexpr CubeRoot rootOfEntry(int i) { return cubeRootOf(midpoint(i % 32), i / 32); }

}  // namespace

constinit const DoubleTable<32> s_dwRcp =
    makeTable<32>([](int i) { return -toDouble((Wide(1) << 120) / Wide(midpoint(i)), 6 - 120); });
constinit const DoubleTable<96> s_dwCbrtHi = makeTable<96>([](int i) { return rootOfEntry(i).hi; });
constinit const DoubleTable<96> s_dwCbrtLo = makeTable<96>([](int i) { return rootOfEntry(i).lo; });

}  // namespace q4
