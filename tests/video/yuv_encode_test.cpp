#include "moxcc/yuv_encode.h"

#include "video/encode_reference.h"

using namespace moxtest;

namespace {

// ---- rules, written from their definition ---------------------------------------------------------------------------

int m(int x, int c) { return floorShift(128 * x * c + 16384, 15); }
int hw(int p, int c) { return floorShift(p * c, 16); }
int rm(int d, int c) { return floorShift(d * c + 16384, 15); }
int x6(int x) { return x * 257 >> 6; }
int raw(Colour p) { return 19595 * p.r + 38470 * p.g + 7471 * p.b; }
int r15(Colour p) { return 9798 * p.r + 19235 * p.g + 3736 * p.b; }
int k(Colour p) { return ((9798 * p.r + 19235 * p.g) >> 14) + (3736 * p.b >> 14); }
int q14(Colour p) { return 4899 * p.r + 9617 * p.g + 1868 * p.b; }
int n(Colour p) { return m(p.r, 4899) + m(p.g, 9617) + m(p.b, 1868); }
int a(Colour p) { return hw(4 * p.r, 9798) + hw(4 * p.g, 19235) + hw(4 * p.b, 3736); }
int b(Colour p) { return hw(x6(p.r), 9798) + hw(x6(p.g), 19235) + hw(x6(p.b), 3736); }

using Cell = std::span<const Colour>;

template <class F>
std::array<int, 4> each(const Cell& cell, const F& f) {
    std::array<int, 4> values = {};
    for (size_t i = 0; i < cell.size(); ++i) values[i] = f(cell[i]);
    return values;
}
template <class F>
int sum(const Cell& cell, const F& f) {
    int total = 0;
    for (const Colour& p : cell) total += f(p);
    return total;
}
int red(Colour p) { return p.r; }
int blue(Colour p) { return p.b; }

// Pairs P, Q.
Samples up1(const Cell& c) {
    const auto chroma = [&](int x, int y, int weight) {
        return clamp(floorShift(hw(((x + y) >> 1) - b(c[0]) - b(c[1]), weight), 1) + 128);
    };
    return {each(c, [](Colour p) { return clamp(b(p) >> 1); }), chroma(x6(c[0].b), x6(c[1].b), 16121),
            chroma(x6(c[0].r), x6(c[1].r), 28737)};
}
template <int luma, int difference>
Samples up2or6(const Cell& c) {
    const int d = floorShift((sum(c, blue) << 16) - raw(c[0]) - raw(c[1]) + difference, 16);
    const int e = floorShift((sum(c, red) << 16) - raw(c[0]) - raw(c[1]) + difference, 16);
    return {each(c, [](Colour p) { return (raw(p) + luma) >> 16; }), floorShift(d * 32244, 17) + 128,
            clamp(floorShift(e * 57475, 17) + 128)};
}
const CellRule up2 = up2or6<0, 0xFFFF>, up6 = up2or6<0x8000, 0x8000>;
template <int added>
Samples up3or5(const Cell& c) {
    const auto kk = [](Colour p) { return k(p) + added; };
    const int mean = (kk(c[0]) + kk(c[1])) >> 1;
    return {each(c, [&](Colour p) { return clamp(kk(p) >> 1); }), clamp(hw(sum(c, blue) - mean, 16121) + 128),
            clamp(hw(sum(c, red) - mean, 28737) + 128)};
}
const CellRule up3 = up3or5<0>, up5 = up3or5<1>;
Samples up4(const Cell& c) {
    const auto chroma = [&](int s, int weight) {
        return clamp(floorShift(rm((s << 6) - n(c[0]) - n(c[1]), weight), 6) + 128);
    };
    return {each(c, [](Colour p) { return clamp(n(p) >> 6); }), chroma(sum(c, blue), 8061), chroma(sum(c, red), 14369)};
}

// One pixel.
template <int uAdded, int vAdded>
Samples uo1or2(const Cell& c) {
    const int d = floorShift((c[0].b << 15) - r15(c[0]) + uAdded, 15);
    const int e = floorShift((c[0].r << 15) - r15(c[0]) + vAdded, 15);
    return {{r15(c[0]) >> 15}, floorShift(d * 16121, 15) + 128, clamp(floorShift(e * 28737, 15) + 128)};
}
const CellRule uo1 = uo1or2<0, 0>, uo2 = uo1or2<0x3FFF, 0x7FFF>;
Samples uo3(const Cell& c) {
    const int d = floorShift((c[0].b << 16) - raw(c[0]) + 0x8000, 16);
    return {{(raw(c[0]) + 0x8000) >> 16}, floorShift(d * 32244, 16) + 128, 0};
}

// Cells of four.
Samples uc1(const Cell& c) {
    const int s = sum(c, n) >> 1;
    const auto chroma = [&](int colour, int weight) {
        return clamp(floorShift(rm((colour << 5) - s, weight), 6) + 128);
    };
    return {each(c, [](Colour p) { return clamp(n(p) >> 6); }), chroma(sum(c, blue), 8061), chroma(sum(c, red), 14369)};
}
Samples uc2(const Cell& c) {
    const int d = floorShift((sum(c, blue) << 14) - sum(c, q14), 14),
              e = floorShift((sum(c, red) << 14) - sum(c, q14), 14);
    return {each(c, [](Colour p) { return (q14(p) + 2) >> 14; }), floorShift(d * 8061, 16) + 128,
            clamp(floorShift(e * 14369, 16) + 128)};
}
Samples uc3(const Cell& c) {
    const int d = floorShift((sum(c, blue) << 16) - sum(c, raw) + 0x1FFFF, 16);
    const int e = floorShift((sum(c, red) << 16) - sum(c, raw) + 0x1FFFF, 16);
    return {each(c, [](Colour p) { return raw(p) >> 16; }), floorShift(d * 32244, 18) + 128,
            clamp(floorShift(e * 57475, 18) + 128)};
}
Samples uc4(const Cell& c) {
    const int s = sum(c, a) >> 2;
    return {each(c, [](Colour p) { return clamp(a(p) >> 1); }), clamp(hw((4 * sum(c, blue) >> 3) - s, 16121) + 128),
            clamp(hw((4 * sum(c, red) >> 3) - s, 28737) + 128)};
}

// ---- the family -----------------------------------------------------------------------------------------------------

const Encoder packed422 = {wholeGroups<16>, up5, up6, uo3};
const Encoder fromPlanes422 = {wholeGroups<16>, up1, up2, uo1, true};
const Encoder planar422 = {wholeGroups<16>, up3, up2, uo2, true};
const Encoder aligned422 = {wholeGroups<16>, up4, up3, uo2, true};
const Encoder planar420 = {wholeGroups<8>, uc1, uc2};
const Encoder fromPlanes420 = {wholeGroups<1>, uc3, uc3};
const Encoder fromBGRA420 = {wholeGroups<16>, uc4, uc3};

TEST(YUVEncode, Packed422) { expectEncodes("moxiRGBToYUV422_8u_C3C2R", packed422); }
TEST(YUVEncode, PlanesToPlanar422) { expectEncodes("moxiRGBToYUV422_8u_P3R", fromPlanes422); }
TEST(YUVEncode, Planar420) {
    expectEncodes("moxiRGBToYUV420_8u_C3P3R", planar420);
    expectEncodes("moxiRGBToYUV420_8u_P3R", fromPlanes420);
    expectEncodes("moxiBGRToYUV420_8u_AC4P3R", fromBGRA420);
}

// ---- alignment ------------------------------------------------------------------------------------------------------

bool allAligned(const Picture& src, const Picture& dst) {
    const auto bits = [](const Picture& p) {
        uintptr_t all = 0;
        for (size_t i = 0; i < p.planes(); ++i)
            all |= reinterpret_cast<uintptr_t>(p[i].rowStart(0)) | static_cast<uintptr_t>(p[i].step());
        return all;
    };
    return (bits(src) | bits(dst)) % 16 == 0;
}
void encodeC3P3R(const Picture& src, Picture& want, const Values&) {
    encode(allAligned(src, want) ? aligned422 : planar422, src, want, src.size());
}

TEST(YUVEncode, Planar422) { expect("moxiRGBToYUV422_8u_C3P3R", encodeC3P3R); }

/// Eight values decide: one of them off by one byte is enough, with steps of either sign and in a single row.
TEST(YUVEncode, Planar422DependsOnAlignment) {
    Random random(8);
    const catalogue::Export& e = *catalogue::find("moxiRGBToYUV422_8u_C3P3R");
    constexpr int width = 38, room = 256;
    std::vector<Mox8u> memory(16 + 4 * 8 * room);
    for (const int height : {1, 3}) {
        for (const int sign : {1, -1}) {
            for (int off = -1; off < 8; ++off) {
                for (Mox8u& byte : memory) byte = static_cast<Mox8u>(random.bits());
                Mox8u* const start = memory.data() + (-reinterpret_cast<uintptr_t>(memory.data()) & 15);
                catalogue::Picture picture[2] = {{{width, height}}, {{width, height}}};
                for (int i = 0; i < 4; ++i)
                    picture[i > 0].planes[std::max(i - 1, 0)] = {start + (8 * i + 4) * room + (off == i),
                                                                 sign * (room / 2 + (off == 4 + i))};
                const Encoder& encoder = off == -1 ? aligned422 : planar422;
                forEachLibrary([&](const Library& lib) {
                    ASSERT_EQ(catalogue::call(e, picture[0], picture[1], {}, lib.symbol(e.name.c_str())), moxStatusOk);
                    const auto at = [&](int side, int plane, int y, int x) {
                        const catalogue::Plane& p = picture[side].planes[plane];
                        return static_cast<Mox8u*>(p.data) + ptrdiff_t(y) * p.step + x;
                    };
                    for (int y = 0; y < height; ++y) {
                        for (int x = 0; x < width; x += 2) {
                            const Mox8u* p = at(0, 0, y, 3 * x);
                            const Colour pair[] = {{p[0], p[1], p[2]}, {p[3], p[4], p[5]}};
                            const Samples s = (x < encoder.limit(width) ? encoder.below : encoder.above)(pair);
                            ASSERT_TRUE(*at(1, 0, y, x) == s.y[0] && *at(1, 0, y, x + 1) == s.y[1] &&
                                        *at(1, 1, y, x / 2) == s.cb && *at(1, 2, y, x / 2) == s.cr)
                                << "value " << off << " off, column " << x;
                        }
                    }
                });
            }
        }
    }
}

// ---- images without gaps --------------------------------------------------------------------------------------------

/// Sizes on both sides of 256 pixels, in one row and in many.
void expectWithoutGaps(const char* name, const Encoder& usual) {
    const catalogue::Export& e = *catalogue::find(name);
    const bool is422 = e.is("*422*");
    const auto reference = [&](const Picture& src, Picture& want, const Values& values) {
        const auto [w, h] = src.size();
        if (is422 && w % 2 == 0 && w * h >= 256)
            encode(usual, src, want, {w * h, 1});  // which rows without gaps allow
        else if (is422 && src.planes() == 1)
            encodeC3P3R(src, want, values);
        else
            encode(usual, src, want, src.size());
    };
    Random random(4);
    for (int width = 1; width <= 70; ++width)
        for (const int height : {1, 2, 255 / width + 1, 256 / width + 2})
            expectAt(name, {width, height}, random, reference);
    for (const int width : {254, 255, 256, 288, 301}) expectAt(name, {width, 1}, random, reference);
}

TEST(YUVEncode, WithoutGaps) {
    expectWithoutGaps("moxiRGBToYUV422_8u_C3P3", planar422);
    expectWithoutGaps("moxiRGBToYUV422_8u_P3", fromPlanes422);
    expectWithoutGaps("moxiRGBToYUV420_8u_C3P3", planar420);
    expectWithoutGaps("moxiRGBToYUV420_8u_P3", fromPlanes420);
}

TEST(YUVEncode, TailsForManyColours) {
    expectEncodesTails("moxiRGBToYUV422_8u_P3R", fromPlanes422);
    expectEncodesTails("moxiRGBToYUV422_8u_C3C2R", packed422);
    expectEncodesTails("moxiRGBToYUV420_8u_C3P3R", planar420);
    expectEncodesTails("moxiRGBToYUV420_8u_P3R", fromPlanes420);
}

}  // namespace
