#include "demo.h"
#include "mosaic.h"
#include "planar.h"

namespace demo {
namespace {

// How much of red, green and blue light the sensor's filters let through.
constexpr float kFilters[3] = {0.5f, 1, 0.7f};

// What the sensor counts, exposed so that highlights up to two stops above white are kept.
Image16 sensorFrame(ImageF light, float exposure) {
    float highest = 1;
    for (float& sample : light.samples()) highest = std::max(highest, std::min(sample *= exposure, 4.0f));
    for (size_t i = 0; i < light.samples().size(); ++i) light.samples()[i] *= kFilters[i % 3] / highest;
    return mosaic(depth<Mox16u>(light));
}

}  // namespace

// The picture as a camera would take it, and all that happens until a screen shows it.
void pipelineSection(Demo& demo) {
    const MoxiSize all = demo.source().size(), size = {all.width & -2, all.height & -2};
    if (size.width < 6 || size.height < 6) return demo.note("too small for a camera");
    const MoxiRect whole = {0, 0, size.width, size.height};
    const Image16 raw = sensorFrame(crop(demo.source().linear(), whole), demo.source().exposure());
    demo.show("camera-1-raw", "1. The raw frame, each site behind its filter: linear light looks dark",
              colouredMosaic(raw));

    Image16 rgb16(size, 3), balanced(size, 3);
    DemosaicBuffer buffer(size.width);
    demo.run(CALL(moxiDemosaicAHD_16u_C1C3R, raw.data(), whole, size, raw.step(), rgb16.data(), rgb16.step(),
                  kMosaicGrid, buffer.bytes.data(), buffer.step));
    demo.show("camera-2-reconstructed", "2. All colours at all sites", rgb16);

    const Mox32f balance[3][4] = {{1 / kFilters[0], 0, 0, 0}, {0, 1 / kFilters[1], 0, 0}, {0, 0, 1 / kFilters[2], 0}};
    demo.run(CALL(moxiColorTwist32f_16u_C3R, rgb16.data(), rgb16.step(), balanced.data(), balanced.step(), size,
                  balance[0]));
    demo.show("camera-3-balanced", "3. White balance by a twist", balanced);

    ImageF corrected = depth<Mox32f>(balanced);
    const ImageF linear = corrected;
    demo.run(CALL(moxiGammaFwd_32f_C3IR, corrected.data(), corrected.step(), size, 0, 1), [&] { corrected = linear; });
    demo.show("camera-4-gamma", "4. Gamma, in floats", depth<Mox8u>(corrected));

    Image8 mapped(size, 3);  // one plane three times as wide: the colours keep their proportions
    if (!demo.run(CALL(moxiToneMapMean_32f8u_C1R, corrected.data(), corrected.step(), mapped.data(), mapped.step(),
                       {3 * size.width, size.height})))
        return;
    demo.show("camera-5-tone", "5. Tone map: twice the mean is white", mapped);

    Planar video(size, {2, 2});
    demo.run(CALL(moxiRGBToYCbCr420_8u_C3P3R, mapped.data(), mapped.step(), video.planes, video.steps, size));
    demo.show("camera-6-video", "6. Sent as 4:2:0 video: its planes", video.frame());

    Image8 received(size, 3), screen(size, 3);
    demo.run(CALL(moxiYCbCr420ToRGB_8u_P3C3R, video.planes, video.steps, received.data(), received.step(), size));
    demo.note(decibels(psnr(received, mapped)) + " against step 5");
    demo.show("camera-7-received", "7. Received", received);

    constexpr int levels = 32;
    int32_t bytes = 0;
    moxiReduceBitsGetBufferSize(1, size, 0, moxDitherFs, &bytes);
    std::vector<Mox8u> errors(static_cast<size_t>(bytes));
    demo.run(CALL(moxiReduceBits_8u_C3R, received.data(), received.step(), screen.data(), screen.step(), size, 0,
                  moxDitherFs, levels, errors.data()));
    demo.show("camera-8-screen", "8. On a screen of 5 bits a colour, dithered", screen);
}

}  // namespace demo
