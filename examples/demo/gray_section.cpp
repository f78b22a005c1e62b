#include "demo.h"

namespace demo {

void graySection(Demo& demo) {
    const Image8& rgb8 = demo.source().rgb8();
    const Image16& rgb16 = demo.source().rgb16();
    const ImageF& rgb32f = demo.source().rgb32f();
    const MoxiSize size = demo.source().size();

    Image8 gray8(size, 1);
    if (demo.run(CALL(moxiRGBToGray_8u_C3C1R, rgb8.data(), rgb8.step(), gray8.data(), gray8.step(), size))) {
        demo.show("gray-8u", "Gray by BT.601 luma", gray8);
    }
    Image16 gray16(size, 1);
    if (demo.run(CALL(moxiRGBToGray_16u_C3C1R, rgb16.data(), rgb16.step(), gray16.data(), gray16.step(), size))) {
        demo.show("gray-16u", "Gray in 16 bits", gray16);
    }
    ImageF gray32f(size, 1);
    if (demo.run(CALL(moxiRGBToGray_32f_C3C1R, rgb32f.data(), rgb32f.step(), gray32f.data(), gray32f.step(), size))) {
        demo.note("from the 8-bit form: " + decibels(psnr(depth<Mox8u>(gray32f), gray8)));
        demo.show("gray-32f", "Gray in floats", depth<Mox8u>(gray32f));
    }
    Image8 spread(size, 3);
    if (demo.run(CALL(moxiGrayToRGB_8u_C1C3R, gray8.data(), gray8.step(), spread.data(), spread.step(), size))) {
        demo.note("channel 0 against its source: " + decibels(psnr(channel(spread, 0), gray8)));
        demo.show("gray-rgb", "Gray as R, G, B", spread);
    }

    static constexpr struct {
        const char* name;
        const char* caption;
        Mox32f weights[3];
    } mixes[] = {
        {"gray-red", "As through a red filter", {1, 0, 0}},
        {"gray-green", "As through a green filter", {0, 1, 0}},
        {"gray-blue", "As through a blue filter", {0, 0, 1}},
    };
    for (const auto& mix : mixes) {
        if (demo.run(CALL(moxiColorToGray_8u_C3C1R, rgb8.data(), rgb8.step(), gray8.data(), gray8.step(), size,
                          mix.weights))) {
            demo.show(mix.name, mix.caption, gray8);
        }
    }
}

}  // namespace demo
