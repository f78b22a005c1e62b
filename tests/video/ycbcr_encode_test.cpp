#include "moxcc/ycbcr_encode.h"

#include <cmath>

#include "video/encode_reference.h"

using namespace moxtest;

namespace {

// ---- rules, written from their definition ---------------------------------------------------------------------------

int m(int x, int c) { return floorShift(128 * x * c + 16384, 15); }

int yl1(Colour p) { return floorShift(16843 * p.r + 33030 * p.g + 6423 * p.b + 0x108000, 16); }
int yl2(Colour p) { return floorShift(16843 * p.r + 33030 * p.g + 6423 * p.b + 0x100000, 16); }
int yl3(Colour p) { return clamp(floorShift(m(p.r, 4211) + m(p.g, 8258) + m(p.b, 1606) + 1056, 6)); }
int yl4(Colour p) { return clamp(floorShift(m(p.r, 4211) + m(p.g, 8258) + m(p.b, 1606) + 1026, 6)); }
int yl5(Colour p) { return clamp(floorShift((p.r * 8422 >> 8) + (p.g * 16515 >> 8) + (p.b * 3212 >> 8) + 2112, 7)); }
int yl6(Colour p) { return clamp(floorShift(m(p.r, 4211) + m(p.g, 8258) + m(p.b, 1606), 6) + 16); }

template <int cbOffset, int crOffset, int shift>
CbCr exact(Colour s) {
    return {floorShift(-9699 * s.r - 19071 * s.g + 28770 * s.b + cbOffset, shift),
            floorShift(28770 * s.r - 24117 * s.g - 4653 * s.b + crOffset, shift)};
}
const ChromaRule yc1 = exact<0x1010000, 0x1010000, 17>;
const ChromaRule yc2 = exact<0x1004000, 0x1004000, 17>;
const ChromaRule yc5 = exact<0x1010000, 0x100FFFE, 17>;
const ChromaRule yc6 = exact<0x2008000, 0x2008000, 18>;

/// kp of pairs has the factor 64, kq of cells the factor 32.
template <int factor, int offset>
CbCr rounded(Colour s) {
    const auto k = [](int x, int c) { return floorShift(factor * x * c + 16384, 15); };
    return {clamp(floorShift(k(s.b, 7193) - k(s.g, 4768) - k(s.r, 2425) + offset, 6)),
            clamp(floorShift(k(s.r, 7193) - k(s.g, 6029) - k(s.b, 1163) + offset, 6))};
}
const ChromaRule yc3 = rounded<64, 8224>;
const ChromaRule yc7 = rounded<32, 8194>;
CbCr yc9(Colour s) {
    const auto kq = [](int x, int c) { return floorShift(32 * x * c + 16384, 15); };
    return {clamp(floorShift(kq(s.b, 7193) - kq(s.g, 4768) - kq(s.r, 2425), 6) + 128),
            clamp(floorShift(kq(s.r, 7193) - kq(s.g, 6029) - kq(s.b, 1163), 6) + 128)};
}
CbCr yc4(Colour s) {
    const auto hp = [](int x, int c) { return floorShift(64 * x * c, 16); };
    return {clamp(floorShift(hp(s.b, 28770) + hp(s.g, -19071) + hp(s.r, -9699) + 16448, 7)),
            clamp(floorShift(hp(s.r, 28770) + hp(s.g, -24117) + hp(s.b, -4653) + 16448, 7))};
}
CbCr yc8(Colour s) {
    const auto hq = [](int x, int c) { return floorShift(32 * x * c, 16); };
    return {clamp(floorShift(hq(s.b, 28770) - hq(s.g, 19071) - hq(s.r, 9699) + 16400, 7)),
            clamp(floorShift(hq(s.r, 28770) - hq(s.g, 24117) - hq(s.b, 4653) + 16400, 7))};
}

const CellRule onePixel = cell(yl1, exact<0x808000, 0x808000, 16>);

// ---- the family -----------------------------------------------------------------------------------------------------

const Encoder rgb422 = {wholeGroups<8>, cell(yl3, yc3), cell(yl1, yl2, yc1)};
const Encoder bgr422 = {wholeGroups<8>, cell(yl3, yc3), cell(yl1, yc2)};
const Encoder bgra422 = {wholeGroups<8>, cell(yl5, yc4), cell(yl1, yc5), onePixel};
const Encoder bgr420 = {wholeGroups<8>, cell(yl3, yc7), cell(yl1, yc6)};
const Encoder bgra420 = {wholeGroups<4>, cell(yl5, yc8), cell(yl1, yc6)};
const Encoder rgb420 = {wholeGroups<8>, cell(yl4, yc7), cell(yl1, yc6)};
const Encoder bgr411 = {wholeGroups<16>, cell(yl6, yc9), cell(yl1, yc6)};
const Encoder bgra411 = {wholeGroups<16>, cell(yl5, yc8), cell(yl1, yc6), nullptr, false, yl1};

TEST(YCbCrEncode, Packed422) {
    expectEncodes("moxiRGBToYCbCr422_8u_C3C2R", rgb422);
    expectEncodes("moxiRGBToYCrCb422_8u_C3C2R", rgb422);
    expectEncodes("moxiRGBToYCbCr422_8u_P3C2R", rgb422);
    expectEncodes("moxiRGBToYCrCb422_8u_P3C2R", rgb422);
    expectEncodes("moxiBGRToYCbCr422_8u_C3C2R", bgr422);
    expectEncodes("moxiBGRToYCbCr422_8u_AC4C2R", bgr422);
    expectEncodes("moxiBGRToCbYCr422_8u_AC4C2R", bgra422);
}

TEST(YCbCrEncode, Planar422) {
    expectEncodes("moxiRGBToYCbCr422_8u_C3P3R", bgr422);
    expectEncodes("moxiBGRToYCbCr422_8u_C3P3R", bgr422);
    expectEncodes("moxiBGRToYCbCr422_8u_AC4P3R", bgr422);
}

TEST(YCbCrEncode, Planar420) {
    expectEncodes("moxiRGBToYCbCr420_8u_C3P3R", rgb420);
    expectEncodes("moxiBGRToYCbCr420_8u_C3P3R", bgr420);
    expectEncodes("moxiBGRToYCrCb420_8u_C3P3R", bgr420);
    expectEncodes("moxiBGRToYCbCr420_8u_AC4P3R", bgra420);
    expectEncodes("moxiBGRToYCrCb420_8u_AC4P3R", bgra420);
    expectEncodes("moxiRGBToYCrCb420_8u_AC4P3R", bgra420);
}

TEST(YCbCrEncode, SemiPlanar420) {
    expectEncodes("moxiRGBToYCbCr420_8u_C3P2R", rgb420);
    expectEncodes("moxiRGBToYCbCr420_8u_C4P2R", rgb420);
    expectEncodes("moxiBGRToYCbCr420_8u_C3P2R", rgb420);
    expectEncodes("moxiBGRToYCbCr420_8u_AC4P2R", rgb420);
}

TEST(YCbCrEncode, Planar411) {
    expectEncodes("moxiBGRToYCbCr411_8u_C3P3R", bgr411);
    expectEncodes("moxiBGRToYCbCr411_8u_AC4P3R", bgra411);
}

// ---- filtered chroma ------------------------------------------------------------------------------------------------

void filteredRow(const Picture& src, Picture& want, int y) {
    const int width = src.size().width;
    const int vectorPairs = width / 2 & ~3;
    CbCr before = {0, 0};
    for (int n = 0; n < width / 2; ++n) {
        const Colour e = pixelOf(src, 2 * n, y), o = pixelOf(src, 2 * n + 1, y);
        for (int i = 0; i < 2; ++i) want.setLuma(2 * n + i, y, (n < vectorPairs ? yl3 : yl1)(i ? o : e));
        CbCr odd;
        if (n < vectorPairs) {
            odd = {m(o.b, 3596) - m(o.r, 1212) - m(o.g, 2384), m(o.r, 3596) - m(o.g, 3015) - m(o.b, 582)};
            const int cb = m(e.b, 7193) - m(e.r, 2425) - m(e.g, 4768) + odd.cb + before.cb;
            const int cr = m(e.r, 7193) - m(e.g, 6029) - m(e.b, 1163) + odd.cr + before.cr;
            want.setChroma(n, y, 0, clamp(floorShift(cb + 16448, 7)));
            want.setChroma(n, y, 1, clamp(floorShift(cr + 16448, 7)));
        } else {
            if (n == vectorPairs) before = {before.cb * 512, before.cr * 512};
            const auto cb = [](Colour c) { return -9699 * c.r - 19071 * c.g + 28770 * c.b; };
            const auto cr = [](Colour c) { return 28770 * c.r - 24117 * c.g - 4653 * c.b; };
            odd = {floorShift(cb(o), 2), floorShift(cr(o), 2)};
            want.setChroma(n, y, 0, floorShift(floorShift(cb(e), 1) + before.cb + odd.cb - 0x7F8001, 16) & 0xFF);
            want.setChroma(n, y, 1, floorShift(floorShift(cr(e), 1) + before.cr + odd.cr - 0x7F8001, 16) & 0xFF);
        }
        before = odd;
    }
}

/// The curve for 8 bits, as its table is made.
int gammaForward(int i) {
    const double x = i / 255.0;
    const double v = x < 0.018 ? 4.5 * x : 1.099 * std::pow(x, 0.45) - 0.099;
    return static_cast<int>(std::nearbyintf(static_cast<float>(v * 255)));
}
Colour gammaForward(Colour c) { return {gammaForward(c.r), gammaForward(c.g), gammaForward(c.b)}; }

void gammaRow(const Picture& src, Picture& want, int y) {
    const int width = src.size().width;
    CbCr before = {0, 0};
    for (int n = 0; n < width / 2; ++n) {
        const Colour e = gammaForward(pixelOf(src, 2 * n, y)), o = gammaForward(pixelOf(src, 2 * n + 1, y));
        const auto luma = [](Colour c) { return clamp((8422 * c.r + 16515 * c.g + 3212 * c.b + 0x84000) >> 15); };
        want.setLuma(2 * n, y, luma(e));
        want.setLuma(2 * n + 1, y, luma(o));
        const CbCr even = {7193 * e.b - 2426 * e.r - 4769 * e.g, 7193 * e.r - 6030 * e.g - 1164 * e.b};
        const CbCr odd = {3596 * o.b - 1213 * o.r - 2385 * o.g, 3596 * o.r - 3015 * o.g - 582 * o.b};
        want.setChroma(n, y, 0, clamp(floorShift(even.cb + odd.cb + before.cb + 0x403FFF, 15)));
        want.setChroma(n, y, 1, clamp(floorShift(even.cr + odd.cr + before.cr + 0x403FFF, 15)));
        before = odd;
    }
}

/// The row's pairs, then its last pixel.
Encoder filtered(void (*pairs)(const Picture&, Picture&, int), Colour (*map)(Colour)) {
    Encoder encoder;
    encoder.last = onePixel;
    encoder.row = [=](const Picture& src, Picture& want, int y) {
        const int width = src.size().width;
        pairs(src, want, y);
        if (width % 2 == 0) return;
        const Colour pixel = map(pixelOf(src, width - 1, y));
        const Samples last = onePixel({&pixel, 1});
        want.setLuma(width - 1, y, last.y[0]);
        want.setChroma(width / 2, y, 0, last.cb);
    };
    return encoder;
}

TEST(YCbCrEncode, FilteredChroma) {
    expectEncodes("moxiRGBToCbYCr422_8u_C3C2R", filtered(filteredRow, [](Colour c) { return c; }));
    expectEncodes("moxiRGBToCbYCr422Gamma_8u_C3C2R", filtered(gammaRow, gammaForward));
}

TEST(YCbCrEncode, TailsForManyColours) {
    expectEncodesTails("moxiRGBToYCbCr422_8u_C3C2R", rgb422);
    expectEncodesTails("moxiBGRToYCbCr422_8u_C3P3R", bgr422);
    expectEncodesTails("moxiBGRToCbYCr422_8u_AC4C2R", bgra422);
    expectEncodesTails("moxiBGRToYCbCr420_8u_C3P3R", bgr420);
    expectEncodesTails("moxiBGRToYCbCr411_8u_AC4P3R", bgra411);
    expectEncodesTails("moxiRGBToCbYCr422_8u_C3C2R", filtered(filteredRow, [](Colour c) { return c; }));
    expectEncodesTails("moxiRGBToCbYCr422Gamma_8u_C3C2R", filtered(gammaRow, gammaForward));
}

}  // namespace
