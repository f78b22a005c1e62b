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
    const MoxiRect part = chromaDetail(rgb);
    std::vector<std::pair<std::string, Image8>> details = {{"the original", crop(rgb, part)}};

    // Converts there, then back to the order of channels of one of the two pictures above.
    using Call = std::function<MoxStatus()>;
    const auto trip = [&](const char* name, const char* caption, const Image8& original, const char* toName,
                          const Call& to, const char* fromName, const Call& from) {
        if (!demo.run(toName, to) || !demo.run(fromName, from)) return;
        demo.note(decibels(psnr(original, back)));
        const Image8 result = &original == &bgr ? reversed(back) : back;
        demo.show(std::string("video-") + name, caption, result);
        details.emplace_back(caption, crop(result, part));
    };

    Planar full(size, {1, 1}), video422(size, {2, 1}), video420(size, {2, 2}), video411(size, {4, 1});
    Image8 pairs(size.width / 2, size.height / 2, 2), packed(size, 2);
    Image8& luma = video420.plane[0];
    trip("422-packed", "4:2:2 packed, BT.601", rgb,
         CALL(moxiRGBToYCbCr422_8u_C3C2R, rgb.data(), rgb.step(), packed.data(), packed.step(), size),
         CALL(moxiYCbCr422ToRGB_8u_C2C3R, packed.data(), packed.step(), back.data(), back.step(), size));
    trip("420-planar", "4:2:0 in three planes, BT.601", rgb,
         CALL(moxiRGBToYCbCr420_8u_C3P3R, rgb.data(), rgb.step(), video420.planes, video420.steps, size),
         CALL(moxiYCbCr420ToRGB_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size));
    trip("411", "4:1:1, BT.601", bgr,
         CALL(moxiBGRToYCbCr411_8u_C3P3R, bgr.data(), bgr.step(), video411.planes, video411.steps, size),
         CALL(moxiYCbCr411ToBGR_8u_P3C3R, video411.planes, video411.steps, back.data(), back.step(), size));
    trip("444", "4:4:4, BT.601", rgb,
         CALL(moxiRGBToYCbCr_8u_C3P3R, rgb.data(), rgb.step(), full.planes, full.steps[0], size),
         CALL(moxiYCbCrToRGB_8u_P3C3R, full.planes, full.steps[0], back.data(), back.step(), size));
    trip("420-semiplanar", "4:2:0 in two planes, BT.601", rgb,
         CALL(moxiRGBToYCbCr420_8u_C3P2R, rgb.data(), rgb.step(), luma.data(), luma.step(), pairs.data(), pairs.step(),
              size),
         CALL(moxiYCbCr420ToRGB_8u_P2C3R, luma.data(), luma.step(), pairs.data(), pairs.step(), back.data(),
              back.step(), size));
    trip("422-709", "4:2:2 packed, full-range BT.709", bgr,
         CALL(moxiBGRToCbYCr422_709HDTV_8u_C3C2R, bgr.data(), bgr.step(), packed.data(), packed.step(), size),
         CALL(moxiCbYCr422ToBGR_709HDTV_8u_C2C3R, packed.data(), packed.step(), back.data(), back.step(), size));
    trip("420-709", "4:2:0, BT.709", bgr,
         CALL(moxiBGRToYCbCr420_709CSC_8u_C3P3R, bgr.data(), bgr.step(), video420.planes, video420.steps, size),
         CALL(moxiYCbCr420ToBGR_709CSC_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size));
    trip("422-yuv", "4:2:2, YUV", rgb,
         CALL(moxiRGBToYUV422_8u_C3P3R, rgb.data(), rgb.step(), video422.planes, video422.steps, size),
         CALL(moxiYUV422ToRGB_8u_P3C3R, video422.planes, video422.steps, back.data(), back.step(), size));
    trip("420-yuv", "4:2:0, YUV", rgb,
         CALL(moxiRGBToYUV420_8u_C3P3R, rgb.data(), rgb.step(), video420.planes, video420.steps, size),
         CALL(moxiYUV420ToRGB_8u_P3C3R, video420.planes, video420.steps, back.data(), back.step(), size));

    // What a wrong guess looks like.
    trip("mistaken", "4:4:4, BT.601 taken for BT.709", bgr,
         CALL(moxiRGBToYCbCr_8u_C3P3R, rgb.data(), rgb.step(), full.planes, full.steps[0], size),
         CALL(moxiYCbCrToBGR_709CSC_8u_P3C3R, full.planes, full.steps[0], back.data(), back.step(), size));

    details.resize(std::min<size_t>(details.size(), 4));  // the samplings once each
    for (const auto& [caption, image] : details) demo.detail("Enlarged: " + caption, image);
}

}  // namespace demo
