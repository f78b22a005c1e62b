// LUV and Lab: the channels as pictures, and what stays when one of them is taken away.
#include "demo.h"

namespace demo {
namespace {

void showChannels(Demo& demo, const char* name, const char* caption, const Image8& image) {
    demo.show(name, caption, sideBySide<Mox8u>({channel(image, 0), channel(image, 1), channel(image, 2)}));
}

// A picture with its lightness in the middle: its colour alone.
Image8 withoutLightness(Image8 image) {
    for (size_t i = 0; i < image.samples().size(); i += 3) image.samples()[i] = 153;  // L is 60
    return image;
}

}  // namespace

void cieSection(Demo& demo) {
    const Image8& rgb = demo.source().rgb8();
    const MoxiSize size = rgb.size();
    Image8 luv(size, 3), lab(size, 3), back(size, 3);

    if (demo.run(CALL(moxiRGBToLUV_8u_C3R, rgb.data(), rgb.step(), luv.data(), luv.step(), size)))
        showChannels(demo, "luv", "L, u and v", luv);
    if (demo.run(CALL(moxiLUVToRGB_8u_C3R, luv.data(), luv.step(), back.data(), back.step(), size)))
        demo.note("there and back: " + decibels(psnr(back, rgb)));

    if (demo.run(CALL(moxiRGBToLab_8u_C3R, rgb.data(), rgb.step(), lab.data(), lab.step(), size)))
        showChannels(demo, "lab", "L, a and b", lab);
    if (demo.run(CALL(moxiLabToRGB_8u_C3R, lab.data(), lab.step(), back.data(), back.step(), size)))
        demo.note("there and back: " + decibels(psnr(back, rgb)));

    const Image8 colour = withoutLightness(lab);
    if (demo.run(CALL(moxiLabToRGB_8u_C3R, colour.data(), colour.step(), back.data(), back.step(), size)))
        demo.show("lab-colour", "The colours at one lightness", back);

    const ImageF& rgb32f = demo.source().rgb32f();
    ImageF luv32f(size, 3), lab32f(size, 3), back32f(size, 3);
    if (demo.run(CALL(moxiRGBToLUV_32f_C3R, rgb32f.data(), rgb32f.step(), luv32f.data(), luv32f.step(), size)) &&
        demo.run(CALL(moxiLUVToRGB_32f_C3R, luv32f.data(), luv32f.step(), back32f.data(), back32f.step(), size)))
        demo.note("there and back: " + decibels(psnr(back32f, rgb32f)));
    if (demo.run(CALL(moxiRGBToLab_32f_C3R, rgb32f.data(), rgb32f.step(), lab32f.data(), lab32f.step(), size)) &&
        demo.run(CALL(moxiLabToRGB_32f_C3R, lab32f.data(), lab32f.step(), back32f.data(), back32f.step(), size)))
        demo.note("there and back: " + decibels(psnr(back32f, rgb32f)));
}

}  // namespace demo
