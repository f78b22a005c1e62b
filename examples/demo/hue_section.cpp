// HLS and HSV: the channels as pictures, the hue in its own colours, and a change of hue.
#include "demo.h"

namespace demo {
namespace {

// A picture with one channel set to one value.
Image8 withChannel(Image8 image, size_t channel, Mox8u value) {
    for (size_t i = channel; i < image.samples().size(); i += 3) image.samples()[i] = value;
    return image;
}

}  // namespace

void hueSection(Demo& demo) {
    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    Image8 hls(size, 3), hsv(size, 3), back(size, 3), result(size, 3);

    if (demo.run(CALL(moxiRGBToHLS_8u_C3R, rgb.data(), rgb.step(), hls.data(), hls.step(), size))) {
        demo.show("hls", "Hue, lightness and saturation",
                  sideBySide<Mox8u>({channel(hls, 0), channel(hls, 1), channel(hls, 2)}));
    }
    if (demo.run(CALL(moxiHLSToRGB_8u_C3R, hls.data(), hls.step(), back.data(), back.step(), size)))
        demo.note("there and back: " + decibels(psnr(back, rgb)));

    Image8 pure = withChannel(withChannel(hls, 1, 127), 2, 255);
    if (demo.run(CALL(moxiHLSToRGB_8u_C3R, pure.data(), pure.step(), result.data(), result.step(), size)))
        demo.show("hls-hue", "The hue alone, at middle lightness", result);

    Image8 turned = hls;
    for (size_t i = 0; i < turned.samples().size(); i += 3)
        turned.samples()[i] = Mox8u((turned.samples()[i] + 85) % 255);  // 255 samples are the whole circle
    if (demo.run(CALL(moxiHLSToRGB_8u_C3R, turned.data(), turned.step(), result.data(), result.step(), size)))
        demo.show("hls-turned", "Every hue turned by 120 degrees", result);

    if (demo.run(CALL(moxiRGBToHSV_8u_C3R, rgb.data(), rgb.step(), hsv.data(), hsv.step(), size))) {
        demo.show("hsv", "Hue, saturation and value",
                  sideBySide<Mox8u>({channel(hsv, 0), channel(hsv, 1), channel(hsv, 2)}));
    }
    if (demo.run(CALL(moxiHSVToRGB_8u_C3R, hsv.data(), hsv.step(), back.data(), back.step(), size)))
        demo.note("there and back: " + decibels(psnr(back, rgb)));

    Image8 bright = withChannel(hsv, 2, 255);
    if (demo.run(CALL(moxiHSVToRGB_8u_C3R, bright.data(), bright.step(), result.data(), result.step(), size)))
        demo.show("hsv-bright", "The same colours at full value", result);

    const ImageF& rgb32f = demo.source().rgb32f();
    ImageF hls32f(size, 3), back32f(size, 3);
    if (demo.run(CALL(moxiRGBToHLS_32f_C3R, rgb32f.data(), rgb32f.step(), hls32f.data(), hls32f.step(), size)) &&
        demo.run(CALL(moxiHLSToRGB_32f_C3R, hls32f.data(), hls32f.step(), back32f.data(), back32f.step(), size)))
        demo.note("there and back: " + decibels(psnr(back32f, rgb32f)));
}

}  // namespace demo
