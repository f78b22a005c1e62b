// Bit-depth reduction against plain code: one sample after another, one row after another.
#include "moxcc/reduce_bits.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <thread>

#include "support/support.h"

using namespace moxtest;

namespace {

// ---- plain code -----------------------------------------------------------------------------------------------------

int32_t truncated(float x) { return x >= -2147483648.0f && x < 2147483648.0f ? static_cast<int32_t>(x) : INT32_MIN; }
int32_t wrapped(int64_t x) { return static_cast<int32_t>(static_cast<uint32_t>(x)); }

struct Task {
    int type, noise, levels;
};

template <class S>
constexpr bool real = std::is_same_v<S, Mox32f>;

template <class S>
float sourceValue(S s) {
    return std::is_same_v<S, Mox16s> ? static_cast<float>(s + 32768.0f) : static_cast<float>(s);
}

template <class S>
float sourceTop() {
    return real<S> ? 1.0f : sizeof(S) == 1 ? 255.0f : 65535.0f;
}

/// A level in the source's units, as a number that is still to be stored.
template <class S, class D>
int32_t result(float q, bool plusHalf) {
    if (real<S>) q = q * (sizeof(D) == 1 ? 255.0f : 65535.0f);
    if (plusHalf) q = q + 0.5f;
    int32_t y = truncated(q);
    if (!real<S> && sizeof(S) == 2 && sizeof(D) == 1) y >>= 8;
    return std::is_same_v<D, Mox16s> ? wrapped(int64_t{y} - 32768) : y;
}

template <class D>
D saturated(int32_t y) {
    using L = std::numeric_limits<D>;
    return static_cast<D>(std::clamp<int32_t>(y, L::min(), L::max()));
}

class Generator {
  public:
    Generator(double difference, double sum) : mean_(sum * 0.5), scale_(difference * 2.3283064365386963e-10) {}
    double next() {
        const uint32_t t = static_cast<uint32_t>(c_) + x1_ - x2_;
        const bool negative = static_cast<int32_t>(t) < 0;
        c_ = negative ? -1 : 0;
        const uint32_t n = negative ? t - 18 : t;
        x2_ = x1_, x1_ = x0_, x0_ = n;
        g_ = g_ * 69069 + 1013904243;
        return static_cast<int32_t>(n + g_) * scale_ + mean_;
    }

  private:
    double mean_, scale_;
    uint32_t g_ = 1131199209, x0_ = 0, x1_ = 1013904243, x2_ = 1013904243u * 69069u + 1013904243u;
    int32_t c_ = -1;
};

struct Noise {
    float T[1024];
    int O[1024];
    Noise(float low, float high) {
        Generator offsets(1024, 1024), numbers(high - low, low + high);
        for (int& o : O) o = static_cast<int>(std::nearbyint(offsets.next()));
        for (float& t : T) t = static_cast<float>(numbers.next());
    }
    float at(int x, int y) const { return T[(O[x & 1023] + 2 * y + x) & 1023]; }
};

template <class S, class D>
D nearestLevel(S s, int levels) {
    const float L = static_cast<float>(levels - 1), step = 1.0f / L, half = 0.5f / L;
    float n = sourceValue(s);
    if (!real<S>) n = n * (sizeof(S) == 1 ? 0.003921569f : 1.5259022e-5f);
    float q = static_cast<float>(truncated(L * n)) * step;
    if (n - q > half) q = q + step;
    int32_t y = truncated(q * (sizeof(D) == 1 ? 255.0f : 65535.0f));
    if (std::is_same_v<D, Mox16s>) y = wrapped(int64_t{y} - 32768);
    return saturated<D>(y);
}

template <class S, class D>
void referenceOrdered(const Plane<S>& src, Plane<D>& dst, int colours, MoxiSize roi, const Task& task) {
    static const int k[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const float L = static_cast<float>(task.levels - 1), top = sourceTop<S>();
    const float step = top / L, invStep = L / top;
    const Noise noise(static_cast<float>(-task.noise) / 100, static_cast<float>(task.noise) / 100);
    const bool plusHalf =
        task.noise > 0 && colours != 4 && (real<S> || (std::is_same_v<S, Mox16s> && std::is_same_v<D, Mox8u>));
    for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x) {
            float t = static_cast<float>(k[y % 4][x % 4]) / 15.0f;
            if (task.noise > 0) t = noise.at(x, y) + t;
            t = t * step;
            for (int c = 0; c < colours; ++c) {
                const float value = sourceValue(src.get(x, y, c));
                float q = static_cast<float>(truncated(value * invStep)) * step;
                if (t < value - q) q = q + step;
                dst.set(x, y, c, saturated<D>(result<S, D>(q, plusHalf)));
            }
        }
}

template <class S, class D>
void referenceDiffused(const Plane<S>& src, Plane<D>& dst, int colours, MoxiSize roi, const Task& task) {
    const float L = static_cast<float>(task.levels - 1), top = sourceTop<S>();
    const float step = top / L, invStep = L / top, half = 0.5f * step;
    const Noise noise(static_cast<float>(50 - task.noise) * step / 100,
                      static_cast<float>(50 + task.noise) * step / 100);
    const bool floydSteinberg = task.type == moxDitherFs, jarvis = task.type == moxDitherJj;
    const bool odd = real<S> || (std::is_same_v<S, Mox16s> && std::is_same_v<D, Mox8u>);  // its sum, half and bottom
    const float bottom = floydSteinberg && real<S> ? 1.1920929e-7f : 0.0f;
    const float wA[5] = {1, jarvis ? 3.0f : 2.0f, jarvis ? 5.0f : 4.0f, jarvis ? 3.0f : 2.0f, 1};
    const float wB[5] = {jarvis ? 3.0f : 2.0f, jarvis ? 5.0f : 4.0f, jarvis ? 7.0f : 8.0f, jarvis ? 5.0f : 4.0f,
                         jarvis ? 3.0f : 2.0f};
    const float wC[2] = {jarvis ? 5.0f : 4.0f, jarvis ? 7.0f : 8.0f};
    const float factor = floydSteinberg ? 0.0625f : jarvis ? 0.020833334f : 0.023809524f;

    const size_t entries = static_cast<size_t>(roi.width) + 4;
    std::vector<float> above2(entries), above(entries), current(entries);
    for (int c = 0; c < colours; ++c)
        for (int y = 0; y < roi.height; ++y) {
            for (int x = 0; x < roi.width; ++x) {
                const float *A = &above2[size_t(x)], *B = &above[size_t(x)],
                            *C = &current[size_t(x)];  // of column x - 2
                float S_;
                if (floydSteinberg && odd)
                    S_ = ((3 * B[3] + 5 * B[2]) + B[1]) + 7 * C[1];
                else if (floydSteinberg)
                    S_ = ((3 * B[3] + B[1]) + 5 * B[2]) + 7 * C[1];
                else {
                    const float S0 = (wA[0] * A[0] + wB[0] * B[0]) + wC[0] * C[0];
                    const float S1 = (wA[1] * A[1] + wB[1] * B[1]) + wC[1] * C[1];
                    const float S2 = wA[2] * A[2] + wB[2] * B[2], S3 = wA[3] * A[3] + wB[3] * B[3];
                    S_ = (S0 + S2) + (S1 + S3);
                    S_ = S_ + A[4];
                    S_ = S_ + wB[4] * B[4];
                }
                const float v = sourceValue(src.get(x, y, c)) + S_ * factor;
                float& error = current[size_t(x) + 2];
                if (v >= top) {
                    error = 0;
                    dst.set(x, y, c, std::numeric_limits<D>::max());
                } else if (v < bottom) {
                    error = 0;
                    dst.set(x, y, c, std::numeric_limits<D>::min());
                } else {
                    float q = static_cast<float>(truncated(v * invStep)) * step;
                    if ((task.noise > 0 ? noise.at(x, y) : half) < v - q) q = q + step;
                    error = v - q;
                    dst.set(x, y, c, static_cast<D>(result<S, D>(q, floydSteinberg && odd)));
                }
            }
            above2.swap(above);
            above.swap(current);
        }
}

template <class S, class D>
void reference(const Plane<S>& src, Plane<D>& dst, int colours, MoxiSize roi, const Task& task) {
    if (task.type == moxDitherBayer) return referenceOrdered(src, dst, colours, roi, task);
    if (task.type != moxDitherNone) return referenceDiffused(src, dst, colours, roi, task);
    for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < colours; ++c) dst.set(x, y, c, nearestLevel<S, D>(src.get(x, y, c), task.levels));
}

int bufferBytes(int width, const Task& task) {
    if (task.type == moxDitherNone) return 0;
    const int rows = task.type == moxDitherFs ? 8 * width + 16 : task.type == moxDitherBayer ? 0 : 12 * width + 48;
    const int bytes = rows + (task.noise > 0 ? 6256 : 0);
    return bytes > 0 ? bytes + 64 : 0;
}

// ---- the 32 forms ---------------------------------------------------------------------------------------------------

template <class S, class D>
struct Form {
    using Source = S;
    using Result = D;
    Symbol<MoxStatus(const S*, int32_t, D*, int32_t, MoxiSize, int32_t, MoxDitherType, int32_t, Mox8u*)> function;
    int channels, colours;
    static constexpr int mostLevels = sizeof(D) == 1 ? 256 : 65536;
};

#define DEPTH(depth, S, D)                                                                                      \
    std::array<Form<S, D>, 4> {                                                                                 \
        {                                                                                                       \
            {MOX_EXPORT(moxiReduceBits_##depth##_C1R), 1, 1}, {MOX_EXPORT(moxiReduceBits_##depth##_C3R), 3, 3}, \
                {MOX_EXPORT(moxiReduceBits_##depth##_C4R), 4, 4}, {                                             \
                MOX_EXPORT(moxiReduceBits_##depth##_AC4R), 4, 3                                                 \
            }                                                                                                   \
        }                                                                                                       \
    }

const auto depths =
    std::make_tuple(DEPTH(8u, Mox8u, Mox8u), DEPTH(16u, Mox16u, Mox16u), DEPTH(16s, Mox16s, Mox16s),
                    DEPTH(16u8u, Mox16u, Mox8u), DEPTH(16s8u, Mox16s, Mox8u), DEPTH(32f8u, Mox32f, Mox8u),
                    DEPTH(32f16u, Mox32f, Mox16u), DEPTH(32f16s, Mox32f, Mox16s));

template <class Body>
void forEachForm(const Body& body) {
    const auto run = [&](const auto& form) {
        if (!::testing::Test::HasFailure()) body(form);
    };
    std::apply([&](const auto&... forms) { (std::ranges::for_each(forms, run), ...); }, depths);
}

/// Compares a form with the plain code, in a buffer of exactly the size it asks for.
template <class S, class D>
void expectReduced(const Form<S, D>& form, const Plane<S>& src, MoxiSize roi, const Task& task, Random& random,
                   uint32_t control = mxcsr::usual) {
    Plane<D> want(roi.width, roi.height, form.channels, random);
    const Plane<D> before = want;
    reference(src, want, form.colours, roi, task);
    const int bytes = bufferBytes(roi.width, task);
    const Plane<Mox8u> buffer(std::max(bytes, 1), 1, 1, random), bufferBefore = buffer;
    forEachLibrary([&](const Library& lib) {
        Plane<D> got = before;
        const MxcsrScope scope(control);
        ASSERT_EQ(lib(form.function)(src.data(), src.step(), got.data(), got.step(), roi, task.noise, task.type,
                                     task.levels, bytes ? buffer.data() : nullptr),
                  moxStatusOk);
        ASSERT_TRUE(same(got, want)) << "dither " << task.type << ", noise " << task.noise << ", levels " << task.levels
                                     << ", " << roundingName(control);
        ASSERT_TRUE(sameMargins(buffer, bufferBefore)) << "beyond the buffer";
    });
}

template <class Form>
Task randomTask(const Form& form, int type, Random& random) {
    const int most = form.mostLevels;
    return {type, random.oneIn(2) ? 0 : random.oneOf({1, 20, 51, 99, 100}),
            random.oneOf({2, 3, 5, 8, static_cast<int>(random.between(2, most)), most})};
}

constexpr uint32_t noDenormals = mxcsr::usual | mxcsr::flushToZero | mxcsr::denormalsAreZero;

// The caller's floating-point controls are no part of the result.
TEST(ReduceBits, MatchesPlainCode) {
    forEachForm([](const auto& form) {
        using S = typename std::decay_t<decltype(form)>::Source;
        forEachSize(
            [&](MoxiSize roi, Random& random) {
                const Plane<S> src(roi.width, roi.height, form.channels, random);
                for (int type = moxDitherNone; type <= moxDitherBayer; ++type)
                    expectReduced(form, src, roi, randomTask(form, type, random), random,
                                  random.oneOf({mxcsr::usual, mxcsr::up, mxcsr::down, mxcsr::towardZero, noDenormals}));
            },
            1, 70, 12);
    });
}

// Slow gradients: errors stay long, and samples lie on levels.
TEST(ReduceBits, MatchesPlainCodeOnGradients) {
    forEachForm([](const auto& form) {
        using S = typename std::decay_t<decltype(form)>::Source;
        Random random(7);
        const MoxiSize roi = {257, 19};
        Plane<S> src(roi.width, roi.height, form.channels, random);
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x)
                for (int c = 0; c < form.channels; ++c) {
                    const int i = (x + 2 * y + 40 * c) % 256;
                    src.set(x, y, c,
                            static_cast<S>(real<S>          ? i / 255.0f
                                           : sizeof(S) == 1 ? i
                                                            : i * 257 - (S(-1) < S(0) ? 32768 : 0)));
                }
        for (int type = moxDitherNone; type <= moxDitherBayer; ++type)
            for (const int levels : {2, 4, 8, form.mostLevels})
                for (const int noise : {0, 100}) expectReduced(form, src, roi, {type, noise, levels}, random);
    });
}

// Floats of any size, infinities and NaNs: truncation out of range gives -2147483648, and sums wrap.
TEST(ReduceBits, FloatsBeyondTheRange) {
    forEachForm([](const auto& form) {
        using S = typename std::decay_t<decltype(form)>::Source;
        if constexpr (real<S>) {
            forEachSize(
                [&](MoxiSize roi, Random& random) {
                    Plane<S> src(roi.width, roi.height, form.channels, random);
                    src.fill([&] {
                        return random.oneIn(3)   ? random.special<float>()
                               : random.oneIn(9) ? random.anyBits<float>()
                                                 : random.uniform(-1.0f, 2.0f);
                    });
                    for (int type = moxDitherNone; type <= moxDitherBayer; ++type)
                        expectReduced(form, src, roi, randomTask(form, type, random), random,
                                      random.oneOf({mxcsr::usual, noDenormals}));
                },
                1, 40);
        }
    });
}

TEST(ReduceBits, InPlaceIsAsOutOfPlace) {
    forEachForm([](const auto& form) {
        using S = typename std::decay_t<decltype(form)>::Source;
        using D = typename std::decay_t<decltype(form)>::Result;
        if constexpr (std::is_same_v<S, D>) {
            Random random(3);
            const MoxiSize roi = {77, 21};
            const Plane<S> src(roi.width, roi.height, form.channels, random);
            const Plane<Mox8u> buffer(8000, 1, 1, random);
            for (int type = moxDitherNone; type <= moxDitherBayer; ++type) {
                Plane<S> want = src;
                reference(src, want, form.colours, roi, {type, 30, 6});
                forEachLibrary([&](const Library& lib) {
                    Plane<S> got = src;
                    lib(form.function)(got.data(), got.step(), got.data(), got.step(), roi, 30, type, 6, buffer.data());
                    ASSERT_TRUE(same(got, want)) << "dither " << type;
                });
            }
        }
    });
}

// Another thread keeps writing the fourth samples, and loses none of its writes.
TEST(ReduceBits, AlphaMayBeAnothersMeanwhile) {
    Random random(5);
    const MoxiSize roi = {61, 9};
    const Plane<Mox16u> src(roi.width, roi.height, 4, random);
    const Plane<Mox16u> dst(roi.width, roi.height, 4, random);
    const Plane<Mox8u> buffer(8000, 1, 1, random);
    forEachLibrary([&](const Library& lib) {
        std::atomic<bool> stop = false;
        std::atomic<int> lost = 0, rounds = 0;
        std::thread writer([&] {
            for (Mox16u n = 0; !stop; ++n, ++rounds) {
                for (int y = 0; y < roi.height; ++y)
                    for (int x = 0; x < roi.width; ++x) {
                        volatile Mox16u* const alpha = dst.row(y) + 4 * x + 3;
                        if (rounds > 0 && *alpha != static_cast<Mox16u>(n - 1)) ++lost;
                        *alpha = n;
                    }
            }
        });
        while (rounds < 1) std::this_thread::yield();
        const auto reduce = MOX_CALL(lib, moxiReduceBits_16u_AC4R);
        for (int i = 0; i < 300; ++i)
            for (int type = moxDitherNone; type <= moxDitherBayer; ++type)
                reduce(src.data(), src.step(), dst.data(), dst.step(), roi, 0, type, 9, buffer.data());
        stop = true;
        writer.join();
        EXPECT_EQ(lost, 0) << lib.name();
    });
}

// ---- known answers --------------------------------------------------------------------------------------------------

std::vector<int> firstRow(const Library& lib, std::vector<Mox8u> samples, int rows, int type, int levels, int row) {
    const MoxiSize roi = {static_cast<int>(samples.size()), rows};
    alignas(64) Mox8u buffer[1024];
    std::vector<Mox8u> dst(samples.size() * size_t(rows));
    MOX_CALL(lib, moxiReduceBits_8u_C1R)(samples.data(), 0, dst.data(), roi.width, roi, 0, type, levels, buffer);
    return {dst.begin() + row * roi.width, dst.begin() + (row + 1) * roi.width};
}

TEST(ReduceBits, KnownRows) {
    using Row = std::vector<int>;
    const std::vector<Mox8u> hundreds(8, 100);
    std::vector<Mox8u> all(256);
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<Mox8u>(i);
    const Row identity(all.begin(), all.end());
    forEachLibrary([&](const Library& lib) {
        EXPECT_EQ(firstRow(lib, hundreds, 2, moxDitherFs, 2, 0), (Row{0, 255, 0, 0, 255, 0, 0, 255}));
        EXPECT_EQ(firstRow(lib, hundreds, 2, moxDitherFs, 2, 1), (Row{0, 255, 0, 255, 0, 255, 0, 0}));
        EXPECT_EQ(firstRow(lib, hundreds, 2, moxDitherJj, 2, 0), (Row{0, 0, 0, 255, 0, 0, 0, 255}));
        EXPECT_EQ(firstRow(lib, hundreds, 2, moxDitherSt, 2, 0), (Row{0, 0, 255, 0, 0, 255, 0, 0}));
        EXPECT_EQ(firstRow(lib, all, 1, moxDitherNone, 256, 0), identity);
        EXPECT_EQ(firstRow(lib, all, 4, moxDitherBayer, 256, 3), identity);
        EXPECT_EQ(firstRow(lib, {0, 127, 128, 255}, 1, moxDitherNone, 2, 0), (Row{0, 0, 255, 255}));
        Row levels = firstRow(lib, all, 1, moxDitherNone, 5, 0);
        levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
        EXPECT_EQ(levels, (Row{0, 63, 127, 191, 255}));
        EXPECT_EQ(firstRow(lib, {255}, 1, moxDitherBayer, 8, 0), Row{255});  // steps beyond the top, and saturates

        Mox16u one = 257, level = 0;
        MOX_CALL(lib, moxiReduceBits_16u_C1R)(&one, 2, &level, 2, {1, 1}, 0, moxDitherNone, 65536, nullptr);
        EXPECT_EQ(level, 256);
        // Level 6 of 7 as 8 bits: scaled by plain rounding, the upper byte by the others.
        Mox16u six = 56172;
        Mox8u plain = 0, ordered = 0;
        MOX_CALL(lib, moxiReduceBits_16u8u_C1R)(&six, 2, &plain, 1, {1, 1}, 0, moxDitherNone, 8, nullptr);
        MOX_CALL(lib, moxiReduceBits_16u8u_C1R)(&six, 2, &ordered, 1, {1, 1}, 0, moxDitherBayer, 8, nullptr);
        EXPECT_EQ(plain, 218);
        EXPECT_EQ(ordered, 219);
    });
}

TEST(ReduceBits, GeneratorBegins) {
    Generator offsets(1024, 1024);
    for (const int want : {1, 133, 217, 413, 361, 759, 844, 242}) EXPECT_EQ(std::nearbyint(offsets.next()), want);
}

// ---- buffer size ----------------------------------------------------------------------------------------------------

TEST(ReduceBits, BufferSizes) {
    forEachLibrary([](const Library& lib) {
        const auto query = MOX_CALL(lib, moxiReduceBitsGetBufferSize);
        for (int type = moxDitherNone; type <= moxDitherBayer; ++type)
            for (const int noise : {0, 1, 10, 100})
                for (const int width : {1, 100, 4097})
                    for (const int dataType : {1, 3, 4, 9}) {
                        int32_t size = -1;
                        EXPECT_EQ(query(dataType, {width, -3}, noise, type, &size), moxStatusOk);
                        EXPECT_EQ(size, bufferBytes(width, {type, noise, 2})) << width << ' ' << noise << ' ' << type;
                    }
        int32_t size = 0;
        query(1, {100, 1}, 0, moxDitherFs, &size);
        EXPECT_EQ(size, 880);
        query(1, {100, 1}, 10, moxDitherSt, &size);
        EXPECT_EQ(size, 7568);
        query(1, {100, 1}, 1, moxDitherBayer, &size);
        EXPECT_EQ(size, 6320);
    });
}

// ---- one bit a pixel ------------------------------------------------------------------------------------------------

void setBit(Plane<Mox8u>& dst, int bit, int y, bool on) {
    const int mask = 0x80 >> bit % 8;
    const Mox8u old = dst.get(bit / 8, y);
    dst.set(bit / 8, y, static_cast<Mox8u>(on ? old | mask : old & ~mask));
}

void referenceBits(const Plane<Mox8u>& src, Plane<Mox8u>& dst, int offset, MoxiSize roi, int type, int threshold) {
    const size_t entries = static_cast<size_t>(roi.width) + 4;
    std::vector<int> above2(entries), above(entries), current(entries);
    for (int y = 0; y < roi.height; ++y) {
        if (offset > 0)
            for (int bit = offset; bit < 8; ++bit) setBit(dst, bit, y, false);
        for (int x = 0; x < roi.width; ++x) {
            const int s = src.get(x, y);
            bool white = s > threshold;
            if (type == moxDitherSt) {
                const int *A = &above2[size_t(x)], *B = &above[size_t(x)], *C = &current[size_t(x)];  // of column x - 2
                const int acc = s * 8192 + 23 * (A[0] + A[4] + 2 * (A[1] + A[3] + B[0] + B[4]) +
                                                 4 * (A[2] + B[1] + B[3] + C[0]) + 8 * (B[2] + C[1]));
                white = acc > threshold * 8192;
                current[size_t(x) + 2] = (acc >> 10) - (white ? 2047 : 0);
            }
            setBit(dst, offset + x, y, white);
        }
        above2.swap(above);
        above.swap(current);
    }
}

TEST(ReduceBits1u, MatchesPlainCode) {
    forEachSize(
        [](MoxiSize roi, Random& random) {
            Plane<Mox8u> src(roi.width, roi.height, 1, random);
            if (random.oneIn(2)) src.fill([&] { return random.between(90, 140); });
            for (int offset = 0; offset < 8; ++offset)
                for (const int type : {moxDitherNone, moxDitherSt}) {
                    const Mox8u threshold = random.oneOf<Mox8u>({0, 100, 127, 128, 254, 255});
                    Plane<Mox8u> want((offset + roi.width + 7) / 8, roi.height, 1, random);
                    const Plane<Mox8u> before = want;
                    referenceBits(src, want, offset, roi, type, threshold);
                    const Plane<Mox8u> buffer(12 * roi.width + 48 + 64, 1, 1, random), bufferBefore = buffer;
                    const int given = offset + 8 * static_cast<int>(random.between(0, 3));
                    forEachLibrary([&](const Library& lib) {
                        Plane<Mox8u> got = before;
                        ASSERT_EQ(MOX_CALL(lib, moxiReduceBits_8u1u_C1R)(
                                      src.data(), src.step(), got.data(), got.step(), given, roi, 7, -7, type,
                                      threshold, type == moxDitherNone ? nullptr : buffer.data()),
                                  moxStatusOk);
                        ASSERT_TRUE(same(got, want)) << "offset " << given << ", threshold " << int(threshold);
                        ASSERT_TRUE(sameMargins(buffer, bufferBefore)) << "beyond the buffer";
                    });
                }
        },
        1, 80, 9);
}

}  // namespace
