// Decoding of subsampled video and of BT.709: which rule and which chroma give which pixel, by plain integer arithmetic.
#include "models/plain_rules.h"
#include "moxcc/rec709_decode.h"
#include "moxcc/ycbcr_decode.h"
#include "moxcc/yuv_decode.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;
using namespace plain;

namespace {

enum class Sampling { s444, packed422, chromaFirst422, planar422, planar420, semiPlanar420, planar411 };

/// A source: where the samples of a pixel lie. Crossed: Cr comes before Cb.
struct From {
    Sampling sampling;
    bool crossed = false;
    bool oddChroma = false;  // planar 4:2:2 with a chroma sample for the last column of an odd width

    bool cells420() const { return sampling == Sampling::planar420 || sampling == Sampling::semiPlanar420; }

    /// No more bytes than the export needs.
    std::vector<Shape> shapes(MoxiSize roi) const {
        const int w = roi.width, h = roi.height, even = std::max(w & -2, 1), cells = std::max(w / 2, 1);
        switch (sampling) {
            case Sampling::s444:
                return {{w, h, 1}, {w, h, 1}, {w, h, 1}};
            case Sampling::packed422:
            case Sampling::chromaFirst422:
                return {{w, h, 2}};
            case Sampling::planar422:
                if (oddChroma) return {{w, h, 1}, {(w + 1) / 2, h, 1}, {(w + 1) / 2, h, 1}};
                return {{even, h, 1}, {cells, h, 1}, {cells, h, 1}};
            case Sampling::planar420:
                return {{even, h & -2, 1}, {cells, h / 2, 1}, {cells, h / 2, 1}};
            case Sampling::semiPlanar420:
                return {{even, h & -2, 1}, {cells, h / 2, 2}};
            case Sampling::planar411:
                return {{w, h, 1}, {w / 4, h, 1}, {w / 4, h, 1}};
        }
        return {};
    }

    void get(const Picture& p, int x, int y, int width, int out[3]) const {
        int* const chroma[2] = {&out[crossed ? 2 : 1], &out[crossed ? 1 : 2]};
        const bool packed = sampling == Sampling::packed422 || sampling == Sampling::chromaFirst422;
        const int lumaAt = sampling == Sampling::chromaFirst422 ? 1 : 0;
        out[0] = packed ? p[0].get(x, y, lumaAt) : p[0].get(x, y);
        for (size_t i = 0; i < 2; ++i) {
            switch (sampling) {
                case Sampling::s444:
                    *chroma[i] = p[i + 1].get(x, y);
                    break;
                case Sampling::packed422:
                case Sampling::chromaFirst422: {
                    // Pixel x / 2 * 2 holds the first sample, the next the second; a last odd pixel goes back for it.
                    int holder = x / 2 * 2 + static_cast<int>(i);
                    if (holder >= width) holder = width == 1 ? 0 : holder - 2;
                    *chroma[i] = p[0].get(holder, y, 1 - lumaAt);
                    break;
                }
                case Sampling::planar422:
                    *chroma[i] = p[i + 1].get(x / 2, y);
                    break;
                case Sampling::planar420:
                    *chroma[i] = p[i + 1].get(x / 2, y / 2);
                    break;
                case Sampling::semiPlanar420:
                    *chroma[i] = p[1].get(x / 2, y / 2, static_cast<int>(i));
                    break;
                case Sampling::planar411:
                    *chroma[i] = p[i + 1].get(std::min(x / 4, width / 4 - 1), y);
                    break;
            }
        }
    }
};

const From ycc444{Sampling::s444};
const From yCbYCr{Sampling::packed422}, yCrYCb{Sampling::packed422, true}, cbYCrY{Sampling::chromaFirst422};
const From planar422{Sampling::planar422}, planar422Odd{Sampling::planar422, false, true};
const From planar420{Sampling::planar420}, crossed420{Sampling::planar420, true};
const From semi420{Sampling::semiPlanar420}, crossedSemi420{Sampling::semiPlanar420, true};
const From planar411{Sampling::planar411};

/// A destination.
enum class Fourth { none, aval, zero };
struct To {
    bool planes = false, reversed = false;
    Fourth fourth = Fourth::none;

    std::vector<Shape> shapes(MoxiSize roi) const {
        const Shape plane = {roi.width, roi.height, planes ? 1 : fourth == Fourth::none ? 3 : 4};
        return std::vector<Shape>(planes ? 3 : 1, plane);
    }
    void set(Picture& p, int x, int y, const int rgb[3], Mox8u aval) const {
        for (int c = 0; c < 3; ++c) {
            const auto sample = static_cast<Mox8u>(rgb[c]);
            planes ? p[size_t(c)].set(x, y, sample) : p[0].set(x, y, reversed ? 2 - c : c, sample);
        }
        if (fourth != Fourth::none) p[0].set(x, y, 3, fourth == Fourth::aval ? aval : Mox8u{0});
    }
};
const To rgb3, bgr3{false, true}, rgb4{false, false, Fourth::aval}, bgr4{false, true, Fourth::aval};
const To rgb0{false, false, Fourth::zero}, rgbPlanes{true};

/// The rules of a row.
struct Rules {
    int group;                     // columns below the width rounded down to a multiple of it
    Rule below, above;             // they follow the first rule, those beyond the second
    Rule last = nullptr;           // the last column of an odd width; none: not written
    Rule alone = last;             // the same at width 1
    Rule incomplete411 = nullptr;  // one or two columns beyond the last group of four

    Rule at(int x, int width) const {
        const int limit = width / group * group;
        if (incomplete411 && x >= limit) return width - limit == 3 ? above : incomplete411;
        if (width % 2 == 1 && x == width - 1 && !incomplete411) return width == 1 ? alone : last;
        return x < limit ? below : above;
    }
};

template <class F>
void expectDecoding(Symbol<F> function, From from, To to, Rules rules, MoxiSize smallest = {1, 1}) {
    const auto expected = [=](const Picture& src, Picture& dst, MoxiSize roi, Mox8u aval) {
        if (roi.height < smallest.height) return;
        for (int y = 0; y < (from.cells420() ? roi.height & -2 : roi.height); ++y) {
            for (int x = 0; x < roi.width; ++x) {
                const Rule rule = rules.at(x, roi.width);
                if (!rule) continue;
                int in[3], out[3];
                from.get(src, x, y, roi.width, in);
                rule(in, out);
                to.set(dst, x, y, out, aval);
            }
        }
    };
    const auto status = [=](MoxiSize roi) {
        if (roi.height < smallest.height) return moxStatusBadSize;
        return from.cells420() && (roi.width % 2 || roi.height % 2) ? moxStatusOddSize : moxStatusOk;
    };
    expectConversion(function,
                     {[=](MoxiSize roi) { return from.shapes(roi); }, [=](MoxiSize roi) { return to.shapes(roi); },
                      from.sampling == Sampling::s444 ? Steps::shared : Steps::own, Steps::shared, expected, status},
                     smallest.width);
}

TEST(YCbCrDecode, Packed422) {
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToRGB_8u_C2C3R), yCbYCr, rgb3, {8, YI4, YI1, YI1});
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToRGB_8u_C2C4R), yCbYCr, rgb4, {8, YI7, YI2, YI2});
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToRGB_8u_C2P3R), yCbYCr, rgbPlanes, {4, YI6, YI9, YI9});
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToBGR_8u_C2C3R), yCbYCr, bgr3, {8, YI4, YI1, YI1}, {2, 1});
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToBGR_8u_C2C4R), yCbYCr, bgr4, {8, YI8, YI9, YI9}, {2, 1});
    expectDecoding(MOX_EXPORT(moxiYCrCb422ToRGB_8u_C2C3R), yCrYCb, rgb3, {8, YI7, YI2, YI2});
    expectDecoding(MOX_EXPORT(moxiYCrCb422ToRGB_8u_C2C4R), yCrYCb, rgb4, {8, YI7, YI2, YI2});
    expectDecoding(MOX_EXPORT(moxiYCrCb422ToRGB_8u_C2P3R), yCrYCb, rgbPlanes, {4, YI6, YI9, YI9});
    expectDecoding(MOX_EXPORT(moxiYCrCb422ToBGR_8u_C2C3R), yCrYCb, bgr3, {8, YI7, YI2, YI2});
    expectDecoding(MOX_EXPORT(moxiYCrCb422ToBGR_8u_C2C4R), yCrYCb, bgr4, {8, YI7, YI2, YI2});
    expectDecoding(MOX_EXPORT(moxiCbYCr422ToRGB_8u_C2C3R), cbYCrY, rgb3, {8, YI4, YI1, YI1});
    expectDecoding(MOX_EXPORT(moxiCbYCr422ToBGR_8u_C2C4R), cbYCrY, bgr4, {8, YI10, YI1, YI1});
}

TEST(YCbCrDecode, Planar422And411) {
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToRGB_8u_P3C3R), planar422, rgb3, {8, YI4, YI9}, {2, 1});
    expectDecoding(MOX_EXPORT(moxiYCbCr422ToBGR_8u_P3C3R), planar422, bgr3, {8, YI4, YI9}, {2, 1});
    const Rules rules411 = {4, YI4, YI4, nullptr, nullptr, YI13};
    expectDecoding(MOX_EXPORT(moxiYCbCr411ToBGR_8u_P3C3R), planar411, bgr3, rules411, {4, 1});
    expectDecoding(MOX_EXPORT(moxiYCbCr411ToBGR_8u_P3C4R), planar411, bgr4, rules411, {4, 1});
}

TEST(YCbCrDecode, Planar420) {
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToRGB_8u_P3C3R), planar420, rgb3, {8, YI4, YI2});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_8u_P3C3R), planar420, bgr3, {8, YI4, YI2});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_8u_P3C4R), planar420, bgr4, {1, YI11, YI11});
    expectDecoding(MOX_EXPORT(moxiYCrCb420ToRGB_8u_P3C4R), crossed420, rgb4, {8, YI5, YI2});
}

TEST(YCbCrDecode, SemiPlanar420) {
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToRGB_8u_P2C3R), semi420, rgb3, {1, YI11, YI11});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToRGB_8u_P2C4R), semi420, rgb4, {1, YI11, YI11});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_8u_P2C3R), semi420, bgr3, {1, YI11, YI11});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_8u_P2C4R), semi420, bgr4, {1, YI11, YI11});
    expectDecoding(MOX_EXPORT(moxiYCrCb420ToRGB_8u_P2C3R), crossedSemi420, rgb3, {1, YI12, YI12});
    expectDecoding(MOX_EXPORT(moxiYCrCb420ToRGB_8u_P2C4R), crossedSemi420, rgb4, {1, YI12, YI12});
    expectDecoding(MOX_EXPORT(moxiYCrCb420ToBGR_8u_P2C3R), crossedSemi420, bgr3, {1, YI12, YI12});
    expectDecoding(MOX_EXPORT(moxiYCrCb420ToBGR_8u_P2C4R), crossedSemi420, bgr4, {1, YI12, YI12});
}

TEST(YuvDecode, ColumnsFollowTheirRule) {
    expectDecoding(MOX_EXPORT(moxiYUV422ToRGB_8u_C2C3R), yCbYCr, rgb3, {16, UI5, UI2, UI2, UI7});
    expectDecoding(MOX_EXPORT(moxiYUV422ToRGB_8u_P3C3R), planar422Odd, rgb3, {16, UI5, UI7, UI7});
    expectDecoding(MOX_EXPORT(moxiYUV422ToRGB_8u_P3R), planar422Odd, rgbPlanes, {16, UI5, UI7, UI10});
    expectDecoding(MOX_EXPORT(moxiYUV422ToRGB_8u_P3AC4R), planar422Odd, rgb0, {4, UI8, UI7, UI7});
    expectDecoding(MOX_EXPORT(moxiYUV420ToRGB_8u_P3C3R), planar420, rgb3, {1, UI5, UI5});
    expectDecoding(MOX_EXPORT(moxiYUV420ToBGR_8u_P3C3R), planar420, bgr3, {1, UI9, UI9}, {2, 2});
    expectDecoding(MOX_EXPORT(moxiYUV420ToRGB_8u_P3R), planar420, rgbPlanes, {1, UI7, UI7});
    expectDecoding(MOX_EXPORT(moxiYUV420ToRGB_8u_P3AC4R), planar420, rgb0, {4, UI8, UI2});
}

TEST(Rec709Decode, ColumnsFollowTheirRule) {
    expectDecoding(MOX_EXPORT(moxiYCbCrToBGR_709CSC_8u_P3C3R), ycc444, bgr3, {1, VI1, VI1, VI1});
    expectDecoding(MOX_EXPORT(moxiYCbCrToBGR_709CSC_8u_P3C4R), ycc444, bgr4, {1, VI2, VI2, VI2});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_709CSC_8u_P3C3R), planar420, bgr3, {8, VI1, VI3});
    expectDecoding(MOX_EXPORT(moxiCbYCr422ToBGR_709HDTV_8u_C2C3R), cbYCrY, bgr3, {8, HI1, HI3, HI3});
    expectDecoding(MOX_EXPORT(moxiCbYCr422ToBGR_709HDTV_8u_C2C4R), cbYCrY, bgr4, {8, HI1, HI3, HI3});
    expectDecoding(MOX_EXPORT(moxiYCbCr420ToBGR_709HDTV_8u_P3C4R), planar420, bgr4, {8, HI2, HI3});
}

// A picture without gaps is decoded as the form with steps decodes it; a large one of even width, as one row.
template <class F, class R>
void expectContiguous(Symbol<F> contiguous, Symbol<R> withSteps, To to, bool is422) {
    Random random(7);
    const Layout tight = {0, false, Guard::after, 0};
    for (const MoxiSize roi :
         {MoxiSize{16, 16}, {15, 17}, {18, 14}, {23, 15}, {130, 2}, {85, 3}, {36, 8}, {1, 1}, {2, 1}}) {
        const bool oneRow = is422 && roi.width * roi.height >= 256 && roi.width % 2 == 0;
        const MoxiSize as = oneRow ? MoxiSize{roi.width * roi.height, 1} : roi;
        const int chromaWidth = is422 ? (as.width + 1) / 2 : as.width / 2;
        const int chromaRows = std::max(is422 ? as.height : as.height / 2, 1);
        const Plane<Mox8u> y(as.width, as.height, 1, tight, random);
        const Plane<Mox8u> u(chromaWidth, chromaRows, 1, tight, random), v(chromaWidth, chromaRows, 1, tight, random);
        const Mox8u* const src[3] = {y.data(), u.data(), v.data()};
        const int32_t steps[3] = {y.step(), u.step(), v.step()};
        const size_t planes = to.planes ? 3 : 1;
        std::vector<Plane<Mox8u>> want(planes, {as.width, as.height, to.planes ? 1 : 3, tight, random}), got = want;
        forEachLibrary([&](const Library& lib) {
            MoxStatus status[2];
            if constexpr (std::is_same_v<F, decltype(moxiYUV422ToRGB_8u_P3)>) {
                Mox8u* const wantPlanes[3] = {want[0].data(), want[1].data(), want[2].data()};
                Mox8u* const gotPlanes[3] = {got[0].data(), got[1].data(), got[2].data()};
                status[0] = lib(withSteps)(src, steps, wantPlanes, want[0].step(), as);
                status[1] = lib(contiguous)(src, gotPlanes, roi);
            } else {
                status[0] = lib(withSteps)(src, steps, want[0].data(), want[0].step(), as);
                status[1] = lib(contiguous)(src, got[0].data(), roi);
            }
            ASSERT_EQ(status[0], status[1]) << contiguous.name;
            for (size_t i = 0; i < planes; ++i) ASSERT_TRUE(same(got[i], want[i]));
        });
    }
}

TEST(YuvDecode, PicturesWithoutGaps) {
    expectContiguous(MOX_EXPORT(moxiYUV422ToRGB_8u_P3C3), MOX_EXPORT(moxiYUV422ToRGB_8u_P3C3R), rgb3, true);
    expectContiguous(MOX_EXPORT(moxiYUV422ToRGB_8u_P3), MOX_EXPORT(moxiYUV422ToRGB_8u_P3R), rgbPlanes, true);
    expectContiguous(MOX_EXPORT(moxiYUV420ToRGB_8u_P3C3), MOX_EXPORT(moxiYUV420ToRGB_8u_P3C3R), rgb3, false);
    expectContiguous(MOX_EXPORT(moxiYUV420ToRGB_8u_P3), MOX_EXPORT(moxiYUV420ToRGB_8u_P3R), rgbPlanes, false);
}

}  // namespace
