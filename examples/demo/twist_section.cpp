#include "demo.h"

namespace demo {

// Each output channel is a sum of all three, with weights and an offset.
void twistSection(Demo& demo) {
    static constexpr struct {
        const char *name, *caption;
        Mox32f rows[3][4];
    } twists[] = {
        {"vivid",
         "Differences from luma made half as large again",
         {{1.3505f, -0.2935f, -0.057f, 0}, {-0.1495f, 1.2065f, -0.057f, 0}, {-0.1495f, -0.2935f, 1.443f, 0}}},
        {"warm", "White balance for a cloudy day", {{1.12f, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0.8f, 0}}},
        {"sepia", "Sepia", {{0.393f, 0.769f, 0.189f, 0}, {0.349f, 0.686f, 0.168f, 0}, {0.272f, 0.534f, 0.131f, 0}}},
        {"negative", "Negative, by an offset of white", {{-1, 0, 0, 255}, {0, -1, 0, 255}, {0, 0, -1, 255}}},
    };
    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    Image8 result(size, 3);
    for (const auto& twist : twists) {
        if (demo.run(CALL(moxiColorTwist32f_8u_C3R, rgb.data(), rgb.step(), result.data(), result.step(), size,
                          twist.rows[0])))
            demo.show(std::string("twist-") + twist.name, twist.caption, result);
    }

    // In floats nothing is lost: another matrix takes the first one back.
    constexpr Mox32f mix[3][4] = {{0.5f, 0.25f, 0.25f, 0}, {0.25f, 0.5f, 0.25f, 0}, {0.25f, 0.25f, 0.5f, 0}};
    constexpr Mox32f part[3][4] = {{3, -1, -1, 0}, {-1, 3, -1, 0}, {-1, -1, 3, 0}};
    const ImageF& rgb32f = demo.source().rgb32f();
    ImageF mixed(size, 3), parted(size, 3);
    if (demo.run(CALL(moxiColorTwist_32f_C3R, rgb32f.data(), rgb32f.step(), mixed.data(), mixed.step(), size, mix[0])))
        demo.show("twist-mixed", "Half of each channel's neighbours mixed in, in floats", depth<Mox8u>(mixed));
    if (demo.run(
            CALL(moxiColorTwist_32f_C3R, mixed.data(), mixed.step(), parted.data(), parted.step(), size, part[0]))) {
        demo.note(decibels(psnr(parted, rgb32f)));
        demo.show("twist-parted", "And parted again by the inverse matrix", depth<Mox8u>(parted));
    }
}

}  // namespace demo
