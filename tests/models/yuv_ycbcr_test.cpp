// YUV and YCbCr at full resolution: which rule gives which column, by plain integer arithmetic.
#include <functional>

#include "models/plain_rules.h"
#include "moxcc/ycbcr.h"
#include "moxcc/yuv.h"
#include "support/picture.h"
#include "support/support.h"

using namespace moxtest;
using namespace plain;

namespace {

enum class Fourth { none, kept, zeroBelowLimit, copied, aval };

/// Columns below the width rounded down to a multiple of `group` follow the first rule, the others the second: at all
/// sizes, and for many colours in rows too short for the first rule, and in rows of it alone.
void expectRules(const char* name, int group, Rule below, Rule above, Fourth fourth = Fourth::none) {
    const auto reference = [=](const Picture& src, Picture& want, const Values& values) {
        const auto [width, height] = src.size();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const bool first = x < width / group * group;
                int in[3], out[3];
                for (int c = 0; c < 3; ++c) in[c] = src.colour(x, y, c);
                (first ? below : above)(in, out);
                for (int c = 0; c < 3; ++c) want.setColour(x, y, c, out[c]);
                if (fourth == Fourth::zeroBelowLimit && first) want.setColour(x, y, 3, 0);
                if (fourth == Fourth::copied) want.setColour(x, y, 3, src.colour(x, y, 3));
                if (fourth == Fourth::aval) want.setColour(x, y, 3, static_cast<int>(values.alpha));
            }
        }
    };
    expect(name, reference);
    Random random(5);
    for (const int width : {1, 16}) expectAt(name, {width, manyPixels / width}, random, reference);
}

TEST(YCbCr, ColumnsFollowTheirRule) {
    expectRules("moxiRGBToYCbCr_8u_C3R", 16, YF2, YF1);
    expectRules("moxiRGBToYCbCr_8u_AC4R", 16, YF2, YF1, Fourth::zeroBelowLimit);
    expectRules("moxiRGBToYCbCr_8u_C3P3R", 8, YF3, YF1);
    expectRules("moxiRGBToYCbCr_8u_AC4P3R", 8, YF3, YF1);
    expectRules("moxiRGBToYCbCr_8u_P3R", 8, YF3, YF1);
    expectRules("moxiYCbCrToRGB_8u_C3R", 8, YI4, YI1);
    expectRules("moxiYCbCrToRGB_8u_AC4R", 1, YI3, YI3, Fourth::kept);
    expectRules("moxiYCbCrToRGB_8u_P3C3R", 8, YI4, YI1);
    expectRules("moxiYCbCrToBGR_8u_P3C3R", 8, YI4, YI1);
    expectRules("moxiYCbCrToRGB_8u_P3R", 4, YI6, YI2);
    expectRules("moxiYCbCrToRGB_8u_P3C4R", 8, YI5, YI1, Fourth::aval);
    expectRules("moxiYCbCrToBGR_8u_P3C4R", 1, YI5, YI5, Fourth::aval);
}

TEST(Yuv, ColumnsFollowTheirRule) {
    expectRules("moxiRGBToYUV_8u_C3R", 16, UF3, UF2);
    expectRules("moxiRGBToYUV_8u_AC4R", 1, UF1, UF1, Fourth::kept);
    expectRules("moxiRGBToYUV_8u_C3P3R", 8, UF3, UF2);
    expectRules("moxiRGBToYUV_8u_P3R", 16, UF3, UF4);
    expectRules("moxiRGBToYUV_8u_AC4P4R", 8, UF5, UF1, Fourth::copied);
    expectRules("moxiYUVToRGB_8u_C3R", 8, UI4, UI1);
    expectRules("moxiYUVToRGB_8u_AC4R", 1, UI1, UI1, Fourth::kept);
    expectRules("moxiYUVToRGB_8u_C3C4R", 8, UI6, UI2, Fourth::aval);
    expectRules("moxiYUVToRGB_8u_P3C3R", 16, UI5, UI3);
    expectRules("moxiYUVToRGB_8u_P3R", 1, UI3, UI3);
}

}  // namespace
