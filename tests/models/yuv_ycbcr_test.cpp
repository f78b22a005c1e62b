// YUV and YCbCr at full resolution: which rule gives which column, by plain integer arithmetic.
#include <functional>

#include "models/pixels.h"
#include "models/plain_rules.h"
#include "moxcc/ycbcr.h"
#include "moxcc/yuv.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;
using namespace plain;

namespace {

/// One picture of interleaved channels, or planes of one channel.
struct Form {
    int planes, channels;
    bool reversed = false;

    std::vector<Shape> shapes(MoxiSize roi) const {
        return std::vector<Shape>(static_cast<size_t>(planes), {roi.width, roi.height, channels});
    }
    int channelAt(int c) const { return reversed && c < 3 ? 2 - c : c; }
    int get(const Picture& p, int x, int y, int c) const {
        return planes > 1 ? p[size_t(c)].get(x, y) : p[0].get(x, y, channelAt(c));
    }
    void set(Picture& p, int x, int y, int c, int value) const {
        const auto sample = static_cast<Mox8u>(value);
        planes > 1 ? p[size_t(c)].set(x, y, sample) : p[0].set(x, y, channelAt(c), sample);
    }
};
const Form C3{1, 3}, C4{1, 4}, P3{3, 1}, P4{4, 1}, bgr3{1, 3, true}, bgr4{1, 4, true};

enum class Fourth { none, kept, zeroBelowLimit, copied, aval };

/// Columns below the width rounded down to a multiple of `group` follow the first rule, the others the second.
template <class F>
void expectRules(Symbol<F> function, Form from, Form to, int group, Rule below, Rule above,
                 Fourth fourth = Fourth::none) {
    const auto expected = [=](const Picture& src, Picture& dst, MoxiSize roi, Mox8u aval) {
        for (int y = 0; y < roi.height; ++y) {
            for (int x = 0; x < roi.width; ++x) {
                const bool first = x < roi.width / group * group;
                int in[3], out[3];
                for (int c = 0; c < 3; ++c) in[c] = from.get(src, x, y, c);
                (first ? below : above)(in, out);
                for (int c = 0; c < 3; ++c) to.set(dst, x, y, c, out[c]);
                if (fourth == Fourth::zeroBelowLimit && first) to.set(dst, x, y, 3, 0);
                if (fourth == Fourth::copied) to.set(dst, x, y, 3, from.get(src, x, y, 3));
                if (fourth == Fourth::aval) to.set(dst, x, y, 3, aval);
            }
        }
    };
    expectConversion(function, {[=](MoxiSize roi) { return from.shapes(roi); },
                                [=](MoxiSize roi) { return to.shapes(roi); }, Steps::shared, Steps::shared, expected});
}

TEST(YCbCr, ColumnsFollowTheirRule) {
    expectRules(MOX_EXPORT(moxiRGBToYCbCr_8u_C3R), C3, C3, 16, YF2, YF1);
    expectRules(MOX_EXPORT(moxiRGBToYCbCr_8u_AC4R), C4, C4, 16, YF2, YF1, Fourth::zeroBelowLimit);
    expectRules(MOX_EXPORT(moxiRGBToYCbCr_8u_C3P3R), C3, P3, 8, YF3, YF1);
    expectRules(MOX_EXPORT(moxiRGBToYCbCr_8u_AC4P3R), C4, P3, 8, YF3, YF1);
    expectRules(MOX_EXPORT(moxiRGBToYCbCr_8u_P3R), P3, P3, 8, YF3, YF1);
    expectRules(MOX_EXPORT(moxiYCbCrToRGB_8u_C3R), C3, C3, 8, YI4, YI1);
    expectRules(MOX_EXPORT(moxiYCbCrToRGB_8u_AC4R), C4, C4, 1, YI3, YI3, Fourth::kept);
    expectRules(MOX_EXPORT(moxiYCbCrToRGB_8u_P3C3R), P3, C3, 8, YI4, YI1);
    expectRules(MOX_EXPORT(moxiYCbCrToBGR_8u_P3C3R), P3, bgr3, 8, YI4, YI1);
    expectRules(MOX_EXPORT(moxiYCbCrToRGB_8u_P3R), P3, P3, 4, YI6, YI2);
    expectRules(MOX_EXPORT(moxiYCbCrToRGB_8u_P3C4R), P3, C4, 8, YI5, YI1, Fourth::aval);
    expectRules(MOX_EXPORT(moxiYCbCrToBGR_8u_P3C4R), P3, bgr4, 1, YI5, YI5, Fourth::aval);
}

TEST(Yuv, ColumnsFollowTheirRule) {
    expectRules(MOX_EXPORT(moxiRGBToYUV_8u_C3R), C3, C3, 16, UF3, UF2);
    expectRules(MOX_EXPORT(moxiRGBToYUV_8u_AC4R), C4, C4, 1, UF1, UF1, Fourth::kept);
    expectRules(MOX_EXPORT(moxiRGBToYUV_8u_C3P3R), C3, P3, 8, UF3, UF2);
    expectRules(MOX_EXPORT(moxiRGBToYUV_8u_P3R), P3, P3, 16, UF3, UF4);
    expectRules(MOX_EXPORT(moxiRGBToYUV_8u_AC4P4R), C4, P4, 8, UF5, UF1, Fourth::copied);
    expectRules(MOX_EXPORT(moxiYUVToRGB_8u_C3R), C3, C3, 8, UI4, UI1);
    expectRules(MOX_EXPORT(moxiYUVToRGB_8u_AC4R), C4, C4, 1, UI1, UI1, Fourth::kept);
    expectRules(MOX_EXPORT(moxiYUVToRGB_8u_C3C4R), C3, C4, 8, UI6, UI2, Fourth::aval);
    expectRules(MOX_EXPORT(moxiYUVToRGB_8u_P3C3R), P3, C3, 16, UI5, UI3);
    expectRules(MOX_EXPORT(moxiYUVToRGB_8u_P3R), P3, P3, 1, UI3, UI3);
}

/// Whole groups of eight columns follow the first rule, the others the second.
PixelRule<Mox8u> pixelRule(Rule below, Rule above) {
    return inGroups(8, [=](const Pixel<Mox8u>& p, bool isBelow) {
        const int in[3] = {p[0], p[1], p[2]};
        int out[3];
        (isBelow ? below : above)(in, out);
        return Pixel<Mox8u>{static_cast<Mox8u>(out[0]), static_cast<Mox8u>(out[1]), static_cast<Mox8u>(out[2])};
    });
}

TEST(YCbCr, AllColours) {
    expectAllPixels(MOX_EXPORT(moxiRGBToYCbCr_8u_C3R), pixelRule(YF2, YF1));
    expectAllPixels(MOX_EXPORT(moxiYCbCrToRGB_8u_C3R), pixelRule(YI4, YI1));
}

TEST(Yuv, AllColours) {
    expectAllPixels(MOX_EXPORT(moxiRGBToYUV_8u_C3R), pixelRule(UF3, UF2));
    expectAllPixels(MOX_EXPORT(moxiYUVToRGB_8u_C3R), pixelRule(UI4, UI1));
}

}  // namespace
