// Bit-depth reduction against plain code: one sample after another, one row after another.
#include "moxcc/reduce_bits.h"

#include <algorithm>
#include <cmath>
#include <thread>

#include "models/pixels.h"

using namespace moxtest;

namespace {

// ---- plain code -----------------------------------------------------------------------------------------------------

int32_t wrapped(int64_t x) { return static_cast<int32_t>(static_cast<uint32_t>(x)); }

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

/// The thresholds of diffusion between levels that are `step` apart.
Noise noiseOf(const Values& task, float step) {
    return {static_cast<float>(50 - task.noise) * step / 100, static_cast<float>(50 + task.noise) * step / 100};
}

#ifdef MOXCC_FEWER_CASES
constexpr int largeRows = 30;
#else
constexpr int largeRows = 200;
#endif

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
void referenceOrdered(const Picture& src, Picture& dst, int colours, const Values& task) {
    const MoxiSize roi = src.size();
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
                const float value = sourceValue(src.get<S>(x, y, c));
                float q = static_cast<float>(truncated(value * invStep)) * step;
                if (t < value - q) q = q + step;
                dst.set(x, y, c, saturated<D>(result<S, D>(q, plusHalf)));
            }
        }
}

template <class S, class D>
void referenceDiffused(const Picture& src, Picture& dst, int colours, const Values& task) {
    const MoxiSize roi = src.size();
    const float L = static_cast<float>(task.levels - 1), top = sourceTop<S>();
    const float step = top / L, invStep = L / top, half = 0.5f * step;
    const Noise noise = noiseOf(task, step);
    const bool floydSteinberg = task.dither == moxDitherFs, jarvis = task.dither == moxDitherJj;
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
                const float v = sourceValue(src.get<S>(x, y, c)) + S_ * factor;
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
void reference(const Picture& src, Picture& dst, int colours, const Values& task) {
    const MoxiSize roi = src.size();
    if (task.dither == moxDitherBayer) return referenceOrdered<S, D>(src, dst, colours, task);
    if (task.dither != moxDitherNone) return referenceDiffused<S, D>(src, dst, colours, task);
    for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x)
            for (int c = 0; c < colours; ++c) dst.set(x, y, c, nearestLevel<S, D>(src.get<S>(x, y, c), task.levels));
}

// ---- the 32 forms ---------------------------------------------------------------------------------------------------

struct Form {
    const catalogue::Export& e;
    void (*reference)(const Picture&, Picture&, int colours, const Values&);
    bool fromFloats;

    int colours() const { return std::min(e.sides[0].channels(), e.is("*_AC4R") ? 3 : 4); }
    Reference rule() const {
        return [=, this](const Picture& src, Picture& want, const Values& task) {
            underMxcsr(mxcsr::usual, [&] { reference(src, want, colours(), task); });  // whatever the caller's
        };
    }
};

template <class Body>
void forEachForm(const Body& body) {
    const auto of = [&]<class S, class D>(const char* pattern, S, D) {
        for (const char* name : named(pattern)) body(Form{*catalogue::find(name), reference<S, D>, real<S>});
    };
    of("moxiReduceBits_8u_*", Mox8u(), Mox8u());
    of("moxiReduceBits_16u_*", Mox16u(), Mox16u());
    of("moxiReduceBits_16s_*", Mox16s(), Mox16s());
    of("moxiReduceBits_16u8u_*", Mox16u(), Mox8u());
    of("moxiReduceBits_16s8u_*", Mox16s(), Mox8u());
    of("moxiReduceBits_32f8u_*", Mox32f(), Mox8u());
    of("moxiReduceBits_32f16u_*", Mox32f(), Mox16u());
    of("moxiReduceBits_32f16s_*", Mox32f(), Mox16s());
}

constexpr MoxDitherType dithers[] = {moxDitherNone, moxDitherFs, moxDitherJj, moxDitherSt, moxDitherBayer};
constexpr uint32_t noDenormals = mxcsr::usual | mxcsr::flushToZero | mxcsr::denormalsAreZero;

Values anyTask(const Form& form, MoxDitherType dither, Random& random) {
    const int most = form.e.mostLevels;
    return {.dither = dither,
            .levels = random.oneOf({2, 3, 5, 8, static_cast<int>(random.between(2, most)), most}),
            .noise = random.oneIn(2) ? 0 : random.oneOf({1, 20, 51, 99, 100})};
}

// The caller's floating-point controls are no part of the result. Floats are of any size, infinities and NaNs in every
// second picture: truncation out of range gives -2147483648, and sums wrap.
TEST(ReduceBits, MatchesPlainCode) {
    forEachForm([](const Form& form) {
        for (const MoxDitherType dither : dithers) {
            Calls calls = {.maxHeight = 12,
                           .roundings = {mxcsr::usual, mxcsr::up | noDenormals},
                           .values = [&](Random& random) { return anyTask(form, dither, random); }};
            if (form.fromFloats)
                calls.fill = [](Picture& src, Random& random) {
                    const bool wild = random.oneIn(2);
                    src.fill<Mox32f>([&] {
                        if (!wild) return random.sample<float>();
                        return random.oneIn(3)   ? random.special<float>()
                               : random.oneIn(9) ? random.anyBits<float>()
                                                 : random.uniform(-1.0f, 2.0f);
                    });
                };
            expect(form.e.name.c_str(), form.rule(), calls);
        }
    });
}

// Slow gradients over many samples: errors stay long, samples lie on levels, and a sum in another order shows at last.
TEST(ReduceBits, MatchesPlainCodeOnLargeGradients) {
    Random random(7);
    forEachForm([&](const Form& form) {
        const auto fill = [&](Picture& src, Random&) {
            const auto set = [&]<class S>(S bottom, double step) {
                for (int y = 0; y < src.size().height; ++y)
                    for (int x = 0; x < src.size().width; ++x)
                        for (int c = 0; c < src.side().channels(); ++c)
                            src.set(x, y, c, static_cast<S>(bottom + (x + 2 * y + 40 * c) % 256 * step));
            };
            if (form.fromFloats)
                set(0.0f, 1 / 255.0);
            else if (src.side().sampleBytes == 1)
                set(Mox8u(0), 1);
            else if (src.side().depth == "16u")
                set(Mox16u(0), 257);
            else
                set(Mox16s(-32768), 257);
        };
        const bool large = form.e.is("*_C1R");
        for (const MoxDitherType dither : dithers)
            for (const int levels : {2, 4, 8, form.e.mostLevels})
                for (const int noise : {0, 100})
                    expectAt(form.e.name.c_str(), large ? MoxiSize{301, largeRows} : MoxiSize{257, 19}, random,
                             form.rule(), {.fill = fill, .values = [&](Random&) {
                                               return Values{.dither = dither, .levels = levels, .noise = noise};
                                           }});
    });
}

// Samples equal to the noisy thresholds, or one unit in the last place beside them, tell all bits of the noise. No error
// runs on: a sample beyond the top follows each.
TEST(ReduceBits, NoiseToTheLastBit) {
    Random random(3);
    for (int i = 0; i < 60; ++i) {
        const Values task = {.dither = moxDitherFs,
                             .levels = random.oneOf({2, 3, 7, 256}),
                             .noise = static_cast<int>(random.between(1, 100))};
        const auto fill = [&](Picture& src, Random&) {
            const float step = 1 / static_cast<float>(task.levels - 1);
            const Noise noise = noiseOf(task, step);
            for (int x = 0; x < src.size().width; ++x) {
                const float at = noise.at(x, 0);
                src.set(x, 0, 0, x % 2 == i % 2 ? 4.0f : random.oneIn(2) ? at : std::nextafter(at, 2.0f));
            }
        };
        expectAt("moxiReduceBits_32f8u_C1R", {2048, 1}, random,
                 Form{*catalogue::find("moxiReduceBits_32f8u_C1R"), reference<Mox32f, Mox8u>, true}.rule(),
                 {.fill = fill, .values = [&](Random&) { return task; }});
    }
}

TEST(ReduceBits, InPlaceIsAsOutOfPlace) {
    Random random(3);
    forEachForm([&](const Form& form) {
        if (form.e.sides[0].depth != form.e.sides[1].depth) return;
        const Picture src(form.e, 1, {77, 21}, random);
        for (const MoxDitherType dither : dithers) {
            const Values task = {.dither = dither, .levels = 6, .noise = 30};
            Picture want = src;
            form.rule()(src, want, task);
            forEachLibrary([&](const Library& lib) {
                const Picture got = src;
                catalogue::call(form.e, got.view(), got.view(), task, lib.symbol(form.e.name.c_str()));
                ASSERT_TRUE(same(got, want)) << form.e.name << ", dither " << dither;
            });
        }
    });
}

// Fourth samples may be another thread's meanwhile: it loses none of its writes. A tool that finds races shows a read.
TEST(ReduceBits, AlphaMayBeAnothersMeanwhile) {
    Random random(5);
    const MoxiSize size = {61, 9};
    for (const char* name : named("moxiReduceBits_*_AC4R")) {
        const catalogue::Export& e = *catalogue::find(name);
        const Picture src(e, 0, size, random);
        Picture dst(e, 1, size, random);
        forEachLibrary([&](const Library& lib) {
            int lost = 0;
            std::thread writer([&] {
                for (int n = 0; n < 300; ++n)
                    for (int y = 0; y < size.height; ++y)
                        for (int x = 0; x < size.width; ++x) {
                            lost += n > 0 && dst.get<Mox8u>(x, y, 3) != static_cast<Mox8u>(n - 1);
                            dst.set(x, y, 3, static_cast<Mox8u>(n));
                        }
            });
            for (int i = 0; i < 20; ++i)
                for (const MoxDitherType dither : dithers)
                    catalogue::call(e, src.view(), dst.view(), {.dither = dither, .levels = 9}, lib.symbol(name));
            writer.join();
            EXPECT_EQ(lost, 0) << name << ", " << lib.name();
        });
    }
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

int bufferBytes(int width, const Values& task) {
    if (task.dither == moxDitherNone) return 0;
    const int rows = task.dither == moxDitherFs ? 8 * width + 16 : task.dither == moxDitherBayer ? 0 : 12 * width + 48;
    const int bytes = rows + (task.noise > 0 ? 6256 : 0);
    return bytes > 0 ? bytes + 64 : 0;
}

TEST(ReduceBits, BufferSizes) {
    forEachLibrary([](const Library& lib) {
        const auto query = MOX_CALL(lib, moxiReduceBitsGetBufferSize);
        for (const MoxDitherType type : dithers)
            for (const int noise : {0, 1, 10, 100})
                for (const int width : {1, 100, 4097})
                    for (const int dataType : {1, 3, 4, 9}) {
                        int32_t size = -1;
                        EXPECT_EQ(query(dataType, {width, -3}, noise, type, &size), moxStatusOk);
                        EXPECT_EQ(size, bufferBytes(width, {.dither = type, .noise = noise}))
                            << width << ' ' << noise << ' ' << type;
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

void referenceBits(const Picture& src, Picture& want, const Values& task) {
    const auto setBit = [&](int bit, int y, bool on) {
        uint8_t& byte = want[0].rowStart(y)[bit / 8];
        const int mask = 0x80 >> bit % 8;
        byte = static_cast<uint8_t>(on ? byte | mask : byte & ~mask);
    };
    const auto [width, height] = src.size();
    const int offset = task.firstBit % 8;
    const size_t entries = static_cast<size_t>(width) + 4;
    std::vector<int> above2(entries), above(entries), current(entries);
    for (int y = 0; y < height; ++y) {
        if (offset > 0)
            for (int bit = offset; bit < 8; ++bit) setBit(bit, y, false);
        for (int x = 0; x < width; ++x) {
            const int s = src.get(x, y);
            bool white = s > task.threshold;
            if (task.dither == moxDitherSt) {
                const int *A = &above2[size_t(x)], *B = &above[size_t(x)], *C = &current[size_t(x)];  // of column x - 2
                const int acc = s * 8192 + 23 * (A[0] + A[4] + 2 * (A[1] + A[3] + B[0] + B[4]) +
                                                 4 * (A[2] + B[1] + B[3] + C[0]) + 8 * (B[2] + C[1]));
                white = acc > task.threshold * 8192;
                current[size_t(x) + 2] = (acc >> 10) - (white ? 2047 : 0);
            }
            setBit(offset + x, y, white);
        }
        above2.swap(above);
        above.swap(current);
    }
}

TEST(ReduceBits1u, MatchesPlainCode) {
    for (int offset = 0; offset < 8; ++offset)
        for (const MoxDitherType dither : {moxDitherNone, moxDitherSt})
            expect("moxiReduceBits_8u1u_C1R", referenceBits,
                   {.toWidth = 80,
                    .maxHeight = 9,
                    .fill =
                        [](Picture& src, Random& random) {
                            const bool gray = random.oneIn(2);
                            src.fill<Mox8u>(
                                [&] { return gray ? Mox8u(random.between(90, 140)) : random.sample<Mox8u>(); });
                        },
                    .values =
                        [&](Random& random) {
                            return Values{.dither = dither,
                                          .noise = 7,
                                          .firstBit = offset + (random.oneIn(2) ? 8 : 0),
                                          .threshold = random.oneOf({0, 100, 127, 128, 254, 255})};
                        }});
}

}  // namespace
