// The plane operations that the families share, compiled into this test at each width, against plain code. The test is
// their core library too, so that regions beyond the largest cache need not be large.
#include <algorithm>
#include <cmath>

#include "frame/row_sum.h"
#include "support/support.h"

#define LEVEL(level, ...)                                                                             \
    namespace level {                                                                                 \
    MoxStatus moxiSet_8u_C1R(Mox8u value, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);             \
    MoxStatus moxiMax_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox32f* result);  \
    MoxStatus moxiSum_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result);  \
    MoxStatus moxiMean_32f_C1R(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result); \
    }
#include "levels.inc"
#undef LEVEL

using namespace moxtest;

namespace {
int32_t cacheBytes = 0;  // 0: not known
}

extern "C" int32_t moxGetMaxCacheSizeB(int32_t* bytes) {
    *bytes = cacheBytes;
    return cacheBytes ? 0 : -1;
}

namespace {

struct Primitives {
    const char* name;
    bool runs;
    MoxStatus (*set)(Mox8u value, Mox8u* dst, int32_t dstStep, MoxiSize roiSize);
    MoxStatus (*max)(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox32f* result);
    MoxStatus (*sum)(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result);
    MoxStatus (*mean)(const Mox32f* src, int32_t srcStep, MoxiSize roiSize, Mox64f* result);
};

template <class Body>
void forEachWidth(const Body& body) {
    const Primitives widths[] = {
#define LEVEL(level, name, path, runs) \
    {name, runs, level::moxiSet_8u_C1R, level::moxiMax_32f_C1R, level::moxiSum_32f_C1R, level::moxiMean_32f_C1R},
#include "levels.inc"
    };
    for (const Primitives& width : widths) {
        if (!width.runs || ::testing::Test::HasFailure()) continue;
        SCOPED_TRACE(width.name);
        body(width);
    }
}

TEST(Set, WritesItsBytesBesideAnyCache) {
    Random random(1);
    forEachWidth([&](const Primitives& p) {
        for (const int32_t cache : {0, 1, 0x90000, 1 << 30}) {
            cacheBytes = cache;
            for (const MoxiSize size : {MoxiSize{1, 1}, {70, 3}, {300, 7}, {0x80001, 2}, {1000, 600}})
                for (int i = 0; i < (size.width < 1000 ? 8 : 2); ++i) {
                    Layout layout = Layout::random(random, 1);
                    if (i % 2) layout.gap = 0, layout.bottomUp = false;  // one run
                    const Plane<Mox8u> dst(size.width, size.height, 1, layout, random);
                    Plane<Mox8u> want = dst;
                    const auto value = random.sample<Mox8u>();
                    want.fill([&] { return value; });
                    ASSERT_EQ(p.set(value, dst.data(), dst.step(), size), moxStatusOk);
                    ASSERT_TRUE(same(dst, want)) << size.width << " x " << size.height << ", cache " << cache;
                }
        }
    });
}

TEST(Max, PassesOverNans) {
    forEachSize(
        [](MoxiSize size, Random& random) {
            Plane<float> src(size.width, size.height, 1, random);
            float want = -std::numeric_limits<float>::max();
            src.fill([&] {
                const float x = random.oneIn(4) ? NAN : random.uniform(-9.0f, random.oneIn(9) ? 9.0f : -1.0f);
                if (x > want) want = x;
                return x;
            });
            forEachWidth([&](const Primitives& p) {
                float got = 0;
                ASSERT_EQ(p.max(src.data(), src.step(), size, &got), moxStatusOk);
                ASSERT_EQ(got, want) << size.width << " x " << size.height;
            });
        },
        1, 200);
}

// Samples of many sizes: a sum in another order has other bits. The last picture's total has more digits than a double.
TEST(Sum, FollowsTheAddressesOfTheRows) {
    const auto check = [](const Plane<float>& src) {
        long double total = 0;
        for (int y = 0; y < src.rows(); ++y) {
            std::vector<float> row;
            for (int x = 0; x < src.columns(); ++x) row.push_back(src.get(x, y));
            addRow(row, reinterpret_cast<uintptr_t>(src.row(y)), total);
        }
        forEachWidth([&](const Primitives& p) {
            const MoxiSize size = {src.columns(), src.rows()};
            double sum = 0, mean = 0;
            ASSERT_EQ(p.sum(src.data(), src.step(), size, &sum), moxStatusOk);
            ASSERT_EQ(p.mean(src.data(), src.step(), size, &mean), moxStatusOk);
            ASSERT_EQ(sum, static_cast<double>(total)) << size.width << " x " << size.height;
            ASSERT_EQ(mean, sum / (size.width * size.height));
        });
    };
    forEachSize([&](MoxiSize size, Random& random) {
        for (int i = 0; i < 8; ++i) {
            Plane<float> src(size.width, size.height, 1, Layout::random(random, random.oneIn(2) ? 4 : 1), random);
            src.fill([&] { return random.uniform(-1.0f, 2.0f) * (random.oneIn(5) ? 1000.0f : 1.0f); });
            check(src);
        }
    });
    Random random(1);
    Plane<float> rows(1, 4, 1, Layout{}, random);
    const float samples[] = {0x1p+54f, 1.0f, 1.0f, -0x1p+54f};
    for (int y = 0; y < 4; ++y) rows.set(0, y, samples[y]);
    check(rows);
}

}  // namespace
