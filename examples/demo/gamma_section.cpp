#include "demo.h"

namespace demo {

// A ramp from black to white, the two curves over it, and the ramp there and back.
static void ramps(Demo& demo) {
    constexpr MoxiSize band = {512, 40};
    Image8 bands({band.width, 4 * band.height}, 3);
    for (int y = 0; y < band.height; ++y)
        for (int x = 0; x < band.width; ++x) std::fill_n(bands.at(x, y), 3, Mox8u(x * 255 / (band.width - 1)));
    const int32_t step = bands.step();
    const auto top = [&](int i) { return bands.row(i * band.height); };

    moxiGammaFwd_8u_C3R(top(0), step, top(1), step, band);
    moxiGammaInv_8u_C3R(top(0), step, top(2), step, band);
    moxiGammaInv_8u_C3R(top(1), step, top(3), step, band);
    demo.show("gamma-ramp", "A ramp; corrected; taken off; there and back", bands);
}

void gammaSection(Demo& demo) {
    const Image8& rgb8 = demo.source().rgb8();
    const Image16& rgb16 = demo.source().rgb16();
    const ImageF& linear = demo.source().linear();
    const MoxiSize size = demo.source().size();

    Image8 result8(size, 3);
    if (demo.run(CALL(moxiGammaFwd_8u_C3R, rgb8.data(), rgb8.step(), result8.data(), result8.step(), size))) {
        demo.show("gamma-fwd-8u", "Gamma-corrected", result8);
    }
    if (demo.run(CALL(moxiGammaInv_8u_C3R, rgb8.data(), rgb8.step(), result8.data(), result8.step(), size))) {
        demo.show("gamma-inv-8u", "Gamma correction taken off", result8);
    }

    Image16 off16(size, 3), back16(size, 3);
    if (demo.run(CALL(moxiGammaInv_16u_C3R, rgb16.data(), rgb16.step(), off16.data(), off16.step(), size)) &&
        demo.run(CALL(moxiGammaFwd_16u_C3R, off16.data(), off16.step(), back16.data(), back16.step(), size))) {
        demo.note(decibels(psnr(back16, rgb16)));
        demo.show("gamma-16u", "16 bits: taken off and corrected again", back16);
    }
    ramps(demo);

    ImageF corrected(size, 3), back(size, 3);
    if (demo.run(
            CALL(moxiGammaFwd_32f_C3R, linear.data(), linear.step(), corrected.data(), corrected.step(), size, 0, 1))) {
        demo.show("gamma-fwd-32f", "Linear light, corrected in floats", depth<Mox8u>(corrected));
    }
    if (demo.run(
            CALL(moxiGammaInv_32f_C3R, corrected.data(), corrected.step(), back.data(), back.step(), size, 0, 1))) {
        demo.note(decibels(psnr(back, linear)));
        demo.show("gamma-inv-32f", "And back to linear light", depth<Mox8u>(back));
    }
}

}  // namespace demo
