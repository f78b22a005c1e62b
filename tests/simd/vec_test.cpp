// Each operation on vectors beside a plain loop over their elements. The program is built once for each width.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <functional>

#include "simd/control.h"
#include "simd/interleave.h"
#include "support/float_env.h"
#include "support/random.h"

using namespace q4;
using moxtest::Random;

namespace {

constexpr int rounds = 200;

/// Before any other code of this program, all of which is compiled for the level.
[[gnu::constructor(101)]] void skipIfTheProcessorLacksIt() {
#if defined(__x86_64__)
    __builtin_cpu_init();
#endif
    if (!(MOXCC_RUNS)) _exit(77);  // which ctest counts as skipped
}

template <class V>
using Values = std::array<typename V::Sample, V::count>;

template <class T>
Values<Vec<T>> valuesOf(Vec<T> v) {
    Values<Vec<T>> a;
    store(a.data(), v);
    return a;
}

template <class V>
Values<V> anyValues(Random& random) {
    using T = typename V::Sample;
    Values<V> a;
    for (T& x : a) {
        if constexpr (std::is_floating_point_v<T>)
            x = random.oneIn(3)   ? random.special<T>()
                : random.oneIn(2) ? random.anyBits<T>()
                                  : random.uniform<T>(-99, 99);
        else
            x = random.sample<T>();
    }
    return a;
}

/// The same bits, or both NaNs: the compiler may exchange the operands of a sum, of which one gives the NaN.
template <class T>
bool same(T a, T b) {
    if constexpr (std::is_floating_point_v<T>)
        if (std::isnan(a)) return std::isnan(b);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

/// An operation on vectors of types V gives at each element what a plain one makes of the elements there.
template <class... V, class Operation, class Plain>
void elementwise(const char* name, const Operation& operation, const Plain& plain) {
    Random random(1);
    for (int round = 0; round < rounds; ++round) {
        const std::tuple<Values<V>...> in = {anyValues<V>(random)...};
        std::apply(
            [&](const auto&... a) {
                const auto out = valuesOf(operation(load<V>(a.data())...));
                using T = typename decltype(out)::value_type;
                for (size_t i = 0; i < out.size(); ++i) {
                    std::string from;
                    ((from += std::to_string(a[i]) + " "), ...);
                    ASSERT_TRUE(same(out[i], T(plain(a[i]...))))
                        << name << " at " << i << " of " << from << ": " << std::to_string(out[i]);
                }
            },
            in);
    }
}

template <class T>
constexpr T saturated(int64_t x) {
    return T(std::clamp<int64_t>(x, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}
template <class T>
T maskOf(bool set) {
    T x;
    std::memset(&x, set ? 0xFF : 0, sizeof x);
    return x;
}

template <class V>
void wraps() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "+", [](V a, V b) { return a + b; }, [](T a, T b) { return T(uint64_t(a) + uint64_t(b)); });
    elementwise<V, V>(
        "-", [](V a, V b) { return a - b; }, [](T a, T b) { return T(uint64_t(a) - uint64_t(b)); });
    elementwise<V, V>(
        "&", [](V a, V b) { return a & b; }, [](T a, T b) { return T(a & b); });
    elementwise<V, V>(
        "|", [](V a, V b) { return a | b; }, [](T a, T b) { return T(a | b); });
    elementwise<V, V>(
        "^", [](V a, V b) { return a ^ b; }, [](T a, T b) { return T(a ^ b); });
    elementwise<V, V>(
        "andNot", [](V a, V b) { return andNot(a, b); }, [](T a, T b) { return T(~a & b); });
}
template <class V>
void multiplies() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "*", [](V a, V b) { return a * b; }, [](T a, T b) { return T(uint64_t(a) * uint64_t(b)); });
}
template <class V>
void saturates() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "adds", [](V a, V b) { return adds(a, b); }, [](T a, T b) { return saturated<T>(a + b); });
    elementwise<V, V>(
        "subs", [](V a, V b) { return subs(a, b); }, [](T a, T b) { return saturated<T>(a - b); });
}
template <class V>
void averages() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "avg", [](V a, V b) { return avg(a, b); }, [](T a, T b) { return (a + b + 1) >> 1; });
    elementwise<V, V>(
        "absDiff", [](V a, V b) { return absDiff(a, b); }, [](T a, T b) { return std::abs(a - b); });
}
template <class V>
void orders() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "min", [](V a, V b) { return min(a, b); }, [](T a, T b) { return a < b ? a : b; });
    elementwise<V, V>(
        "max", [](V a, V b) { return max(a, b); }, [](T a, T b) { return a > b ? a : b; });
}
template <class V>
void compares() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "eq", [](V a, V b) { return eq(a, b); }, [](T a, T b) { return maskOf<T>(a == b); });
    if constexpr (std::is_signed_v<T>)
        elementwise<V, V>(
            "gt", [](V a, V b) { return gt(a, b); }, [](T a, T b) { return maskOf<T>(a > b); });
}
template <class V>
void shifts() {
    using T = typename V::Sample;
    elementwise<V>(
        "shl<3>", [](V a) { return shl<3>(a); }, [](T a) { return T(uint64_t(a) << 3); });
    elementwise<V>(
        "shr<3>", [](V a) { return shr<3>(a); }, [](T a) { return T(a >> 3); });
}

TEST(Arithmetic, OfIntegersIsThatOfEachElement) {
    wraps<U8>(), wraps<U16>(), wraps<I16>(), wraps<I32>(), wraps<U64>();
    multiplies<U16>(), multiplies<I16>(), multiplies<I32>();
    saturates<U8>(), saturates<U16>(), saturates<I16>();
    averages<U8>(), averages<U16>();
    orders<U8>(), orders<U16>(), orders<I16>(), orders<I32>();
    compares<U8>(), compares<I8>(), compares<U16>(), compares<I16>(), compares<I32>();
    shifts<U16>(), shifts<I16>(), shifts<U32>(), shifts<I32>();
    elementwise<U64>(
        "shr<3>", [](U64 a) { return shr<3>(a); }, [](uint64_t a) { return a >> 3; });

    elementwise<U8, U8>("avgDown", avgDown, [](int a, int b) { return (a + b) >> 1; });
    elementwise<I16>(
        "abs", [](I16 a) { return abs(a); }, [](int a) { return std::abs(a); });
    elementwise<I32>(
        "abs", [](I32 a) { return abs(a); }, [](int64_t a) { return std::abs(a); });
    elementwise<U16, U16>(
        "mulHi", [](U16 a, U16 b) { return mulHi(a, b); }, [](uint32_t a, uint32_t b) { return a * b >> 16; });
    elementwise<I16, I16>(
        "mulHi", [](I16 a, I16 b) { return mulHi(a, b); }, [](int a, int b) { return a * b >> 16; });
    elementwise<I16, I16>("mulHiRound", mulHiRound, [](int a, int b) { return (a * b + 0x4000) >> 15; });
    elementwise<U64, U64>("mulLow", mulLow, [](uint64_t a, uint64_t b) { return (a & 0xFFFFFFFF) * (b & 0xFFFFFFFF); });
}

template <class V>
void calculates() {
    using T = typename V::Sample;
    elementwise<V, V>(
        "+", [](V a, V b) { return a + b; }, [](T a, T b) { return a + b; });
    elementwise<V, V>(
        "-", [](V a, V b) { return a - b; }, [](T a, T b) { return a - b; });
    elementwise<V, V>(
        "*", [](V a, V b) { return a * b; }, [](T a, T b) { return a * b; });
    elementwise<V, V>(
        "/", [](V a, V b) { return a / b; }, [](T a, T b) { return a / b; });
    orders<V>();
    const auto chosen = [](T mask, T yes, T no) { return std::signbit(mask) ? yes : no; };
    elementwise<V, V, V>(
        "select", [](V m, V a, V b) { return select(m, a, b); }, chosen);
    // A mask keeps its bits through memory as a float does, but prints as a NaN: so by the choice that it makes.
    const auto choice = [](auto compare) { return [=](V a, V b) { return select(compare(a, b), a, b); }; };
    elementwise<V, V>("lt", choice([](V a, V b) { return lt(a, b); }), [](T a, T b) { return a < b ? a : b; });
    elementwise<V, V>("le", choice([](V a, V b) { return le(a, b); }), [](T a, T b) { return a <= b ? a : b; });
    elementwise<V, V>("eq", choice([](V a, V b) { return eq(a, b); }), [](T a, T b) { return a == b ? a : b; });
}

TEST(Arithmetic, OfFloatsRoundsAsTheControlWordSays) {
    for (const uint32_t word : moxtest::mxcsr::roundings) {
        SCOPED_TRACE(moxtest::roundingName(word));
        moxtest::underMxcsr(word, [] {
            calculates<F32>();
            calculates<F64>();
            elementwise<F32>(
                "abs", [](F32 a) { return abs(a); }, [](float a) { return std::fabs(a); });
            elementwise<F32>(
                "rcp", [](F32 a) { return rcp(a); }, [](float a) { return rcp(a); });
            elementwise<I32>("toF32", toF32, [](int32_t a) { return float(a); });
        });
    }
}

TEST(Conversion, ToIntegersGivesTheLeastForWhatHasNoPlace) {
    const auto fits = [](double x) { return x >= -2147483648.0 && x < 2147483648.0; };
    const auto converted = [&](double rounded) { return fits(rounded) ? int32_t(rounded) : INT32_MIN; };
    for (const uint32_t word : moxtest::mxcsr::roundings) {
        SCOPED_TRACE(moxtest::roundingName(word));
        moxtest::underMxcsr(word, [&] {
            elementwise<F32>(
                "truncate", [](F32 a) { return truncate(a); }, [&](float a) { return converted(std::trunc(a)); });
            elementwise<F32>(
                "nearest", [](F32 a) { return nearest(a); }, [&](float a) { return nearest(a); });
            elementwise<F32>("nearestEven", nearestEven, [&](float a) {
                const double below = std::floor(a), part = a - below;
                const bool up = part > 0.5 || (part == 0.5 && std::fmod(below, 2) != 0);
                return converted(below + up);
            });
        });
    }
}

TEST(Masks, ChooseByTheTopBitsOfBytes) {
    elementwise<U8, U8, U8>(
        "select", [](U8 m, U8 a, U8 b) { return select(m, a, b); },
        [](int mask, int yes, int no) { return mask & 0x80 ? yes : no; });
    Random random(2);
    for (int round = 0; round < rounds; ++round) {
        const Values<U8> a = anyValues<U8>(random);
        const ByteBits bits = topBits(load<U8>(a.data()));
        const Values<U8> mask = valuesOf(byteMask(bits));
        for (int i = 0; i < vectorBytes; ++i) {
            ASSERT_EQ(int(bits >> i & 1), a[i] >> 7);
            ASSERT_EQ(mask[i], a[i] & 0x80 ? 0xFF : 0);
        }
    }
    for (int i = 0; i < vectorBytes; ++i) {
        Values<U8> a = {};
        ASSERT_FALSE(any(load<U8>(a.data())));
        a[i] = 0x80;
        const bool sign32 = i % 4 == 3, sign64 = i % 8 == 7;
        EXPECT_TRUE(any(load<U8>(a.data())));
        EXPECT_EQ(any(load<F32>(a.data())), sign32);
        EXPECT_EQ(any(load<F64>(a.data())), sign64);
    }
}

// ---- bytes that move --------------------------------------------------------------------------------------------------

constexpr int none = -1;

/// In lane l, byte i of what an operation makes of one vector or two is byte from(l, i) of them in a row, or 0.
template <class V = U8, class Operation>
void moves(const char* name, const Operation& operation, const std::function<int(int, int)>& from) {
    Random random(3);
    uint8_t in[2][vectorBytes], out[vectorBytes];
    for (auto& a : in)
        for (uint8_t& x : a) x = random.sample<uint8_t>();
    const V a = load<V>(in[0]), b = load<V>(in[1]);
    if constexpr (requires { operation(a, b); })
        store(out, operation(a, b));
    else
        store(out, operation(a));
    for (int i = 0; i < vectorBytes; ++i) {
        const int source = from(i / 16, i % 16);
        ASSERT_EQ(out[i], source == none ? 0 : in[source / vectorBytes][source % vectorBytes])
            << name << ", byte " << i;
    }
}

/// The same, of elements of n bytes.
template <class V = U8, class Operation>
void movesElements(const char* name, int n, const Operation& operation, const std::function<int(int, int)>& from) {
    moves<V>(name, operation, [&](int l, int i) {
        const int source = from(l, i / n);
        return source == none ? none : source * n + i % n;
    });
}

template <int bits>
void unpacks() {
    constexpr int n = bits / 8, perLane = 16 / n, count = vectorBytes / n;
    movesElements(
        "unpackLo", n, [](U8 a, U8 b) { return unpackLo<bits>(a, b); },
        [](int l, int e) { return e % 2 * count + l * perLane + e / 2; });
    movesElements(
        "unpackHi", n, [](U8 a, U8 b) { return unpackHi<bits>(a, b); },
        [](int l, int e) { return e % 2 * count + l * perLane + perLane / 2 + e / 2; });
}
template <int n>
void deals() {
    constexpr int perLane = 16 / n;
    movesElements(
        "deal", n, [](U8 a) { return deal<n>(a); }, [](int l, int e) { return e * lanes + l; });
    movesElements(
        "undeal", n, [](U8 a) { return undeal<n>(a); },
        [](int l, int e) {
            const int group = l * perLane + e;
            return group % lanes * perLane + group / lanes;
        });
}

TEST(Order, IsThatOfTheLane) {
    unpacks<8>(), unpacks<16>(), unpacks<32>(), unpacks<64>();
    deals<4>(), deals<8>();
    const int count = vectorBytes;
    moves(
        "shuffle", [](U8 a) { return shuffle(a, pattern(3, -1, 0, 1, 15, 2, 2, 2, -128, 8, 9, 4, 5, 6, 7, 11)); },
        [](int l, int i) {
            const int order[] = {3, -1, 0, 1, 15, 2, 2, 2, -1, 8, 9, 4, 5, 6, 7, 11};
            return order[i] < 0 ? none : 16 * l + order[i];
        });
    moves(
        "bytesUp", [](U8 a) { return bytesUp<5>(a); }, [](int l, int i) { return i < 5 ? none : 16 * l + i - 5; });
    moves(
        "bytesDown", [](U8 a) { return bytesDown<5>(a); }, [](int l, int i) { return i > 10 ? none : 16 * l + i + 5; });
    moves(
        "alignBytes", [](U8 a, U8 b) { return alignBytes<6>(b, a); },
        [&](int l, int i) { return i < 10 ? 16 * l + i + 6 : count + 16 * l + i - 10; });
    moves(
        "lanesBefore", [](U8 a, U8 b) { return lanesBefore(b, a); },
        [&](int l, int i) { return 16 * (lanes + l - 1) + i; });
    moves(
        "blend8", [](U8 a, U8 b) { return blend8<0xA3C5>(a, b); },
        [&](int l, int i) { return (0xA3C5 >> i & 1) * count + 16 * l + i; });
    movesElements(
        "blend16", 2, [](U8 a, U8 b) { return blend16<0xA5>(a, b); },
        [&](int l, int e) { return (0xA5 >> e & 1) * count / 2 + 8 * l + e; });
    movesElements(
        "blend16, pairs", 2, [](U8 a, U8 b) { return blend16<0xC3>(a, b); },
        [&](int l, int e) { return (0xC3 >> e & 1) * count / 2 + 8 * l + e; });
    movesElements(
        "shuffle32", 4, [](U8 a) { return shuffle32<3, 1, 0, 2>(a); },
        [](int l, int e) {
            return 4 * l + std::array{3, 1, 0, 2}[e];
        });
    movesElements(
        "shufflePairs32", 4, [](U8 a, U8 b) { return shufflePairs32<3, 0, 2, 1>(a, b); },
        [&](int l, int e) {
            return e / 2 * count / 4 + 4 * l + std::array{3, 0, 2, 1}[e];
        });
    movesElements<F64>(
        "narrowMask", 4, [](F64 a, F64 b) { return narrowMask(a, b); },
        [&](int l, int e) { return e / 2 * count / 4 + 4 * l + e % 2 * 2; });
    moves(
        "splatLane", [](U8 a) { return splatLane<U8>(laneOf<lanes - 1>(a)); },
        [](int, int i) { return 16 * (lanes - 1) + i; });

    const F32 pushed = pushFirst(-7, fromElements<F32>([](int i) { return float(i); }));
    for (int i = 0; i < F32::count; ++i) EXPECT_EQ(valuesOf(pushed)[i], i == 0 ? -7 : i - 1);
}

/// An operation on one vector or two takes elements from(l, e) of them in a row to element e of lane l, by a plain rule.
template <class V, class Operation, class Plain>
void resizes(const char* name, const Operation& operation, const std::function<int(int, int)>& from,
             const Plain& plain) {
    Random random(4);
    for (int round = 0; round < rounds; ++round) {
        const Values<V> a = anyValues<V>(random), b = anyValues<V>(random);
        const auto out = [&] {
            if constexpr (requires(V v) { operation(v, v); })
                return valuesOf(operation(load<V>(a.data()), load<V>(b.data())));
            else
                return valuesOf(operation(load<V>(a.data())));
        }();
        using T = typename decltype(out)::value_type;
        const int perLane = int(out.size()) / lanes;
        for (int i = 0; i < int(out.size()); ++i) {
            const int source = from(i / perLane, i % perLane);
            const auto x = source < V::count ? a[source] : b[source - V::count];
            ASSERT_TRUE(same(out[i], T(plain(x)))) << name << ", element " << i << ": " << +x << " gave " << +out[i];
        }
    }
}

TEST(Order, OfWidenedAndNarrowedElementsIsThatOfTheLane) {
    // Elements e of the low or the high half of a lane; of a lane of a, then of b.
    const auto lo = [](int perLane) { return [=](int l, int e) { return l * perLane + e; }; };
    const auto hi = [](int perLane) { return [=](int l, int e) { return l * perLane + perLane / 2 + e; }; };
    const auto both = [](int perLane) {
        return [=](int l, int e) { return e / perLane * lanes * perLane + l * perLane + e % perLane; };
    };
    const auto kept = [](auto x) { return x; };
    resizes<U8>(
        "widenLo", [](U8 v) { return widenLo(v); }, lo(16), kept);
    resizes<U8>(
        "widenHi", [](U8 v) { return widenHi(v); }, hi(16), kept);
    resizes<U16>(
        "widenLo", [](U16 v) { return widenLo(v); }, lo(8), kept);
    resizes<U16>(
        "widenHi", [](U16 v) { return widenHi(v); }, hi(8), kept);
    resizes<I16>(
        "widenLo", [](I16 v) { return widenLo(v); }, lo(8), kept);
    resizes<I16>(
        "widenHi", [](I16 v) { return widenHi(v); }, hi(8), kept);
    resizes<F32>(
        "widenLo", [](F32 v) { return widenLo(v); }, lo(4), kept);
    resizes<F32>(
        "widenHi", [](F32 v) { return widenHi(v); }, hi(4), kept);
    resizes<U8>(
        "fixedLo", [](U8 v) { return as<U16>(fixedLo(v)); }, lo(16), [](int x) { return x << 8; });
    resizes<U8>(
        "fixedHi", [](U8 v) { return as<U16>(fixedHi(v)); }, hi(16), [](int x) { return x << 8; });
    resizes<I16>("narrowU8", narrowU8, both(8), saturated<uint8_t>);
    resizes<I16>("narrowI8", narrowI8, both(8), saturated<int8_t>);
    resizes<I32>("narrowI16", narrowI16, both(4), saturated<int16_t>);
    resizes<I32>("narrowU16", narrowU16, both(4), saturated<uint16_t>);
    resizes<F64>("narrowF32", narrowF32, both(2), kept);
    resizes<F64>(
        "truncate", [](F64 a, F64 b) { return truncate(a, b); }, both(2), [](double x) { return truncate(x); });
}

TEST(Arithmetic, OfPairsStaysInTheLane) {
    Random random(5);
    for (int round = 0; round < rounds; ++round) {
        const auto a8 = anyValues<U8>(random);
        const auto b8 = anyValues<I8>(random);
        const auto a16 = anyValues<I16>(random), b16 = anyValues<I16>(random);
        const auto a32 = anyValues<I32>(random), b32 = anyValues<I32>(random);
        const auto dots8 = valuesOf(dotPairs(load<U8>(a8.data()), load<I8>(b8.data())));
        const auto dots16 = valuesOf(dotPairs(load<I16>(a16.data()), load<I16>(b16.data())));
        const auto sums16 = valuesOf(pairSums(load<I16>(a16.data()), load<I16>(b16.data())));
        const auto sums32 = valuesOf(pairSums(load<I32>(a32.data()), load<I32>(b32.data())));
        for (int i = 0; i < I16::count; ++i) {
            ASSERT_EQ(dots8[i], saturated<int16_t>(a8[2 * i] * b8[2 * i] + a8[2 * i + 1] * b8[2 * i + 1]));
            const int16_t* pair = &(i % 8 < 4 ? a16 : b16)[i / 8 * 8 + i % 4 * 2];
            ASSERT_EQ(sums16[i], int16_t(pair[0] + pair[1]));
        }
        for (int i = 0; i < I32::count; ++i) {
            ASSERT_EQ(dots16[i],
                      int32_t(uint32_t(a16[2 * i] * b16[2 * i]) + uint32_t(a16[2 * i + 1] * b16[2 * i + 1])));
            const int32_t* pair = &(i % 4 < 2 ? a32 : b32)[i / 4 * 4 + i % 2 * 2];
            ASSERT_EQ(sums32[i], int32_t(uint32_t(pair[0]) + uint32_t(pair[1])));
        }
    }
}

// ---- memory -----------------------------------------------------------------------------------------------------------

/// Bytes of memory, none twice in a row, and what is left alone.
struct Memory {
    uint8_t bytes[8 * 64];

    Memory() {
        for (size_t i = 0; i < sizeof bytes; ++i) bytes[i] = uint8_t(i * 37 + i / 256);
    }
};

/// A load of n bytes a lane, which lie laneBytes apart; the rest is 0.
template <class Load>
void loads(const char* name, int n, int laneBytes, const Load& operation) {
    const Memory memory;
    const Values<U8> out = valuesOf(operation(memory.bytes));
    for (int i = 0; i < vectorBytes; ++i)
        EXPECT_EQ(out[i], i % 16 < n ? memory.bytes[i / 16 * laneBytes + i % 16] : 0) << name << ", byte " << i;
}
/// A store of n bytes a lane, which lie laneBytes apart; no other byte is written.
template <class Store>
void stores(const char* name, int n, int laneBytes, const Store& operation) {
    const Memory before, source;
    Memory after, expected;
    Values<U8> a;
    for (int i = 0; i < vectorBytes; ++i) a[i] = uint8_t(200 - i);
    for (int i = 0; i < vectorBytes; ++i)
        if (i % 16 < n) expected.bytes[i / 16 * laneBytes + i % 16] = a[i];
    operation(after.bytes, load<U8>(a.data()));
    EXPECT_EQ(std::memcmp(after.bytes, expected.bytes, sizeof after.bytes), 0) << name;
}

TEST(Memory, HoldsLanesAtTheirStep) {
    loads("load", 16, 16, [](const void* p) { return load<U8>(p); });
    loads("load<48>", 16, 48, [](const void* p) { return load<U8, 48>(p); });
    loads("loadHalf", 8, 8, [](const void* p) { return loadHalf<U8>(p); });
    loads("loadHalf<24>", 8, 24, [](const void* p) { return loadHalf<U8, 24>(p); });
    loads("loadQuarter", 4, 4, [](const void* p) { return loadQuarter<U8>(p); });
    stores("store", 16, 16, [](void* p, U8 v) { store(p, v); });
    stores("store<48>", 16, 48, [](void* p, U8 v) { store<48>(p, v); });
    stores("storeHalf", 8, 8, [](void* p, U8 v) { storeHalf(p, v); });
    stores("storeHalf<24>", 8, 24, [](void* p, U8 v) { storeHalf<24>(p, v); });
    stores("storeQuarter", 4, 4, [](void* p, U8 v) { storeQuarter(p, v); });

    const Memory memory;
    const Values<U16> wide = valuesOf(loadWidened(memory.bytes));
    for (int i = 0; i < U16::count; ++i) EXPECT_EQ(wide[i], memory.bytes[i]);

    alignas(vectorBytes) uint8_t streamed[vectorBytes];
    stream(streamed, load<U8>(memory.bytes));
    storeFence();
    EXPECT_EQ(std::memcmp(streamed, memory.bytes, sizeof streamed), 0);
}

TEST(Memory, HoldsTwoVectorsSideBySide) {
    const Memory memory;
    const U8 a = load<U8>(memory.bytes), b = load<U8>(memory.bytes + vectorBytes);
    uint8_t pairs[lanes * 48], toA[vectorBytes / 2], toB[vectorBytes / 2];
    storePair<48>(pairs, a, b);
    storeHalvesDealt(toA, toB, a, b);
    for (int i = 0; i < vectorBytes; ++i) {
        EXPECT_EQ(pairs[i / 16 * 48 + i % 16], memory.bytes[i]);
        EXPECT_EQ(pairs[i / 16 * 48 + 16 + i % 16], memory.bytes[vectorBytes + i]);
    }
    for (int i = 0; i < vectorBytes / 2; ++i) {
        const int group = i / 2, at = group % lanes * 16 + group / lanes * 2 + i % 2;
        EXPECT_EQ(toA[i], memory.bytes[at]);
        EXPECT_EQ(toB[i], memory.bytes[vectorBytes + at]);
    }
}

TEST(Memory, OfTablesIsReadAtEachIndex) {
    Random random(6);
    float table[1024];
    double doubles[1024];
    uint8_t bytes[256];
    for (float& x : table) x = random.uniform<float>(-1, 1);
    for (double& x : doubles) x = random.uniform<double>(-1, 1);
    for (uint8_t& x : bytes) x = random.sample<uint8_t>();
    elementwise<U8>(
        "lookUp", [&](U8 i) { return lookUp(bytes, i); }, [&](uint8_t i) { return bytes[i]; });
    for (int round = 0; round < rounds; ++round) {
        Values<I32> at;
        Values<U64> at64;
        for (int32_t& i : at) i = int32_t(random.between(0, 255));
        for (uint64_t& i : at64) i = uint64_t(random.between(0, 1023));
        const I32 index = load<I32>(at.data());
        F32 first, second, column[4];
        gatherPairs(table, index, first, second);
        gatherRows(table, index + index + index, column);  // rows start at any entry
        for (int i = 0; i < F32::count; ++i) {
            ASSERT_EQ(valuesOf(gather(table, index))[i], table[at[i]]);
            ASSERT_EQ(valuesOf(first)[i], table[2 * at[i]]);
            ASSERT_EQ(valuesOf(second)[i], table[2 * at[i] + 1]);
            for (int c = 0; c < 4; ++c) ASSERT_EQ(valuesOf(column[c])[i], table[3 * at[i] + c]);
        }
        for (int i = 0; i < F64::count; ++i)
            ASSERT_EQ(valuesOf(gather(doubles, load<U64>(at64.data())))[i], doubles[at64[i]]);
    }
}

// ---- interleaved pixels -----------------------------------------------------------------------------------------------

/// Element i of a lane's C registers in a row is element i / C of channel i % C, both ways.
template <class T, int C>
void interleaves() {
    constexpr int count = Vec<T>::count, perLane = 16 / int(sizeof(T));
    Random random(7);
    T in[C][count];
    for (auto& row : in)
        for (T& x : row) x = random.sample<T>();
    Vec<T> from[C], apart[C], together[C];
    for (int c = 0; c < C; ++c) from[c] = load<Vec<T>>(in[c]);
    deinterleave(from, apart);
    interleave(from, together);
    for (int l = 0; l < lanes; ++l)
        for (int i = 0; i < C * perLane; ++i) {
            const int reg = i / perLane, e = l * perLane + i % perLane, c = i % C, at = l * perLane + i / C;
            ASSERT_EQ(valuesOf(apart[c])[at], in[reg][e]) << C << " channels of " << sizeof(T) << " bytes";
            ASSERT_EQ(valuesOf(together[reg])[e], in[c][at]) << C << " channels of " << sizeof(T) << " bytes";
        }
}

TEST(Interleave, KeepsThePixelsInOrderInEachLane) {
    interleaves<uint8_t, 2>(), interleaves<uint16_t, 2>(), interleaves<int32_t, 2>();
    interleaves<uint8_t, 3>(), interleaves<uint16_t, 3>(), interleaves<int32_t, 3>();
    interleaves<uint8_t, 4>(), interleaves<uint16_t, 4>(), interleaves<int32_t, 4>(), interleaves<double, 4>();
}

}  // namespace
