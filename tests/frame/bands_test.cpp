// A picture that is converted band by band equals one converted whole, where docs/bands.md says so. One function stands for
// each line of the page's table whose bands may begin at some rows only, or where alignment or the place in the picture counts.
#include <functional>
#include <vector>

#include "moxcc/moxcc.h"
#include "support/support.h"

using namespace moxtest;

namespace {

// Where bands may begin: at rows phase, phase + unit, ...; and how high one must be.
struct Cuts {
    int unit;
    int phase = 0;
    int least = 1;
};

// Source and destination of a conversion: planes without gaps, one behind the other.
struct Picture {
    MoxiSize size;
    std::vector<uint8_t> src, dst;

    template <class T = Mox8u>
    const T* in(int64_t byte = 0) const {
        return reinterpret_cast<const T*>(src.data() + byte);
    }
    template <class T = Mox8u>
    T* out(int64_t byte = 0) {
        return reinterpret_cast<T*>(dst.data() + byte);
    }
};

// Converts the rows y to y + h - 1 of the picture.
using Convert = std::function<MoxStatus(const Library& lib, Picture& picture, int y, int h)>;

void expectBands(MoxiSize size, int srcBytes, int dstBytes, Cuts cuts, const Convert& convert) {
    Random random(20);
    const size_t area = size_t(size.width) * size_t(size.height);
    Picture picture{size, std::vector<uint8_t>(area * size_t(srcBytes)),
                    std::vector<uint8_t>(area * size_t(dstBytes) + 64)};
    for (uint8_t& byte : picture.src) byte = static_cast<uint8_t>(random.bits());

    forEachLibrary([&](const Library& lib) {
        Picture whole = picture, bands = picture;
        ASSERT_EQ(convert(lib, whole, 0, size.height), moxStatusOk);
        for (int y = 0, end; y < size.height; y = end) {
            end = y + cuts.least + static_cast<int>(random.between(0, size.height / 3));
            while ((end - cuts.phase) % cuts.unit != 0) ++end;
            if (end + cuts.least > size.height) end = size.height;
            ASSERT_EQ(convert(lib, bands, y, end - y), moxStatusOk) << "rows " << y << " to " << end - 1;
        }
        EXPECT_TRUE(whole.dst == bands.dst);
    });
}

}  // namespace

TEST(Bands, BeginAtAnyRowThoughAlignmentCounts) {
    for (const int off : {0, 8}) {
        expectBands({9, 40}, 24, 8, {1}, [=](const Library& lib, Picture& p, int y, int h) {
            return MOX_CALL(lib, moxiColorToGray_64f_C3C1R)(p.in<Mox64f>(y * 9 * 24), 9 * 24,
                                                            p.out<Mox64f>(off + y * 9 * 8), 9 * 8, {9, h}, nullptr);
        });
        // Rows of 32 pixels: all steps are multiples of 16.
        expectBands({32, 40}, 3, 2, {1}, [=](const Library& lib, Picture& p, int y, int h) {
            Mox8u* const planes[] = {p.out(off + y * 32), p.out(off + 1280 + y * 16), p.out(off + 1920 + y * 16)};
            const int32_t steps[] = {32, 16, 16};
            return MOX_CALL(lib, moxiRGBToYUV422_8u_C3P3R)(p.in(y * 96), 96, planes, steps, {32, h});
        });
    }
}

TEST(Bands, OfPicturesWithoutStepsAreWholeGroups) {
    // 40 columns: every second row begins at a multiple of 16 pixels, and 7 rows are more than 256 of them.
    expectBands({40, 61}, 3, 2, {2, 0, 7}, [](const Library& lib, Picture& p, int y, int h) {
        Mox8u* const planes[] = {p.out(y * 40), p.out(2440 + y * 20), p.out(3660 + y * 20)};
        return MOX_CALL(lib, moxiRGBToYUV422_8u_C3P3)(p.in(y * 120), planes, {40, h});
    });
    expectBands({40, 61}, 2, 3, {2, 0, 7}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const planes[] = {p.in(y * 40), p.in(2440 + y * 20), p.in(3660 + y * 20)};
        return MOX_CALL(lib, moxiYUV422ToRGB_8u_P3C3)(planes, p.out(y * 120), {40, h});
    });
    expectBands({41, 60}, 3, 2 + 1, {1}, [](const Library& lib, Picture& p, int y, int h) {
        Mox8u* const planes[] = {p.out(y * 41), p.out(2460 + y * 21), p.out(3720 + y * 21)};
        return MOX_CALL(lib, moxiRGBToYUV422_8u_C3P3)(p.in(y * 123), planes, {41, h});
    });
}

TEST(Bands, OfSubsampledChromaAreWholeCells) {
    static const int32_t half[] = {36, 18, 18}, quarter[] = {36, 9, 9};
    expectBands({36, 40}, 2, 4, {2}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const planes[] = {p.in(y * 36), p.in(1440 + y / 2 * 18), p.in(1800 + y / 2 * 18)};
        return MOX_CALL(lib, moxiYCrCb420ToBGR_Filter_8u_P3C4R)(planes, half, p.out(y * 144), 144, {36, h}, 7);
    });
    expectBands({36, 40}, 2, 2, {2}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const from[] = {p.in(y * 36), p.in(1440 + y * 9), p.in(1800 + y * 9)};
        Mox8u* const to[] = {p.out(y * 36), p.out(1440 + y / 2 * 18), p.out(1800 + y / 2 * 18)};
        return MOX_CALL(lib, moxiYCbCr411ToYCbCr420_8u_P3R)(from, quarter, to, half, {36, h});
    });
    expectBands({36, 40}, 2, 2, {4}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const from[] = {p.in(y * 36), p.in(1440 + y * 9), p.in(1800 + y * 9)};
        Mox8u* const to[] = {p.out(y * 36), p.out(1440 + y / 2 * 18), p.out(1800 + y / 2 * 18)};
        return MOX_CALL(lib, moxiYCbCr411To420_8u_P3R)(from, quarter, to, half, {36, h});
    });
    expectBands({36, 40}, 2, 2, {4}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const from[] = {p.in(y * 36), p.in(1440 + y / 2 * 18), p.in(1800 + y / 2 * 18)};
        Mox8u* const to[] = {p.out(y * 36), p.out(1440 + y / 4 * 9), p.out(1530 + y / 4 * 9)};
        return MOX_CALL(lib, moxiYCbCr420To1620_8u_P3R)(from, half, to, quarter, {36, h});
    });
    expectBands({36, 40}, 2, 2, {4}, [](const Library& lib, Picture& p, int y, int h) {
        const Mox8u* const from[] = {p.in(y * 36), p.in(1440 + y * 18), p.in(2160 + y * 18)};
        Mox8u* const to[] = {p.out(y * 36), p.out(1440 + y / 2 * 18), p.out(1800 + y / 2 * 18)};
        return MOX_CALL(lib, moxiYCbCr422To420_Interlace_8u_P3R)(from, half, to, half, {36, h});
    });
}

TEST(Bands, OfBayerImagesAreRegions) {
    const MoxiSize size = {37, 61};
    for (const MoxBayerGrid grid : {moxBayerGridBGGR, moxBayerGridRGGB, moxBayerGridGBRG, moxBayerGridGRBG}) {
        expectBands(size, 1, 3, {1}, [=](const Library& lib, Picture& p, int y, int h) {
            return MOX_CALL(lib, moxiCFAToRGB_8u_C1C3R)(p.in(), {0, y, 37, h}, size, 37, p.out(y * 111), 111, grid);
        });
        expectBands(size, 1, 4, {1, 0, 3}, [=](const Library& lib, Picture& p, int y, int h) {
            return MOX_CALL(lib, moxiCFAToBGRA_VNG_8u_C1C4R_L)(p.in(), {0, y, 37, h}, size, 37, nullptr, p.out(y * 148),
                                                               148, grid);
        });
        const int redRow = grid == moxBayerGridRGGB || grid == moxBayerGridGRBG ? 0 : 1;
        expectBands(size, 1, 3, {2, redRow}, [=](const Library& lib, Picture& p, int y, int h) {
            // Few values, so that many pixels are ties.
            for (uint8_t& sample : p.src) sample &= 3;
            std::vector<uint8_t> scratch(30 * (37 + 8));
            return MOX_CALL(lib, moxiDemosaicAHD_8u_C1C3R)(p.in(), {0, y, 37, h}, size, 37, p.out(y * 111), 111, grid,
                                                           scratch.data(), 37 + 8);
        });
    }
}

TEST(Bands, OfDitherAreWholePeriods) {
    const auto reduce = [](MoxDitherType dither, int noise) {
        return [=](const Library& lib, Picture& p, int y, int h) {
            std::vector<uint8_t> scratch(8192);
            return MOX_CALL(lib, moxiReduceBits_8u_C3R)(p.in(y * 33), 33, p.out(y * 33), 33, {11, h}, noise, dither, 4,
                                                        scratch.data());
        };
    };
    expectBands({11, 40}, 3, 3, {1}, reduce(moxDitherNone, 50));
    expectBands({11, 40}, 3, 3, {4}, reduce(moxDitherBayer, 0));
    expectBands({11, 3000}, 3, 3, {512}, reduce(moxDitherBayer, 50));
}
