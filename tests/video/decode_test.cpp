// Decoding of subsampled video and of BT.709: which rule and which chroma give which pixel, by plain integer
// arithmetic.
#include "models/plain_rules.h"
#include "moxcc/rec709_decode.h"
#include "moxcc/ycbcr_decode.h"
#include "moxcc/yuv_decode.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;
using namespace plain;

namespace {

/// The luma and the chroma, Cb or U first, that a pixel is made of.
void samplesOf(const Picture& p, int x, int y, int out[3]) {
    const catalogue::Side& side = p.side();
    const int width = p.size().width;
    if (side.cell.width == 1) {
        for (int c = 0; c < 3; ++c) out[c] = p.get(x, y, c);
        return;
    }
    out[0] = p.luma(x, y);
    for (const int kind : {0, 1}) {
        int cell = x / side.cell.width;
        if (side.cell.width == 4) cell = std::min(cell, width / 4 - 1);
        // Beside a last odd pixel of a packed row stands one sample; the other kind is that of the pair before.
        const bool crossed = side.holds.starts_with("YCr");
        if (side.layout == "C2" && x == width - 1 && x % 2 == 0 && kind != int(crossed)) {
            if (x > 0)
                --cell;
            else
                out[1 + kind] = p.chroma(0, y, !kind);
            if (x == 0) continue;
        }
        out[1 + kind] = p.chroma(cell, y / side.cell.height, kind);
    }
}

enum class Fourth { none, aval, zero };

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

void decode(const Picture& src, Picture& want, const Rules& rules, Fourth fourth, double aval, MoxiSize size) {
    const int cellHeight = src.side().cell.height;
    for (int y = 0; y < size.height / cellHeight * cellHeight; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const Rule rule = rules.at(x, size.width);
            if (!rule) continue;
            int in[3], out[3];
            samplesOf(src, x, y, in);
            rule(in, out);
            for (int c = 0; c < 3; ++c) want.setColour(x, y, c, out[c]);
            if (fourth != Fourth::none) want.setColour(x, y, 3, fourth == Fourth::aval ? static_cast<int>(aval) : 0);
        }
    }
}

/// At all sizes, and for many colours in rows of last columns alone and of the first.
void expectDecoding(const char* name, const Rules& rules, Fourth fourth = Fourth::none) {
    const auto reference = [&](const Picture& src, Picture& want, const Values& values) {
        decode(src, want, rules, fourth, values.alpha, src.size());
    };
    expect(name, reference);
    Random random(5);
    for (const int width : {1, 2, 3, 6, 16})
        if (width >= catalogue::find(name)->least.width)
            expectAt(name, {width, manyPixels / 2 / width / 4 * 4}, random, reference);
}

TEST(YCbCrDecode, Packed422) {
    expectDecoding("moxiYCbCr422ToRGB_8u_C2C3R", {8, YI4, YI1, YI1});
    expectDecoding("moxiYCbCr422ToRGB_8u_C2C4R", {8, YI7, YI2, YI2}, Fourth::aval);
    expectDecoding("moxiYCbCr422ToRGB_8u_C2P3R", {4, YI6, YI9, YI9});
    expectDecoding("moxiYCbCr422ToBGR_8u_C2C3R", {8, YI4, YI1, YI1});
    expectDecoding("moxiYCbCr422ToBGR_8u_C2C4R", {8, YI8, YI9, YI9}, Fourth::aval);
    expectDecoding("moxiYCrCb422ToRGB_8u_C2C3R", {8, YI7, YI2, YI2});
    expectDecoding("moxiYCrCb422ToRGB_8u_C2C4R", {8, YI7, YI2, YI2}, Fourth::aval);
    expectDecoding("moxiYCrCb422ToRGB_8u_C2P3R", {4, YI6, YI9, YI9});
    expectDecoding("moxiYCrCb422ToBGR_8u_C2C3R", {8, YI7, YI2, YI2});
    expectDecoding("moxiYCrCb422ToBGR_8u_C2C4R", {8, YI7, YI2, YI2}, Fourth::aval);
    expectDecoding("moxiCbYCr422ToRGB_8u_C2C3R", {8, YI4, YI1, YI1});
    expectDecoding("moxiCbYCr422ToBGR_8u_C2C4R", {8, YI10, YI1, YI1}, Fourth::aval);
}

TEST(YCbCrDecode, Planar422And411) {
    expectDecoding("moxiYCbCr422ToRGB_8u_P3C3R", {8, YI4, YI9});
    expectDecoding("moxiYCbCr422ToBGR_8u_P3C3R", {8, YI4, YI9});
    const Rules rules411 = {4, YI4, YI4, nullptr, nullptr, YI13};
    expectDecoding("moxiYCbCr411ToBGR_8u_P3C3R", rules411);
    expectDecoding("moxiYCbCr411ToBGR_8u_P3C4R", rules411, Fourth::aval);
}

TEST(YCbCrDecode, Planar420) {
    expectDecoding("moxiYCbCr420ToRGB_8u_P3C3R", {8, YI4, YI2});
    expectDecoding("moxiYCbCr420ToBGR_8u_P3C3R", {8, YI4, YI2});
    expectDecoding("moxiYCbCr420ToBGR_8u_P3C4R", {1, YI11, YI11}, Fourth::aval);
    expectDecoding("moxiYCrCb420ToRGB_8u_P3C4R", {8, YI5, YI2}, Fourth::aval);
}

TEST(YCbCrDecode, SemiPlanar420) {
    expectDecoding("moxiYCbCr420ToRGB_8u_P2C3R", {1, YI11, YI11});
    expectDecoding("moxiYCbCr420ToRGB_8u_P2C4R", {1, YI11, YI11}, Fourth::aval);
    expectDecoding("moxiYCbCr420ToBGR_8u_P2C3R", {1, YI11, YI11});
    expectDecoding("moxiYCbCr420ToBGR_8u_P2C4R", {1, YI11, YI11}, Fourth::aval);
    expectDecoding("moxiYCrCb420ToRGB_8u_P2C3R", {1, YI12, YI12});
    expectDecoding("moxiYCrCb420ToRGB_8u_P2C4R", {1, YI12, YI12}, Fourth::aval);
    expectDecoding("moxiYCrCb420ToBGR_8u_P2C3R", {1, YI12, YI12});
    expectDecoding("moxiYCrCb420ToBGR_8u_P2C4R", {1, YI12, YI12}, Fourth::aval);
}

TEST(YuvDecode, ColumnsFollowTheirRule) {
    expectDecoding("moxiYUV422ToRGB_8u_C2C3R", {16, UI5, UI2, UI2, UI7});
    expectDecoding("moxiYUV422ToRGB_8u_P3C3R", {16, UI5, UI7, UI7});
    expectDecoding("moxiYUV422ToRGB_8u_P3R", {16, UI5, UI7, UI10});
    expectDecoding("moxiYUV422ToRGB_8u_P3AC4R", {4, UI8, UI7, UI7}, Fourth::zero);
    expectDecoding("moxiYUV420ToRGB_8u_P3C3R", {1, UI5, UI5});
    expectDecoding("moxiYUV420ToBGR_8u_P3C3R", {1, UI9, UI9});
    expectDecoding("moxiYUV420ToRGB_8u_P3R", {1, UI7, UI7});
    expectDecoding("moxiYUV420ToRGB_8u_P3AC4R", {4, UI8, UI2}, Fourth::zero);
}

TEST(Rec709Decode, ColumnsFollowTheirRule) {
    expectDecoding("moxiYCbCrToBGR_709CSC_8u_P3C3R", {1, VI1, VI1, VI1});
    expectDecoding("moxiYCbCrToBGR_709CSC_8u_P3C4R", {1, VI2, VI2, VI2}, Fourth::aval);
    expectDecoding("moxiYCbCr420ToBGR_709CSC_8u_P3C3R", {8, VI1, VI3});
    expectDecoding("moxiCbYCr422ToBGR_709HDTV_8u_C2C3R", {8, HI1, HI3, HI3});
    expectDecoding("moxiCbYCr422ToBGR_709HDTV_8u_C2C4R", {8, HI1, HI3, HI3}, Fourth::aval);
    expectDecoding("moxiYCbCr420ToBGR_709HDTV_8u_P3C4R", {8, HI2, HI3}, Fourth::aval);
}

/// A large picture of even width is decoded as one row, which rows without gaps allow.
void expectContiguous(const char* name, const Rules& rules) {
    const catalogue::Export& e = *catalogue::find(name);
    const auto reference = [&](const Picture& src, Picture& want, const Values&) {
        const auto [w, h] = src.size();
        const bool oneRow = e.is("*422*") && w * h >= 256 && w % 2 == 0;
        decode(src, want, rules, Fourth::none, 0, oneRow ? MoxiSize{w * h, 1} : src.size());
    };
    Random random(7);
    for (const MoxiSize size : {MoxiSize{16, 16},
                                {15, 17},
                                {18, 14},
                                {23, 15},
                                {130, 2},
                                {254, 1},
                                {256, 1},
                                {85, 3},
                                {36, 8},
                                {1, 1},
                                {2, 1}})
        expectAt(name, size, random, reference);
}

TEST(YuvDecode, PicturesWithoutGaps) {
    expectContiguous("moxiYUV422ToRGB_8u_P3C3", {16, UI5, UI7, UI7});
    expectContiguous("moxiYUV422ToRGB_8u_P3", {16, UI5, UI7, UI10});
    expectContiguous("moxiYUV420ToRGB_8u_P3C3", {1, UI5, UI5});
    expectContiguous("moxiYUV420ToRGB_8u_P3", {1, UI7, UI7});
}

}  // namespace
