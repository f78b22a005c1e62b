// A picture that is converted band by band equals one converted whole: every export that may be split, at sizes below,
// beside and beyond its cells, on up to 64 threads. What may not be split runs as one.
#include <numeric>

#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;
using catalogue::Export;
using catalogue::Value;

namespace {

class Bands : public ::testing::TestWithParam<size_t> {
  protected:
    static const Export& entry() { return catalogue::exports()[GetParam()]; }
};

/// The picture's own values, or those of a call that may be split.
Values drawn(const Export& e, Random& random) {
    Values values;
    values.alpha = static_cast<double>(random.bits() & 0xFF);
    values.grid = static_cast<MoxBayerGrid>(random.bits() % 4);
    values.levels = static_cast<int>(random.between(2, 9));
    if (e.parameter(Value::dither)) {
        values.dither = random.oneOf({moxDitherNone, moxDitherBayer, moxDitherBayer, moxDitherFs});
        values.noise = random.oneOf({0, 0, 50});
    }
    return values;
}

TEST_P(Bands, GiveTheBytesOfOneCall) {
    const Export& e = entry();
    if (!e.converts()) return;
    Random random(20);
    static const float weights[16] = {0.3f, 0.6f, 0.1f, 0.2f, 0.1f, 0.7f, 0.2f, 0.1f,
                                      0.4f, 0.1f, 0.5f, 0.1f, 0,    0,    0,    1};
    static const double wide[3] = {0.3, 0.6, 0.1};
    for (const MoxiSize drawnSize : {MoxiSize{37, 64}, {40, 61}, {6, 9}, {1, 3}, {16, 1100}}) {
        MoxiSize size = {std::max(drawnSize.width, e.least.width), std::max(drawnSize.height, e.least.height)};
        if (e.tested(catalogue::Check::wholeCells)) size = {size.width & -4, size.height & -4};
        if (size.height > 64 && !e.parameter(Value::dither)) continue;
        Values values = drawn(e, random);
        values.weights = e.is("*64f*") ? static_cast<const void*>(wide) : weights;
        const Picture src(e, e.inPlace() ? 1 : 0, size, random, values);
        if (e.is("*AHD*"))  // few values, so that many pixels are ties
            for (int y = 0; y < src[0].rows(); ++y)
                for (int x = 0; x < src[0].rowBytes(); ++x) src[0].rowStart(y)[x] &= 3;
        const Picture before = e.inPlace() ? src : Picture(e, 1, size, random, values);
        forEachLibrary([&](const Library& lib) {
            const CallScope note({e.name.c_str(), lib.name(), size});
            void* const function = lib.symbol(e.name.c_str());
            const Picture whole = before;
            const MoxStatus status = catalogue::call(e, src.view(), whole.view(), values, function);
            for (const int threads : {1, 2, 3, 7, 64}) {
                if (threads == 64 && size.height != 64) continue;  // threads are dear
                const Picture bands = before;
                ASSERT_EQ(catalogue::callInBands(e, src.view(), bands.view(), values, threads, function), status);
                ASSERT_TRUE(same(bands, whole, Nan::anyNan)) << threads << " threads";
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(, Bands, ::testing::Range(size_t(0), catalogue::exports().size()),
                         [](const auto& index) { return catalogue::exports()[index.param].name; });

TEST(BandsOf, AreNeverEmptyAndAsManyAsAskedFor) {
    const Export& rows = *catalogue::find("moxiRGBToGray_8u_C3C1R");
    const Export& cells = *catalogue::find("moxiYCbCr420ToRGB_8u_P3C3R");
    EXPECT_EQ(catalogue::bandsOf(rows, {8, 7}, {}, 3), std::vector<int>({0, 2, 4, 7}));
    EXPECT_EQ(catalogue::bandsOf(rows, {8, 3}, {}, 64), std::vector<int>({0, 1, 2, 3}));
    EXPECT_EQ(catalogue::bandsOf(cells, {8, 7}, {}, 64), std::vector<int>({0, 2, 4, 6, 7}));
    EXPECT_EQ(catalogue::bandsOf(*catalogue::find("moxiToneMapMean_32f8u_C1R"), {8, 64}, {}, 4),
              std::vector<int>({0, 64}));
}

}  // namespace
