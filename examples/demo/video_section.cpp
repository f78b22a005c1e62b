#include "demo.h"
#include "planar.h"

namespace demo {

// The picture through each sampling of chroma and back.
void videoSection(Demo& demo) {
    const Image8& whole = demo.source().rgb8();
    const MoxiSize size = {whole.width() & -4, whole.height() & -2};
    if (size.width == 0 || size.height == 0) return demo.note("too small for whole cells");
    const Image8 rgb = crop(whole, {0, 0, size.width, size.height}), bgr = reversed(rgb);
    Image8 back(size, 3);
    std::vector<Image8> results = {rgb};
    const auto result = [&](const char* name, const char* caption, const Image8& image) {
        demo.note(decibels(psnr(rgb, image)));
        demo.show(name, caption, image);
        results.push_back(image);
    };

    Planar full(size, 1, 1), video420(size, 2, 2), video411(size, 4, 1);
    Image8 pairs(size.width / 2, size.height / 2, 2), packed(size, 2);

    if (demo.run(CALL(moxiRGBToYCbCr_8u_C3P3R, rgb.data(), rgb.step(), full.planes, full.steps[0], size)) &&
        demo.run(CALL(moxiYCbCrToRGB_8u_P3C3R, full.planes, full.steps[0], back.data(), back.step(), size)))
        result("video-444", "4:4:4, BT.601", back);
    if (demo.run(CALL(moxiRGBToYCbCr422_8u_C3C2R, rgb.data(), rgb.step(), packed.data(), packed.step(), size)) &&
        demo.run(CALL(moxiYCbCr422ToRGB_8u_C2C3R, packed.data(), packed.step(), back.data(), back.step(), size)))
        result("video-422-packed", "4:2:2 packed, BT.601", back);
    if (demo.run(CALL(moxiRGBToYCbCr420_8u_C3P3R, rgb.data(), rgb.step(), video420.planes, video420.steps, size)) &&
        demo.run(CALL(moxiYCbCr420ToRGB_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size)))
        result("video-420-planar", "4:2:0 in three planes, BT.601", back);

    Image8& luma = video420.plane[0];
    if (demo.run(CALL(moxiRGBToYCbCr420_8u_C3P2R, rgb.data(), rgb.step(), luma.data(), luma.step(), pairs.data(),
                      pairs.step(), size)) &&
        demo.run(CALL(moxiYCbCr420ToRGB_8u_P2C3R, luma.data(), luma.step(), pairs.data(), pairs.step(), back.data(),
                      back.step(), size)))
        result("video-420-semiplanar", "4:2:0 in two planes, BT.601", back);
    if (demo.run(CALL(moxiRGBToYUV420_8u_C3P3R, rgb.data(), rgb.step(), video420.planes, video420.steps, size)) &&
        demo.run(CALL(moxiYUV420ToRGB_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size)))
        result("video-420-yuv", "4:2:0, full-range YUV", back);

    if (demo.run(CALL(moxiBGRToYCbCr411_8u_C3P3R, bgr.data(), bgr.step(), video411.planes, video411.steps, size)) &&
        demo.run(CALL(moxiYCbCr411ToBGR_8u_P3C3R, video411.planes, video411.steps, back.data(), back.step(), size)))
        result("video-411", "4:1:1, BT.601", reversed(back));
    if (demo.run(
            CALL(moxiBGRToYCbCr420_709CSC_8u_C3P3R, bgr.data(), bgr.step(), video420.planes, video420.steps, size)) &&
        demo.run(
            CALL(moxiYCbCr420ToBGR_709CSC_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size)))
        result("video-420-709", "4:2:0, BT.709", reversed(back));
    if (demo.run(
            CALL(moxiBGRToCbYCr422_709HDTV_8u_C3C2R, bgr.data(), bgr.step(), packed.data(), packed.step(), size)) &&
        demo.run(
            CALL(moxiCbYCr422ToBGR_709HDTV_8u_C2C3R, packed.data(), packed.step(), back.data(), back.step(), size)))
        result("video-422-709", "4:2:2 packed, full-range BT.709", reversed(back));

    if (results.size() < 7) return;
    const MoxiSize window = {std::min(64, size.width), std::min(96, size.height)};
    const MoxiRect detail = mostDifferent(rgb, results[3], window);
    std::vector<Image8> details;
    for (const size_t i : {0, 2, 3, 6}) details.push_back(enlarged(crop(results[i], detail), 4));
    demo.show("video-detail", "Original, 4:2:2, 4:2:0, 4:1:1", sideBySide(details));
}

}  // namespace demo
