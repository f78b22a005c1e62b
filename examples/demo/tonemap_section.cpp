#include "demo.h"

namespace demo {

void toneMapSection(Demo& demo) {
    const ImageF& linear = demo.source().linear();
    const MoxiSize size = demo.source().size();

    ImageF light(size, 1);
    if (!demo.run(CALL(moxiRGBToGray_32f_C3C1R, linear.data(), linear.step(), light.data(), light.step(), size)))
        return;
    Image8 mapped(size, 1);
    if (demo.run(CALL(moxiToneMapLinear_32f8u_C1R, light.data(), light.step(), mapped.data(), mapped.step(), size))) {
        demo.show("tonemap-linear", "Linear light, brightest to 255", mapped);
    }
    if (demo.run(CALL(moxiToneMapMean_32f8u_C1R, light.data(), light.step(), mapped.data(), mapped.step(), size))) {
        demo.show("tonemap-mean", "Linear light, twice the mean to 255", mapped);
    }
}

}  // namespace demo
