#include "demo.h"

namespace demo {

// Linear light of any range to 8 bits: luminance, and all channels alike as one plane three times as wide.
void toneMapSection(Demo& demo) {
    const ImageF& linear = demo.source().linear();
    const MoxiSize size = demo.source().size();
    ImageF light(size, 1), corrected(size, 3);
    if (!demo.run(CALL(moxiRGBToGray_32f_C3C1R, linear.data(), linear.step(), light.data(), light.step(), size)) ||
        !demo.run(
            CALL(moxiGammaFwd_32f_C3R, linear.data(), linear.step(), corrected.data(), corrected.step(), size, 0, 1)))
        return;
    demo.drop();

    const struct {
        const char *name, *caption;
        const ImageF& image;
    } pictures[] = {{"light", "Linear light", light}, {"colour", "Gamma-corrected colours", corrected}};
    for (const auto& picture : pictures) {
        const ImageF& image = picture.image;
        const MoxiSize plane = {image.width() * image.channels(), image.height()};
        Image8 mapped(size, image.channels());
        if (demo.run(
                CALL(moxiToneMapLinear_32f8u_C1R, image.data(), image.step(), mapped.data(), mapped.step(), plane)))
            demo.show(std::string("tonemap-linear-") + picture.name,
                      std::string(picture.caption) + ", brightest to 255", mapped);
        if (demo.run(CALL(moxiToneMapMean_32f8u_C1R, image.data(), image.step(), mapped.data(), mapped.step(), plane)))
            demo.show(std::string("tonemap-mean-") + picture.name,
                      std::string(picture.caption) + ", twice the mean to 255", mapped);
    }
}

}  // namespace demo
