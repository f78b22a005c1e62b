#include "moxcc/rec709_encode.h"

#include "video/encode_reference.h"

using namespace moxtest;

namespace {

// ---- rules, written from their definition ---------------------------------------------------------------------------

int a(int x, int c) { return x * c >> 8; }
int hp(int s, int c) { return floorShift(64 * s * c, 16); }
int hq(int s, int c) { return floorShift(32 * s * c, 16); }
int lim(int x) { return std::clamp(x, 1, 254); }

int vl1(Colour p) { return clamp((a(p.r, 5997) + a(p.g, 20120) + a(p.b, 2032) + 2112) >> 7); }
int vl2(Colour p) { return (11993 * p.r + 40239 * p.g + 4063 * p.b + 0x108000) >> 16; }
CbCr vc1(Colour s) {
    return {clamp(floorShift(hq(s.b, 28770) - hq(s.g, 22151) - hq(s.r, 6619) + 16400, 7)),
            clamp(floorShift(hq(s.r, 28770) - hq(s.g, 26149) - hq(s.b, 2621) + 16400, 7))};
}
CbCr vc2(Colour s) {
    return {floorShift(28770 * s.b - 22151 * s.g - 6619 * s.r + 0x2008000, 18) & 0xFF,
            floorShift(28770 * s.r - 26149 * s.g - 2621 * s.b + 0x2008000, 18) & 0xFF};
}

int hl1(Colour p) { return lim((a(p.r, 6980) + a(p.g, 23429) + a(p.b, 2359) + 64) >> 7); }
int hl2(Colour p) { return lim((13959 * p.r + 46858 * p.g + 4719 * p.b + 32768) >> 16); }
CbCr hc1(Colour s) {
    return {lim(floorShift(hq(s.b, 16744) - hq(s.g, 12911) - hq(s.r, 3834) + 8224, 6)),
            lim(floorShift(hq(s.r, 16744) - hq(s.g, 15204) - hq(s.b, 1540) + 8224, 6))};
}
CbCr hp1(Colour s) {
    return {lim(floorShift(hp(s.b, 16744) - hp(s.g, 12911) - hp(s.r, 3834) + 8224, 6)),
            lim(floorShift(hp(s.r, 16744) - hp(s.g, 15204) - hp(s.b, 1540) + 8224, 6))};
}
CbCr hp2(Colour s) {
    return {lim(floorShift(hp(s.r, -3834) + hp(s.g, -12911) + hp(s.b, 16744) + 8224, 6)),
            lim(floorShift(hp(s.r, 16744) + hp(s.g, -15204) + hp(s.b, -1540) + 8224, 6))};
}
template <int cbOffset, int crOffset, int shift>
CbCr exact(Colour s) {
    return {lim(floorShift(33489 * s.b - 25821 * s.g - 7668 * s.r + cbOffset, shift)),
            lim(floorShift(33489 * s.r - 30409 * s.g - 3080 * s.b + crOffset, shift))};
}
const ChromaRule hc2 = exact<0x2008000, 0x2008000, 18>;
const ChromaRule hp3 = exact<0x1010000, 0x100FFFE, 17>;
const ChromaRule ho1 = exact<0x808000, 0x808000, 16>;

// ---- the family -----------------------------------------------------------------------------------------------------

template <int pass, int single>
int passes(int width) {
    return width / pass * pass + (width % (2 * single) >= single ? single : 0);
}

const Encoder cscPlanar = {passes<16, 4>, cell(vl1, vc1), cell(vl2, vc2)};
const Encoder cscSemiPlanar = {wholeGroups<8>, cell(vl1, vc1), cell(vl2, vc2)};
const Encoder hdtv420 = {passes<16, 4>, cell(hl1, hc1), cell(hl2, hc2)};
const Encoder hdtv422 = {passes<32, 8>, cell(hl1, hp1), cell(hl2, hp3), cell(hl2, ho1)};
const Encoder hdtv422A = {wholeGroups<8>, cell(hl1, hp2), cell(hl2, hp3), cell(hl2, ho1)};

TEST(Rec709Encode, StudioRange420) {
    expectEncodes("moxiBGRToYCbCr420_709CSC_8u_C3P3R", cscPlanar);
    expectEncodes("moxiBGRToYCbCr420_709CSC_8u_AC4P3R", cscPlanar);
    expectEncodes("moxiBGRToYCrCb420_709CSC_8u_C3P3R", cscPlanar);
    expectEncodes("moxiBGRToYCrCb420_709CSC_8u_AC4P3R", cscPlanar);
    expectEncodes("moxiBGRToYCbCr420_709CSC_8u_C3P2R", cscSemiPlanar);
    expectEncodes("moxiBGRToYCbCr420_709CSC_8u_AC4P2R", cscSemiPlanar);
}

TEST(Rec709Encode, FullRange) {
    expectEncodes("moxiBGRToYCbCr420_709HDTV_8u_AC4P3R", hdtv420);
    expectEncodes("moxiBGRToCbYCr422_709HDTV_8u_C3C2R", hdtv422);
    expectEncodes("moxiBGRToCbYCr422_709HDTV_8u_AC4C2R", hdtv422A);
}

TEST(Rec709Encode, TailsForManyColours) {
    expectEncodesTails("moxiBGRToYCbCr420_709CSC_8u_C3P2R", cscSemiPlanar);
    expectEncodesTails("moxiBGRToYCbCr420_709HDTV_8u_AC4P3R", hdtv420);
    expectEncodesTails("moxiBGRToCbYCr422_709HDTV_8u_C3C2R", hdtv422);
}

}  // namespace
